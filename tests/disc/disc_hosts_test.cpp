// A disc and its menus with hosts that take something away just as it is used: a renderer, a hub, a ball, the
// menu or the disc itself.
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <utility>

#include "disc/disc_scene.h"
#include "support/acting_host.h"
#include "support/mischievous_hub.h"

using namespace Korvane;

namespace {

void RunOnce(std::function<void()>& action) {
  if (const std::function<void()> once = std::exchange(action, nullptr)) once();
}

/// Lets the host act, once, where a pass begins, where the cursor is set, and where this ends.
class HostRenderer : public MapRenderer {
 public:
  ~HostRenderer() override { RunOnce(onLeave); }
  bool BeginRender(const Box2& viewport, const CameraParameters& camera, RenderMode mode) override {
    const bool begun = MapRenderer::BeginRender(viewport, camera, mode);
    RunOnce(onBegin);
    return begun;
  }
  bool SetCursorIcon(CursorID id) override {
    const bool set = MapRenderer::SetCursorIcon(id);
    RunOnce(onCursor);
    return set;
  }
  bool DestroyIcon(DynamicIcon2D*& icon) override {
    const bool destroyed = MapRenderer::DestroyIcon(icon);
    RunOnce(onDestroyIcon);
    return destroyed;
  }

  DynamicIcon2D* CreateMessageHUD(const wchar_t* text) override {
    DynamicIcon2D* const icon = MapRenderer::CreateMessageHUD(text);
    RunOnce(onMessage);
    return icon;
  }
  void ReleaseTexture(TextureID id) override {
    MapRenderer::ReleaseTexture(id);
    RunOnce(onRelease);
  }

