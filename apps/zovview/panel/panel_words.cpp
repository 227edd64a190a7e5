#include "panel/panel_words.h"

#include <imgui.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>
#include <utility>

#include "commands/command_icons.h"
#include "commands/help.h"
#include "zovhost/panel_icons.h"
#include "zovhost/panel_texts.h"
#include "zovhost/phrases.h"

namespace zovview {

using Place = ViewCommand::Place;

namespace {

constexpr float LEAST_BUTTON = 148.0F;  // points
constexpr float HELP_GAP = 12.0F;
constexpr float KEY_GAP = 6.0F;  // between a label and its key
constexpr float COLUMNS = 2.0F;

constexpr std::array BUTTONS = {Place::Views, Place::Tools,     Place::Discs,  Place::KeptViews,
                                Place::Story, Place::StoryFile, Place::Device, Place::DeviceSettings};

float Measure(const char* text) { return ImGui::CalcTextSize(text).x; }

// What is done by them, or the name of one.
std::string SayKeys(const std::string& keys) {
  const zovhost::Phrases& phrases = zovhost::GetPhrases();
  if (phrases.Has(keys.c_str())) return phrases.Say(keys.c_str());
  constexpr std::string_view BETWEEN = ", ";
  std::string said;
  std::string_view rest = keys;
  while (!rest.empty()) {
    const std::size_t end = std::min(rest.find(BETWEEN), rest.size());
    const std::string key = phrases.SayKey(rest.substr(0, end));
    said = said.empty() ? key : phrases.SayPlain("{}, {}", {said, key});
    rest.remove_prefix(std::min(end + BETWEEN.size(), rest.size()));
  }
  return said;
}

std::string MakeTip(const ViewCommand& command) {
  const zovhost::Phrases& phrases = zovhost::GetPhrases();
  const HelpLine line = MakeHelpLine(command);
  if (line.keys.empty()) return phrases.Say(command.label);
  const std::string label = phrases.SayPlain(command.label);
  return zovhost::ToPanelText(phrases.SayPlain("{} ({})", {label, SayKeys(line.keys)}));
}

}  // namespace

void PanelWords::Update(const zovhost::NavigationStyle& wantedStyle) {
  const zovhost::Phrases& said = zovhost::GetPhrases();
  const float scale = ImGui::GetIO().FontGlobalScale;
  if (phrases == &said && fontScale == scale && style == &wantedStyle) return;
  phrases = &said;
  fontScale = scale;
  style = &wantedStyle;
  ++serial;
  CollectWords();
  MeasureButtons();
  CollectHelp(wantedStyle);
  constexpr std::array FIELD = {"Language"};
  languageColumn = zovhost::FindFieldColumn(FIELD, 0.0F);
}

const PanelWords::Words& PanelWords::Get(const ViewCommand& command) const {
  return words[static_cast<std::size_t>(&command - GetViewCommands().data())];
}

void PanelWords::CollectWords() {
  words.clear();
  for (const ViewCommand& command : GetViewCommands()) {
    std::string key = zovhost::GetPhrases().SayKey(command.keyName);
    const float keyWidth = Measure(key.c_str());
    words.push_back({zovhost::Say(command.label), zovhost::SayLabel(command.label), std::move(key), keyWidth,
                     MakeTip(command), FindCommandIcon(command)});
  }
}

void PanelWords::MeasureButtons() {
  const ImGuiStyle& shape = ImGui::GetStyle();
  const float edges = 3.0F * shape.FramePadding.x;  // a key stands two from the right
  const float icon = zovhost::GetIconPoints(zovhost::IconSize::BesideWord) + shape.ItemInnerSpacing.x;
  const float box = ImGui::GetFrameHeight() + shape.ItemInnerSpacing.x;
  buttonWidth = LEAST_BUTTON;
  for (const ViewCommand& command : GetViewCommands()) {
    const Words& each = Get(command);
    const float wide = Measure(each.label) + (each.key.empty() ? 0.0F : KEY_GAP + each.keyWidth) + edges;
    if (std::ranges::find(BUTTONS, command.place) != BUTTONS.end())
      buttonWidth = std::max(buttonWidth, icon + wide);
    if (command.place == Place::Settings) buttonWidth = std::max(buttonWidth, (box + wide) / COLUMNS);
  }
  buttonWidth = std::ceil(buttonWidth);
  contentWidth = COLUMNS * buttonWidth + (COLUMNS - 1.0F) * shape.ItemSpacing.x;
}

void PanelWords::CollectHelp(const zovhost::NavigationStyle& wantedStyle) {
  help.clear();
  helpColumn = 0.0F;
  for (const HelpLine& line : MakeHelp(wantedStyle)) {
    help.push_back({SayKeys(line.keys), zovhost::Say(line.action.c_str())});
    helpColumn = std::max(helpColumn, Measure(help.back().keys.c_str()));
  }
  helpColumn += ImGui::GetStyle().WindowPadding.x + HELP_GAP;  // it counts from the edge of the window
}

std::string PanelWords::NameLanguage(const ViewCommand& command) {
  const bool named = zovhost::GetPhrases().Has(command.label);
  return named ? std::string(zovhost::Say(command.label)) : zovhost::ToPanelText(command.label);
}

bool PanelText::IsOld(const PanelWords& words, const std::string& from) {
  if (serial == words.GetSerial() && source == from) return false;
  serial = words.GetSerial();
  source = from;
  return true;
}

}  // namespace zovview
