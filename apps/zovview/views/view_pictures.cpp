#include "views/view_pictures.h"

#include <epoxy/gl.h>

#include <cmath>

#include "views/bound_target.h"
#include "views/picture_look.h"
#include "zovhost/offscreen_target.h"
#include "zovhost/view_hub.h"

namespace zovview {

namespace {

constexpr int SAMPLES = 4;

bool DrawInto(const zovhost::OffscreenTarget& target, zovhost::GLSceneView& sceneView,
              const Korvane::CameraParameters& camera) {
  const PictureLook look(sceneView);
  return sceneView.Draw(camera, target.GetWidth(), target.GetHeight());
}

bool Create(zovhost::OffscreenTarget& target, int width) {
  return target.Create(width, static_cast<int>(std::lround(width / ViewPictures::PROPORTIONS)), SAMPLES);
}

}  // namespace

ViewPictures::~ViewPictures() { Clear(); }

unsigned ViewPictures::Find(const std::string& key, const Korvane::CameraParameters& camera, int width) {
  const auto found = textures.find(key);
  if (found != textures.end() && found->second.width == width) return found->second.texture;
  wishes[key] = {camera, width};
  return found != textures.end() ? found->second.texture : 0;
}

void ViewPictures::Forget(const std::string& key) {
  wishes.erase(key);
  const auto found = textures.find(key);
  if (found == textures.end()) return;
  glDeleteTextures(1, &found->second.texture);
  textures.erase(found);
}

void ViewPictures::Clear() {
  wishes.clear();
  for (const auto& [key, picture] : textures) glDeleteTextures(1, &picture.texture);
  textures.clear();
}

void ViewPictures::Renew() {
  for (auto& [key, picture] : textures) picture.width = 0;
}

// One that cannot be drawn is not wanted again and again: its texture is none.
void ViewPictures::DrawNext() {
  if (wishes.empty()) return;
  const auto [key, wish] = *wishes.begin();
  Forget(key);
  zovhost::OffscreenTarget target;
  Picture picture = {0, wish.width};
  Korvane::CameraParameters camera = wish.camera;
  zovhost::ShapeToViewport(camera, freeView.proportions, 1.0);
  if (Create(target, wish.width)) {
    const BoundTarget bound(target);
    if (bound.IsGood() && DrawInto(target, sceneView, freeView.Frame(camera, PROPORTIONS)) &&
        target.Resolve()) {
      picture.texture = target.TakeTexture();
    }
  }
  textures[key] = picture;
}

bool ViewPictures::Draw(const Korvane::CameraParameters& camera, int width, zovhost::Image& picture) {
  zovhost::OffscreenTarget target;
  if (!Create(target, width)) return false;
  const BoundTarget bound(target);
  Korvane::CameraParameters shaped = camera;
  zovhost::ShapeToViewport(shaped, target.GetWidth(), target.GetHeight());
  return bound.IsGood() && DrawInto(target, sceneView, shaped) && target.Read(picture);
}

}  // namespace zovview
