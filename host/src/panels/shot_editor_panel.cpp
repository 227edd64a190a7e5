#include "zovhost/shot_editor_panel.h"

#include <imgui.h>

#include <algorithm>
#include <array>
#include <cfloat>
#include <cstddef>
#include <utility>

#include "korvane/storyboard.h"
#include "panels/choice_list.h"
#include "zovhost/panel_texts.h"
#include "zovhost/phrases.h"
#include "zovhost/text_field.h"
#include "zovhost/wide_text.h"

namespace zovhost {

using Shot = Korvane::ShotSpecification;

namespace {

constexpr float LEAST_COLUMN = 116.0F;  // points
constexpr float LEAST_FIELD = 188.0F;
constexpr float LEAST_BUTTON = 90.0F;
constexpr float LOWEST = 110.0F;
constexpr double DISTANCE_OF_PIXEL = 0.005;  // of a drag, as a fraction of the distance that is viewed

// By their numbers.
constexpr const char* TYPES[Shot::SHOT_TYPE_COUNT] = {
    "Track left", "Track right", "Zoom in",      "Zoom out", "Crane up",      "Crane down",
    "Look",       "Orbit",       "Pan and zoom", "Still",    "Recorded walk",
};
constexpr const char* POSITIONS[] = {"at the start", "in the middle", "at the end"};
constexpr const char* TRANSITIONS[] = {"through black", "through white", "none"};

// Sets of types: where a control means something.
constexpr unsigned SetOf(Shot::ShotType type) { return 1U << type; }
constexpr unsigned TRACK = SetOf(Shot::SHOT_TRACK_LEFT) | SetOf(Shot::SHOT_TRACK_RIGHT);
constexpr unsigned ZOOM = SetOf(Shot::SHOT_ZOOM_IN) | SetOf(Shot::SHOT_ZOOM_OUT);
constexpr unsigned CRANE = SetOf(Shot::SHOT_CRANE_UP) | SetOf(Shot::SHOT_CRANE_DOWN);
constexpr unsigned TURN = SetOf(Shot::SHOT_LOOK) | SetOf(Shot::SHOT_ORBIT);
constexpr unsigned PAN_ZOOM = SetOf(Shot::SHOT_PAN_ZOOM);
constexpr unsigned MOVING = TRACK | ZOOM | CRANE | TURN | PAN_ZOOM;
constexpr unsigned KEEPING = TRACK | CRANE;
constexpr unsigned ALL = (1U << Shot::SHOT_TYPE_COUNT) - 1U;

bool IsIn(unsigned types, int type) {
  return type >= 0 && type < Shot::SHOT_TYPE_COUNT && (types >> type & 1U) != 0;
}

// A phrase with a place for the number, and what stands there.
struct Format {
  const char* phrase;
  const char* number;
};

struct Number {
  const char* label;
  Format format;
  double (Shot::*get)() const;
  void (Shot::*set)(double);
  double step;  // for a pixel of a drag; 0: by the distance that is viewed
  double least;
  double most;
  unsigned types;
};

constexpr double FURTHEST = 1e9;
constexpr double SHORTEST_SHOT = 0.1;
constexpr double LONGEST_SHOT = 3600.0;
constexpr double LONGEST_FADE = 60.0;
constexpr double MOST_TURN = 3600.0;
constexpr Format SECONDS = {"{} s", "%.1f"};
constexpr Format UNITS = {"{} units", "%.2f"};
constexpr Format DEGREES = {"{}\u00b0", "%.1f"};
constexpr Format OF_THE_WAY = {"{} of the way", "%.2f"};

constexpr Number NUMBERS[ShotEditorPanel::NUMBER_COUNT] = {
    {"Duration", SECONDS, &Shot::GetDuration, &Shot::SetDuration, 0.05, SHORTEST_SHOT, LONGEST_SHOT, ALL},
    {"Fade time", SECONDS, &Shot::GetTransitionDuration, &Shot::SetTransitionDuration, 0.02, 0.0,
     LONGEST_FADE, ALL},
    {"Distance", UNITS, &Shot::GetLeftRightDistance, &Shot::SetLeftRightDistance, 0.0, -FURTHEST, FURTHEST,
     TRACK},
    {"Distance", UNITS, &Shot::GetInOutDistance, &Shot::SetInOutDistance, 0.0, -FURTHEST, FURTHEST, ZOOM},
    {"Height", UNITS, &Shot::GetUpDownDistance, &Shot::SetUpDownDistance, 0.0, -FURTHEST, FURTHEST, CRANE},
    {"Forward", UNITS, &Shot::GetInOutDistance, &Shot::SetInOutDistance, 0.0, -FURTHEST, FURTHEST, CRANE},
    {"Sideways", UNITS, &Shot::GetLeftRightDistance, &Shot::SetLeftRightDistance, 0.0, -FURTHEST, FURTHEST,
     CRANE | PAN_ZOOM},
    {"Upward", UNITS, &Shot::GetUpDownDistance, &Shot::SetUpDownDistance, 0.0, -FURTHEST, FURTHEST, PAN_ZOOM},
    {"Closer by", OF_THE_WAY, &Shot::GetInOutDistance, &Shot::SetInOutDistance, 0.005, -FURTHEST, 0.99,
     PAN_ZOOM},
    {"To the left", DEGREES, &Shot::GetLeftRightAngle, &Shot::SetLeftRightAngle, 0.5, -MOST_TURN, MOST_TURN,
     TURN},
    {"Upward", DEGREES, &Shot::GetUpDownAngle, &Shot::SetUpDownAngle, 0.5, -MOST_TURN, MOST_TURN, TURN},
};

// ---- how wide it is ----

constexpr std::array<const char*, 5> FIELDS = {"Name", "Move", "Its view is", "Keep looking", "Fade in"};
constexpr std::array<const char*, 2> SWITCHES = {"Live", "Loop"};  // in the column of the names of fields
constexpr std::array<const char*, 5> BUTTONS = {"Apply", "Reset", "Stop", "Preview", "This view"};
constexpr std::array<const char*, 2> WIDE_ITEMS = {"Record a walk", "at the same point"};

}  // namespace

// Points, in the present language.
struct ShotEditorPanel::Layout {
  float column;  // where the fields begin
  float field;
  float button;
};

ShotEditorPanel::Layout ShotEditorPanel::MakeLayout() {
  const ImGuiStyle& style = ImGui::GetStyle();
  std::array<const char*, FIELDS.size() + ShotEditorPanel::NUMBER_COUNT> names{};
  auto* const end = std::copy(FIELDS.begin(), FIELDS.end(), names.begin());
  std::transform(std::begin(NUMBERS), std::end(NUMBERS), end,
                 [](const Number& number) { return number.label; });
  const float box = ImGui::GetFrameHeight() + style.ItemInnerSpacing.x;
  const float frame = 2.0F * style.FramePadding.x;

  Layout layout{};
  layout.column = std::max(FindFieldColumn(names, LEAST_COLUMN), FindFieldColumn(SWITCHES, 0.0F) + box);
  layout.button = std::max(LEAST_BUTTON, MeasureWidest(BUTTONS) + frame);
  const float choice =
      std::max(MeasureWidest(TYPES), std::max(MeasureWidest(POSITIONS), MeasureWidest(TRANSITIONS)));
  layout.field = std::max({LEAST_FIELD, 2.0F * layout.button + style.ItemSpacing.x,
                           MeasureWidest(WIDE_ITEMS) + box, choice + ImGui::GetFrameHeight() + frame});
  return layout;
}

// ---- between the controls and the shot ----

void ShotEditorPanel::TransferControls(bool toShot) {
  Shot* const edited = GetShot();
  if (edited == nullptr) return;
  if (toShot) return WriteShot(*edited);
  ReadShot(*edited);
}

void ShotEditorPanel::ReadShot(const Shot& edited) {
  controls.name = WideToUtf8(edited.GetName());
  controls.type = edited.GetShotType();
  controls.position = edited.GetCameraPosition();
  controls.transition = edited.GetTransitionType();
  controls.keepsTarget = edited.GetLookAtCenterOfInterest();
  double* value = controls.numbers.data();
  for (const Number& number : NUMBERS) *value++ = (edited.*number.get)();
  const Korvane::CameraParameters& camera = edited.GetCameraParameters();
  viewDistance = (camera.centre - camera.eye).Length();
}

// What does not show is as it was, in particular a field that another type shows under another name.
void ShotEditorPanel::WriteShot(Shot& edited) const {
  edited.SetName(Utf8ToWide(controls.name));
  edited.SetShotType(static_cast<Shot::ShotType>(controls.type));
  edited.SetCameraPosition(static_cast<Korvane::TargetCamPos>(controls.position));
  edited.SetTransitionType(static_cast<Shot::TransitionType>(controls.transition));
  edited.SetLookAtCenterOfInterest(controls.keepsTarget);
  const double* value = controls.numbers.data();
  for (const Number& number : NUMBERS) {
    if (IsIn(number.types, controls.type)) (edited.*number.set)(*value);
    ++value;
  }
}

// ---- the panel ----

void ShotEditorPanel::Draw(float right, float top, float foot) {
  edges.reset();
  const std::optional<float> before = std::exchange(topBefore, std::nullopt);
  if (!visible || GetShot() == nullptr) return keys.Skip();
  const Layout layout = MakeLayout();
  const ImGuiStyle& look = ImGui::GetStyle();
  const float width = layout.column + layout.field + look.WindowPadding.x;
  const float room = foot > top ? std::max(foot - before.value_or(top), LOWEST) : FLT_MAX;
  PlaceNextPanel(right, top, 1.0F, 0.0F, false);
  ImGui::SetNextWindowSize(ImVec2(width + (scrolls ? look.ScrollbarSize : 0.0F), 0.0F));
  ImGui::SetNextWindowSizeConstraints(ImVec2(width, 0.0F), ImVec2(width + look.ScrollbarSize, room));
  bool open = true;
  constexpr ImGuiWindowFlags STYLE = ImGuiWindowFlags_NoResize | ImGuiWindowFlags_NoSavedSettings |
                                     ImGuiWindowFlags_NoCollapse | ImGuiWindowFlags_NoFocusOnAppearing;
  if (ImGui::Begin(SayLabel("Shot"), &open, STYLE)) DrawControls(layout);
  edges = FindPageEdges();
  if (!ImGui::IsWindowAppearing()) topBefore = ImGui::GetWindowPos().y;  // it is placed one frame later
  scrolls = ImGui::GetScrollMaxY() > 0.0F;
  if (keys.End() && !ofName) open = false;
  ofName = ofName && keys.AreHere();
  ImGui::End();
  if (!open) Close();
}

void ShotEditorPanel::Close() {
  if (GetStoryboard() != nullptr) {
    GetStoryboard()->CloseShotEditor();
  } else {
    SetShot(nullptr, nullptr);
  }
}

// A walk that is to be recorded is all that goes on.
void ShotEditorPanel::DrawControls(const Layout& layout) {
  if (recording) return DrawWalk();
  bool changed = DrawName(layout);
  changed = DrawChoices(layout) || changed;
  changed = DrawNumbers(layout) || changed;
  if (changed && live) SaveChanges();
  DrawSaving(layout);
  DrawActions(layout);
}

// These tell whether something has changed and was let go of.

bool ShotEditorPanel::DrawName(const Layout& layout) {
  DrawFieldName("Name", layout.column);
  if (std::exchange(typingName, false)) {
    TakeKeys();
    ofName = true;
  }
  DrawTextField("##name", controls.name);
  keys.NoteFirstItem(false);
  if (ImGui::IsItemDeactivated() && ImGui::IsKeyPressed(ImGui::GetKeyIndex(ImGuiKey_Enter))) GiveKeysBack();
  return ImGui::IsItemDeactivatedAfterEdit();
}

bool ShotEditorPanel::DrawChoices(const Layout& layout) {
  DrawFieldName("Move", layout.column);
  // Another type begins with what suits it.
  bool changed = ChoosePhrase("##type", controls.type, TYPES);
  if (changed && live) ResetParameters();
  if (IsIn(MOVING, controls.type)) {
    DrawFieldName("Its view is", layout.column);
    changed = ChoosePhrase("##position", controls.position, POSITIONS) || changed;
  }
  if (IsIn(KEEPING, controls.type)) {
    DrawFieldName("Keep looking", layout.column);
    changed = ImGui::Checkbox(SayLabel("at the same point"), &controls.keepsTarget) || changed;
  }
  DrawFieldName("Fade in", layout.column);
  return ChoosePhrase("##transition", controls.transition, TRANSITIONS) || changed;
}

bool ShotEditorPanel::DrawNumbers(const Layout& layout) {
  bool changed = false;
  for (std::size_t i = 0; i < NUMBER_COUNT; ++i) {
    const Number& number = NUMBERS[i];
    if (!IsIn(number.types, controls.type)) continue;
    DrawFieldName(number.label, layout.column);
    ImGui::PushID(static_cast<int>(i));
    const double step = number.step > 0.0 ? number.step : viewDistance * DISTANCE_OF_PIXEL;
    const std::string format = GetPhrases().SayFormat(number.format.phrase, number.format.number);
    const UprightItem upright;
    ImGui::DragScalar("##number", ImGuiDataType_Double, &controls.numbers[i], static_cast<float>(step),
                      &number.least, &number.most, format.c_str(), ImGuiSliderFlags_AlwaysClamp);
    changed = ImGui::IsItemDeactivatedAfterEdit() || changed;
    ImGui::PopID();
  }
  return changed;
}

void ShotEditorPanel::DrawSaving(const Layout& layout) {
  const ImVec2 button(layout.button, 0.0F);
  ImGui::Separator();
  ImGui::Checkbox(SayLabel("Live"), &live);
  ImGui::SameLine(layout.column);
  ImGui::BeginDisabled(live);
  if (ImGui::Button(SayLabel("Apply"), button)) SaveChanges();
  ImGui::EndDisabled();
  ImGui::SameLine();
  if (ImGui::Button(SayLabel("Reset"), button)) ResetParameters();
}

void ShotEditorPanel::DrawActions(const Layout& layout) {
  const ImVec2 button(layout.button, 0.0F);
  ImGui::Checkbox(SayLabel("Loop"), &loop);
  ImGui::SameLine(layout.column);
  if (ImGui::Button(SayLabel(previewing ? "Stop" : "Preview"), button)) PreviewShot(loop);
  ImGui::SameLine();
  if (ImGui::Button(SayLabel("This view"), button)) ResetCamera();
  ImGui::Dummy(ImVec2(0.0F, 0.0F));
  ImGui::SameLine(layout.column);
  ImGui::BeginDisabled(!CanRecordWalk());
  if (ImGui::Button(SayLabel("Record a walk"), ImVec2(-FLT_MIN, 0.0F))) RecordWalk();
  ImGui::EndDisabled();
}

void ShotEditorPanel::DrawWalk() {
  ImGui::TextWrapped("%s", Say("Press in the view and walk; the walk ends as the button is let go."));
  if (ImGui::Button(SayLabel("Cancel the walk"))) CancelRecordWalk();
}

}  // namespace zovhost
