// zovview: opens a model and shows it moved by the library's own operations, in a window or, without a
// display, as a tour of pictures.
#include <cstdio>
#include <exception>
#include <optional>
#include <string>

#include "arguments.h"
#include "files/model_source.h"
#include "files/progress_line.h"
#include "korvane/story.h"
#include "recordings/recorder.h"
#include "recordings/replay.h"
#include "settings/settings_file.h"
#include "stories/story_export.h"
#include "tour/tour.h"
#include "viewer/viewer.h"
#include "views/view_still.h"
#include "zovhost/bcf_file.h"
#include "zovhost/story_file.h"

namespace {

using zovview::Arguments;
using zovview::EXIT_BAD_INPUT;

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
  if (const std::optional<int> code = zovview::ReadArguments(argc, argv, arguments)) return *code;
  if (!arguments.replay.empty()) return zovview::RunReplay(arguments.replay, arguments.record);
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
