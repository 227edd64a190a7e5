// Where everything stands relative to everything else, and what of it shows. The arithmetic is view_layout's.
#include "camera/pixels.h"
#include "interaction/view_manager/view_layout.h"
#include "interaction/view_manager/view_manager_doors.h"

namespace Korvane {

namespace {

constexpr int STORYBOARD_ITEM = 13;  // the bar's button of the storyboard
constexpr int BAR_BESIDE_CUBE = 10;  // room above or below the cube for a bar on an edge
constexpr int WELCOME_ABOVE_STORYBOARD = 300;

int Width(const Toolbar& toolbar) { return Truncate(2.0 * toolbar.GetToolbarBounds().extentX.GetValue()); }
int Height(const Toolbar& toolbar) { return Truncate(2.0 * toolbar.GetToolbarBounds().extentY.GetValue()); }

Toolbar* ToolbarOf(const NavigationBar* bar) { return bar != nullptr ? bar->GetToolbar() : nullptr; }
bool IsLinked(const NavigationBar* bar) {
  return bar != nullptr && bar->GetLocation() == NavigationBar::LOCATION_LINKED;
}

}  // namespace

// Each step builds on the ones before it. What is told asks the host for a frame, who may take anything away
// then.
void ViewManager::Refresh() {
  RefreshBarItems();
  const CornerStrip corner = RefreshToolbars();
  RefreshOrientor(corner);
  RefreshNavigationBar();
  RefreshHelmDisc();
  if (storyboard != nullptr) RefreshStoryboard(*storyboard);
}

ViewArea ViewManager::GetViewArea() const {
  return {{viewportWidth, viewportHeight}, {ribbon.width, ribbon.height}, ribbon.visible};
}

void ViewManager::RefreshBarItems() {
  const auto both = [this](const auto* widget) { return widget != nullptr && navigationBar != nullptr; };
  if (both(orientor)) navigationBar->SetOrientorIsVisible(orientor->GetParameters().visible);
  if (both(helmDisc)) navigationBar->SetActiveHelmDisc(helmDisc->GetActiveDisc());
  if (both(storyboard)) navigationBar->SetItemSelected(STORYBOARD_ITEM, storyboard->IsVisible());
}

CornerStrip ViewManager::RefreshToolbars() {
  CornerStrip corner;
  toolbars.Notify([this, &corner](Toolbar& toolbar) {
    const Lifeline::Watch alive(toolbar.GetLifeline());
    toolbar.SetViewportSize(viewportWidth, viewportHeight);
    if (!alive) return;
    const bool isInCorner = toolbar.IsVisible() && toolbar.GetPosition() == Toolbar::POSITION_TOP_RIGHT;
    if (isInCorner) corner = {true, {Width(toolbar), Height(toolbar)}};
  });
  return corner;
}

void ViewManager::RefreshOrientor(const CornerStrip& corner) {
  if (orientor != nullptr) orientor->SetViewportSize(viewportWidth, viewportHeight);
  if (orientor == nullptr) return;
  OrientorParameters& parameters = orientor->GetParameters();
  parameters.screen_offset_y = GetCubeOffset(GetViewArea(), corner, parameters, orientor->GetScreenSize());
}

void ViewManager::RefreshNavigationBar() {
  if (orientor != nullptr && IsLinked(navigationBar) && ToolbarOf(navigationBar) != nullptr) {
    LinkNavBarToOrientor();
  } else if (Toolbar* const toolbar = ToolbarOf(navigationBar)) {
    toolbar->SetSizeLimits(viewportWidth, viewportHeight);
  }
  if (Toolbar* const toolbar = ToolbarOf(navigationBar))
    toolbar->SetRibbonSize(ribbon.visible ? ribbon.width : 0, ribbon.visible ? ribbon.height : 0);
  HandOrientorToBar();
  if (navigationBar != nullptr) navigationBar->SetViewportSize(viewportWidth, viewportHeight);
}

void ViewManager::HandOrientorToBar() {
  if (orientor == nullptr) return;
  if (Toolbar* const toolbar = ToolbarOf(navigationBar)) toolbar->SetOrientorBounds(GetOrientorBounds());
  Toolbar* const toolbar = ToolbarOf(navigationBar);
  if (toolbar != nullptr && orientor != nullptr)
    toolbar->SetOrientorLocation(orientor->GetParameters().screen_location);
}

// A bar may be as wide as its position makes it.
void ViewManager::LinkNavBarToOrientor() {
  Toolbar* const linked = ToolbarOf(navigationBar);
  if (orientor == nullptr || !IsLinked(navigationBar) || linked == nullptr) return;
  int width = 0;
  int height = 0;
  GetOrientorSize(width, height);
  const OrientorParameters::Location corner = orientor->GetParameters().screen_location;
  const int cubeOffset = orientor->GetParameters().screen_offset_y;
  const std::optional<Toolbar::Position> position = GetLinkedPosition(corner);
  if (!position) return;
  linked->SetPosition(*position);
  Toolbar* const placed = ToolbarOf(navigationBar);
  if (placed == nullptr) return;
  const double barWidth = 2.0 * placed->GetToolbarBounds().extentX.GetValue();
  const LinkedBarPlace place = PlaceLinkedBar(GetViewArea(), corner, height, cubeOffset, barWidth);
  placed->SetCornerOffset(Vector2(0.0, place.offset));
  if (Toolbar* const toolbar = ToolbarOf(navigationBar))
    toolbar->SetSizeLimits(viewportWidth, place.heightLimit);
}

void ViewManager::RefreshHelmDisc() {
  if (helmDisc != nullptr) helmDisc->SetViewportSize(viewportWidth, viewportHeight);
  if (helmDisc != nullptr) helmDisc->SetWelcomeMenuPosition(0, GetWelcomeHeight());
}

// The welcome screen stands in the lower left corner, above what else is there.
int ViewManager::GetWelcomeHeight() const {
  if (storyboard != nullptr && storyboard->IsVisible()) return WELCOME_ABOVE_STORYBOARD;
  if (orientor == nullptr) return 0;
  const OrientorParameters& parameters = orientor->GetParameters();
  if (parameters.screen_location != OrientorParameters::LOCATION_BOTTOM_LEFT) return 0;
  return GetHeightAboveCube(parameters, orientor->GetScreenSize());
}

void ViewManager::RefreshStoryboard(Storyboard& panel) {
  const Orientor* const cube = IsOrientorVisible() ? orientor : nullptr;
  const Toolbar* const toolbar = ToolbarOf(navigationBar);
  const bool hasBarBelow =
      toolbar != nullptr && navigationBar->IsVisible() && toolbar->GetPosition() == Toolbar::POSITION_BOTTOM;
  const PanelPlace place =
      PlacePanel(GetViewArea(), cube != nullptr ? &cube->GetParameters() : nullptr,
                 cube != nullptr ? cube->GetScreenSize() : 0, hasBarBelow ? Height(*toolbar) : 0);
  panel.SetPosition(place.x, place.y);
  panel.SetViewportSize(place.viewport.width, place.viewport.height);
}

// ---- the room of the cube ----

void ViewManager::GetOrientorSize(int& width, int& height) const {
  width = 0;
  height = 0;
  if (!IsOrientorVisible()) return;
  orientor->GetRegionSize(width, height);
  const bool hasBarOnEdge = ToolbarOf(navigationBar) != nullptr && !IsLinked(navigationBar);
  if (hasBarOnEdge) height += BAR_BESIDE_CUBE;
}

Box2 ViewManager::GetOrientorBounds() const {
  if (orientor == nullptr) return {};
  PixelSize room;
  GetOrientorSize(room.width, room.height);
  return GetCubeBounds(GetViewArea(), orientor->GetParameters().screen_location, room);
}

// ---- what shows ----

void ViewManager::SetViewportSize(int width, int height) {
  if (viewportWidth == width && viewportHeight == height) return;
  viewportWidth = width;
  viewportHeight = height;
  if (cameraOperations != nullptr) {
    cameraOperations->GetApplicationParameters().viewport_width = width;
    cameraOperations->GetApplicationParameters().viewport_height = height;
  }
  HandOrientorToBar();
  Refresh();
}

bool ViewManager::SetOrientorVisible(bool visible) {
  if (orientor == nullptr || orientor->GetParameters().visible == visible) return false;
  orientor->GetParameters().visible = visible;
  if (!visible) CancelOrientorGesture();
  Refresh();
  return true;
}

bool ViewManager::IsOrientorVisible() const {
  return orientor != nullptr && orientor->GetParameters().visible;
}

bool ViewManager::SetNavigationBarVisible(bool visible) {
  if (navigationBar == nullptr || navigationBar->IsVisible() == visible) return false;
  navigationBar->SetVisible(visible);
  Refresh();
  return true;
}

bool ViewManager::IsNavigationBarVisible() const {
  return navigationBar != nullptr && navigationBar->IsVisible();
}

bool ViewManager::SetNavigationBarLinkedToOrientor(bool linked) {
  if (navigationBar == nullptr || IsNavigationBarLinkedToOrientor() == linked) return false;
  navigationBar->SetLinkedToOrientor(linked);
  Refresh();
  return true;
}

bool ViewManager::IsNavigationBarLinkedToOrientor() const { return IsLinked(navigationBar); }

bool ViewManager::SetRibbonVisible(bool visible) {
  if (ribbon.visible == visible) return false;
  ribbon.visible = visible;
  Refresh();
  return true;
}

bool ViewManager::IsRibbonVisible() const { return ribbon.visible && !cleanScreen; }

bool ViewManager::SetRibbonSize(int width, int height) {
  if (ribbon.width == width && ribbon.height == height) return false;
  ribbon.width = width;
  ribbon.height = height;
  Refresh();
  return true;
}

int ViewManager::GetRibbonWidth() const { return ribbon.width; }
int ViewManager::GetRibbonHeight() const { return ribbon.height; }

// A press on what a clean screen hides would never hear of its release.
void ViewManager::ReleaseHiddenWidgets() {
  CancelOrientorGesture();
  LetGo(true);
}

void ViewManager::SetCleanScreen(bool clean) {
  if (cleanScreen == clean) return;
  cleanScreen = clean;
  if (clean) ReleaseHiddenWidgets();
  Refresh();
}

}  // namespace Korvane
