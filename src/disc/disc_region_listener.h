#pragma once

#include "korvane/helm_disc_parameters.h"
#include "korvane/region_listener.h"

namespace Korvane {

class CameraOperations;
class DynamicIcon2D;
class HelmDisc;
class PivotBall;
class Renderer;
class RewindHistory;

/// The listener of a wedge of a disc: with whom it works, and what it does with its menu during a press.
class DiscRegionListener : public RegionListener {
 public:
  /// The disc, whose menu this is, is borrowed.
  DiscRegionListener(TrackMenu* menu, HelmDisc* helmDisc);

  void OnLeftMouseDown(int x, int y) override;
  void OnLeftMouseUp(int x, int y) override;
  /// A press that is cut off ends here, and the menu is free again.
  void OnTrackMenuActivate(bool active) override;

  // Null once it is gone.
  HelmDisc* GetDisc() const;
  CameraOperations* GetHub() const;
  Renderer* GetRenderer() const;
  RewindHistory* GetHistory() const;
  PivotBall* GetPivotBall() const;

 protected:
  /// The steps of a press, or after it, each of which may call out to the host. What follows is left out as
  /// soon as a press begins or ends, the menu is put away, or it is gone.
  class Press {
   public:
    explicit Press(DiscRegionListener& listener) : wedge(listener), goesOn(listener.pressLife) {}
    Press(const Press&) = delete;
    Press& operator=(const Press&) = delete;

    explicit operator bool() const { return goesOn && wedge.GetTrackMenu() != nullptr; }

    template <class Step>
    Press& Then(const Step& step) {
      if (*this) step();
      return *this;
    }
    /// `step(hub)`; left out without a hub.
    template <class Step>
    Press& ThenWithHub(const Step& step) {
      CameraOperations* const hub = *this ? wedge.GetHub() : nullptr;
      if (hub != nullptr) step(*hub);
      return *this;
    }
    Press& HideMenu() {
      return Then([this] { wedge.HideMenu(); });
    }
    Press& ShowMenu() {
      return Then([this] { wedge.ShowMenu(); });
    }

   private:
    DiscRegionListener& wedge;
    Lifeline::Watch goesOn;
  };

  void HideMenu();
  /// Refused by the menu while its button is down.
  void ShowMenu();
  /// The active region stays what it is, or is found anew.
  void FreezeRegion(bool freeze);
  /// A frame of what a press has begun: `draw()`. Once `goesOn()` says no and the button is up, the menu
  /// shows and finds its region again.
  template <class Draw, class GoesOn>
  void DrawUntilDone(const Draw& draw, const GoesOn& goesOn) {
    Press(*this).Then(draw).Then([&] {
      if (!goesOn()) ComeBack();
    });
  }
  /// The menu stays where it is.
  void IgnoreMouse(bool ignore);
  /// Gives the active region other words, until it is chosen again. Where there is a menu.
  void SetRegionNote(StringID tooltip, DynamicIcon2D* note);
  bool IsShiftDown() const;
  bool IsControlDown() const;

  /// A setting of the disc; false once that is gone.
  bool IsSet(bool HelmDiscParameters::*setting) const;
  bool IsOnBasicDisc() const;
  /// The messages are on, as they always are on a basic disc.
  bool ShowsMessages() const;
  void SetPivotBallVisible(bool visible);
  void LabelPivotBall(StringID text);

 private:
  void ComeBack();
  bool IsKeyDown(bool (TrackMenu::*key)() const) const;

  HelmDisc* const disc;
  Lifeline pressLife;  // cut when one begins, when it ends, and when the menu is put away
};

}  // namespace Korvane
