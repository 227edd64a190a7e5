#pragma once

#include "korvane/vector2.h"
#include "korvane/vector3.h"

namespace Korvane {

class CubeSpace;
class ApplicationParameters;
struct CameraParameters;
struct OrientorParameters;

/// The sense in which a drag of the compass turns the view, by where the part stands from the camera:
/// whether each axis of the mouse counts in reverse.
struct CompassSense {
  bool reverseX = false;
  bool reverseY = false;
};

/// `part` is the direction of the part, `compassAngle` in degrees.
CompassSense FindCompassSense(const CameraParameters& camera, const ApplicationParameters& scene,
                              const Vector3& part, double compassAngle);

/// The way on the screen, of unit length and y upward, that a place of the compass takes as the view orbits
/// as for a mouse that goes to the right. Zero where it does not show.
Vector2 FindCompassTangent(const OrientorParameters& parameters, const CubeSpace& space,
                           const CameraParameters& camera, const Vector3& worldUp, int part);

}  // namespace Korvane
