#include "window/tab_stops.h"

#include <imgui.h>
#include <imgui_internal.h>

#include <algorithm>
#include <cstddef>

namespace zovhost {

namespace {

void Mark(ImGuiContext& context, unsigned id, ImGuiWindow* panel, bool shown) {
  ImGui::SetFocusID(id, panel);
  context.NavDisableHighlight = !shown;
  context.NavDisableMouseHover = shown;
}

}  // namespace

void TabStops::Note(const ImGuiContext& context, bool first) {
  const bool isText = (context.LastItemData.InFlags & ImGuiItemFlags_Inputable) != 0;
  stops.push_back({context.LastItemData.ID, context.CurrentWindow, isText, first});
}

const TabStops::Stop* TabStops::Find(unsigned id) const {
  const auto found =
      std::find_if(stops.begin(), stops.end(), [id](const Stop& stop) { return stop.id == id; });
  return id != 0 && found != stops.end() ? &*found : nullptr;
}

// A list that has been opened in it has the keys itself.
bool TabStops::AreThere(const ImGuiContext& context) const {
  return !stops.empty() && !context.OpenPopupStack.empty() &&
         context.OpenPopupStack.back().Window == stops.front().panel;
}

bool TabStops::IsMarked(const ImGuiContext& context) const {
  return AreThere(context) && !context.NavDisableHighlight && Find(context.NavId) != nullptr;
}

void TabStops::Step(ImGuiContext& context, bool back) const {
  if (stops.empty()) return;
  const bool typed = Find(context.ActiveId) != nullptr;
  const Stop* const from = Find(typed ? context.ActiveId : context.NavId);
  const bool seen = from != nullptr && (typed || !context.NavDisableHighlight);
  const std::size_t count = stops.size();
  const std::size_t outside = back ? 0 : count - 1;
  const std::size_t at = seen ? static_cast<std::size_t>(from - stops.data()) : outside;
  const Stop& next = stops[(at + (back ? count - 1 : 1)) % count];
  ImGui::ClearActiveID();
  Mark(context, next.id, next.panel, true);
  if (!next.isText) return;
  context.NavNextActivateId = next.id;
  context.NavNextActivateFlags = ImGuiActivateFlags_PreferInput;
}

bool TabStops::MarkFirst(ImGuiContext& context, bool shown) const {
  if (!AreThere(context) || context.ActiveId != 0 || Find(context.NavId) != nullptr) return false;
  const auto first = std::find_if(stops.begin(), stops.end(), [](const Stop& stop) { return stop.first; });
  if (first == stops.end()) return false;
  Mark(context, first->id, first->panel, shown);
  return true;
}

}  // namespace zovhost
