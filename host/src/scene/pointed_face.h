#pragma once

#include <cstdint>
#include <memory>

#include "zovhost/scene.h"

namespace zovhost {

/// The face under a pointer. A small one is found at once; a large one is looked for by a thread of its own,
/// and until it is found there is none.
class PointedFace {
 public:
  PointedFace();
  ~PointedFace();
  PointedFace(const PointedFace&) = delete;
  PointedFace& operator=(const PointedFace&) = delete;

  /// The pointer has moved; null: to no face. True when the face is another one. The scene must stay until
  /// the pointer is at none.
  bool Point(const Scene& scene, const Scene::Hit* hit);
  /// Takes what has been found meanwhile. True when the face is another one.
  bool Update();
  /// Update may have more to take.
  bool IsSearching() const { return search != nullptr; }
  /// Null for none.
  const SceneFace* Get() const { return face.part >= 0 ? &face : nullptr; }

 private:
  struct Search;

  SceneFace face;
  std::unique_ptr<Search> search;  // null: none is going on
};

}  // namespace zovhost
