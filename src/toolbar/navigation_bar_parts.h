#pragma once

#include <memory>
#include <string>

#include "foundation/staying.h"
#include "korvane/camera_operations.h"
#include "korvane/navigation_bar.h"
#include "korvane/navigation_bar_observer.h"
#include "korvane/observer_set.h"
#include "korvane/renderer.h"
#include "korvane/toolbar.h"
#include "toolbar/navigation_bar_toolbar_observer.h"

namespace Korvane {

/// What the navigation bar is made of.
struct NavigationBarParts {
  struct Partners {
    Borrowed<CameraOperations> hub;
    Borrowed<Renderer> renderer;
    ObserverSet<NavigationBarObserver> observers;
  };

  struct Viewport {
    int width = 0;
    int height = 0;
  };

  NavigationBarParts();

  void RequestUpdate() const {
    if (CameraOperations* const hub = partners.hub.Get()) hub->RequestApplicationUpdate();
  }

  Partners partners;
  std::unique_ptr<Toolbar> toolbar;
  std::unique_ptr<NavigationBarToolbarObserver> toolbarObserver;
  NavigationBar::Location location = NavigationBar::LOCATION_LINKED;
  Vector2 locationOffset;
  Viewport viewport;  // as last told, for a toolbar that comes later
  bool visible = true;
  bool orientorShown = false;
  bool orientorExcluded = false;  // the host's wish for the button that stands in for the cube
  DiscType activeDisc;
  std::wstring emptyTooltip;
  Lifeline lifeline;
};

}  // namespace Korvane
