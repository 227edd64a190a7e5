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
  };
  std::unordered_map<int, Entry> entries;
  int nextID = 1;
};

}  // namespace zovhost
