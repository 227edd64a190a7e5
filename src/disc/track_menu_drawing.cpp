// A frame of the menu.
#include <cmath>

#include "disc/track_menu_parts.h"
#include "render/display_scale.h"
#include "render/render_pass.h"

namespace Korvane {

namespace {

constexpr double TOOLTIP_GAP = 16.0;  // pixels
constexpr double NOTE_DROP = 64.0;    // below the cursor

// A coordinate that stands at the far edge stays there.
double WrapIntoViewport(int coordinate, int size) {
  if (size <= 0) return coordinate;  // while it was drawn, the view has lost its size
  if (coordinate < 0) return static_cast<double>(coordinate % size) + size;
  return coordinate > size ? coordinate % size : coordinate;
}

template <class Icon>
void RenderIfThere(Renderer& pass, Icon* icon) {
  if (icon != nullptr) pass.Render(icon);
}

}  // namespace

void TrackMenu::DrawTrackMenu() {
  TrackMenuParts& now = *parts;
  CameraOperations* const hub = GetKorvane();
  Renderer* const renderer = GetRenderer();
  if (hub == nullptr || renderer == nullptr || !now.HasViewport()) return;
  const Lifeline::Watch alive(now.lifeline);
  const double scale = PixelsPerPoint(hub);
  {
    const Vector2 half(now.viewportWidth / 2.0, now.viewportHeight / 2.0);
    const RenderPass pass(renderer, Box2(half, half), hub->GetCameraParameters(), Renderer::RENDER_OVERLAY);
    if (pass && now.state.visible) {
      now.DrawRegion(*renderer);
      if (alive) now.DrawTooltip(*renderer, scale);
    } else if (pass) {
      now.DrawNote(*renderer, scale);
    }
  }
  if (!alive) return;
  Renderer* const present = GetRenderer();
  if (present != nullptr && now.state.enabled && !now.state.openingMenu)
    present->SetCursorID(now.state.visible ? now.look.menuCursorID : now.active.cursorID);
  if (alive) now.Tell(now.active.listener, [](RegionListener& each) { each.OnDraw(); });
}

// The host may take pictures and texts away while it draws one of them.
void TrackMenuParts::DrawRegion(Renderer& pass) const {
  if (single.IsUsed()) {
    RenderIfThere(pass, single.Get());
    return;
  }
  RenderIfThere(pass, active.icon);
  RenderIfThere(pass, active.overlayIcon);
  RenderIfThere(pass, active.label);
}

void TrackMenuParts::DrawTooltip(Renderer& pass, double scale) const {
  const ResourceIcon2D* const icon = active.icon;
  DynamicIcon2D* const tooltip = active.tooltip;
  if (icon == nullptr || tooltip == nullptr || !tooltip->IsVisible()) return;
  if (!state.visible || !Switches::IsOn(switches.showTooltip)) return;
  const double top = icon->GetPosition().y - std::floor(icon->GetHeight() / 2.0) + TOOLTIP_GAP * scale;
  tooltip->SetPosition(Vector2(icon->GetPosition().x, top + std::floor(tooltip->GetHeight() / 2.0)));
  tooltip->SetOpacity(icon->GetOpacity());
  pass.Render(tooltip);
}

void TrackMenuParts::DrawNote(Renderer& pass, double scale) const {
  DynamicIcon2D* const note = active.tooltipHUD;
  if (note == nullptr || !Switches::IsOn(switches.showTooltipHUD)) return;
  const double x = active.wrap ? WrapIntoViewport(mouse.x, viewportWidth) : mouse.x;
  const double y = active.wrap ? WrapIntoViewport(mouse.y, viewportHeight) : mouse.y;
  note->SetPosition(Vector2(x, y - NOTE_DROP * scale));
  pass.Render(note);
}

}  // namespace Korvane
