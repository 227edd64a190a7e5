#include "zovhost/gui.h"

#include <SDL.h>
#include <backends/imgui_impl_opengl3.h>
#include <backends/imgui_impl_sdl.h>
#include <imgui.h>
#include <imgui_internal.h>

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "window/gui_look.h"
#include "window/panel_keys.h"
#include "window/panel_state.h"
#include "zovhost/phrases.h"
#include "zovhost/window.h"

namespace zovhost {

namespace {

// A click takes effect in the frame after it, and a panel that changes its size settles in one more.
constexpr int FRAMES_TO_SETTLE = 3;
// A panel that follows what is in it has found its size by then, or never will.
constexpr int FRAMES_TO_GROW = 4;

bool IsPointerEvent(Uint32 type) {
  return type == SDL_MOUSEMOTION || type == SDL_MOUSEBUTTONDOWN || type == SDL_MOUSEBUTTONUP ||
         type == SDL_MOUSEWHEEL;
}

bool IsFingerEvent(Uint32 type) {
  return type == SDL_FINGERDOWN || type == SDL_FINGERMOTION || type == SDL_FINGERUP;
}

bool IsKeyEvent(Uint32 type) {
  return type == SDL_KEYDOWN || type == SDL_KEYUP || type == SDL_TEXTINPUT || type == SDL_TEXTEDITING;
}

}  // namespace

class Gui::Impl {
 public:
  Impl(Window* overWindow, int pictureWidth, int pictureHeight, double pictureDensity);
  ~Impl();

  void BeginFrame();
  void EndFrame();
  void SetLight(bool wanted);
  bool IsLight() const { return light; }
  bool IsOverPanel(float pointX, float pointY) const;
  std::vector<Korvane::Box2> GetPanels() const;
  bool HasPointer() const { return pointerWasOver; }
  float GetPointsPerPixel() const;
  int GetHeight() const { return window != nullptr ? window->GetHeight() : height; }
  std::string TakeProblem() { return panels.font.TakeProblem(); }
  void SetIcons(std::vector<int> pictures, IconPainter painter) {
    panels.font.SetIcons(std::move(pictures), std::move(painter));
  }

 private:
  float GetPanelX(float x) const;
  static bool IsSeen(const ImGuiWindow& panel);
  bool OnNativeEvent(const SDL_Event& event);
  bool OnPointerEvent(const SDL_Event& event);
  bool OnFingerEvent(const SDL_TouchFingerEvent& event);
  void PressFinger(const SDL_TouchFingerEvent& event);
  void LiftFinger();
  void SendPointer(Uint32 type, ImVec2 point);
  ImVec2 GetFingerPoint(const SDL_TouchFingerEvent& event) const;
  void SetDisplaySize() const;
  ImVec2 ToPoints(int x, int y) const;
  void EndTyping(const SDL_Event& event);
  void OnPointerLeaves();
  void TrackOwner(const SDL_MouseButtonEvent& event, bool ofPanels);
  void Settle();
  bool IsPanelAppearing() const;
  bool IsPanelGrowing() const;
  void LoadFont();

