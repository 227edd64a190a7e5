#include "pictures/story_pictures.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <string_view>

#include "korvane/resource_ids.h"
#include "pictures/canvas.h"
#include "pictures/story_painter.h"

namespace zovhost {

namespace {

constexpr StorySize frame = {256.0, 100.0};
constexpr StorySize titleBar = {186.0, 32.0};
constexpr StorySize smallButton = {16.0, 16.0};
constexpr StorySize largeButton = {20.0, 20.0};
constexpr StorySize largeCard = {128.0, 128.0, 2.0, 15.0, 23.0};
constexpr StorySize smallCard = {64.0, 64.0, 1.0, 2.0, 17.0};
constexpr StorySize largeDrop = {6.0, 128.0};
constexpr StorySize smallDrop = {6.0, 64.0};

constexpr StoryLook rest = {};
constexpr StoryLook lit = {.lit = true};
constexpr StoryLook on = {.on = true};
constexpr StoryLook onLit = {.lit = true, .on = true};

constexpr std::string_view film = "glyphs/film.svg";
constexpr std::string_view play = "glyphs/play.svg";
constexpr std::string_view pause = "glyphs/pause.svg";
constexpr std::string_view stop = "glyphs/stop.svg";
constexpr std::string_view loop = "glyphs/loop.svg";
constexpr std::string_view close = "glyphs/close.svg";
constexpr std::string_view place = "glyphs/place.svg";
constexpr std::string_view add = "glyphs/add.svg";

struct Row {
  int id;
  StorySize size;
  void (*draw)(const StoryPlace& place, const StoryLook& look);
  StoryLook look;
};

constexpr StoryLook With(std::string_view glyph, StoryLook look) {
  look.glyph = glyph;
  return look;
}

constexpr Row rows[] = {
    {Korvane::TEXTURE_STORY_FRAME, frame, DrawStoryStrip, rest},
    {Korvane::TEXTURE_STORY_TITLE_BAR, titleBar, DrawStoryTitleBar, With(film, rest)},
    {Korvane::TEXTURE_STORY_PLAY, smallButton, DrawStoryTitleButton, With(play, rest)},
    {Korvane::TEXTURE_STORY_PLAY_ACTIVE, smallButton, DrawStoryTitleButton, With(play, lit)},
    {Korvane::TEXTURE_STORY_PAUSE, smallButton, DrawStoryTitleButton, With(pause, rest)},
    {Korvane::TEXTURE_STORY_PAUSE_ACTIVE, smallButton, DrawStoryTitleButton, With(pause, lit)},
    {Korvane::TEXTURE_STORY_STOP, smallButton, DrawStoryTitleButton, With(stop, rest)},
    {Korvane::TEXTURE_STORY_STOP_ACTIVE, smallButton, DrawStoryTitleButton, With(stop, lit)},
    {Korvane::TEXTURE_STORY_LOOP, smallButton, DrawStoryTitleButton, With(loop, rest)},
    {Korvane::TEXTURE_STORY_LOOP_ACTIVE, smallButton, DrawStoryTitleButton, With(loop, lit)},
    {Korvane::TEXTURE_STORY_LOOP_ON, smallButton, DrawStoryTitleButton, With(loop, on)},
    {Korvane::TEXTURE_STORY_LOOP_ON_ACTIVE, smallButton, DrawStoryTitleButton, With(loop, onLit)},
    {Korvane::TEXTURE_STORY_CLOSE, smallButton, DrawStoryTitleButton, With(close, rest)},
    {Korvane::TEXTURE_STORY_CLOSE_ACTIVE, smallButton, DrawStoryTitleButton, With(close, lit)},
    {Korvane::TEXTURE_SEQUENCE_SLIDE, largeCard, DrawStoryCard, rest},
    {Korvane::TEXTURE_SEQUENCE_SLIDE_ACTIVE, largeCard, DrawStoryCard, lit},
    {Korvane::TEXTURE_SEQUENCE_SLIDE_SELECTED, largeCard, DrawStoryCard, on},
    {Korvane::TEXTURE_SEQUENCE_SLIDE_SELECTED_ACTIVE, largeCard, DrawStoryCard, onLit},
    {Korvane::TEXTURE_SEQUENCE_SLIDE_PLAYING, largeCard, DrawStoryProgress, With(play, on)},
    {Korvane::TEXTURE_SEQUENCE_SLIDE_PAUSED, largeCard, DrawStoryProgress, With(pause, rest)},
    {Korvane::TEXTURE_SEQUENCE_ADD, largeCard, DrawStoryAdd, With(add, rest)},
    {Korvane::TEXTURE_SEQUENCE_ADD_ACTIVE, largeCard, DrawStoryAdd, With(add, lit)},
    {Korvane::TEXTURE_SEQUENCE_STACK_LEFT, largeCard, DrawStoryShade, rest},
    {Korvane::TEXTURE_SEQUENCE_STACK_RIGHT, largeCard, DrawStoryShade, on},
    {Korvane::TEXTURE_SEQUENCE_PLAY, largeButton, DrawStoryRoundButton, With(play, rest)},
    {Korvane::TEXTURE_SEQUENCE_PLAY_ACTIVE, largeButton, DrawStoryRoundButton, With(play, lit)},
    {Korvane::TEXTURE_SEQUENCE_PAUSE, largeButton, DrawStoryRoundButton, With(pause, rest)},
    {Korvane::TEXTURE_SEQUENCE_PAUSE_ACTIVE, largeButton, DrawStoryRoundButton, With(pause, lit)},
    {Korvane::TEXTURE_SEQUENCE_TARGET, largeButton, DrawStoryRoundButton, With(place, rest)},
    {Korvane::TEXTURE_SEQUENCE_TARGET_ACTIVE, largeButton, DrawStoryRoundButton, With(place, lit)},
    {Korvane::TEXTURE_SHOT_SLIDE, smallCard, DrawStoryCard, rest},
    {Korvane::TEXTURE_SHOT_SLIDE_ACTIVE, smallCard, DrawStoryCard, lit},
    {Korvane::TEXTURE_SHOT_SLIDE_SELECTED, smallCard, DrawStoryCard, on},
    {Korvane::TEXTURE_SHOT_SLIDE_PLAYING, smallCard, DrawStoryProgress, With(play, on)},
    {Korvane::TEXTURE_SHOT_SLIDE_PAUSED, smallCard, DrawStoryProgress, With(pause, rest)},
    {Korvane::TEXTURE_SHOT_ADD, smallCard, DrawStoryAdd, With(add, rest)},
    {Korvane::TEXTURE_SHOT_ADD_ACTIVE, smallCard, DrawStoryAdd, With(add, lit)},
    {Korvane::TEXTURE_SHOT_PLAY, smallButton, DrawStoryRoundButton, With(play, rest)},
    {Korvane::TEXTURE_SHOT_PLAY_ACTIVE, smallButton, DrawStoryRoundButton, With(play, lit)},
    {Korvane::TEXTURE_SHOT_PAUSE, smallButton, DrawStoryRoundButton, With(pause, rest)},
    {Korvane::TEXTURE_SHOT_PAUSE_ACTIVE, smallButton, DrawStoryRoundButton, With(pause, lit)},
    {Korvane::TEXTURE_SHOT_TARGET, smallButton, DrawStoryRoundButton, With(place, rest)},
    {Korvane::TEXTURE_SHOT_TARGET_ACTIVE, smallButton, DrawStoryRoundButton, With(place, lit)},
    {Korvane::TEXTURE_SEQUENCE_DROP, largeDrop, DrawStoryDrop, rest},
    {Korvane::TEXTURE_SHOT_DROP, smallDrop, DrawStoryDrop, rest},
};

const Row* FindRow(int id) {
  const auto found =
      std::find_if(std::begin(rows), std::end(rows), [id](const Row& row) { return row.id == id; });
  return found != std::end(rows) ? &*found : nullptr;
}

}  // namespace

bool IsStoryPicture(int id) { return FindRow(id) != nullptr; }

double GetStoryPoints(int id) {
  const Row* const row = FindRow(id);
  return row != nullptr ? row->size.width : 0.0;
}

bool PaintStoryPicture(int id, int pixels, Image& image) {
  const Row* const row = FindRow(id);
  if (row == nullptr) return false;
  const double unit = pixels / row->size.width;
  const Canvas canvas(pixels, std::max(1, static_cast<int>(std::lround(unit * row->size.height))));
  if (!canvas.IsValid()) return false;
  row->draw({canvas.GetContext(), unit, row->size}, row->look);
  if (!canvas.IsValid()) return false;
  image = canvas.MakeImage();
  return true;
}

}  // namespace zovhost