  std::function<void()> onBegin;
  std::function<void()> onMessage;
  std::function<void()> onRelease;
  std::function<void()> onCursor;
  std::function<void()> onDestroyIcon;
  std::function<void()> onLeave;
};

class ActingBall : public PivotBall {
 public:
  void Draw() override {
    PivotBall::Draw();
    RunOnce(onDraw);
  }
  std::function<void()> onDraw;
};

// ---- the disc ----

class DiscHosts : public ::testing::Test, public DiscScene {};

TEST_F(DiscHosts, a_disc_does_without_a_ball_that_cannot_be_made) {
  class Making : public OpenHelmDisc {
    PivotBall* InstantiatePivotBall() override { return nullptr; }
  } making;
  making.SetKorvane(&hub);
  making.SetRenderer(&renderer);
  EXPECT_TRUE(making.Create());
  EXPECT_EQ(making.GetPivotBall(), nullptr);
  making.SetActiveDisc(DiscType::TwoD);
  making.Draw();
  making.Destroy();
}

TEST_F(DiscHosts, the_ball_of_the_disc_stays_its_own_when_it_is_set) {
  Start();
  PivotBall* const own = disc.GetPivotBall();
  disc.SetPivotBall(own);
  EXPECT_EQ(disc.GetPivotBall(), own);
  EXPECT_EQ(disc.open.ownBall.get(), own);
  disc.Destroy();
  EXPECT_EQ(disc.GetPivotBall(), nullptr);
}

TEST_F(DiscHosts, a_renderer_that_goes_while_it_is_handed_on_is_none) {
  Start();
  ASSERT_NE(disc.GetPivotBall(), nullptr);
  disc.GetPivotBall()->SetLabel(STRING_PIVOT);
  HostRenderer former;
  disc.SetRenderer(&former);
  auto next = std::make_unique<MapRenderer>();
  bool gone = false;
  former.onDestroyIcon = [&] {
    next.reset();
    gone = true;
  };
  disc.SetRenderer(next.get());
  EXPECT_TRUE(gone);
  EXPECT_EQ(disc.GetRenderer(), nullptr);
  EXPECT_EQ(disc.GetTrackMenu(DiscType::TwoD)->GetRenderer(), nullptr);
  EXPECT_EQ(disc.GetTrackMenu(DiscType::FullNavigation)->GetRenderer(), nullptr);
  disc.SetRenderer(&renderer);
}

TEST_F(DiscHosts, its_timers_run_without_a_hub_and_on_a_disc_that_was_never_created) {
  disc.SetKorvane(nullptr);
  disc.SetActiveDisc(DiscType::TwoD);
  platform.Advance(2000);
  EXPECT_EQ(disc.GetActiveDisc(), DiscType::TwoD);
  disc.SetActiveDisc(DiscType::None);
  EXPECT_TRUE(disc.open.timers.closeHUD.IsRunning());
  platform.Advance(3000);
  EXPECT_FALSE(disc.open.timers.closeHUD.IsRunning());
  EXPECT_EQ(platform.GetTimerCount(), 0);
}

TEST_F(DiscHosts, a_host_that_draws_the_ball_may_delete_the_disc) {
  ActingBall ball;
  auto mortal = std::make_unique<OpenHelmDisc>();
  mortal->GetParameters().suppressWelcome = true;
  mortal->SetKorvane(&hub);
  mortal->SetRenderer(&renderer);
  mortal->SetPivotBall(&ball);
  mortal->Create();
  mortal->SetViewportSize(800, 600);
  mortal->SetActiveDisc(DiscType::TwoD);
  ball.onDraw = [&] { mortal.reset(); };
  const Lifeline::Watch alive(mortal->GetLifeline());
  renderer.ClearCalls();
  mortal->Draw();
  EXPECT_FALSE(alive);
  EXPECT_EQ(renderer.CountCalls("BeginRender"), 0);  // nothing of the disc
}

// The menu that opens is told of keys that went down on another one.
TEST_F(DiscHosts, a_listener_may_delete_the_disc_as_it_is_told_of_the_keys_of_now) {
  auto mortal = std::make_unique<OpenHelmDisc>();
  mortal->GetParameters().suppressWelcome = true;
  mortal->SetKorvane(&hub);
  mortal->SetRenderer(&renderer);
  mortal->Create();
  mortal->SetViewportSize(800, 600);
  mortal->OnKeyDown(KEY_SHIFT);
  mortal->OnKeyDown(KEY_CONTROL);
  TrackMenu& menu = *mortal->GetTrackMenu(DiscType::TwoD);
  TrackMenu::Region region = menu.GetActiveRegion();
  auto listener = std::make_unique<JournalListener>("one", journal, &menu);
  listener->onHear = [&](const std::string&) { mortal.reset(); };
  region.listener = listener.get();
  menu.SetActiveRegion(region);
  mortal->SetActiveDisc(DiscType::TwoD);
  EXPECT_EQ(mortal, nullptr);
  EXPECT_EQ(journal.Take(), Lines{"one.OnKeyDown(0)"});
}

// The host shows a menu that is being filled, which asks for a frame from then on.
TEST_F(DiscHosts, a_disc_may_go_in_any_frame_that_is_asked_for_while_it_is_filled) {
  TryInEachCall([this](long number) {
    ActingHost frames;
    MischievousHub<ActingHost> acting(frames, LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}));
    auto mortal = std::make_unique<OpenHelmDisc>();
    mortal->GetParameters().alwaysShowWelcome = true;
    mortal->SetKorvane(&acting);
    mortal->SetRenderer(&renderer);
    TrackMenu* const first = mortal->GetTrackMenu(static_cast<DiscType>(0));
    TrackMenu* const welcome = mortal->GetWelcomeTrackMenu();
    renderer.onImage = [&] {
      for (TrackMenu* const menu : {first, welcome}) {
        if (menu->GetRegion(0) == nullptr) return menu->SetVisible(true);
      }
    };
    frames.ActIn(number, [&] {
      renderer.onImage = [] {};
      mortal.reset();
    });
    mortal->Create();
    EXPECT_EQ(mortal == nullptr, number != 0);
    renderer.onImage = nullptr;
    return frames.GetCalls();
  });
}

TEST_F(DiscHosts, a_disc_may_go_as_one_that_is_open_is_filled_anew_or_disabled) {
  MapImage whole(8, 8);
  whole.Fill(0, 0, 8, 8, 0, 0, 255);
  for (const int map : {17, 26, 35, 70, 47, 53, 59}) renderer.images[map] = whole;
  using Step = void (*)(OpenHelmDisc&);
  for (const Step step : {Step([](OpenHelmDisc& each) { each.Create(); }),
                          Step([](OpenHelmDisc& each) { each.SetEnabled(false); })}) {
    ActingHost frames;
    MischievousHub<ActingHost> acting(frames, LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}));
    auto mortal = std::make_unique<OpenHelmDisc>();
    mortal->GetParameters().suppressWelcome = true;
    mortal->SetKorvane(&acting);
    mortal->SetRenderer(&renderer);
    mortal->Create();
    mortal->SetViewportSize(800, 600);
    mortal->SetActiveDisc(DiscType::TwoD);
    TrackMenu& menu = *mortal->GetActiveTrackMenu();
    menu.SetLocation(400, 300);
    mortal->OnMouseMove(400, 300);
    menu.SetActiveRegion(*menu.GetRegion(0));
    bool isGone = false;
    frames.ActIn(1, [&] {
      mortal.reset();
      isGone = true;
    });
    step(*mortal);
    EXPECT_TRUE(isGone);
    frames.ActIn(0, nullptr);
  }
}

