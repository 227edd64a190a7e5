#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "korvane/box2.h"
#include "korvane/box3.h"
#include "korvane/export.h"
#include "korvane/observer_list.h"
#include "korvane/renderer_loans.h"
#include "korvane/resource_ids.h"
#include "korvane/vector3.h"

namespace Korvane {

class Cam3DController;
class CameraOperations;
class HelmDisc;
class MouseWheelZoomTool;
class NavigationBar;
class OrbitTool;
class Orientor;
class PanTool;
class PivotBall;
class Renderer;
class RewindHistory;
class Storyboard;
class Tool;
class Toolbar;
class ViewManagerHelmDiscObserver;
class ViewManagerOrientorObserver;
class ViewManagerRewindShotObserver;
class ViewManagerStoryboardObserver;
enum class DiscType : int;
struct CameraParameters;
struct CornerStrip;
struct ViewArea;

/// The one door for the window events of one viewport. It decides which of the orientation cube, the
/// navigation disc, the navigation bar, the toolbars, the storyboard panel, the middle-mouse tools and the
/// active tool gets an event, keeps the widgets laid out beside each other, draws them in their order, and
/// brackets its own camera moves in the rewind history.
///
/// Order of use: the collaborators, tools and toolbars; Create; SetViewportSize; events and, once a frame
/// after the hub's PerformOperations, OnDraw; Destroy. Every collaborator is optional: what needs a missing
/// one is skipped. They are borrowed and must outlive the view manager, or be taken away with a null first;
/// tools are owned from AddTool on.
///
/// In whatever the view manager, its widgets or its tools call - hooks and pure operations of the hub,
/// observers, the history, the renderer, menus - the host may begin and end operations and shots, set and
/// take away collaborators and toolbars, choose, add, remove and delete tools, show and hide widgets, and
/// send events. It may not call Create, Destroy or RemoveAllTools in there, nor destroy the view manager,
/// nor what is calling.
///
/// Positions are viewport pixels with the origin at the bottom left, y upward. An event operation answers
/// true when the event was consumed; the host then does nothing of its own with it. A host may derive from
/// the class and override any virtual operation: the class calls itself through them. All calls belong on the
/// host's window thread.
class ZOVTOOLS_API ViewManager {
 public:
  ViewManager();
  virtual ~ViewManager();
  ViewManager(const ViewManager&) = delete;
  ViewManager& operator=(const ViewManager&) = delete;

  // ---- collaborators; null takes one away ----

  virtual void SetKorvane(CameraOperations* hub);
  virtual void SetRenderer(Renderer* value);
  virtual void SetCam3DController(Cam3DController* controller);
  virtual void SetNavigationBar(NavigationBar* bar);
  /// The disc brings the rewind history and the tools of the middle mouse button.
  virtual void SetHelmDisc(HelmDisc* disc);
  virtual void SetStoryboard(Storyboard* panel);
  virtual void SetOrientor(Orientor* cube);
  /// Goes to the end of the list, also when it is there already. False for null.
  virtual bool AddToolbar(Toolbar* toolbar);
  /// False for null.
  virtual bool RemoveToolbar(Toolbar* toolbar);

  // ---- life ----

  /// Makes the pivot ball, and hands hub, renderer and history on to every collaborator and creates it. False
  /// without a hub or a renderer, and when anything could not be created: the renderer and the 3D controller
  /// end it at once, toolbars are created only when all widgets were, and tools are wired only when all was.
  virtual bool Create();
  /// Destroys what Create created. False when anything reported a failure; all of it is done anyway.
  virtual bool Destroy();
  /// Pixels; zero is legal. Also written into the parameters of the hub.
  virtual void SetViewportSize(int width, int height);
  /// Lays everything out anew. Called by itself wherever a size, a visibility or a link changes.
  virtual void Refresh();

  // ---- a frame ----

  /// OnDrawInScene, then OnDrawOverlay.
  virtual void OnDraw();
  /// The pivot ball, among the things of the scene.
  virtual void OnDrawInScene();
  /// The widgets, on top of it. Brings the disc and the cube up to date, and applies the cursor of the frame.
  virtual void OnDrawOverlay();

