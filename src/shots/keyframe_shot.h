#pragma once

#include <cstddef>

#include "korvane/shot.h"
#include "korvane/shot_parameters.h"

namespace Korvane {

/// Plays back a recorded path, linearly.
class KeyframeShot : public Shot {
 public:
  explicit KeyframeShot(const KeyframeShotParameters& shotParameters) : parameters(shotParameters) {}

  bool PerformShot(double dt, CameraParameters& camera) override;

 private:
  std::size_t FindByTime(double t, std::size_t index) const;
  void Blend(std::size_t from, std::size_t to, double weight, CameraParameters& camera) const;

  KeyframeShotParameters parameters;
};

}  // namespace Korvane
