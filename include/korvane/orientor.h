#pragma once

#include <memory>
#include <string>

#include "korvane/box2.h"
#include "korvane/export.h"
#include "korvane/lifeline.h"
#include "korvane/observer_set.h"
#include "korvane/orientor_observer.h"
#include "korvane/orientor_parameters.h"
#include "korvane/renderer.h"
#include "korvane/vector2.h"
#include "korvane/vector3.h"

namespace Korvane {

class CameraOperations;
class DynamicIcon2D;
class OrientorTransitionShotObserver;
class RewindHistory;
struct CameraParameters;
struct ViewAlignShotParameters;

/// The orientation cube: a small cube in a corner of the viewport that shows which way the camera looks and
/// takes the user to other views.
///
/// The cube has 26 geometry parts (0 to 5 faces, 6 to 17 edges, 18 to 25 corners), a compass (26 to 29
/// letters, 30 to 57 directions of the ring) and an overlay of buttons beside it. Its geometry lives in its
/// standard space, right-handed: x is the front of the scene, y its top, z its left. The space is tied to the
/// `scene_front_direction` and `scene_up_direction` of the hub's parameters.
///
/// A click on a part flies the camera there, a drag orbits the scene. The cube only begins operations and
/// shots of the hub. Hub, renderer and history are borrowed; null takes one away, and what needs it is then
/// skipped and answers false, -1 or zero. Positions are viewport pixels with the origin at the bottom left, y
/// upward, except where told. All calls belong on the host's window thread.
class ZOVTOOLS_API Orientor {
 public:
  enum OverlayPart : int {
    OVERLAY_ROTATE_COUNTER_CLOCKWISE = 0,
    OVERLAY_ROTATE_CLOCKWISE = 1,
    OVERLAY_HOME = 2,
    OVERLAY_LOCK = 3,
    OVERLAY_CONTEXT_MENU = 4,
    OVERLAY_UCS_MENU = 5,
  };

  static constexpr int FACE_COUNT = 6;
  static constexpr int GEOMETRY_PART_COUNT = 26;
  static constexpr int COMPASS_LETTERS_BEGIN = 26;
  static constexpr int COMPASS_RING_BEGIN = 30;
  static constexpr int PART_COUNT = 58;
  static constexpr int OVERLAY_PART_COUNT = 6;

  Orientor();
  /// Call Destroy before, or end what the cube has begun: the hub tells the cube of the end of its move.
  virtual ~Orientor();
  Orientor(const Orientor&) = delete;
  Orientor& operator=(const Orientor&) = delete;

  /// Another hub, or none, ends what the mouse does with the cube, in the hub that was there.
  virtual void SetKorvane(CameraOperations* hub);
  /// Call Destroy before another renderer takes over: what this one made can be given back only to it.
  virtual void SetRenderer(Renderer* value);
  virtual void SetRewindHistory(RewindHistory* history);

  /// Takes textures and texts. False without a renderer.
  virtual bool Create();
  /// Gives them back, and ends a drag and a move that the cube has begun; it begins none meanwhile. False
  /// without a renderer.
  virtual bool Destroy();
  virtual void Draw();

  // The result says whether the cube keeps the event. A cube that is no longer visible ends its gesture at
  // the next event or frame.
  virtual bool OnMouseMove(int x, int y);
  virtual bool OnLeftMouseDown(int x, int y);
  virtual bool OnLeftMouseUp(int x, int y);

  /// The host's context menu of the cube, when the mouse is on the cube. False when it was not opened.
  virtual bool OpenMenu();
  /// The host's list of coordinate systems, at the label that shows the active one.
  virtual void OpenUCSMenu();
  virtual void GoToHomeView();

 protected:
  /// Brings selection, closest part and fade up to date with camera and mouse. With `redraw`, asks the host
  /// for a frame when that changed anything that shows.
  virtual void Update(bool redraw);
  /// Bracket an animated move in the rewind history.
  virtual void OnTransitionStarted();
  virtual void OnTransitionEnded();

 public:
  /// Ends what the mouse does with the cube, once: a drag gives the hub's settings back, closes its record
  /// and is told as ended; a press will be no click, and its release is not kept. The mouse is on nothing
  /// until it is looked at again. For a lost focus, a key that cancels, a cube that is put away. A move that
  /// a click has begun goes on.
  void CancelGesture();

