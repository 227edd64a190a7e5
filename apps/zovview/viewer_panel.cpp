#include "viewer_panel.h"

#include <imgui.h>

#include <algorithm>
#include <array>
#include <cfloat>
#include <cmath>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "help.h"
#include "view_list.h"
#include "view_story.h"
#include "zovhost/accent.h"
#include "zovhost/panel_texts.h"
#include "zovhost/phrases.h"

namespace zovview {

namespace {

constexpr float MARGIN = 12.0F;  // points
constexpr float BAR_WIDTH = 320.0F;
constexpr float WIDEST_PANEL = 420.0F;
constexpr float LOWEST_PANEL = 60.0F;
constexpr float TITLE_BUTTON_WIDTH = 48.0F;  // of the arrow that folds the panel, with its space
constexpr float LEAST_BUTTON = 148.0F;
constexpr float HELP_GAP = 12.0F;
constexpr float KEY_GAP = 6.0F;  // between a label and its key
constexpr int COLUMNS = 2;
constexpr int HEADINGS = 1'000'000;  // above the numbers of all commands
constexpr ImGuiWindowFlags STILL = ImGuiWindowFlags_NoMove | ImGuiWindowFlags_NoResize |
                                   ImGuiWindowFlags_AlwaysAutoResize | ImGuiWindowFlags_NoSavedSettings |
                                   ImGuiWindowFlags_NoFocusOnAppearing | ImGuiWindowFlags_NoNav;
constexpr ImGuiWindowFlags NOTICE = STILL | ImGuiWindowFlags_NoDecoration | ImGuiWindowFlags_NoInputs;

// 1234567 as "1 234 567", with narrow spaces that keep a number together whichever way is read.
std::string GroupDigits(std::size_t number) {
  constexpr const char* NARROW_SPACE = "\u202f";
  std::string digits = std::to_string(number);
  for (std::size_t end = digits.size(); end > 3; end -= 3) digits.insert(end - 3, NARROW_SPACE);
  return digits;
}

// Quietly, flush right, on the line of the last item.
void DrawKeyOfItem(const char* keyName, float right) {
  const std::string name = zovhost::GetPhrases().SayKey(keyName);
  const ImVec2 size = ImGui::CalcTextSize(name.c_str());
  const ImVec2 low = ImGui::GetItemRectMin();
  const ImVec2 high = ImGui::GetItemRectMax();
  ImGui::GetWindowDrawList()->AddText(ImVec2(right - size.x, (low.y + high.y - size.y) * 0.5F),
                                      ImGui::GetColorU32(ImGuiCol_TextDisabled), name.c_str());
}

// ---- how wide it is, in the present language ----

constexpr std::array PLACES = {ViewCommand::Place::Views,  ViewCommand::Place::Tools,
                               ViewCommand::Place::Discs,  ViewCommand::Place::KeptViews,
                               ViewCommand::Place::Story,  ViewCommand::Place::StoryFile,
                               ViewCommand::Place::Device, ViewCommand::Place::DeviceSettings};

float MeasureCommand(const ViewCommand& command) {
  const std::string key = zovhost::GetPhrases().SayKey(command.keyName);
  const float label = ImGui::CalcTextSize(zovhost::Say(command.label)).x;
  return key.empty() ? label : label + KEY_GAP + ImGui::CalcTextSize(key.c_str()).x;
}

// One for all buttons: of two columns, in which each fits, and wide enough for the settings, which are one.
float FindButtonWidth() {
  const ImGuiStyle& style = ImGui::GetStyle();
  const float edges = 3.0F * style.FramePadding.x;  // a key stands two from the right
  const float box = ImGui::GetFrameHeight() + style.ItemInnerSpacing.x;
  float width = LEAST_BUTTON;
  for (const ViewCommand& command : GetViewCommands()) {
    const float words = MeasureCommand(command);
    if (std::ranges::find(PLACES, command.place) != PLACES.end()) width = std::max(width, words + edges);
    if (command.place == ViewCommand::Place::Settings)
      width = std::max(width, (box + words + edges) / COLUMNS);
  }
  return std::ceil(width);
}

// Of what stands in the columns of buttons.
float FindContentWidth() {
  return COLUMNS * FindButtonWidth() + (COLUMNS - 1) * ImGui::GetStyle().ItemSpacing.x;
}

float GetRightOfKeys() {
  const ImGuiStyle& style = ImGui::GetStyle();
  return ImGui::GetWindowPos().x + style.WindowPadding.x + FindContentWidth() - style.FramePadding.x * 2.0F;
}

void DrawSelection(const std::string& name) {
  if (name.empty()) return;
  ImGui::TextDisabled("%s", zovhost::Say("Selected:"));
  ImGui::SameLine();
  ImGui::PushTextWrapPos(GetRightOfKeys() - ImGui::GetWindowPos().x);
  ImGui::TextUnformatted(zovhost::ToPanelText(name).c_str());
  ImGui::PopTextWrapPos();
}

// What is done by them, or the name of one.
std::string SayKeys(const std::string& keys) {
  const zovhost::Phrases& phrases = zovhost::GetPhrases();
  if (phrases.Has(keys.c_str())) return phrases.Say(keys.c_str());
  constexpr std::string_view BETWEEN = ", ";
  std::string said;
  std::string_view rest = keys;
  while (!rest.empty()) {
    const std::size_t end = std::min(rest.find(BETWEEN), rest.size());
    if (!said.empty()) said += BETWEEN;
    said += phrases.SayKey(rest.substr(0, end));
    rest.remove_prefix(std::min(end + BETWEEN.size(), rest.size()));
  }
  return said;
}

// Above the storyboard, which counts in pixels.
float GetRoomForPanel(const ViewTarget& target) {
  const ImGuiIO& io = ImGui::GetIO();
  const bool boardShows = target.story != nullptr && target.story->IsShown();
  const float below = boardShows ? ViewStory::HEIGHT / std::max(1.0F, io.DisplayFramebufferScale.y) : 0.0F;
  return std::max(LOWEST_PANEL, io.DisplaySize.y - below - 2.0F * MARGIN);
}

// The one that no file has is named by a phrase.
std::string NameModel(const std::string& name) {
  return zovhost::ToPanelText(zovhost::GetPhrases().SayPlain(name.c_str()));
}

void DrawProgress(const LoadingStatus& status) {
  const ImVec2 size = ImGui::GetIO().DisplaySize;
  zovhost::PlaceNextPanel(size.x * 0.5F, size.y * 0.5F, 0.5F, 0.5F, true);
  if (ImGui::Begin("##progress", nullptr, NOTICE)) {
    const zovhost::Phrases& phrases = zovhost::GetPhrases();
    const std::string opening = phrases.SayPlain("Opening {}", {phrases.SayPlain(status.name.c_str())});
    ImGui::TextUnformatted(zovhost::ToPanelText(opening).c_str());
    ImGui::ProgressBar(static_cast<float>(status.fraction), ImVec2(BAR_WIDTH, 0.0F), "");
    ImGui::TextDisabled("%s", zovhost::Say(status.step.c_str()));
    ImGui::TextDisabled("%s", zovhost::Say("Escape ends it"));
  }
  ImGui::End();
}

void DrawMessage(const std::string& message) {
  const ImVec2 size = ImGui::GetIO().DisplaySize;
  zovhost::PlaceNextPanel(size.x * 0.5F, size.y - MARGIN, 0.5F, 1.0F, true);
  if (ImGui::Begin("##message", nullptr, NOTICE)) {
    ImGui::PushTextWrapPos(size.x - 4.0F * MARGIN);
    const std::string told = zovhost::GetPhrases().TranslateLine(message);
    ImGui::TextUnformatted(zovhost::ToPanelText(told).c_str());
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
  const ImVec2 size(FindButtonWidth(), 0.0F);
  int count = 0;
  ImGui::PushStyleVar(ImGuiStyleVar_ButtonTextAlign, ImVec2(0.0F, 0.5F));
  for (const ViewCommand& command : GetViewCommands()) {
    if (command.place != place) continue;
    if (count++ % COLUMNS != 0) ImGui::SameLine();
    const bool lit = command.isOn != nullptr && command.isOn(target);
    if (lit) ImGui::PushStyleColor(ImGuiCol_Button, ImGui::GetStyleColorVec4(ImGuiCol_ButtonActive));
    ImGui::PushID(command.name.data());
    if (ImGui::Button(zovhost::SayLabel(command.label), size)) chosen = &command;
    ImGui::PopID();
    if (NoteItem(command, lit)) chosen = &command;
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
    if (ImGui::Checkbox(zovhost::SayLabel(command.label), &on)) chosen = &command;
    if (NoteItem(command, on)) chosen = &command;
    DrawKeyOfItem(command.keyName, GetRightOfKeys());
  }
  return chosen;
}

const ViewCommand* ViewerPanel::DrawChoices(ViewCommand::Place place, const ViewTarget& target) {
  const ViewCommand* chosen = nullptr;
  for (const ViewCommand& command : GetViewCommands()) {
    if (command.place != place) continue;
    const bool on = command.isOn(target);
    if (ImGui::RadioButton(zovhost::SayLabel(command.label), on)) chosen = &command;
    if (NoteItem(command, on)) chosen = &command;
  }
  return chosen;
}

// Each language by its own name.
const ViewCommand* ViewerPanel::DrawLanguages(const ViewTarget& target) {
  const ViewCommand* chosen = nullptr;
  const auto name = [](const ViewCommand& command) {
    const bool named = zovhost::GetPhrases().Has(command.label);
    return named ? std::string(zovhost::Say(command.label)) : zovhost::ToPanelText(command.label);
  };
  std::string present;
  for (const ViewCommand& command : GetViewCommands()) {
    if (command.place == ViewCommand::Place::Languages && command.isOn(target)) present = name(command);
  }
  constexpr std::array FIELD = {"Language"};
  zovhost::DrawFieldName(FIELD[0], zovhost::FindFieldColumn(FIELD, 0.0F));
  ImGui::SetNextItemWidth(GetRightOfKeys() + ImGui::GetStyle().FramePadding.x * 2.0F -
                          ImGui::GetCursorScreenPos().x);
  if (!ImGui::BeginCombo("##language", present.c_str(), ImGuiComboFlags_HeightLarge)) return nullptr;
  for (const ViewCommand& command : GetViewCommands()) {
    if (command.place != ViewCommand::Place::Languages) continue;
    ImGui::PushID(command.name.data());
    if (ImGui::Selectable((name(command) + "###language").c_str(), command.isOn(target))) chosen = &command;
    ImGui::PopID();
  }
  ImGui::EndCombo();
  return chosen;
}

void ViewerPanel::DrawHelp(bool unfold, const ViewTarget& target) {
  if (!DrawHeading("Help", unfold)) return;
  std::vector<HelpLine> lines = MakeHelp(GetNavigationStyle(target));
  float column = 0.0F;
  for (HelpLine& line : lines) {
    line.keys = SayKeys(line.keys);
    column = std::max(column, ImGui::CalcTextSize(line.keys.c_str()).x);
  }
  column += HELP_GAP;
  ImGui::PushTextWrapPos(std::max(GetRightOfKeys() - ImGui::GetWindowPos().x, 2.0F * column));
  for (const HelpLine& line : lines) {
    ImGui::TextDisabled("%s", line.keys.c_str());
    ImGui::SameLine(column);
    ImGui::TextUnformatted(zovhost::Say(line.action.c_str()));
  }
  ImGui::PopTextWrapPos();
}

bool ViewerPanel::DrawHeading(const char* label, bool unfold) {
  const ImGuiID item = ImGui::GetID(zovhost::SayLabel(label));
  const int id = HEADINGS + static_cast<int>(item % HEADINGS);
  const bool isOpen = ImGui::GetStateStorage()->GetInt(item, 0) != 0;
  if (unfold) ImGui::SetNextItemOpen(true);
  if (pressed == id) ImGui::SetNextItemOpen(!isOpen);
  const bool open = ImGui::CollapsingHeader(zovhost::SayLabel(label));
  NoteItem(id, zovhost::GetPhrases().SayPlain(label), zovhost::FocusRole::Heading, open);
  return open;
}

bool ViewerPanel::NoteItem(const ViewCommand& command, bool on) {
  return NoteItem(GetNumber(command), zovhost::GetPhrases().SayPlain(command.label), GetRole(command), on);
}

// The last item. True when keys have pressed it.
bool ViewerPanel::NoteItem(int id, const char* name, zovhost::FocusRole role, bool on) {
  const ImVec2 low = ImGui::GetItemRectMin();
  const ImVec2 high = ImGui::GetItemRectMax();
  const double height = ImGui::GetIO().DisplaySize.y;
  zovhost::FocusThing thing;
  thing.id = id;
  thing.group = zovhost::GetPhrases().SayPlain("Panel");
  thing.name = name;
  thing.role = role;
  thing.on = on;
  thing.bounds =
      Korvane::Box2({zovhost::MirrorPlace((low.x + high.x) * 0.5F), height - (low.y + high.y) * 0.5},
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
  namedViews.Draw(*target.views, target, FindContentWidth());
  const ViewCommand* const chosen = DrawButtons(ViewCommand::Place::KeptViews, target);
  namedViews.ScrollToNews();
  return chosen;
}

// The panel ends at the left of its mirrored place.
void ViewerPanel::NoteReach() {
  const float left = ImGui::GetWindowPos().x;
  reach = zovhost::ArePanelsMirrored() ? zovhost::MirrorPlace(left) : left + ImGui::GetWindowSize().x;
}

const ViewCommand* ViewerPanel::DrawSections(const ViewTarget& target, bool unfoldHelp) {
  const ViewCommand* chosen = nullptr;
  const auto take = [&chosen](const ViewCommand* command) {
    if (command != nullptr) chosen = command;
  };
  take(DrawButtons(ViewCommand::Place::Tools, target));
  ImGui::Separator();
  take(DrawButtons(ViewCommand::Place::Views, target));
  take(DrawSettings(target));
  take(DrawLanguages(target));
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
    ImGui::TextDisabled("%s", zovhost::Say("Orbit"));
    take(DrawChoices(ViewCommand::Place::Pivots, target));
  }
  DrawHelp(unfoldHelp, target);
  return chosen;
}

const ViewCommand* ViewerPanel::DrawPanel(const PanelContents& contents, const ViewTarget& target,
                                          bool unfoldHelp) {
  if (unfoldHelp) ImGui::SetNextWindowCollapsed(false);
  zovhost::PlaceNextPanel(MARGIN, MARGIN, 0.0F, 0.0F, true);  // at the left, where the cube never is at first
  // The size follows what is inside; the name in the title has to be asked room for.
  const std::string name = NameModel(contents.name);
  const float nameWidth = ImGui::CalcTextSize(name.c_str()).x + TITLE_BUTTON_WIDTH;
  const ImGuiStyle& style = ImGui::GetStyle();
  const float widest =
      std::max(WIDEST_PANEL, FindContentWidth() + 2.0F * style.WindowPadding.x + style.ScrollbarSize);
  ImGui::SetNextWindowSizeConstraints(ImVec2(std::min(nameWidth, widest), 0.0F),
                                      ImVec2(widest, GetRoomForPanel(target)));
  // The title is what changes, the rest names the panel.
  const std::string title = name + "###panel";
  const ViewCommand* chosen = nullptr;
  if (ImGui::Begin(title.c_str(), nullptr, STILL)) {
    NoteReach();
    const std::string count = GroupDigits(contents.triangleCount);
    ImGui::TextDisabled("%s", zovhost::Say("{} triangles", {count}).c_str());
    chosen = DrawSections(target, unfoldHelp);
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
