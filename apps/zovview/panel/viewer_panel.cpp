#include "panel/viewer_panel.h"

#include <imgui.h>

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "panel/panel_window.h"
#include "views/preferences.h"
#include "views/view_list.h"
#include "zovhost/accent.h"
#include "zovhost/host_pictures.h"
#include "zovhost/panel_icons.h"
#include "zovhost/panel_texts.h"
#include "zovhost/phrases.h"

namespace zovview {

namespace {

constexpr float BAR_WIDTH = 320.0F;  // points
constexpr float LOWEST_PANEL = 60.0F;
constexpr float BESIDE_CUBE = 4.0F;
constexpr int COLUMNS = 2;
// A panel knows in the next frame how far it can scroll.
constexpr int FRAMES_TO_HELP = 3;
constexpr int HEADINGS = 1'000'000;  // above the numbers of all commands
constexpr int LANGUAGE_BOX = 3'000'000;
constexpr ImGuiWindowFlags PANEL = STILL | ImGuiWindowFlags_AlwaysAutoResize | ImGuiWindowFlags_NoTitleBar;
constexpr ImGuiWindowFlags NOTICE =
    STILL | ImGuiWindowFlags_AlwaysAutoResize | ImGuiWindowFlags_NoDecoration | ImGuiWindowFlags_NoInputs;

// 1234567 as "1 234 567", with narrow spaces that keep a number together whichever way is read.
std::string GroupDigits(std::size_t number) {
  constexpr const char* NARROW_SPACE = "\u202f";
  std::string digits = std::to_string(number);
  for (std::size_t end = digits.size(); end > 3; end -= 3) digits.insert(end - 3, NARROW_SPACE);
  return digits;
}

// Quietly, flush right, on the line of the last item.
void DrawKeyOfItem(const PanelWords::Words& words, float right) {
  if (words.key.empty()) return;
  const ImVec2 low = ImGui::GetItemRectMin();
  const ImVec2 high = ImGui::GetItemRectMax();
  const float top = (low.y + high.y - ImGui::GetFontSize()) * 0.5F;
  ImGui::GetWindowDrawList()->AddText(ImVec2(right - words.keyWidth, top),
                                      ImGui::GetColorU32(ImGuiCol_TextDisabled), words.key.c_str());
}

// The one that no file has is named by a phrase.
std::string NameModel(const std::string& name) {
  return zovhost::ToPanelText(zovhost::GetPhrases().SayPlain(name.c_str()));
}

void DrawProgress(const LoadingStatus& status) {
  const ImVec2 size = ImGui::GetIO().DisplaySize;
  zovhost::PlaceNextPanel(size.x * 0.5F, size.y * 0.5F, 0.5F, 0.5F, true);
  if (ImGui::Begin("##progress", nullptr, NOTICE)) {
    zovhost::RaisePanel();
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

void ViewerPanel::ToggleVisible() {
  visible = !visible;
  openForHelp = false;
}

void ViewerPanel::ShowHelp() {
  visible = openForHelp = true;
  helpWanted = true;
  framesToHelp = FRAMES_TO_HELP;
}

void ViewerPanel::ToggleHelp() {
  if (!visible || folded || !helpOpen) return ShowHelp();
  helpWanted = false;
}

// ---- its place ----

bool ViewerPanel::FindFolded(const PanelContents& contents, const ViewTarget& target) const {
  if (openForHelp) return false;
  const std::string_view chosen =
      target.preferences != nullptr ? target.preferences->Get().panel : std::string_view();
  if (chosen == Choices::PANEL_FOLDED || chosen == Choices::PANEL_OPEN)
    return chosen == Choices::PANEL_FOLDED;
  return contents.viewWidth < LEAST_VIEW;
}

void ViewerPanel::Fold(bool wanted, const ViewTarget& target) {
  openForHelp = false;
  if (target.preferences == nullptr) return;
  target.preferences->Edit(
      [wanted](Choices& choices) { choices.panel = wanted ? Choices::PANEL_FOLDED : Choices::PANEL_OPEN; });
}

float ViewerPanel::FindWidth() const {
  return folded ? STRIP_WIDTH : words.GetContentWidth() + 2.0F * ImGui::GetStyle().WindowPadding.x;
}

// The highest of what the cubes and the storyboards leave free at the left, of whatever views they are.
ViewerPanel::Room ViewerPanel::FindRoom(const PanelContents& contents, float right) {
  const auto forEach = [&](const auto& visit) {
    for (const CubePlace& cube : contents.cubes) {
      if (cube.left < right) visit(cube.top - BESIDE_CUBE, cube.bottom + BESIDE_CUBE);
    }
    for (const CubePlace& board : contents.boards) {
      if (board.left < right) visit(board.top - MARGIN, board.bottom + MARGIN);
    }
  };
  const auto findEnd = [&forEach](float top) {
    float end = ImGui::GetIO().DisplaySize.y - MARGIN;
    forEach([&](float from, float to) {
      if (to > top) end = std::min(end, from);
    });
    return end;
  };
  Room best = {MARGIN, findEnd(MARGIN) - MARGIN};
  forEach([&](float /*from*/, float to) {
    const float top = std::max(MARGIN, to);
    const float height = findEnd(top) - top;
    if (height > best.height) best = {top, height};
  });
  return {best.top, std::max(LOWEST_PANEL, best.height)};
}

// The panel ends at the left of its mirrored place.
void ViewerPanel::NoteReach() {
  const float left = ImGui::GetWindowPos().x;
  reach = zovhost::ArePanelsMirrored() ? zovhost::MirrorPlace(left) : left + ImGui::GetWindowSize().x;
}

float ViewerPanel::GetRightOfKeys() const {
  const ImGuiStyle& style = ImGui::GetStyle();
  return ImGui::GetWindowPos().x + style.WindowPadding.x + words.GetContentWidth() -
         style.FramePadding.x * 2.0F;
}

// ---- what is in it ----

void ViewerPanel::DrawSelection(const std::string& name) {
  if (name.empty()) return;
  if (selectionText.IsOld(words, name)) selectionText.Set(zovhost::ToPanelText(name));
  ImGui::TextDisabled("%s", zovhost::Say("Selected:"));
  ImGui::SameLine();
  ImGui::PushTextWrapPos(GetRightOfKeys() - ImGui::GetWindowPos().x);
  ImGui::TextUnformatted(selectionText.Get().c_str());
  ImGui::PopTextWrapPos();
}

// An icon, a label and a key; what is chosen is lit.
bool ViewerPanel::DrawButton(const ViewCommand& command, bool lit) {
  const PanelWords::Words& said = words.Get(command);
  const ImGuiStyle& style = ImGui::GetStyle();
  if (lit) ImGui::PushStyleColor(ImGuiCol_Button, ImGui::GetStyleColorVec4(ImGuiCol_ButtonActive));
  ImGui::PushID(command.name.data());
  bool chosen = ImGui::Button("##button", ImVec2(words.GetButtonWidth(), 0.0F));
  ImGui::PopID();
  if (NoteItem(command, lit)) chosen = true;
  if (lit) ImGui::PopStyleColor();
  const ImVec2 low = ImGui::GetItemRectMin();
  const ImVec2 high = ImGui::GetItemRectMax();
  const float side = zovhost::GetIconPoints(zovhost::IconSize::BesideWord);
  const float left = low.x + style.FramePadding.x;
  zovhost::DrawPanelIcon(said.picture, zovhost::IconSize::BesideWord, left, (low.y + high.y - side) * 0.5F);
  ImGui::GetWindowDrawList()->AddText(
      ImVec2(left + side + style.ItemInnerSpacing.x, low.y + style.FramePadding.y),
      ImGui::GetColorU32(ImGuiCol_Text), said.label);
  DrawKeyOfItem(said, high.x - style.FramePadding.x * 2.0F);
  return chosen;
}

// In two columns.
const ViewCommand* ViewerPanel::DrawButtons(ViewCommand::Place place, const ViewTarget& target) {
  const ViewCommand* chosen = nullptr;
  int count = 0;
  for (const ViewCommand& command : GetViewCommands()) {
    if (command.place != place) continue;
    if (count++ % COLUMNS != 0) ImGui::SameLine();
    if (DrawButton(command, command.isOn != nullptr && command.isOn(target))) chosen = &command;
  }
  return chosen;
}

const ViewCommand* ViewerPanel::DrawSettings(const ViewTarget& target) {
  const ViewCommand* chosen = nullptr;
  for (const ViewCommand& command : GetViewCommands()) {
    if (command.place != ViewCommand::Place::Settings) continue;
    bool on = command.isOn(target);
    if (ImGui::Checkbox(words.Get(command).item, &on)) chosen = &command;
    if (NoteItem(command, on)) chosen = &command;
    DrawKeyOfItem(words.Get(command), GetRightOfKeys());
  }
  return chosen;
}

const ViewCommand* ViewerPanel::DrawChoices(ViewCommand::Place place, const ViewTarget& target) {
  const ViewCommand* chosen = nullptr;
  for (const ViewCommand& command : GetViewCommands()) {
    if (command.place != place) continue;
    const bool on = command.isOn(target);
    if (ImGui::RadioButton(words.Get(command).item, on)) chosen = &command;
    if (NoteItem(command, on)) chosen = &command;
  }
  return chosen;
}

// Each language by its own name.
const ViewCommand* ViewerPanel::DrawLanguages(const ViewTarget& target) {
  const ViewCommand* chosen = nullptr;
  const auto isLanguage = [](const ViewCommand& each) { return each.place == ViewCommand::Place::Languages; };
  const auto present = std::ranges::find_if(
      GetViewCommands(), [&](const ViewCommand& each) { return isLanguage(each) && each.isOn(target); });
  const bool known = present != GetViewCommands().end();
  if (languageText.IsOld(words, known ? present->label : ""))
    languageText.Set(known ? PanelWords::NameLanguage(*present) : std::string());
  zovhost::DrawFieldName("Language", words.GetLanguageColumn());
  ImGui::SetNextItemWidth(GetRightOfKeys() + ImGui::GetStyle().FramePadding.x * 2.0F -
                          ImGui::GetCursorScreenPos().x);
  const bool open = ImGui::BeginCombo("##language", languageText.Get().c_str(), ImGuiComboFlags_HeightLarge);
  if (!open) {
    const char* const name = zovhost::GetPhrases().SayPlain("Language");
    if (NoteItem(LANGUAGE_BOX, name, zovhost::FocusRole::MenuButton, false)) zovhost::PressItem("##language");
    return nullptr;
  }
  for (const ViewCommand& command : GetViewCommands()) {
    if (!isLanguage(command)) continue;
    ImGui::PushID(command.name.data());
    const std::string item = PanelWords::NameLanguage(command) + "###language";
    if (ImGui::Selectable(item.c_str(), command.isOn(target))) chosen = &command;
    if (command.isOn(target)) ImGui::SetItemDefaultFocus();
    ImGui::PopID();
  }
  ImGui::EndCombo();
  return chosen;
}

void ViewerPanel::DrawHelp(std::optional<bool> wanted) {
  if (wanted == false) ImGui::SetNextItemOpen(false);
  helpOpen = DrawHeading("Help", wanted == true);
  if (framesToHelp > 0) {
    ImGui::SetScrollHereY(0.0F);
    if (--framesToHelp > 0) requestFrame();
  }
  helpId = items.back().id;
  const float tall = ImGui::GetTextLineHeightWithSpacing();
  linesOfPage = ImGui::GetWindowHeight() / tall - 2.0F;
  linesAbove = helpOpen ? (ImGui::GetWindowPos().y - ImGui::GetItemRectMin().y) / tall : 0.0F;
  const double scroll = std::exchange(linesToScroll, 0.0);
  if (scroll != 0.0) {
    ImGui::SetScrollY(ImGui::GetScrollY() + static_cast<float>(scroll) * tall);
    requestFrame();
  }
  if (!helpOpen) return;
  const float column = words.GetHelpColumn();
  ImGui::PushTextWrapPos(std::max(GetRightOfKeys() - ImGui::GetWindowPos().x, 2.0F * column));
  for (const PanelWords::Line& line : words.GetHelp()) {
    ImGui::TextDisabled("%s", line.keys.c_str());
    ImGui::SameLine(column);
    ImGui::TextUnformatted(line.action.c_str());
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

// ---- what is pressed, by keys too ----

bool ViewerPanel::NoteItem(const ViewCommand& command, bool on) {
  const bool told =
      command.place != ViewCommand::Place::Styles && command.place != ViewCommand::Place::Pivots;
  if (told) NoteTip(GetNumber(command), words.Get(command).tip.c_str());
  return NoteItem(GetNumber(command), zovhost::GetPhrases().SayPlain(command.label), GetRole(command), on);
}

void ViewerPanel::NoteTip(int id, const char* text) {
  using Side = zovhost::PanelTip::Side;
  tip.Note(id, text, folded ? Side::Beside : Side::Below, folded && focused == id);
}

// The last item. True when keys have pressed it.
bool ViewerPanel::NoteItem(int id, const char* name, zovhost::FocusRole role, bool on, bool enabled) {
  const ImVec2 low = ImGui::GetItemRectMin();
  const ImVec2 high = ImGui::GetItemRectMax();
  const double height = ImGui::GetIO().DisplaySize.y;
  items.push_back(
      {id,
       name,
       {},
       role,
       on,
       enabled,
       Korvane::Box2({zovhost::MirrorPlace((low.x + high.x) * 0.5F), height - (low.y + high.y) * 0.5},
                     {(high.x - low.x) * 0.5, (high.y - low.y) * 0.5})});
  if (focused == id) {
    if (!std::exchange(broughtIntoSight, true)) {
      zovhost::BringItemIntoSight();
      requestFrame();
    }
    DrawMark(low, high);
  }
  if (pressed != id) return false;
  pressed.reset();
  broughtIntoSight = false;  // it may stand elsewhere then
  return true;
}

// ---- as a whole ----

const ViewCommand* ViewerPanel::DrawNamedViews(const ViewTarget& target) {
  if (target.views == nullptr) return nullptr;
  if (!DrawHeading("Named views", namedViews.TakeNews(*target.views))) return nullptr;
  namedViews.Draw(*target.views, target, words.GetContentWidth(), focused,
                  [this](int id, const std::string& name, bool enabled) {
                    const bool isPressed = NoteItem(id, "", zovhost::FocusRole::Button, false, enabled);
                    items.back().ofView = name;
                    return isPressed;
                  });
  const ViewCommand* const chosen = DrawButtons(ViewCommand::Place::KeptViews, target);
  namedViews.ScrollToNews();
  return chosen;
}

const ViewCommand* ViewerPanel::DrawSections(const ViewTarget& target, std::optional<bool> help) {
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
    ImGui::TextDisabled("%s", zovhost::Say("Orbit about"));
    take(DrawChoices(ViewCommand::Place::Pivots, target));
  }
  DrawHelp(help);
  return chosen;
}

// The button that folds it, and the name of the model.
void ViewerPanel::DrawHead(const PanelContents& contents, const ViewTarget& target) {
  const float side = ImGui::GetFrameHeight();
  const float inset = (side - zovhost::GetIconPoints(zovhost::IconSize::BesideWord)) * 0.5F;
  const char* const name = zovhost::Say("Fold the panel");
  ImGui::PushStyleColor(ImGuiCol_Button, 0);
  bool chosen = ImGui::Button("##fold", ImVec2(side, side));
  ImGui::PopStyleColor();
  NoteTip(FOLD, name);
  if (NoteItem(FOLD, zovhost::GetPhrases().SayPlain("Fold the panel"), zovhost::FocusRole::Button, false))
    chosen = true;
  const ImVec2 low = ImGui::GetItemRectMin();
  zovhost::DrawPanelIcon(zovhost::HOST_PICTURE_FOLD, zovhost::IconSize::BesideWord, low.x + inset,
                         low.y + inset);
  ImGui::SameLine();
  ImGui::PushTextWrapPos(GetRightOfKeys() - ImGui::GetWindowPos().x);
  ImGui::AlignTextToFramePadding();
  if (nameText.IsOld(words, contents.name)) nameText.Set(NameModel(contents.name));
  ImGui::TextUnformatted(nameText.Get().c_str());
  ImGui::PopTextWrapPos();
  if (chosen) Fold(true, target);
}

const ViewCommand* ViewerPanel::DrawPanel(const PanelContents& contents, const ViewTarget& target) {
  const std::optional<bool> help = std::exchange(helpWanted, std::nullopt);
  const float width = FindWidth();
  const Room room = FindRoom(contents, MARGIN + width);
  zovhost::PlaceNextPanel(MARGIN, room.top, 0.0F, 0.0F, true);
  ImGui::SetNextWindowSizeConstraints(ImVec2(width, 0.0F),
                                      ImVec2(width + ImGui::GetStyle().ScrollbarSize, room.height));
  const ViewCommand* chosen = nullptr;
  if (ImGui::Begin("###panel", nullptr, PANEL)) {
    NoteReach();
    DrawHead(contents, target);
    const std::string count = std::to_string(contents.triangleCount);
    if (countText.IsOld(words, count))
      countText.Set(zovhost::Say("{} triangles", {GroupDigits(contents.triangleCount)}));
    ImGui::TextDisabled("%s", countText.Get().c_str());
    chosen = DrawSections(target, help);
  }
  ImGui::End();
  return chosen;
}

const ViewCommand* ViewerPanel::Draw(const PanelContents& contents, const ViewTarget& target) {
  items.clear();
  words.Update(GetNavigationStyle(target));
  folded = FindFolded(contents, target);
  reach = visible ? MARGIN + FindWidth() : 0.0F;
  const ViewCommand* chosen = nullptr;
  if (visible && !contents.name.empty())
    chosen = folded ? DrawStrip(contents, target) : DrawPanel(contents, target);
  tip.Draw();
  if (contents.loading.has_value()) DrawProgress(*contents.loading);
  if (!contents.message.empty()) DrawMessage(contents.message);
  return chosen;
}

}  // namespace zovview
