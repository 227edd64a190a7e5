#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "files/file_question.h"
#include "views/view_pictures.h"
#include "zovhost/bcf_file.h"
#include "zovhost/named_views_file.h"

namespace zovhost {
class Scene;
}

namespace zovview {

/// The views that the user keeps of a model: by name, with pictures, in a file of the model's, and in files
/// that other programs read.
class ViewList {
 public:
  struct Surroundings {
    std::function<void()> requestFrame;
    /// One line for the user.
    std::function<void(const std::string& line)> tell;
    /// Where files go at first.
    std::function<std::filesystem::path()> findFolder;
    std::function<void(FileQuestion question)> ask;
    std::function<void(const Korvane::CameraParameters& camera)> fly;
    /// Of a view that was kept, by its name. Empty: nobody minds.
    std::function<void(const std::string& name)> kept = {};
  };

  /// Draws its pictures by `sceneView`, which is borrowed with its context.
  ViewList(Surroundings around, zovhost::GLSceneView& sceneView);

  /// The views of another model, after those of the present one have been kept. The scene is borrowed; the
  /// file is empty for a generated one, the folder for nobody's own.
  void SetModel(const zovhost::Scene* ofScene, const std::filesystem::path& file,
                const std::filesystem::path& ownFolder);
  const zovhost::NamedViews& GetViews() const { return views; }
  ViewPictures& GetPictures() { return pictures; }

  // ---- edits; the file follows with Save ----

  /// Under a name of its own, at the end. False, which is told, when there are too many.
  bool Add(const Korvane::CameraParameters& camera);
  bool Rename(std::size_t index, const std::string& name);
  bool Move(std::size_t from, std::size_t to);
  bool Remove(std::size_t index);
  /// Writes what has changed since the last time. What fails is told.
  void Save();

  void Fly(std::size_t index);
  /// The first that was added since the last call, which the user wants to see.
  std::optional<std::size_t> TakeNews();

  /// A picture more, before a frame.
  void Advance();

  // ---- files ----

  /// A file of viewpoints, or of views, by its name.
  static bool IsViewsFile(const std::filesystem::path& file);
  /// Adds the views of such a file. One that is there already, by its identifier, gets the camera of the
  /// file. False, with one line in `error`, where nothing was added; where it was not all, that is told.
  /// `first` is the first of them.
  bool Import(const std::filesystem::path& file, std::size_t& first, std::string& error);
  /// Import, and a flight to the first. What fails is told.
  void Open(const std::filesystem::path& file);
  /// That of a view by its name, or the first of a file, whose views are not added. Nothing where there is
  /// none, which is told.
  std::optional<Korvane::CameraParameters> FindCamera(const std::string& nameOrFile);
  /// All views. Containers have pictures of them. False with one line in `error`.
  bool Export(const std::filesystem::path& file, std::string& error);
  /// Into the files that the user names.
  void AskImport();
  void AskExport();

 private:
  // `count`: of the views in the file, also those that cannot be taken.
  bool ReadViews(const std::filesystem::path& file, zovhost::NamedViews& read, std::size_t& count,
                 std::string& error) const;
  bool FormatView(const zovhost::NamedView& view, bool withPicture, zovhost::BcfView& out,
                  std::string& error);
  bool Take(const zovhost::NamedView& view, std::size_t& index);
  double FindDistance(const zovhost::BcfViewpoint& viewpoint) const;
  void NoteChange();

  const Surroundings surroundings;
  ViewPictures pictures;
  const zovhost::Scene* scene = nullptr;
  std::filesystem::path model;
  zovhost::NamedViewsFile file{{}, {}};
  zovhost::NamedViews views;
  bool changed = false;  // since the last Save
  std::optional<std::size_t> news;
};

}  // namespace zovview
