#pragma once

#include "support/recording_renderer.h"

/// A host that draws nothing and counts the calls of a frame instead of remembering them, so that it
/// allocates nothing in a draw.
class CountingRenderer : public RecordingRenderer {
 public:
  bool BeginRender(const Korvane::Box2& /*viewport*/, const Korvane::CameraParameters& /*camera*/,
                   RenderMode /*mode*/) override {
    ++begun;
    return true;
  }
  bool EndRender() override {
    ++ended;
    return true;
  }
  bool RenderGeometry(unsigned count, const float* /*vertices*/, const float* /*texCoords*/,
                      const MaterialParams* /*material*/) override {
    ++drawn;
    vertexCount += count;
    return true;
  }
  using RecordingRenderer::Render;
  bool Render(Korvane::DynamicIcon2D* /*icon*/) override {
    ++icons;
    return true;
  }

  long begun = 0;
  long ended = 0;
  long drawn = 0;        // calls of RenderGeometry
  long vertexCount = 0;  // in them
  long icons = 0;
};
