#pragma once

#include <memory>
#include <optional>

#include "korvane/export.h"
#include "korvane/helm_disc_parameters.h"
#include "korvane/lifeline.h"
#include "korvane/resource_ids.h"

namespace Korvane {

class CameraOperations;
class HelmDiscObserver;
class PivotBall;
class Renderer;
class ResourceIcon2D;
class RewindHistory;
class TrackMenu;
struct HelmDiscParts;
struct WelcomeClick;
enum class WelcomePicture : int;

/// The kinds of navigation disc.
enum class DiscType : int {
  ViewObject = 0,
  TourBuilding = 1,
  FullNavigation = 2,
  TwoD = 3,
  MiniViewObject = 4,
  MiniTourBuilding = 5,
  MiniFullNavigation = 6,
  None = 8,  // no disc is open
};

/// The round menu of navigation tools that follows the cursor. At most one kind is open at a time. It owns a
/// track menu for each kind, and the rewind history that the tools and widgets of a view share.
///
/// In use: SetKorvane, SetRenderer, Create, SetViewportSize, then the events and the frames, and
/// SetActiveDisc, or the hot key (KEY_DISC), to open and close.
///
/// A press on a region begins its gesture: the disc hides until the release, or until the animated move that
/// follows is over. A disc that is put away ends what its regions have begun.
///
/// Create may put up a welcome screen, see the parameters: a picture of 512 x 512 pixels of two pages, on
/// which a first disc is chosen by a click. It goes when a disc opens, and comes back with another Create.
///
/// Positions are viewport pixels with the origin at the bottom left, y upward; a handler answers true when it
/// has used the event. What is handed over is borrowed; null takes it away, and what is destroyed is
/// forgotten. All menus share the one renderer, which stays the caller's.
///
/// Wherever the disc calls out - the hub, the renderer, its observers, the listeners of its regions - a host
/// may open and close discs, Destroy the disc, send it events and give it other collaborators or none. Within
/// a listener it may also delete the disc; within an observer not.
class ZOVTOOLS_API HelmDisc {
 public:
  HelmDisc();
  virtual ~HelmDisc();
  HelmDisc(const HelmDisc&) = delete;
  HelmDisc& operator=(const HelmDisc&) = delete;

  virtual void SetKorvane(CameraOperations* hub);
  virtual CameraOperations* GetKorvane() const;
  /// An open disc moves its pictures and texts to another renderer.
  virtual void SetRenderer(Renderer* value);
  /// Makes the regions of every disc. False when the renderer has no picture of a region map, or there is
  /// none. Where no pivot ball was set, makes one. Settings that concern the regions are to be written
  /// before.
  virtual bool Create();
  /// Closes, without a word to the observers, and gives all of it back. False when a menu could not.
  virtual bool Destroy();
  /// Opens a kind, or closes with DiscType::None. The number 7, and any other that is no kind, changes
  /// nothing but shows and sizes the open disc anew.
  virtual void SetActiveDisc(DiscType type);
  virtual DiscType GetActiveDisc() const;
  /// The pivot ball, then the overlay.
  virtual void Draw();
  /// In the scene, while a disc is open.
  virtual void DrawPivotBall();
  virtual void DrawOverlay();
  /// The context menu of the open disc.
  virtual bool OpenMenu();
  virtual bool OnMouseMove(int x, int y);
  virtual bool OnLeftMouseDown(int x, int y);
  virtual bool OnLeftMouseUp(int x, int y);
  /// KEY_SHIFT and KEY_CONTROL put other regions in the place of some, on all discs; KEY_DISC opens and
  /// closes when it is let go.
  virtual bool OnKeyDown(KeyID key);
  virtual bool OnKeyUp(KeyID key);

 protected:
  /// The caller owns it.
  virtual PivotBall* InstantiatePivotBall();
  /// Fills one disc. True, and nothing done, for a type that is no kind.
  virtual bool InitRegions(DiscType type);
  /// Puts the welcome screen up anew. False without a welcome menu.
  virtual bool InitWelcome();
  /// A press on the welcome screen: turns its page, or opens a disc. True when the press was for it.
  bool ClickWelcome();
  /// Shows another picture on the welcome screen; borrowed, null is ignored.
  void ChangeWelcomeIcon(ResourceIcon2D* icon);
  /// The cursor has moved over the welcome screen.
  void UpdateWelcome();

 public:
  static bool IsLargeDisc(DiscType type) { return static_cast<int>(type) < 4; }
  static bool IsBasicDisc(DiscType type) { return static_cast<int>(type) < 2; }

  /// Null is refused with false.
  bool AddObserver(HelmDiscObserver* observer);
  void RemoveObserver(HelmDiscObserver* observer);

