#pragma once

#include <memory>

#include "korvane/box2.h"
#include "korvane/camera_parameters.h"
#include "korvane/export.h"
#include "korvane/lifeline.h"
#include "korvane/vector2.h"

namespace Korvane {

class CameraOperations;
class DynamicIcon2D;
class Renderer;
struct RewindParts;

/// Is told what happens to a rewind history. Borrowed by the history; see RewindHistory::AddObserver. It may
/// remove itself while it is being told. Where it changes the history meanwhile, those behind it are told of
/// that first, and no more of what is no longer so.
class ZOVTOOLS_API RewindHistoryObserver {
 public:
  virtual ~RewindHistoryObserver();
  RewindHistoryObserver(const RewindHistoryObserver&) = delete;
  RewindHistoryObserver& operator=(const RewindHistoryObserver&) = delete;

  /// By a step, by a choice, by a slide that has ended, and where older elements went. An element that is
  /// added is the current one without a further word.
  virtual void OnCurrentElementChanged(int index) = 0;
  virtual void OnElementAdded(int index, const CameraParameters& camera) = 0;
  /// The element has another camera.
  virtual void OnElementUpdated(int index, const CameraParameters& camera) = 0;
  /// Comes before the element goes: it can still be asked for.
  virtual void OnElementRemoved(int index) = 0;
  virtual void OnHistoryCleared() = 0;
  virtual void OnTimelineClosed() = 0;
  virtual void OnTimelineOpened() = 0;
  /// The element next to the bracket, and its share of the view, 0 to 1.
  virtual void OnTimelineSlid(int index, double weight) = 0;

 protected:
  RewindHistoryObserver();
};

/// The cameras that the user has passed through, each with a small picture, and the film strip on which the
/// user slides back along them while the view follows.
///
/// Whatever moves the camera brackets its move with BeginElementRecord and EndElementRecord. Whoever opens
/// the strip hands it the mouse, applies the camera that it interpolates, and draws it. One element is the
/// current one: a move sets out from it, and cuts off what came after it.
///
/// Positions are viewport pixels with the origin at the bottom left, y upward. Hub, renderer and observers
/// are borrowed; null takes one away, and what needs it is then skipped: without a renderer there are no
/// pictures and nothing is drawn; without a hub no two cameras count as equal and the scene is always in
/// view. A camera that holds a number that is not finite is not taken, an index that is not there is refused.
///
/// Inside its operations a host may do what it may inside those of the hub. It may change the history, take
/// it away from whoever calls, and end it: what was about to happen to it then no longer does. A record is
/// closed in the history in which it was opened, by a tool at the latest when that is taken away; a history
/// that is gone by then is left alone. All calls belong on the host's window thread.
class ZOVTOOLS_API RewindHistory {
 public:
  struct HistoryElement {
    CameraParameters camera;
    DynamicIcon2D* thumbnail = nullptr;  ///< The picture; null until it is made. Made by the renderer.
    Box2 bounds;                         ///< Of the picture on the strip.
    double weight = 0.0;                 ///< The share in the interpolated camera; of all together 1.
    bool outsideView = false;            ///< The scene was not in view.
  };

  static constexpr unsigned int defaultMaxHistorySize = 100;

  RewindHistory();
  /// Gives the pictures back. Nobody is told.
  virtual ~RewindHistory();
  RewindHistory(const RewindHistory&) = delete;
  RewindHistory& operator=(const RewindHistory&) = delete;

  // ---- recording ----

  /// Opens a record with the camera before the move, which the current element takes. A bracket that was left
  /// between two elements means that the move sets out from the later one. False when nothing is recorded:
  /// the strip is open, or recording is switched off.
  virtual bool BeginElementRecord(const CameraParameters& camera);
  /// Closes it with the camera after the move, which becomes the last element; it takes the place of one from
  /// which the scene was not in view. A move that ended where it began adds none, and is true. False when
  /// nothing was recorded.
  virtual bool EndElementRecord(const CameraParameters& camera);
  /// A camera within the move; called for every frame of it. Does nothing and is true.
  virtual bool AddElementSubrecord(const CameraParameters& camera);

  bool GetRecordEnabled() const;
  /// A move that begins while recording is off is not recorded, also when it ends later.
  void SetRecordEnabled(bool enabled);

  // ---- elements, oldest first ----

  /// Makes a last element, the current one, and room for it. The history owns the picture; with null it makes
  /// one. The index, -1 when none was added: the picture is then still the caller's.
  int AddHistoryElement(const CameraParameters& camera, DynamicIcon2D* thumbnail);
  /// Gives the current (the last, while it is the current) element another camera. False while the strip is
  /// open, and for a camera from which the scene is not in view. The current one cuts off what came after it.
  bool UpdateCurrentElement(const CameraParameters& camera);
  bool UpdateLastElement(const CameraParameters& camera);
  /// The oldest ones; how many went. None while the strip is open.
  int RemoveHistoryElements(int count);
  void ClearHistory();

