// What of a strip changes nothing, what is nobody's, and hosts that act while a bar is made.
#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <memory>
#include <string>
#include <utility>

#include "korvane/helm_disc.h"
#include "support/acting_host.h"
#include "support/allocation_counter.h"
#include "support/mischievous_hub.h"
#include "toolbar/bar_scene.h"

using namespace Korvane;

namespace {

constexpr double NAN_VALUE = std::numeric_limits<double>::quiet_NaN();

class ToolbarHostsTest : public ::testing::Test, public ToolbarScene {};

TEST_F(ToolbarHostsTest, takes_only_bounds_of_the_cube_that_are_numbers_and_each_that_changes) {
  Start();
  const Box2 bounds({700, 500}, {50, 40});
  struct {
    Box2 value;
    bool asks;
  } const rows[] = {{bounds, true},
                    {bounds, false},
                    {Box2({NAN_VALUE, 0}, {1, 1}), false},
                    {Box2({0, 0}, {1, NAN_VALUE}), false},
                    {Box2({700, 500}, {50, 60}), true},
                    {Box2({710, 500}, {50, 60}), true}};
  for (const auto& row : rows) {
    hub.requested = 0;
    toolbar.SetOrientorBounds(row.value);
    EXPECT_EQ(hub.requested > 0, row.asks) << &row - rows;
  }
  EXPECT_EQ(toolbar.open.room.orientorBounds.center, Vector2(710, 500));
}

TEST_F(ToolbarHostsTest, a_setting_that_is_none_or_not_new_asks_for_no_frame) {
  Start();
  constexpr auto NONE = static_cast<Toolbar::Orientation>(7);
  toolbar.SetOrientation(Toolbar::ORIENTATION_VERTICAL);
  toolbar.SetOrientation(NONE);
  toolbar.SetKeepInView(toolbar.GetKeepInView());
  toolbar.SetGripHandleIcon(NONE, static_cast<TextureID>(200), 8, 8);
  toolbar.SetMoreControlsIcon(NONE, static_cast<TextureID>(200), 8, 8);
  EXPECT_EQ(hub.requested, 0);
  toolbar.SetOrientation(Toolbar::ORIENTATION_HORIZONTAL);
  toolbar.SetKeepInView(!toolbar.GetKeepInView());
  EXPECT_EQ(hub.requested, 2);
}

TEST_F(ToolbarHostsTest, a_position_that_only_turns_the_strip_is_not_told) {
  Start();
  toolbar.SetPosition(Toolbar::POSITION_RIGHT);
  toolbar.SetOrientation(Toolbar::ORIENTATION_HORIZONTAL);
  Forget();
  toolbar.SetPosition(Toolbar::POSITION_RIGHT);
  EXPECT_EQ(toolbar.open.place.orientation, Toolbar::ORIENTATION_VERTICAL);
  EXPECT_EQ(hub.requested, 1);
  EXPECT_EQ(journal.Count("position"), 0);
  toolbar.SetPosition(Toolbar::POSITION_LEFT);
  EXPECT_EQ(journal.Count("position"), 1);
}

TEST_F(ToolbarHostsTest, on_the_seam_of_two_items_the_mouse_is_on_the_first) {
  Start();
  const Box2 first = Item(2).GetBounds();
  Item(3).SetBounds(first);
  toolbar.OnMouseMove(static_cast<int>(first.center.x), static_cast<int>(first.center.y));
  EXPECT_EQ(toolbar.open.mouse.overIndex, 1);
  EXPECT_EQ(toolbar.GetTooltip(), L"tip 2");
  EXPECT_EQ(toolbar.GetCurrentTooltipItemTag(), 2);
  toolbar.GetItems().RemoveAll();
  EXPECT_EQ(toolbar.GetCurrentTooltipItemTag(), 0);
}

TEST_F(ToolbarHostsTest, an_item_is_enabled_that_is_there_and_is_not_disabled) {
  Start();
  EXPECT_TRUE(toolbar.IsItemEnabled(5));
  toolbar.SetItemEnabled(5, false);
  EXPECT_FALSE(toolbar.IsItemEnabled(5));
  EXPECT_FALSE(toolbar.IsItemEnabled(99));
}

TEST_F(ToolbarHostsTest, jumps_out_of_a_way_where_no_animation_is_wanted_any_more) {
  Start();
  toolbar.SetWantAnimation(true);
  toolbar.SetItemExcluded(5, true);
  toolbar.Draw();
  platform.Advance(20);
  toolbar.Draw();
  ASSERT_TRUE(toolbar.open.motion.IsExtentMoving());
  toolbar.SetWantAnimation(false);
  toolbar.Refresh();
  EXPECT_FALSE(toolbar.open.motion.IsExtentMoving());
  EXPECT_EQ(Bounds().halfExtent, toolbar.open.halfSize);
}

TEST(StripExtent, is_there_on_either_axis) {
  StripMotion motion;
  EXPECT_FALSE(motion.HasExtent());
  motion.SetExtent({0, 5});
  EXPECT_TRUE(motion.HasExtent());
  motion.SetExtent({5, 0});
  EXPECT_TRUE(motion.HasExtent());
}

// In the frame in which the textures are tried again that there was no memory for.
TEST_F(ToolbarHostsTest, a_strip_may_be_deleted_as_its_textures_come_late) {
  ActingHost drawing;
  ActingRenderer acting(drawing);
  auto strip = std::make_unique<OpenToolbar>();
  strip->SetKorvane(&hub);
  strip->SetRenderer(&acting);
  strip->GetItems().Append(MakeItem(2, 0, 28, 28));
  strip->SetViewportSize(800, 600);
  strip->SetVisible(true);
  {
    const AllocationFault fault(1, std::numeric_limits<std::uint64_t>::max());
    EXPECT_FALSE(strip->Create());
  }
  strip->open.life.created = strip->open.life.texturesMissing = true;
  drawing.ActIn(1, [&] { strip.reset(); });
  strip->Draw();
  EXPECT_EQ(strip, nullptr);
}

TEST_F(ToolbarHostsTest, a_strip_may_be_deleted_as_it_takes_its_textures_and_gives_them_back) {
  TryInEachCall([this](long number) {
    ActingHost loading;
    ActingRenderer acting(loading);
    auto strip = std::make_unique<OpenToolbar>();
    const auto step = [&](const std::function<void()>& action) {
      if (strip != nullptr) action();
    };
    strip->SetKorvane(&hub);
    strip->SetRenderer(&acting);
    strip->GetItems().Append(MakeItem(2, 0, 28, 28));
    loading.ActIn(number, [&] { strip.reset(); });
    step([&] { strip->Create(); });
    step([&] { strip->SetFlyoutIcon(static_cast<TextureID>(200), 8, 8); });
    step([&] { strip->GetItems().Append(MakeItem(3, 0, 28, 28)); });
    step([&] { strip->ApplyItemChanges(); });
    step([&] { strip->Destroy(); });
    EXPECT_EQ(strip == nullptr, number != 0);
    return loading.GetCalls();
  });
}

// ---- a strip that goes while it tells of its items ----

class MortalStripTest : public ::testing::Test {
 protected:
  /// Lets the host act once, as a frame begins.
  class FrameRenderer : public RecordingRenderer {
   public:
    bool BeginRender(const Box2& viewport, const CameraParameters& camera, RenderMode mode) override {
      if (const std::function<void()> once = std::exchange(onFrame, nullptr)) once();
      return RecordingRenderer::BeginRender(viewport, camera, mode);
    }
    std::function<void()> onFrame;
  };