TEST_F(DiscHosts, a_disc_may_go_as_its_renderer_makes_a_note_or_lets_a_picture_go) {
  HostRenderer host;
  MapRenderer other;
  for (const bool making : {true, false}) {
    PivotBall ball;
    auto mortal = std::make_unique<OpenHelmDisc>();
    mortal->GetParameters().suppressWelcome = true;
    mortal->SetPivotBall(&ball);
    mortal->SetRenderer(&host);
    (making ? host.onMessage : host.onRelease) = [&] { mortal.reset(); };
    EXPECT_EQ(mortal->Create(), !making);
    if (!making) mortal->SetActiveDisc(DiscType::TwoD);
    if (!making) mortal->SetRenderer(&other);
    EXPECT_EQ(mortal, nullptr);
  }
}

TEST_F(DiscHosts, a_disc_may_go_as_a_host_fills_it_by_itself) {
  class Filling : public OpenHelmDisc {
   public:
    bool InitRegions(DiscType /*type*/) override {
      onFill();
      return true;
    }
    std::function<void()> onFill;
  };
  auto mortal = std::make_unique<Filling>();
  mortal->GetParameters().suppressWelcome = true;
  mortal->SetRenderer(&renderer);
  const std::function<void()> deleteIt = [&] { mortal.reset(); };
  mortal->onFill = [&deleteIt] { deleteIt(); };
  EXPECT_FALSE(mortal->Create());
  EXPECT_EQ(mortal, nullptr);
}

TEST_F(DiscHosts, a_ball_that_cannot_be_created_is_told_by_the_disc) {
  class FailingBall : public PivotBall {
   public:
    bool Create() override { return false; }
  };
  class Making : public OpenHelmDisc {
    PivotBall* InstantiatePivotBall() override { return std::make_unique<FailingBall>().release(); }
  } making;
  making.GetParameters().suppressWelcome = true;
  making.SetKorvane(&hub);
  making.SetRenderer(&renderer);
  EXPECT_FALSE(making.Create());
  EXPECT_NE(making.GetTrackMenu(DiscType::TwoD)->GetRegion(0), nullptr);
  making.Destroy();
}

// ---- the welcome screen ----

class WelcomeHostsTest : public DiscHosts {
 protected:
  std::unique_ptr<OpenHelmDisc> Make(CameraOperations& with) {
    auto made = std::make_unique<OpenHelmDisc>();
    made->GetParameters().alwaysShowWelcome = true;
    made->SetKorvane(&with);
    made->SetRenderer(&renderer);
    return made;
  }
};

TEST_F(WelcomeHostsTest, a_listener_that_a_host_gives_the_screen_may_delete_the_disc) {
  std::unique_ptr<OpenHelmDisc> mortal = Make(hub);
  mortal->Create();
  TrackMenu& menu = *mortal->GetWelcomeTrackMenu();
  ASSERT_TRUE(menu.GetVisible());
  auto listener = std::make_unique<JournalListener>("one", journal, &menu);
  listener->onHear = [&](const std::string&) { mortal.reset(); };
  TrackMenu::Region region;
  region.listener = listener.get();
  menu.SetActiveRegion(region);
  EXPECT_FALSE(mortal->OnLeftMouseDown(1, 1));
  EXPECT_EQ(mortal, nullptr);
}

TEST_F(WelcomeHostsTest, a_page_without_a_map_is_turned_to_at_any_scale) {
  std::unique_ptr<OpenHelmDisc> welcome = Make(hub);
  int images = 0;
  renderer.onImage = [&] {
    if (welcome->open.menus[6]->GetRegion(0) != nullptr && ++images == 1)
      renderer.FailAlways("CreateImageData");
  };
  welcome->GetParameters().welcomeStartsAdvanced = true;
  welcome->Create();
  renderer.onImage = nullptr;
  renderer.Succeed("CreateImageData");
  hub.GetApplicationParameters().pixels_per_point = 2.0F;
  welcome->SetWelcomeMenuPosition(0, 0);
  TrackMenu::Region toBasic;
  toBasic.color = Vector3(0, 0.5, 0);
  welcome->GetWelcomeTrackMenu()->SetActiveRegion(toBasic);
  welcome->open.welcome.over = true;
  welcome->ClickWelcome();
  EXPECT_FALSE(welcome->open.welcome.advancedPage);
  welcome->Destroy();
}

