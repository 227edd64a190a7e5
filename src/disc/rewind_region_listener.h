#pragma once

#include "disc/disc_region_listener.h"
#include "korvane/interval_timer.h"
#include "korvane/renderer_loans.h"
#include "korvane/timer.h"

namespace Korvane {

/// The wedge that goes back. A click steps back one element and shows the film strip for a moment; a press
/// that is held, or moved, opens the strip, and the view follows the mouse along it.
class RewindRegionListener : public DiscRegionListener {
 public:
  /// Seconds for which the strip shows after a click.
  static constexpr double HIDE_TIMER_INTERVAL = 0.5;

  /// The disc, whose menu this is, is borrowed.
  RewindRegionListener(TrackMenu* menu, HelmDisc* helmDisc);

  void OnMouseMove(int x, int y) override;
  void OnLeftMouseDown(int x, int y) override;
  void OnLeftMouseUp(int x, int y) override;
  void OnDraw() override;
  /// A press that is cut off so ends here, and the strip closes.
  void OnTrackMenuActivate(bool active) override;

  void OnShowTimeline();
  void OnHideTimeline();

 private:
  template <void (RewindRegionListener::*RUN)()>
  class ListenerTimer : public IntervalTimer {
   public:
    void SetListener(RewindRegionListener* value) { listener = value; }

   protected:
    void Timeout() override { (listener->*RUN)(); }

   private:
    RewindRegionListener* listener = nullptr;
  };
  using ShowTimelineTimer = ListenerTimer<&RewindRegionListener::OnShowTimeline>;
  using HideTimelineTimer = ListenerTimer<&RewindRegionListener::OnHideTimeline>;

  bool IsTimelineOpen() const;

  bool IsBeyondClick(int x, int y) const;
  void Slide(int x, int y);
  void ApplyInterpolated();
  void EndSlide();
  void GoBack();
  void BringMenuBack();
  void Cancel();
  void DrawNotes(CameraOperations& hub);
  DynamicIcon2D* PlaceNote(double width);

  ShowTimelineTimer showTimer;
  HideTimelineTimer hideTimer;
  Timer timer;  // since a click; a reset one counts as long ago
  TextureLoan textures;
  StringLoan hintHUD;
  StringLoan emptyHUD;
};

}  // namespace Korvane
