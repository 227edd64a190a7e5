#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "korvane/cam3d_controller.h"
#include "korvane/cam3d_controller_observer.h"
#include "korvane/camera_operations.h"
#include "korvane/helm_disc.h"
#include "korvane/helm_disc_observer.h"
#include "korvane/navigation_bar.h"
#include "korvane/orientor.h"
#include "korvane/rewind_history.h"
#include "korvane/shot_editor.h"
#include "korvane/storyboard.h"
#include "korvane/toolbar.h"
#include "korvane/undo_queue.h"
#include "korvane/view_manager.h"
#include "torture/failing_renderer.h"

namespace torture {

/// What a host's view holds.
class View : public Korvane::CameraOperations {
 public:
  View();

  void ApplyCameraParameters(const Korvane::CameraParameters& camera) override;
  void QueryCameraParameters(Korvane::CameraParameters& camera) const override { camera = shown; }
  void RequestApplicationUpdate() override { ++requests; }

  /// All at the beginning, as a new view has it.
  void Reset();

  Korvane::CameraParameters shown;
  bool isFilming = false;
  std::vector<Korvane::CameraParameters> film;  // every camera that was given while it is set
  long applied = 0;
  long requests = 0;
  bool broken = false;  // was given a camera that is none
};

/// Knows whether the last bracket was a beginning.
class BracketedHistory : public Korvane::RewindHistory {
 public:
  bool BeginElementRecord(const Korvane::CameraParameters& camera) override {
    open = true;
    return RewindHistory::BeginElementRecord(camera);
  }
  bool EndElementRecord(const Korvane::CameraParameters& camera) override {
    open = false;
    return RewindHistory::EndElementRecord(camera);
  }
  bool open = false;
};

class OpenDisc : public Korvane::HelmDisc {
 public:
  OpenDisc();
  ~OpenDisc() override;
  BracketedHistory* const record;
};

class SilentEditor : public Korvane::ShotEditor {
 public:
  void OnEditorReserved() override {}
  void SetPreviewState(bool /*previewing*/) override {}
  void SetRecordingState(bool /*recording*/) override {}
  void SetPanelVisible(bool /*visible*/) override {}
  void TransferControls(bool /*toShot*/) override {}
};

class OpenManager : public Korvane::ViewManager {
 public:
  using ViewManager::mouse;
};

/// A view with every device of the library, as a program has it, and a user at it. Time moves by `Clock`, a
/// platform with `Advance(milliseconds)`.
class WholeView {
 public:
  using Pass = void (*)(void* clock, unsigned milliseconds);

  enum ToolID : int { ORBIT = 1, PAN, ZOOM, RECT_ZOOM, LOOK, LOOK_MOVE, LOOK_AT, CENTER, WALK, TOOL_END };
  static constexpr int WIDTH = 800;
  static constexpr int HEIGHT = 600;

  template <class Clock>
  explicit WholeView(Clock& clock)
      : WholeView(&clock, [](void* passing, unsigned milliseconds) {
          static_cast<Clock*>(passing)->Advance(milliseconds);
        }) {}
  ~WholeView();
  WholeView(const WholeView&) = delete;
  WholeView& operator=(const WholeView&) = delete;

  /// With the tools, which may be there already.
  bool Create();
  bool Destroy();

  /// A user's use of everything: some hundred events and frames.
  void PlayAll();
  /// Some of it, from the start view. Its cameras, which are the same for every view that is at rest.
  std::vector<Korvane::CameraParameters> PlayShort();
  /// As a user lets go of everything and a host begins with another model.
  void LetGo();
  /// Why it is not at rest; empty when it is.
  std::string DescribeRemains() const;
  /// What gestures change of the settings and have to put back.
  std::vector<double> GetSettings() const;

  View hub;
  FailingRenderer renderer;
  OpenDisc disc;
  Korvane::Orientor cube;
  Korvane::NavigationBar bar;
  Korvane::Toolbar strip;
  Korvane::UndoQueue queue;
  SilentEditor editor;
  Korvane::Storyboard board;
  Korvane::Cam3DController device;
  OpenManager manager;
  unsigned pause = 0;  // milliseconds between the parts of PlayAll, in which no frame is drawn

 private:
  WholeView(void* clock, Pass passTime);

  void AddTools();
  void Frame(unsigned milliseconds = 40);
  void Frames(int count);
  void Rest();
  void Move(int x, int y);
  void Press(int x, int y);
  void Release();
  void Click(int x, int y);
  void Drag(int fromX, int fromY, int toX, int toY, int steps = 3);
  void ClickBar(const Korvane::Toolbar* toolbar, int tag);
  bool FindWedge(Korvane::HelmDiscZone zone);
  void Wedge(Korvane::DiscType type, Korvane::HelmDiscZone zone);
  void ClickSlide(Korvane::ShotSpecification* shot, Korvane::Storyboard::SlidePart part);

  void UseTools();
  void UseMiddleButton();
  void UseCube();
  void UseLargeDisc();
  void UseMiniDisc();
  void UseWelcome();
  void UseBars();
  void UseMoves();
  void UseHistory();
  void UseDevice();
  void MakeStory();
  void PlayStory();
  void EditStory();
  void ChangeView();

  void* const time;
  const Pass pass;
};

}  // namespace torture
