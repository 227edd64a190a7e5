#pragma once

#include <gtest/gtest.h>
#include <imgui.h>
#include <imgui_internal.h>

#include <functional>
#include <memory>
#include <span>
#include <string>

#include "commands/command_icons.h"
#include "viewport/viewport.h"
#include "views/preferences.h"
#include "zovhost/gui.h"
#include "zovhost/host_pictures.h"
#include "zovhost/offscreen_target.h"
#include "zovhost/phrases.h"
#include "zovhost/resource_pack.h"
#include "zovhost/window.h"

namespace apps_test {

/// Panels of the viewer over a view, drawn into a picture of any density. Places are points from the top
/// left.
class PanelStage {
 public:
  static constexpr int WIDTH = 1280;
  static constexpr int HEIGHT = 2400;  // so that nothing has to be scrolled

  PanelStage() {
    zovhost::Window::Options options;
    options.offscreen = true;
    std::string error;
    window = zovhost::Window::Create(options, error);
    EXPECT_NE(window, nullptr) << error;
    zovview::Viewport::Surroundings around = {[] {}, host, [](int, int) {}};
    around.preferences = &preferences;
    view = std::make_unique<zovview::Viewport>(around);
    EXPECT_TRUE(view->Create());
    view->SetPlace(0, 0, WIDTH, HEIGHT, 1.0);
  }
  ~PanelStage() { zovhost::SpeakLanguage(zovhost::GetLanguages().front()); }
  PanelStage(const PanelStage&) = delete;
  PanelStage& operator=(const PanelStage&) = delete;

  /// What follows is drawn so. `width`, `height`: pixels that are drawn; the panels have all the room in any
  /// case.
  void Begin(const zovhost::Language& language, double density, int width = 8, int height = 8) {
    zovhost::SpeakLanguage(language);
    gui.reset();
    gui = std::make_unique<zovhost::Gui>(static_cast<int>(WIDTH * density),
                                         static_cast<int>(HEIGHT * density), density);
    gui->SetIcons(zovview::GetPanelIcons(), zovhost::PaintIcon);
    EXPECT_TRUE(picture.Create(width, height, 1));
  }

  /// Some frames, until what appears has its size.
  void Draw(const std::function<void()>& panels) {
    constexpr int FRAMES = 3;
    for (int i = 0; i < FRAMES; ++i) DrawOnce(panels);
  }
  void DrawOnce(const std::function<void()>& panels) {
    EXPECT_TRUE(picture.Bind());
    gui->BeginFrame();
    panels();
    gui->EndFrame();
  }

  /// Headings of a panel, by the beginning of its title.
  static void Unfold(const char* panel, std::span<const char* const> headings) {
    ImGuiWindow* const window = ImGui::FindWindowByName(panel);
    ASSERT_NE(window, nullptr) << panel;
    for (const char* const heading : headings) {
      window->StateStorage.SetInt(window->GetID(zovhost::SayLabel(heading)), 1);
    }
  }

  zovhost::RendererHost host;
  zovview::Preferences preferences;
  std::unique_ptr<zovhost::Window> window;
  std::unique_ptr<zovview::Viewport> view;
  std::unique_ptr<zovhost::Gui> gui;
  zovhost::OffscreenTarget picture;
};

}  // namespace apps_test
