#include "zovhost/menu_keys.h"

#include <imgui.h>
#include <imgui_internal.h>

#include <algorithm>
#include <utility>

#include "window/panel_state.h"
#include "zovhost/panel_texts.h"
#include "zovhost/phrases.h"

namespace zovhost {

namespace {

// Of the scripts that have small letters, those of the languages of the panels.
char32_t ToSmall(char32_t letter) {
  const bool isAscii = letter >= U'A' && letter <= U'Z';
  const bool isLatin = letter >= 0xC0 && letter <= 0xDE && letter != 0xD7;
  return isAscii || isLatin ? letter + 0x20 : letter;
}

char32_t FindFirstLetter(const std::string& name) {
  unsigned first = 0;
  ImTextCharFromUtf8(&first, name.data(), name.data() + name.size());
  return ToSmall(first);
}

// The rectangle of an item, seen from the bottom left and as it shows.
Korvane::Box2 MakeBounds(const ImRect& item) {
  const ImVec2 middle = item.GetCenter();
  return {{static_cast<double>(MirrorPlace(middle.x)),
           static_cast<double>(ImGui::GetIO().DisplaySize.y - middle.y)},
          {item.GetWidth() * 0.5, item.GetHeight() * 0.5}};
}

bool IsSame(const FocusThing& a, const FocusThing& b) {
  return a.id == b.id && a.name == b.name && a.role == b.role && a.on == b.on;
}

}  // namespace

void MenuKeys::SetObserver(KeyboardFocus::Observer value) { observer = std::move(value); }

void MenuKeys::Note(unsigned id, const void* window, const FocusThing& thing) {
  ImGuiContext& context = *ImGui::GetCurrentContext();
  if (wanted == id) {
    wanted = 0;
    ImGui::SetFocusID(id, context.NavWindow);
    context.NavDisableHighlight = false;
    context.NavDisableMouseHover = true;
  }
  items.push_back({id, window, thing});
  items.back().thing.id = static_cast<int>(id);
  items.back().thing.group = GetPhrases().SayPlain("Menu");
}

void MenuKeys::NoteItem(const std::string& name, bool on) {
  const ImGuiContext& context = *ImGui::GetCurrentContext();
  FocusThing thing;
  thing.name = name;
  thing.role = FocusRole::MenuItem;
  thing.on = on;
  thing.bounds = MakeBounds(context.LastItemData.Rect);
  Note(context.LastItemData.ID, context.CurrentWindow, thing);
}

// An open one is noted from within itself.
bool MenuKeys::BeginMenu(const char* phrase) {
  const ImGuiContext& context = *ImGui::GetCurrentContext();
  const ImGuiWindow* const window = context.CurrentWindow;
  const char* const label = SayLabel(phrase);
  const ImGuiID id = ImGui::GetID(label);
  const ImVec2 place = ImGui::GetCursorScreenPos();
  const bool open = ImGui::BeginMenu(label);
  FocusThing thing;
  thing.name = Say(phrase);
  thing.role = FocusRole::MenuButton;
  thing.on = open;
  const ImVec2 end(window->WorkRect.Max.x, place.y + ImGui::GetTextLineHeight());
  thing.bounds = MakeBounds(ImRect(place, end));
  Note(id, window, thing);
  return open;
}

void MenuKeys::EndFrame() {
  Tell();
  FindLetter();
  items.clear();
}

// From the marked one on, and round again.
void MenuKeys::FindLetter() {
  auto* const state = static_cast<PanelState*>(ImGui::GetIO().UserData);
  const char32_t letter = state != nullptr ? ToSmall(std::exchange(state->letter, U'\0')) : U'\0';
  const ImGuiContext& context = *ImGui::GetCurrentContext();
  if (letter == U'\0') return;
  std::erase_if(items, [&](const Item& item) { return item.window != context.NavWindow; });
  const auto marked = std::find_if(items.begin(), items.end(), [&](const Item& item) {
    return item.id == context.NavId && !context.NavDisableHighlight;
  });
  if (marked != items.end()) std::rotate(items.begin(), marked + 1, items.end());
  const auto found = std::find_if(items.begin(), items.end(), [letter](const Item& item) {
    return FindFirstLetter(item.thing.name) == letter;
  });
  if (found != items.end()) wanted = found->id;
}

void MenuKeys::Tell() {
  const ImGuiContext& context = *ImGui::GetCurrentContext();
  const bool isMarked = context.NavId != 0 && !context.NavDisableHighlight;
  const auto marked = std::find_if(items.begin(), items.end(), [&](const Item& item) {
    return isMarked && item.id == context.NavId && item.window == context.NavWindow;
  });
  const bool isThere = marked != items.end();
  const bool changed = isThere ? !isTold || !IsSame(marked->thing, told) : isTold;
  isTold = isThere;
  if (isThere) told = marked->thing;
  if (!changed || !observer) return;
  const KeyboardFocus::Observer hearing = observer;
  hearing(isThere ? &told : nullptr);
}

}  // namespace zovhost
