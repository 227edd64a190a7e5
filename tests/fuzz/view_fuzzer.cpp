// The event stream of a whole view, with all tools, the cube, the discs, the bars, the storyboard and a
// six-axis device, on a host whose answers are refusals and numbers that are none now and then, and which
// does in any call anything that a host may do. Nothing crashes, no camera that is not finite reaches the
// host, and when all is taken down no icon and no texture is left.
#include <iterator>
#include <memory>

#include "fuzz/hostile_host.h"
#include "support/manual_platform.h"

namespace {

using namespace Korvane;

constexpr int WIDTH = 800;
constexpr int HEIGHT = 600;
constexpr int TOOLS = 9;
constexpr std::uint64_t MOST_SHOTS = 12;

Tool* MakeTool(int kind) {
  static constexpr Tool* (*MAKERS[])() = {
      [] { return static_cast<Tool*>(new OrbitTool); },
      [] { return static_cast<Tool*>(new PanTool); },
      [] { return static_cast<Tool*>(new ZoomTool); },
      [] { return static_cast<Tool*>(new RectZoomTool); },
      [] { return static_cast<Tool*>(new LookTool); },
      [] { return static_cast<Tool*>(new LookMoveTool); },
      [] { return static_cast<Tool*>(new LookAtTool); },
      [] { return static_cast<Tool*>(new CenterTool(nullptr, nullptr, STRING_PIVOT)); },
      [] { return static_cast<Tool*>(new WalkTool); },
  };
  return MAKERS[static_cast<std::size_t>(kind) % std::size(MAKERS)]();
}

class View {
 public:
  View(ManualPlatform& thePlatform, Moods& theMoods, HostileRenderer& theRenderer)
      : platform(thePlatform), moods(theMoods), hub(moods), renderer(theRenderer) {
    for (int id = 1; id <= TOOLS; ++id) manager.AddTool(id, MakeTool(id - 1));
    cube.GetParameters().size = OrientorParameters::SIZE_NORMAL;
    GiveAll();
    manager.Create();
    manager.SetOrientorVisible(true);
    manager.SetNavigationBarVisible(true);
    board.SetVisible(true);
    Frame(0, 0);
  }
  ~View() {
    GiveAll();  // what has been taken away is not destroyed with the rest
    manager.Destroy();
    TakeAll();
    hub.EndShot();
    hub.EndOperation(OPERATION_ALL);
  }
  View(const View&) = delete;
  View& operator=(const View&) = delete;

  // Of the user, or of the host.
  void Act(std::uint8_t what, int x, int y) {
    using Action = void (View::*)(int x, int y);
    static constexpr Action ACTIONS[] = {
        &View::Move,        &View::LeftDown,  &View::LeftUp,    &View::Frame,      &View::Drag,
        &View::MiddleDown,  &View::MiddleUp,  &View::RightDown, &View::RightUp,    &View::Wheel,
        &View::KeyDown,     &View::KeyUp,     &View::OverCube,  &View::OverBoard,  &View::Choose,
        &View::OpenDisc,    &View::Device,    &View::DeviceKey, &View::DeviceMode, &View::Cancel,
        &View::Fit,         &View::Level,     &View::Centre,    &View::Shoot,      &View::Board,
        &View::Play,        &View::Edit,      &View::ShowCube,  &View::ShowBar,    &View::LinkBar,
        &View::CleanScreen, &View::Resize,    &View::Ribbon,    &View::CubeCorner, &View::Change,
        &View::TakeOne,     &View::GiveAgain, &View::Recreate,  &View::Operate,    &View::Camera,
        &View::ChangeTool,  &View::Time,      &View::Bounds};
    (this->*ACTIONS[what % std::size(ACTIONS)])(x, y);
  }

