#pragma once

#include <cstdint>

#include "korvane/camera_operations.h"
#include "korvane/export.h"
#include "korvane/lifeline.h"
#include "korvane/operation.h"
#include "korvane/resource_ids.h"
#include "korvane/rewind_record.h"
#include "korvane/vector2.h"

namespace Korvane {

class DynamicIcon2D;
class PivotBall;
class Renderer;
class RewindHistory;

/// A way of moving the camera with the mouse. It turns presses, drags and releases into operations and shots
/// of the hub, brackets each gesture with a rewind record, and draws its notes and sets its cursor at every
/// frame.
///
/// Positions are viewport pixels with the origin at the bottom left, y upward. A handler answers true when it
/// has used the event. A tool that is `animating` runs a shot of its own and swallows all input until the
/// shot is over. What is handed over is borrowed, null takes it away, and a tool without hub or renderer does
/// nothing.
///
/// Wherever a tool calls out - the hub, its observers and hooks, the renderer, the history - the host may
/// give it other collaborators or none, begin and end operations and shots, send it events, and destroy a
/// tool that no view manager owns. What a gesture had open is closed once, where it was opened; while that is
/// being told, a press begins no other. What may not happen within such a call is the end of the hub or the
/// renderer.
///
/// A tool that is destroyed closes nothing. EndGesture comes before that, where the tool operates and its hub
/// is to go on.
class ZOVTOOLS_API Tool {
 public:
  Tool();
  virtual ~Tool();
  Tool(const Tool&) = delete;
  Tool& operator=(const Tool&) = delete;

  virtual void SetKorvane(CameraOperations* hub);
  virtual void SetRenderer(Renderer* value);
  virtual void SetRewindHistory(RewindHistory* history);

  /// The overlay pass of a frame: notes, cursor, and what a gesture has to do once a frame.
  virtual void OnDraw();
  virtual bool OnMouseMove(int x, int y);
  /// `delta` as the window system counts it: 120 a notch, positive away from the user.
  virtual bool OnMouseWheel(int x, int y, int delta);
  virtual bool OnMouseDown(int x, int y);
  virtual bool OnMouseUp(int x, int y);
  virtual bool OnKeyDown(KeyID key);
  virtual bool OnKeyUp(KeyID key);
  /// Becomes, and ceases to be, the active tool.
  virtual void Activate();
  virtual void Deactivate();

  CameraOperations* GetKorvane() const { return cameraOperations; }
  Renderer* GetRenderer() const { return renderer; }
  RewindHistory* GetRewindHistory() const { return rewindHistory; }
  /// Borrowed, and forgotten when it goes.
  void SetPivotBall(PivotBall* ball);
  PivotBall* GetPivotBall() const { return pivotBall.Get(); }
  /// CURSOR_NONE asks for none.
  CursorID GetCursorID() const { return cursorID; }
  /// The note that follows the cursor, and the one that stands in the view. The renderer owns both.
  void SetMouseHUD(DynamicIcon2D* icon) { mouseHUD = icon; }
  void SetViewportHUD(DynamicIcon2D* icon) { viewportHUD = icon; }

  int GetMouseX() const { return mouseX; }
  int GetMouseY() const { return mouseY; }
  int GetMouseDownX() const { return mouseDownX; }
  int GetMouseDownY() const { return mouseDownY; }
  /// The last press became a drag; stays after the release, which so tells a click from a drag.
  bool WasMouseDragged() const { return mouseDragged; }
  bool IsMouseDragging() const { return mouseDown && mouseDragged; }
  bool IsShiftKeyDown() const { return shiftKeyDown; }
  /// A gesture goes on.
  bool IsOperating() const { return operating; }
  /// A shot of this tool's own runs.
  bool IsAnimating() const { return animating; }
  /// The host is to wrap the pointer at the edges of the viewport; positions then count on past them.
  bool WantCursorWrapping() const { return wrapCursor && operating; }

  /// Ends what goes on now: a gesture as by a release at a viewport pixel, or where the mouse was last; a
  /// shot of the tool's own, unless the hub runs another one by now; and a press or a release in which the
  /// host is being called, so that no gesture and no shot comes of it.
  void EndGesture(int x, int y);
  void EndGesture() { EndGesture(mouseX, mouseY); }

