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
  using ViewManager::controlKeyDown;
  using ViewManager::EndMiddleMouseNavigation;
  using ViewManager::EndOrbitingWithMouse;
  using ViewManager::EndPanningWithMouse;
  using ViewManager::EndZoomingWithMouse;
  using ViewManager::helmDiscObserver;
  using ViewManager::helmDiscOffsetX;
  using ViewManager::helmDiscOffsetY;
  using ViewManager::InstantiatePivotBall;
  using ViewManager::IsMouseInRibbonRegion;
  using ViewManager::IsMouseInToolbarRegion;
  using ViewManager::leftClickOpen;
  using ViewManager::leftDownX;
  using ViewManager::leftDownY;
  using ViewManager::leftMouseDown;
  using ViewManager::LinkNavBarToOrientor;
  using ViewManager::middleClickOpen;
  using ViewManager::middleMouseDown;
  using ViewManager::mouseWheelDelta;
  using ViewManager::mouseX;
  using ViewManager::mouseY;
  using ViewManager::orbitingWithMouse;
  using ViewManager::orbitTool;
  using ViewManager::orientorDragLeftRegion;
  using ViewManager::orientorDragSeen;
  using ViewManager::orientorObserver;
  using ViewManager::panningWithMouse;
  using ViewManager::panTool;
  using ViewManager::pivotBall;
  using ViewManager::reelshowPlaying;
  using ViewManager::RemoveAllTools;
  using ViewManager::RestoreHelmDiscPosition;
  using ViewManager::rewindShotObserver;
  using ViewManager::rightClickOpen;
  using ViewManager::rightMouseDown;
  using ViewManager::SaveHelmDiscPosition;
  using ViewManager::shiftKeyDown;
  using ViewManager::storyboardObserver;
  using ViewManager::tools;
  using ViewManager::WantActiveToolEnabled;
  using ViewManager::WantCam3DControllerEnabled;
  using ViewManager::wantCursorWrapping;
  using ViewManager::WantHelmDiscEnabled;
  using ViewManager::WantHelmDiscVisible;
  using ViewManager::WantMiddleMouseNavigation;
  using ViewManager::WantOrientorEnabled;
  using ViewManager::zoomingWithMouse;
  using ViewManager::zoomTool;
};