  // ---- events ----

  /// The host's set-cursor message. False when the library wants no cursor of its own.
  virtual bool OnSetCursor();
  virtual bool OnMouseMove(int x, int y);
  /// `delta` as the window system counts it: 120 a notch, positive away from the user.
  virtual bool OnMouseWheel(int x, int y, int delta);
  // A press while another button is held goes nowhere; the buttons exclude each other.
  virtual bool OnLeftMouseDown(int x, int y);
  virtual bool OnLeftMouseUp(int x, int y);
  virtual bool OnMiddleMouseDown(int x, int y);
  virtual bool OnMiddleMouseUp(int x, int y);
  virtual bool OnRightMouseDown(int x, int y);
  /// Context menus open here.
  virtual bool OnRightMouseUp(int x, int y);
  virtual bool OnKeyDown(KeyID key);
  virtual bool OnKeyUp(KeyID key);

  // ---- camera moves: animated, each one entry of the rewind history; false without a hub ----

  /// `centre` and the lengths in world units.
  virtual bool FitBoundsToView(const Vector3& centre, double radius);
  virtual bool FitAllToView();
  virtual bool FitBoundBoxToView(const Vector3& centre, Box3 box);
  virtual bool FitSelectionToView();
  /// FitSelectionToView.
  virtual bool FitToView();
  /// Lays the view direction flat and stands the camera upright, in half a second. A view straight up or down
  /// turns to where its up pointed.
  virtual bool LevelCamera();
  /// Brings a point to the middle of the view, in a second.
  virtual bool RestoreCenter(const Vector3& point);
  /// A move of the host's own: `move` begins a shot of the hub, or changes the camera. The result is its own.
  bool MoveCamera(const std::function<bool(CameraOperations&)>& move);

  // ---- what shows; the setters answer false when nothing changed ----

  virtual bool SetOrientorVisible(bool visible);
  virtual bool IsOrientorVisible() const;
  virtual bool SetNavigationBarVisible(bool visible);
  virtual bool IsNavigationBarVisible() const;
  /// A linked bar hangs on the cube; otherwise it stands on an edge.
  virtual bool SetNavigationBarLinkedToOrientor(bool linked);
  virtual bool IsNavigationBarLinkedToOrientor() const;
  /// The ribbon is a rectangle of the host's own over the top left corner, which the widgets keep clear of.
  virtual bool SetRibbonVisible(bool visible);
  virtual bool IsRibbonVisible() const;
  /// Pixels.
  virtual bool SetRibbonSize(int width, int height);
  virtual int GetRibbonWidth() const;
  virtual int GetRibbonHeight() const;

  // ---- tools ----

  /// Takes ownership. The identifier is also the tag of the tool's item in the navigation bar. False, and
  /// nothing taken, for 0, null, an identifier in use and a tool that is here already.
  virtual bool AddTool(int id, Tool* tool);
  /// Gives ownership back. Null for the active tool and an unknown identifier.
  virtual Tool* RemoveTool(int id);
  /// 0: none. False for an unknown identifier, while the active tool is operating, and within what Destroy or
  /// RemoveAllTools tells it.
  virtual bool SetActiveTool(int id);
  virtual int GetActiveTool() const;

  /// Hides cube, disc, navigation bar and ribbon, and gives them no presses.
  virtual void SetCleanScreen(bool clean);
  /// A storyboard playback takes the widgets out of play, and gives them back.
  virtual void OnReelshowStartPlayback();
  virtual void OnReelshowStopPlayback();

