#pragma once

#include "cube/cube_model.h"
#include "korvane/renderer.h"

namespace Korvane {

/// Takes the quads of the cube, four vertices each: draws them, offers them to a pick, or keeps them.
class QuadSink {
 public:
  virtual ~QuadSink() = default;
  virtual void Take(int id, unsigned vertexCount, const float* vertices, const float* texCoords) = 0;

 protected:
  QuadSink() = default;
  QuadSink(const QuadSink&) = delete;
  QuadSink& operator=(const QuadSink&) = delete;
};

/// What the mouse can hit is larger, here and there, than what the eye sees.
enum class QuadUse { Drawn, Offered };

class DrawSink final : public QuadSink {
 public:
  DrawSink(Renderer& target, const Renderer::MaterialParams& quadMaterial)
      : renderer(target), material(quadMaterial) {}

  // The directions of the ring can be hit but are never drawn: the ring is one picture.
  void Take(int id, unsigned vertexCount, const float* vertices, const float* texCoords) override {
    if (id >= COMPASS_RING_FROM) return;
    renderer.RenderGeometry(vertexCount, vertices, texCoords, &material);
  }

 private:
  Renderer& renderer;
  const Renderer::MaterialParams& material;
};

class PickSink final : public QuadSink {
 public:
  explicit PickSink(Renderer& target) : renderer(target) {}

  void Take(int id, unsigned vertexCount, const float* vertices, const float* /*texCoords*/) override {
    renderer.RenderSelectionGeometry(vertexCount, vertices, id);
  }

 private:
  Renderer& renderer;
};

}  // namespace Korvane
