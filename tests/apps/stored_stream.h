// The streams of cameras that recordings give, held to what is stored of them: the same in every build.
#pragma once

#include <string>

namespace apps_test {

/// Holds what the program has printed for a recording to tests/apps/streams/NAME.txt, to the last bit. Where
/// the machine's own functions and rays give other bits than those of the machine that stored it, the count
/// of the cameras and the last of them are compared, to within what that is worth. With ZOV_KEEP_STREAMS=1
/// in the environment the stream is stored anew first.
void ExpectStoredStream(const std::string& name, const std::string& printed);

}  // namespace apps_test
