#include "cube/cube_space.h"

#include "camera/camera_frame.h"
#include "foundation/same_bits.h"
#include "korvane/application_parameters.h"

namespace Korvane {

void CubeSpace::Look(const CameraParameters& camera, const ApplicationParameters& scene) {
  const Source now{camera.eye,
                   camera.centre,
                   camera.up,
                   scene.scene_front_direction,
                   scene.scene_up_direction,
                   scene.world_front_direction,
                   scene.world_up_direction,
                   scene.scene_is_world ? 1.0 : 0.0};
  if (version != 0 && HaveSameBits(now, source)) return;
  ++version;
  source = now;
  sceneBasis = Basis(now.sceneFront, now.sceneUp);
  worldBasis = Basis(now.worldFront, now.worldUp);
  sceneIsWorld = scene.scene_is_world;
  const Vector3 direction = ViewDirection(camera);
  view = sceneBasis.Into(direction);
  up = sceneBasis.Into(camera.up.Normalized());
  static constexpr double CLEARLY_APART = 1e-3;
  hasPicture = view.Cross(up).Length() > CLEARLY_APART;
  lookingUp = direction.Dot(now.worldUp) > 0.0;
}

}  // namespace Korvane
