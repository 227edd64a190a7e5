#pragma once

#include <string>

#include "korvane/export.h"
#include "korvane/observer_set.h"
#include "korvane/resource_ids.h"

namespace Korvane {

class CameraOperations;
class Renderer;
class RewindHistory;
class Sequence;
class ShotSpecification;
class StoryboardObserver;
class WalkRecorder;

/// The panel that shows a story as rows of slides and plays it.
///
/// The panel itself is still to come: for now it is never visible, uses no events, plays nothing and draws
/// nothing. Its place, its size and its observers are there.
///
/// Positions are viewport pixels with the origin at the bottom left, y upward; a handler answers true when it
/// has used the event. What is handed over is borrowed; null takes it away.
class ZOVTOOLS_API Storyboard {
 public:
  enum Mode : int { MODE_EDITING = 0, MODE_PRESENTING = 1 };

  Storyboard();
  virtual ~Storyboard();
  Storyboard(const Storyboard&) = delete;
  Storyboard& operator=(const Storyboard&) = delete;

  virtual void SetKorvane(CameraOperations* hub);
  virtual void SetRenderer(Renderer* value);
  virtual void SetRewindHistory(RewindHistory* history);
  virtual bool Create();
  virtual bool Destroy();
  virtual void Draw();
  virtual bool OnMouseMove(int x, int y);
  virtual bool OnLeftMouseDown(int x, int y);
  virtual bool OnLeftMouseUp(int x, int y);
  virtual bool OnRightMouseDown(int x, int y);
  virtual bool OnKeyDown(KeyID key);
  virtual bool OnKeyUp(KeyID key);
  /// The context menu of the slide under the cursor.
  virtual bool OpenMenu();

  /// Null is refused with false.
  bool AddObserver(StoryboardObserver* observer) { return observers.Add(observer); }
  void RemoveObserver(StoryboardObserver* observer) { observers.Remove(observer); }

  bool IsVisible() const { return visible; }
  /// The cursor is on the panel.
  bool IsMouseInRegion() const { return mouseInRegion; }
  bool IsPlayingBack() const { return playing; }
  bool IsRecordingWalk() const { return walkRecorder != nullptr; }
  /// A slide is being dragged.
  bool DraggingStoryBoardItem() const { return draggingSequence != nullptr || draggingShot != nullptr; }
  /// Empty for none.
  const std::wstring& GetTooltip() const { return tooltip; }

  /// The lower left corner of the room that the panel may take.
  void SetPosition(int left, int bottom);
  /// The size of that room in pixels.
  void SetViewportSize(int width, int height);

 protected:
  CameraOperations* cameraOperations = nullptr;
  Renderer* renderer = nullptr;
  RewindHistory* rewindHistory = nullptr;
  int viewportWidth = 0;
  int viewportHeight = 0;
  bool visible = false;
  bool mouseInRegion = false;
  int x = 15;
  int y = 15;
  bool playing = false;
  const WalkRecorder* walkRecorder = nullptr;
  const Sequence* draggingSequence = nullptr;
  const ShotSpecification* draggingShot = nullptr;
  std::wstring tooltip;
  ObserverSet<StoryboardObserver> observers;
};

}  // namespace Korvane
