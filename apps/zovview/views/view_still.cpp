#include "views/view_still.h"

#include <cstdio>
#include <memory>
#include <optional>

#include "views/picture_file.h"
#include "views/preferences.h"
#include "views/view_list.h"
#include "zovhost/gl_scene_view.h"
#include "zovhost/start_camera.h"
#include "zovhost/view_hub.h"
#include "zovhost/window.h"

namespace zovview {

namespace fs = std::filesystem;

namespace {

constexpr int EXIT_NOT_WRITTEN = 1;
constexpr int EXIT_NO_VIEW = 2;
constexpr const char* FOLDER = "out";
constexpr const char* NAME = "view.png";

void Tell(const std::string& line) { std::fprintf(stderr, "zovview: %s\n", line.c_str()); }

int Fail(const std::string& error) {
  Tell(error);
  return EXIT_NOT_WRITTEN;
}

fs::path FindPlace(const fs::path& out) {
  if (out.extension() == ".png") return out;
  return (out.empty() ? fs::path(FOLDER) : out) / NAME;
}

// Nothing is asked for and nothing flies: the list is read, and not kept.
std::optional<Korvane::CameraParameters> FindCamera(const LoadedModel& model, const ViewStill& still,
                                                    zovhost::GLSceneView& sceneView) {
  ViewList list({[] {}, Tell, [] { return fs::path(); }, [](const FileQuestion&) {},
                 [](const Korvane::CameraParameters&) {}},
                sceneView);
  list.SetModel(model.scene.get(), model.source.file, still.ownViews);
  return list.FindCamera(still.view);
}

}  // namespace

int WriteViewStill(const LoadedModel& model, const ViewStill& still) {
  std::string error;
  zovhost::Window::Options windowOptions;
  windowOptions.offscreen = true;
  const std::unique_ptr<zovhost::Window> window = zovhost::Window::Create(windowOptions, error);
  if (window == nullptr) return Fail(error);
  zovhost::GLSceneView sceneView;
  const std::optional<Korvane::CameraParameters> camera = FindCamera(model, still, sceneView);
  if (!camera.has_value()) return EXIT_NO_VIEW;
  if (!sceneView.SetScene(model.scene.get())) return Fail("the graphics memory does not hold this model");
  sceneView.GetOptions().ground = FindGround(still.ground);

  zovhost::ViewHub hub([] {});
  hub.SetViewportSize(still.width, still.height);
  zovhost::EnterScene(hub, *model.scene);
  hub.ApplyCameraParameters(*camera);
  const fs::path file = fs::absolute(FindPlace(still.out)).lexically_normal();
  std::error_code failure;
  fs::create_directories(file.parent_path(), failure);
  if (failure) return Fail(file.parent_path().string() + ": " + failure.message());
  if (!WritePictureFile(file, hub, sceneView, -1, 1, still.scale, error)) return Fail(error);
  std::printf("The view \"%s\" of %s is in %s\n", still.view.c_str(), model.source.GetName().c_str(),
              file.string().c_str());
  return 0;
}

}  // namespace zovview
