#include "views/view_list.h"

#include <utility>

#include "zovhost/phrases.h"
#include "zovhost/picture.h"
#include "zovhost/scene.h"
#include "zovhost/start_camera.h"
#include "zovhost/whole_file.h"

namespace zovview {

namespace fs = std::filesystem;
using Korvane::CameraParameters;
using Korvane::Vector3;

namespace {

constexpr const char* VIEWS_ENDING = ".views.json";
constexpr std::size_t LARGEST_VIEWS_FILE = std::size_t{16} << 20;  // bytes
constexpr int SNAPSHOT_WIDTH = 640;                                // pixels
constexpr const char* EXPORT_NAME = "views.bcf";
constexpr double SOME_DISTANCE = 1.0;  // where it does not matter

zovhost::ModelAxes AxesOf(const zovhost::Scene& scene) {
  return {scene.GetUpDirection(), zovhost::ChooseFront(scene.GetUpDirection())};
}

// As a view that rests.
CameraParameters AtRest(CameraParameters camera) {
  camera.projection_transition = camera.IsOrthographic() ? 1.0 : 0.0;
  return camera;
}

// A number more than there are.
std::string NameNext(const zovhost::NamedViews& views) {
  return zovhost::GetPhrases().SayPlain("View {}", {std::to_string(views.GetCount() + 1)});
}

std::string DescribeShare(const fs::path& file, std::size_t taken, std::size_t count) {
  return file.string() + ": only " + std::to_string(taken) + " of " + std::to_string(count) +
         " views were added";
}

}  // namespace

ViewList::ViewList(Surroundings around, zovhost::GLSceneView& sceneView)
    : surroundings(std::move(around)), pictures(sceneView) {}

void ViewList::SetModel(const zovhost::Scene* ofScene, const fs::path& ofFile, const fs::path& ownFolder) {
  Save();
  scene = ofScene;
  model = ofFile;
  pictures.Clear();
  news.reset();
  file = zovhost::NamedViewsFile(ofFile, ownFolder);
  std::string error;
  if (!file.Read(views, error)) surroundings.tell(error);
}

// ---- edits ----

void ViewList::NoteChange() {
  changed = true;
  surroundings.requestFrame();
}

bool ViewList::Add(const CameraParameters& camera) {
  const std::optional<std::size_t> added = views.Add(NameNext(views), AtRest(camera));
  if (!added.has_value()) {
    surroundings.tell("there are as many views as a list holds");
    return false;
  }
  news = added;
  if (surroundings.kept) surroundings.kept(views.Get()[*added].name);
  NoteChange();
  return true;
}

bool ViewList::Rename(std::size_t index, const std::string& name) {
  NoteChange();
  return views.Rename(index, name);
}

bool ViewList::Move(std::size_t from, std::size_t to) {
  NoteChange();
  return views.Move(from, to);
}

bool ViewList::Remove(std::size_t index) {
  if (index >= views.GetCount()) return false;
  pictures.Forget(views.Get()[index].guid);
  NoteChange();
  return views.Remove(index);
}

void ViewList::Save() {
  if (!std::exchange(changed, false)) return;
  std::string error;
  if (!file.Keep(views, error)) surroundings.tell(error);
}

void ViewList::Fly(std::size_t index) {
  if (index < views.GetCount()) surroundings.fly(views.Get()[index].camera);
}

std::optional<std::size_t> ViewList::TakeNews() { return std::exchange(news, std::nullopt); }

void ViewList::Advance() { pictures.DrawNext(); }

// ---- in ----

bool ViewList::IsViewsFile(const fs::path& file) {
  const std::string name = file.filename().string();
  const std::string ending = VIEWS_ENDING;
  const bool isOurs = name.size() >= ending.size() && name.ends_with(ending);
  return isOurs || zovhost::IsBcfFile(file);
}

// To what the view shows in its middle, or else to the depth of the model.
double ViewList::FindDistance(const zovhost::BcfViewpoint& viewpoint) const {
  CameraParameters camera;
  if (!zovhost::CameraFromBcf(viewpoint, AxesOf(*scene), SOME_DISTANCE, camera)) return SOME_DISTANCE;
  const Vector3 forward = (camera.centre - camera.eye).Normalize();
  zovhost::Scene::Hit hit;
  if (scene->Intersect(camera.eye, forward, hit) && hit.distance > 0.0) return hit.distance;
  const double depth = (scene->GetCentre() - camera.eye).Dot(forward);
  return depth > 0.0 ? depth : scene->GetRadius();
}

bool ViewList::ReadViews(const fs::path& from, zovhost::NamedViews& read, std::size_t& count,
                         std::string& error) const {
  if (!zovhost::IsBcfFile(from)) {
    std::string text;
    if (!zovhost::ReadWholeFile(from, LARGEST_VIEWS_FILE, text, error)) return false;
    const bool parsed = zovhost::ParseNamedViews(text, read, error);
    count = read.GetCount();
    if (parsed) return true;
    error.insert(0, from.string() + ": ");
    return false;
  }
  std::vector<zovhost::BcfView> exchanged;
  if (!zovhost::ReadBcfFile(from, exchanged, error)) return false;
  count = exchanged.size();
  for (const zovhost::BcfView& view : exchanged) {
    CameraParameters camera;
    if (!zovhost::CameraFromBcf(view.viewpoint, AxesOf(*scene), FindDistance(view.viewpoint), camera))
      continue;
    read.Add(view.name.empty() ? NameNext(read) : view.name, camera, view.viewpoint.guid);
  }
  return true;
}

bool ViewList::Take(const zovhost::NamedView& view, std::size_t& index) {
  const std::optional<std::size_t> present = views.FindGuid(view.guid);
  if (present.has_value()) pictures.Forget(view.guid);
  if (present.has_value()) views.SetCamera(*present, view.camera);
  const std::optional<std::size_t> added =
      present.has_value() ? present : views.Add(view.name, view.camera, view.guid);
  if (added.has_value()) index = *added;
  return added.has_value();
}

bool ViewList::Import(const fs::path& from, std::size_t& first, std::string& error) {
  zovhost::NamedViews read;
  std::size_t count = 0;
  if (scene == nullptr) {
    error = from.string() + ": there is no model to show it";
    return false;
  }
  if (!ReadViews(from, read, count, error)) return false;
  std::size_t taken = 0;
  for (const zovhost::NamedView& view : read.Get()) {
    std::size_t index = 0;
    if (!Take(view, index)) break;
    if (taken++ == 0) first = index;
  }
  NoteChange();
  if (taken == 0) {
    error = from.string() + ": it has no views, or there are too many already";
    return false;
  }
  news = first;
  if (taken < count) surroundings.tell(DescribeShare(from, taken, count));
  return true;
}

void ViewList::Open(const fs::path& from) {
  std::size_t first = 0;
  std::string error;
  if (Import(from, first, error)) return Fly(first);
  surroundings.tell(error);
}

std::optional<CameraParameters> ViewList::FindCamera(const std::string& nameOrFile) {
  zovhost::NamedViews read;
  std::size_t count = 0;
  std::string error = nameOrFile + ": no view of this model has that name";
  const std::optional<std::size_t> named = views.FindName(nameOrFile);
  if (named.has_value()) return views.Get()[*named].camera;
  const bool isFile = IsViewsFile(nameOrFile) && scene != nullptr;
  if (isFile && ReadViews(nameOrFile, read, count, error)) {
    if (read.GetCount() > 0) return read.Get().front().camera;
    error = nameOrFile + ": it has no views, or there are too many already";
  }
  surroundings.tell(error);
  return std::nullopt;
}

void ViewList::AskImport() {
  surroundings.ask({"Add the views of a file: .bcfv, .bcf, .bcfzip or .views.json", "Import", false,
                    surroundings.findFolder() / EXPORT_NAME,
                    [this](const fs::path& from, std::string& error) {
                      std::size_t first = 0;
                      if (!Import(from, first, error)) return false;
                      Fly(first);
                      return true;
                    }});
}

// ---- out ----

bool ViewList::FormatView(const zovhost::NamedView& view, bool withPicture, zovhost::BcfView& out,
                          std::string& error) {
  out.name = view.name;
  out.viewpoint.guid = view.guid;
  if (!zovhost::CameraToBcf(view.camera, AxesOf(*scene), out.viewpoint, error)) {
    error.insert(0, view.name + ": ");
    return false;
  }
  zovhost::Image picture;
  if (!withPicture) return true;
  if (pictures.Draw(view.camera, SNAPSHOT_WIDTH, picture))
    return zovhost::EncodePng(picture, out.snapshot, error);
  error = "the graphics memory does not hold a picture of a view";
  return false;
}

bool ViewList::Export(const fs::path& to, std::string& error) {
  if (scene == nullptr || views.GetCount() == 0) {
    error = "there are no views to export";
    return false;
  }
  if (!zovhost::IsBcfFile(to)) {
    error = to.string() + ": its name ends neither in .bcf nor in .bcfv";
    return false;
  }
  std::vector<zovhost::BcfView> exported;
  for (const zovhost::NamedView& view : views.Get()) {
    if (!FormatView(view, zovhost::IsBcfContainer(to), exported.emplace_back(), error)) return false;
  }
  return zovhost::WriteBcfFile(to, exported, error);
}

void ViewList::AskExport() {
  const std::string name = model.empty() ? EXPORT_NAME : model.stem().string() + "-" + EXPORT_NAME;
  surroundings.ask({"Export the views, for other programs, as", "Export", true,
                    surroundings.findFolder() / name,
                    [this](const fs::path& to, std::string& error) { return Export(to, error); }});
}

}  // namespace zovview
