#pragma once

#include "korvane/icon2d.h"
#include "korvane/renderer.h"

namespace Korvane {

/// The pictures of the film strip itself, each one call in a pass that is open.
class RewindPainter {
 public:
  void DrawBracket(Renderer& target, const Vector2& position, double scale, bool snapped);
  /// Over the picture of an element.
  void DrawGlass(Renderer& target, const Box2& bounds) { Draw(target, glass, bounds, 1.0); }
  /// The two frames of an element: the one gives way to the other as it weighs more.
  void DrawFrame(Renderer& target, const Box2& bounds, double weight);
  void DrawActiveFrame(Renderer& target, const Box2& bounds, double weight);

 private:
  static void Draw(Renderer& target, ResourceIcon2D& icon, const Box2& bounds, double opacity);

  ResourceIcon2D frame{TEXTURE_REWIND_FRAME};
  ResourceIcon2D activeFrame{TEXTURE_REWIND_FRAME_ACTIVE};
  ResourceIcon2D bracket{TEXTURE_REWIND_BRACKET};
  ResourceIcon2D snappedBracket{TEXTURE_REWIND_BRACKET_SNAPPED};
  ResourceIcon2D glass{TEXTURE_REWIND_GLASS};
};

}  // namespace Korvane