 private:
  // ---- the user ----
  void Move(int x, int y) { manager.OnMouseMove(x, y); }
  void LeftDown(int x, int y) { manager.OnLeftMouseDown(x, y); }
  void LeftUp(int x, int y) { manager.OnLeftMouseUp(x, y); }
  void MiddleDown(int x, int y) { manager.OnMiddleMouseDown(x, y); }
  void MiddleUp(int x, int y) { manager.OnMiddleMouseUp(x, y); }
  void RightDown(int x, int y) { manager.OnRightMouseDown(x, y); }
  void RightUp(int x, int y) { manager.OnRightMouseUp(x, y); }
  void Wheel(int x, int y) { manager.OnMouseWheel(x, y, 120 * (x % 3 - 1)); }
  void KeyDown(int x, int /*y*/) { manager.OnKeyDown(static_cast<KeyID>(x % 14)); }
  void KeyUp(int x, int /*y*/) { manager.OnKeyUp(static_cast<KeyID>(x % 14)); }
  void Drag(int x, int y) {
    manager.OnMouseMove(x, y);
    manager.OnLeftMouseDown(x, y);
    for (int step = 1; step <= 3; ++step) {
      manager.OnMouseMove(x + 9 * step, y - 7 * step);
      Frame(x, y);
    }
  }
  void OverCube(int x, int y) { manager.OnMouseMove(WIDTH - 1 - x % 120, HEIGHT - 1 - y % 120); }
  void OverBoard(int x, int y) {
    manager.OnMouseMove(x % 400, y % 250);
    manager.OnLeftMouseDown(x % 400, y % 250);
  }
  void Device(int x, int y) {
    Vector3 translation(x * 0.01 - 4.0, y * 0.01 - 3.0, x % 7 - 3.0);
    Vector3 rotation(y % 5 - 2.0, x % 3 - 1.0, y % 3 - 1.0);
    if (moods.IsOneOf(20)) rotation.x = moods.DrawWild();
    device.On3DControllerInput(translation, rotation);
  }
  void DeviceKey(int x, int y) {
    device.On3DControllerKeyDown(x % 40);
    if (y % 2 == 0) device.On3DControllerKeyUp(x % 40);
  }

