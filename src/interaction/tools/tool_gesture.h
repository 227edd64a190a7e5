#pragma once

#include <utility>

#include "camera/host_camera.h"
#include "camera/pixels.h"
#include "interaction/tools/pivot_marker.h"
#include "korvane/borrowed_settings.h"
#include "korvane/camera_operations.h"
#include "korvane/tool.h"
#include "render/scene_pick.h"

namespace Korvane {

/// One step after another, each of which may call out to the host once, at its end. What follows is left out
/// as soon as the tool is gone or has no hub.
class Tool::Steps {
 public:
  explicit Steps(Tool& owner) : Steps(owner, owner.lifeline) {}
  Steps(const Steps&) = delete;
  Steps& operator=(const Steps&) = delete;

  /// Whether the tool is still there.
  explicit operator bool() const { return static_cast<bool>(goesOn); }

  template <class Step>
  Steps& Then(const Step& step) {
    if (goesOn && tool.cameraOperations != nullptr) step();
    return *this;
  }
  /// Asks the host for its camera.
  Steps& Query(CameraParameters& camera) {
    return Then([&] { tool.cameraOperations->QueryCameraParameters(camera); });
  }
  Steps& Apply(const CameraParameters& camera) {
    return Then([&] { ApplyIfFinite(*tool.cameraOperations, camera); });
  }
  /// Puts the pivot of the camera on what the host shows at a viewport pixel, or on the end of its ray.
  Steps& AnchorPivot(int x, int y, CameraParameters& camera) {
    Then([&] {
      const ApplicationParameters& parameters = tool.cameraOperations->GetApplicationParameters();
      PickPoint(tool.renderer, parameters, camera, x, y, camera.pivot);
    });
    return Apply(camera);
  }
  Steps& MarkPivot(const CameraParameters& camera) {
    return Then([&] { PlacePivotBall(tool.pivotBall.Get(), camera, true); });
  }
  /// At a viewport pixel.
  Steps& BeginOperation(OperationType type, int x, int y) {
    return Then([&] {
      CameraOperations& hub = *tool.cameraOperations;
      hub.BeginOperation(type, x, FlipRow(hub.GetApplicationParameters(), y));
    });
  }
  /// Opens the record with a camera, or with the host's of now.
  Steps& BeginRecord(const CameraParameters& camera) {
    return Then([&] { tool.record.Begin(tool.rewindHistory, camera); });
  }
  Steps& BeginRecord() {
    CameraParameters camera;
    return Query(camera).BeginRecord(camera);
  }

 protected:
  Steps(Tool& owner, Lifeline& line) : tool(owner), goesOn(line) {}

  Tool& tool;
  Lifeline::Watch goesOn;
};

/// The begin of a gesture. What follows is left out also when the gesture has ended meanwhile.
class Tool::Opening : public Steps {
 public:
  explicit Opening(Tool& owner) : Steps(owner, owner.gesture) { owner.operating = true; }
};

/// Within a gesture. What follows is left out also when the gesture has ended meanwhile.
class Tool::Ongoing : public Steps {
 public:
  explicit Ongoing(Tool& owner) : Steps(owner, owner.gesture) {}
};

/// After a release, on the way to what it is to begin. What follows is left out also when somebody has ended
/// what goes on.
class Tool::Release : public Steps {
 public:
  explicit Release(Tool& owner) : Steps(owner, owner.cutOffs) {}
};

/// The begin of a shot of the tool's own. What follows is left out also when the shot is over by then.
class Tool::Flight : public Steps {
 public:
  template <class Parameters>
  Flight(Tool& owner, const Parameters& shot) : Steps(owner, owner.gesture) {
    const Lifeline::Watch stays(owner.lifeline);
    owner.animating = true;
    owner.flightCut = false;
    owner.flightBegins = true;
    Then([&] {
      tool.flight = tool.cameraOperations->GetShotNumber();
      begun = tool.cameraOperations->BeginShot(shot);
    });
    if (stays) Settle();
  }

  /// What the hub has answered.
  bool HasBegun() const { return begun; }

