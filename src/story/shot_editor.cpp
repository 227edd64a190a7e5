#include "korvane/shot_editor.h"

#include <cmath>
#include <cstddef>

#include "camera/host_camera.h"
#include "korvane/camera_operations.h"
#include "korvane/shot_specification.h"
#include "korvane/story.h"
#include "korvane/storyboard.h"
#include "korvane/walk_recorder.h"

namespace Korvane {

namespace {

constexpr double STEPS_A_SECOND = 10.0;  // of the duration of a recorded walk

}  // namespace

ShotEditor::ShotEditor() = default;
ShotEditor::~ShotEditor() { lifeline.Cut(); }

void ShotEditor::SetStoryboard(Storyboard* value) { storyboard.Set(value); }
Storyboard* ShotEditor::GetStoryboard() const { return storyboard.Get(); }
ShotSpecification* ShotEditor::GetShot() const { return shot.Get(); }
Sequence* ShotEditor::GetSequence() const { return sequence.Get(); }

DynamicIcon2D* ShotEditor::GetThumbnail() const {
  const Storyboard* const board = storyboard.Get();
  return board != nullptr ? board->GetThumbnail(GetShot()) : nullptr;
}

// ---- what it shows ----

bool ShotEditor::SetShot(Sequence* inSequence, ShotSpecification* toEdit) {
  const Lifeline::Watch alive(lifeline);
  const Borrowed<Sequence> nextSequence(inSequence);
  const Borrowed<ShotSpecification> next(toEdit);
  CancelRecordWalk();
  if (alive && GetShot() != nullptr) SaveChanges();
  if (!alive) return true;
  sequence.Set(nextSequence.Get());
  shot.Set(next.Get());
  if (GetSequence() != nullptr && GetShot() != nullptr) {
    TransferControls(false);
  } else {
    SetPanelVisible(false);
  }
  return true;
}

bool ShotEditor::Show() {
  if (GetSequence() == nullptr || GetShot() == nullptr) return false;
  SetPanelVisible(true);
  return true;
}

// ---- the buttons ----

void ShotEditor::SaveChanges() {
  const Lifeline::Watch alive(lifeline);
  CancelRecordWalk();
  if (alive) TransferControls(true);
  if (alive && GetStoryboard() != nullptr) GetStoryboard()->StopPlayback();
  if (alive && GetStoryboard() != nullptr) GetStoryboard()->RefreshThumbnail(GetSequence(), GetShot());
}

bool ShotEditor::PreviewShot(bool loop) {
  const Lifeline::Watch alive(lifeline);
  if (GetStoryboard() == nullptr) return false;
  if (GetStoryboard()->IsPreviewing()) {
    GetStoryboard()->StopPlayback();
    return false;
  }
  SaveChanges();
  return alive && GetStoryboard() != nullptr && GetStoryboard()->PreviewShot(GetShot(), loop);
}

bool ShotEditor::RecordWalk() {
  Storyboard* const board = GetStoryboard();
  return board != nullptr && board->BeginRecordWalk();
}

bool ShotEditor::CancelRecordWalk() {
  Storyboard* const board = GetStoryboard();
  return board != nullptr && board->CancelRecordWalk();
}

bool ShotEditor::CanRecordWalk() const {
  const Storyboard* const board = GetStoryboard();
  return board != nullptr && board->CanRecordWalk();
}

bool ShotEditor::IsRecordingWalk() const {
  const Storyboard* const board = GetStoryboard();
  return board != nullptr && board->IsRecordingWalk();
}

bool ShotEditor::ResetCamera() {
  const Lifeline::Watch alive(lifeline);
  TransferControls(true);
  if (!alive || GetStoryboard() == nullptr || GetShot() == nullptr) return false;
  const CameraOperations* const hub = GetStoryboard()->GetKorvane();
  if (hub == nullptr) return false;
  CameraParameters camera = QueryCamera(*hub);
  camera.perspective_with_ortho = false;
  if (!alive || GetShot() == nullptr) return false;
  GetShot()->SetCameraParameters(camera);
  SaveChanges();
  return true;
}

bool ShotEditor::ResetParameters() {
  if (GetStoryboard() == nullptr) return false;
  const Lifeline::Watch alive(lifeline);
  TransferControls(true);
  const bool reset = alive && GetStoryboard() != nullptr && GetStoryboard()->ResetShotToDefaults(GetShot());
  if (alive) TransferControls(false);
  return reset;
}

// ---- a recorded walk ----

void ShotEditor::WalkRecorded(const WalkRecorder* recorder) {
  const Lifeline::Watch alive(lifeline);
  ShotSpecification* const walked = GetShot();
  if (recorder != nullptr && walked != nullptr && GetSequence() != nullptr) {
    walked->SetShotType(ShotSpecification::SHOT_RECORDED_WALK);
    walked->SetCameraParameters(recorder->GetBeginCamera());
    walked->SetCameraPosition(TARGET_CAM_START);
    walked->ClearRecordedElements();
    walked->AddRecordedElement(recorder->GetBeginCamera(), 0.0);
    double time = 0.0;
    for (std::size_t i = 0; i < recorder->GetCameras().size(); ++i) {
      time += recorder->GetDeltaTimes()[i];
      walked->AddRecordedElement(recorder->GetCameras()[i], time);
    }
    walked->SetDuration(std::ceil(time * STEPS_A_SECOND) / STEPS_A_SECOND);
    if (GetStoryboard() != nullptr) GetStoryboard()->RefreshThumbnail(GetSequence(), walked);
  }
  if (alive) TransferControls(false);
}

}  // namespace Korvane
