// A million events on a view with discs, of every kind and on the welcome screen, whose host does at any
// moment within a call anything that a host may do, whose renderer fails now and then, whose camera and scene
// are not always numbers, and whose view may have no size. For the sanitizers, and for what must hold
// afterwards.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <map>
#include <memory>
#include <string>

#include "disc/disc_scene.h"
#include "support/counted_history.h"
#include "support/counting_renderer.h"
#include "support/mischief.h"
#include "support/mischievous_hub.h"
#include "support/open_view_manager.h"
#include "support/random.h"

using namespace Korvane;

namespace {

/// Of the numbers that a host may hand over by mistake.
double MakeWild(Random& random) {
  static constexpr double WILD[] = {std::numeric_limits<double>::quiet_NaN(),
                                    std::numeric_limits<double>::infinity(),
                                    -std::numeric_limits<double>::infinity(),
                                    std::numeric_limits<double>::max(),
                                    std::numeric_limits<double>::denorm_min(),
                                    0.0,
                                    -1e30};
  return random.OneOf(WILD);
}

using StormHub = MischievousHub<Mischief>;

CameraParameters GetRestingView() { return LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}); }

class StormRenderer : public CountingRenderer {
 public:
  explicit StormRenderer(Mischief& host) : mischief(host) {}

  bool LoadTexture(TextureID id) override {
    if (mischief.Fails()) return false;
    ++held[id];
    return true;
  }
  void ReleaseTexture(TextureID id) override {
    --held[id];
    mischief.Call();
  }
  PixelIcon2D* CreateImageData(TextureID /*id*/) override {
    if (mischief.Fails()) return nullptr;
    static const MapImage map = MakeMapOfAllColours();
    static const MapImage clear(1, 1);
    return (mischief.random.Integer(0, 31) == 0 ? clear : map).MakeIcon().release();
  }
  bool BeginRender(const Box2& /*viewport*/, const CameraParameters& /*camera*/,
                   RenderMode /*mode*/) override {
    return !mischief.Fails();
  }
  bool EndRender() override { return !mischief.Fails(); }
  bool RenderGeometry(unsigned /*count*/, const float* /*vertices*/, const float* /*texCoords*/,
                      const MaterialParams* /*material*/) override {
    return !mischief.Fails();
  }
  bool Render(ResourceIcon3D* /*icon*/) override { return !mischief.Fails(); }
  bool Render(DynamicIcon2D* icon) override {
    drawnTexts += icon->GetID() > 0 ? 1 : 0;
    return !mischief.Fails();
  }
  bool Render(ResourceIcon2D* icon) override {
    drawnPictures += icon->GetTextureResourceID() != TEXTURE_NONE ? 1 : 0;
    return !mischief.Fails();
  }
  std::wstring LoadStringResource(int /*id*/) override { return mischief.Fails() ? L"" : L"text"; }
  DynamicIcon2D* CreateSceneScreenshot(int width, int height, const CameraParameters& camera) override {
    return mischief.Fails(8) ? nullptr : CountingRenderer::CreateSceneScreenshot(width, height, camera);
  }
  DynamicIcon2D* CreateTooltip(const wchar_t* text) override {
    return mischief.Fails() ? nullptr : CountingRenderer::CreateTooltip(text);
  }
  DynamicIcon2D* CreateTooltipHUD(const wchar_t* text) override {
    return mischief.Fails() ? nullptr : CountingRenderer::CreateTooltipHUD(text);
  }
  DynamicIcon2D* CreateMessageHUD(const wchar_t* text) override {
    return mischief.Fails() ? nullptr : CountingRenderer::CreateMessageHUD(text);
  }
  DynamicIcon2D* CreatePivotLabel(const wchar_t* text) override {
    return mischief.Fails() ? nullptr : CountingRenderer::CreatePivotLabel(text);
  }
  DynamicIcon2D* CreateMiniWheelLabel(const wchar_t* text) override {
    return mischief.Fails() ? nullptr : CountingRenderer::CreateMiniWheelLabel(text);
  }
  bool QueryRaySceneIntersection(const Vector3& /*origin*/, const Vector3& /*direction*/,
                                 Vector3& hit) override {
    hit = mischief.random.Point(5.0);
    if (mischief.random.Integer(0, 7) == 0) hit.y = MakeWild(mischief.random);
    return !mischief.Fails(3);
  }
  bool QueryScreenRectRaySceneIntersection(int /*left*/, int /*bottom*/, int /*right*/, int /*top*/,
                                           Vector3& hit) override {
    return QueryRaySceneIntersection(hit, hit, hit);
  }
  bool SetCursorPosition(int /*x*/, int /*y*/) override { return !mischief.Fails(); }
  bool SetCursorIcon(CursorID /*id*/) override { return !mischief.Fails(); }
  bool OpenMenu(MenuID /*id*/) override { return !mischief.Fails(); }

