#pragma once

#include <array>
#include <vector>

#include "zovhost/scene.h"

namespace zovhost {

class WorkReport;

/// A line that shows the form of a mesh, an open border or a fold, and two faces that meet in it: of a border
/// the same one twice, of many those that differ most. Of a solid the first one lies to the left of who looks
/// from outside along the line, the other one to the right; of many it has the same one twice.
struct Crease {
  struct Face {
    std::array<float, 3> inwards = {};  ///< From the line into the face, across the line, of unit length.
    float breadth = 0.0F;               ///< How far the face reaches from there, all in all.
  };
  std::array<float, 3> from = {};
  std::array<float, 3> to = {};
  std::array<Face, 2> faces;
};

/// What the edges of a mesh tell about it. Vertices at one place count as one, whatever their normals.
struct MeshEdges {
  std::vector<Crease> creases;
  /// It encloses solids: nobody outside of them sees the back of a triangle. False where that is not certain.
  bool solid = false;
};
/// With a `report` it can be broken off, by a throw.
MeshEdges FindEdges(const SceneMesh& mesh, const WorkReport* report = nullptr);

}  // namespace zovhost
