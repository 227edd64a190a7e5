#include "toolbar/toolbar_parts.h"

#include <algorithm>
#include <cstddef>

#include "foundation/out_of_memory.h"

namespace Korvane {

namespace {

StripItem Describe(const ToolbarItem& item) {
  StripItem entry;
  entry.type = item.GetType();
  entry.width = std::max(item.GetWidth(), 0);
  entry.height = std::max(item.GetHeight(), 0);
  entry.flyoutSize = std::max(item.GetFlyoutIconSize(), 0);
  entry.hidden = item.IsHidden();
  return entry;
}

void TakeOver(ToolbarItem& item, const StripItem& entry) {
  item.SetHidden(entry.hidden);
  item.SetExcluded(entry.excluded);
  item.SetBounds(entry.bounds);
  item.SetNonFlyoutIconBounds(entry.nonFlyoutBounds);
  item.SetFlyoutIconBounds(entry.flyoutBounds);
}

// A grip has none either, also where its drag has come to nothing.
bool HasClick(ToolbarItem::Type type) {
  return type != ToolbarItem::TYPE_PLAIN && type != ToolbarItem::TYPE_GRIP;
}

void Collect(const ResourceIcon2D& icon, std::vector<TextureID>& ids) {
  const TextureID id = icon.GetTextureResourceID();
  if (id != TEXTURE_NONE) ids.push_back(id);
}

void Collect(const StripLook& look, std::vector<TextureID>& ids) {
  Collect(look.flyoutArrow, ids);
  for (const ResourceIcon2D& icon : look.gripHandles) Collect(icon, ids);
  for (const ResourceIcon2D& icon : look.moreControls) Collect(icon, ids);
  for (const ResourceIcon2D& icon : look.corners) Collect(icon, ids);
  for (const ResourceIcon2D& icon : look.highlightedCorners) Collect(icon, ids);
}

void Collect(const ToolbarItem::List& items, std::vector<TextureID>& ids) {
  for (int i = 0; i < items.GetCount(); ++i) {
    const ToolbarItem& item = items.GetAt(i);
    Collect(item.GetIcon(), ids);
    const ToolbarItem::List& flyout = item.GetFlyoutItems();
    for (int k = 0; k < flyout.GetCount(); ++k) Collect(flyout.GetAt(k).GetIcon(), ids);
  }
}

}  // namespace

// ---- layout ----

ToolbarParts::ItemsTold ToolbarParts::Arrange() {
  const auto count = static_cast<std::size_t>(items.GetCount());
  strip.resize(count);
  for (std::size_t i = 0; i < count; ++i) strip[i] = Describe(items.GetAt(static_cast<int>(i)));

  const StripSize whole = MeasureStrip(strip, place.orientation, spacing);
  const double available = GetAvailableLength(room, place, whole.thickness);
  const double length = FitStrip(strip, place.orientation, whole.length, available);
  const bool vertical = place.orientation == Toolbar::ORIENTATION_VERTICAL;
  halfSize =
      vertical ? Vector2(whole.thickness / 2.0, length / 2.0) : Vector2(length / 2.0, whole.thickness / 2.0);
  motion.SetCenter(GetStripCenter(room, GetShownPlace(), halfSize));
  motion.SetExtent(halfSize);
  LayStrip(strip, place.orientation, motion.bounds, spacing);

  ItemsTold changed;
  for (std::size_t i = 0; i < count; ++i) {
    ToolbarItem& item = items.GetAt(static_cast<int>(i));
    if (item.IsExcluded() != strip[i].excluded) changed.push_back(items.Share(static_cast<int>(i)));
    TakeOver(item, strip[i]);
  }
  return changed;
}

void ToolbarParts::Constrain() {
  place.edgeOffset = GetConstrainedOffset(room, place, halfSize, mouse.pressed);
}

// What is held back is not forgotten.
StripPlace ToolbarParts::GetShownPlace() const {
  StripPlace shown = place;
  if (keepInView) shown.edgeOffset = GetConstrainedOffset(room, place, halfSize, drag.active);
  return shown;
}

// ---- the mouse ----

void ToolbarParts::Update() {
  const bool nearnessChanged = UpdateMouseArea();
  const bool itemsChanged = UpdateItems();
  const bool opacityChanged = UpdateOpacity();
  UpdateTooltip();
  if (!mouse.pressed) mouse.ForgetDown();  // of an item that the mouse had left when it was let go
  if (life.visible && (itemsChanged || nearnessChanged || opacityChanged)) RequestUpdate();
}

bool ToolbarParts::UpdateItems() {
  if (drag.active) return false;
  mouse.ForgetOver();
  bool changed = false;
  for (int i = 0; i < items.GetCount(); ++i) changed = UpdateItemState(i) || changed;
  return changed;
}

bool ToolbarParts::UpdateItemState(int index) {
  ToolbarItem& item = items.GetAt(index);
  if (item.IsHidden() || item.IsExcluded()) return false;
  const bool reachable = life.visible && (mouse.pressed || mouse.inBounds);
  const StripMouse::Effect effect = mouse.GetEffectOn(item, reachable);
  if (effect.over && !mouse.overItem) {
    mouse.overItem = true;
    mouse.overIndex = index;
  }
  const ToolbarItem::State before = item.GetState();
  if (before == effect.state) return false;
  item.SetState(effect.state);
  if (effect.state != ToolbarItem::STATE_DISABLED) mouse.TakeState(index, before, effect.state);
  return true;
}

bool ToolbarParts::UpdateMouseArea() {
  const bool wasInBounds = mouse.inBounds;
  const bool wasInRegion = mouse.inRegion;
  const Vector2 point = mouse.GetPoint();
  const Box2 box = motion.bounds;
  mouse.inBounds = life.visible && box.IsPointInside(point);
  mouse.inRegion = life.visible && StripMotion::GetRegionAround(box).IsPointInside(point);
  return mouse.inBounds != wasInBounds || mouse.inRegion != wasInRegion;
}

bool ToolbarParts::UpdateOpacity() {
  if (!life.visible) return fade.IsMoving();  // on its way out it follows no mouse
  const CameraOperations* const hub = partners.hub.Get();
  const bool away = life.disabled || (hub != nullptr && hub->GetApplicationParameters().mouse_drag);
  const double target = away ? static_cast<double>(fade.minimum) : GetOpacityFromMouse();
  return fade.Update(target, Toolbar::sm_fadeStepValue);
}

double ToolbarParts::GetOpacityFromMouse() const {
  if (mouse.downOnItem || mouse.inBounds) return fade.maximum;
  const Box2 box = motion.bounds;
  const double distance = Math::Min(box.halfExtent.x, box.halfExtent.y) * Toolbar::sm_fadeDistanceFactor;
  return fade.GetOpacityAt(GetNearness(box, mouse.GetPoint(), distance));
}

void ToolbarParts::UpdateTooltip() {
  OrFail([&] {
    static const std::wstring none;
    const bool shown = !mouse.pressed && mouse.overItem && mouse.overIndex < items.GetCount();
    const std::wstring& text = shown ? items.GetAt(mouse.overIndex).GetTooltip() : none;
    if (mouse.tooltip != text) mouse.tooltip = text;
  });
}

std::shared_ptr<ToolbarItem> ToolbarParts::FindClicked() const {
  std::shared_ptr<ToolbarItem> item = mouse.downOnItem ? items.Share(mouse.downIndex) : nullptr;
  const bool clicked = item != nullptr && HasClick(item->GetType()) && IsPressedState(item->GetState()) &&
                       item->GetBounds().IsPointInside(mouse.GetPoint());
  if (!clicked) item.reset();
  return item;
}

void ToolbarParts::EndDrag() {
  if (std::exchange(drag.active, false)) place = drag.former;
}

void ToolbarParts::EndPress() {
  mouse.pressed = false;
  mouse.ForgetDown();
  EndDrag();
}

// ---- partners ----

// The host may do anything while the counts come true. Where memory runs out nothing changes, but that those
// of another renderer go.
bool ToolbarParts::UpdateTextures(bool wanted) {
  const Borrowed<Renderer> renderer(partners.renderer.Get());
  const bool takes = wanted && renderer.Get() != nullptr;
  std::unique_ptr<Textures> next;
  if (takes) next = OrFail([&] { return TakeTextures(*renderer.Get()); });
  life.texturesMissing = takes && next == nullptr;
  if (life.texturesMissing) {
    if (textures != nullptr && textures->lender != renderer.Get()) textures.reset();
    return false;
  }
  textures.swap(next);
  next.reset();
  if (renderer.Get() != nullptr) renderer.Get()->ApplyTextureUsage();
  return true;
}

// Null where memory runs out.
std::unique_ptr<ToolbarParts::Textures> ToolbarParts::TakeTextures(Renderer& renderer) const {
  std::vector<TextureID> ids;
  Collect(look, ids);
  Collect(items, ids);
  std::sort(ids.begin(), ids.end());
  ids.erase(std::unique(ids.begin(), ids.end()), ids.end());
  auto taken = std::make_unique<Textures>(std::move(ids), renderer);
  return taken->loan.IsHeld() ? std::move(taken) : nullptr;
}

void ToolbarParts::SetCursor(CursorID id) const {
  if (Renderer* const renderer = partners.renderer.Get()) renderer->SetCursorID(id);
}

void ToolbarParts::RequestUpdate() const {
  if (CameraOperations* const hub = partners.hub.Get()) hub->RequestApplicationUpdate();
}

bool ToolbarParts::CanDraw() const {
  return room.HasViewport() && partners.hub.Get() != nullptr && partners.renderer.Get() != nullptr;
}

}  // namespace Korvane