  std::string GetHeldTextures() const {
    std::string names;
    for (const auto& [id, loads] : held)
      if (loads != 0) names += std::to_string(id) + "x" + std::to_string(loads) + " ";
    return names;
  }

  std::map<int, int> held;
  long drawnTexts = 0;
  long drawnPictures = 0;

 private:
  Mischief& mischief;
};

class StormObserver : public HelmDiscObserver, public OperationObserver, public RewindHistoryObserver {
 public:
  StormObserver(HelmDisc* disc, Mischief& host) : HelmDiscObserver(disc), mischief(host) {}

  void OnActivated(DiscType type) override { Hear(opened[static_cast<int>(type)]); }
  void OnClosed() override { mischief.Call(); }
  void OnClicked(HelmDiscZone zone) override { Hear(zones[static_cast<int>(zone)]); }
  void OnDragBegin(HelmDiscZone zone) override { Hear(zones[static_cast<int>(zone)]); }
  void OnDragEnd() override { mischief.Call(); }
  void OnKeyDown(KeyID /*key*/) override { mischief.Call(); }
  void OnKeyUp(KeyID /*key*/) override { mischief.Call(); }
  void OnWelcomeClicked(WelcomeMenuPart part) override { Hear(parts[static_cast<int>(part)]); }
  void OnWelcomeClosed() override { mischief.Call(); }
  void OnWelcomeEntered() override { mischief.Call(); }
  void OnWelcomeExited() override { mischief.Call(); }

  void OnBeginOperation(OperationType type, const CameraParameters& /*camera*/) override {
    Hear(operations[static_cast<int>(type)]);
  }
  void OnPerformOperation(OperationType /*type*/, double /*dt*/,
                          const CameraParameters& /*camera*/) override {
    mischief.Call();
  }
  void OnEndOperation(OperationType /*type*/) override { mischief.Call(); }

  void OnCurrentElementChanged(int /*index*/) override { mischief.Call(); }
  void OnElementAdded(int /*index*/, const CameraParameters& camera) override { Keep(camera); }
  void OnElementUpdated(int /*index*/, const CameraParameters& camera) override { Keep(camera); }
  void OnElementRemoved(int /*index*/) override { mischief.Call(); }
  void OnHistoryCleared() override { mischief.Call(); }
  void OnTimelineClosed() override { mischief.Call(); }
  void OnTimelineOpened() override { mischief.Call(); }
  void OnTimelineSlid(int /*index*/, double /*weight*/) override { mischief.Call(); }

  std::map<int, long> opened;
  std::map<int, long> zones;
  std::map<int, long> parts;
  std::map<int, long> operations;
  bool keptBroken = false;  // an element that is no camera

 private:
  void Hear(long& count) {
    ++count;
    mischief.Call();
  }
  void Keep(const CameraParameters& camera) {
    keptBroken = keptBroken || !camera.IsFinite();
    mischief.Call();
  }

  Mischief& mischief;
};

class StormDisc : public OpenHelmDisc {
 public:
  StormDisc() : history(new CountedHistory) { open.history.reset(history); }
  CountedHistory* const history;
};

/// The view, and everything that its host may do at any moment.
class View {
 public:
  View(Mischief& host, bool isTidy, StormRenderer& first, StormRenderer& second)
      : tidy(isTidy),
        mischief(host),
        random(host.random),
        renderers{&first, &second},
        hub(host, GetRestingView()),
        observer(&disc, host) {
    disc.GetParameters().alwaysShowWelcome = true;
    disc.GetParameters().rectZoomOnShift = !tidy;
    Observe(0, 1);
    Begin(0, 0);
  }
  ~View() {
    Observe(0, 0);
    manager.Destroy();
    manager.SetHelmDisc(nullptr);
    disc.Destroy();
  }

