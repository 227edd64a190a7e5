// Panels over a window under fingers.
#include <SDL.h>
#include <gtest/gtest.h>
#include <imgui.h>

#include <vector>

#include "panel_hand.h"

namespace {

using zovhost::WindowEvent;

constexpr float WIDTH = 640.0F;
constexpr float HEIGHT = 480.0F;

// A button and a slider on one panel; positions count from the top left.
class GuiTouchTest : public testing::Test {
 protected:
  void SetUp() override {
    hand.Open([this] { Draw(); });
    hand.window->SetEventHandler([this](const WindowEvent& event) { events.push_back(event); });
    hand.Rest();
  }

  void Draw() {
    ImGui::SetNextWindowPos(ImVec2(10, 10));
    ImGui::SetNextWindowSize(ImVec2(240, 80));
    ImGui::Begin("panel", nullptr, ImGuiWindowFlags_NoDecoration);
    if (ImGui::Button("button", ImVec2(60, 20))) ++clicks;
    hovered = ImGui::IsItemHovered();
    ImGui::SetNextItemWidth(200.0F);
    ImGui::SliderFloat("##slider", &value, 0.0F, 1.0F);
    slider = ImGui::GetItemRectMin();
    ImGui::End();
  }

  void Push(Uint32 type, SDL_FingerID finger, float x, float y) {
    SDL_Event event = {};
    event.type = type;
    event.tfinger.touchId = 1;
    event.tfinger.fingerId = finger;
    event.tfinger.x = (x + 0.5F) / WIDTH;
    event.tfinger.y = (y + 0.5F) / HEIGHT;
    SDL_PushEvent(&event);
  }
  void PushAndRest(Uint32 type, SDL_FingerID finger, float x, float y) {
    Push(type, finger, x, y);
    hand.Rest();
  }

  PanelHand hand;
  std::vector<WindowEvent> events;
  int clicks = 0;
  bool hovered = false;
  float value = 0.0F;
  ImVec2 slider;
};

TEST_F(GuiTouchTest, a_tap_clicks_and_leaves_no_pointer_behind) {
  Push(SDL_FINGERDOWN, 1, 50, 30);
  PushAndRest(SDL_FINGERUP, 1, 50, 30);
  EXPECT_EQ(clicks, 1);
  EXPECT_FALSE(hovered);
  EXPECT_TRUE(events.empty());
  PushAndRest(SDL_FINGERDOWN, 1, 50, 30);
  PushAndRest(SDL_FINGERUP, 1, 50, 30);
  EXPECT_EQ(clicks, 2) << "also a slow one";
}

TEST_F(GuiTouchTest, a_finger_that_came_down_on_a_panel_is_its_mouse_until_it_is_lifted) {
  PushAndRest(SDL_FINGERDOWN, 1, slider.x + 20.0F, slider.y + 8.0F);
  PushAndRest(SDL_FINGERMOTION, 1, slider.x + 180.0F, slider.y + 200.0F);
  EXPECT_GT(value, 0.8F);
  PushAndRest(SDL_FINGERUP, 1, slider.x + 180.0F, slider.y + 200.0F);
  const float left = value;
  PushAndRest(SDL_FINGERMOTION, 1, slider.x + 20.0F, slider.y + 8.0F);
  EXPECT_EQ(value, left);
  EXPECT_TRUE(events.empty());
}

TEST_F(GuiTouchTest, another_finger_on_the_panel_does_nothing_and_one_beside_it_goes_on) {
  PushAndRest(SDL_FINGERDOWN, 1, slider.x + 20.0F, slider.y + 8.0F);
  const float before = value;
  PushAndRest(SDL_FINGERDOWN, 2, 50, 30);
  PushAndRest(SDL_FINGERUP, 2, 50, 30);
  EXPECT_EQ(clicks, 0);
  EXPECT_EQ(value, before);
  PushAndRest(SDL_FINGERDOWN, 3, 400, 300);
  PushAndRest(SDL_FINGERMOTION, 3, 50, 30);
  PushAndRest(SDL_FINGERUP, 3, 50, 30);
  EXPECT_EQ(events.size(), 3U);
  EXPECT_EQ(clicks, 0);
}

TEST_F(GuiTouchTest, a_lost_focus_lifts_the_finger) {
  PushAndRest(SDL_FINGERDOWN, 1, slider.x + 20.0F, slider.y + 8.0F);
  SDL_Event event = {};
  event.type = SDL_WINDOWEVENT;
  event.window.event = SDL_WINDOWEVENT_FOCUS_LOST;
  SDL_PushEvent(&event);
  hand.Rest();
  const float before = value;
  PushAndRest(SDL_FINGERMOTION, 1, slider.x + 180.0F, slider.y + 8.0F);
  EXPECT_EQ(value, before);
}

}  // namespace
