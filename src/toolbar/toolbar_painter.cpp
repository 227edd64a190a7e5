#include "toolbar/toolbar_painter.h"

#include <cassert>
#include <cstddef>

#include "korvane/math.h"

namespace Korvane {

namespace {

constexpr unsigned MOST_QUADS = 5;
constexpr double FAINT = 0.4;
constexpr ColorRGBA WHITE{1.0, 1.0, 1.0, 1.0};

// From the top left, clockwise: the sides of the strip at which a corner lies.
struct Side {
  double x;
  double y;
};
constexpr Side CORNERS[] = {{-1.0, 1.0}, {1.0, 1.0}, {1.0, -1.0}, {-1.0, -1.0}};

Box2 FromCorners(const Vector2& low, const Vector2& high) { return {(low + high) / 2.0, (high - low) / 2.0}; }

Box2 Shrink(const Box2& box, double by) {
  const Vector2& half = box.halfExtent;
  return {box.center, Vector2(Math::Max(half.x - by, 0.0), Math::Max(half.y - by, 0.0))};
}

Box2 ClipTo(const Box2& box, const Vector2& half) {
  return {box.center, Vector2(Math::Min(box.halfExtent.x, half.x), Math::Min(box.halfExtent.y, half.y))};
}

Vector2 HalfSizeOf(const ResourceIcon2D& icon) { return icon.GetBounds().halfExtent; }

}  // namespace

ToolbarPainter::ToolbarPainter(Renderer& target, StripLook& stripLook, const Box2& bounds,
                               Toolbar::Orientation along, double opacityNow)
    : renderer(target), look(stripLook), strip(bounds), orientation(along), opacity(opacityNow) {}

// ---- the strip ----

// The corners, and between them a band across the strip with one above and one below it.
void ToolbarPainter::DrawBackground() {
  const Vector2 corner = GetCornerSize();
  const Vector2 low = strip.Min();
  const Vector2 high = strip.Max();
  const Box2 pieces[] = {
      FromCorners(low + corner, high - corner),
      FromCorners({low.x, low.y + corner.y}, {low.x + corner.x, high.y - corner.y}),
      FromCorners({high.x - corner.x, low.y + corner.y}, {high.x, high.y - corner.y}),
      FromCorners({low.x + corner.x, high.y - corner.y}, {high.x - corner.x, high.y}),
      FromCorners({low.x + corner.x, low.y}, {high.x - corner.x, low.y + corner.y}),
  };
  DrawQuads(pieces, 5, look.background);
  for (int i = 0; i < 4; ++i) DrawBox(GetCorner(i), look.background, look.corners[i].GetTextureResourceID());
}

void ToolbarPainter::DrawBorders() {
  const Vector2 corner = GetCornerSize();
  const double width = look.borderWidth;
  DrawFrame(strip, corner, look.border);
  DrawFrame(Shrink(strip, width), corner - Vector2(width), look.highlight);
  for (int i = 0; i < 4; ++i) {
    const TextureID texture = look.highlightedCorners[i].GetTextureResourceID();
    if (texture != TEXTURE_NONE) DrawBox(GetCorner(i), WHITE, texture);
  }
}

Vector2 ToolbarPainter::GetCornerSize() const {
  return ClipTo(look.corners[0].GetBounds(), strip.halfExtent / 2.0).halfExtent * 2.0;
}

Box2 ToolbarPainter::GetCorner(int corner) const {
  const Vector2 half = GetCornerSize() / 2.0;
  const Vector2 inner = strip.halfExtent - half;
  const Side side = CORNERS[corner];
  return {strip.center + Vector2(side.x * inner.x, side.y * inner.y), half};
}

// ---- an item ----

void ToolbarPainter::DrawItem(ToolbarItem& item) {
  if (item.GetType() == ToolbarItem::TYPE_SEPARATOR) return DrawSeparator(item.GetBounds());
  DrawFill(item);
  if (item.GetType() == ToolbarItem::TYPE_GRIP) return DrawGrip(item.GetBounds());
  const double strength = item.GetState() == ToolbarItem::STATE_DISABLED ? FAINT : 1.0;
  const Box2 arrow = item.GetFlyoutIconBounds();
  DrawIcon(FindIcon(item), item.GetNonFlyoutIconBounds(), strength);
  if (arrow.halfExtent != Vector2()) DrawIcon(look.flyoutArrow, arrow, strength);
}

// Of a flyout button that is pressed, the half that was pressed is the darker one.
void ToolbarPainter::DrawFill(const ToolbarItem& item) {
  const Box2 bounds = item.GetBounds();
  switch (item.GetState()) {
    case ToolbarItem::STATE_SELECTED:
      DrawBox(bounds, look.selected);
      break;
    case ToolbarItem::STATE_MOUSE_OVER:
    case ToolbarItem::STATE_MOUSE_OVER_FLYOUT:
      DrawBox(bounds, look.mouseOver);
      break;
    case ToolbarItem::STATE_PRESSED:
      DrawBox(bounds, look.mouseOver);
      DrawBox(item.GetNonFlyoutIconBounds(), look.mouseDown);
      break;
    case ToolbarItem::STATE_PRESSED_FLYOUT:
      DrawBox(bounds, look.mouseOver);
      DrawBox(item.GetFlyoutIconBounds(), look.mouseDown);
      break;
    default:
      return;
  }
  DrawFrame(bounds, Vector2(), look.outline);
}

void ToolbarPainter::DrawGrip(const Box2& bounds) {
  const ResourceIcon2D& handle = look.gripHandles[orientation];
  DrawBox(ClipTo(bounds, HalfSizeOf(handle)), look.grip, handle.GetTextureResourceID());
}

void ToolbarPainter::DrawSeparator(const Box2& bounds) {
  const double half = look.borderWidth / 2.0;
  const bool vertical = orientation == Toolbar::ORIENTATION_VERTICAL;
  const Vector2 line = vertical ? Vector2(bounds.halfExtent.x, half) : Vector2(half, bounds.halfExtent.y);
  DrawBox(ClipTo(bounds, line), look.separator);
}

ResourceIcon2D& ToolbarPainter::FindIcon(ToolbarItem& item) {
  const bool ownPicture = item.GetIcon().GetTextureResourceID() != TEXTURE_NONE;
  return item.GetType() == ToolbarItem::TYPE_MORE_CONTROLS && !ownPicture ? look.moreControls[orientation]
                                                                          : item.GetIcon();
}

void ToolbarPainter::DrawIcon(ResourceIcon2D& icon, const Box2& bounds, double strength) {
  if (icon.GetTextureResourceID() == TEXTURE_NONE) return;
  icon.SetPosition(bounds.center);
  icon.SetOpacity(opacity * strength);
  renderer.Render(&icon);
}

// ---- boxes ----

void ToolbarPainter::DrawBox(const Box2& box, const ColorRGBA& color, TextureID texture) {
  DrawQuads(&box, 1, color, texture);
}

// Inside the box, without its corners.
void ToolbarPainter::DrawFrame(const Box2& box, const Vector2& cut, const ColorRGBA& color) {
  const double width = look.borderWidth;
  const Vector2 low = box.Min();
  const Vector2 high = box.Max();
  const double left = low.x + Math::Max(cut.x, width);
  const double right = high.x - Math::Max(cut.x, width);
  const double bottom = low.y + Math::Max(cut.y, 0.0);
  const double top = high.y - Math::Max(cut.y, 0.0);
  const Box2 lines[] = {FromCorners({low.x, bottom}, {low.x + width, top}),
                        FromCorners({high.x - width, bottom}, {high.x, top}),
                        FromCorners({left, low.y}, {right, low.y + width}),
                        FromCorners({left, high.y - width}, {right, high.y})};
  DrawQuads(lines, 4, color);
}

void ToolbarPainter::DrawQuads(const Box2* boxes, unsigned count, const ColorRGBA& color, TextureID texture) {
  static constexpr float WHOLE_PICTURE[8] = {0.0F, 1.0F, 0.0F, 0.0F, 1.0F, 0.0F, 1.0F, 1.0F};
  assert(count <= MOST_QUADS && (count == 1 || texture == TEXTURE_NONE));
  float vertices[MOST_QUADS * 12];
  for (unsigned i = 0; i < count; ++i) boxes[i].ToArray(vertices + std::size_t{12} * i, 0.0F);
  Renderer::MaterialParams material;
  const double channels[] = {color.r, color.g, color.b, color.a * opacity};
  for (int i = 0; i < 4; ++i) material.colour[i] = static_cast<float>(channels[i]);
  material.texture = texture;
  const bool plain = texture == TEXTURE_NONE;
  renderer.RenderGeometry(4 * count, vertices, plain ? nullptr : WHOLE_PICTURE, &material);
}

}  // namespace Korvane
