// A command that comes while the camera travels ends as one that comes when it has arrived.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <string>
#include <vector>

#include "cuboids.h"
#include "lone_view.h"

namespace {

using Korvane::Box3;
using Korvane::CameraParameters;
using Korvane::Vector3;

const std::array<Box3, 1> HOUSE = {Box3({30, -20, 4}, {6, 5, 4})};
constexpr double SAME = 1e-6;  // of the distance to the centre

// All that move the camera, but for the way back through the views.
const std::vector<std::string> MOVES = {"home",        "isometric", "fit-all",        "fit-selection",
                                        "front",       "back",      "left",           "right",
                                        "top",         "bottom",    "level",          "toggle-projection",
                                        "perspective", "parallel",  "parallel-faces", "next-view",
                                        "cube-home"};
const std::vector<std::string> FLIGHTS = {"home", "isometric", "front", "left", "top", "bottom"};

class WaitingCommandTest : public apps_test::LoneViewTest {
 protected:
  void SetUp() override {
    LoneViewTest::SetUp();
    scene = apps_test::MakeCuboids(HOUSE);
  }

  void Begin() { view->SetScene(*scene); }
  void Run(const std::string& name) { view->Run(*zovview::FindViewCommand(name)); }
  void Frames(int count) {
    for (int i = 0; i < count; ++i) {
      Tick();
    }
  }
  void Arrive() { Frames(3 * zovview::TourClock::FRAMES_PER_SECOND); }
  const CameraParameters& GetView() { return view->GetHub().GetView(); }
  static Vector3 GetDirection(const CameraParameters& camera) {
    return (camera.centre - camera.eye).Normalized();
  }
  bool IsUpright() {
    const CameraParameters& camera = GetView();
    const Vector3 right = (camera.centre - camera.eye).Cross(camera.up).Normalized();
    return std::abs(right.Dot(scene->GetUpDirection())) < 1e-6;
  }
  static bool IsSame(const CameraParameters& a, const CameraParameters& b) {
    const double scale = (b.eye - b.centre).Length();
    const double moved = (a.eye - b.eye).Length() + (a.centre - b.centre).Length();
    const double sized = std::abs(a.ortho_height - b.ortho_height);
    const double turned =
        (a.up - b.up).Length() + std::abs(a.projection_transition - b.projection_transition);
    return (moved + sized) / scale + turned < SAME && a.projection_type == b.projection_type &&
           a.perspective_with_ortho == b.perspective_with_ortho;
  }

  std::unique_ptr<zovhost::Scene> scene;
};

TEST_F(WaitingCommandTest, every_command_in_mid_flight_ends_as_after_it) {
  for (const std::string& flight : FLIGHTS) {
    for (const std::string& command : MOVES) {
      SCOPED_TRACE(testing::Message() << flight << ", " << command);
      Begin();
      Run(flight);
      Arrive();
      Run(command);
      Arrive();
      const CameraParameters wanted = GetView();
      Begin();
      Run(flight);
      Frames(8);
      Run(command);
      Arrive();
      // From above the side that is up is the one that was ahead when the key came.
      if (command == "top" || command == "bottom") {
        EXPECT_LT((GetDirection(GetView()) - GetDirection(wanted)).Length(), SAME);
        EXPECT_NEAR(std::max(std::abs(GetView().up.x), std::abs(GetView().up.y)), 1.0, SAME);
      } else {
        EXPECT_TRUE(IsSame(GetView(), wanted));
      }
      EXPECT_TRUE(IsUpright());
      EXPECT_FALSE(view->GetHub().IsShotActive());
    }
  }
}

TEST_F(WaitingCommandTest, a_change_of_projection_turns_round_at_once) {
  Begin();
  Run("toggle-projection");
  Frames(8);
  EXPECT_TRUE(GetView().IsOrthographic() || GetView().projection_transition > 0.0);
  const double blend = GetView().projection_transition;
  Run("toggle-projection");
  Frames(4);
  EXPECT_LT(GetView().projection_transition, blend);
  Arrive();
  EXPECT_FALSE(GetView().IsOrthographic());
}

TEST_F(WaitingCommandTest, several_wait_in_their_order) {
  Begin();
  Run("top");
  Frames(4);
  Run("toggle-projection");
  Run("toggle-projection");
  Run("parallel");
  const Vector3 before = (GetView().centre - GetView().eye).Normalized();
  Frames(4);
  EXPECT_NE((GetView().centre - GetView().eye).Normalized(), before) << "the flight goes on";
  Arrive();
  EXPECT_TRUE(GetView().IsOrthographic());
  EXPECT_LT((GetView().centre - GetView().eye).Normalized().Dot(scene->GetUpDirection()), -0.999);
}

TEST_F(WaitingCommandTest, nothing_waits_for_another_model) {
  Begin();
  Run("top");
  Frames(4);
  Run("parallel");
  Begin();
  Arrive();
  EXPECT_FALSE(GetView().IsOrthographic());
}

TEST_F(WaitingCommandTest, every_command_that_starts_from_rest_is_known) {
  int count = 0;
  for (const zovview::ViewCommand& command : zovview::GetViewCommands()) {
    if (zovview::StartsFromRest(command)) ++count;
  }
  EXPECT_EQ(count, 12);
}

}  // namespace
