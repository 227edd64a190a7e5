#pragma once

#include "korvane/vector3.h"
#include "zovhost/scene.h"

namespace zovhost {

/// The ground at the foot of a scene, on which its shadow falls.
struct GroundPlace {
  Korvane::Vector3 origin;  // a corner
  Korvane::Vector3 sideU;   // from there along both sides
  Korvane::Vector3 sideV;
  Korvane::Vector3 up;
  double height = 1.0;  // of the scene above it
};
GroundPlace FindGroundPlace(const Scene& scene);

}  // namespace zovhost
