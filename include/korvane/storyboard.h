#pragma once

#include <memory>
#include <string>

#include "korvane/box2.h"
#include "korvane/export.h"
#include "korvane/lifeline.h"
#include "korvane/resource_ids.h"

namespace Korvane {

class CameraOperations;
class DynamicIcon2D;
class Renderer;
class RewindHistory;
class Sequence;
class ShotEditor;
class ShotSpecification;
class Story;
class StoryboardObserver;
class UndoQueue;
class WalkRecorder;
struct StoryboardParts;

/// The panel over the viewport that shows a story as slides: one for each sequence, and one for each shot of
/// the sequence that is selected. With the mouse the user adds shots from the view of now, orders and deletes
/// them, opens one in the host's editor, and plays a shot, a sequence or the whole story, with fades between
/// the shots.
///
/// In use: the collaborators, Create, SetVisible; then the events, and Draw once a frame, also while the
/// panel is hidden: a playback has no timer of its own, each Draw looks whether the hub's move has ended and
/// begins the next one. The story is the panel's own; a host keeps it between runs through GetStory and
/// SetStory, and may change it directly.
///
/// Positions are viewport pixels with the origin at the bottom left, y upward; a handler answers true when it
/// has used the event. Hub, renderer, history, editor, undo queue and observers are borrowed; null takes one
/// away, and one that is destroyed is forgotten. What needs one that is missing is refused with false or
/// null, and nothing is changed.
///
/// Wherever the panel calls out - the hub, the renderer, the editor, its observers - a host may change or
/// replace the story, start and stop a playback, hide, Destroy and delete the panel, and give it other
/// collaborators or none. Within an operation of the renderer it may not be deleted.
class ZOVTOOLS_API Storyboard {
 public:
  /// Editing; presenting: the slides can be played, and nothing can be changed.
  enum Mode : int { MODE_EDITING = 0, MODE_PRESENTING = 1 };

  /// The buttons of the title bar, from the left.
  enum TitlePart : int { TITLE_PLAY = 0, TITLE_STOP = 1, TITLE_LOOP = 2, TITLE_CLOSE = 3 };
  /// A slide, and its round buttons: that which plays and that which flies to its start.
  enum SlidePart : int { SLIDE_ITSELF = 0, SLIDE_PLAY = 1, SLIDE_TARGET = 2 };

  /// The slides, for the library's own eyes.
  struct DisplayElement;
  struct ShotDisplayElement;

  Storyboard();
  /// Gives all pictures back, and deletes the story.
  virtual ~Storyboard();
  Storyboard(const Storyboard&) = delete;
  Storyboard& operator=(const Storyboard&) = delete;

  virtual void SetKorvane(CameraOperations* hub);
  /// Pictures go back to the renderer that made them.
  virtual void SetRenderer(Renderer* value);
  virtual void SetRewindHistory(RewindHistory* history);
  /// The editor is told whose it is.
  virtual void SetShotEditor(ShotEditor* value);
  /// With one, whatever is edited here can be undone there.
  virtual void SetUndoQueue(UndoQueue* queue);
  /// Begins an empty story. Always true.
  virtual bool Create();
  /// Ends a playback and a recording, and gives the pictures back. The story stays. Always true.
  virtual bool Destroy();
  /// A frame: of the playback, then of the panel.
  virtual void Draw();
  virtual bool OnMouseMove(int x, int y);
  virtual bool OnLeftMouseDown(int x, int y);
  virtual bool OnLeftMouseUp(int x, int y);
  virtual bool OnRightMouseDown(int x, int y);
  virtual bool OnKeyDown(KeyID key);
  virtual bool OnKeyUp(KeyID key);
  /// The context menu of the shot under the cursor; see GetShotForOpenMenu.
  virtual bool OpenMenu();

  CameraOperations* GetKorvane() const;
  /// Null is refused with false.
  bool AddObserver(StoryboardObserver* observer);
  void RemoveObserver(StoryboardObserver* observer);

  // ---- the panel ----

  bool IsVisible() const;
  void SetVisible(bool value);
  Mode GetMode() const;
  /// A number that is no mode is ignored.
  void SetMode(Mode value);
  /// The lower left corner of the room that the panel may take.
  void SetPosition(int left, int bottom);
  /// Between that corner and the panel, which else begins right at it: its shots then touch the edge of a
  /// view. Counts like the sizes of the panel itself, see pixels_per_point of the parameters. 0 at first.
  void SetMargin(int pixels);
  /// The size of the view in pixels; the panel ends at its right edge.
  void SetViewportSize(int width, int height);
  /// The cursor is on the panel.
  bool IsMouseInRegion() const;
  /// A slide is being dragged.
  bool DraggingStoryBoardItem() const;
  /// Empty for none.
  const std::wstring& GetTooltip() const;
  /// Where something lies, in viewport pixels, for a host that marks it or reaches it without a mouse. Of a
  /// number that is no part: nothing.
  Box2 GetTitleBounds(TitlePart part) const;
  /// Null: the slide that adds one, which has no buttons. False, with nothing written, for one that had no
  /// slide in the last frame.
  bool GetSlideBounds(const Sequence* sequence, SlidePart part, Box2& bounds) const;
  bool GetSlideBounds(const ShotSpecification* shot, SlidePart part, Box2& bounds) const;
  /// Whether the fades show while a story is presented too. False at first: presenting draws nothing at all
  /// over the view.
  void SetFadeWhilePresenting(bool value);
  /// No shot fades in or out, whatever it asks for: they follow on each other as cuts. False at first.
  void SetCutsOnly(bool value);

