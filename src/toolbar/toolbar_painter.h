#pragma once

#include "korvane/color_rgba.h"
#include "korvane/icon2d.h"
#include "korvane/renderer.h"
#include "korvane/toolbar.h"

namespace Korvane {

/// The pictures and colours of a strip.
struct StripLook {
  ResourceIcon2D flyoutArrow{TEXTURE_NONE};
  ResourceIcon2D gripHandles[2] = {ResourceIcon2D(TEXTURE_NONE), ResourceIcon2D(TEXTURE_NONE)};
  ResourceIcon2D moreControls[2] = {ResourceIcon2D(TEXTURE_NONE), ResourceIcon2D(TEXTURE_NONE)};
  // From the top left, clockwise.
  ResourceIcon2D corners[4] = {ResourceIcon2D(TEXTURE_NONE), ResourceIcon2D(TEXTURE_NONE),
                               ResourceIcon2D(TEXTURE_NONE), ResourceIcon2D(TEXTURE_NONE)};
  ResourceIcon2D highlightedCorners[4] = {ResourceIcon2D(TEXTURE_NONE), ResourceIcon2D(TEXTURE_NONE),
                                          ResourceIcon2D(TEXTURE_NONE), ResourceIcon2D(TEXTURE_NONE)};
  ColorRGBA background = Toolbar::DEFAULT_BACKGROUND_COLOR;
  ColorRGBA border = Toolbar::DEFAULT_BORDER_COLOR;
  ColorRGBA highlight = Toolbar::DEFAULT_HIGHLIGHT_COLOR;
  ColorRGBA mouseOver = Toolbar::DEFAULT_MOUSEOVER_COLOR;
  ColorRGBA mouseDown = Toolbar::DEFAULT_MOUSEDOWN_COLOR;
  ColorRGBA outline = Toolbar::DEFAULT_OUTLINE_COLOR;
  ColorRGBA selected = Toolbar::DEFAULT_SELECTED_COLOR;
  ColorRGBA grip = Toolbar::DEFAULT_GRIP_COLOR;
  ColorRGBA separator = Toolbar::DEFAULT_SEPARATOR_COLOR;
  int borderWidth = 1;  // pixels
};

/// Draws a strip in a pass that is open.
class ToolbarPainter {
 public:
  ToolbarPainter(Renderer& target, StripLook& stripLook, const Box2& bounds, Toolbar::Orientation along,
                 double opacityNow);

  void DrawBackground();
  void DrawBorders();
  void DrawItem(ToolbarItem& item);

 private:
  void DrawQuads(const Box2* boxes, unsigned count, const ColorRGBA& color, TextureID texture = TEXTURE_NONE);
  void DrawBox(const Box2& box, const ColorRGBA& color, TextureID texture = TEXTURE_NONE);
  void DrawFrame(const Box2& box, const Vector2& cut, const ColorRGBA& color);
  void DrawFill(const ToolbarItem& item);
  void DrawGrip(const Box2& bounds);
  void DrawSeparator(const Box2& bounds);
  void DrawIcon(ResourceIcon2D& icon, const Box2& bounds, double strength);
  ResourceIcon2D& FindIcon(ToolbarItem& item);
  Vector2 GetCornerSize() const;
  Box2 GetCorner(int corner) const;

  Renderer& renderer;
  StripLook& look;
  const Box2 strip;
  const Toolbar::Orientation orientation;
  const double opacity;
};

}  // namespace Korvane
