#pragma once

#include <algorithm>

#include "korvane/renderer.h"
#include "zov/zov_enums.h"

/// How geometry is to be drawn, a value.
class zovMaterialParameters {
 public:
  /// Opaque white, without texture, plain quads, lines of one pixel.
  zovMaterialParameters() = default;
  explicit zovMaterialParameters(const Korvane::Renderer::MaterialParams& values) : record(values) {}

  // Red, green, blue, opacity, each 0 to 1, into and from an array of four. Null is ignored.
  void colour(float values[4]) const {
    if (values != nullptr) std::copy_n(record.colour, 4, values);
  }
  void set_colour(const float values[4]) {
    if (values != nullptr) std::copy_n(values, 4, record.colour);
  }
  zovTextureID texture_id() const { return static_cast<zovTextureID>(record.texture); }
  void set_texture_id(zovTextureID value) { record.texture = static_cast<Korvane::TextureID>(value); }
  /// As the library has it, also a number without a name.
  zovDrawMode draw_mode() const { return static_cast<zovDrawMode>(record.drawMode); }
  void set_draw_mode(zovDrawMode value) { record.drawMode = static_cast<int>(value); }
  /// Pixels.
  float line_width() const { return record.lineWidth; }
  void set_line_width(float value) { record.lineWidth = value; }

  /// The record within, for a host that works with both layers.
  const Korvane::Renderer::MaterialParams& korvane() const { return record; }

 private:
  Korvane::Renderer::MaterialParams record;
};
