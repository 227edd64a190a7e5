#pragma once

#include <cstddef>
#include <new>
#include <span>

#include "korvane/renderer.h"

namespace Korvane {

/// Counts each of them up; where memory runs out none, which is false.
inline bool CountTexturesUp(Renderer& renderer, std::span<const TextureID> textures) {
  std::size_t counted = 0;
  try {
    for (; counted < textures.size(); ++counted) renderer.IncrementTextureUsage(textures[counted]);
  } catch (const std::bad_alloc&) {
    while (counted > 0) renderer.DecrementTextureUsage(textures[--counted]);
    return false;
  }
  return true;
}

inline void CountTexturesDown(Renderer& renderer, std::span<const TextureID> textures) {
  for (const TextureID id : textures) renderer.DecrementTextureUsage(id);
}

}  // namespace Korvane
