#include "viewer_menus.h"

#include <imgui.h>

#include <array>
#include <utility>

namespace zovview {

using Place = ViewCommand::Place;

namespace {

constexpr const char* POPUP = "##menu";

// The items of one place; the one that was chosen, null for none.
const ViewCommand* DrawItems(Place place, const ViewTarget& target) {
  const ViewCommand* chosen = nullptr;
  for (const ViewCommand& command : GetViewCommands()) {
    if (command.place != place) continue;
    const char* const key = *command.keyName != '\0' ? command.keyName : nullptr;
    const bool on = command.isOn != nullptr && command.isOn(target);
    if (ImGui::MenuItem(command.label, key, on)) chosen = &command;
  }
  return chosen;
}

const ViewCommand* DrawList(const char* name, Place place, const ViewTarget& target) {
  if (!ImGui::BeginMenu(name)) return nullptr;
  const ViewCommand* const chosen = DrawItems(place, target);
  ImGui::EndMenu();
  return chosen;
}

const ViewCommand* DrawViewMenu(const ViewTarget& target) {
  const ViewCommand* const tool = DrawItems(Place::Tools, target);
  ImGui::Separator();
  const ViewCommand* const view = DrawItems(Place::Views, target);
  return tool != nullptr ? tool : view;
}

const ViewCommand* DrawCubeMenu(const ViewTarget& target) {
  const ViewCommand* chosen = DrawItems(Place::Cube, target);
  const auto take = [&chosen](const ViewCommand* command) {
    if (command != nullptr) chosen = command;
  };
  ImGui::Separator();
  take(DrawItems(Place::CubeProjection, target));
  ImGui::Separator();
  take(DrawItems(Place::CubeSettings, target));
  ImGui::Separator();
  take(DrawList("Size", Place::CubeSize, target));
  take(DrawList("Corner", Place::CubeCorner, target));
  take(DrawList("Opacity", Place::CubeOpacity, target));
  return chosen;
}

const ViewCommand* DrawCoordinates(const ViewTarget& target) { return DrawItems(Place::Coordinates, target); }

// In the order of the kinds.
constexpr std::array<const ViewCommand* (*)(const ViewTarget&), 3> MENUS = {DrawViewMenu, DrawCubeMenu,
                                                                            DrawCoordinates};

}  // namespace

void ViewerMenus::Open(Kind menu) {
  kind = menu;
  opening = true;
}

const ViewCommand* ViewerMenus::Draw(const ViewTarget& target) {
  const bool opens = std::exchange(opening, false);
  const bool closes = std::exchange(closing, false);
  if (opens) ImGui::OpenPopup(POPUP);
  isOpen = ImGui::BeginPopup(POPUP, ImGuiWindowFlags_NoMove | ImGuiWindowFlags_NoNav);
  if (!isOpen) return nullptr;
  const ViewCommand* const chosen = MENUS[static_cast<std::size_t>(kind)](target);
  if (closes) ImGui::CloseCurrentPopup();
  ImGui::EndPopup();
  isOpen = !closes;
  return chosen;
}

}  // namespace zovview
