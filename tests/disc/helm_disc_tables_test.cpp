// The tables of the discs, row by row, against a second copy of their values.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "disc/center_region_listener.h"
#include "disc/close_region_listener.h"
#include "disc/disc_scene.h"
#include "disc/disc_tables.h"
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

using namespace Korvane;

namespace {

// Colour; listener with its arguments; icon; label; tooltip (with the switch off after a stroke); note;
// cursor; zone; flags: d not enabled, u no wrap, s sticky. A hyphen: none. The first row is the disabled
// region.
struct Disc {
  DiscType type;
  int map;
  int overlay;
  int menu;
  int cursor;
  std::vector<std::string> rows;
};

const std::vector<Disc>& GetDiscs() {
  static const std::vector<Disc> DISCS = {
      {DiscType::ViewObject,
       17,
       16,
       1,
       26,
       {
           "0 0 0; Null; 18; -; -; -; 26; -; -",
           "0 1 1; Close; 19; -; 21; -; 26; 1; -",
           "0 0.5 0; Menu; 20; -; 22; -; 26; 4; -",
           "1 1 0; Rewind; 21; -; 25; -; 0; 7; -",
           "0 0 1; Center 39; 22; -; 20; 47; 26; 0; u",
           "1 0 0; Orbit 41 102 true; 23; -; 23; 50; 1; 5; -",
           "0 1 0; Zoom 39 29 30 true false; 24; -; 26; 55; 2; 10; -",
       }},
      {DiscType::TourBuilding,
       26,
       25,
       0,
       26,
       {
           "0 0 0; Null; 27; -; -; -; 26; -; -",
           "0 1 1; Close; 28; -; 13; -; 26; 1; -",
           "0 0.5 0; Menu; 29; -; 16; -; 26; 4; -",
           "0 0 1; Rewind; 30; -; 17; -; 0; 7; -",
           "0 1 0; Forward; 31; -; 14; -; 0; 2; -",
           "1 0 0; Look; 32; -; 15; 49; 4; 3; -",
           "1 1 0; Height; 33; -; 18; -; 0; 9; -",
       }},
      {DiscType::FullNavigation,
       35,
       34,
       2,
       26,
       {
           "0 0 0; Null; 36; -; -; -; 26; -; -",
           "0 1 1; Close; 37; -; 1; -; 26; 1; -",
           "0.5 0 0.5; Menu; 38; -; 4; -; 26; 4; -",
           "1 0 0; Rewind; 39; -; 7; -; 0; 7; -",
           "0 0 1; Orbit 41 35 false; 40; -; 5; 50; 1; 5; -",
           "0 0 1; PivotPick; 40; -; 5; 50; 26; 5; du",
           "0 0 1; Roll; 40; -; 5; -; 0; 5; d",
           "1 1 0; Zoom 41 102 102 false true; 41; -; 10; 55; 2; 10; d",
           "1 1 0; Zoom 41 102 102 false true; 41; -; 11/10; 55; 2; 10; -",
           "0 1 0; Pan; 42; -; 6; 51; 3; 6; -",
           "0 0 0.5; LookMove true; 43; -; 12/3; 49; 4; 3; -",
           "0.5 0 0; Walk; 44; -; 9; -; 6; 8; -",
           "0.5 0 0; Height; 44; -; 9; -; 0; 8; d",
           "0 0.5 0; Height; 45; -; 8; -; 0; 9; -",
           "0.5 0.5 0.5; Center 41; 46; -; 0; 47; 26; 0; u",
       }},
      {DiscType::TwoD,
       70,
       69,
       3,
       26,
       {
           "0 0 0; Null; 71; -; -; -; 26; -; -",
           "0 1 1; Close; 75; -; 1; -; 26; 1; -",
           "0 0.5 0; Menu; 76; -; 4; -; 26; 4; -",
           "0 0 1; Rewind; 73; -; 7; -; 0; 7; -",
           "1 0 0; Zoom 39 102 102 false true; 74; -; -; 55; 2; 10; -",
           "0 1 0; Pan; 72; -; -; 51; 3; 6; -",
       }},
      {DiscType::MiniViewObject,
       47,
       185,
       2,
       0,
       {
           "0 0 0; Null; 48; -; -; -; 26; -; -",
           "1 0 1; Null; 48; -; -; -; 26; -; ds",
           "1 0 0; Rewind; 49; 64; 25; -; 0; 7; -",
           "0 0 1; Orbit 41 35 false; 50; 62; 23; 50; 1; 5; -",
           "0 0 1; PivotPick; 50; 62; 23; 50; 26; 5; d",
           "0 0 1; Roll; 50; 62; 23; -; 0; 5; d",
           "1 1 0; Zoom 41 29 30 true true; 51; 66; 26; 55; 2; 10; d",
           "1 1 0; Zoom 41 102 102 false true; 51; 66; 11/26; 55; 2; 10; -",
           "0 1 0; Pan; 52; 63; 24; 51; 3; 6; -",
       }},
      {DiscType::MiniTourBuilding,
       53,
       185,
       2,
       0,
       {
           "0 0 0; Null; 54; -; -; -; 26; -; -",
           "0.5 0 0.5; Null; 48; -; -; -; 26; -; ds",
           "0.5 0 0; Walk; 55; 65; 19; -; 6; 8; -",
           "0.5 0 0; Height; 55; 65; 19; -; 0; 8; d",
           "0 0 0.5; LookMove true; 57; 61; 12/15; 49; 4; 3; -",
           "0 0.5 0; Height; 56; 60; 18; -; 0; 9; -",
           "1 0 0; Rewind; 58; 64; 17; -; 0; 7; -",
       }},
      {DiscType::MiniFullNavigation,
       59,
       185,
       2,
       0,
       {
           "0 0 0; Null; 60; -; -; -; 26; -; -",
           "0.5 0 0.5; Null; 48; -; -; -; 26; -; ds",
           "1 0 0; Rewind; 61; 64; 7; -; 0; 7; -",
           "0 0 1; Orbit 41 35 false; 62; 62; 5; 50; 1; 5; -",
           "0 0 1; PivotPick; 62; 62; 5; 50; 26; 5; du",
           "0 0 1; Roll; 62; 62; 23; -; 0; 5; d",
           "1 1 0; Zoom 41 102 102 false true; 63; 66; 10; 55; 2; 5; d",
           "1 1 0; Zoom 41 102 102 false true; 63; 66; 11/10; 55; 2; 10; -",
           "0 1 0; Pan; 64; 63; 6; 51; 3; 6; -",
           "0.5 0 0; Walk; 66; 65; 9; -; 6; 8; -",
           "0.5 0 0; Height; 66; 65; 9; -; 0; 8; d",
           "0 0 0.5; LookMove true; 67; 61; 12/3; 49; 4; 3; -",
           "0 0.5 0; Height; 68; 60; 8; -; 0; 9; -",
           "0.5 0.5 0; Center 41; 65; 58; 0; 47; 26; 0; u",
       }},
  };
  return DISCS;
}

std::vector<std::string> Split(const std::string& line) {
  std::istringstream stream(line);
  std::vector<std::string> cells;
  for (std::string cell; std::getline(stream, cell, ';');)
    cells.push_back(cell.substr(cell.front() == ' ' ? 1 : 0));
  cells.resize(9);
  return cells;
}

int Number(const std::string& cell, int none = 102) { return cell == "-" ? none : std::atoi(cell.c_str()); }

Vector3 Colour(const std::string& cell) {
  Vector3 colour;
  std::istringstream(cell) >> colour.x >> colour.y >> colour.z;
  return colour;
}

bool Has(const std::string& flags, char flag) { return flags.find(flag) != std::string::npos; }

std::string Describe(const DiscListener& what) {
  static const char* const NAMES[] = {"Null",      "Center",   "Close", "Forward", "Height",
                                      "Look",      "LookMove", "Menu",  "Orbit",   "Pan",
                                      "PivotPick", "Rewind",   "Roll",  "Walk",    "Zoom"};
  std::ostringstream line;
  line << NAMES[static_cast<int>(what.kind)];
  const int texts = what.kind == DiscListenerKind::Zoom     ? 3
                    : what.kind == DiscListenerKind::Orbit  ? 2
                    : what.kind == DiscListenerKind::Center ? 1
                                                            : 0;
  for (int i = 0; i < texts; ++i) line << ' ' << what.texts[i];
  for (int i = texts; i < 3; ++i) EXPECT_EQ(what.texts[i], 102);
  const int switches = what.kind == DiscListenerKind::Zoom                                               ? 2
                       : what.kind == DiscListenerKind::Orbit || what.kind == DiscListenerKind::LookMove ? 1
                                                                                                         : 0;
  for (int i = 0; i < switches; ++i) line << (what.switches[i] ? " true" : " false");
  for (int i = switches; i < 2; ++i) EXPECT_FALSE(what.switches[i]);
  return line.str();
}

template <class Listener>
bool Is(RegionListener* listener) {
  return dynamic_cast<Listener*>(listener) != nullptr;
}

bool HasListener(RegionListener* listener, const std::string& name) {
  static const std::map<std::string, bool (*)(RegionListener*)> KINDS = {
      {"Null", Is<NullRegionListener>},
      {"Center", Is<CenterRegionListener>},
      {"Close", Is<CloseRegionListener>},
      {"Forward", Is<ForwardRegionListener>},
      {"Height", Is<HeightRegionListener>},
      {"Look", Is<LookRegionListener>},
      {"LookMove", Is<LookMoveRegionListener>},
      {"Menu", Is<MenuRegionListener>},
      {"Orbit", Is<OrbitRegionListener>},
      {"Pan", Is<PanRegionListener>},
      {"PivotPick", Is<PivotPickRegionListener>},
      {"Rewind", Is<RewindRegionListener>},
      {"Roll", Is<RollRegionListener>},
      {"Walk", Is<WalkRegionListener>},
      {"Zoom", Is<ZoomRegionListener>}};
  return KINDS.at(name)(listener);
}

class DiscTablesTest : public ::testing::Test, public DiscScene {
 protected:
  void ExpectRegion(const TrackMenu::Region& region, const std::string& line, const Disc& expected) {
    const std::vector<std::string> cells = Split(line);
    EXPECT_EQ(region.color, Colour(cells[0]));
    ASSERT_NE(region.icon, nullptr);
    EXPECT_EQ(region.icon->GetTextureResourceID(), Number(cells[2]));
    EXPECT_EQ(region.overlayIcon != nullptr, expected.overlay != 185);
    if (region.overlayIcon != nullptr) {
      EXPECT_EQ(region.overlayIcon->GetTextureResourceID(), expected.overlay);
    }
    EXPECT_EQ(region.labelString, Number(cells[3]));
    const std::size_t stroke = cells[4].find('/');
    const bool off = stroke != std::string::npos && !choice;
    EXPECT_EQ(region.tooltipString, Number(off ? cells[4].substr(stroke + 1) : cells[4]));
    EXPECT_EQ(region.tooltipHUDString, Number(cells[5]));
    EXPECT_EQ(region.cursorID, Number(cells[6]));
    EXPECT_EQ(region.zone, Number(cells[7], -1));
    EXPECT_EQ(region.enabled, !Has(cells[8], 'd'));
    EXPECT_EQ(region.wrap, !Has(cells[8], 'u'));
    EXPECT_EQ(region.sticky, Has(cells[8], 's'));
    EXPECT_EQ(dynamic_cast<NullRegionListener*>(region.listener) != nullptr, cells[1] == "Null");
    EXPECT_TRUE(HasListener(region.listener, cells[1].substr(0, cells[1].find(' ')))) << cells[1];
  }

