#include "story/history/rewind_partners.h"

#include "camera/camera_frame.h"

namespace Korvane {

namespace {

// Cameras that differ only in how far `up` leans along the view show the same.
void Straighten(CameraParameters& camera) {
  camera.up = ProjectOnPlane(camera.up, ViewDirection(camera)).Normalized();
}

}  // namespace

bool RewindPartners::AreEqual(CameraParameters a, CameraParameters b) const {
  CameraOperations* const judge = hub.Get();
  if (judge == nullptr || a.perspective_with_ortho != b.perspective_with_ortho) return false;
  Straighten(a);
  Straighten(b);
  return judge->CheckCamerasEqual(&a, &b);
}

bool RewindPartners::IsSceneOutsideView(const CameraParameters& camera) const {
  CameraOperations* const judge = hub.Get();
  return judge != nullptr && judge->IsSceneOutsideView(camera);
}

}  // namespace Korvane
