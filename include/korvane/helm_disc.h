#pragma once

#include <memory>

#include "korvane/export.h"
#include "korvane/helm_disc_parameters.h"
#include "korvane/observer_set.h"
#include "korvane/resource_ids.h"

namespace Korvane {

class CameraOperations;
class HelmDiscObserver;
class PivotBall;
class Renderer;
class RewindHistory;
class TrackMenu;

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

/// The round menu of navigation tools that follows the cursor. At most one kind is open at a time. It owns
/// the rewind history that the tools and widgets of a view share.
///
/// The discs themselves are still to come: for now none ever opens, events are not used, and nothing is
/// drawn. The history, the settings and the observers are there.
///
/// Positions are viewport pixels with the origin at the bottom left, y upward; a handler answers true when it
/// has used the event. What is handed over is borrowed; null takes it away.
class ZOVTOOLS_API HelmDisc {
 public:
  HelmDisc();
  virtual ~HelmDisc();
  HelmDisc(const HelmDisc&) = delete;
  HelmDisc& operator=(const HelmDisc&) = delete;

  virtual void SetKorvane(CameraOperations* hub);
  virtual CameraOperations* GetKorvane() const;
  virtual void SetRenderer(Renderer* value);
  virtual bool Create();
  virtual bool Destroy();
  /// DiscType::None closes.
  virtual void SetActiveDisc(DiscType type);
  virtual DiscType GetActiveDisc() const;
  virtual void DrawOverlay();
  /// The context menu of the open disc.
  virtual bool OpenMenu();
  virtual bool OnMouseMove(int x, int y);
  virtual bool OnLeftMouseDown(int x, int y);
  virtual bool OnLeftMouseUp(int x, int y);
  virtual bool OnKeyDown(KeyID key);
  virtual bool OnKeyUp(KeyID key);

  /// Null is refused with false.
  bool AddObserver(HelmDiscObserver* observer) { return observers.Add(observer); }
  void RemoveObserver(HelmDiscObserver* observer) { observers.Remove(observer); }

  HelmDiscParameters& GetParameters() { return parameters; }
  /// Owned by the disc.
  RewindHistory* GetHistory() const { return history.get(); }
  PivotBall* GetPivotBall() const { return pivotBall; }
  void SetPivotBall(PivotBall* ball) { pivotBall = ball; }
  /// The menu of the open disc; null when none is open.
  TrackMenu* GetActiveTrackMenu() const { return activeTrackMenu; }
  /// A disc is open and reacts.
  bool GetEnabled() const;
  void SetEnabled(bool enabled);
  /// The disc may draw. Hiding it closes nothing.
  void SetVisible(bool value);
  /// Pixels; zero is legal.
  void SetViewportSize(int width, int height);
  /// The lower left corner of the welcome screen.
  void SetWelcomeMenuPosition(int x, int y);
  /// The cursor is on the welcome screen, which shows.
  bool IsOverWelcome() const;
  /// A drag that began on the disc goes on.
  bool IsDragActive() const { return dragBegun; }
  /// The host is to wrap the pointer at the edges of the viewport.
  bool WantCursorWrapping() const;
  /// What the pointer looks like over the open disc.
  CursorID GetCurrentCursor() const;

 protected:
  bool visible = true;
  Renderer* renderer = nullptr;
  TrackMenu* activeTrackMenu = nullptr;
  std::unique_ptr<RewindHistory> history;
  PivotBall* pivotBall = nullptr;
  std::unique_ptr<TrackMenu> welcomeTrackMenu;
  CameraOperations* cameraOperations = nullptr;
  bool overWelcome = false;
  int viewportWidth = 0;
  int viewportHeight = 0;
  int welcomeX = 0;
  int welcomeY = 0;
  bool dragBegun = false;
  ObserverSet<HelmDiscObserver> observers;

 private:
  HelmDiscParameters parameters;
};

}  // namespace Korvane
