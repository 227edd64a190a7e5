// Every kind of wedge, on an open disc in a view of 800 x 600: what a drag allocates, and what a host may do
// meanwhile.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <iterator>
#include <limits>
#include <memory>
#include <string>
#include <utility>

#include "disc/disc_scene.h"
#include "disc/disc_tables.h"
#include "support/allocation_counter.h"
#include "support/counted_history.h"
#include "support/counting_renderer.h"

using namespace Korvane;

namespace {

constexpr KeyID NO_KEY = static_cast<KeyID>(-1);

/// Where a kind is found: on which disc, in which colour, with which key down.
struct Wedge {
  const char* name;
  DiscListenerKind kind;
  DiscType disc;
  Vector3 colour;
  KeyID key;
};

// In the order of the kinds.
const Wedge WEDGES[] = {
    {"nothing", DiscListenerKind::Null, DiscType::FullNavigation, {0, 0, 0}, NO_KEY},
    {"center", DiscListenerKind::Center, DiscType::ViewObject, {0, 0, 1}, NO_KEY},
    {"close", DiscListenerKind::Close, DiscType::ViewObject, {0, 1, 1}, NO_KEY},
    {"forward", DiscListenerKind::Forward, DiscType::TourBuilding, {0, 1, 0}, NO_KEY},
    {"height", DiscListenerKind::Height, DiscType::TourBuilding, {1, 1, 0}, NO_KEY},
    {"look", DiscListenerKind::Look, DiscType::TourBuilding, {1, 0, 0}, NO_KEY},
    {"look_move", DiscListenerKind::LookMove, DiscType::FullNavigation, {0, 0, 0.5}, NO_KEY},
    {"menu", DiscListenerKind::Menu, DiscType::FullNavigation, {0.5, 0, 0.5}, NO_KEY},
    {"orbit", DiscListenerKind::Orbit, DiscType::FullNavigation, {0, 0, 1}, NO_KEY},
    {"pan", DiscListenerKind::Pan, DiscType::FullNavigation, {0, 1, 0}, NO_KEY},
    {"pivot_pick", DiscListenerKind::PivotPick, DiscType::FullNavigation, {0, 0, 1}, KEY_CONTROL},
    {"rewind", DiscListenerKind::Rewind, DiscType::FullNavigation, {1, 0, 0}, NO_KEY},
    {"roll", DiscListenerKind::Roll, DiscType::FullNavigation, {0, 0, 1}, KEY_SHIFT},
    {"walk", DiscListenerKind::Walk, DiscType::FullNavigation, {0.5, 0, 0}, NO_KEY},
    {"zoom", DiscListenerKind::Zoom, DiscType::FullNavigation, {1, 1, 0}, NO_KEY},
};

/// Lets the host act once, in one of the calls out of the library.
class Moment {
 public:
  /// In the call after this many.
  void Arm(int callsBefore, std::function<void()> what) {
    left = callsBefore;
    action = std::move(what);
  }
  void Disarm() { action = nullptr; }
  bool IsArmed() const { return action != nullptr; }
  void Call() {
    if (action == nullptr || left-- > 0) return;
    const std::function<void()> now = std::move(action);
    action = nullptr;
    now();
  }

 private:
  int left = 0;
  std::function<void()> action;
};

/// Every region map is of the one colour that the test points at; the scene is met at (0, 0, 2).
class OneColourRenderer : public CountingRenderer {
 public:
  explicit OneColourRenderer(Moment& theMoment) : moment(theMoment) {}

