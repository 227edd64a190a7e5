// Views that were kept with a model, and one that goes to another program and comes back.
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "zovhost/bcf_file.h"
#include "zovhost/named_views_file.h"

namespace {

Korvane::CameraParameters LookAtDoor() {
  Korvane::CameraParameters camera;
  camera.eye = {4.0, -9.0, 1.7};
  camera.centre = camera.pivot = {4.0, 0.0, 1.7};
  camera.up = {0.0, 0.0, 1.0};
  camera.SetHorizontalFOV(25.0);
  camera.SetVerticalFOV(17.5);
  camera.ortho_width = 8.4;
  camera.ortho_height = 5.7;
  return camera;
}

bool KeepView(const std::filesystem::path& model, const Korvane::CameraParameters& camera,
              std::string& error) {
  zovhost::NamedViewsFile file(model, {});
  zovhost::NamedViews views;
  if (!file.Read(views, error)) return false;
  views.Add("The door", camera);
  return file.Keep(views, error);
}

bool Export(const zovhost::NamedViews& views, const std::filesystem::path& to, std::string& error) {
  std::vector<zovhost::BcfView> exported;
  for (const zovhost::NamedView& view : views.Get()) {
    zovhost::BcfView out{view.name, {}};
    out.viewpoint.guid = view.guid;
    if (!zovhost::CameraToBcf(view.camera, {}, out.viewpoint, error)) return false;
    exported.push_back(out);
  }
  return zovhost::WriteBcfFile(to, exported, error);
}

bool Import(const std::filesystem::path& from, zovhost::NamedViews& views, std::string& error) {
  std::vector<zovhost::BcfView> read;
  if (!zovhost::ReadBcfFile(from, read, error)) return false;
  for (const zovhost::BcfView& view : read) {
    Korvane::CameraParameters camera;
    const double distance = 10.0;  // to what is looked at, which only the model knows
    if (!zovhost::CameraFromBcf(view.viewpoint, {}, distance, camera)) continue;
    views.Add(view.name, camera, view.viewpoint.guid);
  }
  return true;
}

}  // namespace

int main() {
  const char* const exchanged = "doors.bcf";
  std::string error;
  zovhost::NamedViewsFile file("house.ifc", {});
  zovhost::NamedViews kept;
  zovhost::NamedViews back;
  const bool good = KeepView("house.ifc", LookAtDoor(), error) && file.Read(kept, error) &&
                    Export(kept, exchanged, error) && Import(exchanged, back, error);
  if (!good) std::fprintf(stderr, "%s\n", error.c_str());
  std::remove(file.GetPlace().string().c_str());
  std::remove(exchanged);
  const bool same = good && back.GetCount() == 1 && back.Get()[0].name == "The door" &&
                    back.Get()[0].guid == kept.Get()[0].guid && back.Get()[0].camera.eye == LookAtDoor().eye;
  return same ? 0 : 1;
}