  Lifeline& GetLifeline() { return lifeline; }

 protected:
  /// How EndGesture ends the gesture of a tool that no release ends.
  void SetGestureEnd(void (*end)(Tool& tool)) { endGesture = end; }
  /// A gesture may begin: there are a hub and a renderer, and no other gesture is being closed.
  bool IsReady() const { return cameraOperations != nullptr && renderer != nullptr && !closingGesture; }
  /// The host is being told of the end of a gesture.
  bool IsClosing() const { return closingGesture; }
  /// A press may begin one: and no shot of the tool's own runs.
  bool CanOperate() const { return IsReady() && !animating; }
  /// A shot of the tool's own was begun and no shot is active any more.
  bool HasShotEnded() const;
  void SetCursorID(CursorID id) { cursorID = id; }
  void SetWrapCursor(bool wrap) { wrapCursor = wrap; }
  void SetOperating(bool value) { operating = value; }
  void SetAnimating(bool value) {
    animating = value;
    flight = ANY_SHOT;
  }
  void SetDrawOnlyWhileOperating(bool value) { drawOnlyWhileOperating = value; }
  /// Pixels from the middle of the view's lower edge.
  void SetViewHUDOffset(const Vector2& offset) { viewHUDOffset = offset; }

  CameraOperations* cameraOperations = nullptr;
  Renderer* renderer = nullptr;
  RewindHistory* rewindHistory = nullptr;
  CursorID cursorID = CURSOR_NONE;
  bool wrapCursor = true;
  DynamicIcon2D* mouseHUD = nullptr;
  DynamicIcon2D* viewportHUD = nullptr;
  Borrowed<PivotBall> pivotBall;
  int mouseX = -1;
  int mouseY = -1;
  int mouseDownX = 0;
  int mouseDownY = 0;
  bool mouseDown = false;
  bool mouseDragged = false;
  int dragThreshold = 0;  // pixels; a press that moves further is a drag
  bool shiftKeyDown = false;
  bool controlKeyDown = false;
  bool operating = false;
  bool animating = false;
  bool drawOnlyWhileOperating = true;
  Vector2 viewHUDOffset;

  // The parts of a gesture, for the tools of the library. What calls out to the host comes back to a tool
  // that may have ended its gesture, lost its hub, or be destroyed; these hold through that.
  class Steps;
  class Opening;
  class Ongoing;
  class Flight;
  class Closing;
  class Release;

  /// What the base's handlers note of an event.
  void NotePosition(int x, int y);
  void NoteMove(int x, int y);
  void NotePress(int x, int y);
  void NoteRelease(int x, int y);
  /// What the base's OnDraw draws.
  void DrawTool();

  /// A drag lasts from the press to the release; `begin` and `end` take the Opening and the Closing, and what
  /// these return is what the handlers return. A press whose release went missing is released first.
  template <class Begin>
  bool PressDrag(int x, int y, const Begin& begin);
  template <class End>
  bool ReleaseDrag(int x, int y, const End& end);
  /// Hands the cursor to the operation of the drag.
  bool UpdateDrag(OperationType type, int x, int y);
  /// Draws the tool, and samples the record of a drag that goes on.
  void DrawDrag();
  void SampleRecord();

  RewindRecord record;
  Lifeline cutOffs;  // cut by EndGesture: a press begins no gesture then, and a release no shot

 private:
  void DrawNotes();
  bool IsFlying() const;
  void CutFlight();

  void (*endGesture)(Tool& tool) = nullptr;  // null: a release ends it
  Lifeline lifeline;
  Lifeline gesture;                        // cut when the gesture ends
  Borrowed<CameraOperations> recordedHub;  // a history may be changed when the hub is gone already
  static constexpr std::uint64_t ANY_SHOT = ~std::uint64_t{0};

  // The number in the hub of the tool's own shot, 0 where the hub began none; while it begins, the number of
  // what ran before.
  std::uint64_t flight = ANY_SHOT;
  bool flightBegins = false;
  bool closingGesture = false;
  bool flightCut = false;  // by EndGesture, whatever runs in the hub
};

}  // namespace Korvane
