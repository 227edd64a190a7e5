#pragma once

#include <array>

#include "korvane/vector3.h"
#include "zovhost/projection.h"

namespace zovhost {

/// What a projection shows: the space within the four sides of its view. Near and far planes hold the scene
/// in any case.
class ViewVolume {
 public:
  /// `height` of the viewport in pixels.
  ViewVolume(const Projection& projection, int height);

  /// Whether a sphere may be seen, and is not smaller than `leastPixels` across.
  bool Shows(const Korvane::Vector3& centre, double radius, double leastPixels) const;
  /// Whether a sphere lies behind the near plane as a whole: nobody looks at it from within.
  bool IsOutside(const Korvane::Vector3& centre, double radius) const;

 private:
  struct Plane {
    Korvane::Vector3 normal;  // inwards, unit length; zero where there is none
    double offset = 0.0;
  };
  Projection projection;
  double height;
  Korvane::Vector3 eye;
  std::array<Plane, 4> planes;
};

}  // namespace zovhost
