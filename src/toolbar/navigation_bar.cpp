// Life, location, and what goes to the toolbar. The other source of the class: _items.
#include "korvane/navigation_bar.h"

#include <utility>

#include "foundation/out_of_memory.h"
#include "korvane/helm_disc.h"
#include "toolbar/navigation_bar_parts.h"

namespace Korvane {

namespace {

constexpr int SMALL_ICON = 8;  // pixels
constexpr int GRIP_LENGTH = 32;
constexpr int GRIP_THICKNESS = 4;
constexpr Toolbar::Orientation VERTICAL = Toolbar::ORIENTATION_VERTICAL;
constexpr Toolbar::Orientation HORIZONTAL = Toolbar::ORIENTATION_HORIZONTAL;

// The edges come in the same order in both.
Toolbar::Position GetPositionOf(NavigationBar::Location location) {
  return static_cast<Toolbar::Position>(location - NavigationBar::LOCATION_LEFT);
}

NavigationBar::Location GetLocationOf(Toolbar::Position position) {
  const int location = int{position} + NavigationBar::LOCATION_LEFT;
  return location <= NavigationBar::LOCATION_BOTTOM ? static_cast<NavigationBar::Location>(location)
                                                    : NavigationBar::LOCATION_LINKED;
}

// A bar that has just been linked has its corner only with the next layout of the view.
NavigationBar::Location FindLocation(NavigationBar::Location told, const Toolbar* toolbar) {
  if (told == NavigationBar::LOCATION_LINKED || toolbar == nullptr) return told;
  return GetLocationOf(toolbar->GetPosition());
}

// What a new toolbar is given, in this order.
using Gift = void (*)(const NavigationBarParts& bar, Toolbar& toolbar);
constexpr Gift GIFTS[] = {
    [](const NavigationBarParts& bar, Toolbar& toolbar) { toolbar.SetKorvane(bar.partners.hub.Get()); },
    [](const NavigationBarParts& bar, Toolbar& toolbar) { toolbar.SetRenderer(bar.partners.renderer.Get()); },
    [](const NavigationBarParts&, Toolbar& toolbar) {
      toolbar.SetFlyoutIcon(TEXTURE_BAR_FLYOUT, SMALL_ICON, SMALL_ICON);
    },
    [](const NavigationBarParts&, Toolbar& toolbar) {
      toolbar.SetGripHandleIcon(VERTICAL, TEXTURE_NONE, GRIP_LENGTH, GRIP_THICKNESS);
    },
    [](const NavigationBarParts&, Toolbar& toolbar) {
      toolbar.SetGripHandleIcon(HORIZONTAL, TEXTURE_NONE, GRIP_THICKNESS, GRIP_LENGTH);
    },
    [](const NavigationBarParts&, Toolbar& toolbar) {
      toolbar.SetMoreControlsIcon(VERTICAL, TEXTURE_BAR_MORE_VERTICAL, SMALL_ICON, SMALL_ICON);
    },
    [](const NavigationBarParts&, Toolbar& toolbar) {
      toolbar.SetMoreControlsIcon(HORIZONTAL, TEXTURE_BAR_MORE_HORIZONTAL, SMALL_ICON, SMALL_ICON);
    },
    [](const NavigationBarParts&, Toolbar& toolbar) {
      toolbar.SetCornerIcons(TEXTURE_BAR_TOP_LEFT, TEXTURE_BAR_TOP_RIGHT, TEXTURE_BAR_BOTTOM_RIGHT,
                             TEXTURE_BAR_BOTTOM_LEFT, SMALL_ICON, SMALL_ICON);
    },
    [](const NavigationBarParts&, Toolbar& toolbar) {
      toolbar.SetCornerHighlightedIcons(TEXTURE_BAR_TOP_LEFT_EDGE, TEXTURE_BAR_TOP_RIGHT_EDGE,
                                        TEXTURE_BAR_BOTTOM_RIGHT_EDGE, TEXTURE_BAR_BOTTOM_LEFT_EDGE,
                                        SMALL_ICON, SMALL_ICON);
    },
    [](const NavigationBarParts& bar, Toolbar& toolbar) {
      if (bar.location != NavigationBar::LOCATION_LINKED) toolbar.SetPosition(GetPositionOf(bar.location));
    },
    [](const NavigationBarParts& bar, Toolbar& toolbar) { toolbar.SetEdgeOffset(bar.locationOffset); },
    [](const NavigationBarParts& bar, Toolbar& toolbar) { toolbar.SetVisible(bar.visible); },
    [](const NavigationBarParts& bar, Toolbar& toolbar) {
      toolbar.SetViewportSize(bar.viewport.width, bar.viewport.height);
    },
};

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

// Whoever is asked for the items of the host may let go of the bar; so may whoever is told of a toolbar that
// was not new.
bool NavigationBar::Create() {
  return OrFail([&] {
    const Staying now(parts);
    const bool canDraw = now->partners.hub.Get() != nullptr && now->partners.renderer.Get() != nullptr;
    if (now->toolbar != nullptr || !canDraw) return false;
    now->toolbar.reset(InstantiateToolbar());
    const Borrowed<Toolbar> toolbar(now->toolbar.get());
    const auto goesOn = [&] { return now && toolbar.Get() != nullptr; };
    for (const Gift give : GIFTS) {
      if (goesOn()) give(*parts, *toolbar.Get());
    }
    if (goesOn()) PopulateItems();
    const bool result = goesOn() && toolbar.Get()->Create();
    if (!goesOn()) return false;
    if (result) {
      now->toolbarObserver = std::make_unique<NavigationBarToolbarObserver>(toolbar.Get(), this);
      toolbar.Get()->AddObserver(now->toolbarObserver.get());
    }
    toolbar.Get()->SetWantAnimation(true);
    return result;
  });
}

Toolbar* NavigationBar::InstantiateToolbar() { return std::make_unique<Toolbar>().release(); }

// Where the bar stands outlasts the toolbar, which takes back a drag as it ends; a host that is told
// meanwhile may ask, and choose another place.
bool NavigationBar::Destroy() {
  const Staying now(parts);
  if (now->toolbar == nullptr) return false;
  const Vector2 offset = now->locationOffset = GetLocationOffset();
  const Location location = now->location = GetLocation();
  const std::unique_ptr<Toolbar> toolbar = std::move(now->toolbar);
  const std::unique_ptr<NavigationBarToolbarObserver> observer = std::move(now->toolbarObserver);
  toolbar->RemoveObserver(observer.get());
  const bool result = toolbar->Destroy();
  if (now->location != location || now->locationOffset != offset) return result;
  now->locationOffset = toolbar->GetEdgeOffset();
  now->location = FindLocation(location, toolbar.get());
  return result;
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

NavigationBar::Location NavigationBar::GetLocation() const {
  return FindLocation(parts->location, parts->toolbar.get());
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
