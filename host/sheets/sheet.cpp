#include "sheet.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <iterator>

#include "zovhost/scene_ground.h"

namespace zovsheets {

using zovhost::Image;

namespace {

using Colour = std::array<double, 3>;  // 0 to 1

constexpr std::string_view names[] = {"white", "black", "gradient", "busy", "light", "dark"};

Colour GradientAt(double, double v) { return {0.62 - 0.3 * v, 0.62 - 0.3 * v, 0.64 - 0.3 * v}; }

Colour SceneGroundAt(Ground ground, double v) {
  const zovhost::SceneGround* const found = zovhost::FindSceneGround(GetName(ground));
  const zovhost::SceneGround of = found != nullptr ? *found : zovhost::SceneGround();
  const auto channel = [&](std::size_t i) { return of.top[i] + v * (of.bottom[i] - of.top[i]); };
  return {channel(0), channel(1), channel(2)};
}

// Scattered, but the same in each run.
double Noise(int x, int y) {
  std::uint32_t h = static_cast<std::uint32_t>(x) * 374761393U + static_cast<std::uint32_t>(y) * 668265263U;
  h = (h ^ (h >> 13)) * 1274126177U;
  return static_cast<double>(h & 0xFFFFU) / 65535.0;
}

// Something like a photographed wall of bricks in the sun: edges, hues and grain of all sizes.
Colour BusyAt(int x, int y) {
  const int row = y / 9;
  const int brick = (x + row % 2 * 11) / 22;
  const bool mortar = y % 9 == 0 || (x + row % 2 * 11) % 22 == 0;
  const double grain = 0.22 * (Noise(x, y) - 0.5);
  const double sun = 0.25 * std::sin(x * 0.021 + y * 0.034);
  const double tone = mortar ? 0.82 : 0.30 + 0.35 * Noise(brick, row + 1000);
  const auto channel = [&](double tint) { return std::clamp(tone * tint + grain + sun, 0.0, 1.0); };
  return mortar ? Colour{channel(1.0), channel(0.97), channel(0.9)}
                : Colour{channel(1.35), channel(0.85), channel(0.65)};
}

Colour ColourAt(Ground ground, int x, int y, int width, int height) {
  if (ground == Ground::White) return {1.0, 1.0, 1.0};
  if (ground == Ground::Black) return {0.0, 0.0, 0.0};
  if (ground == Ground::Gradient) return GradientAt((x + 0.5) / width, (y + 0.5) / height);
  if (ground != Ground::Busy) return SceneGroundAt(ground, (y + 0.5) / height);
  return BusyAt(x, y);
}

std::uint8_t ToByte(double value) { return static_cast<std::uint8_t>(std::lround(value * 255.0)); }

std::size_t At(const Image& image, int x, int y) {
  return 4 *
         (static_cast<std::size_t>(y) * static_cast<std::size_t>(image.width) + static_cast<std::size_t>(x));
}

}  // namespace

std::string_view GetName(Ground ground) { return names[static_cast<std::size_t>(ground)]; }

std::optional<Ground> FindGround(std::string_view name) {
  const auto* const found = std::find(std::begin(names), std::end(names), name);
  if (found == std::end(names)) return std::nullopt;
  return static_cast<Ground>(found - std::begin(names));
}

Image MakeGround(Ground ground, int width, int height) {
  Image image{width, height, {}};
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      for (const double channel : ColourAt(ground, x, y, width, height)) {
        image.rgba.push_back(ToByte(channel));
      }
      image.rgba.push_back(255);
    }
  }
  return image;
}

void Lay(const Image& picture, int x, int y, int magnification, Image& sheet) {
  const int right = std::min(sheet.width, x + picture.width * magnification);
  const int bottom = std::min(sheet.height, y + picture.height * magnification);
  for (int row = std::max(y, 0); row < bottom; ++row) {
    for (int column = std::max(x, 0); column < right; ++column) {
      const std::uint8_t* from =
          picture.rgba.data() + At(picture, (column - x) / magnification, (row - y) / magnification);
      std::uint8_t* to = sheet.rgba.data() + At(sheet, column, row);
      const int alpha = from[3];
      for (int i = 0; i < 3; ++i) {
        to[i] = static_cast<std::uint8_t>((from[i] * alpha + to[i] * (255 - alpha) + 127) / 255);
      }
    }
  }
}

}  // namespace zovsheets
