#pragma once

#include <memory>

#include "korvane/icon2d.h"
#include "korvane/icon3d.h"
#include "korvane/pixel_icon2d.h"
#include "zov/qu_observer_ptr.h"
#include "zov/zov_icons.h"

/// The icon within one that a host has made, which finds its way back to it.
template <class Inner, class Facade>
class zovIconP : public Inner {
 public:
  template <class... Values>
  explicit zovIconP(Facade& outside, Values... values) : Inner(values...), owner(&outside) {}

  /// Null for one that is in no shared pointer.
  std::shared_ptr<Facade> GetOwner() const {
    return std::static_pointer_cast<Facade>(owner->weak_from_this().lock());
  }

 private:
  quObserverPtr<Facade> owner;
};

using zovDynamicIcon2DP = zovIconP<Korvane::DynamicIcon2D, zovDynamicIcon2D>;
using zovResourceIcon2DP = zovIconP<Korvane::ResourceIcon2D, zovResourceIcon2D>;
using zovPixelIcon2DP = zovIconP<Korvane::PixelIcon2D, zovPixelIcon2D>;
using zovResourceIcon3DP = zovIconP<Korvane::ResourceIcon3D, zovResourceIcon3D>;
