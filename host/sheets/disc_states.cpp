#include "disc_states.h"

#include <algorithm>
#include <cmath>

namespace zovsheets {

using zovhost::Image;
using zovhost::ResourcePack;

namespace {

constexpr int margin = 6;  // points, around each disc

constexpr DiscKind kinds[] = {
    {"view-object-disc", 16, 18, 24, 128, 64},         {"tour-building-disc", 25, 27, 33, 128, 64},
    {"full-navigation-disc", 34, 36, 46, 128, 64},     {"two-d-disc", 69, 71, 76, 128, 64},
    {"mini-view-object-disc", -1, 48, 52, 64, 32},     {"mini-tour-building-disc", -1, 54, 58, 64, 32},
    {"mini-full-navigation-disc", -1, 60, 68, 64, 32}, {"welcome-advanced", -1, 77, 82, 512, 512},
    {"welcome-basic", -1, 84, 87, 512, 512},
};

}  // namespace

std::span<const DiscKind> GetDiscKinds() { return kinds; }

bool PaintDiscs(const ResourcePack& pack, const DiscKind& kind, const DiscShow& show, Image& image) {
  const int count = kind.last - kind.first + 1;
  const int columns = std::min(count, show.columns);
  const int rows = (count + columns - 1) / columns;
  const int step = static_cast<int>(std::lround((show.points + margin) * show.scale));
  const int inset = static_cast<int>(std::lround(margin * show.scale)) / 2;
  image = MakeGround(show.ground, columns * step, rows * step);
  for (int i = 0; i < count; ++i) {
    const int x = i % columns * step + inset;
    const int y = i / columns * step + inset;
    Image layer;
    if (!pack.RenderSizedPicture(kind.first + i, show.points, show.scale, layer)) return false;
    Lay(layer, x, y, 1, image);
    if (kind.overlay < 0) continue;
    if (!pack.RenderSizedPicture(kind.overlay, show.points, show.scale, layer)) return false;
    Lay(layer, x, y, 1, image);
  }
  return true;
}

}  // namespace zovsheets
