#include "zovhost/six_axis_panel.h"

#include <imgui.h>
#include <imgui_internal.h>

#include <algorithm>
#include <array>
#include <cfloat>
#include <string>

#include "korvane/cam3d_controller.h"
#include "korvane/cam3d_controller_observer.h"
#include "panels/choice_list.h"
#include "zovhost/panel_texts.h"
#include "zovhost/phrases.h"

namespace zovhost {

using Korvane::Cam3DController;

namespace {

constexpr float LEAST_WIDTH = 420.0F;  // points
constexpr float LEAST_COLUMN = 116.0F;
constexpr float LEAST_LOCK = 100.0F;
constexpr int LOCKS_OF_LINE = 3;
constexpr float LOWEST_LIST = 150.0F;
constexpr float MARGIN = 12.0F;

constexpr const char* MODES[] = {"Move the model", "Walk", "Fly", "Move the page"};
constexpr const char* AXES[] = {"Move right", "Move up", "Move in", "Tilt", "Turn", "Roll"};
constexpr const char* TARGETS[] = {"nothing", "move right", "move up", "move in", "tilt", "turn", "roll"};

// What a button can be for, in the order of a list.
struct Command {
  int id;
  const char* name;
};
constexpr Command COMMANDS[] = {
    {SixAxisSettings::NOTHING, "nothing"},
    {Korvane::CAM3D_KEY_HOME, "Home"},
    {Korvane::CAM3D_KEY_FIT, "Fit all"},
    {Korvane::CAM3D_KEY_TOP, "Top"},
    {Korvane::CAM3D_KEY_BOTTOM, "Bottom"},
    {Korvane::CAM3D_KEY_FRONT, "Front"},
    {Korvane::CAM3D_KEY_BACK, "Back"},
    {Korvane::CAM3D_KEY_LEFT, "Left"},
    {Korvane::CAM3D_KEY_RIGHT, "Right"},
    {Korvane::CAM3D_KEY_ROLL_CLOCKWISE, "Roll clockwise"},
    {Korvane::CAM3D_KEY_ROLL_COUNTER_CLOCKWISE, "Roll back"},
    {Korvane::CAM3D_KEY_HISTORY_BACK, "View before"},
    {Korvane::CAM3D_KEY_HISTORY_FORWARD, "View after"},
    {Korvane::CAM3D_KEY_PAN_MODE, "Move the page, and back"},
};

// ---- how wide it is ----

constexpr std::array<const char*, 5> FIELDS = {"What it moves", "Speed", "Felt from", "Locked", "Dead zone"};
constexpr std::array<const char*, 2> LAST_OF_LINE = {AXES[2], AXES[5]};
constexpr std::array<const char*, 3> SWITCH_NAMES = {"Translation", "Rotation", "Keep upright"};

float GetBoxWidth() { return ImGui::GetFrameHeight() + ImGui::GetStyle().ItemInnerSpacing.x; }

float FindColumn() { return std::max(FindFieldColumn(FIELDS, LEAST_COLUMN), FindFieldColumn(AXES, 0.0F)); }

// From one lock to the next.
float FindLockStep() {
  return std::max(LEAST_LOCK, MeasureWidest(AXES) + GetBoxWidth() + ImGui::GetStyle().ItemInnerSpacing.x);
}

float FindSwitchesWidth() {
  float width = 0.0F;
  for (const char* const name : SWITCH_NAMES) {
    width += ImGui::CalcTextSize(Say(name)).x + GetBoxWidth() + ImGui::GetStyle().ItemSpacing.x;
  }
  return width;
}

float FindWidth() {
  const ImGuiStyle& style = ImGui::GetStyle();
  const float locks =
      FindColumn() + (LOCKS_OF_LINE - 1) * FindLockStep() + MeasureWidest(LAST_OF_LINE) + GetBoxWidth();
  const float switches = style.WindowPadding.x + FindSwitchesWidth();
  return std::max(LEAST_WIDTH, std::max(locks, switches) + style.WindowPadding.x + style.ScrollbarSize);
}

void Label(const char* name) { DrawFieldName(name, FindColumn()); }

// ---- what they do ----

struct Range {
  float least;
  float most;
};

std::string FormatNumber(float number, const std::string& format) {
  std::array<char, 64> text{};
  ImGui::DataTypeFormatString(text.data(), static_cast<int>(text.size()), ImGuiDataType_Float, &number,
                              format.c_str());
  return text.data();
}

// The number stands at its end, as the handle would cover it. It is typed in the slider.
bool DrawSlider(const char* id, float& value, Range range, const std::string& format,
                ImGuiSliderFlags style) {
  const float gap = ImGui::GetStyle().ItemInnerSpacing.x;
  ImGui::SetNextItemWidth(-ImGui::CalcTextSize(FormatNumber(range.most, format).c_str()).x - gap);
  const bool typed = ImGui::TempInputIsActive(ImGui::GetID(id));
  bool changed = false;
  {
    const UprightItem upright;
    const ImVec4 words = ImGui::GetStyleColorVec4(ImGuiCol_Text);
    ImGui::PushStyleColor(ImGuiCol_Text, ImVec4(words.x, words.y, words.z, typed ? words.w : 0.0F));
    changed = ImGui::SliderFloat(id, &value, range.least, range.most, format.c_str(), style);
    ImGui::PopStyleColor();
  }
  ImGui::SameLine(0.0F, gap);
  ImGui::TextUnformatted(FormatNumber(value, format).c_str());
  return changed;
}

void DrawMode(Cam3DController& controller) {
  int mode = controller.GetNavigationMode();
  Label("What it moves");
  if (ChoosePhrase("##mode", mode, MODES)) {
    controller.SetNavigationMode(static_cast<Cam3DController::NavigationMode>(mode));
  }
}

// As a multiple of the speed of a first start.
void DrawSpeed(Cam3DController& controller) {
  static const double normal = Korvane::Cam3DControllerParameters().GetSensitivity();
  auto speed = static_cast<float>(controller.GetSensitivity() / normal);
  Label("Speed");
  constexpr ImGuiSliderFlags STYLE = ImGuiSliderFlags_Logarithmic | ImGuiSliderFlags_AlwaysClamp;
  const std::string format = GetPhrases().SayFormat("{} times", "%.2f");
  if (DrawSlider("##speed", speed, {0.1F, 10.0F}, format, STYLE)) {
    controller.SetSensitivity(static_cast<double>(speed) * normal);
  }
}

void DrawThreshold(Cam3DController& controller) {
  auto threshold = static_cast<float>(controller.GetInputThreshold());
  Label("Felt from");
  if (DrawSlider("##threshold", threshold, {0.0F, 100.0F}, "%.0f", ImGuiSliderFlags_AlwaysClamp)) {
    controller.SetInputThreshold(static_cast<double>(threshold));
  }
}

struct Switch {
  const char* label;
  bool (Cam3DController::*get)() const;
  void (Cam3DController::*set)(bool);
};
constexpr Switch SWITCHES[] = {
    {SWITCH_NAMES[0], &Cam3DController::GetEnableTranslation, &Cam3DController::SetEnableTranslation},
    {SWITCH_NAMES[1], &Cam3DController::GetEnableRotation, &Cam3DController::SetEnableRotation},
    {SWITCH_NAMES[2], &Cam3DController::GetKeepSceneUpright, &Cam3DController::SetKeepSceneUpright},
};

void DrawSwitches(Cam3DController& controller) {
  for (const Switch& row : SWITCHES) {
    bool on = (controller.*row.get)();
    if (&row != SWITCHES) ImGui::SameLine();
    if (ImGui::Checkbox(SayLabel(row.label), &on)) (controller.*row.set)(on);
  }
}

// ---- what comes ----

constexpr float FULL_DEFLECTION = 400.0F;

// A bar from the middle, on the place of the next item; to the right of the room, whichever way is read.
void DrawDeflection(double value) {
  const ImVec2 low = ImGui::GetCursorScreenPos();
  const float width = ImGui::GetContentRegionAvail().x;
  const float height = ImGui::GetFrameHeight();
  const ImVec2 high(low.x + width, low.y + height);
  const float middle = low.x + width * 0.5F;
  const float side = ArePanelsMirrored() ? -1.0F : 1.0F;
  const float end =
      middle + side * std::clamp(static_cast<float>(value) / FULL_DEFLECTION, -1.0F, 1.0F) * width * 0.5F;
  ImDrawList& list = *ImGui::GetWindowDrawList();
  list.AddRectFilled(low, high, ImGui::GetColorU32(ImGuiCol_FrameBg), ImGui::GetStyle().FrameRounding);
  list.AddRectFilled(ImVec2(std::min(middle, end), low.y + 3.0F),
                     ImVec2(std::max(middle, end), high.y - 3.0F),
                     ImGui::GetColorU32(ImGuiCol_PlotHistogram));
  list.AddLine(ImVec2(middle, low.y + 2.0F), ImVec2(middle, high.y - 2.0F),
               ImGui::GetColorU32(ImGuiCol_TextDisabled));
  const std::string number = std::to_string(static_cast<int>(value));
  const float right = high.x - ImGui::CalcTextSize(number.c_str()).x - ImGui::GetStyle().FramePadding.x;
  list.AddText(ImVec2(right, low.y + ImGui::GetStyle().FramePadding.y), ImGui::GetColorU32(ImGuiCol_Text),
               number.c_str());
  ImGui::Dummy(ImVec2(width, height));
}

void DrawAxes(const SixAxes& axes) {
  for (std::size_t i = 0; i < axes.size(); ++i) {
    Label(AXES[i]);
    DrawDeflection(axes[i]);
  }
}

// ---- a source ----

bool DrawAxis(int number, SixAxisSettings& settings) {
  SixAxisSettings::Axis& axis = settings.axes[static_cast<std::size_t>(number)];
  int target = axis.to + 1;
  ImGui::PushID(number);
  ImGui::TableNextRow();
  ImGui::TableNextColumn();
  ImGui::AlignTextToFramePadding();
  ImGui::Text("%d", number + 1);
  ImGui::TableNextColumn();
  ImGui::SetNextItemWidth(-FLT_MIN);
  bool changed = ChoosePhrase("##to", target, TARGETS);
  axis.to = target - 1;
  ImGui::TableNextColumn();
  changed = ImGui::Checkbox("##inverted", &axis.inverted) || changed;
  ImGui::TableNextColumn();
  ImGui::SetNextItemWidth(-FLT_MIN);
  constexpr double LEAST = 0.0;
  {
    const UprightItem upright;
    changed = ImGui::DragScalar("##scale", ImGuiDataType_Double, &axis.scale, 0.01F, &LEAST,
                                &SixAxisSettings::MOST_SCALE, "%.2f", ImGuiSliderFlags_AlwaysClamp) ||
              changed;
  }
  ImGui::PopID();
  return changed;
}

bool DrawAxisTable(SixAxisSettings& settings) {
  constexpr float NARROW = 44.0F;
  const auto addNarrow = [](const char* name, float least) {
    const float width = std::max(least, ImGui::CalcTextSize(Say(name)).x);
    ImGui::TableSetupColumn(SayLabel(name), ImGuiTableColumnFlags_WidthFixed, width);
  };
  if (!ImGui::BeginTable("##axes", 4, ImGuiTableFlags_SizingStretchProp)) return false;
  addNarrow("Axis", NARROW);
  ImGui::TableSetupColumn(SayLabel("Goes to"));
  addNarrow("Reversed", NARROW * 1.5F);
  addNarrow("Times", NARROW * 1.5F);
  ImGui::TableHeadersRow();
  bool changed = false;
  for (int i = 0; i < SIX_AXIS_COUNT; ++i) changed = DrawAxis(i, settings) || changed;
  ImGui::EndTable();
  return changed;
}

// In two lines.
bool DrawLocks(SixAxisSettings& settings) {
  const float column = FindColumn();
  const float step = FindLockStep();
  bool changed = false;
  for (std::size_t i = 0; i < settings.locked.size(); ++i) {
    ImGui::PushID(static_cast<int>(i));
    const std::size_t place = i % LOCKS_OF_LINE;
    if (place == 0) {
      DrawFieldName(i == 0 ? "Locked" : "", column);
    } else {
      ImGui::SameLine(column + static_cast<float>(place) * step);
    }
    changed = ImGui::Checkbox(SayLabel(AXES[i]), &settings.locked[i]) || changed;
    ImGui::PopID();
  }
  return changed;
}

bool DrawDeadZone(SixAxisSettings& settings) {
  constexpr double LEAST = 0.0;
  Label("Dead zone");
  const UprightItem upright;
  return ImGui::DragScalar("##dead", ImGuiDataType_Double, &settings.deadZone, 0.5F, &LEAST,
                           &SixAxisSettings::MOST_DEAD_ZONE, "%.0f", ImGuiSliderFlags_AlwaysClamp);
}

const char* GetName(int id) {
  const Command* const found = std::find_if(std::begin(COMMANDS), std::end(COMMANDS),
                                            [id](const Command& command) { return command.id == id; });
  return Say(found != std::end(COMMANDS) ? found->name : "of the program");
}

bool DrawButton(std::size_t number, int& id) {
  bool changed = false;
  ImGui::PushID(static_cast<int>(number));
  ImGui::AlignTextToFramePadding();
  ImGui::Text("%d", static_cast<int>(number) + 1);
  ImGui::SameLine(40.0F);
  ImGui::SetNextItemWidth(-FLT_MIN);
  if (ImGui::BeginCombo("##command", GetName(id))) {
    for (const Command& command : COMMANDS) {
      if (!ImGui::Selectable(SayLabel(command.name), command.id == id)) continue;
      id = command.id;
      changed = true;
    }
    ImGui::EndCombo();
  }
  ImGui::PopID();
  return changed;
}

bool DrawButtons(SixAxisSettings& settings) {
  ImGui::TextDisabled("%s", Say("Buttons"));
  bool changed = false;
  if (ImGui::BeginChild("##buttons", ImVec2(0.0F, LOWEST_LIST))) {
    for (std::size_t i = 0; i < settings.commands.size(); ++i) {
      changed = DrawButton(i, settings.commands[i]) || changed;
    }
  }
  ImGui::EndChild();
  return changed;
}

}  // namespace

void SixAxisPanel::AddSource(SixAxisSource* source, const char* name) {
  if (source != nullptr) sources.push_back({source, name});
}

void SixAxisPanel::Draw(Cam3DController& controller, float right, float top) {
  edges.reset();
  if (!visible) return keys.Skip();
  PlaceNextPanel(right, top, 1.0F, 0.0F, false);
  const float highest = std::max(LOWEST_LIST, ImGui::GetIO().DisplaySize.y - 2.0F * MARGIN);
  const float width = FindWidth();
  ImGui::SetNextWindowSizeConstraints(ImVec2(width, 0.0F), ImVec2(width, highest));
  constexpr ImGuiWindowFlags STYLE = ImGuiWindowFlags_AlwaysAutoResize | ImGuiWindowFlags_NoSavedSettings |
                                     ImGuiWindowFlags_NoCollapse | ImGuiWindowFlags_NoFocusOnAppearing;
  if (ImGui::Begin(SayLabel("Six-axis devices"), &visible, STYLE)) {
    edges = FindPageEdges();
    DrawMode(controller);
    keys.NoteFirstItem(ImGui::IsWindowAppearing());
    DrawSpeed(controller);
    DrawThreshold(controller);
    DrawSwitches(controller);
    ImGui::Separator();
    DrawAxes(hand.GetAxes());
    for (const Source& source : sources) DrawSource(source);
    if (keys.End()) visible = false;
  }
  ImGui::End();
}

void SixAxisPanel::DrawSource(const Source& source) {
  const bool there = source.from->HasDevice();
  const std::string name =
      there ? Say(source.name) : Say("{}: none is connected", {GetPhrases().SayPlain(source.name)});
  const std::string title = name + "###" + source.name;
  if (!ImGui::CollapsingHeader(title.c_str())) return;
  ImGui::PushID(source.from);
  SixAxisSettings settings = hand.GetSettings(source.from);
  bool changed = DrawAxisTable(settings);
  changed = DrawLocks(settings) || changed;
  changed = DrawDeadZone(settings) || changed;
  changed = DrawButtons(settings) || changed;
  if (ImGui::Button(SayLabel("As at first"))) {
    settings = source.from->GetDefaults();
    changed = true;
  }
  if (changed) hand.SetSettings(source.from, settings);
  ImGui::PopID();
}

}  // namespace zovhost