 protected:
  // Asked anew at each use.
  virtual bool WantActiveToolEnabled() const;
  virtual bool WantCam3DControllerEnabled() const;
  virtual bool WantMiddleMouseNavigation() const;
  virtual bool WantHelmDiscEnabled() const;
  virtual bool WantHelmDiscVisible() const;
  virtual bool WantOrientorEnabled() const;
  // Navigation by the middle button and the wheel, while a disc is open: idle, orbiting (Shift), panning or
  // zooming. An end answers false when that was not going on.
  virtual bool BeginMiddleMouseNavigation();
  virtual bool EndMiddleMouseNavigation();
  virtual bool BeginOrbitingWithMouse();
  virtual bool EndOrbitingWithMouse();
  virtual bool BeginPanningWithMouse();
  virtual bool EndPanningWithMouse();
  virtual bool BeginZoomingWithMouse();
  virtual bool EndZoomingWithMouse();
  /// The caller owns the result; null is fine.
  virtual PivotBall* InstantiatePivotBall();
  virtual void RemoveAllTools();
  virtual bool IsMouseInRibbonRegion() const;
  virtual bool IsMouseInToolbarRegion() const;
  virtual void LinkNavBarToOrientor();

 public:
  /// Ends whatever the user does with the mouse, once: the press, the drag of the cube, the gesture of a tool
  /// or of the middle button. Nothing is clicked, no menu opens, and the releases that still come go nowhere.
  /// For a lost focus, and for the key that cancels. A move that a gesture has left behind goes on.
  void CancelGesture();

  /// Null before Create and after Destroy.
  PivotBall* GetPivotBall() const { return pivotBall.get(); }
  /// The disc's; null without a disc.
  RewindHistory* GetRewindHistory() const;
  /// Of what is under the cursor; empty for none.
  const std::wstring& GetTooltip() const;
  /// The corner that the cube takes, with the room that a bar beside it needs.
  Box2 GetOrientorBounds() const;
  /// Both 0 when the cube does not show.
  void GetOrientorSize(int& width, int& height) const;
  bool IsLeftMouseDown() const { return mouse.leftDown; }
  bool IsRightMouseDown() const { return mouse.rightDown; }

 protected:
  /// Where the disc stands relative to the cursor; puts it back there.
  void SaveHelmDiscPosition();
  void RestoreHelmDiscPosition();

  CameraOperations* cameraOperations = nullptr;
  Renderer* renderer = nullptr;
  Cam3DController* cam3DController = nullptr;
  NavigationBar* navigationBar = nullptr;
  HelmDisc* helmDisc = nullptr;
  Storyboard* storyboard = nullptr;
  Orientor* orientor = nullptr;
  ObserverList<Toolbar> toolbars;  // in the order in which they were added
  std::map<int, std::unique_ptr<Tool>> tools;
  int activeToolID = 0;  // 0: none
  Tool* activeTool = nullptr;
  // From Create to Destroy.
  std::unique_ptr<PivotBall> pivotBall;
  std::unique_ptr<ViewManagerRewindShotObserver> rewindShotObserver;
  std::unique_ptr<ViewManagerStoryboardObserver> storyboardObserver;
  std::unique_ptr<ViewManagerHelmDiscObserver> helmDiscObserver;
  std::unique_ptr<ViewManagerOrientorObserver> orientorObserver;
  int viewportWidth = 0;
  int viewportHeight = 0;

  /// As pointer, buttons and keys are.
  struct Mouse {
    int x = -1;
    int y = -1;
    int wheelDelta = 0;
    int leftDownX = 0;  // the last left press
    int leftDownY = 0;
    bool leftDown = false;
    bool middleDown = false;
    bool rightDown = false;
    bool shiftDown = false;
    bool controlDown = false;
    // A press was offered, so the release is.
    bool leftClickOpen = false;
    bool middleClickOpen = false;
    bool rightClickOpen = false;
  } mouse;

  enum class Navigation { None, Orbiting, Panning, Zooming };

  /// What the middle button and the wheel do. The tools are there while a disc is set.
  struct MouseNavigation {
    std::unique_ptr<OrbitTool> orbitTool;
    std::unique_ptr<PanTool> panTool;
    std::unique_ptr<MouseWheelZoomTool> zoomTool;
    Navigation present = Navigation::None;
    int discOffsetX = 0;  // the disc minus the cursor, when the disc was hidden
    int discOffsetY = 0;
  } navigation;

