#pragma once

#include "korvane/mouse_wheel_zoom_tool.h"
#include "korvane/orbit_tool.h"
#include "korvane/pan_tool.h"
#include "korvane/pivot_ball.h"
#include "korvane/view_manager.h"

/// Shows what a host's derived class can reach.
class OpenViewManager : public Korvane::ViewManager {
 public:
  using ViewManager::activeTool;
  using ViewManager::activeToolID;
  using ViewManager::BeginMiddleMouseNavigation;
  using ViewManager::BeginOrbitingWithMouse;
  using ViewManager::BeginPanningWithMouse;
  using ViewManager::BeginZoomingWithMouse;
  using ViewManager::cleanScreen;
  using ViewManager::EndMiddleMouseNavigation;
  using ViewManager::EndOrbitingWithMouse;
  using ViewManager::EndPanningWithMouse;
  using ViewManager::EndZoomingWithMouse;
  using ViewManager::helmDiscObserver;
  using ViewManager::InstantiatePivotBall;
  using ViewManager::IsMouseInRibbonRegion;
  using ViewManager::IsMouseInToolbarRegion;
  using ViewManager::LinkNavBarToOrientor;
  using ViewManager::mouse;
  using ViewManager::Mouse;
  using ViewManager::navigation;
  using ViewManager::Navigation;
  using ViewManager::orientorDrag;
  using ViewManager::orientorObserver;
  using ViewManager::pivotBall;
  using ViewManager::reelshowPlaying;
  using ViewManager::RemoveAllTools;
  using ViewManager::RestoreHelmDiscPosition;
  using ViewManager::rewindShotObserver;
  using ViewManager::SaveHelmDiscPosition;
  using ViewManager::storyboardObserver;
  using ViewManager::tools;
  using ViewManager::WantActiveToolEnabled;
  using ViewManager::WantCam3DControllerEnabled;
  using ViewManager::wantCursorWrapping;
  using ViewManager::WantHelmDiscEnabled;
  using ViewManager::WantHelmDiscVisible;
  using ViewManager::WantMiddleMouseNavigation;
  using ViewManager::WantOrientorEnabled;

  bool IsOrbitingWithMouse() const { return navigation.present == Navigation::Orbiting; }
  bool IsPanningWithMouse() const { return navigation.present == Navigation::Panning; }
  bool IsZoomingWithMouse() const { return navigation.present == Navigation::Zooming; }
};