  /// False for null only. One that is already held keeps its place.
  bool AddObserver(OrientorObserver* observer);
  void RemoveObserver(OrientorObserver* observer);

  OrientorParameters& GetParameters() { return parameters; }
  const OrientorParameters& GetParameters() const { return parameters; }
  /// The size of the cube in pixels.
  int GetScreenSize() const { return screenSize; }
  /// The space that cube, compass and label take in the corner, pixels.
  void GetRegionSize(int& width, int& height) const;

  /// The part of the cube or the compass under the mouse, -1 for none.
  int GetActiveGeometryPart() const { return activePart; }
  /// The geometry part that the view looks onto most nearly, -1 before the first update.
  int GetClosestGeometryPart() const { return closestPart; }
  /// -1 without `draw_overlay`.
  int GetActiveOverlayPart() const;
  bool IsDragActive() const { return dragging; }
  /// The mouse is near the cube.
  bool IsMouseInRegion() const { return mouseInRegion; }

  /// From the centre outward, components -1, 0 and 1; zero for anything but a geometry part.
  Vector3 GetGeometryPartDirection(int part) const;
  /// The part whose direction is exactly this one; -1 for none, as for a normalised edge or corner.
  int GetGeometryPartIndex(const Vector3& direction) const;
  /// Direction of the closest part; zero when there is none.
  Vector3 GetClosestViewDirection() const;
  /// Direction of the geometry part under the mouse; zero when there is none.
  Vector3 GetActivePartDirection() const;
  /// The English name of what the mouse is on, for the host's own use; an overlay part goes before a
  /// geometry part. Empty for none and for the parts without a name.
  const std::string& GetActivePartName() const;
  /// The text for what the mouse is on; empty for none.
  const std::wstring& GetTooltip() const;

  /// The letters of the compass count, since a click on them turns the view.
  bool IsMouseOnGeometryPart() const;
  /// Letters and ring.
  bool IsMouseOnCompassPart() const;
  /// As shown: none while a shot runs.
  bool IsMouseOnOverlayPart() const;
  /// As the mouse is now.
  bool IsMouseOnViewableOverlayPart() const;
  bool IsMouseOnContextMenuPart() const;
  bool IsMouseOnUCSMenu() const;
  bool IsMouseOnPart() const;
  /// The view runs exactly along the closest part that can be hit; along the closest face.
  bool ViewOnPartAxis() const;
  bool ViewOnPrincipalAxis() const;

  /// Whether anything of the cube or its overlay is at a viewport pixel.
  bool IsPointInBounds(int x, int y);

  /// Pixels. Asks the host for a frame when the cube is visible.
  void SetViewportSize(int width, int height);
  /// `y` counts DOWNWARD from the top of the viewport.
  void SetViewportMousePosition(int x, int y);
  /// Goes to the corner that the parameters name; the argument is not read.
  void SetLocation(OrientorParameters::Location location);
  /// Takes the size that the parameters name; the argument is not read.
  void SetSize(OrientorParameters::Size size);

  /// Straightens the camera in an animated move, with `preserve_scene_up`.
  void AlignToOrbitUpDirection();
  /// True: toggles whether the scene bounds stay on the selection. False: turns that on.
  void LockToCurrentSelection(bool toggle);
  /// The name of the coordinate system that the label shows; null counts as empty. With `redraw`, a new label
  /// asks the host for a frame.
  void SetActiveUCS(const wchar_t* name, bool redraw);
  /// Valid until the next SetActiveUCS.
  const wchar_t* GetActiveUCS() const { return activeUCSName.c_str(); }

 protected:
  friend class OrientorTransitionShotObserver;

  /// From viewport pixels, y downward, to the cube's corner: x is 0 there and grows inward, y is the
  /// height of the viewport there and falls inward.
  struct Mirror {
    float offsetX = 0.0F;
    float offsetY = 0.0F;
    float scaleX = 1.0F;
    float scaleY = 1.0F;
  };

  // ---- the model ----

