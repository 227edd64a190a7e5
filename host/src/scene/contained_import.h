#pragma once

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <string>

#include "zovhost/scene.h"

namespace zovhost {

struct ImportLimits {
  /// Processor time without getting further, which a busy machine does not use up.
  std::chrono::milliseconds work;
  std::chrono::milliseconds wait;             // by the clock, for all of it
  double memory;                              // bytes of address space beyond what the process has already
  double scene = 2e9;                         // bytes of the scene, which the caller takes over
  std::size_t images = std::size_t{1} << 30;  // of them, those of the pixels of its pictures
};

/// Limits that leave room for slow machines and for formats that unfold: they grow with the file. Memory
/// grows from 4 GiB up to three quarters of the machine's, and the scene takes at most half of it; the pixels
/// of its pictures take at most 1 GiB of that.
ImportLimits GetImportLimits(const std::filesystem::path& path);

/// ImportScene without its dangers.
///
/// On POSIX systems the import runs in a forked child with limits on time and memory, and the child sends
/// the finished scene back through a pipe. A crash, a hang or an endless allocation ends the child and
/// becomes an error line here. The child reads regular files in the folder of the model and below, writes
/// none, and has no network. That costs one copy of the scene, a small part of parsing it; trying a file in a
/// child first and importing it again here would cost the import twice, and a helper program would have to be
/// installed and found. Elsewhere the import runs in this process, without limits.
bool ImportContained(const std::filesystem::path& path, const ImportLimits& limits, const Progress& progress,
                     SceneData& data, std::string& error);

}  // namespace zovhost
