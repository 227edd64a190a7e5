#pragma once

#include <memory>

#include "korvane/export.h"
#include "zov/zov_icons.h"

/// Icons between host and library. Null is null on both sides.
class ZOVTOOLS_API zovIconUtils {
 public:
  /// The host's side of an icon. One that the host has made by its values, in a shared pointer that owns it,
  /// comes back as it is, also as the class that the host has derived; any other gets a new one, which
  /// borrows it. Null where there is no memory for it.
  [[nodiscard]] static std::shared_ptr<zovDynamicIcon2D> wrap_icon(Korvane::DynamicIcon2D* icon);
  [[nodiscard]] static std::shared_ptr<zovResourceIcon2D> wrap_icon(Korvane::ResourceIcon2D* icon);
  [[nodiscard]] static std::shared_ptr<zovPixelIcon2D> wrap_icon(Korvane::PixelIcon2D* icon);
  [[nodiscard]] static std::shared_ptr<zovResourceIcon3D> wrap_icon(Korvane::ResourceIcon3D* icon);

  /// The library's side. It stays the icon's, and lives as long as that.
  [[nodiscard]] static Korvane::DynamicIcon2D* unwrap_icon(const std::shared_ptr<zovDynamicIcon2D>& icon);
  [[nodiscard]] static Korvane::ResourceIcon2D* unwrap_icon(const std::shared_ptr<zovResourceIcon2D>& icon);
  [[nodiscard]] static Korvane::PixelIcon2D* unwrap_icon(const std::shared_ptr<zovPixelIcon2D>& icon);
  [[nodiscard]] static Korvane::ResourceIcon3D* unwrap_icon(const std::shared_ptr<zovResourceIcon3D>& icon);
};
