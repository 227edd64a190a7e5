#pragma once

#include "cube/quad_sink.h"
#include "korvane/vector2.h"
#include "korvane/vector3.h"

namespace Korvane {

class CubeSpace;
struct OrientorParameters;

/// Lays the quads of cube and compass into a sink; standard space.
class CubeQuads {
 public:
  /// `arrows`: the arrows beside a face that the view looks along show.
  CubeQuads(const OrientorParameters& settings, const CubeSpace& cubeSpace, QuadUse quadUse, bool arrows);

  /// A part of the cube with its arrow, if it has one.
  void LayPart(int part, QuadSink& sink) const;
  void LayArrow(int part, QuadSink& sink) const;
  bool HasArrow(int part) const;
  bool HasAnyArrow() const { return hasArrows; }
  /// A letter or a direction of the ring, from both sides.
  void LayCompassPart(int part, QuadSink& sink) const;
  void LayShadow(QuadSink& sink) const;
  /// The picture of the ring, from both sides.
  void LayRing(QuadSink& sink) const;
  /// The whole cube as a box.
  void LayBody(QuadSink& sink) const;

  /// The middle of a part of the compass.
  Vector3 GetCompassPlace(int part) const;
  /// No quad that is offered is farther from the centre.
  double GetReach() const;

 private:
  double GetGround() const;
  static double GetCompassHalfSize(int part);
  Vector3 GetGroundPlace(int part) const;
  void LayQuad(int id, const Vector3& centre, const Vector3& a, const Vector3& b, const Vector2& texCorner1,
               const Vector2& texCorner2, QuadSink& sink) const;

  const OrientorParameters& parameters;
  const CubeSpace& space;
  QuadUse use;
  bool hasArrows;
  CubeDimensions cube;
};

}  // namespace Korvane
