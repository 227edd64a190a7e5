// Life, opening and closing, settings and drawing of a disc. The mouse and the keys: helm_disc_events_test.
#include "korvane/helm_disc.h"

#include <gtest/gtest.h>

#include <cmath>
#include <initializer_list>
#include <limits>
#include <memory>
#include <utility>
#include <vector>

#include "disc/disc_scene.h"
#include "support/allocation_counter.h"
#include "support/counting_renderer.h"
#include "support/virtual_slot.h"

using namespace Korvane;

namespace {

class HelmDiscTest : public ::testing::Test, public DiscScene {};

TEST(HelmDiscSlots, stand_in_their_order) {
  using D = OpenHelmDisc;
  const int slots[] = {
      VirtualSlot(&D::SetKorvane),
      VirtualSlot(&D::GetKorvane),
      VirtualSlot(&D::SetRenderer),
      VirtualSlot(&D::Create),
      VirtualSlot(&D::Destroy),
      VirtualSlot(&D::SetActiveDisc),
      VirtualSlot(&D::GetActiveDisc),
      VirtualSlot(&D::Draw),
      VirtualSlot(&D::DrawPivotBall),
      VirtualSlot(&D::DrawOverlay),
      VirtualSlot(&D::OpenMenu),
      VirtualSlot(&D::OnMouseMove),
      VirtualSlot(&D::OnLeftMouseDown),
      VirtualSlot(&D::OnLeftMouseUp),
      VirtualSlot(&D::OnKeyDown),
      VirtualSlot(&D::OnKeyUp),
      VirtualSlot(&D::InstantiatePivotBall),
      VirtualSlot(&D::InitRegions),
      VirtualSlot(&D::InitWelcome),
  };
  int expected = 2;  // past the destructor
  for (const int slot : slots) EXPECT_EQ(slot, expected++);
}

TEST(HelmDiscObserverSlots, stand_in_their_order) {
  using O = HelmDiscObserver;
  const int slots[] = {
      VirtualSlot(&O::OnActivated),      VirtualSlot(&O::OnClosed),         VirtualSlot(&O::OnClicked),
      VirtualSlot(&O::OnDragBegin),      VirtualSlot(&O::OnDragEnd),        VirtualSlot(&O::OnKeyDown),
      VirtualSlot(&O::OnKeyUp),          VirtualSlot(&O::OnWelcomeClicked), VirtualSlot(&O::OnWelcomeClosed),
      VirtualSlot(&O::OnWelcomeEntered), VirtualSlot(&O::OnWelcomeExited),
  };
  int expected = 2;
  for (const int slot : slots) EXPECT_EQ(slot, expected++);
}

TEST(HelmDiscTypes, have_their_numbers) {
  EXPECT_EQ(static_cast<int>(DiscType::ViewObject), 0);
  EXPECT_EQ(static_cast<int>(DiscType::TourBuilding), 1);
  EXPECT_EQ(static_cast<int>(DiscType::FullNavigation), 2);
  EXPECT_EQ(static_cast<int>(DiscType::TwoD), 3);
  EXPECT_EQ(static_cast<int>(DiscType::MiniViewObject), 4);
  EXPECT_EQ(static_cast<int>(DiscType::MiniTourBuilding), 5);
  EXPECT_EQ(static_cast<int>(DiscType::MiniFullNavigation), 6);
  EXPECT_EQ(static_cast<int>(DiscType::None), 8);
  for (int type = 0; type < 7; ++type) {
    EXPECT_EQ(HelmDisc::IsLargeDisc(static_cast<DiscType>(type)), type < 4);
    EXPECT_EQ(HelmDisc::IsBasicDisc(static_cast<DiscType>(type)), type < 2);
  }
}

TEST(HelmDiscZones, have_their_numbers) {
  using Z = HelmDiscZone;
  int number = 0;
  for (const Z zone : {Z::Center, Z::Close, Z::Forward, Z::Look, Z::Menu, Z::Orbit, Z::Pan, Z::Rewind,
                       Z::Walk, Z::UpDown, Z::Zoom})
    EXPECT_EQ(static_cast<int>(zone), number++);
}

TEST(HelmDiscSettings, begin_with_their_defaults) {
  OpenHelmDisc disc;
  const HelmDiscParameters& p = disc.GetParameters();
  EXPECT_FALSE(p.alwaysShowWelcome);
  EXPECT_FALSE(p.welcomeSeen);
  EXPECT_TRUE(p.welcomeStartsAdvanced);
  EXPECT_FALSE(p.suppressWelcome);
  EXPECT_EQ(p.miniDiscSize, 64);
  EXPECT_EQ(p.largeDiscSize, 128);
  EXPECT_EQ(p.largeDiscOpacity, 1.0);
  EXPECT_EQ(p.miniDiscOpacity, 1.0);
  EXPECT_TRUE(p.showMessages);
  EXPECT_TRUE(p.showTooltips);
  EXPECT_TRUE(p.showToolHUDs);
  EXPECT_FALSE(p.invertLookVertical);
  EXPECT_EQ(p.walkSpeedFactor, 1.0);
  EXPECT_FALSE(p.clickZoom);
  EXPECT_TRUE(p.keepSceneUpright);
  EXPECT_EQ(p.walkRewindInterval, 5.0);
  EXPECT_TRUE(p.lookAtOnShift);
  EXPECT_TRUE(p.rectZoomOnShift);
}

TEST(HelmDiscSettings, have_named_values) {
  using P = HelmDiscParameters;
  EXPECT_EQ(P::SIZE_MINI_SMALL, 32);
  EXPECT_EQ(P::SIZE_MINI_NORMAL, 64);
  EXPECT_EQ(P::SIZE_MINI_LARGE, 128);
  EXPECT_EQ(P::SIZE_MINI_EXTRA, 256);
  EXPECT_EQ(P::SIZE_LARGE_SMALL, 64);
  EXPECT_EQ(P::SIZE_LARGE_NORMAL, 128);
  EXPECT_EQ(P::SIZE_LARGE_LARGE, 256);
  EXPECT_EQ(P::OPACITY_25, 0.5);
  EXPECT_EQ(P::OPACITY_50, 1.0);
  EXPECT_EQ(P::OPACITY_75, 2.0);
  EXPECT_EQ(P::OPACITY_100, 3.0);
  EXPECT_EQ(P::minimumSpeedFactor, 0.1);
  EXPECT_EQ(P::maximumSpeedFactor, 50.0);
}

TEST(HelmDisc, begins_closed_with_a_history_and_a_welcome_menu) {
  OpenHelmDisc disc;
  EXPECT_EQ(disc.GetActiveDisc(), DiscType::None);
  EXPECT_EQ(disc.GetActiveTrackMenu(), nullptr);
  EXPECT_EQ(disc.GetDefaultDiscType(), DiscType::FullNavigation);
  EXPECT_NE(disc.GetHistory(), nullptr);
  EXPECT_NE(disc.GetWelcomeTrackMenu(), nullptr);
  EXPECT_EQ(disc.GetPivotBall(), nullptr);
  EXPECT_FALSE(disc.GetEnabled());
  EXPECT_FALSE(disc.IsDragActive());
  EXPECT_FALSE(disc.WantCursorWrapping());
  EXPECT_EQ(disc.GetCurrentCursor(), CURSOR_ARROW);
  EXPECT_FALSE(disc.AddObserver(nullptr));
  disc.RemoveObserver(nullptr);
}

TEST(HelmDisc, without_collaborators_does_nothing) {
  OpenHelmDisc disc;
  EXPECT_FALSE(disc.Create());
  for (int type = -1; type < 10; ++type) {
    disc.SetActiveDisc(static_cast<DiscType>(type));
    disc.OnMouseMove(1, 2);
    disc.OnLeftMouseDown(1, 2);
    disc.Draw();
    disc.OnLeftMouseUp(1, 2);
    disc.OnKeyDown(KEY_SHIFT);
    disc.OnKeyUp(KEY_SHIFT);
    EXPECT_FALSE(disc.OpenMenu());
  }
  disc.IncrementWalkSpeed();
  disc.SetVisible(false);
  disc.SetViewportSize(0, -1);
  EXPECT_TRUE(disc.Destroy());
}

// ---- create ----

TEST_F(HelmDiscTest, create_fails_at_the_first_map_that_cannot_be_had) {
  renderer.FailOnce("CreateImageData");
  EXPECT_FALSE(disc.Create());
  EXPECT_EQ(renderer.CountCalls("CreateImageData"), 1);
  EXPECT_EQ(disc.GetTrackMenu(DiscType::ViewObject)->GetRegion(0), nullptr);
  disc.SetActiveDisc(DiscType::ViewObject);
  disc.OnMouseMove(10, 10);
  disc.Draw();
  EXPECT_TRUE(disc.Create());
  EXPECT_EQ(renderer.CountCalls("CreateImageData"), 8);
}

TEST_F(HelmDiscTest, create_twice_fills_each_disc_once) {
  EXPECT_TRUE(disc.Create());
  EXPECT_TRUE(disc.Create());
  EXPECT_NE(disc.GetTrackMenu(DiscType::TwoD)->GetRegion(4), nullptr);
  EXPECT_EQ(disc.GetTrackMenu(DiscType::TwoD)->GetRegion(5), nullptr);
  EXPECT_TRUE(disc.Destroy());
  EXPECT_TRUE(disc.Destroy());
  EXPECT_TRUE(disc.Create());
  EXPECT_EQ(disc.GetTrackMenu(DiscType::TwoD)->GetRegion(5), nullptr);
}

TEST_F(HelmDiscTest, create_closes_a_disc_that_is_filled_anew) {
  Start();
  disc.SetActiveDisc(DiscType::TwoD);
  Forget();
  EXPECT_TRUE(disc.Create());
  EXPECT_EQ(disc.GetActiveDisc(), DiscType::None);
  EXPECT_EQ(journal.lines, (Lines{"OnClosed"}));
  disc.SetActiveDisc(DiscType::TwoD);
  EXPECT_TRUE(disc.GetActiveTrackMenu()->GetVisible());
}

// A host may hide the menu of an open disc.
TEST_F(HelmDiscTest, a_press_on_a_menu_that_was_put_away_ends_when_the_disc_closes) {
  OpenOn(DiscType::FullNavigation, Vector3(0, 1, 0));  // pan
  TrackMenu& menu = *disc.GetActiveTrackMenu();
  menu.SetVisible(false);
  menu.SetActive(false);
  disc.OnLeftMouseDown(400, 300);
  ASSERT_TRUE(hub.IsOperationActive(OPERATION_PAN));
  disc.SetActiveDisc(DiscType::None);
  EXPECT_FALSE(hub.IsOperationActive(OPERATION_PAN));
}

TEST_F(HelmDiscTest, wires_a_pivot_ball_of_another_kind_too) {
  class Making : public OpenHelmDisc {
    PivotBall* InstantiatePivotBall() override { return std::make_unique<PivotBall>().release(); }
  } making;
  making.SetKorvane(&hub);
  making.SetRenderer(&renderer);
  EXPECT_TRUE(making.Create());
  ASSERT_NE(making.GetPivotBall(), nullptr);
  EXPECT_EQ(making.GetPivotBall()->GetKorvane(), &hub);
  making.Destroy();
}

TEST_F(HelmDiscTest, makes_a_pivot_ball_of_its_own_only_where_none_is_set) {
  class Making : public OpenHelmDisc {
   public:
    PivotBall* InstantiatePivotBall() override {
      ++made;
      return OpenHelmDisc::InstantiatePivotBall();
    }
    int made = 0;
  } making;
  making.SetKorvane(&hub);
  making.SetRenderer(&renderer);
  making.Create();
  EXPECT_EQ(making.made, 1);
  ASSERT_NE(making.GetPivotBall(), nullptr);
  EXPECT_EQ(making.GetPivotBall()->GetKorvane(), &hub);
  making.Destroy();
  EXPECT_EQ(making.GetPivotBall(), nullptr);
  {
    PivotBall given;
    making.SetPivotBall(&given);
    making.Create();
    EXPECT_EQ(making.made, 1);
    EXPECT_EQ(making.GetPivotBall(), &given);
    making.Destroy();  // the ball is the caller's
    EXPECT_EQ(making.GetPivotBall(), nullptr);
    making.SetPivotBall(&given);
  }
  EXPECT_EQ(making.GetPivotBall(), nullptr);  // forgotten with its end
}

// welcomeSeen, alwaysShowWelcome, suppressWelcome, whether the menu stays.
TEST(HelmDiscWelcome, is_kept_only_where_it_is_wanted) {
  const bool rows[][4] = {{false, false, false, true}, {true, false, false, false},
                          {true, true, false, true},   {false, true, false, true},
                          {false, false, true, false}, {true, false, true, false},
                          {true, true, true, false},   {false, true, true, false}};
  MapRenderer renderer;
  for (const auto& [seen, always, suppressed, kept] : rows) {
    OpenHelmDisc disc;
    disc.SetRenderer(&renderer);
    disc.GetParameters().welcomeSeen = seen;
    disc.GetParameters().alwaysShowWelcome = always;
    disc.GetParameters().suppressWelcome = suppressed;
    EXPECT_TRUE(disc.Create());
    EXPECT_EQ(disc.GetWelcomeTrackMenu() != nullptr, kept);
    EXPECT_EQ(disc.InitWelcome(), kept);
    EXPECT_FALSE(disc.IsOverWelcome());
    disc.SetActiveDisc(DiscType::TwoD);
    disc.OnMouseMove(1, 2);
    disc.OnLeftMouseDown(1, 2);
    disc.OnLeftMouseUp(1, 2);
    disc.SetWelcomeMenuPosition(3, 4);
    disc.Destroy();
  }
}

TEST_F(HelmDiscTest, tells_of_the_end_of_the_welcome_screen_when_a_disc_opens) {
  disc.GetParameters().suppressWelcome = false;
  Start();
  disc.SetActiveDisc(DiscType::TwoD);
  EXPECT_EQ(journal.Take(), (Lines{"OnWelcomeClosed", "OnActivated(3)"}));
  EXPECT_FALSE(disc.GetWelcomeTrackMenu()->GetEnabled());
  EXPECT_FALSE(disc.GetWelcomeTrackMenu()->GetActive());
}

TEST_F(HelmDiscTest, hands_its_collaborators_on) {
  Start();
  for (int kind = 0; kind < 7; ++kind) {
    const TrackMenu* const menu = disc.GetTrackMenu(static_cast<DiscType>(kind));
    EXPECT_EQ(menu->GetKorvane(), &hub);
    EXPECT_EQ(menu->GetRenderer(), &renderer);
    EXPECT_EQ(menu->GetViewportWidth(), 800);
    EXPECT_EQ(menu->GetViewportHeight(), 600);
  }
  disc.SetKorvane(nullptr);
  disc.SetRenderer(nullptr);
  EXPECT_EQ(disc.GetKorvane(), nullptr);
  EXPECT_EQ(disc.GetRenderer(), nullptr);
  EXPECT_EQ(disc.GetTrackMenu(DiscType::TwoD)->GetKorvane(), nullptr);
  EXPECT_EQ(disc.GetTrackMenu(DiscType::TwoD)->GetRenderer(), nullptr);
}

// ---- opening and closing ----

TEST_F(HelmDiscTest, opens_and_closes_a_kind) {
  Start();
  disc.SetActiveDisc(DiscType::MiniTourBuilding);
  EXPECT_EQ(disc.GetActiveDisc(), DiscType::MiniTourBuilding);
  TrackMenu* const menu = disc.GetActiveTrackMenu();
  EXPECT_EQ(menu, disc.GetTrackMenu(DiscType::MiniTourBuilding));
  EXPECT_TRUE(menu->GetVisible());
  EXPECT_TRUE(menu->GetActive());
  EXPECT_EQ(menu->GetWidth(), 64);
  EXPECT_TRUE(disc.GetEnabled());
  EXPECT_EQ(disc.GetDefaultDiscType(), DiscType::MiniTourBuilding);
  EXPECT_EQ(journal.Take(), Lines{"OnActivated(5)"});
  EXPECT_TRUE(disc.open.timers.tooltip.IsRunning());
  EXPECT_GT(renderer.CountCalls("LoadTexture"), 0);  // applied
  EXPECT_GT(hub.requested, 0);

  disc.SetActiveDisc(DiscType::None);
  EXPECT_EQ(disc.GetActiveDisc(), DiscType::None);
  EXPECT_FALSE(menu->GetVisible());
  EXPECT_FALSE(menu->GetActive());
  EXPECT_EQ(journal.Take(), Lines{"OnClosed"});
  EXPECT_FALSE(disc.open.timers.tooltip.IsRunning());
  EXPECT_TRUE(disc.open.timers.closeHUD.IsRunning());
  EXPECT_EQ(renderer.CountCalls("LoadTexture"), renderer.CountCalls("ReleaseTexture"));
  EXPECT_EQ(renderer.GetLiveIconCount(), 2);  // the close note and the label of the pivot ball
}

TEST_F(HelmDiscTest, changes_from_kind_to_kind) {
  Start();
  disc.SetActiveDisc(DiscType::TwoD);
  disc.SetActiveDisc(DiscType::ViewObject);
  EXPECT_FALSE(disc.GetTrackMenu(DiscType::TwoD)->GetActive());
  EXPECT_TRUE(disc.GetTrackMenu(DiscType::ViewObject)->GetVisible());
  EXPECT_EQ(journal.Take(), (Lines{"OnActivated(3)", "OnActivated(0)"}));
  disc.SetActiveDisc(DiscType::ViewObject);
  EXPECT_EQ(journal.Take(), Lines());
  disc.SetActiveDisc(DiscType::None);
  disc.SetActiveDisc(DiscType::None);
  EXPECT_EQ(journal.Take(), Lines{"OnClosed"});
}

TEST_F(HelmDiscTest, shows_the_cursor_of_the_disc_that_opens) {
  Start();
  disc.SetActiveDisc(DiscType::MiniFullNavigation);
  EXPECT_EQ(renderer.GetCursorID(), CURSOR_ORBIT_CUBE);
  disc.SetActiveDisc(DiscType::TwoD);
  EXPECT_EQ(renderer.GetCursorID(), CURSOR_ARROW);
}

TEST_F(HelmDiscTest, the_number_7_opens_and_closes_nothing_but_shows_and_sizes_the_open_disc_anew) {
  Start();
  for (const int number : {7, -1, 9, 1000}) {
    const auto type = static_cast<DiscType>(number);
    disc.SetActiveDisc(DiscType::None);
    Forget();
    disc.SetActiveDisc(type);
    EXPECT_EQ(disc.GetActiveDisc(), DiscType::None);
    EXPECT_EQ(journal.Take(), Lines());
    EXPECT_EQ(hub.requested, 1);
    disc.SetActiveDisc(DiscType::MiniTourBuilding);
    disc.GetActiveTrackMenu()->SetVisible(false);
    disc.GetActiveTrackMenu()->SetSize(10, 10);
    disc.GetActiveTrackMenu()->SetLocation(0, 0);
    renderer.IncrementTextureUsage(static_cast<TextureID>(150));
    Forget();
    disc.SetActiveDisc(type);
    EXPECT_EQ(disc.GetActiveDisc(), DiscType::MiniTourBuilding);
    EXPECT_TRUE(disc.GetActiveTrackMenu()->GetVisible());
    EXPECT_EQ(disc.GetActiveTrackMenu()->GetWidth(), number < 4 ? 128 : 64);
    EXPECT_EQ(renderer.CountCalls("LoadTexture"), 1);
    EXPECT_EQ(journal.Take(), Lines());
    EXPECT_EQ(disc.GetDefaultDiscType(), DiscType::MiniTourBuilding);
    renderer.DecrementTextureUsage(static_cast<TextureID>(150));
  }
}

TEST_F(HelmDiscTest, brings_a_menu_that_opens_to_the_modifiers_of_now) {
  Start();
  disc.OnKeyDown(KEY_SHIFT);
  disc.OnKeyDown(KEY_CONTROL);
  disc.SetActiveDisc(DiscType::TwoD);
  EXPECT_TRUE(disc.GetActiveTrackMenu()->IsModifierADown());
  EXPECT_TRUE(disc.GetActiveTrackMenu()->IsModifierBDown());
  disc.SetActiveDisc(DiscType::None);
  disc.OnKeyUp(KEY_SHIFT);
  disc.SetActiveDisc(DiscType::TwoD);
  EXPECT_FALSE(disc.GetActiveTrackMenu()->IsModifierADown());
  EXPECT_TRUE(disc.GetActiveTrackMenu()->IsModifierBDown());
}

TEST_F(HelmDiscTest, takes_a_default_kind_only_while_closed) {
  Start();
  disc.SetDefaultDiscType(DiscType::ViewObject);
  EXPECT_EQ(disc.GetDefaultDiscType(), DiscType::ViewObject);
  for (const int type : {-1, 7, 8, 9}) disc.SetDefaultDiscType(static_cast<DiscType>(type));
  EXPECT_EQ(disc.GetDefaultDiscType(), DiscType::ViewObject);
  disc.SetActiveDisc(DiscType::TwoD);
  disc.SetDefaultDiscType(DiscType::TourBuilding);
  EXPECT_EQ(disc.GetDefaultDiscType(), DiscType::TwoD);
}

// ---- where a disc opens ----

Vector2 PlaceOf(const HelmDisc& disc) { return disc.GetActiveTrackMenu()->GetRegionMap()->GetPosition(); }

TEST_F(HelmDiscTest, only_the_last_kind_opens_where_the_pointer_is) {
  Start();
  disc.OnMouseMove(200, 150);
  disc.SetActiveDisc(DiscType::TwoD);
  EXPECT_NE(PlaceOf(disc), Vector2(200, 150));
  disc.SetActiveDisc(DiscType::None);
  disc.OnMouseMove(500, 350);
  disc.SetActiveDisc(DiscType::TwoD);
  EXPECT_EQ(PlaceOf(disc), Vector2(500, 350));
}

TEST_F(HelmDiscTest, on_request_each_kind_opens_where_the_pointer_is_or_in_the_place_of_the_one_before) {
  disc.SetOpensAtPointer(true);
  OpenOn(DiscType::FullNavigation, {0, 0, 1});
  disc.SetActiveDisc(DiscType::None);
  disc.OnMouseMove(200, 150);
  disc.SetActiveDisc(DiscType::TwoD);
  EXPECT_EQ(PlaceOf(disc), Vector2(200, 150));
  disc.OnMouseMove(210, 140);  // within the disc
  disc.SetActiveDisc(DiscType::MiniViewObject);
  EXPECT_EQ(PlaceOf(disc), Vector2(200, 150));
  EXPECT_EQ(disc.GetActiveTrackMenu()->GetMouseCoords(), Vector2(210, 140));
}

TEST_F(HelmDiscTest, on_request_a_kind_opens_in_the_middle_while_the_pointer_is_outside) {
  disc.SetOpensAtPointer(true);
  Start();
  for (const Vector2& outside : {Vector2(-1, 300), Vector2(800, 300), Vector2(400, 600), Vector2(400, -1)}) {
    disc.SetActiveDisc(DiscType::FullNavigation);
    disc.SetActiveDisc(DiscType::None);
    disc.OnMouseMove(static_cast<int>(outside.x), static_cast<int>(outside.y));
    disc.SetActiveDisc(DiscType::ViewObject);
    EXPECT_EQ(PlaceOf(disc), Vector2(400, 300)) << outside.x << ", " << outside.y;
    disc.SetActiveDisc(DiscType::None);
  }
}

TEST_F(HelmDiscTest, the_kind_that_was_last_stays_where_it_followed_the_pointer_to) {
  disc.SetOpensAtPointer(true);
  Start();
  disc.SetActiveDisc(DiscType::TwoD);
  disc.SetActiveDisc(DiscType::None);
  disc.OnMouseMove(300, 310);
  disc.GetTrackMenu(DiscType::TwoD)->SetLocation(320, 330);  // from its last press
  disc.SetActiveDisc(DiscType::TwoD);
  EXPECT_EQ(PlaceOf(disc), Vector2(320, 330));
}

TEST_F(HelmDiscTest, a_disc_that_is_closed_in_a_press_opens_again) {
  Start();
  disc.SetActiveDisc(DiscType::TwoD);
  disc.OnLeftMouseDown(400, 300);
  disc.SetActiveDisc(DiscType::None);
  disc.OnLeftMouseUp(400, 300);
  disc.SetActiveDisc(DiscType::TwoD);
  EXPECT_TRUE(disc.GetActiveTrackMenu()->GetVisible());
}

TEST_F(HelmDiscTest, destroy_closes_and_gives_all_back) {
  Start();
  disc.SetActiveDisc(DiscType::FullNavigation);
  disc.OnLeftMouseDown(400, 300);
  Forget();
  EXPECT_TRUE(disc.Destroy());
  EXPECT_EQ(journal.Take(), Lines{});
  EXPECT_EQ(disc.GetActiveDisc(), DiscType::None);
  EXPECT_EQ(disc.GetTrackMenu(DiscType::FullNavigation)->GetRegion(0), nullptr);
  EXPECT_FALSE(disc.open.timers.tooltip.IsRunning());
  EXPECT_EQ(renderer.GetLiveIconCount(), 0);
  EXPECT_GT(renderer.CountCalls("ReleaseTexture"), 0);
}

TEST_F(HelmDiscTest, an_observer_may_choose_another_disc_while_it_is_told) {
  Start();
  int rounds = 0;
  observer.onHear = [&](const std::string& what) {
    if (what == "OnActivated(3)" && ++rounds < 3) disc.SetActiveDisc(DiscType::ViewObject);
    if (what == "OnActivated(0)") disc.SetActiveDisc(DiscType::None);
    if (what == "OnClosed" && rounds < 2) disc.SetActiveDisc(DiscType::TwoD);
  };
  JournalDiscObserver second(&disc, journal);
  disc.AddObserver(&second);
  disc.SetActiveDisc(DiscType::TwoD);
  EXPECT_EQ(disc.GetActiveDisc(), DiscType::None);
  for (int kind = 0; kind < 7; ++kind)
    EXPECT_FALSE(disc.GetTrackMenu(static_cast<DiscType>(kind))->GetActive()) << kind;
  EXPECT_FALSE(disc.open.timers.tooltip.IsRunning());
  disc.RemoveObserver(&second);
}

// ---- the close note ----

TEST_F(HelmDiscTest, shows_a_note_for_3_seconds_after_it_has_closed) {
  Start();
  disc.SetActiveDisc(DiscType::TwoD);
  disc.SetActiveDisc(DiscType::None);
  disc.open.closeNote.Get()->SetSize(200, 40);
  platform.Advance(2900);
  Forget();
  disc.DrawOverlay();
  EXPECT_EQ(renderer.GetCalls().front(), "BeginRender(400, 300, 400, 300, 0)");
  EXPECT_EQ(renderer.GetCalls().back(), "EndRender()");
  ASSERT_EQ(renderer.drawnTexts.size(), 1U);
  EXPECT_EQ(renderer.drawnTexts[0], Vector2(400, 40));
  platform.Advance(100);
  EXPECT_EQ(hub.requested, 1);  // so that it goes
  Forget();
  disc.DrawOverlay();
  EXPECT_EQ(renderer.GetCalls(), Lines());
}

TEST_F(HelmDiscTest, shows_no_note_without_messages_or_while_hidden) {
  Start();
  disc.GetParameters().showMessages = false;
  disc.SetActiveDisc(DiscType::TwoD);
  disc.SetActiveDisc(DiscType::None);
  EXPECT_FALSE(disc.open.timers.closeHUD.IsRunning());
  disc.GetParameters().showMessages = true;
  disc.SetActiveDisc(DiscType::None);
  EXPECT_TRUE(disc.open.timers.closeHUD.IsRunning());
  disc.SetVisible(false);
  Forget();
  disc.DrawOverlay();
  disc.SetVisible(true);
  disc.GetParameters().showMessages = false;
  disc.DrawOverlay();
  EXPECT_EQ(renderer.GetCalls(), Lines());
}

// ---- drawing ----

TEST_F(HelmDiscTest, draws_the_open_disc_only_while_visible) {
  Start();
  disc.SetActiveDisc(DiscType::TwoD);
  Forget();
  disc.DrawOverlay();
  EXPECT_EQ(renderer.CountCalls("BeginRender"), 1);
  Forget();
  disc.SetVisible(false);
  EXPECT_EQ(hub.requested, 1);
  disc.SetVisible(false);
  EXPECT_EQ(hub.requested, 1);
  Forget();
  disc.Draw();
  EXPECT_EQ(renderer.GetCalls(), Lines());
  EXPECT_FALSE(disc.OpenMenu());
  disc.SetVisible(true);
  EXPECT_TRUE(disc.OpenMenu());
}

TEST_F(HelmDiscTest, draws_the_pivot_ball_only_while_a_disc_is_open) {
  Start();
  disc.GetPivotBall()->SetVisible(true);
  disc.DrawPivotBall();
  EXPECT_EQ(renderer.CountCalls("RenderIcon3D"), 0);
  disc.SetActiveDisc(DiscType::TwoD);
  disc.DrawPivotBall();
  EXPECT_EQ(renderer.CountCalls("RenderIcon3D"), 3);  // two shadows and the ball
  disc.SetVisible(false);
  disc.DrawPivotBall();
  EXPECT_EQ(renderer.CountCalls("RenderIcon3D"), 3);
  disc.SetVisible(true);
  Forget();
  disc.Draw();
  EXPECT_EQ(renderer.CountCalls("RenderIcon3D"), 3);
  EXPECT_GT(renderer.CountCalls("RenderResource"), 0);
}

// The timer looks twice a second.
TEST_F(HelmDiscTest, shows_and_hides_the_tooltip_while_nothing_moves) {
  OpenOn(DiscType::FullNavigation, Vector3(0, 1, 0));
  disc.DrawOverlay();
  ASSERT_NE(disc.GetActiveTrackMenu()->GetActiveRegion().tooltip, nullptr);
  hub.requested = 0;
  platform.Advance(1900);
  EXPECT_EQ(hub.requested, 0);
  platform.Advance(600);
  EXPECT_EQ(hub.requested, 1);
  EXPECT_TRUE(disc.GetActiveTrackMenu()->GetActiveRegion().tooltip->IsVisible());
  platform.Advance(4500);
  EXPECT_EQ(hub.requested, 2);
  EXPECT_FALSE(disc.GetActiveTrackMenu()->GetActiveRegion().tooltip->IsVisible());
}

// ---- enabled ----

TEST_F(HelmDiscTest, enables_and_disables_all_discs_but_one_that_is_pressed) {
  Start();
  disc.SetActiveDisc(DiscType::TwoD);
  disc.OnLeftMouseDown(400, 300);
  disc.SetEnabled(false);
  for (int kind = 0; kind < 7; ++kind)
    EXPECT_EQ(disc.GetTrackMenu(static_cast<DiscType>(kind))->GetEnabled(), kind == 3) << kind;
  EXPECT_TRUE(disc.GetEnabled());
  disc.OnLeftMouseUp(400, 300);
  disc.SetEnabled(false);
  EXPECT_FALSE(disc.GetEnabled());
  disc.SetEnabled(true);
  EXPECT_TRUE(disc.GetEnabled());
  disc.SetActiveDisc(DiscType::None);
  EXPECT_FALSE(disc.GetEnabled());
}

// ---- settings ----

TEST_F(HelmDiscTest, brings_its_settings_into_effect) {
  Start();
  HelmDiscParameters& p = disc.GetParameters();
  p.largeDiscSize = 256;
  p.miniDiscSize = 128;
  p.largeDiscOpacity = 2.0;
  p.miniDiscOpacity = 0.5;
  p.walkSpeedFactor = 3.0;
  disc.UpdateSettings();
  for (int kind = 0; kind < 7; ++kind) {
    const TrackMenu& menu = *disc.GetTrackMenu(static_cast<DiscType>(kind));
    EXPECT_EQ(menu.GetWidth(), kind < 4 ? 256 : 128);
    EXPECT_EQ(menu.GetHeight(), kind < 4 ? 256 : 128);
    EXPECT_EQ(menu.GetOpacity(), kind < 4 ? 2.0F : 0.5F);
  }
  EXPECT_EQ(hub.GetApplicationParameters().GetFlyMoveMultiplier(), 3.0);
}

TEST_F(HelmDiscTest, a_mini_disc_below_128_pixels_hides_the_arrow) {
  Start();
  for (const auto& [size, cursor] : {std::pair(32, 0), {64, 0}, {127, 0}, {128, 26}, {256, 26}}) {
    disc.SetMiniDiscSize(size);
    EXPECT_EQ(disc.GetParameters().miniDiscSize, size);
    for (int kind = 0; kind < 7; ++kind) {
      const TrackMenu& menu = *disc.GetTrackMenu(static_cast<DiscType>(kind));
      EXPECT_EQ(menu.GetMenuCursorID(), kind < 4 ? 26 : cursor);
      EXPECT_EQ(menu.GetWidth(), kind < 4 ? 128 : size);
    }
  }
}

TEST_F(HelmDiscTest, stores_what_is_set) {
  Start();
  disc.SetLargeDiscSize(64);
  EXPECT_EQ(disc.GetParameters().largeDiscSize, 64);
  disc.SetLargeDiscOpacity(0.25F);
  disc.SetMiniDiscOpacity(0.75F);
  EXPECT_EQ(disc.GetParameters().largeDiscOpacity, 0.25);
  EXPECT_EQ(disc.GetParameters().miniDiscOpacity, 0.75);
  for (const float bad : {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity()}) {
    disc.SetLargeDiscOpacity(bad);
    disc.SetMiniDiscOpacity(bad);
  }
  EXPECT_EQ(disc.GetParameters().largeDiscOpacity, 0.25);
  EXPECT_EQ(disc.GetParameters().miniDiscOpacity, 0.75);
  for (const int size : {0, 4096, -1, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
    disc.SetLargeDiscSize(size);
    disc.SetMiniDiscSize(size);
    disc.SetActiveDisc(DiscType::MiniViewObject);
    disc.OnMouseMove(400, 300);
    disc.Draw();
    disc.SetActiveDisc(DiscType::ViewObject);
    disc.OnMouseMove(100, 300);
    disc.Draw();
  }
}

TEST_F(HelmDiscTest, steps_the_walk_speed) {
  double& speed = disc.GetParameters().walkSpeedFactor;
  const double up[][2] = {{0.5, 0.6}, {0.6, 0.8},   {0.1, 0.2},   {1.0, 1.3},   {0.8, 1.0},
                          {2.0, 2.5}, {10.0, 12.5}, {48.0, 50.0}, {50.0, 50.0}, {0.05, 0.1}};
  for (const auto& [from, to] : up) {
    speed = from;
    disc.IncrementWalkSpeed();
    EXPECT_NEAR(speed, to, 1e-12) << from;
    EXPECT_EQ(hub.GetApplicationParameters().GetFlyMoveMultiplier(), speed);
  }
  // 1: floor(8.1); 0.8: floor(6.5); 2.5: floor(20.1); 12.5: floor(100.1). 0.3 - 0.1 is a
  // little below 0.2, so 0.3 falls by two steps.
  const double down[][2] = {{1.0, 0.8}, {0.8, 0.6}, {2.5, 2.0},   {12.5, 10.0}, {0.7, 0.6},
                            {0.3, 0.1}, {0.1, 0.1}, {60.0, 48.0}, {100.0, 50.0}};
  for (const auto& [from, to] : down) {
    speed = from;
    disc.DecrementWalkSpeed();
    EXPECT_NEAR(speed, to, 1e-12) << from;
    EXPECT_EQ(hub.GetApplicationParameters().GetFlyMoveMultiplier(), speed);
  }
}

TEST_F(HelmDiscTest, keeps_the_walk_speed_within_its_range_and_on_tenths) {
  double& speed = disc.GetParameters().walkSpeedFactor;
  speed = 0.1;
  for (int i = 0; i < 60; ++i) {
    const double before = speed;
    disc.IncrementWalkSpeed();
    EXPECT_TRUE(speed > before || before == 50.0);
    EXPECT_NEAR(speed * 10.0, std::round(speed * 10.0), 1e-9);
  }
  EXPECT_EQ(speed, 50.0);
  for (int i = 0; i < 60; ++i) {
    const double before = speed;
    disc.DecrementWalkSpeed();
    EXPECT_TRUE(speed < before || before == 0.1);
    EXPECT_NEAR(speed * 10.0, std::round(speed * 10.0), 1e-9);
  }
  EXPECT_EQ(speed, 0.1);
  speed = std::nan("");
  disc.IncrementWalkSpeed();
  disc.DecrementWalkSpeed();
  disc.UpdateSettings();
  EXPECT_TRUE(std::isfinite(hub.GetApplicationParameters().GetFlyMoveMultiplier()));
}

// ---- who owns the renderer ----

TEST(HelmDiscRenderer, is_shared_by_all_menus_and_stays_the_callers) {
  MapRenderer first;
  MapRenderer second;
  OpenHelmDisc disc;
  disc.SetRenderer(&first);
  EXPECT_TRUE(disc.Create());
  for (Renderer* const value : std::initializer_list<Renderer*>{&second, nullptr, nullptr, &second, &first,
                                                                &first, nullptr, &first}) {
    disc.SetActiveDisc(DiscType::FullNavigation);
    disc.SetRenderer(value);
    EXPECT_EQ(disc.GetRenderer(), value);
    disc.OnMouseMove(1, 2);
    disc.Draw();
  }
  EXPECT_EQ(second.GetLiveIconCount(), 0);  // all of it has moved
  EXPECT_EQ(second.CountCalls("LoadTexture"), second.CountCalls("ReleaseTexture"));
  EXPECT_GT(second.CountCalls("LoadTexture"), 0);
  EXPECT_TRUE(disc.Destroy());
  EXPECT_EQ(first.GetLiveIconCount(), 0);
  EXPECT_EQ(first.CountCalls("LoadTexture"), first.CountCalls("ReleaseTexture"));
}

TEST(HelmDiscRenderer, may_end_before_and_after_the_disc) {
  for (const bool rendererFirst : {true, false}) {
    for (const bool open : {true, false}) {
      for (const bool destroyed : {true, false}) {
        for (const bool exchanged : {true, false}) {
          int ends = 0;
          auto renderer = std::make_unique<MapRenderer>(&ends);
          auto other = std::make_unique<MapRenderer>(&ends);
          auto disc = std::make_unique<OpenHelmDisc>();
          disc->SetRenderer(renderer.get());
          disc->Create();
          if (open) disc->SetActiveDisc(DiscType::MiniFullNavigation);
          if (exchanged) disc->SetRenderer(other.get());
          if (destroyed) disc->Destroy();
          if (rendererFirst) {
            renderer.reset();
            other.reset();
            disc->SetLargeDiscSize(10);
            disc->SetActiveDisc(DiscType::TwoD);
            disc->Draw();
            EXPECT_EQ(disc->GetRenderer(), nullptr);
          }
          disc.reset();
          EXPECT_EQ(ends, rendererFirst ? 2 : 0);
        }
      }
    }
  }
}

// ---- costs ----

TEST(HelmDiscCosts, a_move_and_a_frame_of_an_open_disc_allocate_nothing) {
  ManualPlatform platform;
  MemoryHub hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}));
  CountingRenderer renderer;
  OpenHelmDisc disc;
  disc.SetKorvane(&hub);
  disc.SetRenderer(&renderer);
  disc.Create();
  disc.SetViewportSize(800, 600);
  disc.SetActiveDisc(DiscType::FullNavigation);
  disc.OnMouseMove(400, 300);
  disc.Draw();
  const AllocationCounter counter;
  for (int i = 0; i < 100; ++i) {
    disc.OnMouseMove(400 + 3 * i, 300 + i);
    disc.Draw();
  }
  EXPECT_EQ(counter.GetAllocations(), 0U);
  EXPECT_GT(renderer.begun, 100);
}

// From the first picture on, and not only when its strip is opened.
TEST_F(HelmDiscTest, its_history_counts_in_points) {
  Start();
  hub.GetApplicationParameters().pixels_per_point = 2.0F;
  disc.SetViewportSize(800, 600);
  RewindHistory& history = *disc.GetHistory();
  history.BeginElementRecord(hub.view);
  hub.view = LookAt({5, 0, 10}, {5, 0, 0}, {0, 1, 0});
  history.EndElementRecord(hub.view);
  history.UpdateThumbnails();
  const Lines calls = renderer.GetCalls();
  EXPECT_GT(renderer.CountCalls("CreateSceneScreenshot"), 0);
  for (const std::string& call : calls) {
    if (call.rfind("CreateSceneScreenshot(", 0) == 0) {
      EXPECT_EQ(call.rfind("CreateSceneScreenshot(128, 128", 0), 0U) << call;
    }
  }
}

}  // namespace
