#include "focus/story_focus.h"

#include <SDL_keycode.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "korvane/renderer.h"
#include "korvane/resource_ids.h"
#include "korvane/shot_specification.h"
#include "korvane/story.h"
#include "zovhost/phrases.h"
#include "zovhost/wide_text.h"

namespace zovhost {

using Korvane::Box2;
using Korvane::Sequence;
using Korvane::ShotSpecification;
using Korvane::Story;
using Korvane::Storyboard;

namespace {

constexpr int ROW_SIZE = 30'000'000;  // numbers of a row
constexpr int PARTS = 3;
constexpr auto MOST_SLIDES = static_cast<std::uint64_t>(ROW_SIZE / PARTS - 1);

struct TitleRow {
  Storyboard::TitlePart part;
  int text;
  FocusRole role;
};
constexpr std::array<TitleRow, 4> TITLE_ROWS = {{
    {Storyboard::TITLE_PLAY, Korvane::STRING_STORY_PLAY, FocusRole::ToggleButton},
    {Storyboard::TITLE_STOP, Korvane::STRING_STORY_STOP, FocusRole::Button},
    {Storyboard::TITLE_LOOP, Korvane::STRING_STORY_LOOP, FocusRole::ToggleButton},
    {Storyboard::TITLE_CLOSE, Korvane::STRING_STORY_CLOSE, FocusRole::Button},
}};

}  // namespace

// ---- numbers ----

int StoryFocus::MakeId(const Place& place) {
  return place.row * ROW_SIZE + static_cast<int>(std::min(place.index, MOST_SLIDES)) * PARTS + place.part;
}

StoryFocus::Place StoryFocus::FindPlace(int id) {
  const int inRow = id % ROW_SIZE;
  return {static_cast<Row>(id / ROW_SIZE), static_cast<std::uint64_t>(inRow / PARTS),
          static_cast<Part>(inRow % PARTS)};
}

// ---- the list ----

std::string StoryFocus::LoadText(int id) const {
  return WideToUtf8(partners.renderer.LoadStringResource(id));
}

Sequence* StoryFocus::GetSequence(std::uint64_t index) const {
  const Story* const story = partners.board.GetStory();
  return story != nullptr ? story->GetSequence(index) : nullptr;
}

ShotSpecification* StoryFocus::GetShot(std::uint64_t index) const {
  const Sequence* const selected = partners.board.GetSelectedSequence();
  return selected != nullptr ? selected->GetShot(index) : nullptr;
}

std::uint64_t StoryFocus::GetCount(Row row) const {
  const Story* const story = partners.board.GetStory();
  const Sequence* const selected = partners.board.GetSelectedSequence();
  if (row == SEQUENCES) return story != nullptr ? story->GetSequenceCount() : 0;
  return selected != nullptr ? selected->GetShotCount() : 0;
}

// Its text names it where nobody has given it a name.
FocusThing StoryFocus::MakeThing(const Place& place, int text) {
  FocusThing thing;
  thing.id = MakeId(place);
  thing.group = GetPhrases().SayPlain("Storyboard");
  thing.name = LoadText(text);
  thing.press = [this, place](bool down) {
    if (down) Press(place);
  };
  thing.key = [this, place](const WindowEvent& event) { return OnKey(place, event); };
  return thing;
}

void StoryFocus::ListTitle(std::vector<FocusThing>& things) {
  const Storyboard& board = partners.board;
  for (const TitleRow& row : TITLE_ROWS) {
    const bool plays = row.part == Storyboard::TITLE_PLAY;
    const int text = plays && board.IsPlayingBack() ? int{Korvane::STRING_STORY_PAUSE} : row.text;
    FocusThing thing =
        MakeThing({TITLE, static_cast<std::uint64_t>(row.part), Storyboard::SLIDE_ITSELF}, text);
    thing.role = row.role;
    thing.on = plays ? board.IsPlayingBack() : row.part == Storyboard::TITLE_LOOP && board.GetLoop();
    thing.bounds = board.GetTitleBounds(row.part);
    things.push_back(std::move(thing));
  }
}

void StoryFocus::ListShots(std::vector<FocusThing>& things) {
  constexpr std::array<int, PARTS> TEXTS = {0, Korvane::STRING_SHOT_PLAY, Korvane::STRING_STORY_TARGET};
  const Storyboard& board = partners.board;
  if (board.GetSelectedSequence() == nullptr) return;
  const std::uint64_t count = std::min(GetCount(SHOTS), MOST_SLIDES);
  for (std::uint64_t i = 0; i < count; ++i) {
    const ShotSpecification* const shot = GetShot(i);
    for (const Part part : {Storyboard::SLIDE_ITSELF, Storyboard::SLIDE_PLAY, Storyboard::SLIDE_TARGET}) {
      const bool isSlide = part == Storyboard::SLIDE_ITSELF;
      FocusThing thing = MakeThing({SHOTS, i, part}, TEXTS[static_cast<std::size_t>(part)]);
      if (isSlide) thing.name = WideToUtf8(shot->GetName());
      thing.on = isSlide && board.GetShotInShotEditor() == shot;
      (void)board.GetSlideBounds(shot, part, thing.bounds);  // made with the next frame
      things.push_back(std::move(thing));
    }
  }
  if (board.GetMode() != Storyboard::MODE_EDITING) return;
  FocusThing adding = MakeThing({SHOTS, count, Storyboard::SLIDE_ITSELF}, Korvane::STRING_SHOT_ADD);
  (void)board.GetSlideBounds(static_cast<const ShotSpecification*>(nullptr), Storyboard::SLIDE_ITSELF,
                             adding.bounds);
  things.push_back(std::move(adding));
}

void StoryFocus::ListSequences(std::vector<FocusThing>& things) {
  constexpr std::array<int, PARTS> TEXTS = {0, Korvane::STRING_SEQUENCE_PLAY, Korvane::STRING_STORY_TARGET};
  const Storyboard& board = partners.board;
  const std::uint64_t count = std::min(GetCount(SEQUENCES), MOST_SLIDES);
  for (std::uint64_t i = 0; i < count; ++i) {
    const Sequence* const sequence = GetSequence(i);
    for (const Part part : {Storyboard::SLIDE_ITSELF, Storyboard::SLIDE_PLAY, Storyboard::SLIDE_TARGET}) {
      const bool isSlide = part == Storyboard::SLIDE_ITSELF;
      FocusThing thing = MakeThing({SEQUENCES, i, part}, TEXTS[static_cast<std::size_t>(part)]);
      if (isSlide) thing.name = WideToUtf8(sequence->GetName());
      thing.on = isSlide && board.GetSelectedSequence() == sequence;
      (void)board.GetSlideBounds(sequence, part, thing.bounds);
      things.push_back(std::move(thing));
    }
  }
  if (board.GetMode() != Storyboard::MODE_EDITING) return;
  FocusThing adding = MakeThing({SEQUENCES, count, Storyboard::SLIDE_ITSELF}, Korvane::STRING_SEQUENCE_ADD);
  (void)board.GetSlideBounds(static_cast<const Sequence*>(nullptr), Storyboard::SLIDE_ITSELF, adding.bounds);
  things.push_back(std::move(adding));
}

std::vector<FocusThing> StoryFocus::List() {
  std::vector<FocusThing> things;
  if (!partners.board.IsVisible()) return things;
  ListTitle(things);
  ListShots(things);
  ListSequences(things);
  return things;
}

// ---- the way ----

std::optional<int> StoryFocus::Steer(int id, FocusStep step) {
  const std::vector<FocusThing> things = List();
  const auto from =
      std::find_if(things.begin(), things.end(), [id](const FocusThing& each) { return each.id == id; });
  if (from == things.end()) return std::nullopt;
  const Row row = FindPlace(id).row;
  if (step.up == 0) {
    const auto to = (from - things.begin()) + step.right;
    const bool isThere = to >= 0 && to < std::ssize(things);
    const FocusThing* const next = isThere ? &things[static_cast<std::size_t>(to)] : nullptr;
    return next != nullptr && FindPlace(next->id).row == row ? std::optional(next->id) : std::nullopt;
  }
  // The slide that is nearest in the next row that has any.
  for (int other = row - step.up; other >= TITLE && other <= SEQUENCES; other -= step.up) {
    std::optional<int> nearest;
    double least = std::numeric_limits<double>::infinity();
    for (const FocusThing& thing : things) {
      const Place place = FindPlace(thing.id);
      const double aside = std::abs(thing.bounds.center.x - from->bounds.center.x);
      if (place.row != other || place.part != Storyboard::SLIDE_ITSELF || !(aside < least)) continue;
      least = aside;
      nearest = thing.id;
    }
    if (nearest.has_value()) return nearest;
  }
  return std::nullopt;
}

// ---- presses ----

void StoryFocus::Press(const Place& place) {
  if (place.row == TITLE) return PressTitle(place.index);
  if (place.row == SHOTS) return PressShot(place);
  PressSequence(place);
}

void StoryFocus::PlayOrPause(const std::function<void()>& play) {
  if (!partners.board.IsPlayingBack()) return play();
  partners.board.PausePlayback();
}

void StoryFocus::PressTitle(std::uint64_t button) {
  Storyboard& board = partners.board;
  switch (static_cast<Storyboard::TitlePart>(button)) {
    case Storyboard::TITLE_PLAY:
      return PlayOrPause([&board] {
        if (!board.IsPaused() || !board.ResumePlayback()) board.PlaybackStory(board.GetStory());
      });
    case Storyboard::TITLE_STOP:
      board.StopPlayback();
      return;
    case Storyboard::TITLE_LOOP:
      return board.SetLoop(!board.GetLoop());
    case Storyboard::TITLE_CLOSE:
      board.StopPlayback();
      return board.SetVisible(false);
  }
}

void StoryFocus::PressShot(const Place& place) {
  Storyboard& board = partners.board;
  ShotSpecification* const shot = GetShot(place.index);
  if (shot == nullptr) {
    board.CreateShot(board.GetSelectedSequence());
  } else if (place.part == Storyboard::SLIDE_PLAY) {
    PlayOrPause([&] { board.PlaybackSingleShot(shot); });
  } else if (place.part == Storyboard::SLIDE_TARGET) {
    board.TargetShot(shot);
  } else {
    board.EditShot(shot);
  }
}

void StoryFocus::PressSequence(const Place& place) {
  Storyboard& board = partners.board;
  Sequence* const sequence = GetSequence(place.index);
  if (sequence == nullptr) {
    board.CreateSequence();
  } else if (place.part == Storyboard::SLIDE_PLAY) {
    PlayOrPause([&] { board.PlaybackSequence(sequence); });
  } else if (place.part == Storyboard::SLIDE_TARGET) {
    board.TargetSequence(sequence);
  } else {
    board.SetSelectedSequence(sequence);
  }
}

// ---- other keys ----

bool StoryFocus::OnKey(const Place& place, const WindowEvent& event) {
  const bool isShot = place.row == SHOTS && GetShot(place.index) != nullptr;
  const bool toSide = event.key == SDLK_LEFT || event.key == SDLK_RIGHT;
  if (toSide && (event.modifiers & WindowEvent::CONTROL) != 0) {
    Move(place, event.key == SDLK_LEFT);
  } else if (isShot && event.key == SDLK_DELETE) {
    partners.board.DeleteShot(GetShot(place.index));
  } else if (isShot && event.key == SDLK_F2) {
    TypeName(place);
  } else if (isShot && IsMenuKey(event)) {
    OpenMenu(place);
  } else {
    return false;
  }
  return true;
}

// Before the one before, or before the one after the next: at the end there is none.
void StoryFocus::Move(const Place& place, bool back) {
  Storyboard& board = partners.board;
  const bool isFirst = place.index == 0;
  if (place.row == TITLE || (back ? isFirst : place.index + 1 >= GetCount(place.row))) return;
  const std::uint64_t before = back ? place.index - 1 : place.index + 2;
  const bool moved = place.row == SHOTS ? board.MoveShot(GetShot(place.index), GetShot(before))
                                        : board.MoveSequence(GetSequence(place.index), GetSequence(before));
  if (moved) partners.goTo(MakeId({place.row, back ? place.index - 1 : place.index + 1, place.part}));
}

void StoryFocus::TypeName(const Place& place) {
  if (!partners.board.EditShot(GetShot(place.index)) || !partners.typeName) return;
  partners.typeName();
}

void StoryFocus::OpenMenu(const Place& place) {
  Box2 bounds;
  if (!partners.board.GetSlideBounds(GetShot(place.index), Storyboard::SLIDE_ITSELF, bounds)) return;
  partners.pointTo(bounds);
  partners.board.OpenMenu();
}

}  // namespace zovhost
