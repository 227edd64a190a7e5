#pragma once

#include <filesystem>

namespace zovview {

/// Plays a recording on a clock of its own, without a window, and prints the cameras that come of it. Where
/// `completed` is not empty, the recording is written there with what all its rays met. The exit code of the
/// program.
int RunReplay(const std::filesystem::path& file, const std::filesystem::path& completed);

}  // namespace zovview
