#include "viewer_panel.h"

#include <imgui.h>

#include <algorithm>
#include <cfloat>
#include <utility>
#include <vector>

#include "help.h"
#include "view_list.h"
#include "view_story.h"
#include "zovhost/accent.h"

namespace zovview {

namespace {

constexpr float MARGIN = 12.0F;  // points
constexpr float BAR_WIDTH = 320.0F;
constexpr float WIDEST_PANEL = 420.0F;
constexpr float LOWEST_PANEL = 60.0F;
constexpr float TITLE_BUTTON_WIDTH = 48.0F;  // of the arrow that folds the panel, with its space
constexpr float HELP_GAP = 12.0F;
constexpr float BUTTON_WIDTH = 148.0F;
constexpr int COLUMNS = 2;
constexpr int HEADINGS = 1'000'000;  // above the numbers of all commands
constexpr ImGuiWindowFlags STILL = ImGuiWindowFlags_NoMove | ImGuiWindowFlags_NoResize |
                                   ImGuiWindowFlags_AlwaysAutoResize | ImGuiWindowFlags_NoSavedSettings |
                                   ImGuiWindowFlags_NoFocusOnAppearing | ImGuiWindowFlags_NoNav;
constexpr ImGuiWindowFlags NOTICE = STILL | ImGuiWindowFlags_NoDecoration | ImGuiWindowFlags_NoInputs;

// 1234567 as "1 234 567".
std::string GroupDigits(std::size_t number) {
  std::string digits = std::to_string(number);
  for (std::size_t end = digits.size(); end > 3; end -= 3) digits.insert(end - 3, 1, ' ');
  return digits;
}

// Quietly, flush right, on the line of the last item.
void DrawKeyOfItem(const char* name, float right) {
  const ImVec2 size = ImGui::CalcTextSize(name);
  const ImVec2 low = ImGui::GetItemRectMin();
  const ImVec2 high = ImGui::GetItemRectMax();
  ImGui::GetWindowDrawList()->AddText(ImVec2(right - size.x, (low.y + high.y - size.y) * 0.5F),
                                      ImGui::GetColorU32(ImGuiCol_TextDisabled), name);
}

float GetRightOfKeys() {
  const ImGuiStyle& style = ImGui::GetStyle();
  const float left = ImGui::GetWindowPos().x + style.WindowPadding.x;
  const float width = COLUMNS * BUTTON_WIDTH + (COLUMNS - 1) * style.ItemSpacing.x;
  return left + width - style.FramePadding.x * 2.0F;
}

void DrawSelection(const std::string& name) {
  if (name.empty()) return;
  ImGui::TextDisabled("Selected:");
  ImGui::SameLine();
  ImGui::PushTextWrapPos(GetRightOfKeys() - ImGui::GetWindowPos().x);
  ImGui::TextUnformatted(name.c_str());
  ImGui::PopTextWrapPos();
}

// Above the storyboard, which counts in pixels.
float GetRoomForPanel(const ViewTarget& target) {
  const ImGuiIO& io = ImGui::GetIO();
  const bool boardShows = target.story != nullptr && target.story->IsShown();
  const float below = boardShows ? ViewStory::HEIGHT / std::max(1.0F, io.DisplayFramebufferScale.y) : 0.0F;
  return std::max(LOWEST_PANEL, io.DisplaySize.y - below - 2.0F * MARGIN);
}

void DrawProgress(const LoadingStatus& status) {
  const ImVec2 size = ImGui::GetIO().DisplaySize;
  ImGui::SetNextWindowPos(ImVec2(size.x * 0.5F, size.y * 0.5F), ImGuiCond_Always, ImVec2(0.5F, 0.5F));
  if (ImGui::Begin("##progress", nullptr, NOTICE)) {
    ImGui::Text("Opening %s", status.name.c_str());
    ImGui::ProgressBar(static_cast<float>(status.fraction), ImVec2(BAR_WIDTH, 0.0F), "");
    ImGui::TextDisabled("%s", status.step.c_str());
  }
  ImGui::End();
}

void DrawMessage(const std::string& message) {
  const ImVec2 size = ImGui::GetIO().DisplaySize;
  ImGui::SetNextWindowPos(ImVec2(size.x * 0.5F, size.y - MARGIN), ImGuiCond_Always, ImVec2(0.5F, 1.0F));
  if (ImGui::Begin("##message", nullptr, NOTICE)) {
    ImGui::PushTextWrapPos(size.x - 4.0F * MARGIN);
    ImGui::TextUnformatted(message.c_str());
    ImGui::PopTextWrapPos();
  }
  ImGui::End();
}

// By the place in the list of the commands.
int GetNumber(const ViewCommand& command) { return static_cast<int>(&command - GetViewCommands().data()); }

zovhost::FocusRole GetRole(const ViewCommand& command) {
  return command.isOn != nullptr ? zovhost::FocusRole::ToggleButton : zovhost::FocusRole::Button;
}

// Accent within white, as the focus of the view.
void DrawMark(const ImVec2& low, const ImVec2& high) {
  constexpr float OUTSIDE = 2.0F;
  const auto [red, green, blue] = zovhost::ACCENT_COLOUR;
  const ImVec4 accent(static_cast<float>(red), static_cast<float>(green), static_cast<float>(blue), 1.0F);
  const ImVec2 from(low.x - OUTSIDE, low.y - OUTSIDE);
  const ImVec2 to(high.x + OUTSIDE, high.y + OUTSIDE);
  ImDrawList& list = *ImGui::GetForegroundDrawList();
  const float rounding = ImGui::GetStyle().FrameRounding + OUTSIDE;
  list.AddRect(from, to, IM_COL32_WHITE, rounding, ImDrawFlags_None, 4.0F);
  list.AddRect(from, to, ImGui::GetColorU32(accent), rounding, ImDrawFlags_None, 2.0F);
}

}  // namespace

// In two columns; what is chosen is lit.
const ViewCommand* ViewerPanel::DrawButtons(ViewCommand::Place place, const ViewTarget& target) {
  const ViewCommand* chosen = nullptr;
  int count = 0;
  ImGui::PushStyleVar(ImGuiStyleVar_ButtonTextAlign, ImVec2(0.0F, 0.5F));
  for (const ViewCommand& command : GetViewCommands()) {
    if (command.place != place) continue;
    if (count++ % COLUMNS != 0) ImGui::SameLine();
    const bool lit = command.isOn != nullptr && command.isOn(target);
    if (lit) ImGui::PushStyleColor(ImGuiCol_Button, ImGui::GetStyleColorVec4(ImGuiCol_ButtonActive));
    if (ImGui::Button(command.label, ImVec2(BUTTON_WIDTH, 0.0F))) chosen = &command;
    if (NoteItem(GetNumber(command), command.label, GetRole(command), lit)) chosen = &command;
    if (lit) ImGui::PopStyleColor();
    DrawKeyOfItem(command.keyName, ImGui::GetItemRectMax().x - ImGui::GetStyle().FramePadding.x * 2.0F);
  }
  ImGui::PopStyleVar();
  return chosen;
}

const ViewCommand* ViewerPanel::DrawSettings(const ViewTarget& target) {
  const ViewCommand* chosen = nullptr;
  for (const ViewCommand& command : GetViewCommands()) {
    if (command.place != ViewCommand::Place::Settings) continue;
    bool on = command.isOn(target);
    if (ImGui::Checkbox(command.label, &on)) chosen = &command;
    if (NoteItem(GetNumber(command), command.label, GetRole(command), on)) chosen = &command;
    DrawKeyOfItem(command.keyName, GetRightOfKeys());
  }
  return chosen;
}

const ViewCommand* ViewerPanel::DrawChoices(ViewCommand::Place place, const ViewTarget& target) {
  const ViewCommand* chosen = nullptr;
  for (const ViewCommand& command : GetViewCommands()) {
    if (command.place != place) continue;
    const bool on = command.isOn(target);
    if (ImGui::RadioButton(command.label, on)) chosen = &command;
    if (NoteItem(GetNumber(command), command.label, GetRole(command), on)) chosen = &command;
  }
  return chosen;
}

void ViewerPanel::DrawHelp(bool unfold, const ViewTarget& target) {
  if (!DrawHeading("Help", unfold)) return;
  const std::vector<HelpLine> lines = MakeHelp(GetNavigationStyle(target));
  float column = 0.0F;
  for (const HelpLine& line : lines) column = std::max(column, ImGui::CalcTextSize(line.keys.c_str()).x);
  for (const HelpLine& line : lines) {
    ImGui::TextDisabled("%s", line.keys.c_str());
    ImGui::SameLine(column + HELP_GAP);
    ImGui::TextUnformatted(line.action.c_str());
  }
}

bool ViewerPanel::DrawHeading(const char* label, bool unfold) {
  const int id = HEADINGS + static_cast<int>(ImGui::GetID(label) % HEADINGS);
  const bool isOpen = ImGui::GetStateStorage()->GetInt(ImGui::GetID(label), 0) != 0;
  if (unfold) ImGui::SetNextItemOpen(true);
  if (pressed == id) ImGui::SetNextItemOpen(!isOpen);
  const bool open = ImGui::CollapsingHeader(label);
  NoteItem(id, label, zovhost::FocusRole::Heading, open);
  return open;
}

// The last item. True when keys have pressed it.
bool ViewerPanel::NoteItem(int id, const char* name, zovhost::FocusRole role, bool on) {
  const ImVec2 low = ImGui::GetItemRectMin();
  const ImVec2 high = ImGui::GetItemRectMax();
  const double height = ImGui::GetIO().DisplaySize.y;
  zovhost::FocusThing thing;
  thing.id = id;
  thing.group = "Panel";
  thing.name = name;
  thing.role = role;
  thing.on = on;
  thing.bounds = Korvane::Box2({(low.x + high.x) * 0.5, height - (low.y + high.y) * 0.5},
                               {(high.x - low.x) * 0.5, (high.y - low.y) * 0.5});
  thing.press = [this, id](bool down) {
    if (down) pressed = id;
  };
  if (focused == id) {
    if (!std::exchange(broughtIntoSight, true)) ImGui::SetScrollHereY(0.5F);
    DrawMark(low, high);
  }
  things.push_back(std::move(thing));
  if (pressed != id) return false;
  pressed.reset();
  return true;
}

void ViewerPanel::ShowFocus(const zovhost::FocusThing* thing) {
  const std::optional<int> now = thing != nullptr ? std::optional(thing->id) : std::nullopt;
  if (now != focused) broughtIntoSight = false;
  focused = now;
}

const ViewCommand* ViewerPanel::DrawNamedViews(const ViewTarget& target) {
  if (target.views == nullptr) return nullptr;
  if (!DrawHeading("Named views", namedViews.TakeNews(*target.views))) return nullptr;
  namedViews.Draw(*target.views, target,
                  COLUMNS * BUTTON_WIDTH + (COLUMNS - 1) * ImGui::GetStyle().ItemSpacing.x);
  const ViewCommand* const chosen = DrawButtons(ViewCommand::Place::KeptViews, target);
  namedViews.ScrollToNews();
  return chosen;
}

const ViewCommand* ViewerPanel::DrawPanel(const PanelContents& contents, const ViewTarget& target,
                                          bool unfoldHelp) {
  if (unfoldHelp) ImGui::SetNextWindowCollapsed(false);
  ImGui::SetNextWindowPos(ImVec2(MARGIN, MARGIN));
  // The size follows what is inside; the name in the title has to be asked room for.
  const float nameWidth = ImGui::CalcTextSize(contents.name.c_str()).x + TITLE_BUTTON_WIDTH;
  ImGui::SetNextWindowSizeConstraints(ImVec2(std::min(nameWidth, WIDEST_PANEL), 0.0F),
                                      ImVec2(WIDEST_PANEL, GetRoomForPanel(target)));
  // The title is what changes, the rest names the panel.
  const std::string title = contents.name + "###panel";
  const ViewCommand* chosen = nullptr;
  const auto take = [&chosen](const ViewCommand* command) {
    if (command != nullptr) chosen = command;
  };
  if (ImGui::Begin(title.c_str(), nullptr, STILL)) {
    reach = ImGui::GetWindowPos().x + ImGui::GetWindowSize().x;
    ImGui::TextDisabled("%s triangles", GroupDigits(contents.triangleCount).c_str());
    take(DrawButtons(ViewCommand::Place::Tools, target));
    ImGui::Separator();
    take(DrawButtons(ViewCommand::Place::Views, target));
    take(DrawSettings(target));
    DrawSelection(target.selection.GetName());
    take(DrawNamedViews(target));
    if (DrawHeading("Discs")) take(DrawButtons(ViewCommand::Place::Discs, target));
    if (DrawHeading("Story")) {
      take(DrawButtons(ViewCommand::Place::Story, target));
      take(DrawButtons(ViewCommand::Place::StoryFile, target));
    }
    if (DrawHeading("Six-axis device")) {
      take(DrawButtons(ViewCommand::Place::Device, target));
      take(DrawButtons(ViewCommand::Place::DeviceSettings, target));
    }
    if (DrawHeading("Mouse and keys")) {
      take(DrawChoices(ViewCommand::Place::Styles, target));
      ImGui::TextDisabled("Orbit");
      take(DrawChoices(ViewCommand::Place::Pivots, target));
    }
    DrawHelp(unfoldHelp, target);
  }
  ImGui::End();
  return chosen;
}

const ViewCommand* ViewerPanel::Draw(const PanelContents& contents, const ViewTarget& target) {
  things.clear();
  const bool shown = visible && !contents.name.empty();
  const bool unfoldHelp = shown && std::exchange(helpWanted, false);
  reach = 0.0F;
  const ViewCommand* const chosen = shown ? DrawPanel(contents, target, unfoldHelp) : nullptr;
  if (contents.loading.has_value()) DrawProgress(*contents.loading);
  if (!contents.message.empty()) DrawMessage(contents.message);
  return chosen;
}

}  // namespace zovview
