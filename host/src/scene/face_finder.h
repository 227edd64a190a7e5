#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>

#include "zovhost/scene.h"

namespace zovhost {

class SideIndex;

/// Where a search ends without a face.
struct FaceLimits {
  std::size_t found = SIZE_MAX;   ///< Triangles of the face, or without sides in its plane.
  std::size_t looked = SIZE_MAX;  ///< Triangles of the mesh, where all are looked at.
  const std::atomic<bool>* stopped = nullptr;
};

/// Fills in the triangles and corners of the face of a mesh around one of its triangles: by walking from side
/// to side with the `sides` of the mesh, or without, when null, by looking at all of its triangles. The face
/// is the same. False, with triangles and corners emptied, where a limit is reached.
bool FindFaceOf(const SceneMesh& mesh, const SideIndex* sides, std::uint32_t triangle, SceneFace& face,
                const FaceLimits& limits = {});

}  // namespace zovhost
