#include "arguments.h"

#include <CLI/CLI.hpp>
#include <cstdio>
#include <memory>

#include "tour/glances.h"
#include "viewer/view_grid.h"
#include "zovhost/languages.h"
#include "zovhost/scene_ground.h"

namespace zovview {

namespace {

constexpr int SMALLEST_SIDE = 64;
constexpr int LARGEST_SIDE = 8192;

// Of an option that takes a value, the value's name alone: what may stand beside what is told when it does.
class PlainHelp : public CLI::Formatter {
 public:
  std::string make_option_opts(const CLI::Option* option) const override {
    const std::string type = option->get_type_name();
    return type.empty() ? std::string() : " " + type.substr(0, type.find(':'));
  }
};

// Options of which the first cannot stand beside any of the others.
struct Opposites {
  const char* option;
  std::vector<const char*> others;
};

void TellOpposites(CLI::App& app) {
  static const Opposites TABLE[] = {
      {"--split", {"--views"}},
      {"--record", {"--split", "--views", "--headless"}},
      {"--replay", {"--split", "--views", "--headless", "MODEL"}},
      {"--play", {"--split", "--views", "--record", "--replay"}},
      {"--view", {"--record", "--replay", "--play"}},
  };
  for (const Opposites& row : TABLE) {
    for (const char* const other : row.others) app.get_option(row.option)->excludes(app.get_option(other));
  }
}

// "WxH" into two numbers; an error text, empty for none.
std::string ReadSize(const std::string& text, int& width, int& height) {
  int w = 0;
  int h = 0;
  int length = 0;
  const bool read = std::sscanf(text.c_str(), "%5dx%5d%n", &w, &h, &length) == 2;
  const auto usable = [](int side) { return side >= SMALLEST_SIDE && side <= LARGEST_SIDE; };
  if (!read || static_cast<std::size_t>(length) != text.size() || !usable(w) || !usable(h)) {
    return "a size is WIDTHxHEIGHT, each from " + std::to_string(SMALLEST_SIDE) + " to " +
           std::to_string(LARGEST_SIDE) + ", for instance 1280x800";
  }
  width = w;
  height = h;
  return {};
}

// A variable that a script forgot to set must not be taken for an option that was not given.
std::string RefuseEmpty(const std::string& text) { return text.empty() ? "nothing is given" : ""; }

// An option with a value; of several the last counts.
template <class Value>
CLI::Option* Add(CLI::App& app, const char* name, const char* valueName, Value& value, const char* help) {
  return app.add_option(name, value, help)->type_name(valueName)->take_last()->check(RefuseEmpty);
}

void AddSize(CLI::App& app, Arguments& arguments) {
  const auto readSize = [&arguments](const std::string& text) {
    const std::string error = ReadSize(text, arguments.tour.width, arguments.tour.height);
    if (!error.empty()) throw CLI::ValidationError("--size", error);
  };
  app.add_option_function<std::string>("--size", readSize,
                                       "Of the window or the pictures, 1280x800 if not given")
      ->type_name("WxH")
      ->take_last();
}

void AddModes(CLI::App& app, Arguments& arguments) {
  app.add_option("MODEL", arguments.model,
                 "glTF, OBJ, STL, PLY, FBX, DAE, 3MF or IFC file; without one a sample house")
      ->type_name("")
      ->check(RefuseEmpty);
  Add(app, "--views", "N", arguments.views, "Views of the model beside each other, 1 to 4, 1 if not given")
      ->check(CLI::Range(1, MOST_VIEWS));
  app.add_flag("--split", arguments.split, "As --views 2");
  Add(app, "--view", "VIEW", arguments.view,
      "Shows a view first: the name of one that is kept, or a .bcfv or .bcf file");
  Add(app, "--record", "FILE", arguments.record, "Writes what is done into a recording");
  Add(app, "--replay", "FILE", arguments.replay,
      "Plays a recording without a window, and prints the cameras; with --record it is written there with "
      "what its "
      "rays met");
  app.add_flag("--log", arguments.log,
               "A line on the error stream for each event, frame and rest of the window");
  app.add_flag("--no-settings", arguments.noSettings,
               "Neither reads nor writes the user's settings; with --record neither");
}

void AddPictures(CLI::App& app, Arguments& arguments) {
  CLI::Option* const headless = app.add_flag("--headless", arguments.headless,
                                             "Without a window: write a tour as pictures, or a view as one");
  app.add_flag("--glance{" + std::string(WHOLE_GLANCE) + "}", arguments.tour.glance,
               "A tour of a few seconds instead of the whole one; --glance=cube, of one device")
      ->check(CLI::IsMember(GetGlanceNames()))
      ->needs(headless);
  CLI::Option* const play = Add(app, "--play", "STORY", arguments.play,
                                "Opens a story and presents it; with --headless as pictures");
  Add(app, "--rate", "N", arguments.rate, "Pictures for a second of the story, 6 if not given")
      ->needs(play)
      ->check(CLI::IsMember({1, 2, 3, 4, 5, 6, 10, 12, 15, 20, 30, 60}));
  Add(app, "--out", "PLACE", arguments.tour.directory,
      "Where a tour or a story is written, out/tour or out/story if not given; or a view's .png");
}

void AddLook(CLI::App& app, Arguments& arguments) {
  Add(app, "--ground", "NAME", arguments.tour.ground, "Behind the model: gradient, light, dark or white")
      ->check([](const std::string& name) {
        return zovhost::FindSceneGround(name) != nullptr ? std::string() : "no such ground: " + name;
      });
  Add(app, "--scale", "X", arguments.scale, "Pixels for one point, 1 to 4; that of the display if not given")
      ->check(CLI::Range(1.0, 4.0));
  Add(app, "--language", "TAG", arguments.language,
      "That the program speaks, for instance de; that of the settings or the system if not given")
      ->check([](const std::string& tag) {
        return zovhost::FindLanguage(tag) != nullptr ? std::string() : "there is no language " + tag;
      });
}

}  // namespace

std::optional<int> ReadArguments(int argc, char** argv, Arguments& arguments) {
  CLI::App app(
      "Opens a 3D model: left drag is the chosen tool, at first orbit; middle drag pans, the wheel zooms.",
      "zovview");
  app.formatter(std::make_shared<PlainHelp>());
  app.set_help_flag("-h,--help", "Tells this");
  AddModes(app, arguments);
  app.option_defaults()->group("Look");
  AddSize(app, arguments);
  AddLook(app, arguments);
  app.option_defaults()->group("Pictures and films");
  AddPictures(app, arguments);
  TellOpposites(app);
  app.set_version_flag("--version", "zovview " ZOVVIEW_VERSION, "Tells the version")->group("Options");
  try {
    app.parse(argc, argv);
  } catch (const CLI::Success& success) {
    return app.exit(success);
  } catch (const CLI::ParseError& error) {
    std::fprintf(stderr, "zovview: %s (see --help)\n", error.what());
    return EXIT_BAD_INPUT;
  }
  return std::nullopt;
}

}  // namespace zovview