  PixelIcon2D* CreateImageData(TextureID /*id*/) override {
    MapImage image(100, 100);
    image.Fill(0, 0, 100, 100, DiscScene::ToByte(colour.x), DiscScene::ToByte(colour.y),
               DiscScene::ToByte(colour.z), opaque ? 255 : 0);
    return image.MakeIcon().release();
  }
  bool QueryRaySceneIntersection(const Vector3& /*origin*/, const Vector3& /*direction*/,
                                 Vector3& hit) override {
    hit = Vector3(0, 0, 2);
    return Heard(true);
  }
  bool BeginRender(const Box2& viewport, const CameraParameters& camera, RenderMode mode) override {
    return Heard(CountingRenderer::BeginRender(viewport, camera, mode));
  }
  bool EndRender() override { return Heard(CountingRenderer::EndRender()); }
  bool Render(ResourceIcon3D* icon) override { return Heard(CountingRenderer::Render(icon)); }
  bool Render(DynamicIcon2D* icon) override { return Heard(CountingRenderer::Render(icon)); }
  bool Render(ResourceIcon2D* icon) override { return Heard(CountingRenderer::Render(icon)); }
  bool SetCursorPosition(int x, int y) override { return Heard(CountingRenderer::SetCursorPosition(x, y)); }
  bool SetCursorIcon(CursorID id) override { return Heard(CountingRenderer::SetCursorIcon(id)); }
  bool OpenMenu(MenuID id) override { return Heard(CountingRenderer::OpenMenu(id)); }
  DynamicIcon2D* CreateSceneScreenshot(int width, int height, const CameraParameters& camera) override {
    DynamicIcon2D* const picture = CountingRenderer::CreateSceneScreenshot(width, height, camera);
    moment.Call();
    return picture;
  }

  Vector3 colour;
  bool opaque = true;

 private:
  bool Heard(bool answer) {
    moment.Call();
    return answer;
  }
  Moment& moment;
};

class MomentHub : public MemoryHub, public OperationObserver {
 public:
  explicit MomentHub(Moment& theMoment)
      : MemoryHub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0})), moment(theMoment) {
    AddOperationObserver(this);
  }
  ~MomentHub() override { RemoveOperationObserver(this); }

  void ApplyCameraParameters(const CameraParameters& camera) override {
    MemoryHub::ApplyCameraParameters(camera);
    moment.Call();
  }
  void QueryCameraParameters(CameraParameters& camera) const override {
    MemoryHub::QueryCameraParameters(camera);
    moment.Call();
  }
  void RequestApplicationUpdate() override { moment.Call(); }
  void OnBeginOperation(OperationType /*type*/, const CameraParameters& /*camera*/) override {
    moment.Call();
    begin.Call();
  }
  void OnPerformOperation(OperationType /*type*/, double /*dt*/,
                          const CameraParameters& /*camera*/) override {
    moment.Call();
  }
  void OnEndOperation(OperationType /*type*/) override { moment.Call(); }
  void OnBeginShot(Shot* /*shot*/) override { moment.Call(); }
  void OnEndShot(Shot* /*shot*/) override { moment.Call(); }

  bool IsOperating() const {
    for (int type = 0; type <= 10; ++type) {
      if (IsOperationActive(static_cast<OperationType>(type))) return true;
    }
    return false;
  }

  Moment begin;  // within OnBeginOperation alone

 private:
  Moment& moment;
};

struct WedgeView {
  static constexpr int ELEMENTS = 100;

  explicit WedgeView(const Wedge& pointedAt) : wedge(pointedAt), hub(moment), renderer(moment) {
    MakeDisc();
    Resize(800, 600);
    Open(wedge.disc, wedge.colour);
    if (wedge.key != NO_KEY) disc->OnKeyDown(wedge.key);
    Move(400, 300);
  }
  ~WedgeView() {
    moment.Disarm();
    if (disc != nullptr) disc->Destroy();
  }
  WedgeView(const WedgeView&) = delete;
  WedgeView& operator=(const WedgeView&) = delete;