  void Act() {
    using Action = void (View::*)(int x, int y);
    // What happens most stands there more than once.
    static constexpr Action ACTIONS[] = {
        &View::Aim,        &View::Aim,       &View::Aim,          &View::Move,          &View::Move,
        &View::LeftDown,   &View::LeftDown,  &View::LeftDown,     &View::LeftUp,        &View::LeftUp,
        &View::LeftUp,     &View::LeftUp,    &View::KeyDown,      &View::KeyUp,         &View::KeyUp,
        &View::Open,       &View::Open,      &View::Open,         &View::HotKey,        &View::UseWedge,
        &View::UseWedge,   &View::UseWedge,  &View::UseWedge,     &View::UseWedge,      &View::UseWedge,
        &View::UseWedge,   &View::UseWedge,  &View::AimAtWelcome, &View::Welcome,       &View::Welcome,
        &View::MiddleDown, &View::MiddleUp,  &View::Wheel,        &View::RightDown,     &View::RightUp,
        &View::Cancel,     &View::Create,    &View::Destroy,      &View::Resize,        &View::Sizes,
        &View::Opacities,  &View::Settings,  &View::Walk,         &View::ChangeHub,     &View::ChangeRenderer,
        &View::Renderer2,  &View::Observe,   &View::LoseCamera,   &View::RestoreCamera, &View::RestoreCamera,
        &View::MoveCamera, &View::EndMove,   &View::EndOps,       &View::BeginOp,       &View::Back,
        &View::Forward,    &View::Clear,     &View::Limit,        &View::Recording,     &View::Timeline,
        &View::OpenMenu,   &View::Enable,    &View::Show,         &View::Default,       &View::PlaceWelcome,
        &View::PutAway,    &View::PlaceMenu, &View::Ball,         &View::DrawAlone,     &View::ChangeDisc};
    (this->*random.OneOf(ACTIONS))(random.Integer(-30, 830), random.Integer(-30, 630));
  }
  void Frame() {
    hub.PerformOperations();
    manager.OnDraw();
  }
  /// As a user lets go of everything.
  void Rest() {
    hub.view = GetRestingView();
    manager.SetKorvane(&hub);
    manager.SetHelmDisc(&disc);
    manager.CancelGesture();
    manager.OnMiddleMouseUp(1, 1);
    manager.OnLeftMouseUp(1, 1);
    disc.OnLeftMouseUp(1, 1);
    for (const KeyID key : {KEY_SHIFT, KEY_CONTROL, KEY_RUN}) manager.OnKeyUp(key);
    disc.SetActiveDisc(DiscType::None);
    hub.EndShot();
    hub.EndOperation(OPERATION_ALL);
    Frame();
  }
  void Begin(int /*x*/, int /*y*/) {
    manager.SetKorvane(&hub);
    manager.SetRenderer(renderers[0]);
    manager.SetHelmDisc(&disc);
    manager.SetViewportSize(800, 600);
    manager.Create();
  }

  StormHub& GetHub() { return hub; }
  const StormObserver& GetObserver() const { return observer; }
  int GetOpenRecords() const { return disc.history->open; }

 private:
  bool OneOf(int count) { return random.Integer(1, count) == 1; }
  DiscType AnyType() { return static_cast<DiscType>(random.Integer(-1, 9)); }

  // ---- the user ----

