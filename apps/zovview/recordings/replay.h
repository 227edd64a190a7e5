#pragma once

#include <filesystem>

namespace zovview {

/// Plays a recording on a clock of its own, without a window, and prints the cameras that come of it. The
/// exit code of the program.
int RunReplay(const std::filesystem::path& file);

}  // namespace zovview
