// Prints the cameras of a session with every device, to the last bit, so that builds can be compared.
#include <cstdio>

#include "torture/faulty_clock.h"
#include "torture/whole_view.h"

namespace {

void Print(const Korvane::CameraParameters& camera) {
  for (const Korvane::Vector3* vector : {&camera.eye, &camera.centre, &camera.up, &camera.pivot}) {
    std::printf("%a %a %a  ", vector->x, vector->y, vector->z);
  }
  std::printf("%a %a %a %a  %a %a %a %d\n", camera.left_fov, camera.right_fov, camera.top_fov,
              camera.bottom_fov, camera.ortho_width, camera.ortho_height, camera.projection_transition,
              static_cast<int>(camera.projection_type));
}

}  // namespace

int main() {
  torture::FaultyClock clock;
  torture::WholeView view(clock);
  if (!view.Create()) return 1;
  view.hub.isFilming = true;
  view.PlayAll();
  view.hub.isFilming = false;
  view.LetGo();
  for (const Korvane::CameraParameters& camera : view.hub.film) Print(camera);
  for (const Korvane::CameraParameters& camera : view.PlayShort()) Print(camera);
  return 0;
}
