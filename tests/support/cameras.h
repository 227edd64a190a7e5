#pragma once

#include "korvane/camera_parameters.h"
#include "support/random.h"

/// A perspective camera of 45 degrees on all sides, an orthographic size to match its viewing distance, the
/// pivot at the centre.
Korvane::CameraParameters LookAt(const Korvane::Vector3& eye, const Korvane::Vector3& centre,
                                 const Korvane::Vector3& up);

/// Copies with another frustum: half angles in degrees, or an orthographic size.
Korvane::CameraParameters WithSymmetricFrustum(Korvane::CameraParameters camera, double horizontal,
                                               double vertical);
Korvane::CameraParameters WithAsymmetricFrustum(Korvane::CameraParameters camera, double left, double right,
                                                double top, double bottom);
Korvane::CameraParameters WithOrthographic(Korvane::CameraParameters camera, double width, double height);
Korvane::CameraParameters WithPivot(Korvane::CameraParameters camera, const Korvane::Vector3& pivot);

enum class Frustum { Symmetric, Asymmetric, Orthographic };

/// A camera as hosts have them: within 100 units of the origin, viewing distance and pivot distance of 0.5
/// to 100, an up neither of unit length nor perpendicular but at least 10 degrees off the view, the pivot
/// anywhere in front, beside or behind.
Korvane::CameraParameters RandomCamera(Random& random, Frustum frustum);
/// One of the three frusta by chance.
Korvane::CameraParameters RandomCamera(Random& random);

/// A right-handed pair of perpendicular unit vectors.
struct Axes {
  Korvane::Vector3 up;
  Korvane::Vector3 front;
};
Axes RandomAxes(Random& random);

/// Finite but hostile: magnitudes up to 1e300 and down to 0, points that coincide, ups along the view.
Korvane::CameraParameters ExtremeCamera(Random& random);
/// An extreme camera with one number replaced by a NaN or an infinity.
Korvane::CameraParameters BrokenCamera(Random& random);

/// Every field, bit for bit (NaN equals the same NaN).
bool SameBits(const Korvane::CameraParameters& a, const Korvane::CameraParameters& b);