  // ---- the host ----
  void Frame(int x, int y) {
    platform.Advance(static_cast<std::uint32_t>((x + y) % 50));
    hub.PerformOperations();
    manager.OnDraw();
    renderer.ClearCalls();
  }
  void Time(int x, int y) { platform.AdvanceWithoutTimers(static_cast<std::uint32_t>(x * y)); }
  void Choose(int x, int /*y*/) { manager.SetActiveTool(x % (TOOLS + 1)); }
  void ChangeTool(int x, int y) {
    delete manager.RemoveTool(x % (TOOLS + 1));
    Tool* const tool = MakeTool(y);
    if (!manager.AddTool(x % (TOOLS + 1), tool)) delete tool;
  }
  void OpenDisc(int x, int /*y*/) { disc.SetActiveDisc(static_cast<DiscType>(x % 9)); }
  void DeviceMode(int x, int /*y*/) {
    device.SetNavigationMode(static_cast<Cam3DController::NavigationMode>(x % 5));
    if (x % 3 == 0) device.Toggle2DNavigationMode();
  }
  void Cancel(int /*x*/, int /*y*/) { manager.CancelGesture(); }
  void Fit(int x, int /*y*/) { x % 2 == 0 ? manager.FitAllToView() : manager.FitSelectionToView(); }
  void Level(int /*x*/, int /*y*/) { manager.LevelCamera(); }
  void Centre(int x, int y) { manager.RestoreCenter(Vector3(x * 0.01, y * 0.01, 0.0)); }
  void Shoot(int x, int y) {
    CenterShotParameters shot;
    shot.point = Vector3(x * 0.01, y * 0.01, 0.0);
    shot.duration = moods.IsOneOf(6) ? moods.DrawWild() : 0.1;
    shot.easeEnd = 1.0;
    hub.BeginShot(shot);
  }
  void Operate(int x, int y) {
    const auto type = static_cast<OperationType>(x % 14 - 1);
    if (y % 4 == 0) hub.BeginOperation(type, x, y);
    if (y % 4 == 1) hub.EndOperation(type);
    if (y % 4 >= 2) hub.UpdateOperationParams(x, y, type);
  }
  void Camera(int x, int y) {
    hub.view.eye = Vector3(x * 0.1, y * 0.1, moods.IsOneOf(4) ? moods.DrawWild() : 10.0);
    if (moods.IsOneOf(4)) hub.view.up = Vector3(moods.DrawWild(), 0.0, 1.0);
    hub.view.projection_type = static_cast<CameraParameters::ProjectionType>(x % 2);
  }
  void Bounds(int x, int y) {
    ApplicationParameters& p = hub.GetApplicationParameters();
    p.scene_scale = moods.IsOneOf(4) ? moods.DrawWild() : 0.01 * x;
    p.scene_bound_radius = p.global_bound_radius = moods.IsOneOf(4) ? moods.DrawWild() : 0.1 * y;
  }
  void ShowCube(int x, int /*y*/) { manager.SetOrientorVisible(x % 4 != 0); }
  void ShowBar(int x, int /*y*/) {
    manager.SetNavigationBarVisible(x % 4 != 0);
    toolbar.SetVisible(x % 3 != 0);
  }
  void LinkBar(int x, int y) {
    manager.SetNavigationBarLinkedToOrientor(x % 2 == 0);
    toolbar.SetPosition(static_cast<Toolbar::Position>(y % 9));
  }
  void CleanScreen(int x, int /*y*/) { manager.SetCleanScreen(x % 2 == 0); }
  void Resize(int x, int y) { manager.SetViewportSize(x % 5 == 0 ? 0 : x, y % 7 == 0 ? -y : y); }
  void Ribbon(int x, int y) {
    manager.SetRibbonSize(x, y);
    manager.SetRibbonVisible(x % 2 == 0);
  }
  void CubeCorner(int x, int y) {
    cube.GetParameters().screen_location = static_cast<OrientorParameters::Location>(x % 4);
    cube.GetParameters().size = static_cast<OrientorParameters::Size>(y % 6 - 1);
  }
  void Change(int x, int y) {
    cube.LockToCurrentSelection(x % 2 == 0);
    disc.GetParameters().largeDiscSize = y;
  }

  // ---- stories ----
  ShotSpecification* GetShot(int number) {
    Story* const story = board.GetStory();
    if (story == nullptr || story->IsEmpty()) return nullptr;
    const auto wanted = static_cast<std::uint64_t>(number);
    Sequence* const sequence = story->GetSequence(wanted % story->GetSequenceCount());
    return sequence->IsEmpty() ? nullptr : sequence->GetShot(wanted % sequence->GetShotCount());
  }
  void Board(int x, int y) {
    board.SetVisible(x % 5 != 0);
    board.SetMode(y % 3 == 0 ? Storyboard::MODE_PRESENTING : Storyboard::MODE_EDITING);
    Story* const story = board.GetStory();
    if (story == nullptr) return;
    if (story->GetSequenceCount() < 4) board.CreateSequence();
    if (story->IsEmpty()) return;
    Sequence* const sequence = story->GetSequence(static_cast<std::uint64_t>(x) % story->GetSequenceCount());
    if (sequence->GetShotCount() < MOST_SHOTS) board.CreateShot(sequence);
  }
  void Play(int x, int y) {
    if (x % 4 == 0) board.PlaybackStory(board.GetStory());
    if (x % 4 == 1) board.PlaybackSingleShot(GetShot(y));
    if (x % 4 == 2) board.StopPlayback();
    if (x % 4 == 3) y % 2 == 0 ? board.PausePlayback() : board.ResumePlayback();
  }
  void Edit(int x, int y) {
    if (x % 5 == 0) queue.Undo();
    if (x % 5 == 1) queue.Redo();
    if (x % 5 == 2) board.DeleteShot(GetShot(y));
    if (x % 5 == 3) board.MoveShot(GetShot(y), GetShot(x));
    ShotSpecification* const shot = GetShot(y);
    if (x % 5 != 4 || shot == nullptr) return;
    shot->SetShotType(static_cast<ShotSpecification::ShotType>(x % 12));
    shot->SetDuration(moods.IsOneOf(3) ? moods.DrawWild() : 0.3);
  }

