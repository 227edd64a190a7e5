#pragma once

#include <epoxy/gl.h>

#include <memory>
#include <unordered_map>

#include "korvane/icon2d.h"

namespace zovhost {

/// The icons of texts and screenshots, with their pictures. An icon's number is its key, so copies of an
/// icon draw the same picture.
class IconStore {
 public:
  /// Takes the texture over. `width` and `height` in pixels.
  Korvane::DynamicIcon2D* Add(GLuint texture, int width, int height);
  /// From now on the icon is the caption of a small disc: see FindPlace. `gap` in pixels.
  void SetRiding(int id, double gap);
  /// Where an icon is drawn: in its bounds. The caption of a small disc is given bounds twice as wide and
  /// high as the disc, to be drawn at any size of it; it keeps its own size and stands above the disc by its
  /// gap.
  Korvane::Box2 FindPlace(const Korvane::DynamicIcon2D& icon) const;
  /// 0 for an icon that is not here or has lost its picture.
  GLuint FindTexture(int id) const;
  /// False for a pointer that is none of ours; it is not followed.
  bool Destroy(const Korvane::DynamicIcon2D* icon);
  /// The icons stay, for whoever still holds one, and draw nothing.
  void DestroyTextures();

 private:
  struct Entry {
    std::unique_ptr<Korvane::DynamicIcon2D> icon;
    GLuint texture;
    Korvane::Vector2 half;  // of its own size
    bool rides = false;
    double gap = 0.0;
  };
  std::unordered_map<int, Entry> entries;
  int nextID = 1;
};

}  // namespace zovhost
