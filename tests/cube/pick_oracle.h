#pragma once

#include <vector>

#include "korvane/orientor_parameters.h"
#include "korvane/vector2.h"
#include "korvane/vector3.h"

/// What is under a pixel, found by brute force over all that the cube is said to consist of, with its own
/// geometry and its own meeting of ray and quad.
class PickOracle {
 public:
  using Vector2 = Korvane::Vector2;
  using Vector3 = Korvane::Vector3;

  struct Setup {
    Korvane::OrientorParameters parameters;
    int screenSize = 0;
    double viewportWidth = 0.0;
    double viewportHeight = 0.0;
    Vector3 view;  // unit vectors in standard space
    Vector3 up;
    bool cameraLooksUp = false;
    bool mouseInRegion = false;
    bool mouseOnOverlay = false;
    bool arrowsVisible = false;
    bool overlayShown = true;  // the mouse is near enough
    bool lockedToSelection = false;
    bool sceneIsWorld = true;
    // Front and up of the world along those of the scene: standard coordinates of the axes of the world.
    Vector3 worldFront = Vector3(1, 0, 0);
    Vector3 worldUp = Vector3(0, 1, 0);
    // The label of the coordinate system, pixels; none with a width of 0.
    double labelWidth = 0.0;
    double labelHeight = 0.0;
  };

  explicit PickOracle(const Setup& values);

  /// Part of cube or compass at a pixel, y upward; -1 for none. All of the ring counts as 30.
  int PickGeometry(const Vector2& pixel) const;
  /// Part of the overlay.
  int PickOverlay(const Vector2& pixel) const;
  /// Whether the ray of a pixel all but touches an edge or the diagonal of anything of cube and compass:
  /// there rounding decides on which side it passes.
  bool IsOnEdge(const Vector2& pixel) const;
  /// Where a point of the standard space shows.
  Vector2 Project(const Vector3& point) const;
  Vector3 GetEye() const { return eye; }

  struct Quad {
    Vector3 corners[4];
    int id;
  };
  /// As they are offered to the mouse.
  std::vector<Quad> GetPart(int part) const;
  std::vector<Quad> GetArrow(int face) const;
  std::vector<Quad> GetCompassPart(int part) const;
  std::vector<Quad> GetOverlay() const;

  static Vector3 DirectionOf(int part);

  Setup setup;  // what the mouse changes may be set between two picks

 private:
  Vector3 RayOf(const Vector2& pixel) const;
  Vector3 TurnedToWorld(const Vector3& v) const;
  Vector2 OverlayPosition(double x, double y) const;

  double face, edge, gap, half;
  Vector2 centre;  // of the pass, pixels
  double halfPass;
  Vector3 eye, forward, right, upward;
  double tangent;
  std::vector<Quad> parts;  // one quad of each face, then those of edges and corners
  std::vector<Quad> letters;
  std::vector<Quad> ring;
};
