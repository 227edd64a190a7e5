#include "zovhost/shot_editor_panel.h"

#include <imgui.h>
#include <imgui_stdlib.h>

#include <cfloat>
#include <cstddef>

#include "korvane/storyboard.h"
#include "zovhost/wide_text.h"

namespace zovhost {

using Shot = Korvane::ShotSpecification;

namespace {

constexpr float WIDTH = 316.0F;  // points
constexpr float LABEL_COLUMN = 116.0F;
const ImVec2 BUTTON(90.0F, 0.0F);
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

struct Number {
  const char* label;
  const char* format;
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
constexpr const char* SECONDS = "%.1f s";
constexpr const char* UNITS = "%.2f units";
constexpr const char* DEGREES = "%.1f\u00b0";

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
    {"Closer by", "%.2f of the way", &Shot::GetInOutDistance, &Shot::SetInOutDistance, 0.005, -FURTHEST, 0.99,
     PAN_ZOOM},
    {"To the left", DEGREES, &Shot::GetLeftRightAngle, &Shot::SetLeftRightAngle, 0.5, -MOST_TURN, MOST_TURN,
     TURN},
    {"Upward", DEGREES, &Shot::GetUpDownAngle, &Shot::SetUpDownAngle, 0.5, -MOST_TURN, MOST_TURN, TURN},
};

// The next item follows to the right of it, and fills the line.
void Label(const char* text) {
  ImGui::AlignTextToFramePadding();
  ImGui::TextUnformatted(text);
  ImGui::SameLine(LABEL_COLUMN);
  ImGui::SetNextItemWidth(-FLT_MIN);
}

template <std::size_t COUNT>
bool Choose(const char* label, const char* id, int& choice, const char* const (&names)[COUNT]) {
  Label(label);
  const int before = choice;
  return ImGui::Combo(id, &choice, names, static_cast<int>(COUNT)) && choice != before;
}

}  // namespace

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

void ShotEditorPanel::Draw(float right, float top) {
  if (!visible || GetShot() == nullptr) return;
  ImGui::SetNextWindowPos(ImVec2(right, top), ImGuiCond_Appearing, ImVec2(1.0F, 0.0F));
  ImGui::SetNextWindowSize(ImVec2(WIDTH, 0.0F));
  bool open = true;
  constexpr ImGuiWindowFlags STYLE = ImGuiWindowFlags_NoResize | ImGuiWindowFlags_NoSavedSettings |
                                     ImGuiWindowFlags_NoCollapse | ImGuiWindowFlags_NoFocusOnAppearing;
  if (ImGui::Begin("Shot", &open, STYLE)) DrawControls();
  ImGui::End();
  if (open) return;
  if (GetStoryboard() != nullptr) {
    GetStoryboard()->CloseShotEditor();
  } else {
    SetShot(nullptr, nullptr);
  }
}

// A walk that is to be recorded is all that goes on.
void ShotEditorPanel::DrawControls() {
  if (recording) return DrawWalk();
  bool changed = DrawName();
  changed = DrawChoices() || changed;
  changed = DrawNumbers() || changed;
  if (changed && live) SaveChanges();
  DrawSaving();
  DrawActions();
}

// These tell whether something has changed and was let go of.

bool ShotEditorPanel::DrawName() {
  Label("Name");
  ImGui::InputText("##name", &controls.name);
  return ImGui::IsItemDeactivatedAfterEdit();
}

bool ShotEditorPanel::DrawChoices() {
  // Another type begins with what suits it.
  bool changed = Choose("Move", "##type", controls.type, TYPES);
  if (changed && live) ResetParameters();
  if (IsIn(MOVING, controls.type)) {
    changed = Choose("Its view is", "##position", controls.position, POSITIONS) || changed;
  }
  if (IsIn(KEEPING, controls.type)) {
    Label("Keep looking");
    changed = ImGui::Checkbox("at the same point", &controls.keepsTarget) || changed;
  }
  return Choose("Fade in", "##transition", controls.transition, TRANSITIONS) || changed;
}

bool ShotEditorPanel::DrawNumbers() {
  bool changed = false;
  for (std::size_t i = 0; i < NUMBER_COUNT; ++i) {
    const Number& number = NUMBERS[i];
    if (!IsIn(number.types, controls.type)) continue;
    Label(number.label);
    ImGui::PushID(static_cast<int>(i));
    const double step = number.step > 0.0 ? number.step : viewDistance * DISTANCE_OF_PIXEL;
    ImGui::DragScalar("##number", ImGuiDataType_Double, &controls.numbers[i], static_cast<float>(step),
                      &number.least, &number.most, number.format, ImGuiSliderFlags_AlwaysClamp);
    changed = ImGui::IsItemDeactivatedAfterEdit() || changed;
    ImGui::PopID();
  }
  return changed;
}

void ShotEditorPanel::DrawSaving() {
  ImGui::Separator();
  ImGui::Checkbox("Live", &live);
  ImGui::SameLine(LABEL_COLUMN);
  ImGui::BeginDisabled(live);
  if (ImGui::Button("Apply", BUTTON)) SaveChanges();
  ImGui::EndDisabled();
  ImGui::SameLine();
  if (ImGui::Button("Reset", BUTTON)) ResetParameters();
}

void ShotEditorPanel::DrawActions() {
  ImGui::Checkbox("Loop", &loop);
  ImGui::SameLine(LABEL_COLUMN);
  if (ImGui::Button(previewing ? "Stop" : "Preview", BUTTON)) PreviewShot(loop);
  ImGui::SameLine();
  if (ImGui::Button("This view", BUTTON)) ResetCamera();
  ImGui::Dummy(ImVec2(0.0F, 0.0F));
  ImGui::SameLine(LABEL_COLUMN);
  ImGui::BeginDisabled(!CanRecordWalk());
  if (ImGui::Button("Record a walk", ImVec2(-FLT_MIN, 0.0F))) RecordWalk();
  ImGui::EndDisabled();
}

void ShotEditorPanel::DrawWalk() {
  ImGui::TextWrapped("Press in the view and walk; the walk ends as the button is let go.");
  if (ImGui::Button("Cancel the walk")) CancelRecordWalk();
}

}  // namespace zovhost
