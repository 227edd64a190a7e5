// The wedge that goes back, pressed on a menu of its own in a view of 800 x 600.
#include "disc/rewind_region_listener.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <limits>
#include <memory>
#include <string>

#include "disc/menu_scene.h"
#include "korvane/helm_disc.h"
#include "korvane/rewind_history.h"

using namespace Korvane;

namespace {

CameraParameters At(double x) { return LookAt({x, 0, 5}, {x, 0, 0}, {0, 1, 0}); }

struct WedgeDisc : HelmDisc {
  DiscType GetActiveDisc() const override { return type; }
  DiscType type = DiscType::FullNavigation;
};

// Lets the host act where a picture of the scene is made or the pointer is moved.
struct WedgeRenderer : RecordingRenderer {
  using RecordingRenderer::Render;
  DynamicIcon2D* CreateSceneScreenshot(int width, int height, const CameraParameters& camera) override {
    Act();
    return RecordingRenderer::CreateSceneScreenshot(width, height, camera);
  }
  DynamicIcon2D* CreateTooltipHUD(const wchar_t* text) override {
    DynamicIcon2D* const icon = RecordingRenderer::CreateTooltipHUD(text);
    if (icon != nullptr) icon->SetSize(120, 30);
    Act();
    return icon;
  }
  DynamicIcon2D* CreateMessageHUD(const wchar_t* text) override {
    DynamicIcon2D* const icon = RecordingRenderer::CreateMessageHUD(text);
    if (icon != nullptr) icon->SetSize(200, 40);
    return icon;
  }
  bool BeginRender(const Box2& viewport, const CameraParameters& camera, RenderMode mode) override {
    const bool begun = RecordingRenderer::BeginRender(viewport, camera, mode);
    Act();
    return begun;
  }
  bool EndRender() override {
    const bool ended = RecordingRenderer::EndRender();
    Act();
    return ended;
  }
  bool Render(DynamicIcon2D* icon) override {
    lastText = icon->GetPosition();
    const bool drawn = RecordingRenderer::Render(icon);
    Act();
    return drawn;
  }
  bool DestroyIcon(DynamicIcon2D*& icon) override {
    const bool destroyed = RecordingRenderer::DestroyIcon(icon);
    Act();
    return destroyed;
  }
  bool SetCursorPosition(int x, int y) override {
    const bool moved = RecordingRenderer::SetCursorPosition(x, y);
    Act();
    return moved;
  }
  void Act() const {
    if (onCall) onCall();
  }
  Vector2 lastText;
  std::function<void()> onCall;
};

struct WedgeHub : MemoryHub {
  using MemoryHub::BeginShot;
  bool BeginShot(const TransitionShotParameters& shot) override {
    flights.push_back(shot);
    return MemoryHub::BeginShot(shot);
  }
  void RequestApplicationUpdate() override {
    MemoryHub::RequestApplicationUpdate();
    if (onRequest) onRequest();
  }
  std::function<void()> onRequest;
  std::vector<TransitionShotParameters> flights;
};

// Lets the host act in all that a history tells.
struct HistoryWitness : RewindHistoryObserver {
  void OnCurrentElementChanged(int /*index*/) override { Act(); }
  void OnElementAdded(int /*index*/, const CameraParameters& /*camera*/) override { Act(); }
  void OnElementUpdated(int /*index*/, const CameraParameters& /*camera*/) override { Act(); }
  void OnElementRemoved(int /*index*/) override { Act(); }
  void OnHistoryCleared() override { Act(); }
  void OnTimelineClosed() override { Act(); }
  void OnTimelineOpened() override { Act(); }
  void OnTimelineSlid(int /*index*/, double /*weight*/) override { Act(); }
  void Act() const {
    if (onCall) onCall();
  }
  std::function<void()> onCall;
};

struct RewindWedge : ::testing::Test {
  RewindWedge() {
    hub.GetApplicationParameters().viewport_width = 800;
    hub.GetApplicationParameters().viewport_height = 600;
    hub.view = At(3);
    disc = std::make_unique<WedgeDisc>();
    history = disc->GetHistory();
    history->SetKorvane(&hub);
    history->SetRenderer(&renderer);
    history->SetThumbnailSize(64.0F);
    history->SetThumbnailGapSize(4.0F);
    history->SetViewportSize(800, 600);
    MakeMenu();
  }
  ~RewindWedge() override {
    renderer.onCall = nullptr;
    hub.onRequest = nullptr;
    hub.onApply = nullptr;
    menu.reset();
    disc.reset();
  }

