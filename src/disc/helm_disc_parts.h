#pragma once

#include <array>
#include <cstddef>
#include <memory>

#include "disc/disc_tables.h"
#include "disc/helm_disc_timers.h"
#include "disc/welcome_screen.h"
#include "korvane/camera_operations.h"
#include "korvane/observer_set.h"
#include "korvane/pivot_ball.h"
#include "korvane/renderer_loans.h"
#include "korvane/rewind_history.h"
#include "korvane/track_menu.h"

namespace Korvane {

/// What a navigation disc is made of.
struct HelmDiscParts {
  struct Partners {
    Borrowed<CameraOperations> hub;
    Borrowed<Renderer> renderer;
    Borrowed<PivotBall> pivotBall;
    ObserverSet<HelmDiscObserver> observers;
  };

  struct Timers {
    HelmDiscCloseHUDTimer closeHUD;
    HelmDiscTooltipTimer tooltip;
    HelmDiscHotKeyTimer hotKey;
  };

  struct Keys {
    bool modifierADown = false;
    bool modifierBDown = false;
    bool hotKeyHeld = false;  // the disc stays when the hot key is let go
  };

  struct Press {
    bool leftPressed = false;
    bool dragBegun = false;
    int zone = -1;  // of the region that was pressed
    bool modifierA = false;
    bool modifierB = false;
    bool captured = false;  // what the key handlers and the release answer
  };

  TrackMenu* GetMenu(DiscType type) const {
    return IsDiscKind(type) ? menus[static_cast<std::size_t>(type)].get() : nullptr;
  }
  /// `step(menu)` for each disc and the welcome screen, until the end of the disc.
  template <class Step>
  void ForEachMenu(const Step& step) {
    const Lifeline::Watch alive(lifeline);
    for (std::size_t kind = 0; alive && kind < menus.size(); ++kind) step(*menus[kind]);
    if (alive && welcome.menu != nullptr) step(*welcome.menu);
  }
  /// Hands a renderer on, for as long as `goesOn()`.
  template <class GoesOn>
  void Rewire(Renderer* value, const GoesOn& goesOn) {
    ForEachMenu([&](TrackMenu& menu) {
      if (goesOn()) menu.SetRenderer(value);
    });
    if (goesOn()) history->SetRenderer(value);
    if (goesOn() && ownBall != nullptr) ownBall->Destroy();
    if (goesOn() && ownBall != nullptr) ownBall->SetRenderer(value);
    if (goesOn() && created && ownBall != nullptr) ownBall->Create();
    if (goesOn() && created) closeNote.Take(value, STRING_DISC_CLOSED);
  }
  /// A press that it still has ends with it.
  static void HideMenu(TrackMenu& menu);
  void RequestUpdate() const {
    if (CameraOperations* const hub = partners.hub.Get()) hub->RequestApplicationUpdate();
  }

  Partners partners;
  std::unique_ptr<PivotBall> ownBall;  // made where none was given
  std::unique_ptr<RewindHistory> history;
  std::array<std::unique_ptr<TrackMenu>, DISC_KIND_COUNT> menus;
  TrackMenu* active = nullptr;  // one of the menus; null: no disc is open
  DiscType defaultType = DiscType::FullNavigation;
  bool opensAtPointer = false;
  bool messagesAtOnce = false;
  bool visible = true;
  bool created = false;
  Keys keys;
  Press press;
  WelcomeScreen welcome;
  Timers timers;
  StringLoan closeNote;
  Lifeline choice;  // cut when another disc is chosen
  Lifeline lifeline;
};

}  // namespace Korvane