  void InitCompassTables();
  /// Into and out of the standard space; degenerate directions of the scene give zero components.
  Vector3 ChangeBasisWorldToStandard(const Vector3& v) const;
  Vector3 ChangeBasisStandardToWorld(const Vector3& v) const;
  /// The standard-space coordinates of what is laid out along the axes of the world, so that north stays
  /// north when the scene is turned against the world.
  Vector3 ConvertVectorToWorldSpace(const Vector3& v) const;
  void ConvertVectorsToWorldSpace(Vector3& a, Vector3& b, Vector3& c) const;
  /// Half the width of the cube.
  double GetHalfSize() const;
  /// View direction and up of the host's camera, normalised, in standard space. Needs a hub.
  void GetStandardView(Vector3& view, Vector3& up) const;

  // ---- hit test; `view` and `up` in standard space ----

  bool UpdateSelection(const Vector3& view, const Vector3& up);
  /// Closest part, fade and opacity.
  bool UpdateState(const Vector3& view, const Vector3& up);
  /// The part of the cube or the compass at a pixel, -1 for none.
  int GetSelectionGeometry(const Vector3& view, const Vector3& up, const Vector2& point);
  int GetSelectionOverlay(const Vector3& view, const Vector3& up, const Vector2& point);

  // ---- drawing; with `select` the same is offered under the number `id` instead ----

  void DrawGeometry(const Vector3& view, const Vector3& up);
  void DrawOverlay(const Vector3& view, const Vector3& up);
  /// `part` is the direction of the part, as in the table.
  void DrawCubePart(const Renderer::MaterialParams& material, const Vector3& view, const Vector3& part,
                    bool select, int id);
  void DrawArrowPart(const Renderer::MaterialParams& material, const Vector3& view, const Vector3& part,
                     bool select, int id);
  /// The triangle beside a face that the view looks along; `direction` of unit length.
  void DrawBoxArrow(const Renderer::MaterialParams& material, const Vector3& view, const Vector3& direction,
                    bool select, int id);
  void DrawCompassPart(const Renderer::MaterialParams& material, const Vector3& view, Vector3 direction,
                       int id, bool select);
  void DrawOverlayPart(const Renderer::MaterialParams& material, OverlayPart part, bool select);
  void DrawUCSMenu(DynamicIcon2D* label, int id, bool select);
  void DrawBox(const Renderer::MaterialParams& material, const Vector3& min, const Vector3& max, bool plain,
               bool select, int id) const;
  /// About `centre`, with the half axes `a` and `b`.
  void DrawQuad(const Renderer::MaterialParams& material, const Vector3& centre, const Vector3& a,
                const Vector3& b, const Vector2& texCorner1, const Vector2& texCorner2, bool select,
                int id) const;
  void DrawVertexArray(unsigned count, const float* vertices, const float* texCoords,
                       const Renderer::MaterialParams& material, bool select, int id) const;
  void GetPerspectiveCamera(Box2& box, CameraParameters& camera, const Vector3& view,
                            const Vector3& up) const;
  void GetOverlayCamera(Box2& box, CameraParameters& camera, const Vector3& view, const Vector3& up) const;

  // ---- interaction ----

  /// The sense in which a drag of the compass turns the view.
  void CalculateDirectionOfRotation();
  /// What the mouse is on, as the observers know it.
  OrientorObserver::OrientorPart GetOrientorPartForObserver() const;
  /// What a click on the present part does. True when the camera has set out.
  bool StartTransition();
  /// Presses a part from outside, by its number for observers.
  void InjectClick(int part);
  void UpdateUCSMenuLabel(bool redraw);

  // ---- state ----