  void MakeDisc() {
    disc = std::make_unique<OpenHelmDisc>();
    disc->GetParameters().suppressWelcome = true;
    disc->GetParameters().keepSceneUpright = false;
    auto counted = std::make_unique<CountedHistory>();
    counted->onRecord = [this] { moment.Call(); };
    counted->SetThumbnailSize(64.0F);  // as the disc sets its own
    counted->SetThumbnailGapSize(4.0F);
    history = counted.get();
    disc->open.history = std::move(counted);
  }
  /// With the hub, the renderer and all else that the host may have taken away.
  void Open(DiscType type, const Vector3& colour) {
    renderer.colour = colour;
    disc->SetKorvane(&hub);
    disc->SetRenderer(&renderer);
    disc->Create();
    disc->SetViewportSize(800, 600);
    disc->SetActiveDisc(type);
    disc->GetActiveTrackMenu()->SetLocation(400, 300);
    Move(400, 300);
  }
  void FillHistory(int count = ELEMENTS) {
    for (int i = 0; i < count; ++i)
      disc->GetHistory()->AddHistoryElement(LookAt({0.1 * i, 0, 10}, {0.1 * i, 0, 0}, {0, 1, 0}), nullptr);
  }
  DiscListenerKind GetKind() const {
    TrackMenu& menu = *disc->GetActiveTrackMenu();
    const auto regions = GetDiscTable(wedge.disc).regions;
    for (std::size_t i = 0; i < regions.size(); ++i) {
      if (menu.GetRegion(static_cast<int>(i))->listener == menu.GetActiveRegion().listener)
        return regions[i].listener.kind;
    }
    return DiscListenerKind::Null;  // of the disabled region
  }
  void Resize(int width, int height) {
    hub.GetApplicationParameters().viewport_width = width;
    hub.GetApplicationParameters().viewport_height = height;
    disc->SetViewportSize(width, height);
  }
  void Press() {
    if (disc != nullptr) disc->OnLeftMouseDown(400, 300);
  }
  void Move(int x, int y) {
    if (disc != nullptr) disc->OnMouseMove(x, y);
  }
  void Release() {
    if (disc != nullptr) disc->OnLeftMouseUp(420, 310);
  }
  void Frame() {
    platform.Advance(16);
    hub.PerformOperations();
    if (disc != nullptr) disc->Draw();
  }
  void Drag() {
    for (const int step : {1, 2, 3}) {
      Move(400 + 7 * step, 300 + 3 * step);
      Frame();
    }
  }

  // Its release went missing.
  void PressAgain() { Press(); }

  const Wedge& wedge;
  Moment moment;
  CountedHistory* history = nullptr;  // the disc's
  ManualPlatform platform;
  MomentHub hub;
  OneColourRenderer renderer;
  std::unique_ptr<OpenHelmDisc> disc;
};

class EveryWedge : public ::testing::TestWithParam<Wedge> {};

TEST_P(EveryWedge, is_found_on_its_disc) {
  WedgeView view(GetParam());
  EXPECT_EQ(view.GetKind(), GetParam().kind);
  EXPECT_EQ(view.disc->GetActiveDisc(), GetParam().disc);
}

// A long walk leaves a view in the history each interval; here it stays within one.
TEST_P(EveryWedge, a_drag_and_its_frames_allocate_nothing) {
  WedgeView view(GetParam());
  view.disc->GetParameters().walkRewindInterval = 1e6;
  view.FillHistory();
  view.Press();
  view.Drag();
  const long begun = view.renderer.begun;
  const AllocationCounter counter;
  for (int i = 0; i < 100; ++i) {
    view.Move(410 - 3 * i, 300 + i % 20);
    view.Frame();
  }
  EXPECT_EQ(counter.GetAllocations(), 0U);
  EXPECT_GE(view.renderer.begun - begun, 100);
  view.Release();
}

// ---- a host that acts in the midst of it ----

