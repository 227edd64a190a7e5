#pragma once

#include <memory>
#include <string>

#include "korvane/export.h"
#include "korvane/orientor_observer.h"
#include "korvane/orientor_parameters.h"
#include "korvane/vector2.h"
#include "korvane/vector3.h"

namespace Korvane {

class CameraOperations;
class OrientorTransitionShotObserver;
class Renderer;
class RewindHistory;
struct OrientorParts;
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

  /// Another hub, or none, ends what the mouse does with the cube, in the hub that was there; nothing begins
  /// meanwhile. A hub that is destroyed is forgotten by itself.
  virtual void SetKorvane(CameraOperations* hub);
  /// Call Destroy before another renderer, or none, takes over: what this one made can be given back only to
  /// it. One that is taken away without it is not called, and goes on counting the textures of the cube as
  /// used, also when the cube has ended; set once more, it gets them back by Destroy. A renderer that is
  /// destroyed is forgotten by itself, and a label of its making with it.
  virtual void SetRenderer(Renderer* value);
  virtual void SetRewindHistory(RewindHistory* history);

  /// Takes textures and texts. False without a renderer.
  [[nodiscard]] virtual bool Create();
  /// Gives them back, and ends a press, a drag and a move that the cube has begun; it begins none meanwhile.
  /// The mouse is on nothing until it is looked at again. False without a renderer.
  virtual bool Destroy();
  virtual void Draw();

  // The result says whether the cube keeps the event. A cube that is no longer visible ends its gesture at
  // the next event or frame.
  virtual bool OnMouseMove(int x, int y);
  virtual bool OnLeftMouseDown(int x, int y);
  virtual bool OnLeftMouseUp(int x, int y);

  /// The host's context menu of the cube, when the mouse is on the cube. False when the cube
  /// did not ask for it; what the host answers does not count.
  [[nodiscard]] virtual bool OpenMenu();
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
  int GetScreenSize() const;
  /// The space that cube, compass and label take in the corner, pixels.
  void GetRegionSize(int& width, int& height) const;

  /// The part of the cube or the compass under the mouse, -1 for none.
  int GetActiveGeometryPart() const;
  /// The geometry part that the view looks onto most nearly, -1 before the first update.
  int GetClosestGeometryPart() const;
  /// -1 without `draw_overlay`.
  int GetActiveOverlayPart() const;
  bool IsDragActive() const;
  /// The mouse is near the cube.
  bool IsMouseInRegion() const;

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

  /// A viewport pixel, y upward, at which a part of the cube or the compass (0 to PART_COUNT - 1) is hit in
  /// the view of now, near the middle of what shows of it. False, with nothing written, for one that cannot
  /// be hit there. For tours and tests, which so need no pixels of their own.
  [[nodiscard]] bool GetPartPosition(int part, int& x, int& y);
  /// The same for a part of the overlay, as it shows once the mouse is near the cube and, for the two arrows,
  /// the view looks along a face. False for one that the parameters leave out.
  [[nodiscard]] bool GetOverlayPartPosition(OverlayPart part, int& x, int& y) const;

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
  const wchar_t* GetActiveUCS() const;

  /// Whether a drag of the compass counts along the way that the pressed place takes on the screen, so that
  /// it follows the pointer in every view. Off at first: then the sense goes by the direction of the part
  /// alone, which in a view aslant turns against the pointer on half of the ring.
  void SetCompassFollowsPointer(bool follows);
  bool CompassFollowsPointer() const;

 protected:
  /// What the mouse is on, as the observers know it.
  OrientorObserver::OrientorPart GetOrientorPartForObserver() const;
  /// What a click on the present part does. True when the camera has set out.
  bool StartTransition();
  /// Presses a part from outside, by its number for observers. The arrows to the faces and the ring press
  /// nothing.
  void InjectClick(int part);

  /// For the tests of the library, which see what it is.
  OrientorParts& GetParts() { return *parts; }

 private:
  friend class OrientorTransitionShotObserver;

  bool UpdateSelection();
  bool UpdateState();
  float UpdateFade();
  bool IsFar(const Vector2& inCorner) const;

  void UpdateUCSMenuLabel(bool redraw);

  bool StartsDrag(int x, int y) const;
  void Click();
  void EndGesture();

  ViewAlignShotParameters MakeViewShot() const;
  void TurnToActivePart();
  void RollView();
  template <class ShotParameters>
  void BeginTransition(CameraOperations& hub, const ShotParameters& shot);
  void LeaveMove();

  OrientorParameters parameters;
  std::unique_ptr<OrientorParts> parts;
};

}  // namespace Korvane
