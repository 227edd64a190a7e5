// The panel, folded to a strip of icons.
#include <imgui.h>

#include <algorithm>
#include <array>
#include <string_view>

#include "panel/panel_window.h"
#include "panel/viewer_panel.h"
#include "zovhost/host_pictures.h"
#include "zovhost/panel_icons.h"
#include "zovhost/panel_texts.h"
#include "zovhost/phrases.h"

namespace zovview {

namespace {

constexpr float GAP = 2.0F;        // points, between buttons
constexpr float GROUP_GAP = 9.0F;  // between groups of them, with a line in its middle
constexpr float PITCH = STRIP_BUTTON + GAP;
constexpr ImGuiWindowFlags STRIP = STILL | ImGuiWindowFlags_NoDecoration | ImGuiWindowFlags_NoScrollWithMouse;

// The first to the last: those at the end have no room on a low strip. An empty name begins a group.
constexpr auto COMMANDS = std::to_array<std::string_view>(
    {"", "orbit", "pan", "zoom", "rectangle-zoom", "look", "look-and-move", "look-at-face", "centre", "walk",
     "", "home", "isometric", "fit-all", "fit-selection", "toggle-projection"});

float GetStep(std::string_view command) { return command.empty() ? GROUP_GAP : PITCH; }

// How many of the commands there is room for.
std::size_t CountCommands(float room, float& height) {
  height = 2.0F * STRIP_PADDING + STRIP_BUTTON;
  float next = height;
  std::size_t count = 0;
  for (std::size_t i = 0; i < COMMANDS.size(); ++i) {
    next += GetStep(COMMANDS[i]);
    if (next > room) break;
    if (COMMANDS[i].empty()) continue;  // a line with nothing below it separates nothing
    height = next;
    count = i + 1;
  }
  return count;
}

bool DrawIconButton(const char* id, int picture) {
  const bool chosen = ImGui::Button(id, ImVec2(STRIP_BUTTON, STRIP_BUTTON));
  const ImVec2 low = ImGui::GetItemRectMin();
  constexpr float INSET = (STRIP_BUTTON - zovhost::GetIconPoints(zovhost::IconSize::Alone)) * 0.5F;
  zovhost::DrawPanelIcon(picture, zovhost::IconSize::Alone, low.x + INSET, low.y + INSET);
  return chosen;
}

void DrawGroupLine(float y) {
  const float left = ImGui::GetWindowPos().x + STRIP_PADDING;
  const float top = ImGui::GetWindowPos().y + y + (GROUP_GAP - GAP) * 0.5F;
  ImGui::GetWindowDrawList()->AddRectFilled(ImVec2(left, top), ImVec2(left + STRIP_BUTTON, top + 1.0F),
                                            ImGui::GetColorU32(ImGuiCol_Separator));
}

}  // namespace

const ViewCommand* ViewerPanel::DrawStripButton(const ViewCommand& command, const ViewTarget& target) {
  const bool lit = command.isOn != nullptr && command.isOn(target);
  if (lit) ImGui::PushStyleColor(ImGuiCol_Button, ImGui::GetStyleColorVec4(ImGuiCol_ButtonActive));
  ImGui::PushID(command.name.data());
  const bool chosen = DrawIconButton("##button", words.Get(command).picture);
  ImGui::PopID();
  if (lit) ImGui::PopStyleColor();
  return NoteItem(command, lit) || chosen ? &command : nullptr;
}

// Its size is known beforehand, so it is never that of another frame.
const ViewCommand* ViewerPanel::DrawStrip(const PanelContents& contents, const ViewTarget& target) {
  const Room room = FindRoom(contents, target, MARGIN + STRIP_WIDTH);
  float height = 0.0F;
  const std::size_t count = CountCommands(room.height, height);
  const float left = zovhost::MirrorPlace(MARGIN);
  ImGui::SetNextWindowPos(ImVec2(zovhost::ArePanelsMirrored() ? left - STRIP_WIDTH : left, room.top));
  ImGui::SetNextWindowSize(ImVec2(STRIP_WIDTH, height));
  ImGui::PushStyleVar(ImGuiStyleVar_WindowPadding, ImVec2(STRIP_PADDING, STRIP_PADDING));
  const ViewCommand* chosen = nullptr;
  if (ImGui::Begin("###strip", nullptr, STRIP)) {
    NoteReach();
    ImGui::PushStyleColor(ImGuiCol_Button, ImU32{0});
    const char* const name = zovhost::Say("Unfold the panel");
    bool unfolded = DrawIconButton("##unfold", zovhost::HOST_PICTURE_UNFOLD);
    NoteTip(FOLD, name);
    if (NoteItem(FOLD, zovhost::GetPhrases().SayPlain("Unfold the panel"), zovhost::FocusRole::Button, false))
      unfolded = true;
    float y = STRIP_PADDING + PITCH;
    for (std::size_t i = 0; i < count; ++i) {
      ImGui::SetCursorPos(ImVec2(STRIP_PADDING, y));
      if (COMMANDS[i].empty()) DrawGroupLine(y - GAP);
      const ViewCommand* const command = FindViewCommand(COMMANDS[i]);
      const ViewCommand* const pressedOne = command != nullptr ? DrawStripButton(*command, target) : nullptr;
      if (pressedOne != nullptr) chosen = pressedOne;
      y += GetStep(COMMANDS[i]);
    }
    ImGui::PopStyleColor();
    if (unfolded) Fold(false, target);
  }
  ImGui::End();
  ImGui::PopStyleVar();
  return chosen;
}

}  // namespace zovview
