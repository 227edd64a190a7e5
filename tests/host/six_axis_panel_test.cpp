// The page of six-axis devices: what its controls do, and what it shows of a device.
#include "zovhost/six_axis_panel.h"

#include <gtest/gtest.h>

#include <cmath>

#include "host/panel_hand.h"
#include "korvane/cam3d_controller.h"
#include "korvane/cam3d_controller_observer.h"

namespace {

using Korvane::Cam3DController;
using zovhost::FedSource;
using zovhost::SixAxisHand;
using zovhost::SixAxisPanel;
using zovhost::SixAxisSettings;

class SixAxisPanelTest : public testing::Test, public PanelHand {
 protected:
  void SetUp() override {
    hand.AddSource(&source);
    panel.AddSource(nullptr, "nothing");
    panel.AddSource(&source, "Test");
    panel.SetVisible(true);
    Open([this] {
      hand.Advance(true);
      panel.Draw(controller, RIGHT + LEFT_OUT, TOP);
    });
  }
  // In the list that is open, which begins right below its field.
  void Choose(int line, int entry) {
    Click(FIELD, GetLine(line));
    const float height = ImGui::GetFontSize() + ImGui::GetStyle().ItemSpacing.y;
    const float first =
        ImGui::GetStyle().WindowPadding.y + ImGui::GetFontSize() + ImGui::GetFontSize() * 0.5F;
    Click(FIELD, GetLine(line) + static_cast<int>(first + static_cast<float>(entry) * height));
  }

  // Lines of the page, above the separator.
  static constexpr int MODE = 0;
  static constexpr int SPEED = 1;
  static constexpr int THRESHOLD = 2;
  static constexpr int SWITCHES = 3;
  // The page is wider than others.
  static constexpr float LEFT_OUT = 104.0F;

  Cam3DController controller;
  FedSource source;
  SixAxisHand hand{&controller};
  SixAxisPanel panel{hand};
};

TEST_F(SixAxisPanelTest, a_mode_is_chosen_of_its_list) {
  Choose(MODE, 2);
  EXPECT_EQ(controller.GetNavigationMode(), Korvane::Cam3DControllerParameters::MODE_FLY);
}

// A slider is set by a press; its middle is the speed of a first start, which its ends divide and multiply by
// ten.
TEST_F(SixAxisPanelTest, speed_and_threshold_are_sliders) {
  constexpr int FIRST = 123;  // pixels of the field
  // To the left of the number, which has the room of the largest.
  const auto findLast = [](const char* largest) {
    constexpr int RIGHT_OF_FIELD = 411;
    const float number = ImGui::CalcTextSize(largest).x + ImGui::GetStyle().ItemInnerSpacing.x;
    return RIGHT_OF_FIELD - static_cast<int>(std::ceil(number)) - 2;
  };
  Click(findLast("10.00 times"), GetLine(SPEED));
  EXPECT_NEAR(controller.GetSensitivity(), 0.009, 1e-9);
  Click(FIRST, GetLine(SPEED));
  EXPECT_NEAR(controller.GetSensitivity(), 0.00009, 1e-9);
  Click(findLast("100"), GetLine(THRESHOLD));
  EXPECT_EQ(controller.GetInputThreshold(), 100.0);
  Click(FIRST, GetLine(THRESHOLD));
  EXPECT_EQ(controller.GetInputThreshold(), 0.0);
}

TEST_F(SixAxisPanelTest, each_switch_is_switched) {
  EXPECT_TRUE(controller.GetEnableTranslation());
  Click(20, GetLine(SWITCHES));
  EXPECT_FALSE(controller.GetEnableTranslation());
  Click(20, GetLine(SWITCHES));
  EXPECT_TRUE(controller.GetEnableTranslation());
  EXPECT_TRUE(controller.GetEnableRotation());
  EXPECT_TRUE(controller.GetKeepSceneUpright());
}

TEST_F(SixAxisPanelTest, its_cross_closes_it) {
  Click(static_cast<int>(RIGHT + LEFT_OUT) - 14, static_cast<int>(TOP) + 12);
  EXPECT_FALSE(panel.IsVisible());
}

TEST_F(SixAxisPanelTest, what_a_source_shows_changes_nothing_until_it_is_touched) {
  SixAxisSettings settings;
  settings.axes[2] = {5, true, 0.7};
  settings.deadZone = 33.0;
  settings.commands[40] = Korvane::CAM3D_KEY_HOST_12;
  ASSERT_TRUE(hand.SetSettings(&source, settings));
  Click(FIELD, GetLine(SWITCHES + 7) + 4);  // unfolds it, below the six values
  source.Feed({1, 2, 3, 4, 5, 6});
  Rest();
  EXPECT_EQ(hand.GetSettings(&source), settings);
}

}  // namespace
