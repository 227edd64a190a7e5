// Edits of the story, each one step of the undo queue; and the walk into a shot.
#include <cmath>
#include <memory>
#include <utility>

#include "camera/host_camera.h"
#include "foundation/out_of_memory.h"
#include "story/object_names.h"
#include "story/storyboard_commands.h"
#include "story/storyboard_parts.h"

namespace Korvane {

namespace {

constexpr double ZOOM_PART = 0.75;  // of the way to the centre
constexpr double PAN_ZOOM_PART = 0.5;
constexpr double TURN = 45.0;  // degrees

using Reset = void (*)(ShotSpecification& shot);

double GetViewDistance(const CameraParameters& camera) { return (camera.centre - camera.eye).Length(); }

template <TargetCamPos POSITION>
void ResetTrack(ShotSpecification& shot) {
  shot.SetCameraPosition(POSITION);
  shot.SetLeftRightDistance(std::ceil(shot.GetCameraParameters().ortho_width));
  shot.SetLookAtCenterOfInterest(false);
}

template <TargetCamPos POSITION>
void ResetZoom(ShotSpecification& shot) {
  shot.SetCameraPosition(POSITION);
  shot.SetInOutDistance(std::ceil(GetViewDistance(shot.GetCameraParameters()) * ZOOM_PART));
}

template <TargetCamPos POSITION>
void ResetCrane(ShotSpecification& shot) {
  const double height = std::ceil(shot.GetCameraParameters().ortho_height);
  shot.SetCameraPosition(POSITION);
  shot.SetUpDownDistance(height);
  shot.SetLeftRightDistance(0.0);
  shot.SetLookAtCenterOfInterest(true);
  shot.SetInOutDistance(height / 2.0);
}

void ResetTurn(ShotSpecification& shot) {
  shot.SetCameraPosition(TARGET_CAM_START);
  shot.SetLeftRightAngle(TURN);
  shot.SetUpDownAngle(0.0);
}

void ResetPanZoom(ShotSpecification& shot) {
  shot.SetCameraPosition(TARGET_CAM_START);
  shot.SetInOutDistance(PAN_ZOOM_PART);
  shot.SetLeftRightDistance(0.0);
  shot.SetUpDownDistance(0.0);
}

void ResetStill(ShotSpecification& /*shot*/) {}
void ResetWalk(ShotSpecification& shot) { shot.SetCameraPosition(TARGET_CAM_START); }

constexpr Reset RESET_BY_TYPE[ShotSpecification::SHOT_TYPE_COUNT] = {
    ResetTrack<TARGET_CAM_MIDDLE>,
    ResetTrack<TARGET_CAM_MIDDLE>,
    ResetZoom<TARGET_CAM_END>,
    ResetZoom<TARGET_CAM_START>,
    ResetCrane<TARGET_CAM_START>,
    ResetCrane<TARGET_CAM_END>,
    ResetTurn,
    ResetTurn,
    ResetPanZoom,
    ResetStill,
    ResetWalk,
};

void AddStep(UndoQueue& queue, Storyboard& board, Story* story, Sequence& sequence, ShotSpecification& shot) {
  UndoCommand* command = nullptr;
  if (sequence.GetShotCount() == 1) {
    command = new AddSequenceCommand(&board, story, &sequence);
  } else {
    command = new AddShotCommand(&board, &sequence, &shot);
  }
  queue.Add(command, false);
}

// The shot stands: what there is no memory for is left out, and the rest done.
void OpenNewShot(Storyboard& board, const Staying<StoryboardParts>& now, const Borrowed<Sequence>& sequence,
                 const Borrowed<ShotSpecification>& shot) {
  OrFail([&] {
    if (ShotEditor* const editor = now->partners.editor.Get()) editor->SetShot(sequence.Get(), shot.Get());
  });
  OrFail([&] {
    if (ShotEditor* const editor = now->partners.editor.Get()) editor->Show();
  });
  if (!now || sequence.Get() == nullptr || shot.Get() == nullptr) return;
  OrFail([&] {
    if (UndoQueue* const queue = now->partners.queue.Get())
      AddStep(*queue, board, now->story.get(), *sequence.Get(), *shot.Get());
  });
  OrFail([&] { now.TellObservers([](StoryboardObserver& each) { each.OnShotCreated(); }); });
}

// False where there is no memory for it, and it has not been done.
bool DoInQueue(UndoQueue& queue, std::unique_ptr<StoryboardUndoCommand> command) {
  CommandErrand errand;
  command->SetErrand(&errand);
  queue.Add(command.release(), true);
  return !errand.failed;
}

// A sequence goes with its last shot.
bool RunDelete(Storyboard& board, const Staying<StoryboardParts>& now, Sequence& sequence,
               ShotSpecification& shot) {
  Story* const story = now->story.get();
  const bool last = sequence.GetShotCount() == 1;
  UndoQueue* const queue = now->partners.queue.Get();
  if (queue != nullptr && last)
    return DoInQueue(*queue, std::make_unique<DeleteSequenceCommand>(&board, story, &sequence));
  if (queue != nullptr)
    return DoInQueue(*queue, std::make_unique<DeleteShotCommand>(&board, &sequence, &shot));
  return last ? story->DeleteSequence(&sequence) : sequence.DeleteShot(&shot);
}

}  // namespace

bool Storyboard::ResetShotToDefaults(ShotSpecification* shot) {
  if (shot == nullptr || shot->GetShotType() < 0 || shot->GetShotType() >= ShotSpecification::SHOT_TYPE_COUNT)
    return false;
  RESET_BY_TYPE[shot->GetShotType()](*shot);
  return true;
}

// ---- new ones ----

ShotSpecification* Storyboard::CreateShot(Sequence* sequence) {
  return OrFail([&]() -> ShotSpecification* {
    const Staying now(parts);
    const CameraOperations* const hub = now->partners.hub.Get();
    if (!now->IsEditing() || sequence == nullptr || hub == nullptr) return nullptr;
    if (now->partners.editor.Get() == nullptr) return nullptr;
    const Borrowed<Sequence> into(sequence);
    CameraParameters camera = QueryCamera(*hub);
    if (!now || into.Get() == nullptr) return nullptr;
    camera.perspective_with_ortho = false;
    auto created = std::make_unique<ShotSpecification>(camera);
    created->SetShotType(camera.IsOrthographic() ? ShotSpecification::SHOT_PAN_ZOOM
                                                 : ShotSpecification::SHOT_ZOOM_IN);
    ResetShotToDefaults(created.get());
    const std::wstring format = LoadNameFormat(now->partners.renderer.Get(), STRING_SHOT_NAME, L"Shot #%d");
    if (!now || into.Get() == nullptr) return nullptr;
    created->SetName(FindFreeName(
        format, [&](const std::wstring& name) { return into.Get()->FindShot(name) != nullptr; }));
    now->pictures.MakeThumbnail(*created);
    now->pictures.MakeLabel(*created);
    if (!now || into.Get() == nullptr) return nullptr;
    const Borrowed<ShotSpecification> shot(created.get());
    now->slides.MakeRoomForChoice(*into.Get());
    if (into.Get()->AddShot(created.get()) == Sequence::NOT_THERE) return nullptr;
    (void)created.release();
    now->slides.SelectShot(*into.Get(), shot.Get());
    RebuildDisplayElements();
    OpenNewShot(*this, now, into, shot);
    return shot.Get();
  });
}

Sequence* Storyboard::CreateSequence() {
  return OrFail([&]() -> Sequence* {
    const Staying now(parts);
    const bool refused = !now->IsEditing() || now->story == nullptr || now->partners.hub.Get() == nullptr ||
                         now->partners.editor.Get() == nullptr;
    if (refused) return nullptr;
    const std::wstring format =
        LoadNameFormat(now->partners.renderer.Get(), STRING_SEQUENCE_NAME, L"Sequence #%d");
    if (!now) return nullptr;
    const Borrowed<Story> story(now->story.get());
    auto created = std::make_unique<Sequence>();
    const Borrowed<Sequence> sequence(created.get());
    created->SetName(FindFreeName(
        format, [&](const std::wstring& name) { return story.Get()->FindSequence(name) != nullptr; }));
    if (story.Get()->AddSequence(created.get()) == Story::NOT_THERE) return nullptr;
    SetSelectedSequence(created.release());
    const bool filled = now && CreateShot(sequence.Get()) != nullptr;
    if (!filled && story.Get() != nullptr && sequence.Get() != nullptr && sequence.Get()->IsEmpty()) {
      story.Get()->DeleteSequence(sequence.Get());
    }
    return sequence.Get();
  });
}

// ---- deleting and moving ----

bool Storyboard::DeleteShot(ShotSpecification* shot) {
  return OrFail([&] {
    const Staying now(parts);
    if (!now->IsEditing() || GetSequenceForShot(shot) == nullptr) return false;
    const Borrowed<ShotSpecification> deleted(shot);
    StopPlayback();
    if (now) CancelRecordWalk();
    if (now && deleted.Get() != nullptr && GetShotInShotEditor() == deleted.Get()) CloseShotEditor();
    Sequence* const sequence = now ? GetSequenceForShot(deleted.Get()) : nullptr;
    if (sequence == nullptr) return false;
    if (now->slides.GetSelectedShot(sequence) == shot) now->slides.SelectShot(*sequence, nullptr);
    if (sequence->GetFirstShot() == shot) now->pictures.DropThumbnail(sequence);
    if (!now || GetSequenceForShot(deleted.Get()) != sequence) return false;
    const bool done = RunDelete(*this, now, *sequence, *deleted.Get());
    if (now) RebuildDisplayElements();
    return done;
  });
}

bool Storyboard::MoveShot(ShotSpecification* shot, ShotSpecification* before) {
  return OrFail([&] {
    const Staying now(parts);
    Sequence* const sequence = GetSequenceForShot(shot);
    if (!now->IsEditing() || sequence == nullptr || before == shot) return false;
    if (before != nullptr && !sequence->ContainsShot(before)) return false;
    bool done = true;
    if (UndoQueue* const queue = now->partners.queue.Get()) {
      done = DoInQueue(*queue, std::make_unique<MoveShotCommand>(this, sequence, shot, before));
    } else {
      sequence->MoveShot(shot, before);
    }
    if (now) RebuildDisplayElements();
    return done;
  });
}

bool Storyboard::MoveSequence(Sequence* sequence, Sequence* before) {
  return OrFail([&] {
    const Staying now(parts);
    Story* const story = GetStory();
    if (!now->IsEditing() || story == nullptr || before == sequence || !story->ContainsSequence(sequence)) {
      return false;
    }
    if (before != nullptr && !story->ContainsSequence(before)) return false;
    bool done = true;
    if (UndoQueue* const queue = now->partners.queue.Get()) {
      done = DoInQueue(*queue, std::make_unique<MoveSequenceCommand>(this, story, sequence, before));
    } else {
      story->MoveSequence(sequence, before);
    }
    if (now) RebuildDisplayElements();
    return done;
  });
}

// ---- a walk into the shot of the editor ----

bool Storyboard::IsRecordingWalk() const { return parts->walk.recorder != nullptr; }

bool Storyboard::CanRecordWalk() const {
  const CameraOperations* const hub = parts->partners.hub.Get();
  if (!parts->IsEditing() || !parts->CanDraw() || IsRecordingWalk()) return false;
  return !QueryCamera(*hub).IsOrthographic() || hub->GetApplicationParameters().auto_switch_projection;
}

bool Storyboard::BeginRecordWalk() {
  return OrFail([&] {
    const Staying now(parts);
    if (!CanRecordWalk()) return false;
    CameraOperations* const hub = now->partners.hub.Get();
    if (hub == nullptr) return false;
    // A view that may not switch stays as it is.
    if (QueryCamera(*hub).IsOrthographic()) (void)hub->AutoSwitchToPerspectiveProjection();
    if (!now || !CanRecordWalk()) return false;
    if (!now || now->partners.hub.Get() == nullptr || IsRecordingWalk())
      return false;  // by the host, who was asked
    const auto recorder = std::make_shared<WalkRecorder>();
    recorder->SetKorvane(now->partners.hub.Get());
    recorder->SetRenderer(now->partners.renderer.Get());
    recorder->SetRewindHistory(now->partners.history.Get());
    recorder->SetStoryboard(this);
    recorder->SetViewportSize(now->place.viewportWidth, now->place.viewportHeight);
    now->LendMessages(*recorder);
    recorder->SetReleaseEndsHeight(now->life.releaseEndsHeight);
    now->walk.recorder = recorder;
    now->ForgetPress();
    now->mouse.inRegion = false;
    now->tooltip.clear();
    if (ShotEditor* const editor = now->partners.editor.Get()) editor->SetRecordingState(true);
    if (now) now->RequestUpdate();
    return true;
  });
}

bool Storyboard::CancelRecordWalk() {
  const Staying now(parts);
  const std::shared_ptr<WalkRecorder> gone = std::move(now->walk.recorder);
  if (gone == nullptr) return false;
  StoryboardParts::Dismiss(*gone);
  gone->Stop();
  if (ShotEditor* const editor = now->partners.editor.Get()) editor->SetRecordingState(false);
  if (now) now->RequestUpdate();
  return true;
}

bool Storyboard::WalkRecorded(WalkRecorder* recorder) {
  return OrFail([&] {
    const Staying now(parts);
    if (recorder == nullptr || now->walk.recorder.get() != recorder) return false;
    const std::shared_ptr<WalkRecorder> done = std::move(now->walk.recorder);
    StoryboardParts::Dismiss(*done);
    if (ShotEditor* const editor = now->partners.editor.Get()) editor->SetRecordingState(false);
    if (ShotEditor* const editor = now->partners.editor.Get()) editor->WalkRecorded(done.get());
    if (now) now->RequestUpdate();
    return true;
  });
}

void Storyboard::SetReleaseEndsHeight(bool value) { parts->life.releaseEndsHeight = value; }

}  // namespace Korvane
