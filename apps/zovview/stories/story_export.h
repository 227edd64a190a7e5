#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "files/film_output.h"
#include "files/model_source.h"
#include "stories/story_film.h"

namespace zovview {

/// Makes a story into files: pictures, a sheet of them, an animation and a page.
class StoryExport {
 public:
  struct Options {
    std::filesystem::path directory;
    StoryFilm::Options film;
  };
  enum class State { Going, Done, Failed };

  /// The story is copied, the scene and its drawing are borrowed. Null, with one line in `error`, when it
  /// cannot begin.
  static std::unique_ptr<StoryExport> Begin(const Korvane::Story& story, const zovhost::Scene& scene,
                                            zovhost::GLSceneView& sceneView, const Options& options,
                                            std::string& error);

  /// Whether an export into this folder replaces files that are there.
  static bool ReplacesFiles(const std::filesystem::path& directory);

  /// One picture more; with the last, all files come to their place. One that is destroyed before that leaves
  /// nothing. `error` holds one line when it has failed.
  State TakeNext(std::string& error);
  double GetProgress() const { return film.GetProgress(); }
  /// What came of it, in one line.
  std::string Describe() const;

 private:
  StoryExport(const zovhost::Scene& scene, zovhost::GLSceneView& sceneView, const Options& options,
              const std::string& title);

  StoryFilm film;
  FilmOutput output;
  int picturesPerSheetPicture = 1;
};

/// Plays a story without a display and exports it, before a ground by its name, the first of the kit's for
/// none. The exit code of the program; what fails is told in one line on the error stream.
int RunStory(const LoadedModel& model, const std::filesystem::path& story,
             const StoryExport::Options& options, const std::string& ground = {});

}  // namespace zovview
