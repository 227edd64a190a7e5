#pragma once

#include <atomic>
#include <vector>

#include "settings/kept_devices.h"
#include "zovhost/game_controller_source.h"
#include "zovhost/six_axis_hand.h"
#include "zovhost/six_axis_panel.h"
#include "zovhost/spnav_source.h"
#include "zovhost/window.h"

namespace zovview {

class Recorder;
struct ViewTarget;

/// The six-axis devices of the user, which move one view at a time, and the page of their settings.
class ViewDevices {
 public:
  /// The window is woken when something comes, and must outlive this.
  explicit ViewDevices(zovhost::Window& window);
  ~ViewDevices();
  ViewDevices(const ViewDevices&) = delete;
  ViewDevices& operator=(const ViewDevices&) = delete;

  /// A view where their button shows while there are any. Borrowed.
  void AddView(const ViewTarget& view) { shownIn.push_back(&view); }
  /// The view that they move from now on.
  void SetTarget(const ViewTarget& target);
  /// Something has come since the last call; a frame looks at it.
  bool TakeWake() { return woken.exchange(false); }
  /// Once a frame, before the views. What moves asks for the next frame.
  void Advance(Recorder* recorder);
  void DrawPage(float right, float top);
  void TogglePage() { page.SetVisible(!page.IsVisible()); }
  const zovhost::SixAxisPanel& GetPage() const { return page; }
  zovhost::SixAxisPanel& GetPage() { return page; }
  bool IsPageVisible() const { return page.IsVisible(); }
  bool IsConnected() const;

  /// As it is, and as it was.
  KeptDevices GetKept(const ViewTarget& of) const;
  void Restore(const KeptDevices& kept, const ViewTarget& to);

  zovhost::SixAxisHand& GetHand() { return hand; }
  /// Another source, which must be there as long as this.
  void AddSource(zovhost::SixAxisSource* source, const char* name);

 private:
  void Record(Recorder& recorder, bool focused);

  zovhost::Window& window;
  std::atomic<bool> woken = false;
  zovhost::SpnavSource daemon;
  zovhost::GameControllerSource gameController;
  zovhost::SixAxisHand hand;
  zovhost::SixAxisPanel page;
  std::vector<zovhost::SixAxisSource*> sources;
  const ViewTarget* target = nullptr;
  std::vector<const ViewTarget*> shownIn;
  Recorder* listening = nullptr;  // to the buttons of the present frame
  zovhost::SixAxes recordedAxes{};
  std::vector<double> recordedSettings;  // as the view began, then as the recording has them
};

}  // namespace zovview
