// The part of the model that is selected, and what the hub makes of it.
#include "views/selection.h"

#include <gtest/gtest.h>

#include <array>

#include "travelling_hub.h"

namespace {

using Korvane::Box3;
using Korvane::Vector2;
using Korvane::Vector3;

// Beside each other in the start view, which looks from the front, -y.
constexpr int LEFT = 0;
constexpr int RIGHT = 1;
const std::array<Box3, 2> BOXES = {Box3({-3, 0, 1}, {1, 2, 1}), Box3({4, 0, 2}, {0.5, 0.5, 2})};

class SelectionTest : public apps_test::TravellingHub {
 protected:
  SelectionTest() { Show(BOXES); }

  void PickPart(int part) {
    const Vector2 pixel = Project(BOXES[static_cast<std::size_t>(part)].GetCenter());
    selection.PickAt(static_cast<int>(pixel.x), static_cast<int>(pixel.y));
  }
  const Korvane::ApplicationParameters& Bounds() const { return hub.GetApplicationParameters(); }
};

TEST_F(SelectionTest, the_part_under_the_pixel_is_selected_and_the_last_one_counts) {
  EXPECT_EQ(selection.GetPart(), -1);
  for (const int part : {RIGHT, LEFT}) {
    PickPart(part);
    EXPECT_EQ(selection.GetPart(), part);
  }
}

TEST_F(SelectionTest, the_hub_knows_the_bounds_of_the_part) {
  PickPart(RIGHT);
  EXPECT_TRUE(hub.IsGeometrySelected());
  EXPECT_EQ(Bounds().selected_bound_centre, Vector3(4, 0, 2));
  EXPECT_EQ(Bounds().selected_bound_box.GetExtent(), Vector3(0.5, 0.5, 2));
  // Half the diagonal: sqrt(0.25 + 0.25 + 4).
  EXPECT_NEAR(Bounds().selected_bound_radius, 2.1213203435596424, 1e-12);
  EXPECT_EQ(Bounds().scene_bound_centre, Vector3(4, 0, 2));
}

TEST_F(SelectionTest, beside_the_model_nothing_is_selected_and_the_scene_is_the_model_again) {
  PickPart(LEFT);
  selection.PickAt(2, HEIGHT - 2);
  EXPECT_EQ(selection.GetPart(), -1);
  EXPECT_FALSE(hub.IsGeometrySelected());
  EXPECT_EQ(Bounds().scene_bound_centre, scene->GetCentre());
  EXPECT_EQ(Bounds().scene_bound_radius, scene->GetRadius());
}

TEST_F(SelectionTest, a_part_without_a_name_is_called_by_its_number) {
  EXPECT_EQ(selection.GetName(), "");
  PickPart(RIGHT);
  EXPECT_EQ(selection.GetName(), "part 2");
}

TEST_F(SelectionTest, another_scene_clears_it) {
  PickPart(LEFT);
  selection.SetScene(nullptr);
  EXPECT_EQ(selection.GetPart(), -1);
  EXPECT_FALSE(hub.IsGeometrySelected());
  selection.PickAt(WIDTH / 2, HEIGHT / 2);
  EXPECT_EQ(selection.GetPart(), -1);
}

// The corners of the selected box touch the frame, the other box is left out of account.
TEST_F(SelectionTest, a_fit_goes_to_the_selection) {
  PickPart(RIGHT);
  zovview::FitSelection(target);
  Arrive();
  double highest = 0.0;
  double lowest = HEIGHT;
  for (int corner = 0; corner < 8; ++corner) {
    const double y = Project(BOXES[RIGHT].GetCorner(corner)).y;
    highest = std::max(highest, y);
    lowest = std::min(lowest, y);
  }
  EXPECT_NEAR(highest, HEIGHT, 1e-6);
  EXPECT_NEAR(lowest, 0.0, 1e-6);
}

TEST_F(SelectionTest, without_one_a_fit_goes_to_the_model) {
  zovview::FitSelection(target);
  Arrive();
  const Korvane::CameraParameters fitted = hub.GetView();
  zovview::FitAll(target);
  Arrive();
  EXPECT_TRUE(Korvane::CameraCheckEqual(&fitted, &hub.GetView()));
}

}  // namespace