  void Move(int x, int y) { manager.OnMouseMove(x, y); }
  // Somewhere on the open disc.
  void Aim(int x, int y) {
    TrackMenu* const menu = disc.GetActiveTrackMenu();
    const PixelIcon2D* const map = menu != nullptr ? menu->GetRegionMap() : nullptr;
    if (map == nullptr) return Move(x, y);
    const Vector2 place = map->GetPosition();
    const double reach = menu->GetWidth() / 2.0;
    manager.OnMouseMove(static_cast<int>(std::clamp(place.x, -1e4, 1e4) + random.Uniform(-reach, reach)),
                        static_cast<int>(std::clamp(place.y, -1e4, 1e4) + random.Uniform(-reach, reach)));
  }
  void AimAtWelcome(int x, int y) {
    const TrackMenu* const menu = disc.GetWelcomeTrackMenu();
    if (menu == nullptr || !menu->GetVisible()) return Move(x, y);
    manager.OnMouseMove(disc.open.welcome.x + random.Integer(215, 300),
                        disc.open.welcome.y + random.Integer(225, 290));
  }
  void LeftDown(int /*x*/, int /*y*/) { manager.OnLeftMouseDown(GetMouseX(), GetMouseY()); }
  void LeftUp(int /*x*/, int /*y*/) { manager.OnLeftMouseUp(GetMouseX(), GetMouseY()); }
  void MiddleDown(int x, int y) { manager.OnMiddleMouseDown(x, y); }
  void MiddleUp(int x, int y) { manager.OnMiddleMouseUp(x, y); }
  void RightDown(int x, int y) { manager.OnRightMouseDown(x, y); }
  void RightUp(int x, int y) { manager.OnRightMouseUp(x, y); }
  void Wheel(int x, int y) { manager.OnMouseWheel(x, y, 120 * random.Integer(-2, 2)); }
  void KeyDown(int /*x*/, int /*y*/) { manager.OnKeyDown(static_cast<KeyID>(random.Integer(0, 14))); }
  void KeyUp(int /*x*/, int /*y*/) { manager.OnKeyUp(static_cast<KeyID>(random.Integer(0, 14))); }
  void HotKey(int /*x*/, int /*y*/) {
    manager.OnKeyDown(KEY_DISC);
    manager.OnKeyUp(KEY_DISC);
  }
  int GetMouseX() const { return manager.mouse.x; }
  int GetMouseY() const { return manager.mouse.y; }

  // ---- the host ----