// The screen shows, is filled anew, is moved over, and clicked; the disc goes in each call that asks for a
// frame.
TEST_F(WelcomeHostsTest, the_disc_may_be_deleted_in_any_frame_that_the_screen_asks_for) {
  const auto use = [this](long number) {
    ActingHost frames;
    MischievousHub<ActingHost> acting(frames, LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}));
    MapImage whole(8, 8);
    whole.Fill(0, 0, 8, 8, 255, 0, 0);  // its ground
    renderer.images[83] = renderer.images[88] = whole;
    std::unique_ptr<OpenHelmDisc> mortal = Make(acting);
    mortal->GetParameters().welcomeStartsAdvanced = false;
    frames.ActIn(number, [&] { mortal.reset(); });
    const auto step = [&](const std::function<void()>& action) {
      if (mortal != nullptr) action();
    };
    step([&] { mortal->Create(); });
    step([&] { mortal->SetViewportSize(800, 600); });
    step([&] { mortal->SetWelcomeMenuPosition(0, 0); });
    step([&] { mortal->Create(); });
    step([&] { mortal->OnMouseMove(256, 256); });
    step([&] { mortal->GetWelcomeTrackMenu()->GetActiveRegion().color = Vector3(0.5, 0, 0); });
    step([&] { mortal->OnLeftMouseDown(256, 256); });  // turns the page
    step([&] { mortal->OnLeftMouseUp(256, 256); });
    step([&] { mortal->OnMouseMove(256, 256); });
    step([&] { mortal->OnLeftMouseDown(256, 256); });  // chooses a disc
    EXPECT_EQ(mortal == nullptr, number > 0);
    step([&] { EXPECT_NE(mortal->GetActiveDisc(), DiscType::None); });
    return frames.GetCalls();
  };
  TryInEachCall(use);
}

// ---- a menu ----

class MenuHosts : public ::testing::Test {
 protected:
  MenuHosts() { Make(); }

  void Make() {
    menu = std::make_unique<OpenTrackMenu>();
    menu->SetRendererShared(true);
    menu->SetKorvane(&hub);
    menu->SetRenderer(&renderer);
    menu->SetRegionMap(static_cast<TextureID>(17));
    menu->SetViewportSize(800, 600);
    menu->SetLocation(400, 300);
    TrackMenu::Region region;
    region.color = Vector3(1, 1, 1);
    region.icon = std::make_unique<ResourceIcon2D>(static_cast<TextureID>(90)).release();
    region.tooltipString = static_cast<StringID>(5);
    region.tooltipHUDString = static_cast<StringID>(6);
    region.wrap = true;
    listener = new JournalListener("one", journal, menu.get());
    region.listener = listener;
    menu->AddRegion(region);
    menu->SetVisible(true);
    menu->OnMouseMove(400, 300);
    menu->SetActiveRegion(*menu->GetRegion(0));
    renderer.drawnTexts.clear();
  }
  void Delete() { menu.reset(); }

  ManualPlatform platform;
  Journal journal;
  ActingHost frames;
  MischievousHub<ActingHost> hub{frames, LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0})};
  HostRenderer renderer;
  JournalListener* listener = nullptr;  // the menu's
  std::unique_ptr<OpenTrackMenu> menu;
};

TEST_F(MenuHosts, may_delete_it_in_each_step_of_its_end) {
  frames.ActIn(1, [this] { Delete(); });
  EXPECT_TRUE(menu->Destroy());
  EXPECT_EQ(menu, nullptr);
  Make();
  listener->onHear = [this](const std::string& what) {
    if (what == "OnTrackMenuActivate(false)") Delete();
  };
  EXPECT_TRUE(menu->Destroy());
  EXPECT_EQ(menu, nullptr);
}

TEST_F(MenuHosts, may_delete_it_as_the_image_of_a_map_is_made) {
  renderer.onImage = [this] { Delete(); };
  EXPECT_FALSE(menu->SetRegionMap(static_cast<TextureID>(26)));
  EXPECT_EQ(menu, nullptr);
}

TEST_F(MenuHosts, may_delete_it_as_its_context_menu_is_open) {
  renderer.onMenu = [this] { Delete(); };
  EXPECT_TRUE(menu->OpenMenu());
  EXPECT_EQ(menu, nullptr);
}

TEST_F(MenuHosts, may_delete_it_as_the_cursor_is_set_after_its_pass) {
  journal.Take();
  renderer.onCursor = [this] { Delete(); };
  menu->Draw();
  EXPECT_EQ(menu, nullptr);
  EXPECT_EQ(journal.Count("one.OnDraw"), 0);
}

