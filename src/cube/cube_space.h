#pragma once

#include <cstdint>

#include "cube/cube_model.h"
#include "korvane/vector3.h"

namespace Korvane {

class ApplicationParameters;
struct CameraParameters;

/// The view of the host's camera in the cube's standard space. The space is tied to the front and up of the
/// scene. A look with the camera of before costs a comparison.
class CubeSpace {
 public:
  void Look(const CameraParameters& camera, const ApplicationParameters& scene);

  // Directions of unit length in standard space; zero for a camera that has none.
  const Vector3& GetView() const { return view; }
  const Vector3& GetUp() const { return up; }
  /// View and up span a picture. Otherwise every pixel of it looks along the same line.
  bool HasPicture() const { return hasPicture; }
  /// The camera looks up from the ground of the world.
  bool IsLookingUp() const { return lookingUp; }

  Vector3 FromScene(const Vector3& v) const { return sceneBasis.Into(v); }
  /// The standard coordinates of what is laid out along the axes of the world, so that north stays north when
  /// the scene is turned against the world.
  Vector3 FromWorldAxes(const Vector3& v) const { return sceneBasis.Into(worldBasis.OutOf(v)); }
  /// The same for what lies on the ground, which is the scene's where the scene is the world.
  Vector3 FromGround(const Vector3& v) const { return sceneIsWorld ? v : FromWorldAxes(v); }

  /// Another number whenever anything of the above may have changed.
  std::uint64_t GetVersion() const { return version; }

 private:
  struct Source {
    Vector3 eye, centre, up;
    Vector3 sceneFront, sceneUp;
    Vector3 worldFront, worldUp;
    double sceneIsWorld = 0.0;
  };

  Source source;
  Basis sceneBasis;
  Basis worldBasis;
  Vector3 view;
  Vector3 up;
  bool hasPicture = false;
  bool lookingUp = false;
  bool sceneIsWorld = true;
  std::uint64_t version = 0;
};

}  // namespace Korvane
