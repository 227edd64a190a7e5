#include <cstdio>

#include "korvane/korvane.h"

// A view without a window: the host's side of the library is these three operations.
class View : public Korvane::CameraOperations {
 public:
  void ApplyCameraParameters(const Korvane::CameraParameters& moved) override { shown = moved; }
  void QueryCameraParameters(Korvane::CameraParameters& now) const override { now = shown; }
  void RequestApplicationUpdate() override { frameWanted = true; }

  Korvane::CameraParameters shown;
  bool frameWanted = false;
};

int main() {
  View view;
  view.shown = view.GetHomeCamera();  // at (1, 1, 1), looking at the origin
  view.GetApplicationParameters().viewport_width = 800;
  view.GetApplicationParameters().viewport_height = 600;

  const Korvane::Vector3 before = view.shown.eye;
  view.BeginOperation(Korvane::OPERATION_ORBIT, 400, 300);         // the press, in pixels from the top left
  view.UpdateOperationParams(500, 300, Korvane::OPERATION_ORBIT);  // a drag to the right
  view.PerformOperations();                                        // the frame that follows
  view.EndOperation(Korvane::OPERATION_ORBIT);                     // the release

  const Korvane::Vector3& eye = view.shown.eye;
  std::printf("the eye went from (%.3f, %.3f, %.3f) to (%.3f, %.3f, %.3f)\n", before.x, before.y, before.z,
              eye.x, eye.y, eye.z);
  return view.frameWanted && eye != before ? 0 : 1;
}