  ImGuiContext* context;
  PanelState panels;
  bool hasTexture = false;  // of the font
  Window* window;
  int width;
  int height;
  double density;  // of a picture
  bool light = false;
  int framesToSettle = 0;
  int framesOfGrowth = 0;
  ImVec2 pointer = ImVec2(-FLT_MAX, -FLT_MAX);  // points from the top left; this value: not in the window
  bool pointerWasOver = false;
  unsigned buttonsOfPanels = 0;  // pressed over a panel and still held; one bit a button
  unsigned buttonsOfOthers = 0;
  struct Finger {
    SDL_TouchID device;
    SDL_FingerID id;
  };
  std::optional<Finger> finger;  // that came down on a panel, and is its mouse
  int framesToLeave = 0;         // until the pointer goes with the finger that was lifted
  PanelKeys keys;
};

Gui::Impl::Impl(Window* overWindow, int pictureWidth, int pictureHeight, double pictureDensity)
    : context(ImGui::CreateContext()),
      window(overWindow),
      width(pictureWidth),
      height(pictureHeight),
      density(pictureDensity > 0.0 ? pictureDensity : 1.0),
      keys(*context, panels, [this] { Settle(); }) {
  ImGuiIO& io = ImGui::GetIO();
  io.IniFilename = nullptr;  // nothing is left behind on the disk
  // The cursor is the window's business.
  io.ConfigFlags |= ImGuiConfigFlags_NoMouseCursorChange;
  SetShapes(ImGui::GetStyle());
  SetColours(ImGui::GetStyle(), light);
  io.UserData = &panels;
  ImGui_ImplOpenGL3_Init("#version 330 core");
  if (window == nullptr) return;
  io.ConfigFlags |= ImGuiConfigFlags_NavEnableKeyboard;
  ImGui_ImplSDL2_InitForOpenGL(window->GetNativeWindow(), window->GetNativeContext());
  window->SetNativeEventHook([this](const SDL_Event& event) { return OnNativeEvent(event); });
}

Gui::Impl::~Impl() {
  ImGui_ImplOpenGL3_Shutdown();
  if (window != nullptr) {
    window->SetNativeEventHook(nullptr);
    ImGui_ImplSDL2_Shutdown();
  }
  ImGui::DestroyContext(context);
}

float Gui::Impl::GetPointsPerPixel() const {
  return static_cast<float>(1.0 / (window != nullptr ? window->GetScale() : density));
}

// The font is rasterised for the density of the display and measured in points.
void Gui::Impl::LoadFont() {
  ImGuiIO& io = ImGui::GetIO();
  const float pixels = 1.0F / GetPointsPerPixel();
  if (!panels.font.Update(*io.Fonts, GetPhrases(), pixels)) return;
  if (hasTexture) {
    ImGui_ImplOpenGL3_DestroyFontsTexture();
    ImGui_ImplOpenGL3_CreateFontsTexture();
  } else {
    ImGui_ImplOpenGL3_CreateDeviceObjects();
  }
  hasTexture = true;
  io.FontGlobalScale = panels.font.GetPointSize() / io.Fonts->Fonts[0]->FontSize;
  io.Fonts->ClearInputData();
  io.Fonts->ClearTexData();
  panels.order.SetFont(*io.Fonts->Fonts[0]);
}

void Gui::Impl::SetLight(bool wanted) {
  if (light == wanted) return;
  light = wanted;
  SetColours(context->Style, light);
  if (window != nullptr) window->RequestFrame();
}

// The backend counts in units of the window system, which need not be points.
void Gui::Impl::SetDisplaySize() const {
  constexpr float ROUNDING = 0.01F;  // pixels, so that a fraction of a point is no pixel less
  const float points = GetPointsPerPixel();
  ImGuiIO& io = ImGui::GetIO();
  io.DisplaySize = ImVec2((static_cast<float>(window->GetWidth()) + ROUNDING) * points,
                          (static_cast<float>(window->GetHeight()) + ROUNDING) * points);
  io.DisplayFramebufferScale = ImVec2(1.0F / points, 1.0F / points);
}

// A position of the window system's.
ImVec2 Gui::Impl::ToPoints(int x, int y) const {
  int unitsWide = 0;
  int unitsHigh = 0;
  SDL_GetWindowSize(window->GetNativeWindow(), &unitsWide, &unitsHigh);
  const float points = GetPointsPerPixel();
  const float unitX = static_cast<float>(window->GetWidth()) / static_cast<float>(std::max(1, unitsWide));
  const float unitY = static_cast<float>(window->GetHeight()) / static_cast<float>(std::max(1, unitsHigh));
  return {static_cast<float>(x) * unitX * points, static_cast<float>(y) * unitY * points};
}

void Gui::Impl::BeginFrame() {
  panels.mirrored = GetPhrases().GetLanguage().rightToLeft;
  LoadFont();
  ImGui_ImplOpenGL3_NewFrame();
  if (window != nullptr) {
    keys.BeginFrame();
    ImGui_ImplSDL2_NewFrame();
    SetDisplaySize();
    // The backend asks for the pointer on the whole desktop, which SDL knows only after it has moved a while.
    ImGui::GetIO().MousePos = ImVec2(GetPanelX(pointer.x), pointer.y);
    // It takes the buttons from the system's mouse, which no finger presses.
    if (finger.has_value()) ImGui::GetIO().MouseDown[0] = true;
  } else {
    const float points = GetPointsPerPixel();
    ImGuiIO& io = ImGui::GetIO();
    io.DisplaySize = ImVec2(static_cast<float>(width) * points, static_cast<float>(height) * points);
    io.DisplayFramebufferScale = ImVec2(1.0F / points, 1.0F / points);
  }
  ImGui::NewFrame();
}

void Gui::Impl::EndFrame() {
  if (window != nullptr) keys.SettleMark();
  ImGui::Render();
  panels.order.Apply(*ImGui::GetDrawData(), panels.mirrored, ImGui::GetIO().FontGlobalScale);
  ImGui_ImplOpenGL3_RenderDrawData(ImGui::GetDrawData());
  if (framesToLeave > 0 && --framesToLeave == 0) OnPointerLeaves();
  if (window != nullptr) keys.EndFrame();
  framesOfGrowth = IsPanelGrowing() ? framesOfGrowth + 1 : 0;
  const bool grows = framesOfGrowth > 0 && framesOfGrowth <= FRAMES_TO_GROW;
  const bool settles = framesToSettle > 0 || grows || IsPanelAppearing() || panels.font.IsOutdated();
  if (window == nullptr || !settles) return;
  if (framesToSettle > 0) --framesToSettle;
  window->RequestFrame();
}

// A panel is measured in its first frame and drawn from the second on. Others may be hidden for good: a part
// of a panel that is scrolled out of sight.
bool Gui::Impl::IsPanelAppearing() const {
  for (const ImGuiWindow* const panel : context->Windows) {
    if (panel->Active && (panel->Appearing || panel->HiddenFramesCannotSkipItems > 0)) return true;
  }
  return false;
}

// What is in it has become more or less than in the frame that its size is of.
bool Gui::Impl::IsPanelGrowing() const {
  for (const ImGuiWindow* const panel : context->Windows) {
    const bool follows = panel->Active && (panel->Flags & ImGuiWindowFlags_AlwaysAutoResize) != 0;
    if (!follows || panel->Collapsed || panel->SkipItems) continue;
    const float wide = std::floor(panel->DC.CursorMaxPos.x - panel->DC.CursorStartPos.x);
    const float tall = std::floor(panel->DC.CursorMaxPos.y - panel->DC.CursorStartPos.y);
    if (wide != panel->ContentSize.x || tall != panel->ContentSize.y) return true;
  }
  return false;
}

// ---- events ----

void Gui::Impl::Settle() {
  framesToSettle = FRAMES_TO_SETTLE;
  window->RequestFrame();
}

// Mirrored panels are drawn from the right. A pointer that is nowhere stays there.
float Gui::Impl::GetPanelX(float x) const {
  return panels.mirrored && x > -FLT_MAX ? ImGui::GetIO().DisplaySize.x - x : x;
}

// What belongs to another window lies within it, but for the menus.
bool Gui::Impl::IsSeen(const ImGuiWindow& panel) {
  return panel.Active && (panel.ParentWindow == nullptr || (panel.Flags & ImGuiWindowFlags_Popup) != 0);
}

bool Gui::Impl::IsOverPanel(float pointX, float pointY) const {
  const ImVec2 point(GetPanelX(pointX), pointY);
  for (const ImGuiWindow* const panel : context->Windows) {
    const bool hearsPointer = (panel->Flags & ImGuiWindowFlags_NoMouseInputs) == 0;
    if (IsSeen(*panel) && hearsPointer && panel->Rect().Contains(point)) return true;
  }
  return false;
}

std::vector<Korvane::Box2> Gui::Impl::GetPanels() const {
  const double pixels = 1.0 / GetPointsPerPixel();
  std::vector<Korvane::Box2> places;
  for (const ImGuiWindow* const panel : context->Windows) {
    const bool isGround = panel->IsFallbackWindow || panel->Hidden;
    if (!IsSeen(*panel) || isGround) continue;
    const ImVec2 middle = panel->Rect().GetCenter();
    const ImVec2 size = panel->Rect().GetSize();
    places.push_back(Korvane::Box2(
        {GetPanelX(middle.x) * pixels, GetHeight() - middle.y * pixels},
        {static_cast<double>(size.x) * pixels / 2.0, static_cast<double>(size.y) * pixels / 2.0}));
  }
  return places;
}

bool Gui::Impl::OnNativeEvent(const SDL_Event& event) {
  if (IsPointerEvent(event.type)) return OnPointerEvent(event);
  if (IsFingerEvent(event.type)) return OnFingerEvent(event.tfinger);
  if (IsKeyEvent(event.type)) return keys.OnEvent(event);
  if (event.type == SDL_WINDOWEVENT) {
    if (event.window.event == SDL_WINDOWEVENT_FOCUS_LOST) {
      LiftFinger();
      buttonsOfPanels = buttonsOfOthers = 0;
    }
    ImGui_ImplSDL2_ProcessEvent(&event);
    if (event.window.event == SDL_WINDOWEVENT_LEAVE) OnPointerLeaves();
  }
  return false;
}

// A drag belongs, until its button is released, to what the button was pressed over.
bool Gui::Impl::OnPointerEvent(const SDL_Event& event) {
  int x = 0;
  int y = 0;
  if (event.type == SDL_MOUSEWHEEL) {
    x = event.wheel.mouseX;
    y = event.wheel.mouseY;
  } else {
    x = event.type == SDL_MOUSEMOTION ? event.motion.x : event.button.x;
    y = event.type == SDL_MOUSEMOTION ? event.motion.y : event.button.y;
  }
  pointer = ToPoints(x, y);
  framesToLeave = 0;
  panels.byKeys = false;
  // Beside an open menu a press closes it and does no more.
  const bool over = !context->OpenPopupStack.empty() || IsOverPanel(pointer.x, pointer.y);
  const bool ofPanels = buttonsOfPanels != 0 || (over && buttonsOfOthers == 0);
  const bool wasOver = pointerWasOver;
  pointerWasOver = ofPanels;

  if (event.type == SDL_MOUSEBUTTONDOWN || event.type == SDL_MOUSEBUTTONUP)
    TrackOwner(event.button, ofPanels);
  if (!ofPanels) {
    if (event.type == SDL_MOUSEBUTTONDOWN) keys.Leave();
    if (wasOver) Settle();  // what was lit up under the pointer goes out
    EndTyping(event);
    return false;
  }
  ImGui_ImplSDL2_ProcessEvent(&event);
  Settle();
  return true;
}

// The first finger on a panel is its mouse until it is lifted, others there do nothing.
bool Gui::Impl::OnFingerEvent(const SDL_TouchFingerEvent& event) {
  const ImVec2 point = GetFingerPoint(event);
  if (!std::isfinite(point.x) || !std::isfinite(point.y)) return true;
  const bool isOwn = finger.has_value() && finger->device == event.touchId && finger->id == event.fingerId;
  if (event.type == SDL_FINGERDOWN && !isOwn) {
    const bool over = !context->OpenPopupStack.empty() || IsOverPanel(point.x, point.y);
    if (over && !finger.has_value()) PressFinger(event);
    if (!over && keys.IsTyping()) SendPointer(SDL_MOUSEBUTTONDOWN, point);
    return over;
  }
  if (!isOwn) return false;
  SendPointer(SDL_MOUSEMOTION, point);
  if (event.type == SDL_FINGERUP) LiftFinger();
  return true;
}

void Gui::Impl::PressFinger(const SDL_TouchFingerEvent& event) {
  const ImVec2 point = GetFingerPoint(event);
  finger = Finger{event.touchId, event.fingerId};
  SendPointer(SDL_MOUSEMOTION, point);
  SendPointer(SDL_MOUSEBUTTONDOWN, point);
}

// It leaves no pointer behind, once what it has clicked on knows of it.
void Gui::Impl::LiftFinger() {
  if (!finger.has_value()) return;
  finger.reset();
  SendPointer(SDL_MOUSEBUTTONUP, pointer);
  framesToLeave = FRAMES_TO_SETTLE - 1;
}

ImVec2 Gui::Impl::GetFingerPoint(const SDL_TouchFingerEvent& event) const {
  const float points = GetPointsPerPixel();
  return {std::floor(event.x * static_cast<float>(window->GetWidth()) * points),
          std::floor(event.y * static_cast<float>(window->GetHeight()) * points)};
}

// As the mouse would, which counts in units of the window system.
void Gui::Impl::SendPointer(Uint32 type, ImVec2 point) {
  const ImVec2 unit = ToPoints(1, 1);
  const auto x = static_cast<int>(std::lround(point.x / unit.x));
  const auto y = static_cast<int>(std::lround(point.y / unit.y));
  SDL_Event event = {};
  event.type = type;
  if (type == SDL_MOUSEMOTION) {
    event.motion.windowID = SDL_GetWindowID(window->GetNativeWindow());
    event.motion.x = x;
    event.motion.y = y;
  } else {
    event.button.windowID = SDL_GetWindowID(window->GetNativeWindow());
    event.button.button = SDL_BUTTON_LEFT;
    event.button.clicks = 1;
    event.button.state = type == SDL_MOUSEBUTTONDOWN ? SDL_PRESSED : SDL_RELEASED;
    event.button.x = x;
    event.button.y = y;
  }
  OnPointerEvent(event);
}

// Whoever typed a text knows of the press beside it, and that it is over.
void Gui::Impl::EndTyping(const SDL_Event& event) {
  if (event.type != SDL_MOUSEBUTTONDOWN || !keys.IsTyping()) return;
  ImGui_ImplSDL2_ProcessEvent(&event);
  Settle();
}

void Gui::Impl::OnPointerLeaves() {
  if (buttonsOfPanels != 0) return;  // a drag goes on outside the window
  pointer = ImVec2(-FLT_MAX, -FLT_MAX);
  if (std::exchange(pointerWasOver, false)) Settle();
}

void Gui::Impl::TrackOwner(const SDL_MouseButtonEvent& event, bool ofPanels) {
  const unsigned bit = 1U << event.button;
  buttonsOfPanels &= ~bit;
  buttonsOfOthers &= ~bit;
  if (event.type != SDL_MOUSEBUTTONDOWN) return;
  unsigned& owner = ofPanels ? buttonsOfPanels : buttonsOfOthers;
  owner |= bit;
}

// ---- the public face ----

Gui::Gui(Window& window) : impl(std::make_unique<Impl>(&window, 0, 0, 1.0)) {}
Gui::Gui(int width, int height, double density)
    : impl(std::make_unique<Impl>(nullptr, width, height, density)) {}
Gui::~Gui() = default;
void Gui::BeginFrame() { impl->BeginFrame(); }
void Gui::EndFrame() { impl->EndFrame(); }
void Gui::SetLight(bool light) { impl->SetLight(light); }
bool Gui::IsLight() const { return impl->IsLight(); }

void Gui::SetIcons(std::vector<int> pictures, IconPainter painter) {
  impl->SetIcons(std::move(pictures), std::move(painter));
}

std::string Gui::TakeProblem() { return impl->TakeProblem(); }
std::vector<Korvane::Box2> Gui::GetPanels() const { return impl->GetPanels(); }
bool Gui::HasPointer() const { return impl->HasPointer(); }

bool Gui::IsOverPanel(int x, int y) const {
  const float points = impl->GetPointsPerPixel();
  return impl->IsOverPanel(static_cast<float>(x) * points,
                           static_cast<float>(impl->GetHeight() - 1 - y) * points);
}

}  // namespace zovhost
