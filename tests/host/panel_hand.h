#pragma once

#include <SDL.h>
#include <gtest/gtest.h>
#include <imgui.h>

#include <functional>
#include <memory>
#include <string>

#include "zovhost/gui.h"
#include "zovhost/window.h"

/// A hand on a panel in a window, offscreen. The panel's items are where they were drawn last; a line is
/// found by its number. Positions are points from the top left.
class PanelHand {
 public:
  static constexpr float RIGHT = 320.0F;  // the upper right corner of the panel
  static constexpr float TOP = 10.0F;
  static constexpr int FIELD = 200;  // in the right column

  /// `draw` within each frame of the Gui.
  void Open(const std::function<void()>& draw) {
    zovhost::Window::Options options;
    options.width = 640;
    options.height = 480;
    options.offscreen = true;
    std::string error;
    window = zovhost::Window::Create(options, error);
    ASSERT_NE(window, nullptr) << error;
    gui = std::make_unique<zovhost::Gui>(*window);
    window->SetFrameHandler([this, draw] {
      gui->BeginFrame();
      draw();
      gui->EndFrame();
    });
    Rest();
  }

  void Rest() {
    window->RequestFrame();
    for (int i = 0; i < 500; ++i) {
      window->Step(5);
      if (!window->IsFrameRequested()) return;
    }
    FAIL() << "frames are asked for without end";
  }

  void Press(bool down, int x, int y) {
    SDL_Event event = {};
    event.type = down ? SDL_MOUSEBUTTONDOWN : SDL_MOUSEBUTTONUP;
    event.button.button = SDL_BUTTON_LEFT;
    event.button.x = x;
    event.button.y = y;
    SDL_PushEvent(&event);
    Rest();
  }
  void Touch(Uint32 type, int x, int y) {
    SDL_Event event = {};
    event.type = type;
    event.tfinger.touchId = 1;
    event.tfinger.fingerId = 1;
    event.tfinger.x = (static_cast<float>(x) + 0.5F) / 640.0F;
    event.tfinger.y = (static_cast<float>(y) + 0.5F) / 480.0F;
    SDL_PushEvent(&event);
    Rest();
  }
  void Click(int x, int y) {
    Press(true, x, y);
    Press(false, x, y);
  }
  void Type(const char* letters) {
    SDL_Event event = {};
    event.type = SDL_TEXTINPUT;
    SDL_strlcpy(event.text.text, letters, sizeof(event.text.text));
    SDL_PushEvent(&event);
    Rest();
  }
  void PushControl(bool down) {
    SDL_SetModState(down ? KMOD_LCTRL : KMOD_NONE);
    SDL_Event event = {};
    event.type = down ? SDL_KEYDOWN : SDL_KEYUP;
    event.key.keysym.sym = SDLK_LCTRL;
    event.key.keysym.scancode = SDL_SCANCODE_LCTRL;
    event.key.keysym.mod = static_cast<Uint16>(SDL_GetModState());
    SDL_PushEvent(&event);
    Rest();
  }
  /// The middle of a line of the panel, 0 the first below the title.
  static int GetLine(int index) {
    const ImGuiStyle& style = ImGui::GetStyle();
    const float height = ImGui::GetFontSize() + 2.0F * style.FramePadding.y;
    return static_cast<int>(TOP + height + style.WindowPadding.y +
                            static_cast<float>(index) * (height + style.ItemSpacing.y) + height * 0.5F);
  }

  std::unique_ptr<zovhost::Window> window;
  std::unique_ptr<zovhost::Gui> gui;
};
