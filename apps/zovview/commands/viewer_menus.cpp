#include "commands/viewer_menus.h"

#include <imgui.h>

#include <algorithm>
#include <array>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "korvane/helm_disc.h"
#include "views/preferences.h"
#include "zovhost/panel_texts.h"
#include "zovhost/phrases.h"

namespace zovview {

using Place = ViewCommand::Place;

namespace {

constexpr const char* POPUP = "##menu";

// All of it, wherever it was asked for.
void KeepInWindow() {
  const ImVec2 screen = ImGui::GetIO().DisplaySize;
  const ImVec2 size = ImGui::GetWindowSize();
  const ImVec2 place = ImGui::GetWindowPos();
  const ImVec2 kept(std::clamp(place.x, 0.0F, std::max(0.0F, screen.x - size.x)),
                    std::clamp(place.y, 0.0F, std::max(0.0F, screen.y - size.y)));
  if (kept.x != place.x || kept.y != place.y) ImGui::SetWindowPos(kept);
}

// At the end of the last item, in the colour by which the Gui knows a tick.
void DrawTick() {
  const float size = ImGui::GetFontSize();
  const ImVec2 low = ImGui::GetItemRectMin();
  const float right = ImGui::GetItemRectMax().x - ImGui::GetStyle().ItemSpacing.x * 0.5F;
  const float middle = (low.y + ImGui::GetItemRectMax().y) * 0.5F;
  ImDrawList& list = *ImGui::GetWindowDrawList();
  list.PathLineTo(ImVec2(right - 0.80F * size, middle));
  list.PathLineTo(ImVec2(right - 0.53F * size, middle + 0.27F * size));
  list.PathLineTo(ImVec2(right, middle - 0.27F * size));
  list.PathStroke(ImGui::GetColorU32(ImGuiCol_CheckMark), 0, size * 0.13F);
}

// What is drawn for, and who hears of it.
struct Drawn {
  const ViewTarget& target;
  zovhost::MenuKeys& keys;
};

bool DrawItem(const ViewCommand& command, const Drawn& drawn) {
  const std::string key = zovhost::GetPhrases().SayKey(command.keyName);
  const bool on = command.isOn != nullptr && command.isOn(drawn.target);
  const bool named = zovhost::GetPhrases().Has(command.label);  // else it is a name by itself
  const std::string label = named ? zovhost::Say(command.label) : zovhost::ToPanelText(command.label);
  ImGui::PushID(command.name.data());
  const bool chosen = ImGui::MenuItem((label + "###item").c_str(), key.empty() ? nullptr : key.c_str());
  ImGui::PopID();
  drawn.keys.NoteItem(label, on);
  if (on) DrawTick();
  return chosen;
}

// The items of one place; the one that was chosen, null for none.
const ViewCommand* DrawItems(Place place, const Drawn& drawn) {
  const ViewCommand* chosen = nullptr;
  for (const ViewCommand& command : GetViewCommands()) {
    if (command.place == place && DrawItem(command, drawn)) chosen = &command;
  }
  return chosen;
}

const ViewCommand* DrawItems(std::span<const std::string_view> names, const Drawn& drawn) {
  const ViewCommand* chosen = nullptr;
  for (const std::string_view name : names) {
    const ViewCommand& command = *FindViewCommand(name);
    if (DrawItem(command, drawn)) chosen = &command;
  }
  return chosen;
}

const ViewCommand* DrawList(const char* name, Place place, const Drawn& drawn) {
  if (!drawn.keys.BeginMenu(name)) return nullptr;
  const ViewCommand* const chosen = DrawItems(place, drawn);
  ImGui::EndMenu();
  return chosen;
}

const ViewCommand* DrawStoryList(const Drawn& drawn) {
  if (!drawn.keys.BeginMenu("Storyboard")) return nullptr;
  const ViewCommand* const story = DrawItems(Place::Story, drawn);
  ImGui::Separator();
  const ViewCommand* const file = DrawItems(Place::StoryFile, drawn);
  ImGui::EndMenu();
  return story != nullptr ? story : file;
}

const ViewCommand* DrawDeviceMenu(const Drawn& drawn) {
  const ViewCommand* const mode = DrawItems(Place::Device, drawn);
  ImGui::Separator();
  const ViewCommand* const setting = DrawItems(Place::DeviceSettings, drawn);
  return mode != nullptr ? mode : setting;
}

const ViewCommand* DrawDeviceList(const Drawn& drawn) {
  if (!drawn.keys.BeginMenu("Six-axis device")) return nullptr;
  const ViewCommand* const chosen = DrawDeviceMenu(drawn);
  ImGui::EndMenu();
  return chosen;
}

// Their names; what tells two of one name apart is the folder.
void DrawRecentFiles(const Drawn& drawn) {
  if (drawn.target.preferences == nullptr || !drawn.target.openFile) return;
  const std::vector<std::string>& files = drawn.target.preferences->Get().recentFiles;
  if (files.empty() || !drawn.keys.BeginMenu("Opened before")) return;
  std::string chosen;
  for (const std::string& file : files) {
    const std::string name = zovhost::ToPanelText(file.substr(file.find_last_of('/') + 1));
    const std::string label = std::string(name).append("###").append(file);
    if (ImGui::MenuItem(label.c_str())) chosen = file;
    drawn.keys.NoteItem(name);
    if (ImGui::IsItemHovered()) ImGui::SetTooltip("%s", zovhost::ToPanelText(file).c_str());
  }
  ImGui::EndMenu();
  if (!chosen.empty()) drawn.target.openFile(chosen);
}

const ViewCommand* DrawFileList(const Drawn& drawn) {
  if (!drawn.keys.BeginMenu("File")) return nullptr;
  const ViewCommand* const file = DrawItems(Place::File, drawn);
  DrawRecentFiles(drawn);
  const ViewCommand* const picture = DrawList("Picture of the view", Place::Picture, drawn);
  ImGui::EndMenu();
  return file != nullptr ? file : picture;
}

const ViewCommand* DrawViewMenu(const Drawn& drawn) {
  const ViewCommand* const file = DrawFileList(drawn);
  ImGui::Separator();
  const ViewCommand* const tool = DrawItems(Place::Tools, drawn);
  ImGui::Separator();
  const ViewCommand* const view = DrawItems(Place::Views, drawn);
  ImGui::Separator();
  const ViewCommand* const disc = DrawList("Navigation disc", Place::Discs, drawn);
  const ViewCommand* const bar = DrawList("Navigation bar", Place::Bars, drawn);
  const ViewCommand* const ground = DrawList("Ground", Place::Ground, drawn);
  const ViewCommand* const story = DrawStoryList(drawn);
  const ViewCommand* const device = DrawDeviceList(drawn);
  const ViewCommand* const language = DrawList("Language", Place::Languages, drawn);
  const ViewCommand* const style = DrawList("Mouse and keys", Place::Styles, drawn);
  const ViewCommand* const pivot = DrawList("Orbit about", Place::Pivots, drawn);
  for (const ViewCommand* chosen : {file, tool, view, disc, bar, ground, story, style, pivot, device}) {
    if (chosen != nullptr) return chosen;
  }
  return language;
}

const ViewCommand* DrawCubeMenu(const Drawn& drawn) {
  const ViewCommand* chosen = DrawItems(Place::Cube, drawn);
  const auto take = [&chosen](const ViewCommand* command) {
    if (command != nullptr) chosen = command;
  };
  ImGui::Separator();
  take(DrawItems(Place::CubeProjection, drawn));
  ImGui::Separator();
  take(DrawItems(Place::CubeSettings, drawn));
  ImGui::Separator();
  take(DrawList("Size", Place::CubeSize, drawn));
  take(DrawList("Corner", Place::CubeCorner, drawn));
  take(DrawList("Opacity", Place::CubeOpacity, drawn));
  return chosen;
}

const ViewCommand* DrawCoordinates(const Drawn& drawn) { return DrawItems(Place::Coordinates, drawn); }

const ViewCommand* DrawShotMenu(const Drawn& drawn) { return DrawItems(Place::Shot, drawn); }

// ---- the menus of the bars ----

constexpr std::array<std::string_view, 3> SHOWN_ITEMS = {"toggle-bar", "toggle-tools", "toggle-cube"};

const ViewCommand* DrawBarMenu(const Drawn& drawn) {
  const ViewCommand* const place = DrawItems(Place::Bars, drawn);
  ImGui::Separator();
  const ViewCommand* const shown = DrawItems(SHOWN_ITEMS, drawn);
  return place != nullptr ? place : shown;
}

const ViewCommand* DrawDiscs(const Drawn& drawn) { return DrawItems(Place::Discs, drawn); }

template <ViewBars::Menu MENU>
const ViewCommand* DrawMore(const Drawn& drawn) {
  const ViewCommand* chosen = nullptr;
  if (drawn.target.bars == nullptr) return chosen;
  for (const ViewCommand* command : drawn.target.bars->GetMoreCommands(MENU)) {
    if (DrawItem(*command, drawn)) chosen = command;
  }
  return chosen;
}

// ---- the menus of the discs ----

// What they differ in: the ways to a view that go with the disc, and whether one can walk by it.
struct DiscMenu {
  std::span<const std::string_view> ways;
  bool walks;
};
constexpr std::array<std::string_view, 4> WAYS_OF_TOUR = {"home", "level", "previous-view", "next-view"};
constexpr std::array<std::string_view, 4> WAYS_OF_OBJECT = {"home", "fit-all", "previous-view", "next-view"};
constexpr std::array<std::string_view, 5> ALL_WAYS = {"home", "fit-all", "level", "previous-view",
                                                      "next-view"};
constexpr std::array<std::string_view, 4> WAYS_OF_PLAN = {"top", "fit-all", "previous-view", "next-view"};
constexpr std::array<std::string_view, 2> LAST_ITEMS = {"disc-help", "close-disc"};

constexpr DiscMenu TOUR_MENU = {WAYS_OF_TOUR, false};
constexpr DiscMenu OBJECT_MENU = {WAYS_OF_OBJECT, false};
constexpr DiscMenu FULL_MENU = {ALL_WAYS, true};
constexpr DiscMenu PLAN_MENU = {WAYS_OF_PLAN, false};

// Large and mini discs have sizes and opacities of their own: those of the open one.
const ViewCommand* DrawDiscMenu(const DiscMenu& menu, const Drawn& drawn) {
  const bool large = Korvane::HelmDisc::IsLargeDisc(drawn.target.disc.GetActiveDisc());
  const ViewCommand* chosen = DrawItems(Place::Discs, drawn);
  const auto take = [&chosen](const ViewCommand* command) {
    if (command != nullptr) chosen = command;
  };
  ImGui::Separator();
  take(DrawItems(menu.ways, drawn));
  ImGui::Separator();
  take(DrawList("Size", large ? Place::DiscSize : Place::MiniDiscSize, drawn));
  take(DrawList("Opacity", large ? Place::DiscOpacity : Place::MiniDiscOpacity, drawn));
  if (menu.walks) take(DrawList("Walking speed", Place::WalkSpeed, drawn));
  take(DrawList("Settings", Place::DiscSettings, drawn));
  ImGui::Separator();
  take(DrawItems(LAST_ITEMS, drawn));
  return chosen;
}

template <const DiscMenu& MENU>
const ViewCommand* DrawDiscMenu(const Drawn& drawn) {
  return DrawDiscMenu(MENU, drawn);
}

// In the order of the kinds.
constexpr std::array<const ViewCommand* (*)(const Drawn&), 13> MENUS = {DrawViewMenu,
                                                                        DrawCubeMenu,
                                                                        DrawCoordinates,
                                                                        DrawDiscMenu<TOUR_MENU>,
                                                                        DrawDiscMenu<OBJECT_MENU>,
                                                                        DrawDiscMenu<FULL_MENU>,
                                                                        DrawDiscMenu<PLAN_MENU>,
                                                                        DrawShotMenu,
                                                                        DrawBarMenu,
                                                                        DrawDiscs,
                                                                        DrawMore<ViewBars::Menu::MoreOfBar>,
                                                                        DrawMore<ViewBars::Menu::MoreOfTools>,
                                                                        DrawDeviceMenu};

}  // namespace

std::optional<ViewerMenus::Kind> ViewerMenus::FindKind(Korvane::MenuID id) {
  switch (id) {
    case Korvane::MENU_TOUR_BUILDING:
      return Kind::TourBuilding;
    case Korvane::MENU_VIEW_OBJECT:
      return Kind::ViewObject;
    case Korvane::MENU_FULL_NAVIGATION:
      return Kind::FullNavigation;
    case Korvane::MENU_TWO_D:
      return Kind::TwoD;
    case Korvane::MENU_ORIENTOR:
      return Kind::Cube;
    case Korvane::MENU_STORYBOARD:
      return Kind::Shot;
    default:
      return std::nullopt;
  }
}

ViewerMenus::Kind ViewerMenus::FindKind(ViewBars::Menu menu) {
  static constexpr std::array<Kind, 5> KINDS = {Kind::Bar, Kind::Discs, Kind::MoreOfBar, Kind::MoreOfTools,
                                                Kind::Device};
  return KINDS[static_cast<std::size_t>(menu)];
}

void ViewerMenus::Open(Kind menu, std::optional<Corner> at) {
  kind = menu;
  place = at;
  opening = true;
}

const ViewCommand* ViewerMenus::Draw(const ViewTarget& target) {
  const bool opens = std::exchange(opening, false);
  const bool closes = std::exchange(closing, false);
  if (opens) ImGui::OpenPopup(POPUP);
  if (place.has_value() && (opens || isOpen)) {
    zovhost::PlaceNextPanel(static_cast<float>(place->x), static_cast<float>(place->y),
                            static_cast<float>(place->pivotX), static_cast<float>(place->pivotY), true);
  }
  isOpen = ImGui::BeginPopup(POPUP, ImGuiWindowFlags_NoMove);
  if (!isOpen) {
    keys.EndFrame();
    return nullptr;
  }
  KeepInWindow();
  const ViewCommand* const chosen = MENUS[static_cast<std::size_t>(kind)]({target, keys});
  if (closes) ImGui::CloseCurrentPopup();
  ImGui::EndPopup();
  keys.EndFrame();
  isOpen = !closes;
  return chosen;
}

}  // namespace zovview
