// Life, location, and what goes to the toolbar. The other source of the class: _items.
#include "korvane/navigation_bar.h"

#include <utility>

#include "korvane/helm_disc.h"
#include "toolbar/navigation_bar_parts.h"

namespace Korvane {

namespace {

constexpr int SMALL_ICON = 8;  // pixels
constexpr int GRIP_LENGTH = 32;
constexpr int GRIP_THICKNESS = 4;

void SetIcons(Toolbar& toolbar) {
  constexpr Toolbar::Orientation VERTICAL = Toolbar::ORIENTATION_VERTICAL;
  constexpr Toolbar::Orientation HORIZONTAL = Toolbar::ORIENTATION_HORIZONTAL;
  toolbar.SetFlyoutIcon(TEXTURE_BAR_FLYOUT, SMALL_ICON, SMALL_ICON);
  toolbar.SetGripHandleIcon(VERTICAL, TEXTURE_NONE, GRIP_LENGTH, GRIP_THICKNESS);
  toolbar.SetGripHandleIcon(HORIZONTAL, TEXTURE_NONE, GRIP_THICKNESS, GRIP_LENGTH);
  toolbar.SetMoreControlsIcon(VERTICAL, TEXTURE_BAR_MORE_VERTICAL, SMALL_ICON, SMALL_ICON);
  toolbar.SetMoreControlsIcon(HORIZONTAL, TEXTURE_BAR_MORE_HORIZONTAL, SMALL_ICON, SMALL_ICON);
  toolbar.SetCornerIcons(TEXTURE_BAR_TOP_LEFT, TEXTURE_BAR_TOP_RIGHT, TEXTURE_BAR_BOTTOM_RIGHT,
                         TEXTURE_BAR_BOTTOM_LEFT, SMALL_ICON, SMALL_ICON);
  toolbar.SetCornerHighlightedIcons(TEXTURE_BAR_TOP_LEFT_EDGE, TEXTURE_BAR_TOP_RIGHT_EDGE,
                                    TEXTURE_BAR_BOTTOM_RIGHT_EDGE, TEXTURE_BAR_BOTTOM_LEFT_EDGE, SMALL_ICON,
                                    SMALL_ICON);
}

// The edges come in the same order in both.
Toolbar::Position GetPositionOf(NavigationBar::Location location) {
  return static_cast<Toolbar::Position>(location - NavigationBar::LOCATION_LEFT);
}

NavigationBar::Location GetLocationOf(Toolbar::Position position) {
  const int location = int{position} + NavigationBar::LOCATION_LEFT;
  return location <= NavigationBar::LOCATION_BOTTOM ? static_cast<NavigationBar::Location>(location)
                                                    : NavigationBar::LOCATION_LINKED;
}

}  // namespace

// ---- life ----

NavigationBarParts::NavigationBarParts() : activeDisc(DiscType::None) {}

NavigationBar::NavigationBar() : parts(std::make_shared<NavigationBarParts>()) {}

// The toolbar may be told of within a call that goes on.
NavigationBar::~NavigationBar() {
  parts->lifeline.Cut();
  const std::unique_ptr<Toolbar> toolbar = std::move(parts->toolbar);
  const std::unique_ptr<NavigationBarToolbarObserver> observer = std::move(parts->toolbarObserver);
}

Lifeline& NavigationBar::GetLifeline() { return parts->lifeline; }

// Whoever is asked for the items of the host may let go of the bar.
bool NavigationBar::Create() {
  const Staying now(parts);
  Renderer* const renderer = now->partners.renderer.Get();
  CameraOperations* const hub = now->partners.hub.Get();
  if (now->toolbar != nullptr || hub == nullptr || renderer == nullptr) return false;
  now->toolbar.reset(InstantiateToolbar());
  const Borrowed<Toolbar> toolbar(now->toolbar.get());
  if (toolbar.Get() == nullptr) return false;
  toolbar.Get()->SetKorvane(hub);
  toolbar.Get()->SetRenderer(renderer);
  SetIcons(*toolbar.Get());
  if (now->location != LOCATION_LINKED) toolbar.Get()->SetPosition(GetPositionOf(now->location));
  toolbar.Get()->SetEdgeOffset(now->locationOffset);
  toolbar.Get()->SetVisible(now->visible);
  toolbar.Get()->SetViewportSize(now->viewport.width, now->viewport.height);
  PopulateItems();
  const bool result = now && toolbar.Get() != nullptr && toolbar.Get()->Create();
  if (!now || toolbar.Get() == nullptr) return false;
  if (result) {
    now->toolbarObserver = std::make_unique<NavigationBarToolbarObserver>(toolbar.Get(), this);
    toolbar.Get()->AddObserver(now->toolbarObserver.get());
  }
  toolbar.Get()->SetWantAnimation(true);
  return result;
}

Toolbar* NavigationBar::InstantiateToolbar() { return std::make_unique<Toolbar>().release(); }

// Where the bar stands outlasts the toolbar.
bool NavigationBar::Destroy() {
  const Staying now(parts);
  if (now->toolbar == nullptr) return false;
  now->locationOffset = GetLocationOffset();
  now->location = GetLocation();
  const std::unique_ptr<Toolbar> toolbar = std::move(now->toolbar);
  const std::unique_ptr<NavigationBarToolbarObserver> observer = std::move(now->toolbarObserver);
  toolbar->RemoveObserver(observer.get());
  return toolbar->Destroy();
}

// ---- collaborators ----

void NavigationBar::SetKorvane(CameraOperations* hub) {
  parts->partners.hub.Set(hub);
  if (parts->toolbar != nullptr) parts->toolbar->SetKorvane(hub);
}

void NavigationBar::SetRenderer(Renderer* value) {
  parts->partners.renderer.Set(value);
  if (parts->toolbar != nullptr) parts->toolbar->SetRenderer(value);
}

bool NavigationBar::AddObserver(NavigationBarObserver* observer) {
  return parts->partners.observers.Add(observer);
}
void NavigationBar::RemoveObserver(NavigationBarObserver* observer) {
  parts->partners.observers.Remove(observer);
}

Toolbar* NavigationBar::GetToolbar() const { return parts->toolbar.get(); }

// ---- the location ----

// A bar that has just been linked has its corner only with the next layout of the view.
NavigationBar::Location NavigationBar::GetLocation() const {
  if (parts->location == LOCATION_LINKED || parts->toolbar == nullptr) return parts->location;
  return GetLocationOf(parts->toolbar->GetPosition());
}

Vector2 NavigationBar::GetLocationOffset() const {
  return parts->toolbar != nullptr ? parts->toolbar->GetEdgeOffset() : parts->locationOffset;
}

void NavigationBar::SetLinkedToOrientor(bool linked) {
  if (linked == (GetLocation() == LOCATION_LINKED)) return;
  const Staying now(parts);
  now->location = linked ? LOCATION_LINKED : LOCATION_RIGHT;
  now->locationOffset = Vector2();
  if (!linked && now->toolbar != nullptr) {
    now->toolbar->ConvertToEdgePosition();
    if (!now) return;
    TakeLocation();
  }
  SetItemExcluded(TAG_GRIP, linked);
  if (now) now->RequestUpdate();
}

void NavigationBar::TakeLocation() {
  if (parts->toolbar == nullptr) return;
  parts->location = GetLocationOf(parts->toolbar->GetPosition());
  parts->locationOffset = parts->toolbar->GetEdgeOffset();
}

// ---- what goes to the toolbar ----

void NavigationBar::SetViewportSize(int width, int height) {
  parts->viewport = {width, height};
  if (parts->toolbar != nullptr) parts->toolbar->SetViewportSize(width, height);
}

void NavigationBar::Draw() {
  if (parts->toolbar != nullptr) parts->toolbar->Draw();
}

bool NavigationBar::OnMouseMove(int x, int y) {
  return parts->toolbar != nullptr && parts->toolbar->OnMouseMove(x, y);
}
bool NavigationBar::OnLeftMouseDown(int x, int y) {
  return parts->toolbar != nullptr && parts->toolbar->OnLeftMouseDown(x, y);
}
bool NavigationBar::OnLeftMouseUp(int x, int y) {
  return parts->toolbar != nullptr && parts->toolbar->OnLeftMouseUp(x, y);
}
bool NavigationBar::OnRightMouseDown(int x, int y) {
  return parts->toolbar != nullptr && parts->toolbar->OnRightMouseDown(x, y);
}
bool NavigationBar::OnRightMouseUp(int x, int y) {
  return parts->toolbar != nullptr && parts->toolbar->OnRightMouseUp(x, y);
}

bool NavigationBar::IsVisible() const { return parts->visible; }

void NavigationBar::SetVisible(bool value) {
  parts->visible = value;
  if (parts->toolbar != nullptr) parts->toolbar->SetVisible(value);
}

bool NavigationBar::IsMouseInRegion() const {
  return parts->toolbar != nullptr && parts->toolbar->IsMouseInRegion();
}
bool NavigationBar::IsMouseDownOnItem() const {
  return parts->toolbar != nullptr && parts->toolbar->IsMouseDownOnItem();
}

const std::wstring& NavigationBar::GetTooltip() const {
  return parts->toolbar != nullptr ? parts->toolbar->GetTooltip() : parts->emptyTooltip;
}

}  // namespace Korvane
