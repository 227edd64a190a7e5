// Where the notes beside the pointer stand, counted in points, on displays of more than one pixel a point.
#include <gtest/gtest.h>

#include <cmath>

#include "korvane/orbit_tool.h"
#include "support/manual_platform.h"
#include "support/memory_hub.h"
#include "support/placed_notes.h"
#include "views/tool_note.h"
#include "zovhost/tooltip_note.h"

namespace {

// Points.
constexpr double WIDTH = 400.0;
constexpr double HEIGHT = 300.0;

class NotePlacesTest : public testing::TestWithParam<double> {
 protected:
  NotePlacesTest() {
    Korvane::ApplicationParameters& parameters = hub.GetApplicationParameters();
    parameters.pixels_per_point = static_cast<float>(scale);
    parameters.viewport_width = Pixels(WIDTH);
    parameters.viewport_height = Pixels(HEIGHT);
  }

  int Pixels(double points) const { return static_cast<int>(std::lround(points * scale)); }
  // Whole pixels.
  void ExpectAt(double x, double y) const {
    EXPECT_NEAR(notes.GetPlace().x, x, 1.0 / scale);
    EXPECT_NEAR(notes.GetPlace().y, y, 1.0 / scale);
  }
  void PointAt(double x, double y) {
    zovhost::TooltipNote tip([] {});
    tip.SetRenderer(&notes);
    tip.Follow(L"Home", Pixels(x), Pixels(y), false);
    platform.Advance(500);
    tip.Draw(hub, Pixels(WIDTH), Pixels(HEIGHT));
  }

  const double scale = GetParam();
  ManualPlatform platform;
  PlacedNotes notes{scale};
  MemoryHub hub;
};

TEST_P(NotePlacesTest, a_tooltip_stands_below_the_pointer_and_to_the_right) {
  PointAt(100.0, 200.0);
  ExpectAt(100.0 + 10.0 + PlacedNotes::WIDTH / 2.0, 200.0 - 22.0 - PlacedNotes::HEIGHT / 2.0);
}

TEST_P(NotePlacesTest, a_tooltip_keeps_its_distance_from_the_edges) {
  PointAt(WIDTH - 10.0, 200.0);
  ExpectAt(WIDTH - 4.0 - PlacedNotes::WIDTH / 2.0, 200.0 - 22.0 - PlacedNotes::HEIGHT / 2.0);
  PointAt(100.0, 30.0);
  ExpectAt(100.0 + 10.0 + PlacedNotes::WIDTH / 2.0, 30.0 + 4.0 + PlacedNotes::HEIGHT / 2.0);
}

TEST_P(NotePlacesTest, the_note_of_a_tool_stands_below_the_pointer) {
  Korvane::OrbitTool tool;
  zovview::ToolNote note([] {});
  note.Choose(&tool, notes.CreateTooltipHUD(L"Orbit"), true);
  note.Draw(notes, hub, Pixels(100.0), Pixels(200.0));
  ExpectAt(100.0, 200.0 - 64.0);
}

INSTANTIATE_TEST_SUITE_P(EachScale, NotePlacesTest, testing::Values(1.0, 1.25, 1.5, 2.0, 3.0));

}  // namespace
