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

}  // namespace

// Each step builds on the ones before it.
void ViewManager::Refresh() {
  if (navigationBar != nullptr) RefreshBarItems(*navigationBar);
  const CornerStrip corner = RefreshToolbars();
  if (orientor != nullptr) RefreshOrientor(*orientor, corner);
  if (navigationBar != nullptr) RefreshNavigationBar(*navigationBar);
  if (helmDisc != nullptr) RefreshHelmDisc(*helmDisc);
  if (storyboard != nullptr) RefreshStoryboard(*storyboard);
}

ViewArea ViewManager::GetViewArea() const {
  return {{viewportWidth, viewportHeight}, {ribbon.width, ribbon.height}, ribbon.visible};
}

void ViewManager::RefreshBarItems(NavigationBar& bar) {
  if (orientor != nullptr) bar.SetOrientorIsVisible(orientor->GetParameters().visible);
  if (helmDisc != nullptr) bar.SetActiveHelmDisc(helmDisc->GetActiveDisc());
  if (storyboard != nullptr) bar.SetItemSelected(STORYBOARD_ITEM, storyboard->IsVisible());
}

CornerStrip ViewManager::RefreshToolbars() {
  CornerStrip corner;
  toolbars.Notify([this, &corner](Toolbar& toolbar) {
    toolbar.SetViewportSize(viewportWidth, viewportHeight);
    const bool isInCorner = toolbar.IsVisible() && toolbar.GetPosition() == Toolbar::POSITION_TOP_RIGHT;
    if (isInCorner) corner = {true, {Width(toolbar), Height(toolbar)}};
  });
  return corner;
}

void ViewManager::RefreshOrientor(Orientor& cube, const CornerStrip& corner) {
  cube.SetViewportSize(viewportWidth, viewportHeight);
  OrientorParameters& parameters = cube.GetParameters();
  parameters.screen_offset_y = GetCubeOffset(GetViewArea(), corner, parameters, cube.GetScreenSize());
}

void ViewManager::RefreshNavigationBar(NavigationBar& bar) {
  if (Toolbar* const toolbar = bar.GetToolbar()) {
    if (bar.GetLocation() != NavigationBar::LOCATION_LINKED || orientor == nullptr) {
      toolbar->SetSizeLimits(viewportWidth, viewportHeight);
    } else {
      LinkNavBarToOrientor();
    }
    toolbar->SetRibbonSize(ribbon.visible ? ribbon.width : 0, ribbon.visible ? ribbon.height : 0);
    HandOrientorToBar();
  }
  bar.SetViewportSize(viewportWidth, viewportHeight);
}

void ViewManager::HandOrientorToBar() {
  Toolbar* const toolbar = ToolbarOf(navigationBar);
  if (toolbar == nullptr || orientor == nullptr) return;
  toolbar->SetOrientorBounds(GetOrientorBounds());
  toolbar->SetOrientorLocation(orientor->GetParameters().screen_location);
}

// A bar may be as wide as its position makes it.
void ViewManager::LinkNavBarToOrientor() {
  Toolbar* const toolbar = ToolbarOf(navigationBar);
  if (orientor == nullptr || toolbar == nullptr) return;
  if (navigationBar->GetLocation() != NavigationBar::LOCATION_LINKED) return;
  int width = 0;
  int height = 0;
  GetOrientorSize(width, height);
  const OrientorParameters& parameters = orientor->GetParameters();
  const std::optional<Toolbar::Position> position = GetLinkedPosition(parameters.screen_location);
  if (!position) return;
  toolbar->SetPosition(*position);
  const double barWidth = 2.0 * toolbar->GetToolbarBounds().extentX.GetValue();
  const LinkedBarPlace place =
      PlaceLinkedBar(GetViewArea(), parameters.screen_location, height, parameters.screen_offset_y, barWidth);
  toolbar->SetCornerOffset(Vector2(0.0, place.offset));
  toolbar->SetSizeLimits(viewportWidth, place.heightLimit);
}

void ViewManager::RefreshHelmDisc(HelmDisc& disc) {
  disc.SetViewportSize(viewportWidth, viewportHeight);
  disc.SetWelcomeMenuPosition(0, GetWelcomeHeight());
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
  const bool hasBarOnEdge =
      ToolbarOf(navigationBar) != nullptr && navigationBar->GetLocation() != NavigationBar::LOCATION_LINKED;
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

bool ViewManager::IsNavigationBarLinkedToOrientor() const {
  return navigationBar != nullptr && navigationBar->GetLocation() == NavigationBar::LOCATION_LINKED;
}

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