  bool choice = true;  // lookAtOnShift, rectZoomOnShift
};

TEST_F(DiscTablesTest, fill_the_discs_row_by_row) {
  for (const bool on : {true, false}) {
    choice = on;
    disc.GetParameters().lookAtOnShift = disc.GetParameters().rectZoomOnShift = on;
    ASSERT_TRUE(disc.Create());
    for (const Disc& expected : GetDiscs()) {
      TrackMenu& menu = *disc.GetTrackMenu(expected.type);
      SCOPED_TRACE(expected.map);
      menu.SetEnabled(false);
      menu.SetViewportSize(800, 600);
      menu.SetLocation(400, 300);
      menu.GetActiveRegion().listener = nullptr;  // which might keep the region
      menu.OnLeftMouseDown(400, 300);
      menu.OnKeyDown(KEY_UP);
      ExpectRegion(menu.GetActiveRegion(), expected.rows[0], expected);
      menu.OnLeftMouseUp(400, 300);
      menu.SetEnabled(true);
      for (std::size_t i = 1; i < expected.rows.size(); ++i) {
        SCOPED_TRACE(i - 1);
        const TrackMenu::Region* const region = menu.GetRegion(static_cast<int>(i) - 1);
        ASSERT_NE(region, nullptr);
        ExpectRegion(*region, expected.rows[i], expected);
      }
      EXPECT_EQ(menu.GetRegion(static_cast<int>(expected.rows.size()) - 1), nullptr);
    }
  }
}

// What the listeners are made with.
TEST(DiscTables, name_the_listeners_and_their_arguments) {
  for (const Disc& expected : GetDiscs()) {
    const DiscTable& table = GetDiscTable(expected.type);
    SCOPED_TRACE(expected.map);
    EXPECT_EQ(Describe(table.disabled.listener), Split(expected.rows[0])[1]);
    ASSERT_EQ(table.regions.size(), expected.rows.size() - 1);
    for (std::size_t i = 1; i < expected.rows.size(); ++i) {
      EXPECT_EQ(Describe(table.regions[i - 1].listener), Split(expected.rows[i])[1]) << i - 1;
    }
  }
}

TEST_F(DiscTablesTest, choose_the_tooltips_of_zoom_and_of_look_apart) {
  for (const bool zoom : {true, false}) {
    disc.GetParameters().rectZoomOnShift = zoom;
    disc.GetParameters().lookAtOnShift = !zoom;
    disc.Create();
    TrackMenu& menu = *disc.GetTrackMenu(DiscType::FullNavigation);
    EXPECT_EQ(menu.GetRegion(7)->tooltipString, zoom ? 11 : 10);
    EXPECT_EQ(menu.GetRegion(9)->tooltipString, zoom ? 3 : 12);
  }
}

TEST_F(DiscTablesTest, give_each_disc_its_map_its_menu_and_its_cursor) {
  Start();
  disc.SetMiniDiscSize(64);
  for (const Disc& expected : GetDiscs()) {
    disc.SetActiveDisc(expected.type);
    EXPECT_EQ(disc.GetCurrentCursor(), expected.cursor);
    Forget();
    EXPECT_TRUE(disc.OpenMenu());
    EXPECT_EQ(renderer.GetCalls().back(), "OpenMenu(" + std::to_string(expected.menu) + ")");
    Forget();
    EXPECT_TRUE(disc.InitRegions(expected.type));
    EXPECT_EQ(renderer.CountCalls("CreateImageData"), 1);
    EXPECT_NE(std::find(renderer.GetCalls().begin(), renderer.GetCalls().end(),
                        "CreateImageData(" + std::to_string(expected.map) + ")"),
              renderer.GetCalls().end());
  }
}

TEST_F(DiscTablesTest, make_the_overlay_of_a_disabled_region_half_as_opaque) {
  disc.SetViewportSize(800, 600);
  for (int kind = 0; kind < 7; ++kind) {
    const auto type = static_cast<DiscType>(kind);
    disc.InitRegions(type);
    TrackMenu& menu = *disc.GetTrackMenu(type);
    menu.SetEnabled(false);
    menu.SetLocation(400, 300);
    menu.GetActiveRegion().listener = nullptr;
    menu.OnLeftMouseDown(400, 300);
    menu.OnKeyDown(KEY_UP);
    const ResourceIcon2D* const overlay = menu.GetActiveRegion().overlayIcon;
    EXPECT_EQ(overlay != nullptr, kind < 4);
    if (overlay != nullptr) {
      EXPECT_EQ(overlay->GetOpacity(), 0.5);
    }
    menu.OnLeftMouseUp(400, 300);
  }
}

TEST_F(DiscTablesTest, leave_out_a_type_that_is_no_kind) {
  for (const int type : {-1, 7, 8, 9, 1000}) {
    EXPECT_TRUE(disc.InitRegions(static_cast<DiscType>(type)));
    EXPECT_EQ(disc.GetTrackMenu(static_cast<DiscType>(type)), nullptr);
  }
  EXPECT_EQ(renderer.GetCalls(), Lines());
}

// ---- the keys ----

struct Flip {
  KeyID key;
  DiscType disc;
  int off;
  int on;
  bool needsFreeScene;
};
const Flip FLIPS[] = {
    {KEY_CONTROL, DiscType::FullNavigation, 3, 4, false},
    {KEY_CONTROL, DiscType::MiniViewObject, 2, 3, false},
    {KEY_CONTROL, DiscType::MiniFullNavigation, 2, 3, false},
    {KEY_SHIFT, DiscType::FullNavigation, 10, 11, false},
    {KEY_SHIFT, DiscType::MiniTourBuilding, 1, 2, false},
    {KEY_SHIFT, DiscType::MiniFullNavigation, 8, 9, false},
    {KEY_SHIFT, DiscType::FullNavigation, 3, 5, true},
    {KEY_SHIFT, DiscType::MiniViewObject, 2, 4, true},
    {KEY_SHIFT, DiscType::MiniFullNavigation, 2, 4, true},
};

// Every region of every disc, enabled or not.
std::vector<std::vector<bool>> GetEnabledRegions(HelmDisc& disc) {
  std::vector<std::vector<bool>> result(7);
  for (std::size_t kind = 0; kind < 7; ++kind) {
    TrackMenu& menu = *disc.GetTrackMenu(static_cast<DiscType>(kind));
    for (int i = 0; menu.GetRegion(i) != nullptr; ++i) result[kind].push_back(menu.GetRegion(i)->enabled);
  }
  return result;
}

TEST_F(DiscTablesTest, flip_regions_on_all_discs_while_a_key_is_down_whichever_is_open) {
  Start();
  const auto atRest = GetEnabledRegions(disc);
  for (const bool open : {false, true}) {
    disc.SetActiveDisc(open ? DiscType::TwoD : DiscType::None);
    for (const KeyID key : {KEY_CONTROL, KEY_SHIFT}) {
      for (const bool upright : {true, false}) {
        disc.GetParameters().keepSceneUpright = upright;
        auto expected = atRest;
        for (const Flip& flip : FLIPS) {
          if (flip.key != key || (flip.needsFreeScene && upright)) continue;
          expected[static_cast<std::size_t>(flip.disc)][static_cast<std::size_t>(flip.off)] = false;
          expected[static_cast<std::size_t>(flip.disc)][static_cast<std::size_t>(flip.on)] = true;
        }
        disc.OnKeyDown(key);
        EXPECT_EQ(GetEnabledRegions(disc), expected);
        disc.OnKeyUp(key);
        EXPECT_EQ(GetEnabledRegions(disc), atRest);
      }
    }
  }
  for (const KeyID key : {KEY_DISC, KEY_UP, KEY_RUN}) {
    disc.OnKeyDown(key);
    EXPECT_EQ(GetEnabledRegions(disc), atRest);
  }
}

TEST_F(DiscTablesTest, a_release_of_shift_restores_the_orbit_also_where_the_scene_is_upright) {
  Start();
  disc.GetParameters().keepSceneUpright = false;
  disc.OnKeyDown(KEY_SHIFT);
  EXPECT_FALSE(disc.GetTrackMenu(DiscType::FullNavigation)->GetRegion(3)->enabled);
  disc.GetParameters().keepSceneUpright = true;
  disc.OnKeyUp(KEY_SHIFT);
  EXPECT_TRUE(disc.GetTrackMenu(DiscType::FullNavigation)->GetRegion(3)->enabled);
  EXPECT_FALSE(disc.GetTrackMenu(DiscType::FullNavigation)->GetRegion(5)->enabled);
}

TEST_F(DiscTablesTest, the_first_of_two_zoom_rows_is_never_enabled) {
  Start();
  disc.GetParameters().keepSceneUpright = false;
  for (const KeyID key : {KEY_SHIFT, KEY_CONTROL, KEY_UP, KEY_RUN}) {
    disc.OnKeyDown(key);
    EXPECT_FALSE(disc.GetTrackMenu(DiscType::FullNavigation)->GetRegion(6)->enabled);
    EXPECT_FALSE(disc.GetTrackMenu(DiscType::MiniViewObject)->GetRegion(5)->enabled);
    EXPECT_FALSE(disc.GetTrackMenu(DiscType::MiniFullNavigation)->GetRegion(5)->enabled);
    disc.OnKeyUp(key);
  }
}

}  // namespace
