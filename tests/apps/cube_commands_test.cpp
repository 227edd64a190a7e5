// What the menu of the cube and the list of coordinate systems do.
#include "commands/cube_commands.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <string>

#include "travelling_hub.h"

namespace {

using Korvane::Box3;
using Korvane::CameraParameters;
using Korvane::OrientorParameters;
using Korvane::Vector3;
using Place = zovview::ViewCommand::Place;

const std::array<Box3, 1> HOUSE = {Box3({30, -20, 4}, {6, 5, 4})};

class CubeCommandsTest : public apps_test::TravellingHub {
 protected:
  CubeCommandsTest() {
    Show(HOUSE);
    cube.SetKorvane(&hub);
    manager.SetOrientor(&cube);
    manager.SetViewportSize(WIDTH, HEIGHT);
    zovview::UseModelCoordinates(target);
  }
  ~CubeCommandsTest() override { manager.SetOrientor(nullptr); }

  void Run(std::string_view name) {
    const zovview::ViewCommand* const command = zovview::FindViewCommand(name);
    ASSERT_NE(command, nullptr) << name;
    command->run(target);
    Arrive();
  }
  bool IsOn(std::string_view name) const { return zovview::FindViewCommand(name)->isOn(target); }
};

TEST_F(CubeCommandsTest, of_each_list_one_is_chosen_and_the_one_that_was_asked_for) {
  for (const Place place :
       {Place::CubeProjection, Place::CubeSize, Place::CubeCorner, Place::CubeOpacity, Place::Coordinates}) {
    for (const zovview::ViewCommand& command : zovview::GetViewCommands()) {
      if (command.place != place) continue;
      Run(command.name);
      for (const zovview::ViewCommand& other : zovview::GetViewCommands()) {
        const bool asked = other.place == place && other.isOn(target);
        EXPECT_EQ(asked, &other == &command) << other.name;
      }
    }
  }
}

TEST_F(CubeCommandsTest, the_cube_gets_the_size_the_corner_and_the_opacity) {
  struct Size {
    const char* name;
    int pixels;
  };
  // Of a view 800 high automatic would be 136, and is at most normal.
  for (const Size& size : {Size{"cube-size-tiny", 35},
                           {"cube-size-small", 70},
                           {"cube-size-normal", 120},
                           {"cube-size-large", 170},
                           {"cube-size-automatic", 120}}) {
    Run(size.name);
    EXPECT_EQ(cube.GetScreenSize(), size.pixels) << size.name;
  }
  Run("cube-bottom-left");
  EXPECT_LT(manager.GetOrientorBounds().center.x, WIDTH / 4.0);
  EXPECT_LT(manager.GetOrientorBounds().center.y, HEIGHT / 4.0);
  Run("cube-opacity-25");
  EXPECT_EQ(cube.GetParameters().min_opacity, 0.25F);
}

TEST_F(CubeCommandsTest, the_present_view_becomes_the_home) {
  zovview::ShowTop(target);
  Arrive();
  const CameraParameters top = hub.GetView();
  Run("make-home");
  zovview::ShowFront(target);
  Arrive();
  ASSERT_GT((hub.GetView().eye - top.eye).Length(), 1.0);
  Run("cube-home");
  EXPECT_LT((hub.GetView().eye - top.eye).Length(), 1e-9);
}

TEST_F(CubeCommandsTest, with_parallel_faces_the_projection_goes_by_the_direction_of_the_view) {
  Run("parallel-faces");
  EXPECT_FALSE(hub.GetView().IsOrthographic());
  zovview::ShowTop(target);
  Arrive();
  EXPECT_TRUE(hub.GetView().IsOrthographic());
  zovview::ShowIsometric(target);
  Arrive();
  EXPECT_FALSE(hub.GetView().IsOrthographic());
  Run("parallel");
  EXPECT_TRUE(hub.GetView().IsOrthographic());
  Run("perspective");
  zovview::ShowTop(target);
  Arrive();
  EXPECT_FALSE(hub.GetView().IsOrthographic());
}

TEST_F(CubeCommandsTest, a_lock_wants_a_selection) {
  Run("toggle-lock");
  EXPECT_FALSE(IsOn("toggle-lock"));
  selection.PickAt(WIDTH / 2, HEIGHT / 2);
  ASSERT_GE(selection.GetPart(), 0);
  Run("toggle-lock");
  EXPECT_TRUE(IsOn("toggle-lock"));
  Run("toggle-lock");
  EXPECT_FALSE(IsOn("toggle-lock"));
}

TEST_F(CubeCommandsTest, settings_of_the_cube_turn_on_and_off) {
  for (const char* name : {"toggle-fit-on-click", "toggle-compass", "toggle-coordinates"}) {
    const bool before = IsOn(name);
    Run(name);
    EXPECT_NE(IsOn(name), before) << name;
    Run(name);
    EXPECT_EQ(IsOn(name), before) << name;
  }
}

TEST_F(CubeCommandsTest, a_coordinate_system_tells_what_is_up) {
  const Korvane::ApplicationParameters& parameters = hub.GetApplicationParameters();
  Run("up-y");
  EXPECT_EQ(parameters.scene_up_direction, Vector3(0, 1, 0));
  EXPECT_EQ(hub.GetWorldUpDirection(), Vector3(0, 1, 0));
  zovview::ShowTop(target);
  Arrive();
  EXPECT_NEAR((hub.GetView().centre - hub.GetView().eye).Normalized().Dot(Vector3(0, 1, 0)), -1.0, 1e-12);
  Run("up-of-model");
  EXPECT_EQ(parameters.scene_up_direction, scene->GetUpDirection());
}

}  // namespace
