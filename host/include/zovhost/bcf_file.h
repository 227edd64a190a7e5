#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "zovhost/bcf_viewpoint.h"

namespace zovhost {

/// A viewpoint with the name of its topic.
struct BcfView {
  std::string name;  ///< UTF-8; empty where there is none.
  BcfViewpoint viewpoint;
  std::string snapshot = {};  ///< A picture of it, the bytes of a PNG; empty for none. Written, not read.
};

/// By its name: `.bcfv` is one viewpoint, `.bcf` and `.bcfzip` hold topics with theirs.
bool IsBcfFile(const std::filesystem::path& file);
bool IsBcfContainer(const std::filesystem::path& file);

/// The views of a file, in its order: one with the name of the file, or all of a container that have a
/// camera, each with the title of its topic. What else a container holds counts for nothing.
///
/// False, with `views` as they were, puts one line that names the file into `error`: where one viewpoint is
/// broken, where there is none, and beyond the limits.
bool ReadBcfFile(const std::filesystem::path& file, std::vector<BcfView>& views, std::string& error);

/// As version 3.0: a container with a topic for each view, or one viewpoint, which takes one view. Views
/// without an identifier get one. The file appears whole or not at all. False puts one line into `error`.
bool WriteBcfFile(const std::filesystem::path& file, const std::vector<BcfView>& views, std::string& error);

/// The same for containers in memory.
bool ParseBcfContainer(std::string_view bytes, std::vector<BcfView>& views, std::string& error);
/// `author`: of the topics; any text but an empty one.
bool FormatBcfContainer(const std::vector<BcfView>& views, std::string_view author, std::string& bytes,
                        std::string& error);

/// Limits of a container: its bytes, those of all viewpoints and markups in it, and how many files it holds.
constexpr std::size_t LARGEST_BCF_CONTAINER = std::size_t{256} << 20;
constexpr std::size_t MOST_BCF_TEXT = std::size_t{64} << 20;
constexpr std::size_t MOST_BCF_FILES = 20'000;

}  // namespace zovhost
