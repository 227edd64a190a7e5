#include "zov/zov_icon_utils.h"

#include "facade/zov_icons_p.h"
#include "foundation/out_of_memory.h"

namespace {

template <class Facade, class Inner>
std::shared_ptr<Facade> Wrap(Inner* icon) {
  if (const auto* const ours = dynamic_cast<const zovIconP<Inner, Facade>*>(icon)) {
    if (auto owner = ours->GetOwner()) return owner;
  }
  if (icon == nullptr) return nullptr;
  return Korvane::OrFail([&] { return std::make_shared<Facade>(*icon); });
}

template <class Inner, class Facade>
Inner* Unwrap(const std::shared_ptr<Facade>& icon) {
  return icon != nullptr ? static_cast<Inner*>(&icon->korvane()) : nullptr;
}

}  // namespace

std::shared_ptr<zovDynamicIcon2D> zovIconUtils::wrap_icon(Korvane::DynamicIcon2D* icon) {
  return Wrap<zovDynamicIcon2D>(icon);
}
std::shared_ptr<zovResourceIcon2D> zovIconUtils::wrap_icon(Korvane::ResourceIcon2D* icon) {
  return Wrap<zovResourceIcon2D>(icon);
}
std::shared_ptr<zovPixelIcon2D> zovIconUtils::wrap_icon(Korvane::PixelIcon2D* icon) {
  return Wrap<zovPixelIcon2D>(icon);
}
std::shared_ptr<zovResourceIcon3D> zovIconUtils::wrap_icon(Korvane::ResourceIcon3D* icon) {
  return Wrap<zovResourceIcon3D>(icon);
}

Korvane::DynamicIcon2D* zovIconUtils::unwrap_icon(const std::shared_ptr<zovDynamicIcon2D>& icon) {
  return Unwrap<Korvane::DynamicIcon2D>(icon);
}
Korvane::ResourceIcon2D* zovIconUtils::unwrap_icon(const std::shared_ptr<zovResourceIcon2D>& icon) {
  return Unwrap<Korvane::ResourceIcon2D>(icon);
}
Korvane::PixelIcon2D* zovIconUtils::unwrap_icon(const std::shared_ptr<zovPixelIcon2D>& icon) {
  return Unwrap<Korvane::PixelIcon2D>(icon);
}
Korvane::ResourceIcon3D* zovIconUtils::unwrap_icon(const std::shared_ptr<zovResourceIcon3D>& icon) {
  return Unwrap<Korvane::ResourceIcon3D>(icon);
}