  /// Written by the host, who then calls UpdateSettings.
  HelmDiscParameters& GetParameters() { return parameters; }
  const HelmDiscParameters& GetParameters() const { return parameters; }
  /// Brings sizes, opacities and walk speed into effect.
  void UpdateSettings();
  /// Pixels, both ways. A disc that is opened takes its size from the parameters.
  void SetLargeDiscSize(int size);
  /// A mini disc below 128 pixels hides the arrow.
  void SetMiniDiscSize(int size);
  /// As the OPACITY_... of the parameters; one that is not finite changes nothing.
  void SetLargeDiscOpacity(float opacity);
  void SetMiniDiscOpacity(float opacity);
  /// A step of the walk speed: a tenth, and of larger ones a quarter up and a fifth down, on tenths, within
  /// minimumSpeedFactor to maximumSpeedFactor.
  void IncrementWalkSpeed();
  void DecrementWalkSpeed();

  Renderer* GetRenderer() const;
  /// Owned by the disc.
  RewindHistory* GetHistory() const;
  PivotBall* GetPivotBall() const;
  /// A ball that is set stays the caller's; only one that the disc made itself goes with Destroy.
  void SetPivotBall(PivotBall* ball);
  /// The menu of the open disc; null when none is open.
  TrackMenu* GetActiveTrackMenu() const;
  /// The menu of a kind; null for a type that is none. Owned by the disc.
  TrackMenu* GetTrackMenu(DiscType type) const;
  /// Null once it is known that there will be no welcome screen.
  TrackMenu* GetWelcomeTrackMenu() const;
  /// The kind that the hot key opens, the last that was open. Ignored while a disc is open and for a type
  /// that is no kind.
  void SetDefaultDiscType(DiscType type);
  DiscType GetDefaultDiscType() const;
  /// Every kind opens where the pointer is, in the middle of the view while the pointer is outside, and in
  /// the place of a disc that was open. By default only the last kind comes where the pointer is, since no
  /// other has followed it.
  void SetOpensAtPointer(bool opens);
  /// The messages of a walk come and go at once, instead of fading for 0.8 seconds each. False at first.
  void SetMessagesAtOnce(bool atOnce);
  bool AreMessagesAtOnce() const;
  /// Lets the hot key close the open disc although it has been pressed, as any other key going down does.
  /// Nothing while the button is down on the disc.
  void LetHotKeyClose();
  /// A disc is open and reacts.
  bool GetEnabled() const;
  /// All discs but one whose left button is down.
  void SetEnabled(bool enabled);
  /// The disc may draw. Hiding it closes nothing.
  void SetVisible(bool value);
  /// Pixels; zero is legal.
  void SetViewportSize(int width, int height);
  /// The lower left corner of the welcome screen, from now on; set it after Create, and when the hub counts
  /// another number of pixels to a point.
  void SetWelcomeMenuPosition(int x, int y);
  /// The cursor is on the welcome screen, which shows.
  bool IsOverWelcome() const;
  /// A drag that began on the disc goes on.
  bool IsDragActive() const;
  /// The host is to wrap the pointer at the edges of the viewport.
  bool WantCursorWrapping() const;
  /// What the pointer looks like over the open disc.
  CursorID GetCurrentCursor() const;

  Lifeline& GetLifeline();

 protected:
  /// For the tests of the library, which see what it is.
  HelmDiscParts& GetParts() { return *parts; }

 private:
  bool CreatePivotBall();
  bool CreateMenus();
  bool CreateWelcome();
  void DestroyPivotBall();
  void OpenKind(DiscType type);
  void CloseKind();
  void ChangeMenu(TrackMenu* former);
  void ShowMenu(DiscType type);
  void PlaceMenu(TrackMenu& follower, bool wasOpen);
  void AgreeOnModifiers(TrackMenu& menu);
  void DrawCloseNote();
  bool PressWelcome(int x, int y);
  std::optional<WelcomeClick> TakeWelcomeClick();
  void TurnWelcomePage(bool advanced, WelcomePicture picture);
  void TellWelcomeCrossing();
  bool PressMenu(int x, int y);
  void ReleaseMenu(int x, int y);
  void TellRelease();
  void FlipRegions(KeyID key, bool down);
  void NoteModifier(KeyID key, bool down);
  bool PassKey(KeyID key, bool down);
  bool ReleaseHotKey();
  void TakeWalkSpeed(double speed);
  void ApplyWalkSpeed();

  HelmDiscParameters parameters;
  std::unique_ptr<HelmDiscParts> parts;
};

}  // namespace Korvane
