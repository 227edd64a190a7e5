#include "painted.h"

#include <epoxy/gl.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "zovhost/offscreen_target.h"

namespace zovsheets {

using zovhost::Image;

namespace {

bool DrawOn(float brightness, const std::function<void()>& draw, const zovhost::OffscreenTarget& target,
            Image& image) {
  if (!target.Bind()) return false;
  glClearColor(brightness, brightness, brightness, 1.0F);
  glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
  draw();
  return target.Read(image);
}

// What was drawn on black and on white tells how much of any ground shows through: where white shows
// through by t, the pictures differ by t.
void LayDrawn(const Image& onBlack, const Image& onWhite, Image& ground) {
  for (std::size_t i = 0; i < ground.rgba.size(); ++i) {
    if (i % 4 == 3) continue;
    const int through = std::max(0, onWhite.rgba[i] - onBlack.rgba[i]);
    const int value = onBlack.rgba[i] + (ground.rgba[i] * through + 127) / 255;
    ground.rgba[i] = static_cast<std::uint8_t>(std::min(value, 255));
  }
}

}  // namespace

bool PaintOnGround(const std::function<void()>& draw, Ground ground, int width, int height, Image& image) {
  zovhost::OffscreenTarget target;
  Image onBlack;
  Image onWhite;
  if (!target.Create(width, height)) return false;
  if (!DrawOn(0.0F, draw, target, onBlack) || !DrawOn(1.0F, draw, target, onWhite)) return false;
  image = MakeGround(ground, width, height);
  LayDrawn(onBlack, onWhite, image);
  return true;
}

}  // namespace zovsheets
