#pragma once

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstring>
#include <vector>

#include "support/counting_renderer.h"

/// The yardstick of a draw: a copy of as much as it hands to the renderer.
class FrameCopy {
 public:
  /// `draw()` draws a frame with the renderer.
  template <class Draw>
  void Restart(const CountingRenderer& renderer, const Draw& draw) {
    const long before = renderer.vertexCount;
    draw();
    frameVertices = renderer.vertexCount - before;
    copied = renderer.vertexCount;
    source.assign(static_cast<std::size_t>(frameVertices) * FLOATS_A_VERTEX, 1.0F);
    target = source;
  }

  void Step() {
    std::memcpy(target.data(), source.data(), source.size() * sizeof(float));
    benchmark::DoNotOptimize(target.data());
    benchmark::ClobberMemory();
    copied += frameVertices;
  }

  /// The frames that the renderer was handed are as many, of the same size.
  bool Agrees(const CountingRenderer& renderer) const {
    return renderer.vertexCount == copied && frameVertices > 0;
  }

 private:
  static constexpr std::size_t FLOATS_A_VERTEX = 5;  // a place and a texture coordinate

  long frameVertices = 0;
  long copied = 0;
  std::vector<float> source;
  std::vector<float> target;
};