  OrientorParameters parameters;
  int screenSize = 0;  // pixels
  int viewportWidth = 0;
  int viewportHeight = 0;
  int mouseX = 0;  // viewport pixels, y downward
  int mouseY = 0;
  int pressX = 0;  // the mouse at the last left press, y upward
  int pressY = 0;
  int lastX = 0;  // the mouse at the last step of a drag, y upward
  int lastY = 0;
  int accumulatedDragX = 0;  // steps of a compass drag
  int accumulatedDragY = 0;
  bool reverseDragX = false;
  bool reverseDragY = false;
  CameraOperations* cameraOperations = nullptr;
  Renderer* renderer = nullptr;
  RewindHistory* rewindHistory = nullptr;
  int activePart = -1;          // of cube or compass, under the mouse
  int highlightedPart = -1;     // the same as last shown; stays during a shot
  int activeOverlayPart = -1;   // as shown; none during a shot
  int rawOverlayPart = -1;      // under the mouse
  int pressedOverlayPart = -1;  // shown at the last left press
  int closestPart = -1;         // geometry part nearest to the view
  float closestDot = 0.0F;      // its cosine
  float fade = 0.0F;            // how far the mouse is into the cube's corner, 0 to 1
  float opacity = 1.0F;         // as shown
  bool mouseInRegion = false;
  bool menuOpen = false;
  bool dragging = false;
  bool mousePressed = false;
  bool mouseCaptured = false;
  bool releasing = false;             // the release of the last press is being told
  bool tellingDragEnd = false;        // and the drag it ends has not been put away
  Lifeline dragLife;                  // cut when the drag ends
  bool tellsDragEnd = false;          // its begin has been told
  bool recordOpen = false;            // the drag's, in the history
  bool closing = false;               // within Destroy, when no move may begin
  float savedOrbitMultiplier = 5.0F;  // the hub's, while dragging
  bool savedPreserveOrbitUp = true;
  bool savedAlignOrbitUp = true;
  const CameraOperations* draggedHub = nullptr;  // whose settings were saved; to compare, not to use
  Mirror mirror;
  bool faceArrows[FACE_COUNT] = {};  // the last hit test has offered an arrow for the face
  Vector3 partDirections[PART_COUNT];
  std::string partNames[GEOMETRY_PART_COUNT];
  std::string overlayNames[OVERLAY_PART_COUNT];
  std::unique_ptr<OrientorTransitionShotObserver> transitionObserver;
  DynamicIcon2D* ucsLabel = nullptr;  // made, and destroyed, by the renderer
  DynamicIcon2D* highlightedUCSLabel = nullptr;
  std::wstring homeTooltip;
  std::wstring lockTooltip;
  std::wstring geometryTooltip;
  std::wstring compassTooltip;
  std::wstring contextTooltip;
  std::wstring emptyTooltip;
  int lastLocation = -1;
  ObserverSet<OrientorObserver> observers;
  bool arrowsVisible = false;      // a face arrow has been laid since the last draw began
  bool labelCompassState = false;  // `draw_compass` when the size was last set
  std::wstring activeUCSName;
  std::wstring defaultUCSName;

 private:
  class GeometryPass;
  class GeometryPick;

  void UpdateScreenSize();
  void UpdateClosestPart(const Vector3& view);
  float UpdateFade();
  bool IsFar(double x, double y) const;
  bool IsInRegion(double x, double y) const;
  bool IsViewOnClosestPart(int partCount) const;
  bool IsSceneWorld() const;
  bool IsLockedToSelection() const;

  template <class Lay>
  int Pick(const Vector2& point, const Box2& viewport, const CameraParameters& camera,
           Renderer::RenderMode mode, Lay lay);
  bool IsCameraLookingUp() const;

  int GetPassSize() const;
  bool FindArrowDirection(const Vector3& view, const Vector3& direction, Vector3& aside) const;
  bool IsOverlayShown() const;
  Vector2 GetOverlayPosition(const Vector2& offset) const;
  void DrawRotateArrow(const Renderer::MaterialParams& material, OverlayPart part, bool select);
  void DrawOverlaySquare(const Renderer::MaterialParams& material, OverlayPart part, const Vector2& offset,
                         double halfSize, bool select);
  void DrawOverlayQuad(const Renderer::MaterialParams& material, OverlayPart part, const float* vertices,
                       const float* texCoords, bool select);

  bool ShowsSecondUCSName() const;
  void DestroyUCSMenuLabels();
  void EndGesture();
  void EndMove();

  int CountFromTop(int y) const;
  void Click();
  bool StartsDrag(int x, int y) const;
  void BeginDrag(int x, int y);
  void TakeOverOrbitSettings();
  void BeginDragOrbit(int x, int y);
  void ApplyOrbitStart();
  void UpdateCompassDrag(int x, int y);
  void EndDrag();

  ViewAlignShotParameters MakeViewShot() const;
  void TurnToActivePart();
  void RollView();
  template <class ShotParameters>
  void BeginTransition(const ShotParameters& shot);
  void LeaveParts();
};

}  // namespace Korvane
