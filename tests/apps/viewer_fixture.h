#pragma once

#include <SDL.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "korvane/vector2.h"
#include "program.h"
#include "viewer/viewer.h"

namespace apps_test {

inline constexpr const char* TRIANGLE = "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n";
inline constexpr const char* SQUARE = "v 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\nf 1 2 3 4\n";
/// A file of one view, from the front and above.
inline constexpr const char* VIEWPOINT =
    "<VisualizationInfo Guid=\"0f4c2b6a-8d1e-4f37-9a52-6c3b1d7e8f90\"><PerspectiveCamera>"
    "<CameraViewPoint><X>3</X><Y>-8</Y><Z>2</Z></CameraViewPoint>"
    "<CameraDirection><X>0</X><Y>1</Y><Z>0</Z></CameraDirection>"
    "<CameraUpVector><X>0</X><Y>0</Y><Z>1</Z></CameraUpVector>"
    "<FieldOfView>50</FieldOfView></PerspectiveCamera></VisualizationInfo>";

inline constexpr int WIDTH = 800;
inline constexpr int HEIGHT = 600;

/// The viewer in a window, offscreen, with a triangle to look at. Pixels count from the bottom left.
class ViewerTest : public testing::Test {
 protected:
  virtual zovhost::Window::Options GetOptions() const {
    zovhost::Window::Options options;
    options.width = WIDTH;
    options.height = HEIGHT;
    options.offscreen = true;
    return options;
  }

  void SetUp() override {
    std::string error;
    window = zovhost::Window::Create(GetOptions(), error);
    ASSERT_NE(window, nullptr) << error;
    viewer = std::make_unique<zovview::Viewer>(*window);
    viewer->Open({folder.Write("triangle.obj", TRIANGLE)});
    ComeToRest();
  }

  // Nothing is drawn that nobody has asked a picture for.
  void TearDown() override {
    if (viewer == nullptr) return;
    for (std::size_t view = 0; view < viewer->GetViewCount(); ++view) {
      const zovhost::GLRenderer& renderer = viewer->GetView(view).GetRenderer();
      EXPECT_EQ(renderer.GetPlaceholderCount(), 0) << renderer.GetLastPlaceholder();
    }
  }

  // The panel, which a window as small as this one has folded at first.
  void UnfoldPanel() {
    viewer->GetPreferences().Edit(
        [](zovview::Choices& choices) { choices.panel = zovview::Choices::PANEL_OPEN; });
  }

  // Until nothing loads or moves any more, for a minute at most.
  void ComeToRest() {
    for (int i = 0; i < 6000; ++i) {
      const bool open = window->Step(10);
      if (!open || (!viewer->IsLoading() && !window->IsFrameRequested())) return;
    }
    FAIL() << "the viewer does not come to rest";
  }

  void Drop(const std::filesystem::path& file) { DropTogether({file}); }
  void DropTogether(const std::vector<std::filesystem::path>& files) {
    for (const std::filesystem::path& file : files) {
      SDL_Event event = {};
      event.type = SDL_DROPFILE;
      event.drop.file = SDL_strdup(file.c_str());
      SDL_PushEvent(&event);
    }
    do window->Step(0);
    while (SDL_HasEvent(SDL_DROPFILE) == SDL_TRUE);
    ComeToRest();
  }

  void PushKey(Uint32 type, SDL_Keycode key, SDL_Keymod modifiers = KMOD_NONE) {
    SDL_Event event = {};
    event.type = type;
    event.key.state = type == SDL_KEYDOWN ? SDL_PRESSED : SDL_RELEASED;
    event.key.keysym.sym = key;
    event.key.keysym.scancode = SDL_GetScancodeFromKey(key);
    event.key.keysym.mod = static_cast<Uint16>(modifiers);
    SDL_PushEvent(&event);
  }
  void PushText(const std::string& text) {
    SDL_Event event = {};
    event.type = SDL_TEXTINPUT;
    SDL_strlcpy(event.text.text, text.c_str(), sizeof(event.text.text));
    SDL_PushEvent(&event);
  }
  // The keys of these go down before another, and up after it.
  void PushModifiers(Uint32 type, SDL_Keymod modifiers) {
    constexpr std::pair<SDL_Keymod, SDL_Keycode> KEYS[] = {{KMOD_LCTRL, SDLK_LCTRL},
                                                           {KMOD_LSHIFT, SDLK_LSHIFT}};
    for (const auto& [modifier, key] : KEYS) {
      if ((modifiers & modifier) != 0) PushKey(type, key, type == SDL_KEYDOWN ? modifiers : KMOD_NONE);
    }
  }
  // Down, with the text that comes of it, and up again, within one round of the window.
  void Press(SDL_Keycode key, SDL_Keymod modifiers = KMOD_NONE) {
    const bool prints = key >= SDLK_SPACE && key < SDLK_DELETE && modifiers == KMOD_NONE;
    SDL_SetModState(modifiers);
    PushModifiers(SDL_KEYDOWN, modifiers);
    PushKey(SDL_KEYDOWN, key, modifiers);
    if (prints) PushText(std::string(1, static_cast<char>(key)));
    PushKey(SDL_KEYUP, key, modifiers);
    window->Step(0);
    SDL_SetModState(KMOD_NONE);
    PushModifiers(SDL_KEYUP, modifiers);
    if (modifiers != KMOD_NONE) window->Step(0);
  }
  void PressAndRest(SDL_Keycode key, SDL_Keymod modifiers = KMOD_NONE) {
    Press(key, modifiers);
    ComeToRest();
  }
  void PressControl(SDL_Keycode key, SDL_Keymod more = KMOD_NONE) {
    PressAndRest(key, static_cast<SDL_Keymod>(KMOD_LCTRL | more));
  }
  // Into whatever has the keys, a character at a time.
  void Type(const std::string& text) {
    for (const char letter : text) PushText(std::string(1, letter));
    ComeToRest();
  }

