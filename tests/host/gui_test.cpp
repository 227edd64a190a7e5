// Panels over a window, offscreen: whom the pointer belongs to, and when frames are asked for.
#include "zovhost/gui.h"

#include <SDL.h>
#include <gtest/gtest.h>
#include <imgui.h>
#include <imgui_stdlib.h>

#include <memory>
#include <string>
#include <vector>

#include "zovhost/window.h"

namespace {

using zovhost::Window;
using zovhost::WindowEvent;

constexpr int HEIGHT = 300;

// One panel from (10, 10) to (110, 60), counted from the top left.
class GuiTest : public testing::Test {
 protected:
  void SetUp() override {
    Window::Options options;
    options.width = 400;
    options.height = HEIGHT;
    options.offscreen = true;
    std::string error;
    window = Window::Create(options, error);
    ASSERT_NE(window, nullptr) << error;
    gui = std::make_unique<zovhost::Gui>(*window);
    window->SetEventHandler([this](const WindowEvent& event) { events.push_back(event); });
    window->SetFrameHandler([this] { DrawFrame(); });
    window->RequestFrame();
    Rest();
  }

  void DrawFrame() {
    ++frames;
    gui->BeginFrame();
    if (visible) {
      ImGui::SetNextWindowPos(ImVec2(10, 10));
      ImGui::SetNextWindowSize(ImVec2(100, 50));
      ImGui::Begin("panel", nullptr, ImGuiWindowFlags_NoDecoration);
      if (ImGui::Button("button", ImVec2(60, 20))) ++clicks;
      hovered = ImGui::IsItemHovered();
      if (hasText) DrawText();
      if (overfull) {
        ImGui::Dummy(ImVec2(10, 200));
        ImGui::BeginChild("out of sight", ImVec2(50, 20));
        ImGui::EndChild();
      }
      ImGui::End();
    }
    gui->EndFrame();
  }

  // To the right of the button.
  void DrawText() {
    ImGui::SameLine();
    ImGui::InputText("##text", &text);
    if (ImGui::IsItemDeactivatedAfterEdit()) finished.push_back(text);
  }

  void PushKey(Uint32 type, SDL_Keycode key, SDL_Scancode code) {
    SDL_Event event = {};
    event.type = type;
    event.key.keysym.sym = key;
    event.key.keysym.scancode = code;
    SDL_PushEvent(&event);
  }
  void Type(const char* letters) {
    SDL_Event event = {};
    event.type = SDL_TEXTINPUT;
    SDL_strlcpy(event.text.text, letters, sizeof(event.text.text));
    SDL_PushEvent(&event);
    Rest();
  }
  void ClickText() {
    hasText = true;
    window->RequestFrame();
    Rest();
    Push(SDL_MOUSEBUTTONDOWN, 95, 30);
    Rest();
    Push(SDL_MOUSEBUTTONUP, 95, 30);
    Rest();
    events.clear();
  }
  std::vector<SDL_Keycode> GetKeysDown() const {
    std::vector<SDL_Keycode> keys;
    for (const WindowEvent& event : events) {
      if (event.type == WindowEvent::Type::KeyDown) keys.push_back(event.key);
    }
    return keys;
  }

  // Until no frame is asked for any more.
  void Rest() {
    for (int i = 0; i < 500; ++i) {
      window->Step(5);
      if (!window->IsFrameRequested()) return;
    }
    FAIL() << "frames are asked for without end";
  }

  void Push(Uint32 type, int pointX, int pointY) {
    SDL_Event event = {};
    event.type = type;
    if (type == SDL_MOUSEMOTION) {
      event.motion.x = pointX;
      event.motion.y = pointY;
    } else {
      event.button.button = SDL_BUTTON_LEFT;
      event.button.x = pointX;
      event.button.y = pointY;
    }
    SDL_PushEvent(&event);
  }