  // One region, of one white pixel, wherever the mouse is over the menu.
  void MakeMenu() {
    menu = std::make_unique<TrackMenu>();
    menu->SetRendererShared(true);
    menu->SetKorvane(&hub);
    menu->SetRenderer(&renderer);
    menu->SetRegionMap(static_cast<TextureID>(34));
    menu->SetViewportSize(800, 600);
    menu->SetLocation(400, 300);
    TrackMenu::Region region;
    region.color = Vector3(1, 1, 1);
    region.icon = new ResourceIcon2D(static_cast<TextureID>(35));
    region.listener = wedge = new RewindRegionListener(menu.get(), disc.get());
    menu->AddRegion(region);
    menu->SetVisible(true);
    menu->OnMouseMove(400, 300);
    ASSERT_EQ(menu->GetActiveRegion().listener, wedge);
  }

  // Elements at 1, 2, ...
  void Fill(int count) {
    for (int i = 1; i <= count; ++i) history->AddHistoryElement(At(i), nullptr);
    hub.view = At(count);
    Forget();
  }
  void Forget() {
    renderer.ClearCalls();
    hub.requested = hub.applied = 0;
  }
  void Press(int x = 400, int y = 300) { menu->OnLeftMouseDown(x, y); }
  void Move(int x, int y = 300) { menu->OnMouseMove(x, y); }
  void Release(int x, int y = 300) { menu->OnLeftMouseUp(x, y); }
  void Click() {
    Press();
    Release(400);
  }
  bool IsOpen() const { return history->IsTimelineOpen(); }
  Lines Draw() {
    renderer.ClearCalls();
    wedge->OnDraw();
    return renderer.TakeCalls();
  }

