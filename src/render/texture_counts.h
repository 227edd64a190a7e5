#pragma once

#include <cstddef>
#include <span>

#include "foundation/out_of_memory.h"
#include "korvane/renderer.h"

namespace Korvane {

/// Counts each of them up; where memory runs out none, which is false.
inline bool CountTexturesUp(Renderer& renderer, std::span<const TextureID> textures) {
  std::size_t counted = 0;
  const bool all = OrFail([&] {
    for (; counted < textures.size(); ++counted) {
      renderer.IncrementTextureUsage(textures[counted]);
    }
    return true;
  });
  while (!all && counted > 0) {
    renderer.DecrementTextureUsage(textures[--counted]);
  }
  return all;
}

inline void CountTexturesDown(Renderer& renderer, std::span<const TextureID> textures) {
  for (const TextureID id : textures) {
    renderer.DecrementTextureUsage(id);
  }
}

}  // namespace Korvane