void CloseDisc(WedgeView& view) { view.disc->SetActiveDisc(DiscType::None); }
void TakeHub(WedgeView& view) { view.disc->SetKorvane(nullptr); }
void TakeRenderer(WedgeView& view) { view.disc->SetRenderer(nullptr); }
void TakeHistorysPartners(WedgeView& view) {
  view.disc->GetHistory()->SetKorvane(nullptr);
  view.disc->GetHistory()->SetRenderer(nullptr);
  view.disc->GetHistory()->ClearHistory();
}
void HideMenu(WedgeView& view) {
  TrackMenu* const menu = view.disc->GetActiveTrackMenu();
  if (menu == nullptr) return;
  menu->SetVisible(false);
  menu->SetActive(false);
}
// Whatever was flying, the host flies elsewhere.
void CloseAndMove(WedgeView& view) {
  CloseDisc(view);
  CenterShotParameters shot;
  shot.point = Vector3(1, 0, 0);
  shot.duration = 0.1;
  shot.easeEnd = 1.0;
  view.hub.BeginShot(shot);
}
void DestroyDisc(WedgeView& view) { view.disc->Destroy(); }
void DeleteDisc(WedgeView& view) { view.disc.reset(); }

using Deed = void (*)(WedgeView&);
using Step = void (WedgeView::*)();
constexpr Step STEPS[] = {&WedgeView::Press, &WedgeView::Drag, &WedgeView::Release, &WedgeView::Frame};
constexpr Step ALL_STEPS[] = {&WedgeView::Press, &WedgeView::Drag, &WedgeView::PressAgain,
                              &WedgeView::Release, &WedgeView::Frame};

/// One use of the wedge from the press to a frame after the release. The host acts once, in the step
/// `acting`, in the call after `callsBefore`. False where there was no such call.
bool UseWedge(WedgeView& view, Moment& moment, Step acting, int callsBefore, Deed deed) {
  for (const Step step : ALL_STEPS) {
    if (step == &WedgeView::PressAgain && acting != step) continue;
    const bool acts = step == acting;
    if (acts) moment.Arm(callsBefore, [&view, deed] { deed(view); });
    (view.*step)();
    const bool missed = acts && moment.IsArmed();
    moment.Disarm();
    if (missed) return false;
  }
  return true;
}

// After the moves that may follow a release.
void ExpectAtRest(WedgeView& view) {
  for (int frame = 0; frame < 100 && view.hub.IsShotActive(); ++frame) view.Frame();
  EXPECT_FALSE(view.hub.IsOperating());
  EXPECT_FALSE(view.hub.IsShotActive());
  if (view.disc == nullptr) return;
  if (view.disc->GetKorvane() == nullptr) return;  // without it no record ends
  view.Frame();                                    // which finds a shot over
  view.disc->SetActiveDisc(DiscType::None);
  EXPECT_EQ(view.history->open, 0);
}

void ExpectAnotherDiscWorks(WedgeView& view) {
  if (view.disc == nullptr) view.MakeDisc();
  if (view.wedge.key != NO_KEY) view.disc->OnKeyUp(view.wedge.key);
  view.Open(DiscType::TwoD, Vector3(0, 1, 0));  // the pan
  view.Press();
  EXPECT_TRUE(view.hub.IsOperationActive(OPERATION_PAN));
  view.Release();
  EXPECT_FALSE(view.hub.IsOperating());
}

// A disc that closes ends what its wedges have begun; the step back along the history is no gesture.
void ExpectNoFlightOf(const WedgeView& view, Deed deed) {
  if (deed != CloseDisc || view.wedge.kind == DiscListenerKind::Rewind) return;
  EXPECT_FALSE(view.hub.IsShotActive());
}

// Until the step makes no call as late as that; how often the host has acted.
int ActInEveryCall(const Wedge& wedge, Step acting, Deed deed, Moment& (*find)(WedgeView&)) {
  constexpr int MOST_CALLS = 200;
  for (int call = 0; call < MOST_CALLS; ++call) {
    SCOPED_TRACE("call " + std::to_string(call));
    WedgeView view(wedge);
    view.FillHistory(5);
    if (!UseWedge(view, find(view), acting, call, deed)) return call;
    ExpectNoFlightOf(view, deed);
    ExpectAtRest(view);
    ExpectAnotherDiscWorks(view);
    if (::testing::Test::HasFailure()) return call;
  }
  return MOST_CALLS;
}