  ManualPlatform platform;
  WedgeHub hub;
  WedgeRenderer renderer;
  std::unique_ptr<WedgeDisc> disc;
  RewindHistory* history = nullptr;
  std::unique_ptr<TrackMenu> menu;
  RewindRegionListener* wedge = nullptr;
};

// ---- opening ----

TEST_F(RewindWedge, a_press_hides_the_menu_and_opens_the_strip_after_a_quarter_of_a_second) {
  Fill(3);
  Press();
  EXPECT_FALSE(menu->GetVisible());
  EXPECT_FALSE(IsOpen());
  platform.Advance(249);
  EXPECT_FALSE(IsOpen());
  hub.requested = 0;
  platform.Advance(1);
  EXPECT_TRUE(IsOpen());
  EXPECT_EQ(history->GetBracketPosition(), Vector2(400, 300));
  EXPECT_EQ(hub.requested, 1);
  EXPECT_EQ(platform.GetTimerCount(), 0);
}

TEST_F(RewindWedge, a_press_moved_by_four_pixels_opens_the_strip_at_the_press) {
  struct {
    int x;
    int y;
    bool opens;
  } const rows[] = {{403, 300, false}, {404, 300, true}, {397, 300, false}, {396, 300, true},
                    {400, 303, false}, {400, 304, true}, {400, 297, false}, {400, 296, true},
                    {403, 303, false}, {404, 296, true}};
  Fill(3);
  for (const auto& row : rows) {
    Press();
    Move(row.x, row.y);
    EXPECT_EQ(IsOpen(), row.opens) << row.x << ", " << row.y;
    EXPECT_EQ(platform.GetTimerCount(), row.opens ? 0 : 1);  // the show timer has done its part
    Release(row.x, row.y);
    platform.Advance(1000);
    history->SetCurrentElementIndex(2);
  }
}

TEST_F(RewindWedge, a_move_without_a_press_opens_nothing) {
  Fill(3);
  Move(300);
  Move(500);
  EXPECT_FALSE(IsOpen());
}

TEST_F(RewindWedge, the_strip_takes_the_hosts_camera_into_the_last_element) {
  Fill(3);
  hub.view = At(9);
  Press();
  Move(404);
  CameraParameters camera;
  EXPECT_TRUE(history->GetElementCamera(2, camera));
  EXPECT_EQ(camera.eye.x, 9.0);
}

TEST_F(RewindWedge, pictures_that_are_missing_are_made_as_the_strip_opens) {
  renderer.FailAlways("CreateSceneScreenshot");
  Fill(3);
  renderer.Succeed("CreateSceneScreenshot");
  Press();
  EXPECT_EQ(renderer.CountCalls("CreateSceneScreenshot"), 0);
  platform.Advance(250);
  EXPECT_EQ(renderer.CountCalls("CreateSceneScreenshot"), 3);
  Move(350);
  Move(300);
  EXPECT_EQ(renderer.CountCalls("CreateSceneScreenshot"), 3);
}

// ---- sliding ----

// Elements at 264, 332 and 400; 366 is halfway between the last two.
TEST_F(RewindWedge, a_slide_applies_the_camera_between_the_elements) {
  Fill(3);
  Press();
  Move(366);
  EXPECT_NEAR(hub.view.eye.x, 2.5, 1e-12);
  EXPECT_EQ(hub.applied, 1);
  Move(332);
  EXPECT_NEAR(hub.view.eye.x, 2.0, 1e-12);
  EXPECT_EQ(hub.applied, 2);
}

TEST_F(RewindWedge, a_move_asks_for_a_frame) {
  Fill(3);
  Press();
  Move(366);
  hub.requested = 0;
  Move(350);
  EXPECT_EQ(hub.requested, 1);
}

TEST_F(RewindWedge, the_release_of_a_drag_closes_and_puts_the_pointer_on_the_bracket) {
  Fill(3);
  Press();
  Move(366);
  Move(100, 250);  // beyond the first: held at 264
  Forget();
  Release(100, 250);
  EXPECT_FALSE(IsOpen());
  EXPECT_EQ(history->GetCurrentElementIndex(), 0);
  EXPECT_EQ(renderer.CountCalls("SetCursorPosition"), 1);
  EXPECT_EQ(renderer.GetCalls().front(), "SetCursorPosition(264, 300)");
  EXPECT_EQ(menu->GetMouseCoords(), Vector2(264, 300));
  EXPECT_TRUE(menu->GetVisible());
  EXPECT_GT(hub.requested, 0);
  EXPECT_EQ(platform.GetTimerCount(), 0);
  EXPECT_FALSE(hub.IsShotActive());
}

TEST_F(RewindWedge, the_release_of_a_press_that_was_held_still_moves_no_pointer) {
  Fill(3);
  Press();
  platform.Advance(250);
  Release(400);
  EXPECT_FALSE(IsOpen());
  EXPECT_EQ(renderer.CountCalls("SetCursorPosition"), 0);
  EXPECT_TRUE(menu->GetVisible());
  EXPECT_EQ(history->GetCurrentElementIndex(), 2);
}

TEST_F(RewindWedge, the_place_between_two_elements_is_kept_to_the_next_press) {
  Fill(4);
  Press();
  Move(350);
  Move(284);  // 20 after the second, at 264
  Release(284);
  const double eye = hub.view.eye.x;
  Press(600);
  Move(604);
  Move(600);
  EXPECT_NEAR(hub.view.eye.x, eye, 1e-9);
}

TEST_F(RewindWedge, an_empty_strip_applies_nothing) {
  Press();
  Move(300);
  Move(250);
  EXPECT_TRUE(IsOpen());
  EXPECT_EQ(hub.applied, 0);
  Release(250);
  EXPECT_FALSE(IsOpen());
  EXPECT_TRUE(menu->GetVisible());
}

// ---- a click ----

TEST_F(RewindWedge, a_click_flies_one_element_back_in_half_a_second) {
  Fill(3);
  Click();
  EXPECT_EQ(history->GetCurrentElementIndex(), 1);
  ASSERT_EQ(hub.flights.size(), 1U);
  EXPECT_TRUE(SameBits(hub.flights[0].targetCamera, At(2)));
  EXPECT_EQ(hub.flights[0].easeEnd, 1.0);
  EXPECT_EQ(hub.flights[0].duration, 0.5);
  for (int frame = 0; frame < 100 && hub.PerformOperations(); ++frame) platform.Advance(20);
  EXPECT_FALSE(hub.IsShotActive());
  EXPECT_NEAR(hub.view.eye.x, 2.0, 1e-9);
}

TEST_F(RewindWedge, a_click_shows_the_strip_for_half_a_second) {
  Fill(3);
  Click();
  EXPECT_TRUE(IsOpen());
  EXPECT_FALSE(menu->GetVisible());
  platform.Advance(499);
  EXPECT_TRUE(IsOpen());
  hub.requested = 0;
  platform.Advance(1);
  EXPECT_FALSE(IsOpen());
  EXPECT_TRUE(menu->GetVisible());
  EXPECT_GT(hub.requested, 0);
  EXPECT_EQ(history->GetCurrentElementIndex(), 1);
}

TEST_F(RewindWedge, while_the_strip_shows_a_click_the_mouse_does_not_slide_it) {
  Fill(3);
  Click();
  Forget();
  Move(300);
  EXPECT_EQ(hub.applied, 0);
  EXPECT_EQ(history->GetBracketPosition(), Vector2(400, 300));
}

TEST_F(RewindWedge, a_click_at_the_first_element_shows_the_strip_and_flies_nowhere) {
  Fill(1);
  Click();
  EXPECT_FALSE(hub.IsShotActive());
  EXPECT_TRUE(IsOpen());
  platform.Advance(500);
  EXPECT_FALSE(IsOpen());
}

TEST_F(RewindWedge, a_click_with_no_elements_flies_nowhere) {
  Click();
  EXPECT_FALSE(hub.IsShotActive());
  EXPECT_EQ(history->GetElementCount(), 0);
  platform.Advance(500);
  EXPECT_TRUE(menu->GetVisible());
}

TEST_F(RewindWedge, a_release_within_four_pixels_is_a_click) {
  Fill(3);
  Press();
  Move(403);
  Release(403);
  EXPECT_EQ(history->GetCurrentElementIndex(), 1);
}

TEST_F(RewindWedge, a_second_click_while_the_strip_shows_closes_it) {
  Fill(3);
  Click();
  Press();
  Release(400);
  EXPECT_FALSE(IsOpen());
  EXPECT_EQ(history->GetCurrentElementIndex(), 1);
  platform.Advance(260);
  EXPECT_FALSE(IsOpen());  // the second press no longer opens it
  platform.Advance(240);
  EXPECT_TRUE(menu->GetVisible());
}

// ---- the frame ----

TEST_F(RewindWedge, a_press_held_without_any_move_closes_at_the_next_draw) {
  Fill(3);
  Press();
  platform.Advance(250);
  ASSERT_TRUE(IsOpen());
  Draw();
  EXPECT_FALSE(IsOpen());
}

TEST_F(RewindWedge, the_slightest_move_keeps_the_strip_open) {
  Fill(3);
  Press();
  Move(401);
  platform.Advance(250);
  ASSERT_TRUE(IsOpen());
  Draw();
  EXPECT_TRUE(IsOpen());
}

TEST_F(RewindWedge, a_frame_closes_the_strip_where_the_timer_of_the_platform_comes_late) {
  Fill(3);
  Click();
  platform.AdvanceWithoutTimers(500);
  Draw();
  EXPECT_TRUE(IsOpen());  // not more than half a second
  platform.AdvanceWithoutTimers(1);
  Draw();
  EXPECT_FALSE(IsOpen());
  EXPECT_TRUE(menu->GetVisible());
}

TEST_F(RewindWedge, a_click_that_moved_waits_for_the_timer) {
  Fill(3);
  Press();
  Move(402);
  Release(402);
  platform.AdvanceWithoutTimers(2000);
  Draw();
  EXPECT_TRUE(IsOpen());
  platform.Advance(1);
  EXPECT_FALSE(IsOpen());
}

TEST_F(RewindWedge, draws_nothing_unless_pressed_or_showing_a_click) {
  Fill(3);
  EXPECT_TRUE(Draw().empty());
  Press();
  Move(401);
  EXPECT_TRUE(Draw().empty());  // closed, and not empty
  Move(404);
  EXPECT_EQ(Draw().front(), "BeginRender(400, 300, 400, 300, 0)");
  Release(404);
  EXPECT_TRUE(Draw().empty());
}

TEST_F(RewindWedge, the_hint_stands_below_the_bracket_and_near_the_bottom_above_it) {
  struct {
    int press;
    double hint;
  } const rows[] = {{300, 224}, {76, 0}, {75, 151}, {10, 86}};
  Fill(3);
  for (const auto& row : rows) {
    Press(400, row.press);
    Move(405, row.press);
    Draw();
    EXPECT_EQ(renderer.lastText, Vector2(400, row.hint)) << row.press;
    Release(405, row.press);
  }
}

TEST_F(RewindWedge, the_hint_shows_with_the_notes_of_the_tools_or_on_a_basic_disc) {
  struct {
    bool notes;
    DiscType type;
    int texts;
  } const rows[] = {{true, DiscType::FullNavigation, 1},  {false, DiscType::FullNavigation, 0},
                    {false, DiscType::TourBuilding, 1},   {false, DiscType::ViewObject, 1},
                    {false, DiscType::MiniViewObject, 0}, {true, DiscType::TwoD, 1}};
  Fill(1);
  for (const auto& row : rows) {
    disc->GetParameters().showToolHUDs = row.notes;
    disc->type = row.type;
    Press();
    Move(405);
    Draw();
    wedge->OnDraw();
    EXPECT_EQ(renderer.CountCalls("RenderDynamic"), 1 + row.texts) << static_cast<int>(row.type);
    Release(405);
  }
}

TEST_F(RewindWedge, while_the_strip_shows_a_click_there_is_no_hint) {
  Fill(1);
  Click();
  Draw();
  wedge->OnDraw();
  EXPECT_EQ(renderer.CountCalls("RenderDynamic"), 1);  // the picture of the element
  EXPECT_EQ(renderer.CountCalls("BeginRender"), renderer.CountCalls("EndRender"));
}

TEST_F(RewindWedge, an_empty_history_is_told_in_a_message) {
  Press();
  Draw();
  EXPECT_EQ(renderer.lastText, Vector2(400, 40));
  renderer.lastText = Vector2();
  disc->GetParameters().showMessages = false;
  Draw();
  EXPECT_EQ(renderer.lastText, Vector2());
}

// ---- textures and texts ----

TEST_F(RewindWedge, holds_its_pictures_and_texts_while_its_menu_is_active) {
  renderer.ApplyTextureUsage();
  for (const char* const load :
       {"LoadTexture(89)", "LoadTexture(90)", "LoadTexture(91)", "LoadTexture(92)", "LoadTexture(100)"}) {
    EXPECT_EQ(std::count(renderer.GetCalls().begin(), renderer.GetCalls().end(), load), 1) << load;
  }
  EXPECT_EQ(renderer.CountCalls("CreateTooltipHUD"), 1);
  EXPECT_EQ(renderer.CountCalls("CreateMessageHUD"), 1);
  EXPECT_EQ(std::count(renderer.GetCalls().begin(), renderer.GetCalls().end(), "LoadStringResource(52)"), 1);
  EXPECT_EQ(std::count(renderer.GetCalls().begin(), renderer.GetCalls().end(), "LoadStringResource(33)"), 1);
  menu->SetVisible(false);
  menu->SetActive(false);
  EXPECT_EQ(renderer.CountCalls("ReleaseTexture"), 0);
  renderer.ClearCalls();
  renderer.ApplyTextureUsage();
  EXPECT_EQ(renderer.CountCalls("ReleaseTexture"), 6);  // with the picture of the region
  EXPECT_EQ(renderer.CountCalls("DestroyIcon"), 2);
  EXPECT_EQ(renderer.GetLiveIconCount(), 0);
}

TEST_F(RewindWedge, a_menu_that_is_put_away_ends_the_slide) {
  Fill(3);
  Press();
  Move(366);
  ASSERT_TRUE(IsOpen());
  menu->SetActive(false);
  EXPECT_FALSE(IsOpen());
  EXPECT_FALSE(wedge->IsMouseDown());
  Forget();
  platform.Advance(1000);
  EXPECT_FALSE(menu->GetVisible());
  EXPECT_TRUE(history->BeginElementRecord(At(2)));
}

TEST_F(RewindWedge, a_menu_that_is_put_away_while_it_shows_a_click_does_not_come_back) {
  Fill(3);
  Click();
  menu->SetActive(false);
  EXPECT_FALSE(IsOpen());
  platform.Advance(1000);
  EXPECT_FALSE(menu->GetVisible());
}

TEST_F(RewindWedge, a_menu_that_is_put_away_leaves_a_strip_that_others_have_opened) {
  Fill(3);
  history->OpenTimeline({400, 300}, At(3));
  menu->SetVisible(false);
  menu->SetActive(false);
  EXPECT_TRUE(IsOpen());
}

// ---- what is missing, and what goes ----

TEST_F(RewindWedge, works_without_hub_renderer_and_disc) {
  Fill(3);
  menu->SetKorvane(nullptr);
  menu->SetRenderer(nullptr);
  Click();
  Press();
  Move(366);
  Draw();
  Release(366);
  platform.Advance(1000);
  RewindRegionListener alone(nullptr, nullptr);
  alone.OnTrackMenuActivate(true);
  alone.OnLeftMouseDown(1, 1);
  alone.OnMouseMove(10, 10);
  alone.OnDraw();
  alone.OnLeftMouseUp(10, 10);
  alone.OnShowTimeline();
  alone.OnHideTimeline();
  alone.OnTrackMenuActivate(false);
  platform.Advance(1000);
  EXPECT_FALSE(IsOpen());
}

TEST_F(RewindWedge, coordinates_at_the_ends_of_an_int_are_moves) {
  Fill(3);
  constexpr int LOW = std::numeric_limits<int>::min();
  constexpr int HIGH = std::numeric_limits<int>::max();
  Press(LOW, HIGH);
  wedge->OnMouseMove(HIGH, LOW);
  EXPECT_TRUE(IsOpen());
  Release(HIGH, LOW);
}

// A click, and a slide with its frames, during which menu and disc go at any of the calls to the host. The
// listener is called as by its timers: nobody keeps it meanwhile.
TEST_F(RewindWedge, the_disc_may_go_at_any_call) {
  HistoryWitness witness;
  history->AddObserver(&witness);
  for (const bool click : {false, true}) {
    for (int moment = 0; moment < 90; ++moment) {
      if (disc == nullptr) {
        disc = std::make_unique<WedgeDisc>();
        history = disc->GetHistory();
        history->SetKorvane(&hub);
        history->SetRenderer(&renderer);
        history->SetThumbnailSize(64.0F);
        history->SetViewportSize(800, 600);
        history->AddObserver(&witness);
      }
      MakeMenu();
      if (!click) renderer.FailAlways("CreateSceneScreenshot");  // so the pictures are made later
      Fill(3);
      renderer.Succeed("CreateSceneScreenshot");
      int left = moment;
      const auto act = [&] {
        if (left-- != 0) return;
        menu.reset();
        disc.reset();
      };
      hub.onRequest = hub.onApply = renderer.onCall = witness.onCall = act;
      hub.onBeginShotHook = [&](Shot*) { act(); };
      const auto step = [&](auto&& operation) {
        if (menu != nullptr) operation();
      };
      step([&] { wedge->OnTrackMenuActivate(false); });
      renderer.ApplyTextureUsage();
      step([&] { wedge->OnTrackMenuActivate(true); });
      hub.GetApplicationParameters().pixels_per_point = click ? 2.0F : 1.0F;  // makes all pictures anew
      step([&] { wedge->OnLeftMouseDown(400, 300); });
      if (!click) step([&] { wedge->OnMouseMove(366, 300); });
      if (!click) step([&] { wedge->OnMouseMove(332, 300); });
      step([&] { wedge->OnDraw(); });
      step([&] { wedge->OnLeftMouseUp(332, 300); });
      step([&] { wedge->OnDraw(); });
      platform.AdvanceWithoutTimers(600);
      step([&] { wedge->OnDraw(); });  // which comes before the timer
      platform.Advance(1000);
      hub.onRequest = hub.onApply = renderer.onCall = witness.onCall = nullptr;
      hub.onBeginShotHook = nullptr;
      hub.EndShot();
      EXPECT_EQ(platform.GetTimerCount(), 0);
      EXPECT_EQ(renderer.CountCalls("BeginRender"), renderer.CountCalls("EndRender"));
      renderer.ClearCalls();
      if (disc != nullptr) history->ClearHistory();
      menu.reset();
    }
  }
}

// The wedge is kept by who calls it, the menu not. Or the host takes something else away.
TEST_F(RewindWedge, the_menu_or_what_it_works_with_may_go_at_any_call_and_leave_the_wedge) {
  const std::function<void()> deeds[] = {
      [this] { menu.reset(); },
      [this] {
        menu.reset();
        disc.reset();
      },
      [this] { menu->SetKorvane(nullptr); },
      [this] { history->ClearHistory(); },
      [this] { hub.GetApplicationParameters().pixels_per_point = 2.0F; },
  };
  HistoryWitness witness;
  for (const auto& deed : deeds) {
    for (const bool click : {false, true}) {
      for (int moment = 0; moment < 60; ++moment) {
        SCOPED_TRACE(std::to_string(&deed - deeds) + " " + std::to_string(moment));
        if (disc == nullptr) {
          disc = std::make_unique<WedgeDisc>();
          history = disc->GetHistory();
        }
        MakeMenu();
        history->SetKorvane(&hub);
        history->SetRenderer(&renderer);
        history->AddObserver(&witness);
        hub.GetApplicationParameters().pixels_per_point = 1.0F;
        history->SetScale(1.0);
        Fill(3);
        if (click) hub.GetApplicationParameters().pixels_per_point = 2.0F;
        RewindRegionListener kept(menu.get(), disc.get());
        int left = moment;
        const auto act = [&] {
          if (left-- == 0) deed();
        };
        hub.onRequest = hub.onApply = renderer.onCall = witness.onCall = act;
        hub.onBeginShotHook = [&](Shot*) { act(); };
        kept.OnTrackMenuActivate(true);
        kept.OnLeftMouseDown(400, 300);
        if (!click) kept.OnMouseMove(366, 300);
        if (!click) kept.OnMouseMove(332, 300);
        kept.OnDraw();
        kept.OnLeftMouseUp(332, 300);
        kept.OnDraw();
        platform.Advance(1000);
        kept.OnTrackMenuActivate(false);
        hub.onRequest = hub.onApply = renderer.onCall = witness.onCall = nullptr;
        hub.onBeginShotHook = nullptr;
        hub.EndShot();
        EXPECT_FALSE(kept.IsMouseDown());
        EXPECT_TRUE(menu == nullptr || !IsOpen());
        EXPECT_EQ(renderer.CountCalls("BeginRender"), renderer.CountCalls("EndRender"));
        renderer.ClearCalls();
        if (disc != nullptr) history->CloseTimeline(Vector2());
        if (disc != nullptr) history->RemoveObserver(&witness);
        if (disc != nullptr) history->ClearHistory();
        menu.reset();
      }
    }
  }
}

TEST_F(RewindWedge, a_hub_that_goes_while_the_strip_is_drawn_has_no_notes) {
  auto mortal = std::make_unique<WedgeHub>();
  menu->SetKorvane(mortal.get());
  history->SetKorvane(mortal.get());
  Fill(3);
  Press();
  Move(366);
  ASSERT_TRUE(IsOpen());
  renderer.onCall = [&] { mortal.reset(); };
  wedge->OnDraw();
  renderer.onCall = nullptr;
  EXPECT_EQ(mortal, nullptr);
  EXPECT_EQ(renderer.CountCalls("BeginRender"), renderer.CountCalls("EndRender"));
  menu->SetKorvane(&hub);
}

}  // namespace
