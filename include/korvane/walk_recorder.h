#pragma once

#include <memory>
#include <vector>

#include "korvane/camera_parameters.h"
#include "korvane/export.h"
#include "korvane/icon2d.h"
#include "korvane/lifeline.h"
#include "korvane/operation.h"
#include "korvane/resource_ids.h"
#include "korvane/rewind_record.h"

namespace Korvane {

class CameraOperations;
class HeightGauge;
class Renderer;
class Storyboard;

/// Turns one press of the mouse into a recorded walk: from the press to the release it walks, and notes the
/// camera of each frame. Made, wired, given all input and destroyed by the storyboard.
///
/// Positions are viewport pixels with the origin at the bottom left, y upward. The collaborators are borrowed
/// and forgotten when they are destroyed. One that ends while it walks ends its walk.
class ZOVTOOLS_API WalkRecorder : public OperationObserver {
 public:
  WalkRecorder();
  ~WalkRecorder() override;

  void SetKorvane(CameraOperations* value);
  void SetRenderer(Renderer* value);
  void SetRewindHistory(RewindHistory* value);
  void SetStoryboard(Storyboard* value);
  /// The notes to draw before the press and in the walk; the storyboard's. Null for none.
  void SetBeginWalkingMessageHUD(DynamicIcon2D* value) { beginWalkingMessageHUD = value; }
  void SetMoveUpDownMessageHUD(DynamicIcon2D* value) { moveUpDownMessageHUD = value; }
  void SetViewportSize(int width, int height);
  /// Whether a release while the height is adjusted ends that as well. False at first: only the walk ends
  /// then, and the host ends the other.
  void SetReleaseEndsHeight(bool value) { releaseEndsHeight = value; }

  // The events; always false. After a release, and after a key that cancels, the recorder may be gone.
  bool OnMouseMove(int x, int y);
  bool OnLeftMouseDown(int x, int y);
  bool OnLeftMouseUp(int x, int y);
  bool OnKeyDown(KeyID key);
  bool OnKeyUp(KeyID key);
  void OnDraw();

  void OnBeginOperation(OperationType type, const CameraParameters& camera) override;
  void OnPerformOperation(OperationType type, double dt, const CameraParameters& camera) override;
  void OnEndOperation(OperationType type) override;

  bool IsRecording() const { return recording; }
  bool IsAdjustingHeight() const { return adjustingHeight; }
  /// Where the walk set out.
  const CameraParameters& GetBeginCamera() const { return beginCamera; }
  /// A sample a frame: the seconds since the last one, and the camera.
  const std::vector<double>& GetDeltaTimes() const { return deltaTimes; }
  const std::vector<CameraParameters>& GetCameras() const { return cameras; }

  /// Ends the walk without a word to the storyboard.
  void Stop();

 private:
  struct Pixel {
    int x = 0;
    int y = 0;
  };

  void BeginWalk();
  bool BeginOperation(OperationType type, Pixel at);
  void BeginRecord();
  void EndOperation(OperationType type);
  void BeginHeightAdjustment();
  void EndHeightAdjustment();
  void CancelRecording();
  void LeaveHub();
  int FlipY(int y) const;
  double GetHeight(double otherwise) const;
  void DrawHeight(Renderer& target);
  void DrawNotes(Renderer& target);
  void ShowCursor();
  void SetCursor(CursorID id);

  Borrowed<CameraOperations> hub;
  Borrowed<CameraOperations> observed;  // the hub that tells of its operations
  Borrowed<Renderer> renderer;
  Borrowed<RewindHistory> history;
  Borrowed<Storyboard> storyboard;
  DynamicIcon2D* beginWalkingMessageHUD = nullptr;
  DynamicIcon2D* moveUpDownMessageHUD = nullptr;
  Pixel viewport;
  bool releaseEndsHeight = false;
  bool recording = false;
  Pixel mouse;
  Pixel start;
  Pixel heightStart;
  bool adjustingHeight = false;
  double startHeight = 0.0;  // of the height's range, above its middle
  CameraParameters beginCamera;
  std::vector<double> deltaTimes;
  std::vector<CameraParameters> cameras;
  RewindRecord record;
  ResourceIcon2D startCircle{TEXTURE_WALK_START};
  std::unique_ptr<HeightGauge> heightGauge;
};

}  // namespace Korvane