TEST_P(EveryWedge, bears_a_host_that_takes_anything_away_in_any_call) {
  const auto anyCall = [](WedgeView& view) -> Moment& { return view.moment; };
  struct {
    const char* name;
    Deed deed;
  } const deeds[] = {{"closes", CloseDisc},
                     {"takes the hub", TakeHub},
                     {"takes the renderer", TakeRenderer},
                     {"takes the partners of the history", TakeHistorysPartners},
                     {"hides the menu", HideMenu},
                     {"closes and moves the camera", CloseAndMove},
                     {"destroys", DestroyDisc}};
  for (const auto& row : deeds) {
    int acted = 0;
    for (std::size_t step = 0; step < std::size(ALL_STEPS); ++step) {
      SCOPED_TRACE(std::string(row.name) + " in step " + std::to_string(step));
      const int calls = ActInEveryCall(GetParam(), ALL_STEPS[step], row.deed, anyCall);
      EXPECT_LT(calls, 200);
      acted += calls;
    }
    EXPECT_GT(acted, 10) << row.name;  // the frames alone make more calls
  }
}

TEST_P(EveryWedge, a_click_that_is_cut_off_in_any_call_leaves_nothing_behind) {
  constexpr int MOST_CALLS = 200;
  for (const Deed deed : {CloseDisc, CloseAndMove, HideMenu}) {
    bool acted = true;
    for (int call = 0; acted && call < MOST_CALLS && !HasFailure(); ++call) {
      SCOPED_TRACE("call " + std::to_string(call));
      WedgeView view(GetParam());
      view.FillHistory(5);
      view.disc->GetParameters().clickZoom = true;
      view.Press();
      view.moment.Arm(call, [&] { deed(view); });
      view.Release();
      acted = !view.moment.IsArmed();
      view.moment.Disarm();
      if (!acted) break;
      ExpectNoFlightOf(view, deed);
      view.Frame();
      ExpectAtRest(view);
      ExpectAnotherDiscWorks(view);
    }
    EXPECT_FALSE(acted);
  }
}

// An operation begins within the listener alone, where a disc may be deleted.
TEST_P(EveryWedge, bears_a_host_that_deletes_the_disc_as_an_operation_begins) {
  const auto beginning = [](WedgeView& view) -> Moment& { return view.hub.begin; };
  constexpr DiscListenerKind WITHOUT_OPERATION[] = {DiscListenerKind::Null,      DiscListenerKind::Center,
                                                    DiscListenerKind::Close,     DiscListenerKind::Menu,
                                                    DiscListenerKind::PivotPick, DiscListenerKind::Rewind};
  int acted = 0;
  for (const Step step : STEPS) acted += ActInEveryCall(GetParam(), step, DeleteDisc, beginning);
  const bool operates = std::find(std::begin(WITHOUT_OPERATION), std::end(WITHOUT_OPERATION),
                                  GetParam().kind) == std::end(WITHOUT_OPERATION);
  EXPECT_EQ(acted > 0, operates);
}

// ---- what no host should hand over ----

// A press has its way also on a disc that the eye cannot find.
TEST_P(EveryWedge, bears_a_disc_of_any_size_in_a_view_of_any_size) {
  struct {
    int disc;
    int width;
    int height;
  } const rows[] = {{0, 800, 600}, {-7, 800, 600}, {4096, 800, 600}, {128, 0, 0},
                    {128, 0, 600}, {128, 800, 0},  {0, 0, 0},        {4096, 1, 1}};
  for (const auto& row : rows) {
    SCOPED_TRACE(std::to_string(row.disc) + " in " + std::to_string(row.width) + " x " +
                 std::to_string(row.height));
    WedgeView view(GetParam());
    view.FillHistory(5);
    view.disc->SetLargeDiscSize(row.disc);
    view.disc->SetMiniDiscSize(row.disc);
    view.Resize(row.width, row.height);
    view.Frame();
    view.Press();
    view.Drag();
    view.Release();
    view.Frame();
    EXPECT_TRUE(view.hub.view.IsFinite());
    view.Resize(800, 600);
    view.disc->SetLargeDiscSize(128);
    ExpectAtRest(view);
    ExpectAnotherDiscWorks(view);
  }
}

