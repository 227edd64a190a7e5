// Draws sheets of the kit's pictures on the grounds that they have to read on, to be looked at.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <functional>
#include <iostream>
#include <string>
#include <vector>

#include "bar_states.h"
#include "cube_states.h"
#include "disc_states.h"
#include "notes.h"
#include "sheet.h"
#include "show.h"
#include "story_states.h"
#include "zovhost/picture.h"
#include "zovhost/resource_pack.h"
#include "zovhost/window.h"

namespace {

using zovhost::Image;
using zovhost::LabelledImage;
using zovhost::ResourcePack;
using zovsheets::Ground;
using zovsheets::Lay;
using zovsheets::MakeGround;
using zovsheets::Show;
using Pictures = std::vector<LabelledImage>;

constexpr int magnification = 3;
constexpr int margin = 6;  // pixels, around each drawing

struct SheetKind {
  const char* title;
  int columns;
};

int SaveSheet(const Pictures& pictures, const SheetKind& kind, const Show& show, const std::string& file) {
  zovhost::ContactSheetParameters parameters{kind.title, "", show.columns > 0 ? show.columns : kind.columns,
                                             pictures.empty() ? 1 : pictures.front().image.width};
  Image sheet;
  std::string error;
  if (zovhost::MakeContactSheet(pictures, parameters, sheet, error) &&
      zovhost::WritePng(file, sheet, error)) {
    return 0;
  }
  std::cerr << error << '\n';
  return 1;
}

Image Enlarge(const Image& image, int enlarged) {
  Image sheet = MakeGround(Ground::White, image.width * enlarged, image.height * enlarged);
  Lay(image, 0, 0, enlarged, sheet);
  return sheet;
}

// In the middle of a cell.
Image Centre(const Image& image, int enlarged, int width, int height) {
  Image cell = MakeGround(Ground::White, width, height);
  Lay(image, (width - image.width * enlarged) / 2, (height - image.height * enlarged) / 2, enlarged, cell);
  return cell;
}

// All in cells of one size, so that none of them is made smaller than another.
void CentreAll(Pictures& pictures, int enlarged) {
  int width = 0;
  int height = 0;
  for (const LabelledImage& picture : pictures) {
    width = std::max(width, picture.image.width * enlarged);
    height = std::max(height, picture.image.height * enlarged);
  }
  for (LabelledImage& picture : pictures) picture.image = Centre(picture.image, enlarged, width, height);
}

// ---- drawings, enlarged and side by side at each scale, on each ground ----

int GetWidth(const std::vector<Image>& images) {
  int width = margin;
  for (const Image& image : images) width += image.width + margin;
  return width;
}

Image MakeStrip(const std::vector<Image>& images, const Show& show) {
  const std::vector<Ground> grounds = show.GetGrounds();
  const int width = GetWidth(images) * magnification;
  const int height = (images.back().height + 2 * margin) * magnification;
  Image strip = MakeGround(Ground::White, static_cast<int>(grounds.size()) * width, height);
  int left = 0;
  for (const Ground ground : grounds) {
    Lay(MakeGround(ground, width / magnification, height / magnification), left, 0, magnification, strip);
    int x = margin;
    for (const Image& image : images) {
      Lay(image, left + x * magnification, margin * magnification, magnification, strip);
      x += image.width + margin;
    }
    left += width;
  }
  return strip;
}

template <class Render>
void AddStrip(int id, const Show& show, const Render& render, Pictures& strips) {
  std::vector<Image> images;
  for (const double scale : show.GetScales()) {
    if (!render(id, scale, images.emplace_back())) return;
  }
  strips.push_back({MakeStrip(images, show), std::to_string(id)});
}

int DrawCursors(const Show& show, const std::string& file) {
  Pictures strips;
  const auto render = [&show](int id, double scale, Image& image) {
    zovhost::CursorPicture cursor;
    if (!show.pack->RenderCursor(id, scale, cursor)) return false;
    image = std::move(cursor.image);
    return true;
  };
  for (int id = 0; id < ResourcePack::cursorCount; ++id) AddStrip(id, show, render, strips);
  return SaveSheet(strips, {"Cursors", show.ground.has_value() ? 9 : 2}, show, file);
}

struct PictureRange {
  int first = 0;
  int last = ResourcePack::pictureCount - 1;
};

int DrawPictures(const PictureRange& range, const Show& show, const std::string& file) {
  Pictures strips;
  const auto render = [&show](int id, double scale, Image& image) {
    return show.pack->RenderPicture(id, scale, image);
  };
  for (int id = range.first; id <= range.last; ++id) AddStrip(id, show, render, strips);
  return SaveSheet(strips, {"Pictures", show.ground.has_value() ? 5 : 1}, show, file);
}

// ---- widgets in their states ----

int DrawCube(const Show& show, const std::string& file) {
  constexpr int cell = 240;  // pixels
  Pictures pictures;
  for (zovsheets::CubeState& state : show.Choose(zovsheets::GetCubeStates())) {
    Image image;
    state.pack = show.pack;
    if (!zovsheets::PaintCube(state, image)) continue;
    const int side = std::max(cell, image.width) * show.enlarged;
    pictures.push_back({Centre(image, show.enlarged, side, side), state.name});
  }
  if (show.scale.has_value()) CentreAll(pictures, 1);
  return SaveSheet(pictures, {"The orientation cube", 8}, show, file);
}

int DrawBars(const Show& show, const std::string& file) {
  Pictures pictures;
  for (const zovsheets::BarState& state : show.Choose(zovsheets::GetBarStates())) {
    Image image;
    if (zovsheets::PaintBar(state, image)) pictures.push_back({std::move(image), state.name});
  }
  CentreAll(pictures, show.enlarged);
  return SaveSheet(pictures, {"The navigation bar", 8}, show, file);
}

int DrawStory(const Show& show, const std::string& file) {
  Pictures pictures;
  for (zovsheets::StoryState& state : show.Choose(zovsheets::GetStoryStates())) {
    Image image;
    state.pack = show.pack;
    if (!zovsheets::PaintStory(state, image)) continue;
    const bool isCoarse = !show.scale.has_value() && state.scale < 1.5;
    pictures.push_back({Enlarge(image, isCoarse ? 2 * show.enlarged : show.enlarged), state.name});
  }
  return SaveSheet(pictures, {"The storyboard", 2}, show, file);
}

int DrawNotes(const Show& show, const std::string& file) {
  Pictures pictures;
  for (const double scale : show.GetScales()) {
    for (const Ground ground : show.GetGrounds()) {
      Image image;
      if (!zovsheets::PaintNotes(ground, scale, image, show.pack)) continue;
      const bool isCoarse = !show.scale.has_value() && scale < 1.5;
      pictures.push_back({Enlarge(image, isCoarse ? 2 : 1), std::string(GetName(ground))});
    }
  }
  return SaveSheet(pictures, {"Notes in the view", 2}, show, file);
}

// ---- pictures of the discs and of the storyboard ----

struct DiscChoice {
  int size = 0;        // points; 0: the usual one
  bool small = false;  // at the smallest size of each
};

int DrawDiscs(const DiscChoice& choice, const Show& show, const std::string& file) {
  constexpr int columns = 6;  // of the states of a disc
  Pictures pictures;
  for (const zovsheets::DiscKind& kind : zovsheets::GetDiscKinds()) {
    if (!show.IsWanted(kind.name)) continue;
    for (const Ground ground : show.GetGrounds()) {
      Image image;
      const double points = choice.small      ? kind.leastPoints
                            : choice.size > 0 ? choice.size
                                              : kind.usualPoints;
      const int inRow = show.columns > 0 ? show.columns : columns;
      if (!zovsheets::PaintDiscs(*show.pack, kind, {points, show.GetScale(), ground, inRow}, image)) continue;
      pictures.push_back({Enlarge(image, show.enlarged), kind.name});
    }
  }
  Show sheet = show;
  sheet.columns = show.ground.has_value() ? 1 : 2;
  return SaveSheet(pictures, {"The discs", 2}, sheet, file);
}

// A row for each kind, its states side by side.
Image StackStoryKinds(const ResourcePack& pack, Ground ground, double scale) {
  std::vector<Image> rows;
  int width = 1;
  int height = 0;
  for (const zovsheets::StoryKind& kind : zovsheets::GetStoryKinds()) {
    Image& row = rows.emplace_back();
    if (!zovsheets::PaintStoryKind(pack, kind, ground, scale, row)) continue;
    width = std::max(width, row.width);
    height += row.height;
  }
  Image stack = MakeGround(ground, width, std::max(height, 1));
  int y = 0;
  for (const Image& row : rows) {
    Lay(row, 0, y, 1, stack);
    y += row.height;
  }
  return stack;
}

int DrawStoryKinds(const Show& show, const std::string& file) {
  Pictures pictures;
  for (const Ground ground : show.GetGrounds()) {
    const Image stack = StackStoryKinds(*show.pack, ground, show.GetScale());
    pictures.push_back({Enlarge(stack, show.enlarged), std::string(GetName(ground))});
  }
  return SaveSheet(pictures, {"Pictures of the storyboard", 2}, show, file);
}

// ---- commands ----

// For what is drawn by the renderer.
template <class Draw>
int InWindow(const Draw& draw) {
  std::string error;
  const auto window = zovhost::Window::Create({"", 64, 64, true}, error);
  if (window != nullptr) return draw();
  std::cerr << error << '\n';
  return 1;
}

struct Choices {
  std::string file;
  Show show;
  PictureRange range;
  DiscChoice discs;
};

struct Command {
  CLI::App* app;
  std::function<int()> draw;
};

void AddShow(CLI::App& app, Show& show) {
  app.add_option_function<std::string>(
      "--language",
      [&show](const std::string& wanted) {
        const zovhost::Language* const language = zovhost::FindLanguage(wanted);
        if (language == nullptr) throw CLI::ValidationError("--language", "no such language: " + wanted);
        show.pack = ResourcePack::Make(*language);
      },
      "Of the words in pictures and discs: en, de, ja and so on");
  app.add_option_function<std::string>(
      "--ground",
      [&show](const std::string& wanted) {
        show.ground = zovsheets::FindGround(wanted);
        if (!show.ground.has_value()) throw CLI::ValidationError("--ground", "no such ground: " + wanted);
      },
      "One alone: white, black, gradient, busy, light or dark");
  app.add_option("--scale", show.scale, "Pixels for one point")->check(CLI::Range(0.5, 4.0));
  app.add_option("--only", show.wanted, "States and discs whose names contain this");
  app.add_option("--columns", show.columns, "Pictures in a row, of a disc its states")
      ->check(CLI::NonNegativeNumber);
  app.add_option("--enlarged", show.enlarged, "Sheet pixels for one of the picture")->check(CLI::Range(1, 8));
}

CLI::App* AddPictures(CLI::App& app, PictureRange& range) {
  CLI::App* const pictures = app.add_subcommand("pictures", "Pictures of a range");
  pictures->add_option("--first", range.first, "The first number");
  pictures->add_option("--last", range.last, "The last number");
  return pictures;
}

CLI::App* AddDiscs(CLI::App& app, DiscChoice& choice) {
  CLI::App* const discs = app.add_subcommand("discs", "The navigation discs in their states");
  discs->add_option("--size", choice.size, "The width of a disc in points; 0: the usual one");
  discs->add_flag("--small", choice.small, "Each at its smallest size");
  return discs;
}

std::vector<Command> AddCommands(CLI::App& app, Choices& c) {
  const auto add = [&](const char* name, const char* meaning, auto draw) -> Command {
    return {app.add_subcommand(name, meaning), [&c, draw] { return draw(c.show, c.file); }};
  };
  const auto addInWindow = [&](const char* name, const char* meaning, auto draw) -> Command {
    return {app.add_subcommand(name, meaning),
            [&c, draw] { return InWindow([&c, draw] { return draw(c.show, c.file); }); }};
  };
  return {
      add("cursors", "All pointers", DrawCursors),
      {AddPictures(app, c.range), [&c] { return DrawPictures(c.range, c.show, c.file); }},
      addInWindow("cube", "The orientation cube in its states", DrawCube),
      addInWindow("bars", "The navigation bar in its states", DrawBars),
      addInWindow("story", "The storyboard in its states", DrawStory),
      add("story-pictures", "The pictures of the storyboard, kind by kind", DrawStoryKinds),
      addInWindow("notes", "Texts in the view, the pivot, the targets of a walk", DrawNotes),
      {AddDiscs(app, c.discs), [&c] { return DrawDiscs(c.discs, c.show, c.file); }},
  };
}

}  // namespace

// NOLINTNEXTLINE(bugprone-exception-escape): without memory there is no picture to save
int main(int argumentCount, char** arguments) {
  CLI::App app("Draws sheets of the kit's pictures");
  app.require_subcommand(1);
  app.fallthrough();
  Choices choices;
  choices.show.pack = ResourcePack::GetDefault();
  AddShow(app, choices.show);
  const std::vector<Command> commands = AddCommands(app, choices);
  for (const Command& command : commands) {
    command.app->add_option("file", choices.file, "The PNG to write")->required();
  }
  CLI11_PARSE(app, argumentCount, arguments);
  const auto chosen = std::find_if(commands.begin(), commands.end(),
                                   [](const Command& command) { return command.app->parsed(); });
  return chosen != commands.end() ? chosen->draw() : 1;
}