  void Open(int /*x*/, int /*y*/) { disc.SetActiveDisc(AnyType()); }
  void Create(int /*x*/, int /*y*/) {
    if (OneOf(8)) disc.Create();
  }
  // A disc of some kind opens, and a drag begins somewhere on it.
  void UseWedge(int x, int y) {
    LeftUp(x, y);
    disc.SetLargeDiscSize(128);
    disc.SetMiniDiscSize(64);
    disc.SetActiveDisc(static_cast<DiscType>(random.Integer(0, 6)));
    for (int step = 0; step < 3; ++step) Aim(x, y);
    LeftDown(x, y);
    for (int step = random.Integer(0, 4); step > 0; --step) Move(x + 7 * step, y - 5 * step);
  }
  // The welcome screen comes, the cursor comes over it, and a click falls where it then is.
  void Welcome(int x, int y) {
    disc.SetActiveDisc(DiscType::None);
    disc.GetParameters().welcomeStartsAdvanced = random.Coin();
    disc.Create();
    for (int step = 0; step < 30 && !disc.IsOverWelcome(); ++step) AimAtWelcome(x, y);
    for (int step = random.Integer(0, 3); step > 0; --step) AimAtWelcome(x, y);
    LeftDown(x, y);
  }
  void Cancel(int /*x*/, int /*y*/) { manager.CancelGesture(); }
  void Destroy(int /*x*/, int /*y*/) {
    if (OneOf(8)) disc.Destroy();
  }
  void Resize(int x, int y) {
    static constexpr int SIDES[] = {0, 1, 2, 600, 800, 4096};
    const bool any = OneOf(3);
    manager.SetViewportSize(any ? random.OneOf(SIDES) : std::max(x, 1),
                            any ? random.OneOf(SIDES) : std::max(y, 1));
  }
  void Sizes(int /*x*/, int /*y*/) {
    static constexpr int SIDES[] = {-5, 0, 1, 32, 64, 64, 64, 128, 128, 128, 256, 4096};
    if (random.Coin()) {
      disc.SetLargeDiscSize(random.OneOf(SIDES));
    } else {
      disc.SetMiniDiscSize(random.OneOf(SIDES));
    }
  }
  void Opacities(int /*x*/, int /*y*/) {
    disc.SetLargeDiscOpacity(static_cast<float>(MakeWild(random)));
    disc.SetMiniDiscOpacity(static_cast<float>(MakeWild(random)));
  }
  void Settings(int /*x*/, int /*y*/) {
    static constexpr bool HelmDiscParameters::*SWITCHES[] = {&HelmDiscParameters::showMessages,
                                                             &HelmDiscParameters::showTooltips,
                                                             &HelmDiscParameters::showToolHUDs,
                                                             &HelmDiscParameters::invertLookVertical,
                                                             &HelmDiscParameters::clickZoom,
                                                             &HelmDiscParameters::keepSceneUpright,
                                                             &HelmDiscParameters::lookAtOnShift,
                                                             &HelmDiscParameters::rectZoomOnShift,
                                                             &HelmDiscParameters::welcomeStartsAdvanced,
                                                             &HelmDiscParameters::welcomeSeen};
    disc.GetParameters().*random.OneOf(SWITCHES) = random.Coin();
    disc.GetParameters().walkRewindInterval = OneOf(4) ? MakeWild(random) : 0.05;
    if (OneOf(8)) disc.GetParameters().walkSpeedFactor = MakeWild(random);
    if (tidy) disc.GetParameters().rectZoomOnShift = false;
    disc.UpdateSettings();
  }
  void Walk(int x, int /*y*/) {
    if (x % 2 == 0) {
      disc.IncrementWalkSpeed();
    } else {
      disc.DecrementWalkSpeed();
    }
  }
  void ChangeHub(int /*x*/, int /*y*/) { manager.SetKorvane(OneOf(4) && !tidy ? nullptr : &hub); }
  void ChangeRenderer(int /*x*/, int /*y*/) { manager.SetRenderer(OneOf(4) ? nullptr : renderers[0]); }
  void Renderer2(int /*x*/, int /*y*/) { manager.SetRenderer(renderers[1]); }
  void ChangeDisc(int /*x*/, int /*y*/) { manager.SetHelmDisc(OneOf(4) && !tidy ? nullptr : &disc); }
  void Observe(int /*x*/, int y) {
    disc.RemoveObserver(&observer);
    hub.RemoveOperationObserver(&observer);
    disc.GetHistory()->RemoveObserver(&observer);
    if (y % 8 == 0) return;
    disc.AddObserver(&observer);
    hub.AddOperationObserver(&observer);
    disc.GetHistory()->AddObserver(&observer);
  }
  void LoseCamera(int x, int /*y*/) {
    Vector3* const points[] = {&hub.view.eye, &hub.view.centre, &hub.view.up, &hub.view.pivot};
    (*random.OneOf(points))[std::abs(x) % 3] = MakeWild(random);
  }
  void RestoreCamera(int /*x*/, int /*y*/) { hub.view = GetRestingView(); }
  void MoveCamera(int x, int y) {
    CenterShotParameters shot;
    shot.point = Vector3(x * 0.01, y * 0.01, 0.0);
    shot.duration = 0.1;
    shot.easeEnd = 1.0;
    hub.BeginShot(shot);
  }
  void EndMove(int /*x*/, int /*y*/) { hub.EndShot(); }
  void EndOps(int /*x*/, int /*y*/) { hub.EndOperation(OPERATION_ALL); }
  void BeginOp(int x, int y) { hub.BeginOperation(static_cast<OperationType>(std::abs(x) % 11), x, y); }
  void Back(int /*x*/, int /*y*/) { disc.GetHistory()->ShiftBackOneElement(); }
  void Forward(int /*x*/, int /*y*/) { disc.GetHistory()->ShiftForwardOneElement(); }
  void Clear(int /*x*/, int /*y*/) {
    if (OneOf(8)) disc.GetHistory()->ClearHistory();
  }
  void Limit(int x, int /*y*/) {
    disc.GetHistory()->SetMaxHistorySize(static_cast<unsigned>(std::abs(x) % 30));
  }
  void Recording(int /*x*/, int /*y*/) { disc.GetHistory()->SetRecordEnabled(!OneOf(3)); }
  void Timeline(int x, int y) {
    if (random.Coin()) {
      disc.GetHistory()->OpenTimeline(Vector2(x, y), hub.view);
    } else {
      disc.GetHistory()->CloseTimeline(Vector2(x, OneOf(4) ? MakeWild(random) : y));
    }
  }
  void OpenMenu(int /*x*/, int /*y*/) { disc.OpenMenu(); }
  void Enable(int /*x*/, int /*y*/) { disc.SetEnabled(!OneOf(3)); }
  void Show(int /*x*/, int /*y*/) { disc.SetVisible(!OneOf(3)); }
  void Default(int /*x*/, int /*y*/) { disc.SetDefaultDiscType(AnyType()); }
  void PlaceWelcome(int x, int y) { disc.SetWelcomeMenuPosition(x, y); }
  void PutAway(int /*x*/, int /*y*/) {
    TrackMenu* const menu = disc.GetTrackMenu(AnyType());
    if (menu != nullptr) menu->SetVisible(false);
    if (menu != nullptr) menu->SetActive(false);
  }
  void PlaceMenu(int x, int y) {
    if (TrackMenu* const menu = disc.GetTrackMenu(AnyType())) menu->SetLocation(x, y);
  }
  void Ball(int /*x*/, int /*y*/) {
    if (PivotBall* const ball = disc.GetPivotBall()) ball->SetVisible(random.Coin());
  }
  void DrawAlone(int /*x*/, int /*y*/) { disc.Draw(); }

