#pragma once

#include "korvane/camera_operations.h"
#include "korvane/helm_disc.h"
#include "korvane/interval_timer.h"
#include "korvane/track_menu.h"

namespace Korvane {

/// Lets the note of a closed disc go.
class HelmDiscCloseHUDTimer : public IntervalTimer {
 public:
  static constexpr double DURATION = 3.0;  // seconds

  void SetKorvane(CameraOperations* value) { hub.Set(value); }

 private:
  void Timeout() override {
    if (CameraOperations* const present = hub.Get()) present->RequestApplicationUpdate();
  }

  Borrowed<CameraOperations> hub;
};

/// Lets the tooltip of a disc come and go while nothing moves.
class HelmDiscTooltipTimer : public IntervalTimer {
 public:
  static constexpr double PERIOD = 0.5;  // seconds

  void SetHelmDisc(HelmDisc* value) { disc = value; }

 private:
  void Timeout() override {
    TrackMenu* const menu = disc != nullptr ? disc->GetActiveTrackMenu() : nullptr;
    if (menu == nullptr || !menu->UpdateTimer()) return;
    if (CameraOperations* const hub = disc->GetKorvane()) hub->RequestApplicationUpdate();
  }

  HelmDisc* disc = nullptr;  // the owner
};

/// Runs for as long as a press of the hot key is a short one.
class HelmDiscHotKeyTimer : public IntervalTimer {
 public:
  static constexpr double DURATION = 0.25;  // seconds

 private:
  void Timeout() override {}
};

}  // namespace Korvane
