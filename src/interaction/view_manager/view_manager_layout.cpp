// Where everything stands relative to everything else, and what of it shows.
#include <cmath>

#include "camera/pixels.h"
#include "korvane/camera_operations.h"
#include "korvane/helm_disc.h"
#include "korvane/navigation_bar.h"
#include "korvane/orientor.h"
#include "korvane/storyboard.h"
#include "korvane/toolbar.h"
#include "korvane/view_manager.h"

namespace Korvane {

namespace {

constexpr int STORYBOARD_ITEM = 13;               // the bar's button of the storyboard
constexpr double COMPASS_WIDTH = 1.4;             // of the cube with a compass, to its size
constexpr double COMPASS_STORYBOARD_WIDTH = 1.3;  // the same, for the panel beside it
constexpr int LINKED_BAR_GAP = 2;                 // pixels
constexpr int BAR_BESIDE_CUBE = 10;               // room above or below the cube for a bar on an edge
constexpr int WELCOME_ABOVE_STORYBOARD = 300;
constexpr int WELCOME_ABOVE_UCS_MENU = 50;

int Width(const Toolbar& toolbar) { return ToPixels(2.0 * toolbar.GetToolbarBounds().extentX.GetValue()); }
int Height(const Toolbar& toolbar) { return ToPixels(2.0 * toolbar.GetToolbarBounds().extentY.GetValue()); }

// The parameters of the cube hold floats, and so the products are.
int ScaledUp(int size, float factor) { return ToPixels(std::ceil(static_cast<float>(size) * factor)); }

bool IsAtTop(OrientorParameters::Location location) {
  return location == OrientorParameters::LOCATION_TOP_RIGHT ||
         location == OrientorParameters::LOCATION_TOP_LEFT;
}

bool IsAtRight(OrientorParameters::Location location) {
  return location == OrientorParameters::LOCATION_TOP_RIGHT ||
         location == OrientorParameters::LOCATION_BOTTOM_RIGHT;
}

Toolbar* ToolbarOf(const NavigationBar* bar) { return bar != nullptr ? bar->GetToolbar() : nullptr; }

}  // namespace

// The visible toolbar in the top right corner.
struct ViewManager::CornerToolbar {
  bool exists = false;
  int width = 0;
  int height = 0;
};

void ViewManager::Refresh() {
  RefreshBarItems();
  const CornerToolbar corner = RefreshToolbars();
  RefreshOrientor(corner);
  RefreshNavigationBar();
  RefreshHelmDisc();
  RefreshStoryboard();
}

void ViewManager::RefreshBarItems() {
  if (navigationBar == nullptr) return;
  if (orientor != nullptr) navigationBar->SetOrientorIsVisible(orientor->GetParameters().visible);
  if (helmDisc != nullptr) navigationBar->SetActiveHelmDisc(helmDisc->GetActiveDisc());
  if (storyboard != nullptr) navigationBar->SetItemSelected(STORYBOARD_ITEM, storyboard->IsVisible());
}

ViewManager::CornerToolbar ViewManager::RefreshToolbars() {
  CornerToolbar corner;
  toolbars.Notify([this, &corner](Toolbar& toolbar) {
    toolbar.SetViewportSize(viewportWidth, viewportHeight);
    const bool isInCorner = toolbar.IsVisible() && toolbar.GetPosition() == Toolbar::POSITION_TOP_RIGHT;
    if (isInCorner) corner = {true, Width(toolbar), Height(toolbar)};
  });
  return corner;
}

// The ribbon covers the top from the left: whether it leaves less than `width` beside it.
bool ViewManager::IsRibbonInTheWay(double width) const {
  return ribbonVisible && static_cast<double>(viewportWidth) - ribbonWidth < width;
}

void ViewManager::RefreshOrientor(const CornerToolbar& corner) {
  if (orientor == nullptr) return;
  orientor->SetViewportSize(viewportWidth, viewportHeight);
  OrientorParameters& parameters = orientor->GetParameters();
  const int size = orientor->GetScreenSize();
  const int cubeWidth = parameters.draw_compass ? ToPixels(size * COMPASS_WIDTH) : size;
  double drop = 0.0;
  if (parameters.screen_location == OrientorParameters::LOCATION_TOP_RIGHT) {
    drop = IsRibbonInTheWay(cubeWidth) ? ribbonHeight : corner.height;
  } else if (parameters.screen_location == OrientorParameters::LOCATION_TOP_LEFT) {
    const bool isCornerInTheWay =
        corner.exists && static_cast<double>(viewportWidth) - corner.width < cubeWidth;
    if (isCornerInTheWay) drop = corner.height;
    if (ribbonVisible) drop = ribbonHeight;
  }
  parameters.screen_offset_y = ToPixels(-drop);
}

void ViewManager::RefreshNavigationBar() {
  if (navigationBar == nullptr) return;
  if (Toolbar* const toolbar = navigationBar->GetToolbar()) {
    if (navigationBar->GetLocation() != NavigationBar::LOCATION_LINKED || orientor == nullptr) {
      toolbar->SetSizeLimits(viewportWidth, viewportHeight);
    } else {
      LinkNavBarToOrientor();
    }
    toolbar->SetRibbonSize(ribbonVisible ? ribbonWidth : 0, ribbonVisible ? ribbonHeight : 0);
    HandOrientorToBar();
  }
  navigationBar->SetViewportSize(viewportWidth, viewportHeight);
}

void ViewManager::HandOrientorToBar() {
  Toolbar* const toolbar = ToolbarOf(navigationBar);
  if (toolbar == nullptr || orientor == nullptr) return;
  toolbar->SetOrientorBounds(GetOrientorBounds());
  toolbar->SetOrientorLocation(orientor->GetParameters().screen_location);
}

void ViewManager::LinkNavBarToOrientor() {
  Toolbar* const toolbar = ToolbarOf(navigationBar);
  if (orientor == nullptr || toolbar == nullptr) return;
  if (navigationBar->GetLocation() != NavigationBar::LOCATION_LINKED) return;
  static constexpr Toolbar::Position POSITIONS[] = {
      Toolbar::POSITION_TOP_RIGHT, Toolbar::POSITION_BOTTOM_RIGHT, Toolbar::POSITION_TOP_LEFT,
      Toolbar::POSITION_BOTTOM_LEFT};
  const OrientorParameters& parameters = orientor->GetParameters();
  const OrientorParameters::Location location = parameters.screen_location;
  if (location < OrientorParameters::LOCATION_TOP_RIGHT ||
      location > OrientorParameters::LOCATION_BOTTOM_LEFT) {
    return;
  }
  int width = 0;
  int height = 0;
  GetOrientorSize(width, height);
  const double room = static_cast<double>(viewportHeight) - height - LINKED_BAR_GAP;
  const double offset = parameters.screen_offset_y;
  toolbar->SetPosition(POSITIONS[location]);
  if (IsAtTop(location)) {
    toolbar->SetCornerOffset(Vector2(0.0, height - offset));
    toolbar->SetSizeLimits(viewportWidth, ToPixels(room + offset));
    return;
  }
  const double barWidth = 2.0 * toolbar->GetToolbarBounds().extentX.GetValue();
  const bool isUnderRibbon = IsAtRight(location) ? IsRibbonInTheWay(barWidth) : ribbonVisible;
  toolbar->SetCornerOffset(Vector2(0.0, height + offset));
  toolbar->SetSizeLimits(viewportWidth, ToPixels(Math::Max(0.0, room - (isUnderRibbon ? ribbonHeight : 0))));
}

void ViewManager::RefreshHelmDisc() {
  if (helmDisc == nullptr) return;
  helmDisc->SetViewportSize(viewportWidth, viewportHeight);
  helmDisc->SetWelcomeMenuPosition(0, GetWelcomeHeight());
}

// The welcome screen stands in the lower left corner, above what else is there.
int ViewManager::GetWelcomeHeight() const {
  if (storyboard != nullptr && storyboard->IsVisible()) return WELCOME_ABOVE_STORYBOARD;
  if (orientor == nullptr) return 0;
  const OrientorParameters& parameters = orientor->GetParameters();
  if (parameters.screen_location != OrientorParameters::LOCATION_BOTTOM_LEFT) return 0;
  const int size = orientor->GetScreenSize();
  if (parameters.draw_ucs_menu) {
    const float factor =
        parameters.draw_compass ? parameters.overlay_ucs_offset_compass_y : parameters.overlay_ucs_offset_y;
    return ToPixels(static_cast<double>(ScaledUp(size, factor)) + WELCOME_ABOVE_UCS_MENU);
  }
  return parameters.draw_compass ? ScaledUp(size, parameters.view_scale_compass) : size;
}

void ViewManager::RefreshStoryboard() {
  if (storyboard == nullptr) return;
  int x = 0;
  int y = 0;
  int width = viewportWidth;
  if (IsOrientorVisible()) {
    const OrientorParameters& parameters = orientor->GetParameters();
    const double factor = parameters.draw_compass ? COMPASS_STORYBOARD_WIDTH : 1.0;
    const double cubeSize = std::ceil(orientor->GetScreenSize() * factor);
    if (parameters.screen_location == OrientorParameters::LOCATION_BOTTOM_LEFT) x = ToPixels(cubeSize);
    if (parameters.screen_location == OrientorParameters::LOCATION_BOTTOM_RIGHT)
      width = ToPixels(width - cubeSize);
  }
  const Toolbar* const toolbar = ToolbarOf(navigationBar);
  if (toolbar != nullptr && navigationBar->IsVisible() &&
      toolbar->GetPosition() == Toolbar::POSITION_BOTTOM) {
    y = Height(*toolbar);
  }
  storyboard->SetPosition(x, y);
  storyboard->SetViewportSize(width, viewportHeight);
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
  int width = 0;
  int height = 0;
  GetOrientorSize(width, height);
  const OrientorParameters::Location location = orientor->GetParameters().screen_location;
  const int halfWidth = width / 2;  // whole pixels
  const int halfHeight = height / 2;
  const Vector2 half(halfWidth, halfHeight);
  Vector2 centre = half;
  if (IsAtRight(location)) centre.x = viewportWidth - half.x;
  if (IsAtTop(location)) {
    const bool isUnderRibbon = IsAtRight(location) ? IsRibbonInTheWay(width) : ribbonVisible;
    centre.y = viewportHeight - half.y - (isUnderRibbon ? ribbonHeight : 0);
  }
  return {centre, half};
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
  if (ribbonVisible == visible) return false;
  ribbonVisible = visible;
  Refresh();
  return true;
}

bool ViewManager::IsRibbonVisible() const { return ribbonVisible && !cleanScreen; }

bool ViewManager::SetRibbonSize(int width, int height) {
  if (ribbonWidth == width && ribbonHeight == height) return false;
  ribbonWidth = width;
  ribbonHeight = height;
  Refresh();
  return true;
}

int ViewManager::GetRibbonWidth() const { return ribbonWidth; }
int ViewManager::GetRibbonHeight() const { return ribbonHeight; }

void ViewManager::SetCleanScreen(bool clean) {
  if (cleanScreen == clean) return;
  cleanScreen = clean;
  Refresh();
}

}  // namespace Korvane
