#pragma once

#include <cstddef>
#include <map>
#include <string>

#include "korvane/camera_parameters.h"
#include "views/free_view.h"
#include "zovhost/gl_scene_view.h"
#include "zovhost/image.h"

namespace zovview {

/// Small pictures of views, drawn one at a time when somebody wants them.
class ViewPictures {
 public:
  /// Width through height.
  static constexpr double PROPORTIONS = 1.6;

  /// Borrowed, as is its context.
  explicit ViewPictures(zovhost::GLSceneView& view) : sceneView(view) {}
  ~ViewPictures();
  ViewPictures(const ViewPictures&) = delete;
  ViewPictures& operator=(const ViewPictures&) = delete;

  /// Which part of a view the pictures show that are drawn from now on; the whole one at first. Not those in
  /// memory.
  void SetFreeView(const FreeView& part) { freeView = part; }
  /// A texture of the picture under a key, rows from the bottom; 0 while it is not drawn, which it then soon
  /// is.
  unsigned Find(const std::string& key, const Korvane::CameraParameters& camera, int width);
  void Forget(const std::string& key);
  void Clear();
  /// What they show looks different now: each is drawn anew when it is asked for, and shows until then.
  void Renew();
  /// Draws one of those that are wanted.
  void DrawNext();
  bool IsWanted() const { return !wishes.empty(); }
  std::size_t GetCount() const { return textures.size(); }

  /// A picture of a view, in memory. False when it cannot be drawn.
  bool Draw(const Korvane::CameraParameters& camera, int width, zovhost::Image& picture);

 private:
  struct Picture {
    unsigned texture = 0;
    int width = 0;
  };
  struct Wish {
    Korvane::CameraParameters camera;
    int width = 0;
  };

  zovhost::GLSceneView& sceneView;
  FreeView freeView = {PROPORTIONS};
  std::map<std::string, Picture> textures;
  std::map<std::string, Wish> wishes;
};

}  // namespace zovview