  const bool tidy;
  Mischief& mischief;
  Random& random;
  StormRenderer* renderers[2];
  StormHub hub;
  StormDisc disc;
  StormObserver observer;
  OpenViewManager manager;
};

// ZOV_TEST_DISC_STORM sets the number of events, of all streams together.
int EventCount() {
  const char* const wanted = std::getenv("ZOV_TEST_DISC_STORM");
  return wanted != nullptr ? std::atoi(wanted) : 40000;
}

constexpr int STREAMS = 4;

class DiscStorm : public ::testing::TestWithParam<std::uint64_t> {};

TEST_P(DiscStorm, leaves_nothing_behind) {
  constexpr int SPELL = 500;  // events, between two times of rest
  ManualPlatform platform;
  Random random(GetParam());
  Mischief mischief(random, 40);
  StormRenderer first(mischief);
  StormRenderer second(mischief);
  const int events = EventCount() / STREAMS;
  // A rectangle that is given up leaves its record open, and so does a wedge whose hub is taken away.
  const bool tidy = GetParam() % 2 == 0;
  {
    View view(mischief, tidy, first, second);
    for (int event = 0; event < events; ++event) {
      mischief.act = [&] { view.Act(); };
      view.Act();
      if (event % 3 == 0) {
        platform.Advance(static_cast<std::uint32_t>(random.Integer(1, event % 30 == 0 ? 2500 : 40)));
        view.Frame();
      }
      if (event % 100 == 0) view.Begin(0, 0);
      ASSERT_FALSE(view.GetHub().broken) << "event " << event;
      ASSERT_FALSE(view.GetObserver().keptBroken) << "event " << event;
      first.ClearCalls();
      second.ClearCalls();
      if (event % SPELL != SPELL - 1) continue;
      mischief.act = nullptr;
      view.Rest();
      ASSERT_TRUE(!tidy || view.GetOpenRecords() == 0) << "event " << event;
      for (int type = 0; type <= 10; ++type)
        ASSERT_FALSE(view.GetHub().IsOperationActive(static_cast<OperationType>(type))) << type;
    }
    mischief.act = nullptr;
    const StormObserver& observer = view.GetObserver();
    EXPECT_EQ(observer.opened.size(), 7U);
    EXPECT_GT(observer.zones.size(), 8U);
    EXPECT_GT(observer.parts.size(), 3U);
    EXPECT_GT(observer.operations.size(), 5U);
  }
  EXPECT_GT(mischief.actions, events / 10);
  EXPECT_GT(first.drawnPictures, events / 10);
  EXPECT_GT(first.drawnTexts, 0);
  for (StormRenderer* const renderer : {&first, &second}) {
    renderer->ApplyTextureUsage();
    EXPECT_EQ(renderer->GetHeldTextures(), "");
    EXPECT_EQ(renderer->GetLiveIconCount(), 0);
    EXPECT_EQ(renderer->GetForeignDestroyCount(), 0);
  }
  EXPECT_EQ(platform.GetTimerCount(), 0);
  RecordProperty("actions", std::to_string(mischief.actions));
}

INSTANTIATE_TEST_SUITE_P(Streams, DiscStorm, ::testing::Range<std::uint64_t>(0, STREAMS));

}  // namespace