  std::unique_ptr<Window> window;
  std::unique_ptr<zovhost::Gui> gui;
  std::vector<WindowEvent> events;
  bool visible = true;
  bool hasText = false;
  std::string text;
  std::vector<std::string> finished;
  bool overfull = false;  // with a part that is scrolled out of sight
  int frames = 0;
  int clicks = 0;
  bool hovered = false;
};

TEST_F(GuiTest, a_panel_that_appears_is_drawn_without_any_input) { EXPECT_GE(frames, 2); }

TEST_F(GuiTest, a_panel_with_a_part_out_of_sight_comes_to_rest) {
  overfull = true;
  window->RequestFrame();
  Rest();
}

TEST_F(GuiTest, knows_where_its_panels_are) {
  EXPECT_TRUE(gui->IsOverPanel(50, HEIGHT - 1 - 30));
  EXPECT_FALSE(gui->IsOverPanel(50, 30));
  EXPECT_FALSE(gui->IsOverPanel(200, HEIGHT - 1 - 30));
}

TEST_F(GuiTest, the_first_press_over_a_panel_belongs_to_it) {
  Push(SDL_MOUSEBUTTONDOWN, 50, 30);
  Push(SDL_MOUSEBUTTONUP, 50, 30);
  Rest();
  EXPECT_TRUE(events.empty());
  EXPECT_EQ(clicks, 1);
}

TEST_F(GuiTest, a_press_beside_the_panels_goes_on_and_asks_for_no_frame) {
  frames = 0;
  Push(SDL_MOUSEMOTION, 200, 200);
  Push(SDL_MOUSEBUTTONDOWN, 200, 200);
  Rest();
  EXPECT_EQ(events.size(), 2U);
  EXPECT_EQ(frames, 0);
}

TEST_F(GuiTest, a_drag_that_began_beside_the_panels_goes_on_over_them) {
  Push(SDL_MOUSEBUTTONDOWN, 200, 200);
  Push(SDL_MOUSEMOTION, 50, 30);
  Push(SDL_MOUSEBUTTONUP, 50, 30);
  Rest();
  EXPECT_EQ(events.size(), 3U);
}

TEST_F(GuiTest, a_drag_that_began_on_a_panel_stays_with_it_until_it_ends) {
  Push(SDL_MOUSEBUTTONDOWN, 50, 30);
  Push(SDL_MOUSEMOTION, 200, 200);
  Push(SDL_MOUSEBUTTONUP, 200, 200);
  Rest();
  EXPECT_TRUE(events.empty());
  Push(SDL_MOUSEMOTION, 210, 210);
  Rest();
  EXPECT_EQ(events.size(), 1U);
}

TEST_F(GuiTest, a_pointer_that_enters_and_leaves_asks_for_a_few_frames) {
  frames = 0;
  Push(SDL_MOUSEMOTION, 50, 30);
  Rest();
  EXPECT_GT(frames, 0);
  EXPECT_TRUE(hovered);
  frames = 0;
  Push(SDL_MOUSEMOTION, 200, 200);
  Rest();
  EXPECT_GT(frames, 0);
  EXPECT_FALSE(hovered);
  EXPECT_LT(frames, 10);
}

TEST_F(GuiTest, keys_go_on_while_no_text_is_typed) {
  PushKey(SDL_KEYDOWN, SDLK_f, SDL_SCANCODE_F);
  Type("f");
  PushKey(SDL_KEYUP, SDLK_f, SDL_SCANCODE_F);
  Rest();
  EXPECT_EQ(GetKeysDown(), (std::vector<SDL_Keycode>{SDLK_f}));
  EXPECT_EQ(events.size(), 2U);
}

TEST_F(GuiTest, a_text_that_is_typed_keeps_its_keys) {
  ClickText();
  PushKey(SDL_KEYDOWN, SDLK_f, SDL_SCANCODE_F);
  Type("f");
  PushKey(SDL_KEYUP, SDLK_f, SDL_SCANCODE_F);
  Type("\u00fc");
  EXPECT_EQ(text, "f\u00fc");
  EXPECT_TRUE(GetKeysDown().empty());
}

TEST_F(GuiTest, a_key_that_goes_up_while_a_text_is_typed_is_heard_by_the_window_too) {
  PushKey(SDL_KEYDOWN, SDLK_LSHIFT, SDL_SCANCODE_LSHIFT);
  Rest();
  ClickText();
  PushKey(SDL_KEYUP, SDLK_LSHIFT, SDL_SCANCODE_LSHIFT);
  Rest();
  ASSERT_EQ(events.size(), 1U);
  EXPECT_EQ(events[0].type, WindowEvent::Type::KeyUp);
}

TEST_F(GuiTest, a_press_beside_the_panels_ends_the_typing_and_goes_on) {
  ClickText();
  Type("house");
  Push(SDL_MOUSEBUTTONDOWN, 200, 200);
  Rest();
  Push(SDL_MOUSEBUTTONUP, 200, 200);
  Rest();
  EXPECT_EQ(finished, (std::vector<std::string>{"house"}));
  EXPECT_EQ(events.size(), 2U);
  PushKey(SDL_KEYDOWN, SDLK_f, SDL_SCANCODE_F);
  Rest();
  EXPECT_EQ(GetKeysDown(), (std::vector<SDL_Keycode>{SDLK_f}));
}

TEST_F(GuiTest, a_panel_that_is_gone_hears_nothing) {
  visible = false;
  window->RequestFrame();
  Rest();
  EXPECT_FALSE(gui->IsOverPanel(50, HEIGHT - 1 - 30));
  Push(SDL_MOUSEBUTTONDOWN, 50, 30);
  Rest();
  EXPECT_EQ(events.size(), 1U);
}

}  // namespace
