#pragma once

#include <epoxy/gl.h>

#include <array>
#include <cstddef>
#include <vector>

#include "korvane/resource_ids.h"
#include "zovhost/resource_pack.h"

namespace zovhost {

/// The pictures of the pack that are on the graphics card. Those that take long to draw, as each of them is
/// painted for its size, are kept for a while after their release. Wrap all but Find of a loaded picture in
/// a GLStateGuard.
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
  /// The same for a width of `pixels` on a display of `scale`: a picture that is another one at each size is
  /// drawn anew when the size has changed, and keeps the new one. What fails keeps its old picture.
  GLuint FindSized(const ResourcePack& resources, int id, double pixels, double scale);
  /// How often a placeholder was found, and the number of the last one, -1 for none yet.
  int GetPlaceholderCount() const { return placeholderCount; }
  int GetLastPlaceholder() const { return lastPlaceholder; }
  /// How often a picture has been drawn.
  int GetDrawnCount() const { return drawnCount; }

 private:
  struct Slot {
    GLuint texture = 0;
    bool loaded = false;
    bool shows = false;     // a picture, not its placeholder
    int width = 0;          // pixels
    std::size_t bytes = 0;  // of a picture that is worth keeping
  };
  struct KeptPicture {
    int id = 0;
    Slot slot;
  };
  void Keep(int id, const Slot& slot);
  bool TakeKept(int id);
  void DropKept();
  bool LoadImage(const ResourcePack& resources, int id, const Image& image);
  static bool IsSlot(int id) {
    return id >= 0 && id < ResourcePack::pictureCount && id != Korvane::TEXTURE_NONE;
  }
  static void Replace(Slot& slot, const Slot& next);

  std::array<Slot, ResourcePack::pictureCount> slots;
  std::array<int, ResourcePack::pictureCount> sizes{};  // pixels that were wanted last; 0: any
  std::vector<KeptPicture> kept;                        // for the present pack and scale, oldest first
  int drawnCount = 0;
  int placeholderCount = 0;
  int lastPlaceholder = -1;
};

}  // namespace zovhost
