#include "window/panel_keys.h"

#include <backends/imgui_impl_sdl.h>
#include <imgui.h>
#include <imgui_internal.h>

#include <algorithm>
#include <bitset>
#include <utility>

#include "window/panel_state.h"

namespace zovhost {

namespace {

constexpr int OTHER_MODIFIERS = KMOD_CTRL | KMOD_ALT | KMOD_GUI;

bool IsKey(const SDL_Event& event) { return event.type == SDL_KEYDOWN || event.type == SDL_KEYUP; }

// What a text is edited by; the rest comes as text too.
bool IsEditing(const SDL_Event& event) {
  if (event.type != SDL_KEYDOWN) return false;
  const SDL_Keysym& key = event.key.keysym;
  const bool prints = key.sym >= SDLK_SPACE && key.sym < SDLK_DELETE;
  return !prints || (key.mod & OTHER_MODIFIERS) != 0;
}

// The library's connection to the window asks for the modifiers of now.
void Process(const SDL_Event& event) {
  ImGui_ImplSDL2_ProcessEvent(&event);
  if (!IsKey(event)) return;
  ImGuiIO& io = ImGui::GetIO();
  const int held = event.key.keysym.mod;
  io.KeyShift = (held & KMOD_SHIFT) != 0;
  io.KeyCtrl = (held & KMOD_CTRL) != 0;
  io.KeyAlt = (held & KMOD_ALT) != 0;
  io.KeySuper = (held & KMOD_GUI) != 0;
}

}  // namespace

// The panels know of every key, for Ctrl with a click; a key that goes up may have gone down for either.
bool PanelKeys::OnEvent(const SDL_Event& event) {
  const bool typing = IsTyping();
  if (event.type == SDL_TEXTINPUT) panels.font.Add(event.text.text);
  if (IsKey(event) && !typing) {
    panels.byKeys = true;
    if (Queue(event)) return event.type == SDL_KEYDOWN;
  }
  if (typing || !typed.empty()) {
    typed.push_back(event);
    settle();
  } else if (IsKey(event)) {
    ImGui_ImplSDL2_ProcessEvent(&event);
  }
  return typing && event.type != SDL_KEYUP;
}

// ---- what is typed ----

// As far as one frame tells it in its order: the library takes texts before keys, and knows of a key what it
// is in a frame, not what it was between two.
void PanelKeys::Type() {
  std::bitset<SDL_NUM_SCANCODES> released;
  bool fed = false;
  while (!typed.empty()) {
    const SDL_Event event = typed.front();
    const SDL_Scancode key = IsKey(event) ? event.key.keysym.scancode : SDL_SCANCODE_UNKNOWN;
    const bool known = key > SDL_SCANCODE_UNKNOWN && key < SDL_NUM_SCANCODES;
    if (known && event.type == SDL_KEYUP) released.set(key);
    if (known && event.type == SDL_KEYDOWN && released.test(key)) return;
    if (IsStep(event)) {
      if (fed) return;  // when the text has what came before
      return LeaveText();
    }
    fed = true;
    typed.pop_front();
    Process(TurnArrow(event));
    if (IsEditing(event)) return;
  }
}

// Left and right lead on the screen; what has gone down so goes up so.
SDL_Event PanelKeys::TurnArrow(SDL_Event event) {
  if (!IsKey(event)) return event;
  SDL_Keysym& key = event.key.keysym;
  if (key.sym != SDLK_LEFT && key.sym != SDLK_RIGHT) return event;
  if (event.type == SDL_KEYDOWN) arrowsTurned = panels.typedFromRight;
  if (!arrowsTurned) return event;
  key.sym = key.sym == SDLK_LEFT ? SDLK_RIGHT : SDLK_LEFT;
  key.scancode = SDL_GetScancodeFromKey(key.sym);
  return event;
}

// Tab leads on through a question, and what follows on it is not typed.
bool PanelKeys::IsStep(const SDL_Event& event) const {
  return event.type == SDL_KEYDOWN && event.key.keysym.sym == SDLK_TAB &&
         (event.key.keysym.mod & OTHER_MODIFIERS) == 0 && panels.stops.AreThere(context);
}

void PanelKeys::LeaveText() {
  for (const SDL_Event& event : std::exchange(typed, {})) {
    if (IsKey(event)) Queue(event);
  }
}

// A text whose panel is gone keeps what it has for two frames more.
bool PanelKeys::IsTyping() const {
  const ImGuiWindow* const panel = context.ActiveIdWindow;
  const bool isText = context.ActiveId != 0 && context.ActiveId == context.InputTextState.ID;
  return isText && panel != nullptr && panel->Active;
}

// ---- keys that lead through panels ----

// A question has Enter and Escape itself, but Enter when keys have gone through it.
bool PanelKeys::LeadsThroughPanels(const SDL_KeyboardEvent& event) const {
  const bool inPopup = !context.OpenPopupStack.empty();
  if (!inPopup && !panels.hasKeys) return false;
  const ImGuiWindow* const popup = inPopup ? context.OpenPopupStack.back().Window : nullptr;
  const bool asks = popup != nullptr && (popup->Flags & ImGuiWindowFlags_Modal) != 0;
  switch (event.keysym.sym) {
    case SDLK_UP:
    case SDLK_DOWN:
    case SDLK_LEFT:
    case SDLK_RIGHT:
    case SDLK_TAB:
    case SDLK_SPACE:
      return true;
    case SDLK_RETURN:
    case SDLK_KP_ENTER:
      return !asks || (ledThrough && IsToPress());
    case SDLK_ESCAPE:
      return !asks;
    default:
      return false;
  }
}

// Tab goes from panel to panel, and they know nothing of each other.
bool PanelKeys::LeadsOut(const SDL_KeyboardEvent& event) const {
  return event.keysym.sym == SDLK_TAB && panels.hasKeys && context.OpenPopupStack.empty();
}

// What is marked; where nothing is, Enter is the question's.
bool PanelKeys::IsToPress() const { return !keys.empty() || panels.stops.IsMarked(context); }

// A letter is a menu's. A key that goes up follows on what went down.
bool PanelKeys::Queue(const SDL_Event& event) {
  constexpr SDL_Keycode LAST_LETTER = 0xFFFF;
  const SDL_Keycode key = event.key.keysym.sym;
  const bool down = event.type == SDL_KEYDOWN;
  if ((event.key.keysym.mod & OTHER_MODIFIERS) != 0 && down) return false;
  if (DoesTabWait()) {
    keys.push_back(event);
    return true;
  }
  if (down && keys.empty() && LeadsOut(event.key)) {
    Leave();
    return false;
  }
  if (down && LeadsThroughPanels(event.key)) {
    settle();
    if (event.key.repeat == 0) keys.push_back(event);
    ledThrough = true;
    return true;
  }
  if (!down && !keys.empty()) {
    keys.push_back(event);
    return true;
  }
  const bool ofMenu = !context.OpenPopupStack.empty() && context.OpenPopupStack.back().Window != nullptr &&
                      (context.OpenPopupStack.back().Window->Flags & ImGuiWindowFlags_Modal) == 0;
  if (!down || !ofMenu || key <= SDLK_SPACE || key > LAST_LETTER || key == SDLK_DELETE) return false;
  panels.letter = static_cast<char32_t>(key);
  settle();
  return true;
}

void PanelKeys::BeginFrame() {
  Type();
  panels.typedFromRight = false;
  Lead();
  panels.stops.BeginFrame();
}

// What comes of a key may take some frames: one that a text was asked to take is taken in the third.
void PanelKeys::EndFrame() {
  const bool typing = IsTyping();
  const bool textChanges = std::exchange(wasTyping, typing) != typing;
  if (textChanges || context.NavMoveSubmitted || !keys.empty() || !typed.empty()) settle();
}

// Whether one leads out as soon as the panel has the keys before it; all others wait behind.
bool PanelKeys::DoesTabWait() const {
  return std::any_of(keys.begin(), keys.end(), [this](const SDL_Event& event) {
    return event.type == SDL_KEYDOWN && LeadsOut(event.key);
  });
}

// For what has the keys by now. What went up without having gone down here has been told.
void PanelKeys::ComeAgain() {
  std::bitset<SDL_NUM_SCANCODES> held;
  for (SDL_Event& event : std::exchange(keys, {})) {
    const auto key = static_cast<std::size_t>(event.key.keysym.scancode) % held.size();
    if (event.type == SDL_KEYDOWN) held.set(key);
    if (held.test(key)) SDL_PushEvent(&event);
  }
}

// By the place on the keyboard: Enter does what the space bar does, and a mirrored panel is read the other
// way.
void PanelKeys::Lead() {
  if (keys.empty()) return;
  SDL_Event event = keys.front();
  SDL_Keysym& key = event.key.keysym;
  const bool areOthers = !panels.hasKeys && context.OpenPopupStack.empty();
  if (event.type == SDL_KEYDOWN && (areOthers || LeadsOut(event.key))) return ComeAgain();
  if (IsStep(event)) {
    keys.pop_front();
    panels.stops.Step(context, (key.mod & KMOD_SHIFT) != 0);
    return;
  }
  const bool popup = !context.OpenPopupStack.empty();
  if (key.sym == SDLK_ESCAPE && event.type == SDL_KEYDOWN && !popup && context.ActiveId == 0) {
    keys.pop_front();
    if (panels.hasKeys && context.NavWindow != nullptr) panels.escaped = context.NavWindow->RootWindow;
    return Leave();
  }
  if (key.sym == SDLK_RETURN || key.sym == SDLK_KP_ENTER) key.sym = SDLK_SPACE;
  if (panels.mirrored && (key.sym == SDLK_LEFT || key.sym == SDLK_RIGHT)) {
    key.sym = key.sym == SDLK_LEFT ? SDLK_RIGHT : SDLK_LEFT;
  }
  key.scancode = SDL_GetScancodeFromKey(key.sym);
  // One that nobody has seen go up goes up first.
  bool& isDown = ImGui::GetIO().KeysDown[key.scancode];
  if (event.type == SDL_KEYDOWN && std::exchange(isDown, false)) return;
  keys.pop_front();
  ImGui_ImplSDL2_ProcessEvent(&event);
}

void PanelKeys::Leave() {
  if (!std::exchange(panels.hasKeys, false)) return;
  ImGui::ClearActiveID();
  ImGui::FocusWindow(nullptr);
  settle();
}

// A menu that keys have opened shows where they are; one that is closed leaves no mark behind.
void PanelKeys::SettleMark() {
  if (!std::exchange(hadKeys, panels.hasKeys) && panels.hasKeys) settle();
  const bool popup = !context.OpenPopupStack.empty();
  ledThrough = ledThrough && popup;
  if (!popup && !panels.hasKeys) context.NavDisableHighlight = true;
  if (panels.stops.MarkFirst(context, panels.byKeys)) settle();
  const ImGuiWindow* const top = popup ? context.OpenPopupStack.back().Window : nullptr;
  if (top == nullptr || !top->Appearing || !panels.byKeys) return;
  context.NavDisableHighlight = false;
  context.NavDisableMouseHover = true;
}

}  // namespace zovhost