  MortalStripTest() {
    strip->SetKorvane(&hub);
    strip->SetRenderer(&renderer);
    strip->AddObserver(&observer);
    for (const int tag : {2, 3, 4}) strip->GetItems().Append(MakeItem(tag, 0, 28, 28));
    strip->GetItems().InsertAt(0, MakeItem(1, 5, 24, 12));
    strip->SetWantAnimation(true);
    strip->Create();
    strip->SetVisible(true);
    strip->SetViewportSize(800, 600);
    for (int i = 0; i < 40; ++i) Frame();
    observer.onHear = [this](const std::string& what) { Hear(what); };
  }
  void Frame() {
    platform.Advance(20);
    if (strip != nullptr) strip->Draw();
  }
  void Hear(const std::string& what) {
    if (what == changesAt) Narrow();
    if (deletes && what.rfind("excluded", 0) == 0) strip.reset();
  }
  /// There is no room for all items any more.
  void Narrow() { strip->SetViewportSize(70, 70); }
  void PressGrip() {
    const Vector2 grip = strip->GetItems().GetAt(0).GetBounds().center;
    strip->OnLeftMouseDown(static_cast<int>(grip.x), static_cast<int>(grip.y));
  }
  void DragDown() {
    PressGrip();
    strip->OnMouseMove(400, 5);
    strip->OnLeftMouseUp(400, 5);
  }

  ManualPlatform platform;
  Journal journal;
  MemoryHub hub{LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0})};
  FrameRenderer renderer;
  std::unique_ptr<OpenToolbar> strip = std::make_unique<OpenToolbar>();
  JournalToolbarObserver observer{strip.get(), journal};
  std::string changesAt;  // what is told when the view becomes narrow
  bool deletes = false;
};

TEST_F(MortalStripTest, may_go_in_the_second_layout_of_a_dock) {
  for (const bool goes : {false, true}) {
    deletes = goes;
    changesAt = "dragged";
    strip->SetViewportSize(800, 600);
    strip->SetPosition(Toolbar::POSITION_RIGHT);
    for (int i = 0; i < 40; ++i) Frame();
    DragDown();
    EXPECT_EQ(strip == nullptr, goes);
  }
}