TEST_P(EveryWedge, keeps_no_camera_that_is_none) {
  constexpr double NAN_VALUE = std::numeric_limits<double>::quiet_NaN();
  for (const Step lost : STEPS) {
    WedgeView view(GetParam());
    view.FillHistory(5);
    for (const Step step : STEPS) {
      const CameraParameters before = view.hub.view;
      if (step == lost) view.hub.view.eye.y = NAN_VALUE;
      (view.*step)();
      if (step == lost) view.hub.view = before;
    }
    ExpectAtRest(view);
    RewindHistory& history = *view.disc->GetHistory();
    EXPECT_GE(history.GetElementCount(), 5);
    for (int i = 0; i < history.GetElementCount(); ++i) {
      CameraParameters kept;
      ASSERT_TRUE(history.GetElementCamera(i, kept));
      EXPECT_TRUE(kept.IsFinite()) << "element " << i;
    }
    ExpectAnotherDiscWorks(view);
  }
}

// The map has no region; the disc keeps the one that it has, and stays where it is.
TEST_P(EveryWedge, stays_on_a_map_that_is_transparent_everywhere) {
  WedgeView view(GetParam());
  view.renderer.opaque = false;
  view.disc->SetActiveDisc(DiscType::None);
  view.Open(GetParam().disc, GetParam().colour);
  ASSERT_EQ(view.disc->GetActiveDisc(), GetParam().disc);
  TrackMenu& menu = *view.disc->GetActiveTrackMenu();
  const RegionListener* const first = menu.GetActiveRegion().listener;
  view.Move(430, 320);
  view.Frame();
  EXPECT_EQ(menu.GetActiveRegion().listener, first);
  view.Press();
  view.Drag();
  view.Release();
  view.renderer.opaque = true;
  ExpectAtRest(view);
  ExpectAnotherDiscWorks(view);
}

TEST_P(EveryWedge, a_region_without_a_listener_does_nothing) {
  WedgeView view(GetParam());
  TrackMenu::Region mute = view.disc->GetActiveTrackMenu()->GetActiveRegion();
  mute.listener = nullptr;
  view.disc->GetActiveTrackMenu()->SetActiveRegion(mute);
  view.Press();
  EXPECT_FALSE(view.hub.IsOperating());
  EXPECT_TRUE(view.disc->GetActiveTrackMenu()->GetVisible());
  view.Release();
  EXPECT_FALSE(view.hub.IsOperating());
  EXPECT_EQ(view.disc->GetActiveDisc(), GetParam().disc);
  ExpectAnotherDiscWorks(view);
}

INSTANTIATE_TEST_SUITE_P(Kinds, EveryWedge, ::testing::ValuesIn(WEDGES),
                         [](const auto& tested) { return std::string(tested.param.name); });

// ---- the whole way along the film strip ----

TEST(RewindCosts, a_scrub_over_a_hundred_views_allocates_nothing) {
  WedgeView view(WEDGES[static_cast<std::size_t>(DiscListenerKind::Rewind)]);
  RewindHistory& history = *view.disc->GetHistory();
  view.FillHistory();
  view.Press();
  view.Drag();
  ASSERT_TRUE(history.IsTimelineOpen());
  ASSERT_EQ(history.GetElementCount(), WedgeView::ELEMENTS);
  const AllocationCounter counter;
  int x = 420;
  for (; x > -20000 && view.hub.view.eye.x > 0.05; x -= 11) {
    view.Move(x, 310);
    view.Frame();
  }
  EXPECT_EQ(counter.GetAllocations(), 0U);
  EXPECT_LT(view.hub.view.eye.x, 0.05);  // at the first of the views
  EXPECT_GT(x, -20000);
}

}  // namespace
