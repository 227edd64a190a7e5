#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "korvane/vector3.h"
#include "scene/work_report.h"
#include "zovhost/scene.h"

namespace zovhost {

/// Small parts of one material that stand near each other, to be placed and joined into one mesh around
/// `origin`, so that they are one draw.
struct PartBatch {
  struct Member {
    std::size_t part = 0;
    std::size_t firstIndex = 0;  // of the mesh of the batch
    std::size_t indexCount = 0;
    std::uint32_t firstVertex = 0;
    bool mirrored = false;  // its triangles were turned around
  };
  int material = 0;
  std::size_t vertexCount = 0;
  std::size_t indexCount = 0;
  bool hasTexCoords = false;
  bool hasColours = false;
  Korvane::Vector3 origin;  // in the world
  double radius = 0.0;      // of a sphere around the origin that holds all
  std::vector<Member> members;
};

/// Of a scene of very many parts; none for others. `mayGather` tells of each part whether it may be taken.
std::vector<PartBatch> GatherParts(const Scene& scene, const std::vector<bool>& mayGather,
                                   WorkReport& report);
/// The mesh of a batch. Made one at a time, as they are uploaded: all together are a copy of the scene.
SceneMesh MakeBatchMesh(const Scene& scene, const PartBatch& batch);

}  // namespace zovhost