  // ---- the story ----

  /// Never null after Create.
  Story* GetStory() const;
  /// Takes the story over; the one of before is deleted. Null is ignored.
  void SetStory(Story* value);
  /// A story without sequences and without a name.
  void ResetToEmptyStory();
  /// Null for one that is in no sequence of the story.
  Sequence* GetSequenceForShot(const ShotSpecification* shot) const;
  /// The one whose context menu is open, or was opened last.
  ShotSpecification* GetShotForOpenMenu() const;
  /// The sequence whose shots show; null for none.
  Sequence* GetSelectedSequence() const;
  /// Null for none. A sequence that is not in the story is refused with false.
  bool SetSelectedSequence(Sequence* sequence);

  // ---- edits; each is one step of the undo queue, and refused while presenting ----

  /// A shot from the view of now, at the end, selected and open in the editor. Null when it is refused, and
  /// without hub or editor.
  ShotSpecification* CreateShot(Sequence* sequence);
  /// A named sequence with one such shot, at the end. Null as with CreateShot.
  Sequence* CreateSequence();
  /// With its sequence, where it is the last of it.
  bool DeleteShot(ShotSpecification* shot);
  /// Before another one of its sequence, or to the end for null. Before itself it stays where it is.
  bool MoveShot(ShotSpecification* shot, ShotSpecification* before);
  bool MoveSequence(Sequence* sequence, Sequence* before);
  /// Distances and angles that suit its type and its camera. False for a type that is none.
  bool ResetShotToDefaults(ShotSpecification* shot);

  // ---- the editor ----

  /// Opens it on a shot of the story.
  bool EditShot(ShotSpecification* shot);
  void CloseShotEditor();
  /// Null for none.
  ShotSpecification* GetShotInShotEditor() const;

  // ---- playing ----

  bool PlaybackStory(Story* story);
  bool PlaybackSequence(Sequence* sequence);
  bool PlaybackSingleShot(ShotSpecification* shot);
  /// Plays a shot, again and again if wanted, and goes back to the view of before.
  bool PreviewShot(ShotSpecification* shot, bool loopIt);
  /// A preview is stopped by it.
  bool PausePlayback();
  bool ResumePlayback();
  bool StopPlayback();
  bool IsPlayingBack() const;
  bool IsPaused() const;
  bool IsPreviewing() const;
  bool GetLoop() const;
  void SetLoop(bool value);
  /// Flies to where the shot starts.
  bool TargetShot(ShotSpecification* shot);
  bool TargetSequence(Sequence* sequence);

  // ---- pictures ----

  /// Made when the panel is drawn; null while there is none. The panel's.
  DynamicIcon2D* GetThumbnail(const ShotSpecification* shot) const;
  /// Makes the picture of a shot anew, and that of its sequence if it is the first.
  bool RefreshThumbnail(Sequence* sequence, ShotSpecification* shot);

  // ---- a walk into the shot of the editor ----

  bool IsRecordingWalk() const;
  bool CanRecordWalk() const;
  /// The next press of the left button walks until it is let go.
  bool BeginRecordWalk();
  bool CancelRecordWalk();
  /// Whether the release of the button ends an adjustment of the height as well. False at first: only the
  /// walk ends then, and the host ends the other.
  void SetReleaseEndsHeight(bool value);
  /// The recorder hands its walk over, and is gone with that.
  bool WalkRecorded(WalkRecorder* recorder);

  Lifeline& GetLifeline();

 protected:
  /// Applies the camera of the shot and begins its move; the moves until the next rest are one entry of the
  /// history.
  bool BeginShot(ShotSpecification* shot);
  /// For the tests of the library, which see what it is.
  StoryboardParts& GetParts() { return *parts; }

 private:
  friend class StoryboardUndoCommand;
  /// The slides are made anew from the story with the next frame.
  void RebuildDisplayElements();
  void ClearAll();
  void GivePicturesBack();
  void TakePictures();
  bool Update();
  void ShowCursor();
  void DrawOver(bool withPanel);

  std::shared_ptr<StoryboardParts> parts;
};

}  // namespace Korvane
