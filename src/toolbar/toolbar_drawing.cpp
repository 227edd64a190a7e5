// A frame of the strip, and the moves that go on in it.
#include "render/render_pass.h"
#include "toolbar/toolbar_parts.h"

namespace Korvane {

namespace {

// What goes on still shows in this frame; the first frame after its end counts as one more, and ends it.
bool GoesOn(bool moving, bool& inProgress) {
  const bool changed = moving || inProgress;
  inProgress = moving;
  return changed;
}

}  // namespace

void Toolbar::Draw() {
  const Staying now(parts);
  if (!now->CanDraw()) return;
  if (now->life.refreshPending || now->life.texturesMissing) Refresh();
  if (!now || !now->CanDraw() || !(now->life.visible || now->fade.inProgress)) return;
  if (!now->items.IsEmpty()) DrawStrip();
  if (now) ShowCursor();
  if (now) DrawAnimations();
}

void Toolbar::DrawStrip() {
  const Staying now(parts);
  if (now->partners.hub.Get()->GetApplicationParameters().mouse_drag) now->UpdateOpacity();
  Renderer& renderer = *now->partners.renderer.Get();
  const Vector2 middle = now->room.GetMiddle();
  const bool moving = now->motion.IsMoving();
  const RenderPass pass(&renderer, Box2(middle, middle), now->partners.hub.Get()->GetCameraParameters(),
                        Renderer::RENDER_OVERLAY);
  if (!pass) return;
  ToolbarPainter painter(renderer, now->look, now->motion.bounds, now->place.orientation, now->fade.Get());
  painter.DrawBackground();
  painter.DrawBorders();
  if (moving) return;
  for (int i = 0; i < now->items.GetCount(); ++i) {
    const std::shared_ptr<ToolbarItem> item = now->items.Share(i);
    if (!item->IsHidden() && !item->IsExcluded()) painter.DrawItem(*item);
  }
}

void Toolbar::ShowCursor() {
  const StripMouse& mouse = parts->mouse;
  const bool free = mouse.inRegion && (!mouse.pressed || mouse.downOnItem);
  if (parts->drag.active || free) parts->SetCursor(parts->drag.active ? CURSOR_PAN : CURSOR_ARROW);
}

// A mouse that rests has other items under it once the strip has come to rest.
void Toolbar::DrawAnimations() {
  const Staying now(parts);
  const bool wasTravelling = now->motion.positionInProgress;
  bool changed = DrawOpacityAnimation();
  changed = DrawPositionAnimation() || changed;
  changed = (now && DrawSizeAnimation()) || changed;
  if (now && changed) now->RequestUpdate();
  if (now && wasTravelling && !now->motion.positionInProgress) OnMouseMove(now->mouse.x, now->mouse.y);
}

bool Toolbar::DrawOpacityAnimation() {
  parts->fade.Get();
  return GoesOn(parts->fade.IsMoving(), parts->fade.inProgress);
}

bool Toolbar::DrawPositionAnimation() {
  const Staying now(parts);
  StripMotion& motion = now->motion;
  const bool moving = motion.IsCenterMoving();
  const bool changed = GoesOn(moving, motion.positionInProgress);
  if (changed) RecalculateLayout();
  if (changed && now && !now->keepInView) now->Constrain();
  if (!now || moving) return true;
  motion.EndTravel();
  return changed;
}

bool Toolbar::DrawSizeAnimation() {
  const Staying now(parts);
  StripMotion& motion = now->motion;
  const bool moving = motion.IsExtentMoving();
  const bool changed = GoesOn(moving, motion.sizeInProgress);
  if (changed) RecalculateLayout();
  if (!now || moving) return true;
  motion.EndGrowth();
  return changed;
}

}  // namespace Korvane
