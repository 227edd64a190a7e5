#pragma once

#include <epoxy/gl.h>

#include <array>

#include "zovhost/resource_pack.h"

namespace zovhost {

/// The pictures of the pack that are on the graphics card. Wrap all but Find of a loaded picture in a
/// GLStateGuard.
class TextureStore {
 public:
  /// False when the picture cannot be drawn or the graphics card takes it not; worth another try later.
  bool Load(const ResourcePack& resources, int id, double scale);
  void Release(int id);
  /// Draws what is loaded anew for another scale; what fails keeps its old picture.
  void Reload(const ResourcePack& resources, double scale);
  void Clear();

  /// A picture to draw with: a placeholder, made at first need, for one that is not loaded. 0 for a number
  /// out of range.
  GLuint Find(int id);

 private:
  struct Slot {
    GLuint texture = 0;
    bool loaded = false;  // else a placeholder
  };
  static bool IsSlot(int id) { return id >= 0 && id < ResourcePack::pictureCount; }
  void Replace(Slot& slot, GLuint texture, bool loaded);

  std::array<Slot, ResourcePack::pictureCount> slots;
};

}  // namespace zovhost