TEST_F(MortalStripTest, is_dragged_on_where_the_host_presses_the_grip_as_it_hears_of_the_drag) {
  observer.onHear = [this](const std::string& what) {
    if (what != "dragged") return;
    strip->OnLeftMouseUp(400, 5);
    PressGrip();
  };
  DragDown();
  EXPECT_TRUE(strip->open.drag.active);
  strip->Destroy();
  EXPECT_FALSE(strip->open.drag.active);
}

TEST_F(MortalStripTest, may_go_in_a_frame_of_its_way) {
  DragDown();
  platform.Advance(50);
  ASSERT_TRUE(strip->open.motion.IsCenterMoving());
  deletes = true;
  renderer.onFrame = [this] { Narrow(); };
  Frame();
  EXPECT_EQ(strip, nullptr);
}

TEST_F(MortalStripTest, may_go_in_a_frame_of_its_growth) {
  strip->SetItemExcluded(4, true);
  Frame();
  platform.Advance(50);
  ASSERT_TRUE(strip->open.motion.IsExtentMoving());
  ASSERT_FALSE(strip->open.motion.positionInProgress);
  deletes = true;
  renderer.onFrame = [this] { Narrow(); };
  Frame();
  EXPECT_EQ(strip, nullptr);
}

// ---- a navigation bar ----

class BarHostsTest : public ::testing::Test, public BarScene {};

TEST_F(BarHostsTest, answers_for_its_items) {
  Start();
  EXPECT_FALSE(bar.IsItemExcluded(NavigationBar::TAG_STORYBOARD));
  bar.SetItemExcluded(NavigationBar::TAG_STORYBOARD, true);
  EXPECT_TRUE(bar.IsItemExcluded(NavigationBar::TAG_STORYBOARD));
  EXPECT_TRUE(bar.IsFlyoutItemChosen(NavigationBar::TAG_FULL_NAVIGATION));
  EXPECT_FALSE(bar.IsFlyoutItemChosen(NavigationBar::TAG_TWO_D));
  EXPECT_TRUE(bar.IsItemEnabled(NavigationBar::TAG_MENU));
  bar.SetItemEnabled(NavigationBar::TAG_MENU, false);
  EXPECT_FALSE(bar.IsItemEnabled(NavigationBar::TAG_MENU));
}

TEST_F(BarHostsTest, passes_on_what_its_toolbar_makes_of_the_right_button) {
  class Taking : public Toolbar {
   public:
    bool OnRightMouseUp(int x, int /*y*/) override { return x > 0; }
  };
  class TakingBar : public NavigationBar {
    Toolbar* InstantiateToolbar() override { return std::make_unique<Taking>().release(); }
  } taking;
  taking.SetKorvane(&hub);
  taking.SetRenderer(&renderer);
  EXPECT_FALSE(taking.OnRightMouseUp(1, 1));
  taking.Create();
  EXPECT_TRUE(taking.OnRightMouseUp(1, 1));
  EXPECT_FALSE(taking.OnRightMouseUp(0, 1));
}

TEST_F(BarHostsTest, may_be_deleted_as_it_offers_what_there_is_no_room_for) {
  for (const bool goes : {false, true}) {
    auto mortal = std::make_unique<OpenNavigationBar>();
    JournalBarObserver offered(mortal.get(), journal);
    mortal->SetKorvane(&hub);
    mortal->SetRenderer(&renderer);
    mortal->AddObserver(&offered);
    offered.chosen = NavigationBar::TAG_MENU;
    offered.onHear = [&](const std::string& what) {
      if (goes && what == "more controls") mortal.reset();
    };
    ASSERT_TRUE(mortal->Create());
    journal.Take();
    const ToolbarItem more = MakeItem(NavigationBar::TAG_MORE_CONTROLS, 6, 12, 12);
    EXPECT_TRUE(mortal->open.toolbarObserver->OnItemMouseDown(more));
    EXPECT_EQ(mortal == nullptr, goes);
    EXPECT_EQ(journal.Count("clicked " + std::to_string(NavigationBar::TAG_MENU)), goes ? 0 : 1);
  }
}

// A host that creates the toolbar while it is filled hears of each item that is left out.
TEST(BarHosts, may_let_go_of_the_toolbar_in_each_frame_that_it_asks_for_while_it_is_filled) {
  TryInEachCall([](long number) {
    ActingHost frames;
    MischievousHub<ActingHost> hub(frames, LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}));
    RecordingRenderer renderer;
    Journal journal;
    OpenNavigationBar bar;
    JournalBarObserver observer(&bar, journal);
    bar.SetKorvane(&hub);
    bar.SetRenderer(&renderer);
    bar.AddObserver(&observer);
    bar.SetOrientorIsVisible(true);
    bar.SetActiveHelmDisc(DiscType::TwoD);
    observer.onHear = [&](const std::string& what) {
      if (what == "populate") bar.GetToolbar()->Create();
    };
    frames.ActIn(number, [&] { bar.Destroy(); });
    EXPECT_EQ(bar.Create(), number == 0);
    EXPECT_EQ(bar.GetToolbar() == nullptr, number != 0);
    return frames.GetCalls();
  });
}

}  // namespace
