// Wedges without a renderer, a ball or a hub, or with one that goes in the midst of a press.
#include <functional>
#include <memory>
#include <utility>

#include "disc/forward_region_listener.h"
#include "disc/pan_region_listener.h"
#include "disc/pivot_pick_region_listener.h"
#include "disc/roll_region_listener.h"
#include "disc/walk_region_listener.h"
#include "disc/wedge_scene.h"

using namespace Korvane;

namespace {

class PlacedBall : public PivotBall {
 public:
  void SetPosition(const Vector3& position) override {
    PivotBall::SetPosition(position);
    if (const std::function<void()> once = std::exchange(onPlace, nullptr)) once();
  }
  std::function<void()> onPlace;
};

class CursorRenderer : public WedgeRenderer {
 public:
  bool SetCursorIcon(CursorID id) override {
    const bool set = WedgeRenderer::SetCursorIcon(id);
    if (const std::function<void()> once = std::exchange(onCursor, nullptr)) once();
    return set;
  }
  std::function<void()> onCursor;
};

struct ForwardPartners : WedgeScene<ForwardRegionListener> {
  ForwardPartners() { Make(); }
};
struct PickPartners : WedgeScene<PivotPickRegionListener> {
  PickPartners() { Make(); }
};
struct RollPartners : WedgeScene<RollRegionListener> {
  RollPartners() { Make(); }
};
struct WalkPartners : WedgeScene<WalkRegionListener> {
  WalkPartners() { Make(); }
};

// ---- the wires of a tool ----

class OpenPan : public PanRegionListener {
 public:
  using PanRegionListener::PanRegionListener;
  Tool* GetTool() { return tool.operator->(); }
};
struct PanPartners : WedgeScene<OpenPan> {
  PanPartners() { Make(); }
};

TEST_F(PanPartners, its_tool_has_the_renderer_and_the_history_of_now) {
  EXPECT_EQ(wedge->GetTool()->GetRenderer(), &renderer);
  EXPECT_EQ(wedge->GetTool()->GetRewindHistory(), disc->GetHistory());
  WedgeRenderer other;
  menu->SetRenderer(&other);
  EXPECT_EQ(wedge->GetTool()->GetRenderer(), &other);
  EXPECT_EQ(wedge->GetTool()->GetKorvane(), &hub);
  const std::unique_ptr<RewindHistory> former =
      std::exchange(disc->open.history, std::make_unique<RewindHistory>());
  EXPECT_EQ(wedge->GetTool()->GetRewindHistory(), disc->GetHistory());
  EXPECT_NE(disc->GetHistory(), former.get());
  disc->open.history = std::make_unique<CountedHistory>();
  menu->SetRenderer(&renderer);
}

// ---- forward ----

TEST_F(ForwardPartners, no_gauge_shows_where_no_pass_can_be_opened) {
  Press();
  EXPECT_FALSE(Draw().empty());
  renderer.FailAlways("BeginRender");
  EXPECT_TRUE(Draw().empty());
  renderer.Succeed("BeginRender");
  EXPECT_FALSE(Draw().empty());
}

TEST_F(ForwardPartners, a_press_goes_on_without_a_renderer_that_goes_as_the_ball_is_placed) {
  PlacedBall placed;
  disc->SetPivotBall(&placed);
  auto mortal = std::make_unique<WedgeRenderer>();
  mortal->scene = renderer.scene;
  menu->SetRenderer(mortal.get());
  placed.onPlace = [&] { mortal.reset(); };
  Press();
  EXPECT_EQ(mortal, nullptr);
  EXPECT_TRUE(IsOperating(OPERATION_ZOOM));
  EXPECT_EQ(placed.GetPosition(), Vector3(0, 0, 2));
  Release(500, 300);
  disc->SetPivotBall(&ball);
}

TEST_F(ForwardPartners, without_a_renderer_a_press_meets_nothing_and_shows_nothing) {
  menu->SetRenderer(nullptr);
  Press();
  EXPECT_FALSE(IsOperating(OPERATION_ZOOM));
  EXPECT_TRUE(wedge->IsMouseDown());
  EXPECT_TRUE(Draw().empty());
  menu->SetRenderer(&renderer);
}

TEST_F(ForwardPartners, a_menu_that_is_put_away_as_the_cursor_says_of_a_miss_shows_no_note) {
  CursorRenderer cursor;
  menu->SetRenderer(&cursor);
  for (const bool putsAway : {false, true}) {
    Press();
    EXPECT_FALSE(IsOperating(OPERATION_ZOOM));
    if (putsAway) cursor.onCursor = [this] { PutAway(); };
    cursor.pictures.clear();
    wedge->OnDraw();
    EXPECT_EQ(cursor.pictures.empty(), putsAway);
    Release(500, 300);
  }
  menu->SetRenderer(nullptr);
}

// Called by itself, nobody keeps the wedge.
TEST_F(ForwardPartners, the_menu_may_be_deleted_as_the_flight_of_a_click_begins) {
  Press();
  hub.onBeginShotHook = [this](Shot*) { menu.reset(); };
  wedge->OnLeftMouseUp(500, 300);
  hub.onBeginShotHook = nullptr;
  EXPECT_EQ(menu, nullptr);
  EXPECT_FALSE(IsOperating(OPERATION_ZOOM));
  EXPECT_EQ(GetOpenRecords(), 0);
}

// ---- the pick of a pivot, and a roll ----

TEST_F(PickPartners, the_pivot_is_picked_without_a_ball) {
  disc->SetPivotBall(nullptr);
  Press();
  EXPECT_EQ(hub.view.pivot, Vector3(0, 0, 2));
  Release(500, 300);
  EXPECT_EQ(hub.view.pivot, Vector3(0, 0, 2));
}

TEST_F(PickPartners, without_a_renderer_a_pick_meets_nothing) {
  const Vector3 before = hub.view.pivot;
  menu->SetRenderer(nullptr);
  Press();
  EXPECT_TRUE(wedge->IsMouseDown());
  EXPECT_TRUE(Draw().empty());
  Release(500, 300);
  EXPECT_EQ(hub.view.pivot, before);
  menu->SetRenderer(&renderer);
}

TEST_F(RollPartners, no_gauge_shows_where_no_pass_can_be_opened) {
  Press();
  EXPECT_FALSE(Draw().empty());
  renderer.FailAlways("BeginRender");
  EXPECT_TRUE(Draw().empty());
  renderer.Succeed("BeginRender");
  EXPECT_FALSE(Draw().empty());
}

// ---- walk ----

TEST_F(WalkPartners, a_pointer_that_no_renderer_puts_back_is_forgotten) {
  wedge->OnKeyDown(KEY_SHIFT);
  menu->SetRenderer(nullptr);
  Press();
  Release(500, 300);
  menu->SetRenderer(&renderer);
  renderer.ClearCalls();
  Press();
  EXPECT_EQ(renderer.CountCalls("SetCursorPosition"), 1);  // of the tool itself
}

TEST_F(WalkPartners, a_run_ends_without_its_hub) {
  const double walk = Parameters().walkSpeedFactor;
  Press();
  wedge->OnKeyDown(KEY_RUN);
  EXPECT_GT(Parameters().walkSpeedFactor, walk);
  menu->SetKorvane(nullptr);
  Release(500, 300);
  EXPECT_EQ(Parameters().walkSpeedFactor, walk);
}

}  // namespace
