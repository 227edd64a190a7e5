// Life, collaborators, place and look. The other sources of the class: _events, _drawing and _items.
#include "korvane/toolbar.h"

#include <cmath>

#include "foundation/one_thread.h"
#include "foundation/out_of_memory.h"
#include "toolbar/toolbar_parts.h"

namespace Korvane {

double Toolbar::sm_fadeDistanceFactor = DEFAULT_FADE_DISTANCE_FACTOR;
double Toolbar::sm_fadeStepValue = DEFAULT_FADE_STEP_VALUE;

namespace {

bool IsSetting(double value) { return std::isfinite(value) && value >= 0.0; }

bool IsFinite(const Box2& box) { return box.center.IsFinite() && box.halfExtent.IsFinite(); }

bool IsOrientation(Toolbar::Orientation value) {
  return value == Toolbar::ORIENTATION_VERTICAL || value == Toolbar::ORIENTATION_HORIZONTAL;
}

// True when that is a change.
template <class Value>
bool Store(Value& slot, const Value& value) {
  if (slot == value) return false;
  slot = value;
  return true;
}

// All of them are made before the first is changed.
template <std::size_t COUNT>
void SetPictures(ResourceIcon2D (&icons)[COUNT], const ResourceIcon2D (&made)[COUNT], int width, int height) {
  for (std::size_t i = 0; i < COUNT; ++i) {
    icons[i] = made[i];
    icons[i].SetSize(width, height);
  }
}

void SetPicture(ResourceIcon2D& icon, TextureID texture, int width, int height) {
  icon = ResourceIcon2D(texture);
  icon.SetSize(width, height);
}

}  // namespace

// ---- life ----

Toolbar::Toolbar() : parts(std::make_shared<ToolbarParts>()) {}

Toolbar::~Toolbar() {
  parts->lifeline.Cut();
  parts->life.created = false;
  parts->textures.reset();
}

Lifeline& Toolbar::GetLifeline() { return parts->lifeline; }

bool Toolbar::Create() {
  return OrFail([&] {
    if (parts->life.created) return true;
    const Staying now(parts);
    now->life.created = true;
    if (!now->UpdateTextures(true)) return now->life.created = false;
    if (now) PostRefresh();
    return true;
  });
}

bool Toolbar::Destroy() {
  const Staying now(parts);
  now->life.created = false;
  now->EndPress();
  now->mouse.ForgetPlace();
  now->motion.Stop();
  now->fade.Stop();
  now->life.texturesMissing = false;
  if (now->textures != nullptr) now->UpdateTextures(false);
  return true;
}

void Toolbar::ApplyItemChanges() {
  OrFail([&] {
    const Staying now(parts);
    if (!now->life.created) return;
    now->motion.wantSize = now->motion.HasExtent();
    now->UpdateTextures(true);
    if (now) PostRefresh();
  });
}

void Toolbar::PostRefresh() {
  parts->life.refreshPending = true;
  if (parts->life.created && parts->IsShown()) parts->RequestUpdate();
}

// ---- collaborators ----

void Toolbar::SetKorvane(CameraOperations* hub) { parts->partners.hub.Set(hub); }

// What the former one holds it may free at once.
void Toolbar::SetRenderer(Renderer* value) {
  if (parts->partners.renderer.Get() == value) return;
  const Staying now(parts);
  const Borrowed<Renderer> former(now->partners.renderer.Get());
  now->partners.renderer.Set(value);
  if (!now->life.created) return;
  now->UpdateTextures(true);
  if (former.Get() != nullptr) former.Get()->ApplyTextureUsage();
}

bool Toolbar::AddObserver(ToolbarObserver* observer) { return parts->partners.observers.Add(observer); }
void Toolbar::RemoveObserver(ToolbarObserver* observer) { parts->partners.observers.Remove(observer); }

// ---- what shows ----

void Toolbar::SetVisible(bool value) {
  const Staying now(parts);
  const double before = now->fade.Get();
  const bool stopped = now->fade.Stop();
  const bool changed = Store(now->life.visible, value);
  if (!changed && stopped) now->RequestUpdate();
  if (!changed) return;
  if (now->motion.wantAnimation)
    now->fade.Begin(value ? 0.0 : before, value ? now->GetOpacityFromMouse() : 0.0);
  PostRefresh();
  if (now && !now->IsShown()) now->RequestUpdate();
}

bool Toolbar::IsVisible() const { return parts->IsShown(); }

void Toolbar::SetDisabled(bool value) {
  const Staying now(parts);
  if (!Store(now->life.disabled, value)) return;
  if (value && now->drag.active) {
    now->EndDrag();
    PostRefresh();
    now->SetCursor(CURSOR_ARROW);
  }
  const int before = now->mouse.overIndex;
  if (now) now->Update();
  if (now) TellOfPointer(before);
}

ToolbarItem::List& Toolbar::GetItems() { return parts->items; }
const ToolbarItem::List& Toolbar::GetItems() const { return parts->items; }

// ---- the place ----

Toolbar::Position Toolbar::GetPosition() const { return parts->place.position; }

void Toolbar::SetPosition(Position value) {
  if (!IsToolbarPosition(value)) return;
  const bool turned = parts->SetPlace(&StripPlace::orientation, GetOrientationAt(value));
  const bool moved = parts->SetPlace(&StripPlace::position, value);
  if (!turned && !moved) return;
  const Staying now(parts);
  PostRefresh();
  if (now && moved) OnPositionChanged();
}

void Toolbar::SetOrientation(Orientation value) {
  if (IsOrientation(value) && parts->SetPlace(&StripPlace::orientation, value)) PostRefresh();
}

void Toolbar::SetCornerOffset(const Vector2& offset) {
  if (offset.IsFinite() && parts->SetPlace(&StripPlace::cornerOffset, offset)) PostRefresh();
}

const Vector2& Toolbar::GetEdgeOffset() const { return parts->place.edgeOffset; }

void Toolbar::SetEdgeOffset(const Vector2& offset) {
  if (offset.IsFinite() && parts->SetPlace(&StripPlace::edgeOffset, offset)) PostRefresh();
}

void Toolbar::SetKeepInView(bool value) {
  if (Store(parts->keepInView, value)) PostRefresh();
}
bool Toolbar::GetKeepInView() const { return parts->keepInView; }

bool Toolbar::ConvertToEdgePosition() {
  if (!IsToolbarCorner(parts->place.position)) return false;
  const Staying now(parts);
  const StripPlace edge = GetEdgeBeside(now->room, now->place, now->halfSize);
  now->SetPlace(&StripPlace::position, edge.position);
  now->SetPlace(&StripPlace::edgeOffset, edge.edgeOffset);
  PostRefresh();
  if (now) OnPositionChanged();
  return true;
}

void Toolbar::SetViewportSize(int width, int height) {
  const bool wider = Store(parts->room.viewportWidth, width);
  const bool higher = Store(parts->room.viewportHeight, height);
  if (wider || higher) PostRefresh();
}

void Toolbar::SetRibbonSize(int width, int height) {
  const bool wider = Store(parts->room.ribbonWidth, width);
  const bool higher = Store(parts->room.ribbonHeight, height);
  if (wider || higher) PostRefresh();
}

void Toolbar::SetSizeLimits(int width, int height) {
  const bool wider = Store(parts->room.sizeLimitWidth, width);
  const bool higher = Store(parts->room.sizeLimitHeight, height);
  if (wider || higher) PostRefresh();
}

void Toolbar::SetOrientorBounds(const Box2& value) {
  Box2& bounds = parts->room.orientorBounds;
  if (!IsFinite(value)) return;
  const bool moved = Store(bounds.center, value.center);
  const bool sized = Store(bounds.halfExtent, value.halfExtent);
  if (moved || sized) PostRefresh();
}

void Toolbar::SetOrientorLocation(OrientorParameters::Location value) {
  if (Store(parts->room.orientorLocation, value)) PostRefresh();
}

void Toolbar::SetWantAnimation(bool value) { parts->motion.wantAnimation = value; }
bool Toolbar::GetWantAnimation() const { return parts->motion.wantAnimation; }
const ChangingInTimeBox2& Toolbar::GetToolbarBounds() const { return parts->motion.bounds; }

// ---- layout ----

void Toolbar::Refresh() {
  OrFail([&] {
    const Staying now(parts);
    now->life.refreshPending = false;
    if (!now->life.created) return;
    if (now->life.texturesMissing) now->UpdateTextures(true);
    if (!now) return;
    RecalculateLayout();
    if (now) now->Update();
  });
}

void Toolbar::RecalculateLayout() {
  const Staying now(parts);
  for (const std::shared_ptr<ToolbarItem>& item : now->Arrange()) {
    OnItemVisibilityChanged(*item);
    if (!now) return;
  }
}

// ---- the look ----

void Toolbar::SetFlyoutIcon(TextureID texture, int width, int height) {
  SetPicture(parts->look.flyoutArrow, texture, width, height);
  ApplyLook();
}

void Toolbar::SetGripHandleIcon(Orientation orientation, TextureID texture, int width, int height) {
  if (!IsOrientation(orientation)) return;
  SetPicture(parts->look.gripHandles[orientation], texture, width, height);
  ApplyLook();
}

void Toolbar::SetMoreControlsIcon(Orientation orientation, TextureID texture, int width, int height) {
  if (!IsOrientation(orientation)) return;
  SetPicture(parts->look.moreControls[orientation], texture, width, height);
  ApplyLook();
}

void Toolbar::SetCornerIcons(TextureID topLeft, TextureID topRight, TextureID bottomRight,
                             TextureID bottomLeft, int width, int height) {
  SetPictures(parts->look.corners,
              {ResourceIcon2D(topLeft), ResourceIcon2D(topRight), ResourceIcon2D(bottomRight),
               ResourceIcon2D(bottomLeft)},
              width, height);
  ApplyLook();
}

void Toolbar::SetCornerHighlightedIcons(TextureID topLeft, TextureID topRight, TextureID bottomRight,
                                        TextureID bottomLeft, int width, int height) {
  SetPictures(parts->look.highlightedCorners,
              {ResourceIcon2D(topLeft), ResourceIcon2D(topRight), ResourceIcon2D(bottomRight),
               ResourceIcon2D(bottomLeft)},
              width, height);
  ApplyLook();
}

void Toolbar::ApplyLook() {
  const Staying now(parts);
  if (now->life.created) now->UpdateTextures(true);
  if (now) PostRefresh();
}

void Toolbar::SetFadeDistanceFactor(double factor) {
  AssertOneThread();
  if (IsSetting(factor)) sm_fadeDistanceFactor = factor;
}

void Toolbar::SetFadeStepValue(double step) {
  AssertOneThread();
  if (IsSetting(step)) sm_fadeStepValue = step;
}

}  // namespace Korvane
