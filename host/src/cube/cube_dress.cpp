#include "zovhost/cube_dress.h"

#include <cmath>

namespace zovhost {

namespace {

// The screen sizes in points. Seen from a corner the cube itself takes a little more than half of one.
constexpr double large = 240.0;
constexpr double normal = 180.0;
constexpr double small = 120.0;
constexpr double tiny = 60.0;
constexpr float ofViewport = 0.225F;
constexpr double stillPress = 4.0;  // a drag begins beyond it
constexpr double largestScale = 16.0;

// Below this the words of the faces lose themselves on a black view.
constexpr float opacityAtRest = 0.8F;
// The arrows beside a face that is looked along keep clear of the ring: below its near side when that is seen
// edgewise, within it from above.
constexpr float arrowSize = 0.019F;
constexpr float arrowOffset = 0.053F;

}  // namespace

void DressCube(Korvane::OrientorParameters& parameters, double scale) {
  parameters.min_opacity = opacityAtRest;
  parameters.opacity_text = 1.0F;
  parameters.auto_screen_size = ofViewport;
  parameters.arrow_size = arrowSize;
  parameters.arrow_offset = arrowOffset;
  ResizeCube(parameters, scale);
}

void ResizeCube(Korvane::OrientorParameters& parameters, double scale) {
  const double usable = scale >= 1.0 && scale <= largestScale ? scale : 1.0;
  const auto pixels = [usable](double points) { return static_cast<int>(std::lround(points * usable)); };
  parameters.large_screen_size = pixels(large);
  parameters.normal_screen_size = pixels(normal);
  parameters.small_screen_size = pixels(small);
  parameters.tiny_screen_size = pixels(tiny);
  parameters.drag_dead_zone = pixels(stillPress);
}

}  // namespace zovhost
