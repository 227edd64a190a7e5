#pragma once

#include "korvane/box2.h"
#include "korvane/orientor_parameters.h"
#include "korvane/vector2.h"

namespace Korvane {

/// Where the cube, and what stands beside it, is in the viewport. Pixels; y upward, except where told.
class CubeLayout {
 public:
  /// From viewport pixels, y downward, to the cube's corner: x is 0 there and grows inward, y is the height
  /// of the viewport there and falls inward.
  struct Mirror {
    float offsetX = 0.0F;
    float offsetY = 0.0F;
    float scaleX = 1.0F;
    float scaleY = 1.0F;
  };

  void SetViewport(int width, int height);
  /// To the corner that the parameters name; true when that is another one.
  bool GoToCorner(const OrientorParameters& parameters);
  /// The size that the parameters name.
  void TakeSize(const OrientorParameters& parameters);

  /// Of the label of the coordinate system.
  int GetLabelWidth(const OrientorParameters& parameters) const;
  /// What cube, compass and label take in the corner.
  void GetRegionSize(const OrientorParameters& parameters, bool secondLine, int& width, int& height) const;
  /// The square in which cube and compass are drawn.
  Box2 GetPassBox(const OrientorParameters& parameters) const;
  Box2 GetViewportBox() const;

  /// `x` and `y` downward. Distances from the corner as told at Mirror.
  Vector2 ToCorner(double x, double y) const;
  /// Near the cube; `inCorner` from ToCorner. The lock button takes a little more.
  bool IsInRegion(const OrientorParameters& parameters, bool locked, const Vector2& inCorner) const;
  /// How far into the corner: 1 within a little more than the size of the cube, from there along a sine down
  /// to 0.
  float GetNearness(const OrientorParameters& parameters, const Vector2& inCorner) const;

  /// `offset` in screen sizes from the cube's corner inward.
  Vector2 GetOverlayPosition(const OrientorParameters& parameters, const Vector2& offset) const;
  // Of the buttons, in screen sizes.
  static Vector2 GetHomeOffset(const OrientorParameters& parameters, bool locked);
  static Vector2 GetContextOffset(const OrientorParameters& parameters);
  static Vector2 GetUCSOffset(const OrientorParameters& parameters);

  int viewportWidth = 0;
  int viewportHeight = 0;
  int screenSize = 0;
  int lastLocation = -1;
  Mirror mirror;
};

}  // namespace Korvane
