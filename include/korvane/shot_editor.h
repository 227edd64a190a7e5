#pragma once

#include "korvane/export.h"
#include "korvane/lifeline.h"

namespace Korvane {

class DynamicIcon2D;
class Sequence;
class ShotSpecification;
class Storyboard;
class WalkRecorder;

/// The host's panel in which one shot of a story is edited: its type, its times, its distances and angles.
/// The library says what it shows and when; a host derives from it and supplies the controls.
///
/// The storyboard and the shot are borrowed, and forgotten when they are destroyed. Inside the five
/// operations of the host it may do what it may inside those of a storyboard, and destroy the editor.
class ZOVTOOLS_API ShotEditor {
 public:
  virtual ~ShotEditor();
  ShotEditor(const ShotEditor&) = delete;
  ShotEditor& operator=(const ShotEditor&) = delete;

  /// Keeps what was edited and shows another shot; null for both closes the panel. A recording is cancelled.
  /// Always true.
  virtual bool SetShot(Sequence* inSequence, ShotSpecification* toEdit);
  /// Opens the panel. False without a shot.
  virtual bool Show();

  // ---- the host's side ----

  /// Not called: a place that is kept for the library's own use.
  virtual void OnEditorReserved() = 0;
  /// A preview of the shot begins or ends.
  virtual void SetPreviewState(bool previewing) = 0;
  /// A walk is going to be recorded, or that is over.
  virtual void SetRecordingState(bool recording) = 0;
  /// The panel opens or closes.
  virtual void SetPanelVisible(bool visible) = 0;
  /// From the controls into the shot, or from the shot into the controls.
  virtual void TransferControls(bool toShot) = 0;

  // ---- what the buttons of the panel do ----

  /// Takes what the controls hold into the shot, stops what plays, and makes the picture anew.
  void SaveChanges();
  /// Begins a preview, over and over with `loop`, or stops the one that runs. True when it begins.
  bool PreviewShot(bool loop);
  bool RecordWalk();
  bool CancelRecordWalk();
  bool CanRecordWalk() const;
  bool IsRecordingWalk() const;
  /// The shot starts from the view of now. False without a hub or a shot.
  bool ResetCamera();
  /// What suits the type of the shot. False without a shot, and for a type that is none.
  bool ResetParameters();

  /// The shot becomes the walk that was recorded.
  void WalkRecorded(const WalkRecorder* recorder);

  /// Storyboard::SetShotEditor sets it.
  void SetStoryboard(Storyboard* value);
  Storyboard* GetStoryboard() const;
  /// Null for none.
  ShotSpecification* GetShot() const;
  Sequence* GetSequence() const;
  /// Of the shot; null for none. The storyboard's.
  DynamicIcon2D* GetThumbnail() const;

  Lifeline& GetLifeline() { return lifeline; }

 protected:
  ShotEditor();

 private:
  Borrowed<Storyboard> storyboard;
  Borrowed<ShotSpecification> shot;
  Borrowed<Sequence> sequence;
  Lifeline lifeline;
};

}  // namespace Korvane