  /// A drag of the cube.
  struct OrientorDrag {
    bool seen = false;
    bool leftRegion = false;  // the cursor has left the cube's region
  } orientorDrag;

  struct Ribbon {
    int width = 0;
    int height = 0;
    bool visible = false;
  } ribbon;

  /// Whoever owns the present drag wants the host to wrap the pointer at the edges of the viewport. For the
  /// host's derived class to read.
  bool wantCursorWrapping = false;
  bool cleanScreen = false;
  bool reelshowPlaying = false;

 private:
  // The rows of the tables; see view_manager_doors.h.
  struct Doors;
  struct Event;
  struct Door;
  struct Drawing;
  class CallOut;

  // Collaborators and life.
  void ChangeHelmDisc(HelmDisc* disc);
  void CloseOpenRecord(ViewManagerRewindShotObserver* observer) const;
  void HandHistoryOn();
  void DropMouseNavigation();
  bool MakeMouseNavigation();
  bool WatchCollaborators();
  void CloseToolGesture();
  bool IsWiredAsNow(const Tool& tool) const;
  void ReleaseShotObserver();
  std::unique_ptr<PivotBall> TakePivotBallBack();
  bool CreatePivotBall();
  bool CreateToolbars();
  bool DestroyToolbars();
  void DismissActiveTool();
  Tool* FindTool(int id) const;
  bool PutActiveToolAway();
  void SetReelshowPlaying(bool playing);

  // Routing. An offer answers whether anybody took the event.
  void NoticeOrientorDrag(const Orientor& cube);
  void ShowPivotBall();
  void FinishOrientorDrag();
  void PutCursorBack();
  bool IsRightPressOnOrientor() const;
  void StoreMousePosition(int x, int y);
  void EnableCam3DController(bool enabled);
  void GiveCam3DControllerBack();
  bool IsMouseDragNoted() const;
  /// Whether that changed it.
  bool NoteMouseDrag(bool dragging);
  void RequestApplicationUpdate();
  void CancelToolGesture();
  void CancelOrientorGesture();
  void ReleaseHiddenWidgets();
  void LetGo(bool onlyHidden);

  // The middle button.
  template <class NavigationTool, class Start>
  bool BeginNavigation(Navigation kind, const std::unique_ptr<NavigationTool>& tool, Start start);
  bool EndNavigation(Navigation kind);
  template <class NavigationTool>
  void ShowNote(Navigation kind, const std::unique_ptr<NavigationTool>& tool, StringID note);
  template <class NavigationTool>
  void HideNote(Navigation kind, const std::unique_ptr<NavigationTool>& tool);
  template <class NavigationTool>
  void HandNote(Navigation kind, const std::unique_ptr<NavigationTool>& tool);
  void LabelPivot();
  DiscType GetEnabledDisc() const;
  void HideHelmDisc();

  // Drawing.
  void DrawNavigationTools();
  void DrawActiveTool();
  void DrawHelmDisc();
  void DrawOrientor();
  CursorID GetOrientorCursor(const Orientor& cube) const;
  void CloseCursorQueue(Renderer& pictures) const;

  // Layout.
  void RefreshBarItems();
  CornerStrip RefreshToolbars();
  void RefreshOrientor(const CornerStrip& corner);
  void RefreshNavigationBar();
  void RefreshHelmDisc();
  int GetWelcomeHeight() const;
  void RefreshStoryboard(Storyboard& panel);
  void HandOrientorToBar();
  ViewArea GetViewArea() const;

  // Camera moves.
  template <class Move>
  bool Record(CameraOperations& hub, const CameraParameters& camera, Move move);
  template <class Move>
  bool Fit(Move move);

  const std::wstring emptyTooltip;
  StringLoan navigationNote;         // of the navigation that goes on
  std::optional<int> leavingToolID;  // the one that is being told that it goes; 0: the disc
  Lifeline pointerLife;              // of this view as one that the pointer can be in
  int callsOut = 0;                  // to widgets, that have not come back
  bool dismissingTool = false;       // the tools go
};

}  // namespace Korvane