  int GetElementCount() const;
  [[nodiscard]] bool GetElementCamera(int index, CameraParameters& camera) const;
  /// The history's; null while there is none, and when its renderer is gone.
  DynamicIcon2D* GetElementThumbnail(int index) const;
  /// Takes the picture over and gives the one of before back. Null takes it away.
  bool SetElementThumbnail(int index, DynamicIcon2D* thumbnail);
  /// Makes the pictures that are missing, each by a draw of the whole scene.
  void UpdateThumbnails();

  /// 0 is no limit. A lower one removes the oldest.
  unsigned int GetMaxHistorySize() const;
  void SetMaxHistorySize(unsigned int count);

  // ---- the current element ----

  /// -1 when empty.
  int GetCurrentElementIndex() const;
  /// False while the strip is open.
  bool SetCurrentElementIndex(int index);
  /// A step. Where the bracket was left beside the current element, the step that way goes to the element
  /// itself. False at the end.
  bool ShiftBackOneElement();
  bool ShiftForwardOneElement();
  /// The current element's camera; false when empty.
  [[nodiscard]] bool GetTransitionCamera(CameraParameters& camera) const;

  // ---- the film strip ----

  bool IsTimelineEmpty() const;
  bool IsTimelineOpen() const;
  /// Lays the strip out around the mouse and opens it. The current element, when it is the last, takes the
  /// camera. False for a position that is no pixel.
  bool OpenTimeline(const Vector2& position, const CameraParameters& camera);
  /// Follows the mouse: scrolls, moves the bracket, weighs the elements. False when closed or empty, and for
  /// a position that is no pixel.
  bool SlideTimeline(const Vector2& position);
  /// The element next to the bracket becomes the current one. The bracket's place beside it is kept for the
  /// next time.
  bool CloseTimeline(const Vector2& position);
  /// The camera under the bracket. False, with the camera untouched, when there is none.
  bool GetInterpolatedCamera(CameraParameters& camera) const;
  /// The frame on the strip that marks the place.
  const Vector2& GetBracketPosition() const;
  /// With the camera for the draw pass. Nothing while the strip is closed or empty.
  void Draw(const CameraParameters& camera);

  /// Whether the bracket snaps to the elements. On at first.
  bool GetSnapEnabled() const;
  void SetSnapEnabled(bool enabled);
  /// Pixels, also those of the pictures. Negative ones are refused.
  void SetThumbnailSize(float size);
  /// Pixels between two pictures; below 0 they overlap.
  void SetThumbnailGapSize(float size);
  /// Pixels for each of those two and for what else the strip has a size of: its bracket, and how near the
  /// bracket snaps. 1 at first; what is not finite or not above 0 is refused. With another one all pictures
  /// are given back; UpdateThumbnails makes them anew. The disc of a history sets it to pixels_per_point of
  /// its hub, with each size of the viewport and as the strip opens.
  void SetScale(double scale);
  /// Pixels; zero is legal.
  void SetViewportSize(int width, int height);

  /// Whether the view turns on the way between two elements, or moves in a straight line. For all histories;
  /// on at first.
  static bool GetAngularInterpolation();
  static void SetAngularInterpolation(bool enabled);

  // ---- collaborators ----

  void SetKorvane(CameraOperations* hub);
  /// Pictures go back to the renderer that made them when another takes over.
  void SetRenderer(Renderer* renderer);
  /// Null is refused with false.
  bool AddObserver(RewindHistoryObserver* observer);
  void RemoveObserver(RewindHistoryObserver* observer);

  Lifeline& GetLifeline() { return lifeline; }

 protected:
  /// Gives an element another camera and cuts off what came after it; an index that is not there adds one.
  /// False when no element took the camera.
  bool UpdateHistoryElement(int index, const CameraParameters& camera);
  /// By the hub, with `up` made upright in both. False without a hub.
  bool CamerasAreEqual(CameraParameters a, CameraParameters b) const;
  /// By the hub; false without one.
  bool IsSceneOutsideView(const CameraParameters& camera) const;

  /// For the tests of the library, which see what it is.
  RewindParts& GetParts() { return *parts; }

 private:
  // Shared with the calls that go on: what they work with outlives a history that ends meanwhile.
  std::shared_ptr<RewindParts> parts;
  Lifeline lifeline;
};

}  // namespace Korvane
