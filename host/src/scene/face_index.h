#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <vector>

#include "scene/background_work.h"
#include "zovhost/scene.h"

namespace zovhost {

/// Which triangles of a mesh share which sides: so that a face is found by walking from triangle to triangle.
/// Sides are the same by the places of their ends, whatever their vertices.
class SideIndex {
 public:
  /// False when it was stopped.
  bool Build(const SceneMesh& mesh, const std::atomic<bool>& stopped);

  /// The next of the sides that lie where side `side` lies, around in a ring; itself when it is alone. Side i
  /// is that from corner i % 3 of triangle i / 3 to the next.
  std::uint32_t GetNext(std::uint32_t side) const { return next[side]; }

 private:
  std::vector<std::uint32_t> next;
};

/// The sides of all meshes that are large enough to need it, made once by a thread of its own.
class FaceIndex {
 public:
  /// Begins. `meshes` outlive this.
  explicit FaceIndex(const std::vector<SceneMesh>& meshes);

  /// Null where it is not there yet, or not needed.
  const SideIndex* Find(std::size_t mesh) const;
  bool IsFinished() const { return work.IsFinished(); }

 private:
  bool Build(const std::atomic<bool>& stopped);

  const std::vector<SceneMesh>& meshes;
  std::vector<SideIndex> sides;
  std::vector<std::atomic<bool>> ready;
  BackgroundWork work;  // last: its thread uses the others
};

}  // namespace zovhost
