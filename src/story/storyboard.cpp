// The life of the panel: its collaborators, its story, its place.
#include "korvane/storyboard.h"

#include <utility>

#include "foundation/out_of_memory.h"
#include "story/storyboard_parts.h"

namespace Korvane {

Storyboard::Storyboard() : parts(std::make_shared<StoryboardParts>()) {}

Storyboard::~Storyboard() {
  const Staying now(parts);
  if (ShotEditor* const editor = now->partners.editor.Get()) editor->SetStoryboard(nullptr);
  now->lifeline.Cut();
  now->playback.Close();
  if (const std::shared_ptr<WalkRecorder> gone = std::move(now->walk.recorder)) gone->Stop();
  GivePicturesBack();
  now->story.reset();
}

Lifeline& Storyboard::GetLifeline() { return parts->lifeline; }
CameraOperations* Storyboard::GetKorvane() const { return parts->partners.hub.Get(); }
bool Storyboard::AddObserver(StoryboardObserver* observer) { return parts->partners.observers.Add(observer); }
void Storyboard::RemoveObserver(StoryboardObserver* observer) { parts->partners.observers.Remove(observer); }

// ---- collaborators ----

void Storyboard::SetUndoQueue(UndoQueue* queue) { parts->partners.queue.Set(queue); }

// What goes on ends in the hub in which it began.
void Storyboard::SetKorvane(CameraOperations* hub) {
  const Staying now(parts);
  if (hub != now->partners.hub.Get()) {
    StopPlayback();
    if (now) CancelRecordWalk();
    if (now) now->playback.Close();
  }
  if (now) now->partners.hub.Set(hub);
}

void Storyboard::SetRewindHistory(RewindHistory* history) {
  parts->partners.history.Set(history);
  if (parts->walk.recorder != nullptr) parts->walk.recorder->SetRewindHistory(history);
}

void Storyboard::SetRenderer(Renderer* value) {
  const Staying now(parts);
  if (value != nullptr && value == now->partners.renderer.Get()) return;
  GivePicturesBack();
  if (!now) return;
  now->partners.renderer.Set(value);
  if (now->walk.recorder != nullptr) now->walk.recorder->SetRenderer(value);
  if (now->life.created) TakePictures();
}

void Storyboard::SetShotEditor(ShotEditor* value) {
  const Staying now(parts);
  if (ShotEditor* const last = now->partners.editor.Get()) last->SetStoryboard(nullptr);
  now->partners.editor.Set(value);
  if (value != nullptr) value->SetStoryboard(this);
}

// ---- life ----

bool Storyboard::Create() {
  const Staying now(parts);
  ResetToEmptyStory();
  if (!now) return true;
  now->life.created = true;
  TakePictures();
  return true;
}

bool Storyboard::Destroy() {
  const Staying now(parts);
  StopPlayback();
  if (now) CancelRecordWalk();
  if (now) now->playback.Close();
  if (now) now->ForgetPress();
  if (now) now->life.created = false;
  if (now) GivePicturesBack();
  return true;
}

void Storyboard::TakePictures() {
  OrFail([&] {
    const Staying now(parts);
    const Borrowed<Renderer> renderer(now->partners.renderer.Get());
    now->GiveMessagesBack();
    if (now) now->pictures.SetRenderer(renderer.Get());
    if (!now || renderer.Get() == nullptr) return;
    const auto isWanted = [&] {
      return now && now->life.created && renderer.Get() != nullptr &&
             renderer.Get() == now->partners.renderer.Get();
    };
    now->walk.beginMessage.Take(*renderer.Get(), STRING_RECORD_WALK);
    if (isWanted()) now->walk.upDownMessage.Take(*renderer.Get(), STRING_WALK);
    if (!now) now->GiveMessagesBack();
    if (!isWanted()) return;
    if (now->walk.recorder != nullptr) now->LendMessages(*now->walk.recorder);
    for (int i = 0; i < STORY_MESSAGE_COUNT; ++i) {
      std::wstring text = renderer.Get()->LoadStringResource(STRING_STORY_PLAY + i);
      if (!isWanted()) return;
      now->messages[i] = std::move(text);
    }
    if (now->life.visible) now->textures.Take(renderer.Get());
  });
}

void Storyboard::GivePicturesBack() {
  const std::shared_ptr<StoryboardParts> held = parts;
  held->GiveMessagesBack();
  held->pictures.SetRenderer(nullptr);
  held->textures.GiveBack();
}

// ---- the panel ----

bool Storyboard::IsVisible() const { return parts->life.visible; }

void Storyboard::SetVisible(bool value) {
  OrFail([&] {
    const Staying now(parts);
    now->life.visible = value;
    if (!value) now->ForgetPress();
    now->Refresh();
    now->RequestUpdate();
    if (now && !value) CloseShotEditor();
    if (!now) return;
    now.TellObservers([&](StoryboardObserver& each) {
      if (value) {
        each.OnOpened(now->life.mode);
      } else {
        each.OnClosed();
      }
    });
    if (!now) return;
    if (now->life.visible) {
      now->textures.Take(now->partners.renderer.Get());
    } else {
      now->textures.GiveBack();
    }
  });
}

Storyboard::Mode Storyboard::GetMode() const { return parts->life.mode; }

void Storyboard::SetMode(Mode value) {
  const Staying now(parts);
  if (value != MODE_EDITING && value != MODE_PRESENTING) return;
  now->life.mode = value;
  now->grab.Clear();
  if (value == MODE_PRESENTING) CloseShotEditor();
  if (!now) return;
  RebuildDisplayElements();
  now.TellObservers([&](StoryboardObserver& each) { each.OnModeChanged(value); });
}

void Storyboard::SetPosition(int left, int bottom) {
  parts->place.left = left;
  parts->place.bottom = bottom;
  MoveTo(parts->place, parts->room);
}

void Storyboard::SetMargin(int pixels) {
  parts->place.margin = pixels;
  MoveTo(parts->place, parts->room);
}

void Storyboard::SetViewportSize(int width, int height) {
  parts->place.viewportWidth = width;
  parts->place.viewportHeight = height;
  MoveTo(parts->place, parts->room);
  if (parts->walk.recorder != nullptr) parts->walk.recorder->SetViewportSize(width, height);
}

bool Storyboard::IsMouseInRegion() const { return parts->mouse.inRegion; }
bool Storyboard::DraggingStoryBoardItem() const { return parts->grab.IsDragging(); }
const std::wstring& Storyboard::GetTooltip() const { return parts->tooltip; }
void Storyboard::SetFadeWhilePresenting(bool value) { parts->life.fadeWhilePresenting = value; }
void Storyboard::SetCutsOnly(bool value) { parts->life.cutsOnly = value; }

// ---- where something lies ----

namespace {

bool FindPart(const PanelPlace& place, const Slide& slide, bool adds, const SlideButtons& buttons,
              Storyboard::SlidePart part, Box2& bounds) {
  if (part == Storyboard::SLIDE_ITSELF) {
    bounds = place.ToViewport(slide.GetBounds());
    return true;
  }
  if (adds || (part != Storyboard::SLIDE_PLAY && part != Storyboard::SLIDE_TARGET)) return false;
  const RoundButton& button = part == Storyboard::SLIDE_PLAY ? buttons.first : buttons.second;
  bounds = place.ToViewport(Box2(button.GetCenter(slide), Vector2(button.radius, button.radius)));
  return true;
}

}  // namespace

Box2 Storyboard::GetTitleBounds(TitlePart part) const {
  const bool isPart = part >= TITLE_PLAY && part <= TITLE_CLOSE;
  if (!isPart) return {};
  return parts->place.ToViewport(GetTitleButton(parts->room, static_cast<TitleButton>(part)));
}

bool Storyboard::GetSlideBounds(const Sequence* sequence, SlidePart part, Box2& bounds) const {
  for (const DisplayElement& slide : parts->slides.sequences) {
    if (slide.sequence == sequence)
      return FindPart(parts->place, slide, sequence == nullptr, SEQUENCE_BUTTONS, part, bounds);
  }
  return false;
}

bool Storyboard::GetSlideBounds(const ShotSpecification* shot, SlidePart part, Box2& bounds) const {
  for (const ShotDisplayElement& slide : parts->slides.shots) {
    if (slide.shot == shot) return FindPart(parts->place, slide, shot == nullptr, SHOT_BUTTONS, part, bounds);
  }
  return false;
}

// ---- the story ----

Story* Storyboard::GetStory() const { return parts->story.get(); }

void Storyboard::SetStory(Story* value) {
  const Staying now(parts);
  if (value == nullptr || value == now->story.get()) return;
  std::unique_ptr<Story> taken(value);
  ClearAll();
  if (!now) return;
  now->story = std::move(taken);
  RebuildDisplayElements();
}

void Storyboard::ResetToEmptyStory() {
  SetStory(OrFail([] { return new Story; }));
}

// The story goes last: who is told of the end of its pictures may still ask for it.
void Storyboard::ClearAll() {
  const Staying now(parts);
  CloseShotEditor();
  if (now) StopPlayback();
  if (now) CancelRecordWalk();
  if (!now) return;
  now->ForgetPress();
  now->slides.Forget();
  now->slides.ClearSelection();
  now->pictures.GiveAllBack();
  if (!now) return;
  const std::unique_ptr<Story> gone = std::move(now->story);
}

void Storyboard::RebuildDisplayElements() {
  const Staying now(parts);
  if (!now->grab.IsDragging()) now->slides.Forget();
  now->Refresh();
  now->RequestUpdate();
}

bool Storyboard::Update() {
  const Staying now(parts);
  const bool changed = now->Refresh();
  if (changed) now->RequestUpdate();
  return changed;
}

Sequence* Storyboard::GetSequenceForShot(const ShotSpecification* shot) const {
  const Story* const story = GetStory();
  if (story == nullptr || shot == nullptr) return nullptr;
  for (std::uint64_t i = 0; i < story->GetSequenceCount(); ++i) {
    if (story->GetSequence(i)->ContainsShot(shot)) return story->GetSequence(i);
  }
  return nullptr;
}

ShotSpecification* Storyboard::GetShotForOpenMenu() const { return parts->menuShot.Get(); }

Sequence* Storyboard::GetSelectedSequence() const {
  Sequence* const selected = parts->slides.GetSelectedSequence();
  const Story* const story = GetStory();
  return story != nullptr && story->ContainsSequence(selected) ? selected : nullptr;
}

bool Storyboard::SetSelectedSequence(Sequence* sequence) {
  return OrFail([&] {
    const Story* const story = GetStory();
    if (sequence != nullptr && (story == nullptr || !story->ContainsSequence(sequence))) return false;
    const Staying now(parts);
    now->slides.SelectSequence(sequence);
    now->slides.shotScrollOffset = 0;
    Update();
    return true;
  });
}

// ---- pictures ----

DynamicIcon2D* Storyboard::GetThumbnail(const ShotSpecification* shot) const {
  return parts->pictures.GetThumbnail(shot);
}

bool Storyboard::RefreshThumbnail(Sequence* sequence, ShotSpecification* shot) {
  return OrFail([&] {
    const Staying now(parts);
    if (shot == nullptr || now->partners.renderer.Get() == nullptr) return false;
    const Borrowed<ShotSpecification> shown(shot);
    if (sequence != nullptr && sequence->GetFirstShot() == shot) now->pictures.DropThumbnail(sequence);
    if (now && shown.Get() != nullptr) now->pictures.MakeThumbnail(*shown.Get());
    if (now) now->RequestUpdate();
    return true;
  });
}

// ---- the editor ----

bool Storyboard::EditShot(ShotSpecification* shot) {
  return OrFail([&] {
    const Staying now(parts);
    Sequence* const sequence = GetSequenceForShot(shot);
    ShotEditor* const editor = now->partners.editor.Get();
    if (!now->IsEditing() || sequence == nullptr || editor == nullptr) return false;
    now->slides.SelectShot(*sequence, shot);
    editor->SetShot(sequence, shot);
    ShotEditor* const opened = now->partners.editor.Get();
    return opened != nullptr && opened->Show();
  });
}

void Storyboard::CloseShotEditor() {
  if (ShotEditor* const editor = parts->partners.editor.Get()) editor->SetShot(nullptr, nullptr);
}

ShotSpecification* Storyboard::GetShotInShotEditor() const {
  const ShotEditor* const editor = parts->partners.editor.Get();
  return editor != nullptr ? editor->GetShot() : nullptr;
}

// ---- playing ----

bool Storyboard::PlaybackStory(Story* story) { return Staying(parts)->playback.PlayStory(story); }
bool Storyboard::PlaybackSequence(Sequence* sequence) {
  return Staying(parts)->playback.PlaySequence(sequence);
}
bool Storyboard::PlaybackSingleShot(ShotSpecification* shot) {
  return Staying(parts)->playback.PlaySingleShot(shot);
}
bool Storyboard::PreviewShot(ShotSpecification* shot, bool loopIt) {
  return Staying(parts)->playback.Preview(shot, loopIt);
}
bool Storyboard::PausePlayback() { return Staying(parts)->playback.Pause(); }
bool Storyboard::ResumePlayback() { return Staying(parts)->playback.Resume(); }
bool Storyboard::StopPlayback() { return Staying(parts)->playback.Stop(); }
bool Storyboard::BeginShot(ShotSpecification* shot) { return Staying(parts)->playback.BeginShot(shot); }
bool Storyboard::IsPlayingBack() const { return parts->playback.IsPlaying(); }
bool Storyboard::IsPaused() const { return parts->playback.IsPaused(); }
bool Storyboard::IsPreviewing() const { return parts->playback.IsPreviewing(); }
bool Storyboard::GetLoop() const { return parts->playback.loop; }

void Storyboard::SetLoop(bool value) {
  parts->playback.loop = value;
  parts->RequestUpdate();
}

bool Storyboard::TargetShot(ShotSpecification* shot) {
  const Staying now(parts);
  if (shot == nullptr || now->partners.hub.Get() == nullptr) return false;
  const Borrowed<ShotSpecification> target(shot);
  StopPlayback();
  if (now) CancelRecordWalk();
  return now && now->playback.Target(target.Get());
}

bool Storyboard::TargetSequence(Sequence* sequence) {
  return sequence != nullptr && TargetShot(sequence->GetFirstShot());
}

}  // namespace Korvane