 private:
  // A shot that was cut off before it was in the hub ends there now.
  void Settle() {
    const bool cutBefore = !goesOn && begun && tool.IsFlying();
    tool.flightBegins = false;
    if (cutBefore) {
      tool.cameraOperations->EndShot();
    } else if (goesOn && tool.cameraOperations != nullptr) {
      tool.flight = begun ? tool.cameraOperations->GetShotNumber() : 0;
    }
  }

  bool begun = false;
};

/// The end of a gesture, or of the shot that it has begun. All that is still open is taken out of the tool,
/// so that each is closed once, whatever the host does with the tool meanwhile; it begins no gesture until
/// then.
class Tool::Closing {
 public:
  enum Pending { PENDING };

  explicit Closing(Tool& owner) : Closing(owner, PENDING) { EndGesture(); }
  /// The tool still counts as operating, until EndGesture.
  Closing(Tool& owner, Pending)
      : tool(owner),
        hub(owner.cameraOperations),
        ball(owner.pivotBall.Get()),
        record(std::move(owner.record)),
        alive(owner.lifeline),
        goesOn(owner.cutOffs),
        within(std::exchange(owner.closingGesture, true)) {}
  Closing(const Closing&) = delete;
  Closing& operator=(const Closing&) = delete;
  ~Closing() {
    if (alive) tool.closingGesture = within;
  }

  /// Whether the tool is still there.
  explicit operator bool() const { return static_cast<bool>(alive); }

  void EndGesture() {
    if (!alive) return;
    tool.operating = tool.animating = false;
    tool.gesture.Cut();
  }

  Closing& EndOperation(OperationType type) {
    if (hub != nullptr) hub->EndOperation(type);
    return *this;
  }
  Closing& HidePivotBall() {
    if (PivotBall* const shown = ball.Get()) shown->SetVisible(false);
    return *this;
  }
  /// Opens the record of the shot that the release begins, to be left to the tool with that.
  Closing& BeginRecord(RewindHistory* history, const CameraParameters& camera) {
    record.Begin(history, camera);
    return *this;
  }
  /// With the host's camera of now.
  Closing& EndRecord() {
    record.End(hub);
    return *this;
  }
  template <class Loan>
  Closing& GiveBack(Loan& settings) {
    settings.GiveBack(hub);
    return *this;
  }
  /// Puts back the pivot that the camera had before the gesture, if it has been looked up in this hub.
  Closing& RestorePivot(const BorrowedPivot& pivot) {
    if (hub == nullptr || hub != pivot.lender) return *this;
    CameraParameters camera = QueryCamera(*hub);
    camera.pivot = pivot.point;
    ApplyIfFinite(*hub, camera);
    return *this;
  }
  /// `step(hub)`, which must not touch the tool.
  template <class Step>
  Closing& Then(const Step& step) {
    if (hub != nullptr) step(*hub);
    return *this;
  }

  /// Leaves the record to the tool: its shot goes on with it. False when there is to be no shot: the tool has
  /// lost its hub, is gone, or somebody has ended what goes on.
  bool LeaveRecord() {
    if (!goesOn || hub == nullptr || tool.cameraOperations != hub) return false;
    tool.record = std::move(record);
    return true;
  }

 private:
  Tool& tool;
  CameraOperations* hub;
  Borrowed<PivotBall> ball;
  RewindRecord record;
  Lifeline::Watch alive;
  Lifeline::Watch goesOn;  // false once somebody else has ended what goes on
  bool within;             // another that still goes on
};

template <class Begin>
bool Tool::PressDrag(int x, int y, const Begin& begin) {
  const Lifeline::Watch goesOn(cutOffs);
  if (operating) OnMouseUp(mouseX, mouseY);  // its release went missing
  if (!goesOn) return true;
  NotePress(x, y);
  if (!CanOperate()) return animating;
  Opening opening(*this);
  begin(opening);
  return true;
}

template <class End>
bool Tool::ReleaseDrag(int x, int y, const End& end) {
  NoteRelease(x, y);
  if (!operating) return animating;
  Closing closing(*this);
  end(closing);
  return true;
}

}  // namespace Korvane