  // ---- what there is ----
  void GiveAll() {
    manager.SetKorvane(&hub);
    manager.SetRenderer(&renderer);
    manager.SetHelmDisc(&disc);
    manager.SetOrientor(&cube);
    manager.SetCam3DController(&device);
    manager.SetNavigationBar(&bar);
    manager.SetStoryboard(&board);
    manager.AddToolbar(&toolbar);
    board.SetUndoQueue(&queue);
    manager.SetViewportSize(WIDTH, HEIGHT);
  }
  void TakeAll() {
    manager.SetCam3DController(nullptr);
    manager.SetNavigationBar(nullptr);
    manager.SetStoryboard(nullptr);
    manager.RemoveToolbar(&toolbar);
    manager.SetOrientor(nullptr);
    manager.SetHelmDisc(nullptr);
    manager.SetRenderer(nullptr);
    manager.SetKorvane(nullptr);
  }
  // A widget whose renderer goes away keeps what it has counted there.
  void TakeOne(int x, int /*y*/) {
    renderer.missed = true;
    if (x % 8 == 0) manager.SetKorvane(nullptr);
    if (x % 8 == 1) manager.SetRenderer(nullptr);
    if (x % 8 == 2) manager.SetHelmDisc(nullptr);
    if (x % 8 == 3) manager.SetOrientor(nullptr);
    if (x % 8 == 4) manager.SetCam3DController(nullptr);
    if (x % 8 == 5) manager.SetNavigationBar(nullptr);
    if (x % 8 == 6) manager.SetStoryboard(nullptr);
    if (x % 8 == 7) manager.RemoveToolbar(&toolbar);
  }
  void GiveAgain(int /*x*/, int /*y*/) { GiveAll(); }
  // Neither within a call nor twice without an end, as the interface demands.
  void Recreate(int /*x*/, int /*y*/) {
    if (moods.IsWithinCall()) return;
    GiveAll();
    manager.Destroy();
    GiveAll();
    manager.Create();
  }

  ManualPlatform& platform;
  Moods& moods;
  HostileHub hub;
  HostileRenderer& renderer;
  UndoQueue queue;
  Orientor cube;
  HelmDisc disc;
  NavigationBar bar;
  Toolbar toolbar;
  Cam3DController device;
  Storyboard board;
  ViewManager manager;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
  Input input(bytes, count);
  Moods moods(input.Take<std::uint32_t>(), 8 + input.Take<std::uint8_t>());
  ManualPlatform platform;
  HostileRenderer renderer(moods);
  {
    View view(platform, moods, renderer);
    const auto act = [&] {
      view.Act(static_cast<std::uint8_t>(moods.Draw()), static_cast<int>(moods.Draw() % WIDTH),
               static_cast<int>(moods.Draw() % HEIGHT));
    };
    for (int events = 0; !input.IsEmpty() && events < 300; ++events) {
      const auto what = input.Take<std::uint8_t>();
      const int x = input.Take<std::uint16_t>() % WIDTH;
      const int y = input.Take<std::uint16_t>() % HEIGHT;
      moods.act = act;
      view.Act(what, x, y);
      moods.act = nullptr;
    }
  }
  renderer.ApplyTextureUsage();  // what is given back goes with the next time that the counts are applied
  if (!renderer.missed && !renderer.IsClean()) std::abort();
  return 0;
}
