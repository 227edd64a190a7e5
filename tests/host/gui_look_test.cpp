// The looks of panels and menus: their words read on whatever they stand on, over any view.
#include <gtest/gtest.h>
#include <imgui.h>

#include <algorithm>
#include <array>
#include <vector>

#include "contrast.h"
#include "graphics_context.h"
#include "zovhost/gui.h"
#include "zovhost/scene_ground.h"

namespace {

using zovtest::Colour;

constexpr double readable = 4.5;

Colour LayOver(const ImVec4& colour, const Colour& below) {
  const std::array<double, 3> channels = {colour.x, colour.y, colour.z};
  Colour result = {};
  for (std::size_t i = 0; i < 3; ++i) result[i] = channels[i] * colour.w + below[i] * (1.0 - colour.w);
  return result;
}

// What a word may stand on within a panel or a menu.
constexpr auto fields = std::to_array<int>(
    {ImGuiCol_FrameBg, ImGuiCol_FrameBgHovered, ImGuiCol_FrameBgActive, ImGuiCol_Button,
     ImGuiCol_ButtonHovered, ImGuiCol_ButtonActive, ImGuiCol_Header, ImGuiCol_HeaderHovered,
     ImGuiCol_HeaderActive, ImGuiCol_Tab, ImGuiCol_TabHovered, ImGuiCol_TabActive, ImGuiCol_TextSelectedBg});
constexpr auto panels = std::to_array<int>({ImGuiCol_WindowBg, ImGuiCol_PopupBg, ImGuiCol_TitleBg,
                                            ImGuiCol_TitleBgActive, ImGuiCol_TitleBgCollapsed});

double FindLeastContrast(const Colour& view) {
  double least = 21.0;
  for (const int panel : panels) {
    const Colour plain = LayOver(ImGui::GetStyleColorVec4(panel), view);
    std::vector<Colour> grounds = {plain};
    for (const int field : fields) grounds.push_back(LayOver(ImGui::GetStyleColorVec4(field), plain));
    for (const Colour& ground : grounds) {
      for (const int words : {ImGuiCol_Text, ImGuiCol_TextDisabled}) {
        least =
            std::min(least, zovtest::GetContrast(LayOver(ImGui::GetStyleColorVec4(words), ground), ground));
      }
    }
  }
  return least;
}

class GuiLook : public testing::TestWithParam<bool> {
 protected:
  zovtest::OffscreenContext context;
};

TEST_P(GuiLook, reads_over_black_and_white) {
  zovhost::Gui gui(64, 64);
  gui.SetLight(GetParam());
  EXPECT_EQ(gui.IsLight(), GetParam());
  EXPECT_GE(FindLeastContrast({0.0, 0.0, 0.0}), readable);
  EXPECT_GE(FindLeastContrast({1.0, 1.0, 1.0}), readable);
}

// Words may stand below: those of an editor, of the welcome screen, of another panel.
TEST_P(GuiLook, hides_words_that_stand_below) {
  constexpr double UNREADABLE = 1.1;
  zovhost::Gui gui(64, 64);
  gui.SetLight(GetParam());
  for (const int panel : panels) {
    const ImVec4 colour = ImGui::GetStyleColorVec4(panel);
    const double contrast =
        zovtest::GetContrast(LayOver(colour, {0.0, 0.0, 0.0}), LayOver(colour, {1.0, 1.0, 1.0}));
    EXPECT_LT(contrast, UNREADABLE) << ImGui::GetStyleColorName(panel);
  }
}

INSTANTIATE_TEST_SUITE_P(Looks, GuiLook, testing::Bool(),
                         [](const auto& look) { return look.param ? "light" : "dark"; });

TEST(GuiLooks, read_on_the_ground_that_each_is_for) {
  const zovtest::OffscreenContext context;
  zovhost::Gui gui(64, 64);
  for (const zovhost::SceneGround& ground : zovhost::GetSceneGrounds()) {
    gui.SetLight(ground.lightPanels);
    for (const auto& colour : {ground.top, ground.bottom}) {
      EXPECT_GE(FindLeastContrast({colour[0], colour[1], colour[2]}), readable) << ground.name;
    }
  }
}

// A question stands before a view that has become darker, on whatever ground.
TEST_P(GuiLook, what_a_question_covers_becomes_darker) {
  zovhost::Gui gui(64, 64);
  gui.SetLight(GetParam());
  const ImVec4 shade = ImGui::GetStyleColorVec4(ImGuiCol_ModalWindowDimBg);
  for (const zovhost::SceneGround& ground : zovhost::GetSceneGrounds()) {
    if (ground.lightPanels != GetParam()) continue;
    for (const auto& colour : {ground.top, ground.bottom}) {
      const Colour view = {colour[0], colour[1], colour[2]};
      EXPECT_GE(zovtest::GetLuminance(view) * 0.7, zovtest::GetLuminance(LayOver(shade, view)))
          << ground.name;
    }
  }
}

TEST(GuiLooks, change_while_the_program_runs) {
  const zovtest::OffscreenContext context;
  zovhost::Gui gui(64, 64);
  const auto isBright = [] { return ImGui::GetStyleColorVec4(ImGuiCol_WindowBg).x > 0.5F; };
  EXPECT_FALSE(isBright());
  gui.SetLight(true);
  EXPECT_TRUE(isBright());
  gui.SetLight(false);
  EXPECT_FALSE(isBright());
}

}  // namespace