TEST_F(MenuHosts, a_tooltip_is_not_drawn_on_a_menu_that_is_hidden_as_its_picture_is) {
  for (const bool hides : {false, true}) {
    menu->GetActiveRegion().tooltip->SetVisible(true);
    menu->open.rest.SetTotalTime(3.0);
    renderer.onRender = [this, hides] {
      if (hides) menu->SetVisible(false);
    };
    renderer.drawnTexts.clear();
    menu->DrawTrackMenu();
    EXPECT_EQ(renderer.drawnTexts.size(), hides ? 0U : 1U);
  }
  renderer.onRender = nullptr;
}

TEST_F(MenuHosts, the_note_of_a_drag_stays_at_the_mouse_in_a_view_that_loses_its_size) {
  menu->OnLeftMouseDown(400, 300);
  menu->SetVisible(false);
  menu->OnMouseMove(900, 310);
  renderer.onBegin = [this] { menu->SetViewportSize(0, 0); };
  renderer.drawnTexts.clear();
  menu->DrawTrackMenu();
  ASSERT_EQ(renderer.drawnTexts.size(), 1U);
  EXPECT_EQ(renderer.drawnTexts[0].x, 900);
}

TEST_F(MenuHosts, a_tooltip_goes_with_its_renderer) {
  auto mortal = std::make_unique<HostRenderer>();
  menu->SetRenderer(mortal.get());
  menu->OnMouseMove(401, 300);
  ASSERT_NE(menu->GetRegion(0)->tooltip, nullptr);
  menu->SetActiveRegion(*menu->GetRegion(0));
  platform.Advance(3000);
  mortal.reset();
  EXPECT_FALSE(menu->UpdateTimer());
}

TEST_F(MenuHosts, a_renderer_that_is_set_while_another_is_stays) {
  MapRenderer second;
  MapRenderer third;
  bool isSet = false;
  listener->onHear = [&](const std::string& what) {
    if (what == "OnTrackMenuActivate(false)" && !std::exchange(isSet, true)) menu->SetRenderer(&third);
  };
  menu->SetRenderer(&second);
  EXPECT_EQ(menu->GetRenderer(), &third);
  Delete();
}

TEST_F(MenuHosts, a_renderer_that_one_sets_as_it_is_deleted_stays) {
  auto* const first = std::make_unique<HostRenderer>().release();
  auto* const second = std::make_unique<MapRenderer>().release();
  const auto third = std::make_unique<MapRenderer>();
  menu->SetRenderer(first);
  menu->SetRendererShared(false);
  first->onLeave = [&] {
    menu->SetRendererShared(true);
    menu->SetRenderer(third.get());
  };
  menu->SetRenderer(second);
  EXPECT_EQ(menu->GetRenderer(), third.get());
  EXPECT_NE(menu->GetRegion(0)->tooltip, nullptr);
  Delete();
  delete second;
}

TEST_F(MenuHosts, an_active_region_goes_with_any_picture_of_a_replaced_disabled_one) {
  for (const bool overlay : {false, true}) {
    TrackMenu::Region disabled;
    disabled.icon = std::make_unique<ResourceIcon2D>(static_cast<TextureID>(91)).release();
    disabled.overlayIcon = std::make_unique<ResourceIcon2D>(static_cast<TextureID>(92)).release();
    ASSERT_TRUE(menu->SetDisabledRegion(disabled));
    TrackMenu::Region active;
    active.cursorID = CURSOR_PAN;
    if (overlay) {
      active.overlayIcon = disabled.overlayIcon;
    } else {
      active.icon = disabled.icon;
    }
    menu->SetActiveRegion(active);
    ASSERT_TRUE(menu->SetDisabledRegion({}));
    EXPECT_EQ(menu->GetActiveRegion().icon, nullptr);
    EXPECT_EQ(menu->GetActiveRegion().overlayIcon, nullptr);
  }
}

// A press that was put away is not handed on.
TEST(MenuPress, is_kept_from_the_next_region_while_the_menu_is_put_away) {
  MenuScene scene;
  scene.Open();
  scene.menu.SetLocked(true);
  scene.menu.OnMouseMove(370, 330);
  ASSERT_EQ(scene.GetActive(), "red");
  scene.menu.OnLeftMouseDown(370, 330);
  scene.journal.Take();
  scene.listeners["red"]->onHear = [&](const std::string& what) {
    if (what == "OnTrackMenuActivate(false)") scene.menu.OnMouseMove(430, 330);
  };
  scene.menu.SetVisible(false);
  scene.menu.SetActive(false);
  EXPECT_EQ(scene.GetActive(), "green");
  EXPECT_EQ(scene.journal.Count("green.OnLeftMouseDown(430, 330)"), 0);
  EXPECT_EQ(scene.journal.Count("red.OnLeftMouseUp(430, 330)"), 0);
}

}  // namespace
