#pragma once

#include <span>

#include "korvane/icon2d.h"
#include "korvane/resource_ids.h"
#include "korvane/vector2.h"

namespace Korvane {

class HeightOperation;
class Renderer;

/// Shows where a camera stands between the floor and the top of the scene, and where it set out from there:
/// a gauge with two marks, each drawn in a pass that is open. Heights are -0.5 to 0.5.
class HeightGauge {
 public:
  HeightGauge();

  static std::span<const TextureID> GetTextures();
  static double GetHeight(HeightOperation& operation);

  /// In viewport pixels, of its middle.
  void SetPosition(const Vector2& value) { position = value; }
  /// How many pixels stand for one of its own.
  void SetScale(double value) { scale = value; }
  void DrawGauge(Renderer& target);
  void DrawMarks(Renderer& target, double start, double now);

 private:
  void Draw(Renderer& target, ResourceIcon2D& picture, double size, double height) const;

  Vector2 position;
  double scale = 1.0;
  ResourceIcon2D gauge;
  ResourceIcon2D startMark;
  ResourceIcon2D mark;
};

}  // namespace Korvane
