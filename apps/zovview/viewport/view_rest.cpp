#include "viewport/view_rest.h"

#include <utility>

namespace zovview {

using Korvane::CameraParameters;

namespace {

constexpr double REST_SECONDS = 0.3;  // longer than between two notches of a wheel

}  // namespace

bool IsSameView(const CameraParameters& a, const CameraParameters& b) {
  return a.eye == b.eye && a.centre == b.centre && a.up == b.up && a.left_fov == b.left_fov &&
         a.right_fov == b.right_fov && a.top_fov == b.top_fov && a.bottom_fov == b.bottom_fov &&
         a.ortho_width == b.ortho_width && a.ortho_height == b.ortho_height &&
         a.projection_transition == b.projection_transition && a.projection_type == b.projection_type;
}

ViewRest::ViewRest(std::function<void()> request) : requestFrame(std::move(request)), timer(*this) {}

void ViewRest::Timer::Timeout() {
  rest.resting = true;
  rest.requestFrame();
}

bool ViewRest::IsMoving(const Viewport& view, bool held) {
  const CameraParameters& camera = view.GetHub().GetView();
  const auto known = shown.find(&view);
  const bool moved = known == shown.end() || !IsSameView(known->second, camera);
  shown[&view] = camera;
  if (moved || held || view.IsPressed()) Restart();
  return !resting;
}

void ViewRest::Restart() {
  resting = false;
  timer.Start(REST_SECONDS, false);
}

}  // namespace zovview
