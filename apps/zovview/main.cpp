// zovview: opens a model and shows it moved by the library's own operations, in a window or, without a
// display, as a tour of pictures.
#include <CLI/CLI.hpp>
#include <cstdio>
#include <exception>
#include <optional>
#include <string>

#include "glances.h"
#include "korvane/story.h"
#include "model_source.h"
#include "progress_line.h"
#include "recorder.h"
#include "replay.h"
#include "settings_file.h"
#include "story_export.h"
#include "tour.h"
#include "view_grid.h"
#include "view_still.h"
#include "viewer.h"
#include "zovhost/bcf_file.h"
#include "zovhost/languages.h"
#include "zovhost/scene_ground.h"
#include "zovhost/story_file.h"

namespace {

constexpr int EXIT_BAD_INPUT = 2;
constexpr int SMALLEST_SIDE = 64;
constexpr int LARGEST_SIDE = 8192;

struct Arguments {
  std::string model;
  bool headless = false;
  bool split = false;
  int views = 1;
  bool log = false;
  bool noSettings = false;
  std::string record;
  std::string replay;
  std::string size;
  std::string play;
  std::string language;
  std::string view;
  int rate = 6;
  double scale = 0.0;
  zovview::TourOptions tour;
};

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

CLI::Validator IsGround() {
  return CLI::Validator(
      [](const std::string& name) {
        return zovhost::FindSceneGround(name) != nullptr ? std::string() : "no such ground: " + name;
      },
      "NAME");
}

void AddSizeOption(CLI::App& app, Arguments& arguments) {
  app.add_option_function<std::string>(
         "--size",
         [&arguments](const std::string& text) {
           const std::string error = ReadSize(text, arguments.tour.width, arguments.tour.height);
           if (!error.empty()) throw CLI::ValidationError("--size", error);
         },
         "Of the window or the pictures, WxH, 1280x800 if not given")
      ->take_last();
}

void AddLookOptions(CLI::App& app, Arguments& arguments) {
  app.add_option("--ground", arguments.tour.ground, "Behind the model: gradient, light, dark or white")
      ->take_last()
      ->check(IsGround());
  app.add_option("--scale", arguments.scale, "Pixels for one point, 1 to 4; that of the display if not given")
      ->take_last()
      ->check(CLI::Range(1.0, 4.0));
  app.add_option("--language", arguments.language,
                 "That the program speaks, for instance de; that of the settings or the system if not given")
      ->take_last()
      ->check([](const std::string& tag) {
        return zovhost::FindLanguage(tag) != nullptr ? std::string() : "there is no language " + tag;
      });
  app.add_flag("--log", arguments.log,
               "A line on the error stream for each event, frame and rest of the window");
  app.add_flag("--no-settings", arguments.noSettings,
               "Neither reads nor writes the user's settings; with --record neither");
}

// The exit code when the program is to end here.
std::optional<int> ReadArguments(int argc, char** argv, Arguments& arguments) {
  CLI::App app(
      "Opens a 3D model: left drag is the chosen tool, at first orbit; middle drag pans, the wheel zooms.",
      "zovview");
  CLI::Option* const model = app.add_option(
      "MODEL", arguments.model, "glTF, OBJ, STL, PLY, FBX, DAE, 3MF or IFC file; without one a sample house");
  CLI::Option* const headless = app.add_flag("--headless", arguments.headless,
                                             "Without a window: write a tour as pictures, or a view as one");
  app.add_flag("--glance{" + std::string(zovview::WHOLE_GLANCE) + "}", arguments.tour.glance,
               "A tour of a few seconds instead of the whole one; --glance=cube, of one device")
      ->check(CLI::IsMember(zovview::GetGlanceNames()))
      ->needs(headless);
  AddSizeOption(app, arguments);
  app.add_option("--out", arguments.tour.directory,
                 "Where a tour or a story is written, out/tour or out/story if not given; or a view's .png")
      ->take_last();
  CLI::Option* const views = app.add_option("--views", arguments.views,
                                            "Views of the model beside each other, 1 to 4, 1 if not given")
                                 ->take_last()
                                 ->check(CLI::Range(1, zovview::MOST_VIEWS));
  CLI::Option* const split = app.add_flag("--split", arguments.split, "As --views 2")->excludes(views);
  CLI::Option* const record =
      app.add_option("--record", arguments.record, "Writes what is done into a recording")->take_last();
  CLI::Option* const replay = app.add_option("--replay", arguments.replay,
                                             "Plays a recording without a window, and prints the cameras")
                                  ->take_last()
                                  ->excludes(record)
                                  ->excludes(split)
                                  ->excludes(views)
                                  ->excludes(model)
                                  ->excludes(headless);
  record->excludes(split)->excludes(views)->excludes(headless);
  CLI::Option* const play =
      app.add_option("--play", arguments.play, "Opens a story and presents it; with --headless as pictures")
          ->take_last();
  app.add_option("--view", arguments.view,
                 "Shows a view first: the name of one that is kept, or a .bcfv or .bcf file")
      ->take_last()
      ->excludes(record)
      ->excludes(replay)
      ->excludes(play);
  app.add_option("--rate", arguments.rate, "Pictures for a second of the story, 6 if not given")
      ->take_last()
      ->needs(play)
      ->check(CLI::IsMember({1, 2, 3, 4, 5, 6, 10, 12, 15, 20, 30, 60}));
  play->excludes(split)->excludes(views)->excludes(record)->excludes(replay);
  AddLookOptions(app, arguments);
  app.set_version_flag("--version", "zovview " ZOVVIEW_VERSION);
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

void Note(const std::string& text) { std::fprintf(stderr, "zovview: %s\n", text.c_str()); }

// Where a film goes that is given no place.
constexpr const char* TOUR_FOLDER = "out/tour";
constexpr const char* STORY_FOLDER = "out/story";

int WriteFilm(const zovview::LoadedModel& model, const Arguments& arguments) {
  zovview::TourOptions tour = arguments.tour;
  if (arguments.play.empty()) {
    if (tour.directory.empty()) tour.directory = TOUR_FOLDER;
    return zovview::RunTour(model, tour);
  }
  if (tour.directory.empty()) tour.directory = STORY_FOLDER;
  return zovview::RunStory(model, arguments.play, {tour.directory, {tour.width, tour.height, arguments.rate}},
                           tour.ground);
}

int WriteView(const zovview::LoadedModel& model, const Arguments& arguments) {
  zovview::ViewStill still;
  still.view = arguments.view;
  still.out = arguments.tour.directory;
  still.width = arguments.tour.width;
  still.height = arguments.tour.height;
  if (arguments.scale > 0.0) still.scale = arguments.scale;
  still.ground = arguments.tour.ground;
  if (!arguments.noSettings) {
    still.ownViews = zovview::SettingsFile(zovview::SettingsFile::FindPlace()).GetModelFolder();
  }
  return zovview::WriteViewStill(model, still);
}

int WritePictures(const zovview::ModelSource& source, const Arguments& arguments, const std::string& note) {
  zovview::LoadedModel model;
  {
    zovview::ProgressLine line(zovview::ProgressLine::OffTerminal::Silent);
    model = zovview::LoadModel(source, [&line](double fraction, const char* what) {
      line.Show(fraction, what);
      return true;
    });
  }
  if (model.scene == nullptr) {
    Note(model.error);
    return EXIT_BAD_INPUT;
  }
  if (!note.empty()) Note(note);
  return arguments.view.empty() ? WriteFilm(model, arguments) : WriteView(model, arguments);
}

int ShowWindow(zovhost::Window& window, const zovview::ModelSource& source, const Arguments& arguments) {
  std::string error;
  std::unique_ptr<zovview::Recorder> recorder;
  if (!arguments.record.empty()) {
    recorder = zovview::Recorder::Create(arguments.record, error);
    if (recorder == nullptr) {
      Note(error);
      return EXIT_BAD_INPUT;
    }
  }
  // What is recorded is played with the settings of a first start.
  std::optional<zovview::SettingsFile> settings;
  if (!arguments.noSettings && recorder == nullptr) settings.emplace(zovview::SettingsFile::FindPlace());
  const zovview::Viewer::Options options = {arguments.split ? 2 : arguments.views,
                                            recorder.get(),
                                            arguments.log,
                                            settings.has_value() ? &*settings : nullptr,
                                            arguments.play,
                                            arguments.view,
                                            arguments.tour.ground,
                                            arguments.language};
  const int code = zovview::Viewer(window, options).Run(source);
  if (code != 0 || recorder == nullptr || recorder->Finish(error)) return code;
  Note(error);
  return 1;
}

// Before anything opens or loads.
bool IsStoryGood(const std::string& path) {
  std::string error;
  if (path.empty() || zovhost::StoryFile().Read(path, error) != nullptr) return true;
  Note(error);
  return false;
}

// Likewise; a name can only be looked for later.
bool IsViewGood(const std::string& view) {
  std::string error;
  std::vector<zovhost::BcfView> ignored;
  if (!zovhost::IsBcfFile(view) || zovhost::ReadBcfFile(view, ignored, error)) return true;
  Note(error);
  return false;
}

int RunProgram(int argc, char** argv) {
  Arguments arguments;
  if (const std::optional<int> code = ReadArguments(argc, argv, arguments)) return *code;
  if (!arguments.replay.empty()) return zovview::RunReplay(arguments.replay);
  if (!IsStoryGood(arguments.play) || !IsViewGood(arguments.view)) return EXIT_BAD_INPUT;
  const zovview::ModelSource source =
      arguments.model.empty() ? zovview::FindDefaultModel() : zovview::ModelSource{arguments.model};

  if (arguments.headless) return WritePictures(source, arguments, {});
  std::string error;
  zovhost::Window::Options options;
  options.title = "zovview";
  options.width = arguments.tour.width;
  options.height = arguments.tour.height;
  options.scale = arguments.scale;
  const std::unique_ptr<zovhost::Window> window = zovhost::Window::Create(options, error);
  if (window == nullptr && !arguments.record.empty()) {
    Note(error + ", so there is nothing to record");
    return 1;
  }
  if (window == nullptr) {
    const std::string instead = arguments.view.empty() ? "a tour" : "a picture of the view";
    return WritePictures(source, arguments, error + "; writing " + instead + " instead");
  }
  return ShowWindow(*window, source, arguments);
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return RunProgram(argc, argv);
  } catch (const std::exception& failure) {  // memory is short, a path cannot be had
    std::fputs("zovview: ", stderr);
    std::fputs(failure.what(), stderr);
    std::fputs("\n", stderr);
    return 1;
  }
}
