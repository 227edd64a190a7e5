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
#include "story_states.h"
#include "zovhost/picture.h"
#include "zovhost/resource_pack.h"
#include "zovhost/window.h"

namespace {

using zovhost::Image;
using zovhost::LabelledImage;
using zovhost::ResourcePack;

constexpr int magnification = 3;
constexpr int margin = 6;  // pixels, around each drawing

int SaveSheet(const std::vector<LabelledImage>& pictures, const std::string& title, int columns,
              const std::string& file) {
  zovhost::ContactSheetParameters parameters{title, "", columns,
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

// A drawing at 1x and at 2x beside it, on each ground.
Image MakeStrip(const Image& single, const Image& twice) {
  const int width = (single.width + twice.width + 3 * margin) * magnification;
  const int height = (twice.height + 2 * margin) * magnification;
  Image strip{static_cast<int>(zovsheets::grounds.size()) * width, height, {}};
  strip.rgba.resize(4 * static_cast<std::size_t>(strip.width) * static_cast<std::size_t>(height), 255);
  int x = 0;
  for (const zovsheets::Ground ground : zovsheets::grounds) {
    const Image paper = zovsheets::MakeGround(ground, width / magnification, height / magnification);
    zovsheets::Lay(paper, x, 0, magnification, strip);
    zovsheets::Lay(single, x + margin * magnification, margin * magnification, magnification, strip);
    zovsheets::Lay(twice, x + (2 * margin + single.width) * magnification, margin * magnification,
                   magnification, strip);
    x += width;
  }
  return strip;
}

Image Enlarge(const Image& image, int enlarged) {
  Image sheet =
      zovsheets::MakeGround(zovsheets::Ground::White, image.width * enlarged, image.height * enlarged);
  zovsheets::Lay(image, 0, 0, enlarged, sheet);
  return sheet;
}

int DrawCursors(const ResourcePack& pack, const std::string& file) {
  std::vector<LabelledImage> strips;
  for (int id = 0; id < ResourcePack::cursorCount; ++id) {
    zovhost::CursorPicture single;
    zovhost::CursorPicture twice;
    if (!pack.RenderCursor(id, 1.0, single) || !pack.RenderCursor(id, 2.0, twice)) continue;
    strips.push_back({MakeStrip(single.image, twice.image), std::to_string(id)});
  }
  return SaveSheet(strips, "Cursors", 2, file);
}

int DrawPictures(const ResourcePack& pack, int first, int last, const std::string& file) {
  std::vector<LabelledImage> strips;
  for (int id = first; id <= last; ++id) {
    Image single;
    Image twice;
    if (!pack.RenderPicture(id, 1.0, single) || !pack.RenderPicture(id, 2.0, twice)) continue;
    strips.push_back({MakeStrip(single, twice), std::to_string(id)});
  }
  return SaveSheet(strips, "Pictures", 1, file);
}

int DrawCube(const std::shared_ptr<ResourcePack>& pack, const std::string& wanted, int enlarged, int columns,
             const std::string& file) {
  constexpr int cell = 240;  // pixels
  std::vector<LabelledImage> pictures;
  for (zovsheets::CubeState state : zovsheets::GetCubeStates()) {
    Image image;
    state.pack = pack;
    if (state.name.find(wanted) == std::string::npos || !zovsheets::PaintCube(state, image)) continue;
    const int side = std::max(cell, image.width) * enlarged;
    Image sheet = zovsheets::MakeGround(zovsheets::Ground::White, side, side);
    zovsheets::Lay(image, (side - image.width * enlarged) / 2, (side - image.height * enlarged) / 2, enlarged,
                   sheet);
    pictures.push_back({std::move(sheet), state.name});
  }
  return SaveSheet(pictures, "The orientation cube", columns, file);
}

struct DiscChoice {
  std::string kind;  // those whose names contain it
  int size = 0;      // points; 0: the usual one
  double scale = 1.0;
  int ground = -1;  // -1: all of them
  int columns = 6;
  bool small = false;  // at the smallest size of each
};

int DrawDiscs(const ResourcePack& pack, const DiscChoice& choice, int enlarged, const std::string& file) {
  std::vector<LabelledImage> pictures;
  for (const zovsheets::DiscKind& kind : zovsheets::GetDiscKinds()) {
    if (std::string(kind.name).find(choice.kind) == std::string::npos) continue;
    for (const zovsheets::Ground ground : zovsheets::grounds) {
      if (choice.ground >= 0 && choice.ground != static_cast<int>(ground)) continue;
      Image image;
      const double points = choice.small      ? kind.leastPoints
                            : choice.size > 0 ? choice.size
                                              : kind.usualPoints;
      if (!zovsheets::PaintDiscs(pack, kind, {points, choice.scale, ground, choice.columns}, image)) continue;
      pictures.push_back({Enlarge(image, enlarged), kind.name});
    }
  }
  return SaveSheet(pictures, "The discs", 2, file);
}

int DrawBars(const std::string& wanted, int enlarged, int columns, const std::string& file) {
  std::vector<LabelledImage> pictures;
  int side = 0;
  for (const zovsheets::BarState& state : zovsheets::GetBarStates()) {
    Image image;
    if (state.name.find(wanted) == std::string::npos || !zovsheets::PaintBar(state, image)) continue;
    side = std::max({side, image.width * enlarged, image.height * enlarged});
    pictures.push_back({std::move(image), state.name});
  }
  for (LabelledImage& picture : pictures) {
    const Image& image = picture.image;
    Image sheet = zovsheets::MakeGround(zovsheets::Ground::White, side, side);
    zovsheets::Lay(image, (side - image.width * enlarged) / 2, (side - image.height * enlarged) / 2, enlarged,
                   sheet);
    picture.image = std::move(sheet);
  }
  return SaveSheet(pictures, "The navigation bar", columns, file);
}

int DrawStory(const std::string& wanted, int enlarged, int columns, const std::string& file) {
  std::vector<LabelledImage> pictures;
  for (const zovsheets::StoryState& state : zovsheets::GetStoryStates()) {
    Image image;
    if (state.name.find(wanted) == std::string::npos || !zovsheets::PaintStory(state, image)) continue;
    pictures.push_back({Enlarge(image, state.scale < 1.5 ? 2 * enlarged : enlarged), state.name});
  }
  return SaveSheet(pictures, "The storyboard", columns, file);
}

// A row for each kind, its states side by side.
Image StackStoryKinds(const ResourcePack& pack, zovsheets::Ground ground, double scale) {
  std::vector<Image> rows;
  int width = 1;
  int height = 0;
  for (const zovsheets::StoryKind& kind : zovsheets::GetStoryKinds()) {
    Image& row = rows.emplace_back();
    if (!zovsheets::PaintStoryKind(pack, kind, ground, scale, row)) continue;
    width = std::max(width, row.width);
    height += row.height;
  }
  Image stack = zovsheets::MakeGround(ground, width, std::max(height, 1));
  int y = 0;
  for (const Image& row : rows) {
    zovsheets::Lay(row, 0, y, 1, stack);
    y += row.height;
  }
  return stack;
}

int DrawStoryKinds(const ResourcePack& pack, double scale, int enlarged, const std::string& file) {
  std::vector<LabelledImage> pictures;
  pictures.reserve(zovsheets::grounds.size());
  for (const zovsheets::Ground ground : zovsheets::grounds) {
    pictures.push_back({Enlarge(StackStoryKinds(pack, ground, scale), enlarged), ""});
  }
  return SaveSheet(pictures, "Pictures of the storyboard", 2, file);
}

int DrawNotes(const std::shared_ptr<ResourcePack>& pack, const std::string& file) {
  std::vector<LabelledImage> pictures;
  for (const double scale : {1.0, 2.0}) {
    for (const zovsheets::Ground ground : zovsheets::grounds) {
      Image image;
      if (!zovsheets::PaintNotes(ground, scale, image, pack)) continue;
      const int enlarged = scale < 1.5 ? 2 : 1;
      pictures.push_back({Enlarge(image, enlarged), scale < 1.5 ? "1x" : "2x"});
    }
  }
  return SaveSheet(pictures, "Notes in the view", 2, file);
}

// For what is drawn by the renderer.
template <class Draw>
int InWindow(Draw draw) {
  std::string error;
  const auto window = zovhost::Window::Create({"", 64, 64, true}, error);
  if (window != nullptr) return draw();
  std::cerr << error << '\n';
  return 1;
}

CLI::App* AddDiscs(CLI::App& app, DiscChoice& choice, int& enlarged) {
  CLI::App* const discs = app.add_subcommand("discs", "The navigation discs in their states");
  discs->add_option("--only", choice.kind, "Discs whose names contain this");
  discs->add_option("--size", choice.size, "The width of a disc in points; 0: the usual one");
  discs->add_flag("--small", choice.small, "Each at its smallest size");
  discs->add_option("--scale", choice.scale, "Pixels for one point");
  discs->add_option("--columns", choice.columns, "States in a row");
  discs->add_option("--ground", choice.ground, "White 0, black 1, gradient 2, busy 3; -1: all of them");
  discs->add_option("--enlarged", enlarged, "Sheet pixels for one of the picture");
  return discs;
}

CLI::App* AddStoryKinds(CLI::App& app, double& scale, int& enlarged) {
  CLI::App* const kinds =
      app.add_subcommand("story-pictures", "The pictures of the storyboard, kind by kind");
  kinds->add_option("--scale", scale, "Pixels for one point");
  kinds->add_option("--enlarged", enlarged, "Sheet pixels for one of the picture");
  return kinds;
}

struct PictureRange {
  int first = 0;
  int last = ResourcePack::pictureCount - 1;
};

CLI::App* AddPictures(CLI::App& app, PictureRange& range) {
  CLI::App* const pictures = app.add_subcommand("pictures", "Pictures of a range, at 1x and 2x");
  pictures->add_option("--first", range.first, "The first number");
  pictures->add_option("--last", range.last, "The last number");
  return pictures;
}

struct StateChoice {
  std::string wanted;
  int columns = 8;
};

CLI::App* AddStates(CLI::App& app, const std::string& name, const std::string& meaning, StateChoice& choice,
                    int& enlarged) {
  CLI::App* const states = app.add_subcommand(name, meaning);
  states->add_option("--only", choice.wanted, "States whose names contain this");
  states->add_option("--enlarged", enlarged, "Sheet pixels for one of the picture");
  states->add_option("--columns", choice.columns, "Pictures in a row");
  return states;
}

struct Choices {
  std::string file;
  PictureRange range;
  StateChoice states;
  DiscChoice discs;
  double scale = 1.0;
  int enlarged = 1;
};

struct Command {
  CLI::App* app;
  std::function<int()> draw;
};

// The pack is the one of the language that is asked for, known when a command is drawn.
std::vector<Command> AddCommands(CLI::App& app, const std::shared_ptr<ResourcePack>& pack, Choices& choices) {
  Choices& c = choices;
  const auto addStates = [&](const char* name, const char* meaning, auto draw) -> Command {
    return {AddStates(app, name, meaning, c.states, c.enlarged), [&c, draw] {
              return InWindow([&] { return draw(c.states.wanted, c.enlarged, c.states.columns, c.file); });
            }};
  };
  return {
      {app.add_subcommand("cursors", "All pointers, at 1x and 2x"),
       [&] { return DrawCursors(*pack, c.file); }},
      {AddPictures(app, c.range), [&] { return DrawPictures(*pack, c.range.first, c.range.last, c.file); }},
      addStates("cube", "The orientation cube in its states",
                [&pack](const std::string& wanted, int enlarged, int columns, const std::string& file) {
                  return DrawCube(pack, wanted, enlarged, columns, file);
                }),
      addStates("bars", "The navigation bar in its states", DrawBars),
      addStates("story", "The storyboard in its states", DrawStory),
      {AddStoryKinds(app, c.scale, c.enlarged),
       [&] { return DrawStoryKinds(*pack, c.scale, c.enlarged, c.file); }},
      {app.add_subcommand("notes", "Texts in the view, the pivot, the targets of a walk"),
       [&] { return InWindow([&] { return DrawNotes(pack, c.file); }); }},
      {AddDiscs(app, c.discs, c.enlarged), [&] { return DrawDiscs(*pack, c.discs, c.enlarged, c.file); }},
  };
}

}  // namespace

// NOLINTNEXTLINE(bugprone-exception-escape): without memory there is no picture to save
int main(int argumentCount, char** arguments) {
  CLI::App app("Draws sheets of the kit's pictures");
  app.require_subcommand(1);
  std::shared_ptr<ResourcePack> pack = ResourcePack::MakeDefault();
  app.add_option_function<std::string>(
      "--language",
      [&pack](const std::string& wanted) {
        const zovhost::Language* const language = zovhost::FindLanguage(wanted);
        if (language == nullptr) throw CLI::ValidationError("--language", "no such language: " + wanted);
        pack = ResourcePack::Make(*language);
      },
      "Of the words in pictures and discs: en, de, ja and so on");
  Choices choices;
  const std::vector<Command> commands = AddCommands(app, pack, choices);
  for (const Command& command : commands) {
    command.app->add_option("file", choices.file, "The PNG to write")->required();
  }
  CLI11_PARSE(app, argumentCount, arguments);
  const auto chosen = std::find_if(commands.begin(), commands.end(),
                                   [](const Command& command) { return command.app->parsed(); });
  return chosen != commands.end() ? chosen->draw() : 1;
}
