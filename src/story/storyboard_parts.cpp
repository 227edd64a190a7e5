#include "story/storyboard_parts.h"

#include <array>
#include <cstddef>
#include <optional>
#include <utility>

#include "foundation/out_of_memory.h"
#include "render/display_scale.h"

namespace Korvane {

namespace {

// The pictures of the panel, and those of a walk that is recorded.
constexpr int FIRST_PANEL = TEXTURE_STORY_FRAME;
constexpr int LAST_PANEL = TEXTURE_SHOT_DROP;
constexpr int FIRST_WALK = TEXTURE_WALK_START;
constexpr int LAST_WALK = TEXTURE_HEIGHT_MARK;

constexpr auto ListTextures() {
  std::array<TextureID, std::size_t{LAST_PANEL - FIRST_PANEL + 1 + LAST_WALK - FIRST_WALK + 1}> textures{};
  std::size_t count = 0;
  for (int id = FIRST_PANEL; id <= LAST_PANEL; ++id) textures[count++] = static_cast<TextureID>(id);
  for (int id = FIRST_WALK; id <= LAST_WALK; ++id) textures[count++] = static_cast<TextureID>(id);
  return textures;
}
constexpr auto TEXTURES = ListTextures();

}  // namespace

StoryboardParts::StoryboardParts() : textures(TEXTURES) {}

void StoryboardParts::Grab::Clear() {
  sequence.Set(nullptr);
  shot.Set(nullptr);
  active = false;
}

void StoryboardParts::RequestUpdate() const {
  if (CameraOperations* const hub = partners.hub.Get()) hub->RequestApplicationUpdate();
}

void StoryboardParts::SetCursor(CursorID id) const {
  if (Renderer* const target = partners.renderer.Get()) target->SetCursorID(id);
}

void StoryboardParts::ForgetPress() {
  mouse.leftDown = mouse.dragging = mouse.dragInStrip = menuMarked = false;
  grab.Clear();
}

// ---- the messages of a walk ----

void StoryboardParts::LendMessages(WalkRecorder& recorder) const {
  recorder.SetBeginWalkingMessageHUD(walk.beginMessage.Get());
  recorder.SetMoveUpDownMessageHUD(walk.upDownMessage.Get());
}

void StoryboardParts::Dismiss(WalkRecorder& recorder) {
  TakeMessages(recorder);
  recorder.SetStoryboard(nullptr);
}

void StoryboardParts::TakeMessages(WalkRecorder& recorder) {
  recorder.SetBeginWalkingMessageHUD(nullptr);
  recorder.SetMoveUpDownMessageHUD(nullptr);
}

void StoryboardParts::GiveMessagesBack() {
  if (walk.recorder != nullptr) TakeMessages(*walk.recorder);
  walk.beginMessage.GiveBack();
  if (walk.recorder != nullptr) TakeMessages(*walk.recorder);
  walk.upDownMessage.GiveBack();
}

// ---- the mouse and the slides ----

// By what the hub says of the display. Pictures of the scene are made anew for another.
void StoryboardParts::Measure() {
  const double scale = PixelsPerPoint(partners.hub.Get());
  if (scale == place.scale) return;
  place.scale = scale;
  MoveTo(place, room);
  pictures.SetScale(scale);
}

void StoryboardParts::MoveMouse(int x, int y) {
  Measure();
  mouse.x = place.ToPanel(x);
  mouse.y = place.ToPanel(y);
}

// Where memory runs out the panel shows no slides, until it does not.
bool StoryboardParts::Refresh() {
  const std::optional<bool> changed = OrFail([this] { return std::optional(RefreshSlides()); });
  if (!changed) slides.Forget();
  return changed.value_or(true);
}

bool StoryboardParts::RefreshSlides() {
  Measure();
  const bool dragged = grab.IsDragging();
  PanelSlides::Mouse over;
  over.point = mouse.GetPoint();
  over.draggedSequence = dragged ? grab.sequence.Get() : nullptr;
  over.draggedShot = dragged ? grab.shot.Get() : nullptr;
  over.draggedBy = static_cast<double>(mouse.x) - mouse.downX;
  const bool changed = slides.Refresh(story.get(), IsEditing(), room, over);
  for (Storyboard::ShotDisplayElement& each : slides.shots) {
    each.menuOpen = menuMarked && each.shot != nullptr && each.shot == menuShot.Get();
  }
  return UpdateMouse() || changed;
}

bool StoryboardParts::UpdateMouse() {
  const Vector2 point = mouse.GetPoint();
  bool changed = false;
  for (int i = 0; i < TITLE_BUTTON_COUNT; ++i) {
    const bool over = life.visible && GetTitleButton(room, static_cast<TitleButton>(i)).IsPointInside(point);
    changed = std::exchange(mouse.titleButtonHovered[i], over) != over || changed;
  }
  const bool on = life.visible && (GetTitleBar(room).IsPointInside(point) || slides.IsUnderMouse());
  changed = std::exchange(mouse.inRegion, on) != on || changed;
  const StringID text = on && !mouse.leftDown ? FindTooltip() : STRING_NONE;
  if (text == STRING_NONE) {
    tooltip.clear();
  } else {
    tooltip = messages[text - STRING_STORY_PLAY];
  }
  return changed;
}

StringID StoryboardParts::FindTooltip() const {
  const StringID ofTitle[TITLE_BUTTON_COUNT] = {playback.IsPlaying() ? STRING_STORY_PAUSE : STRING_STORY_PLAY,
                                                STRING_STORY_STOP, STRING_STORY_LOOP, STRING_STORY_CLOSE};
  for (int i = 0; i < TITLE_BUTTON_COUNT; ++i) {
    if (mouse.titleButtonHovered[i]) return ofTitle[i];
  }
  if (const Storyboard::ShotDisplayElement* const slide = slides.GetHighlightedShot()) {
    if (slide->shot == nullptr) return STRING_SHOT_ADD;
    if (slide->overFirstButton) return STRING_SHOT_PLAY;
    return slide->overSecondButton ? STRING_STORY_TARGET : STRING_STORY_SLIDE;
  }
  const Storyboard::DisplayElement* const slide = slides.GetHighlightedSequence();
  if (slide == nullptr) return STRING_NONE;
  if (slide->sequence == nullptr) return STRING_SEQUENCE_ADD;
  if (slide->overFirstButton) return STRING_SEQUENCE_PLAY;
  return slide->overSecondButton ? STRING_STORY_TARGET : STRING_STORY_SLIDE;
}

// ---- pictures ----

namespace {

Sequence* GetSubject(const Storyboard::DisplayElement& slide) { return slide.sequence; }
ShotSpecification* GetSubject(const Storyboard::ShotDisplayElement& slide) { return slide.shot; }

}  // namespace

// Whoever makes a picture may change the story: the slides are brought up to date before the next one, and it
// ends after as many as there are slides.
bool StoryboardParts::MakePictures() {
  return OrFail([this] { return MakeEachPicture(); });
}

bool StoryboardParts::MakeEachPicture() {
  std::size_t left = slides.sequences.size() + slides.shots.size();
  Made made = MakePicture();
  const bool any = made != Made::Nothing;
  while (made == Made::Label && left-- > 0) {
    Refresh();
    made = MakePicture();
  }
  pictures.GiveLostBack();
  return any;
}

// The first label that is missing, else the first thumbnail. None in a drag, whose slides may show what is
// gone.
StoryboardParts::Made StoryboardParts::MakePicture() {
  if (grab.IsDragging() || !pictures.CanMake()) return Made::Nothing;
  Sequence* sequence = nullptr;
  ShotSpecification* shot = nullptr;
  if (MakeLabel(slides.sequences, sequence) || MakeLabel(slides.shots, shot)) return Made::Label;
  if (sequence != nullptr) {
    pictures.MakeThumbnail(*sequence);
  } else if (shot != nullptr) {
    pictures.MakeThumbnail(*shot);
  }
  return sequence != nullptr || shot != nullptr ? Made::Thumbnail : Made::Nothing;
}

// Of the first slide that lacks one. Where none does, the first without a thumbnail is noted.
template <class Slides, class Subject>
bool StoryboardParts::MakeLabel(const Slides& row, Subject*& withoutThumbnail) {
  for (const auto& each : row) {
    Subject* const subject = GetSubject(each);
    if (subject == nullptr) continue;
    const StoryPictures::Lack lack = pictures.FindLack(*subject);
    if (lack.thumbnail && withoutThumbnail == nullptr) withoutThumbnail = subject;
    if (!lack.label) continue;
    pictures.MakeLabel(*subject);
    return true;
  }
  return false;
}

}  // namespace Korvane
