// Every kind of wedge without a menu, as one stands whose menu goes while it is called.
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "disc/center_region_listener.h"
#include "disc/close_region_listener.h"
#include "disc/forward_region_listener.h"
#include "disc/height_region_listener.h"
#include "disc/look_move_region_listener.h"
#include "disc/look_region_listener.h"
#include "disc/menu_region_listener.h"
#include "disc/orbit_region_listener.h"
#include "disc/pan_region_listener.h"
#include "disc/pivot_pick_region_listener.h"
#include "disc/rewind_region_listener.h"
#include "disc/roll_region_listener.h"
#include "disc/walk_region_listener.h"
#include "disc/zoom_region_listener.h"
#include "support/manual_platform.h"

using namespace Korvane;

namespace {

using Wedge = std::unique_ptr<DiscRegionListener>;

template <class Listener, auto... ARGUMENTS>
Wedge Make() {
  return std::make_unique<Listener>(nullptr, nullptr, ARGUMENTS...);
}

struct Kind {
  const char* name;
  Wedge (*make)();
};
constexpr Kind KINDS[] = {
    {"center", Make<CenterRegionListener, STRING_PIVOT>},
    {"close", Make<CloseRegionListener>},
    {"forward", Make<ForwardRegionListener>},
    {"height", Make<HeightRegionListener>},
    {"look", Make<LookRegionListener>},
    {"look_move", Make<LookMoveRegionListener, true>},
    {"menu", Make<MenuRegionListener>},
    {"orbit", Make<OrbitRegionListener, STRING_PIVOT, STRING_NONE, true>},
    {"pan", Make<PanRegionListener>},
    {"pivot_pick", Make<PivotPickRegionListener>},
    {"rewind", Make<RewindRegionListener>},
    {"roll", Make<RollRegionListener>},
    {"walk", Make<WalkRegionListener>},
    {"zoom", Make<ZoomRegionListener, STRING_PIVOT, STRING_NONE, STRING_NONE, true, true>},
};

class LoneWedge : public ::testing::TestWithParam<Kind> {
 protected:
  void Draw() {
    platform.Advance(600);
    wedge->OnDraw();
  }

  ManualPlatform platform;
  Wedge wedge = GetParam().make();
};

TEST_P(LoneWedge, works_with_nobody) {
  EXPECT_EQ(wedge->GetTrackMenu(), nullptr);
  EXPECT_EQ(wedge->GetDisc(), nullptr);
  EXPECT_EQ(wedge->GetHub(), nullptr);
  EXPECT_EQ(wedge->GetRenderer(), nullptr);
  EXPECT_EQ(wedge->GetHistory(), nullptr);
  EXPECT_EQ(wedge->GetPivotBall(), nullptr);
}

TEST_P(LoneWedge, notes_the_mouse_and_does_nothing_else) {
  constexpr KeyID KEYS[] = {KEY_SHIFT, KEY_CONTROL, KEY_UP, KEY_RUN, KEY_SLOWER, KEY_FASTER};
  for (const bool drags : {false, true}) {
    wedge->OnTrackMenuActivate(true);
    for (const KeyID key : KEYS) wedge->OnKeyDown(key);
    wedge->OnLeftMouseDown(10, 20);
    EXPECT_TRUE(wedge->IsMouseDown());
    Draw();
    if (drags) wedge->OnMouseMove(200, 300);
    EXPECT_EQ(wedge->IsMouseDrag(), drags);
    Draw();
    for (const KeyID key : KEYS) wedge->OnKeyUp(key);
    wedge->OnLeftMouseUp(200, 300);
    EXPECT_FALSE(wedge->IsMouseDown());
    Draw();
    wedge->OnLeftMouseDown(10, 20);
    wedge->OnTrackMenuActivate(false);
    EXPECT_FALSE(wedge->IsMouseDown());
    Draw();
  }
  wedge.reset();
  EXPECT_EQ(platform.GetTimerCount(), 0);
}

INSTANTIATE_TEST_SUITE_P(Kinds, LoneWedge, ::testing::ValuesIn(KINDS),
                         [](const auto& tested) { return std::string(tested.param.name); });

}  // namespace
