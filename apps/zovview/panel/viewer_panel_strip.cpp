// The panel, folded to a strip of icons.
#include <imgui.h>

#include <algorithm>
#include <array>
#include <cmath>
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
constexpr float LOWEST_WITH_MORE = 2.0F * STRIP_PADDING + STRIP_BUTTON + PITCH;
const ImVec2 LIST_PADDING(12.0F, 10.0F);
constexpr ImGuiWindowFlags STRIP = STILL | ImGuiWindowFlags_NoDecoration | ImGuiWindowFlags_NoScrollWithMouse;

// The first to the last: those at the end have no room on a low strip, which lists them beside it. An empty
// name begins a group.
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

struct StripSize {
  std::size_t count;  // of the commands
  float height;
  bool more;  // a last button lists the others
};

StripSize FindSize(float room) {
  StripSize size{};
  size.count = CountCommands(room, size.height);
  size.more = size.count < COMMANDS.size() && room >= LOWEST_WITH_MORE;
  if (!size.more) return size;
  size.count = CountCommands(room - PITCH, size.height);
  size.height += PITCH;
  return size;
}

// With its padding, which whoever draws it pops.
StripSize BeginStrip(float top, float room) {
  const StripSize size = FindSize(room);
  const float left = zovhost::MirrorPlace(MARGIN);
  ImGui::SetNextWindowPos(ImVec2(zovhost::ArePanelsMirrored() ? left - STRIP_WIDTH : left, top));
  ImGui::SetNextWindowSize(ImVec2(STRIP_WIDTH, size.height));
  ImGui::PushStyleVar(ImGuiStyleVar_WindowPadding, ImVec2(STRIP_PADDING, STRIP_PADDING));
  return size;
}

bool DrawIconButton(const char* id, int picture) {
  const bool chosen = ImGui::Button(id, ImVec2(STRIP_BUTTON, STRIP_BUTTON));
  const ImVec2 low = ImGui::GetItemRectMin();
  constexpr float INSET = (STRIP_BUTTON - zovhost::GetIconPoints(zovhost::IconSize::Alone)) * 0.5F;
  zovhost::DrawPanelIcon(picture, zovhost::IconSize::Alone, low.x + INSET, low.y + INSET);
  return chosen;
}

// As the sign for more on the bars, over the last item.
void DrawChevrons() {
  constexpr float WIDE = 5.0F;
  constexpr float TALL = 5.0F;
  const ImVec2 low = ImGui::GetItemRectMin();
  const float middle = std::floor((low.x + ImGui::GetItemRectMax().x) * 0.5F);
  const float top = std::floor((low.y + ImGui::GetItemRectMax().y) * 0.5F) - TALL - 1.0F;
  ImDrawList& list = *ImGui::GetWindowDrawList();
  for (const float y : {top, top + TALL + 1.0F}) {
    list.PathLineTo(ImVec2(middle - WIDE, y));
    list.PathLineTo(ImVec2(middle, y + TALL));
    list.PathLineTo(ImVec2(middle + WIDE, y));
    list.PathStroke(ImGui::GetColorU32(ImGuiCol_Text), ImDrawFlags_None, 2.0F);
  }
}

// At the right of the last item on the screen, from its foot up as far as the window goes; it scrolls there.
void PlaceListBeside() {
  const ImVec2 low = ImGui::GetItemRectMin();
  const ImVec2 high = ImGui::GetItemRectMax();
  const bool mirrored = zovhost::ArePanelsMirrored();
  const float x = mirrored ? low.x - STRIP_PADDING - GAP : high.x + STRIP_PADDING + GAP;
  ImGui::SetNextWindowPos(ImVec2(x, high.y + STRIP_PADDING), ImGuiCond_Always,
                          ImVec2(mirrored ? 1.0F : 0.0F, 1.0F));
  ImGui::SetNextWindowSizeConstraints(ImVec2(0.0F, 0.0F), ImVec2(FLT_MAX, high.y + STRIP_PADDING - MARGIN));
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

const ViewCommand* ViewerPanel::DrawMore(std::size_t first, const ViewTarget& target) {
  constexpr const char* LIST = "##rest";
  bool opens = ImGui::Button("##more", ImVec2(STRIP_BUTTON, STRIP_BUTTON));
  DrawChevrons();
  NoteTip(MORE, zovhost::Say("More tools"));
  if (NoteItem(MORE, zovhost::GetPhrases().SayPlain("More tools"), zovhost::FocusRole::MenuButton, false))
    opens = true;
  if (opens) ImGui::OpenPopup(LIST);
  PlaceListBeside();
  ImGui::PushStyleVar(ImGuiStyleVar_WindowPadding, LIST_PADDING);
  const ViewCommand* chosen = nullptr;
  if (ImGui::BeginPopup(LIST, ImGuiWindowFlags_NoMove)) {
    for (std::size_t i = first; i < COMMANDS.size(); ++i) {
      const ViewCommand* const command = FindViewCommand(COMMANDS[i]);
      if (command == nullptr) continue;
      const PanelWords::Words& said = words.Get(*command);
      const bool on = command->isOn != nullptr && command->isOn(target);
      if (ImGui::MenuItem(said.item, said.key.c_str(), on)) chosen = command;
    }
    ImGui::EndPopup();
  }
  ImGui::PopStyleVar();
  return chosen;
}

// Its size is known beforehand, so it is never that of another frame.
const ViewCommand* ViewerPanel::DrawStrip(const PanelContents& contents, const ViewTarget& target) {
  const Room room = FindRoom(contents, MARGIN + STRIP_WIDTH);
  const StripSize size = BeginStrip(room.top, room.height);
  const ViewCommand* chosen = nullptr;
  if (ImGui::Begin("###strip", nullptr, STRIP)) {
    NoteReach();
    ImGui::PushStyleColor(ImGuiCol_Button, ImU32{0});
    bool unfolded = DrawIconButton("##unfold", zovhost::HOST_PICTURE_UNFOLD);
    NoteTip(FOLD, zovhost::Say("Unfold the panel"));
    if (NoteItem(FOLD, zovhost::GetPhrases().SayPlain("Unfold the panel"), zovhost::FocusRole::Button, false))
      unfolded = true;
    float y = STRIP_PADDING + PITCH;
    for (std::size_t i = 0; i < size.count; ++i) {
      ImGui::SetCursorPos(ImVec2(STRIP_PADDING, y));
      if (COMMANDS[i].empty()) DrawGroupLine(y - GAP);
      if (const ViewCommand* const command = FindViewCommand(COMMANDS[i]))
        chosen = DrawStripButton(*command, target) != nullptr ? command : chosen;
      y += GetStep(COMMANDS[i]);
    }
    if (size.more) {
      ImGui::SetCursorPos(ImVec2(STRIP_PADDING, y));
      if (const ViewCommand* const listed = DrawMore(size.count, target)) chosen = listed;
    }
    ImGui::PopStyleColor();
    if (unfolded) Fold(false, target);
  }
  ImGui::End();
  ImGui::PopStyleVar();
  return chosen;
}

}  // namespace zovview
