#pragma once

#include <functional>
#include <map>

#include "korvane/camera_parameters.h"
#include "korvane/interval_timer.h"
#include "viewport/viewport.h"

namespace zovview {

/// Whether two cameras show the same picture, bit for bit.
bool IsSameView(const Korvane::CameraParameters& a, const Korvane::CameraParameters& b);

/// Tells views that move from views at rest: one that has not moved for a while, and is not held, is at rest.
/// It asks for a frame when that comes about.
class ViewRest {
 public:
  explicit ViewRest(std::function<void()> requestFrame);

  /// To be asked in each frame, once its step was done. `held`: it counts as moving in any case.
  bool IsMoving(const Viewport& view, bool held);
  /// All views count as moving, for a while.
  void Restart();

 private:
  class Timer : public Korvane::IntervalTimer {
   public:
    explicit Timer(ViewRest& owner) : rest(owner) {}
    void Timeout() override;

   private:
    ViewRest& rest;
  };

  std::function<void()> requestFrame;
  std::map<const Viewport*, Korvane::CameraParameters> shown;
  bool resting = true;
  Timer timer;
};

}  // namespace zovview
