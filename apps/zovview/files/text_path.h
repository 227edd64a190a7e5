#pragma once

#include <filesystem>
#include <string>

namespace zovview {

/// Texts of the panels and the settings are UTF-8 on every system.
inline std::filesystem::path ToPath(const std::string& text) {
  return std::filesystem::path(std::u8string(text.begin(), text.end()));
}
inline std::string ToText(const std::filesystem::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

}  // namespace zovview
