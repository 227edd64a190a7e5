#include "stories/story_export.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <utility>

#include "files/progress_line.h"
#include "korvane/story.h"
#include "views/preferences.h"
#include "zovhost/phrases.h"
#include "zovhost/story_file.h"
#include "zovhost/wide_text.h"
#include "zovhost/window.h"

namespace zovview {

namespace {

constexpr int PICTURES_OF_SHEET = 48;  // at most
constexpr const char* ANIMATION = "story.webp";
constexpr int EXIT_BAD_STORY = 2;
constexpr int EXIT_INTERRUPTED = 130;

std::string FindTitle(const Korvane::Story& story) {
  return story.GetName().empty() ? "A story" : zovhost::WideToUtf8(story.GetName());
}

int MeasurePictureTime(int picturesPerSecond) {
  return static_cast<int>(std::lround(1000.0 / picturesPerSecond));
}

std::unique_ptr<Korvane::Story> Copy(const Korvane::Story& story, std::string& error) {
  zovhost::StoryFile file;
  const std::string text = file.Format(story, error);
  return text.empty() ? nullptr : file.Parse(text, error);
}

int Fail(const std::string& error, int code) {
  std::fprintf(stderr, "zovview: %s\n", error.c_str());
  return code;
}

}  // namespace

StoryExport::StoryExport(const zovhost::Scene& scene, zovhost::GLSceneView& sceneView, const Options& options,
                         const std::string& title)
    : film(scene, sceneView, options.film),
      output(options.directory, {title, "Played by the storyboard", ANIMATION,
                                 MeasurePictureTime(options.film.picturesPerSecond)}) {}

std::unique_ptr<StoryExport> StoryExport::Begin(const Korvane::Story& story, const zovhost::Scene& scene,
                                                zovhost::GLSceneView& sceneView, const Options& options,
                                                std::string& error) {
  std::unique_ptr<Korvane::Story> copy = Copy(story, error);
  if (copy == nullptr) return nullptr;
  std::unique_ptr<StoryExport> exported(new StoryExport(scene, sceneView, options, FindTitle(story)));
  if (!exported->film.Begin(std::move(copy), error) || !exported->output.Begin(error)) return nullptr;
  exported->picturesPerSheetPicture =
      std::max(1, (exported->film.GetLength() + PICTURES_OF_SHEET - 1) / PICTURES_OF_SHEET);
  return exported;
}

StoryExport::State StoryExport::TakeNext(std::string& error) {
  zovhost::Image picture;
  error.clear();
  if (film.TakeNext(picture, error)) {
    const bool onSheet = output.GetPictureCount() % picturesPerSheetPicture == 0;
    return output.Add(std::move(picture), {}, onSheet, error) ? State::Going : State::Failed;
  }
  return error.empty() && output.Publish(error) ? State::Done : State::Failed;
}

bool StoryExport::ReplacesFiles(const std::filesystem::path& directory) {
  return FilmOutput::ReplacesFiles(directory, ANIMATION);
}

std::string StoryExport::Describe() const {
  return zovhost::GetPhrases().SayPlain(
      "The story is in {}: {} pictures, contact_sheet.png, story.webp and index.html",
      {output.GetDirectory().string(), std::to_string(output.GetPictureCount())});
}

int RunStory(const LoadedModel& model, const std::filesystem::path& file, const StoryExport::Options& options,
             const std::string& ground) {
  std::string error;
  const std::unique_ptr<Korvane::Story> story = zovhost::StoryFile().Read(file, error);
  if (story == nullptr) return Fail(error, EXIT_BAD_STORY);
  zovhost::Window::Options windowOptions;
  windowOptions.offscreen = true;
  const std::unique_ptr<zovhost::Window> window = zovhost::Window::Create(windowOptions, error);
  if (window == nullptr) return Fail(error, 1);
  zovhost::GLSceneView sceneView;
  sceneView.GetOptions().ground = FindGround(ground);
  if (!sceneView.SetScene(model.scene.get())) return Fail("the graphics memory does not hold this model", 1);

  const std::unique_ptr<StoryExport> exported =
      StoryExport::Begin(*story, *model.scene, sceneView, options, error);
  if (exported == nullptr) return Fail(error, 1);
  ProgressLine progress(ProgressLine::OffTerminal::Quarters);
  StoryExport::State state = StoryExport::State::Going;
  while (state == StoryExport::State::Going) {
    if (!window->Step(0)) return EXIT_INTERRUPTED;
    progress.Show(exported->GetProgress(), "playing the story");
    state = exported->TakeNext(error);
  }
  progress.Clear();
  if (state == StoryExport::State::Failed) return Fail(error, 1);
  std::printf("%s\n", exported->Describe().c_str());
  return 0;
}

}  // namespace zovview