  void PushButton(Uint32 type, int pixelX, int pixelY, Uint8 clicks, Uint8 button = SDL_BUTTON_LEFT) {
    SDL_Event event = {};
    event.type = type;
    event.button.button = button;
    event.button.clicks = clicks;
    event.button.x = pixelX;
    event.button.y = HEIGHT - 1 - pixelY;  // events count from the top
    SDL_PushEvent(&event);
  }
  void Click(const Korvane::Vector2& pixel, Uint8 clicks = 1) {
    PushButton(SDL_MOUSEBUTTONDOWN, static_cast<int>(pixel.x), static_cast<int>(pixel.y), clicks);
    PushButton(SDL_MOUSEBUTTONUP, static_cast<int>(pixel.x), static_cast<int>(pixel.y), clicks);
    ComeToRest();
  }

  void PushMotion(int pixelX, int pixelY) {
    SDL_Event event = {};
    event.type = SDL_MOUSEMOTION;
    event.motion.x = pixelX;
    event.motion.y = HEIGHT - 1 - pixelY;
    SDL_PushEvent(&event);
  }
  void Move(int pixelX, int pixelY) {
    PushMotion(pixelX, pixelY);
    ComeToRest();
  }
  void PushFinger(Uint32 type, int finger, double pixelX, double pixelY) {
    SDL_Event event = {};
    event.type = type;
    event.tfinger.touchId = 1;
    event.tfinger.fingerId = finger;
    event.tfinger.x = static_cast<float>((pixelX + 0.5) / WIDTH);
    event.tfinger.y = static_cast<float>((HEIGHT - 1 - pixelY + 0.5) / HEIGHT);  // events count from the top
    event.tfinger.pressure = 1.0F;
    SDL_PushEvent(&event);
  }
  // What is held asks for frames without end.
  void DrawFrames(int count) {
    for (int i = 0; i < count; ++i) {
      window->RequestFrame();
      window->Step(100);
    }
  }
  void RightClick(int pixelX, int pixelY) {
    Move(pixelX, pixelY);
    PushButton(SDL_MOUSEBUTTONDOWN, pixelX, pixelY, 1, SDL_BUTTON_RIGHT);
    PushButton(SDL_MOUSEBUTTONUP, pixelX, pixelY, 1, SDL_BUTTON_RIGHT);
    ComeToRest();
  }
  // Left to right, in one view of a window.
  void Drag(int fromX, int toX, int pixelY) {
    PushMotion(fromX, pixelY);
    PushButton(SDL_MOUSEBUTTONDOWN, fromX, pixelY, 1);
    PushMotion(toX, pixelY);
    PushButton(SDL_MOUSEBUTTONUP, toX, pixelY, 1);
    ComeToRest();
  }

  Korvane::Vector2 Project(const Korvane::Vector3& point) const {
    Korvane::Vector2 pixel;
    EXPECT_TRUE(GetHub().GetProjection().WorldToPixel(point, WIDTH, HEIGHT, pixel));
    return pixel;
  }

  zovhost::ViewHub& GetHub() const { return viewer->GetView(0).GetHub(); }
  std::string GetTitle() const { return SDL_GetWindowTitle(window->GetNativeWindow()); }

  TemporaryFolder folder;
  std::unique_ptr<zovhost::Window> window;
  std::unique_ptr<zovview::Viewer> viewer;
};

}  // namespace apps_test
