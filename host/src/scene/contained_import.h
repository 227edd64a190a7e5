#pragma once

#include <chrono>
#include <filesystem>
#include <string>

#include "zovhost/scene.h"

namespace zovhost {

struct ImportLimits {
  std::chrono::milliseconds work;  // processor time, which a busy machine does not use up
  std::chrono::milliseconds wait;  // by the clock, for files that never answer
  double memory;                   // bytes of address space beyond what the process has already
};

/// Limits that leave room for slow machines and for formats that unfold: they grow with the file.
ImportLimits GetImportLimits(const std::filesystem::path& path);

/// ImportScene without its dangers.
///
/// On POSIX systems the import runs in a forked child with limits on time and memory, and the child sends
/// the finished scene back through a pipe. A crash, a hang or an endless allocation ends the child and
/// becomes an error line here. That costs one copy of the scene, a small part of parsing it; trying a file
/// in a child first and importing it again here would cost the import twice, and a helper program would have
/// to be installed and found. Elsewhere the import runs in this process, without limits.
bool ImportContained(const std::filesystem::path& path, const ImportLimits& limits, const Progress& progress,
                     SceneData& data, std::string& error);

}  // namespace zovhost
