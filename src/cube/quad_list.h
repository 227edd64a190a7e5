#pragma once

#include <vector>

#include "cube/quad_sink.h"
#include "korvane/vector2.h"

namespace Korvane {

struct CameraParameters;

/// Keeps quads, so that they can be offered again and again, and tells where they show.
class QuadList final : public QuadSink {
 public:
  /// Room for so many lists of quads and vertices in all; within these nothing is allocated later.
  QuadList(unsigned runCount, unsigned vertexCount);

  void Clear();
  void Take(int id, unsigned vertexCount, const float* vertices, const float* texCoords) override;

  /// Hands on those with a number below `end`, in the order in which they came.
  void Offer(int end, QuadSink& sink) const;
  /// The corners of a number, one after another.
  std::vector<Vector3> GetCorners(int id) const;

  /// The smallest rectangle that holds all of them, in the scale of a pass, -1 to 1 across it. Everything,
  /// for quads of which some corner is not before the eye.
  struct Bounds {
    Vector2 low;
    Vector2 high;

    void Join(const Bounds& other);
    bool Holds(const Vector2& local) const {
      return !(local.x < low.x || local.x > high.x || local.y < low.y || local.y > high.y);
    }
  };
  Bounds GetBounds(const CameraParameters& camera) const;

 private:
  struct Run {
    int id;
    unsigned first;  // vertex
    unsigned count;
  };

  std::vector<Run> runs;
  std::vector<float> vertices;
};

}  // namespace Korvane
