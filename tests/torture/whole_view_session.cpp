// What the user of the whole view does.
#include <cmath>
#include <utility>

#include "korvane/center_tool.h"
#include "korvane/helm_disc_observer.h"
#include "korvane/shot_parameters.h"
#include "korvane/story.h"
#include "korvane/track_menu.h"
#include "torture/whole_view.h"

using namespace Korvane;

namespace torture {

// ---- hands ----

void WholeView::Frame(unsigned milliseconds) {
  pass(time, milliseconds);
  hub.PerformOperations();
  manager.OnDraw();
}

void WholeView::Frames(int count) {
  for (int i = 0; i < count; ++i) Frame();
}

// Until a move is over that lasts a second at most, in large steps.
void WholeView::Rest() {
  for (int i = 0; i < 7; ++i) {
    pass(time, 150);
    hub.PerformOperations();
  }
  Frame(150);
}

void WholeView::Move(int x, int y) { manager.OnMouseMove(x, y); }

void WholeView::Press(int x, int y) {
  Move(x, y);
  manager.OnLeftMouseDown(x, y);
}

void WholeView::Release() { manager.OnLeftMouseUp(manager.mouse.x, manager.mouse.y); }

void WholeView::Click(int x, int y) {
  Press(x, y);
  Frame();
  Release();
  Frame();
}

void WholeView::Drag(int fromX, int fromY, int toX, int toY, int steps) {
  Press(fromX, fromY);
  for (int step = 1; step <= steps; ++step) {
    Move(fromX + (toX - fromX) * step / steps, fromY + (toY - fromY) * step / steps);
    Frame();
  }
  Release();
  Frame();
}

void WholeView::ClickBar(const Toolbar* toolbar, int tag) {
  if (toolbar == nullptr) return;
  const ToolbarItem::List& items = toolbar->GetItems();
  for (int i = 0; i < items.GetCount(); ++i) {
    const Vector2 place = items.GetAt(i).GetBounds().center;
    if (items.GetAt(i).GetTag() == tag) Click(static_cast<int>(place.x), static_cast<int>(place.y));
  }
}

// ---- tools ----

void WholeView::UseTools() {
  for (int id = ORBIT; id < TOOL_END; ++id) {
    manager.SetActiveTool(id);
    Drag(400, 300, 460 + 7 * id, 260);
    Rest();
  }
  manager.SetActiveTool(LOOK);  // with keys, and cancelled
  Press(400, 300);
  manager.OnKeyDown(KEY_UP);
  Move(430, 320);
  Frames(2);
  manager.OnKeyUp(KEY_UP);
  manager.CancelGesture();
  manager.SetActiveTool(CENTER);
  Click(420, 280);
  Rest();
  manager.SetActiveTool(ORBIT);
  Press(400, 300);
  Move(500, 310);
  Frame();
  manager.OnKeyDown(KEY_ESCAPE);
  manager.OnKeyUp(KEY_ESCAPE);
  Release();
  manager.SetActiveTool(0);
}

void WholeView::UseMiddleButton() {
  disc.SetActiveDisc(DiscType::FullNavigation);
  Move(300, 320);
  Frame();
  manager.OnMiddleMouseDown(300, 320);
  Move(340, 330);
  Frame();
  manager.OnKeyDown(KEY_SHIFT);
  Move(360, 300);
  Frame();
  manager.OnKeyUp(KEY_SHIFT);
  Move(320, 290);
  Frame();
  manager.OnMiddleMouseUp(320, 290);
  for (const int notches : {1, 1, -2}) {
    manager.OnMouseWheel(320, 290, 120 * notches);
    Frame();
  }
  Rest();
  disc.SetActiveDisc(DiscType::None);
}

// ---- the cube ----

void WholeView::UseCube() {
  int x = 0;
  int y = 0;
  cube.SetActiveUCS(L"a name that is long enough", true);
  Frame();
  for (const int part :
       {0, 12, 22, int{Orientor::COMPASS_LETTERS_BEGIN}, int{Orientor::COMPASS_RING_BEGIN} + 3}) {
    if (!cube.GetPartPosition(part, x, y)) continue;
    Click(x, y);
    Rest();
  }
  for (const Orientor::OverlayPart part :
       {Orientor::OVERLAY_HOME, Orientor::OVERLAY_ROTATE_CLOCKWISE, Orientor::OVERLAY_LOCK,
        Orientor::OVERLAY_CONTEXT_MENU, Orientor::OVERLAY_UCS_MENU}) {
    if (!cube.GetOverlayPartPosition(part, x, y)) continue;
    Click(x, y);
    Rest();
  }
  if (cube.GetPartPosition(1, x, y)) Drag(x, y, x + 60, y - 30);
  manager.OnRightMouseDown(x, y);
  manager.OnRightMouseUp(x, y);
  cube.LockToCurrentSelection(false);
  cube.SetActiveUCS(L"another name that is long enough", true);
  Rest();
  cube.SetActiveUCS(L"", true);
}

// ---- discs ----

// Ring after ring from the inside.
bool WholeView::FindWedge(HelmDiscZone zone) {
  constexpr int DIRECTIONS = 24;
  TrackMenu* const menu = disc.GetActiveTrackMenu();
  if (menu == nullptr || menu->GetRegionMap() == nullptr) return false;
  const Vector2 middle = menu->GetRegionMap()->GetPosition();
  for (double radius = 4.0; radius < menu->GetWidth() / 2.0; radius += 5.0) {
    for (int i = 0; i < DIRECTIONS; ++i) {
      const double angle = 2.0 * Math::PI * i / DIRECTIONS;
      Move(static_cast<int>(middle.x + radius * std::cos(angle)),
           static_cast<int>(middle.y + radius * std::sin(angle)));
      if (menu->GetActiveRegion().zone == static_cast<int>(zone)) return true;
    }
  }
  return false;
}

void WholeView::Wedge(DiscType type, HelmDiscZone zone) {
  Move(380, 310);
  disc.SetActiveDisc(type);
  Frame();
  FindWedge(zone);
  const int x = manager.mouse.x;
  const int y = manager.mouse.y;
  manager.OnLeftMouseDown(x, y);
  Frame();
  for (int step = 1; step <= 3; ++step) {
    Move(x + 15 * step, y - 10 * step);
    Frame();
  }
  Release();
  Frames(2);
}

void WholeView::UseLargeDisc() {
  using Zone = HelmDiscZone;
  for (const Zone zone : {Zone::Orbit, Zone::Pan, Zone::Zoom, Zone::Walk, Zone::Look, Zone::UpDown,
                          Zone::Center, Zone::Rewind, Zone::Menu, Zone::Close}) {
    Wedge(DiscType::FullNavigation, zone);
  }
  Rest();
  Wedge(DiscType::TourBuilding, Zone::Forward);
  Wedge(DiscType::ViewObject, Zone::Zoom);
  Wedge(DiscType::TwoD, Zone::Pan);
  disc.SetActiveDisc(DiscType::None);
}

void WholeView::UseMiniDisc() {
  using Zone = HelmDiscZone;
  manager.OnKeyDown(KEY_DISC);
  manager.OnKeyUp(KEY_DISC);
  Frame();
  manager.OnKeyDown(KEY_SHIFT);
  Wedge(DiscType::MiniFullNavigation, Zone::Orbit);
  Wedge(DiscType::MiniTourBuilding, Zone::Walk);
  Wedge(DiscType::MiniFullNavigation, Zone::Zoom);
  manager.OnKeyUp(KEY_SHIFT);
  manager.OnKeyDown(KEY_CONTROL);
  Wedge(DiscType::MiniViewObject, Zone::Orbit);
  manager.OnKeyUp(KEY_CONTROL);
  Wedge(DiscType::MiniFullNavigation, Zone::Rewind);
  Frames(2);
  disc.SetMiniDiscSize(32);
  disc.SetLargeDiscSize(128);
  disc.SetMiniDiscSize(64);
  Rest();
  disc.SetActiveDisc(DiscType::None);
}

void WholeView::UseWelcome() {
  if (disc.GetWelcomeTrackMenu() == nullptr) return;
  for (int x = 20; x < 320; x += 40) {
    Move(x, 560 - x / 2);
    Frame();
  }
  for (int x = 20; x < 320; x += 60) Click(x, 260);
  disc.SetActiveDisc(DiscType::None);
}

// ---- bars ----

void WholeView::UseBars() {
  const Toolbar* const own = bar.GetToolbar();
  for (const int tag : {NavigationBar::TAG_FULL_NAVIGATION, NavigationBar::TAG_TWO_D, NavigationBar::TAG_MENU,
                        NavigationBar::TAG_MORE_CONTROLS}) {
    ClickBar(own, tag);
    disc.SetActiveDisc(DiscType::None);
  }
  if (own != nullptr) {
    const Vector2 middle = Box2(own->GetToolbarBounds()).center;
    Drag(static_cast<int>(middle.x), static_cast<int>(middle.y), 400, 300);
    manager.OnRightMouseDown(static_cast<int>(middle.x), static_cast<int>(middle.y));
    manager.OnRightMouseUp(static_cast<int>(middle.x), static_cast<int>(middle.y));
  }
  manager.SetNavigationBarLinkedToOrientor(!manager.IsNavigationBarLinkedToOrientor());
  Frames(2);
  manager.SetNavigationBarLinkedToOrientor(!manager.IsNavigationBarLinkedToOrientor());
  manager.SetOrientorVisible(false);
  Frames(2);
  manager.SetOrientorVisible(true);
  bar.SetItemExcluded(NavigationBar::TAG_TWO_D, true);
  Frame();
  bar.SetItemExcluded(NavigationBar::TAG_TWO_D, false);
  for (int tag = 1000; tag < 1003; ++tag) ClickBar(&strip, tag);
  Rest();
}

// ---- moves ----

void WholeView::UseMoves() {
  manager.FitAllToView();
  Rest();
  manager.LevelCamera();
  Frames(3);
  manager.RestoreCenter(Vector3(1, 0, 1));
  Rest();
  SpinShotParameters spin;
  spin.duration = 0.3;
  hub.BeginShot(spin);
  Frames(3);
  TransitionShotParameters transition;
  transition.targetCamera = hub.GetHomeCamera();
  transition.duration = 0.3;
  hub.BeginShot(transition);
  Frames(2);
  hub.AdvanceActiveShot(0.1);
  Rest();
  KeyframeShotParameters keyframes;
  {
    const HostCode host;
    keyframes.keyframes = {hub.shown, hub.GetHomeCamera(), hub.shown};
  }
  keyframes.duration = 0.3;
  hub.BeginShot(keyframes);
  Rest();
  manager.FitBoundsToView(Vector3(0, 0, 0), 2.0);
  Rest();
}

void WholeView::UseHistory() {
  RewindHistory& history = *disc.GetHistory();
  history.UpdateThumbnails();
  history.ShiftBackOneElement();
  history.ShiftForwardOneElement();
  history.ShiftBackOneElement();
  if (history.OpenTimeline(Vector2(400, 300), hub.shown)) {
    for (int i = 1; i <= 3; ++i) {
      history.SlideTimeline(Vector2(400 - 30 * i, 300));
      CameraParameters camera = hub.shown;
      if (history.GetInterpolatedCamera(camera)) hub.ApplyCameraParameters(camera);
      Frame();
    }
    history.CloseTimeline(Vector2(310, 300));
  }
  Frame();
}

// ---- the six-axis device ----

void WholeView::UseDevice() {
  using Mode = Cam3DController::NavigationMode;
  for (const int mode : {0, 1, 2, 3}) {
    device.SetNavigationMode(static_cast<Mode>(mode));
    for (int i = 1; i <= 3; ++i) {
      Vector3 translation(200.0 * i, 50.0, -100.0);
      Vector3 rotation(30.0, 60.0 * i, 10.0);
      device.On3DControllerInput(translation, rotation);
      Frame();
    }
    Vector3 still;
    device.On3DControllerInput(still, still);
    Frame();
  }
  for (int button = 0; button < CAM3D_KEY_COUNT; ++button) {
    device.On3DControllerKeyDown(button);
    Frame(200);
    device.On3DControllerKeyUp(button);
    Frame(200);
  }
  device.SetNavigationMode(Mode{});
  Rest();
}

// ---- the storyboard ----

void WholeView::MakeStory() {
  board.SetVisible(true);
  Frame();
  Sequence* const first = board.CreateSequence();
  Sequence* const second = board.CreateSequence();
  for (Sequence* const sequence : {first, first, first, second, second}) {
    if (sequence == nullptr) continue;
    ShotSpecification* const shot = board.CreateShot(sequence);
    if (shot == nullptr) continue;
    shot->SetShotType(static_cast<ShotSpecification::ShotType>(sequence->GetShotCount() * 3 % 10));
    shot->SetDuration(0.3);
    shot->SetTransitionDuration(0.1);
    {
      const HostCode host;
      shot->SetName(L"a shot with a name");
    }
    manager.OnMouseWheel(400, 400, 120);
    Frame();
  }
  Frames(4);
}

void WholeView::ClickSlide(ShotSpecification* shot, Storyboard::SlidePart part) {
  Box2 bounds;
  if (!board.GetSlideBounds(shot, part, bounds)) return;
  Click(static_cast<int>(bounds.center.x), static_cast<int>(bounds.center.y));
}

void WholeView::PlayStory() {
  Story* const story = board.GetStory();
  if (story == nullptr || story->IsEmpty()) return;
  ShotSpecification* const shot = story->GetFirstSequence()->GetFirstShot();
  board.PlaybackStory(story);
  for (int i = 0; i < 6; ++i) Frame(150);
  board.PausePlayback();
  Frame();
  board.ResumePlayback();
  for (int i = 0; i < 16; ++i) Frame(150);
  board.StopPlayback();
  Frame();
  board.PlaybackSequence(story->GetFirstSequence());
  Frames(3);
  board.StopPlayback();
  if (shot == nullptr) return;
  ClickSlide(shot, Storyboard::SLIDE_PLAY);
  Rest();
  ClickSlide(shot, Storyboard::SLIDE_TARGET);
  Rest();
  const Box2 play = board.GetTitleBounds(Storyboard::TITLE_PLAY);
  Click(static_cast<int>(play.center.x), static_cast<int>(play.center.y));
  manager.OnKeyDown(KEY_SPACE);
  Frame();
  manager.OnKeyDown(KEY_ESCAPE);
  manager.OnKeyUp(KEY_ESCAPE);
  board.StopPlayback();
  Frames(2);
}

void WholeView::EditStory() {
  Story* const story = board.GetStory();
  if (story == nullptr || story->IsEmpty()) return;
  Sequence* const sequence = story->GetFirstSequence();
  ShotSpecification* const shot = sequence->GetFirstShot();
  if (shot == nullptr) return;
  board.EditShot(shot);
  editor.SaveChanges();
  editor.PreviewShot(false);
  Rest();
  editor.ResetCamera();
  shot->SetShotType(ShotSpecification::SHOT_RECORDED_WALK);
  if (board.BeginRecordWalk()) {
    Press(400, 300);
    for (int i = 1; i <= 4; ++i) {
      Move(400, 300 + 20 * i);
      Frame(150);
    }
    Release();
    Frames(2);
  }
  board.CancelRecordWalk();
  board.CloseShotEditor();
  board.SetSelectedSequence(sequence);
  Frame();
  Box2 from;
  if (board.GetSlideBounds(shot, Storyboard::SLIDE_ITSELF, from)) {
    const int x = static_cast<int>(from.center.x);
    const int y = static_cast<int>(from.center.y);
    Drag(x, y, x + 200, y);
    manager.OnRightMouseDown(x, y);
    manager.OnRightMouseUp(x, y);
  }
  board.MoveSequence(story->GetFirstSequence(), nullptr);
  board.DeleteShot(sequence->GetFirstShot());
  Frames(2);
  for (int i = 0; i < 4; ++i) queue.Undo();
  Frame();
  queue.Redo();
  board.RefreshThumbnail(sequence, sequence->GetFirstShot());
  Frames(2);
  board.SetVisible(false);
}

// ---- the window ----

void WholeView::ChangeView() {
  manager.SetViewportSize(500, 300);
  Frames(2);
  manager.SetViewportSize(WIDTH, HEIGHT);
  manager.SetRibbonSize(100, 40);
  manager.SetRibbonVisible(true);
  Frame();
  manager.SetRibbonVisible(false);
  manager.SetCleanScreen(true);
  Frame();
  manager.SetCleanScreen(false);
  manager.OnSetCursor();
  hub.SetGeometrySelection(1.0, Vector3(0.5, 0, 0));
  manager.FitSelectionToView();
  Rest();
  hub.ResetGeometrySelection();
}

void WholeView::PlayAll() {
  using Part = void (WholeView::*)();
  static constexpr Part PARTS[] = {
      &WholeView::UseWelcome,   &WholeView::UseTools,    &WholeView::UseMiddleButton, &WholeView::UseCube,
      &WholeView::UseLargeDisc, &WholeView::UseMiniDisc, &WholeView::UseBars,         &WholeView::UseMoves,
      &WholeView::UseHistory,   &WholeView::UseDevice,   &WholeView::MakeStory,       &WholeView::PlayStory,
      &WholeView::EditStory,    &WholeView::ChangeView};
  for (const Part part : PARTS) {
    (this->*part)();
    if (pause > 0) pass(time, pause);
  }
}

std::vector<CameraParameters> WholeView::PlayShort() {
  hub.Reset();
  Frame();
  hub.isFilming = true;
  for (const int id : {int{ORBIT}, int{PAN}, int{ZOOM}, int{LOOK}, int{WALK}}) {
    manager.SetActiveTool(id);
    Drag(400, 300, 470, 330);
    Rest();
  }
  manager.SetActiveTool(0);
  UseCube();
  Wedge(DiscType::FullNavigation, HelmDiscZone::Orbit);
  Wedge(DiscType::FullNavigation, HelmDiscZone::Pan);
  disc.SetActiveDisc(DiscType::None);
  UseMoves();
  UseHistory();
  UseDevice();
  MakeStory();
  PlayStory();
  board.SetVisible(false);
  hub.isFilming = false;
  LetGo();
  return std::exchange(hub.film, {});
}

}  // namespace torture
