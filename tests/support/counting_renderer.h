#pragma once

#include "support/recording_renderer.h"

/// A host that draws nothing and counts the calls of a frame instead of remembering them, so that it
/// allocates nothing in a draw.
class CountingRenderer : public RecordingRenderer {
 public:
  bool BeginRender(const Korvane::Box2& /*viewport*/, const Korvane::CameraParameters& /*camera*/,
                   RenderMode /*mode*/) override {
    return Count(begun);
  }
  bool EndRender() override { return Count(ended); }
  bool RenderGeometry(unsigned count, const float* /*vertices*/, const float* /*texCoords*/,
                      const MaterialParams* /*material*/) override {
    vertexCount += count;
    return Count(drawn);
  }
  bool Render(Korvane::ResourceIcon3D* /*icon*/) override { return Count(icons); }
  bool Render(Korvane::DynamicIcon2D* /*icon*/) override { return Count(icons); }
  bool Render(Korvane::ResourceIcon2D* /*icon*/) override { return Count(icons); }
  bool SetCursorPosition(int /*x*/, int /*y*/) override { return Count(jumps); }
  bool SetCursorIcon(Korvane::CursorID /*id*/) override { return Count(cursors); }

  long begun = 0;
  long ended = 0;
  long drawn = 0;        // calls of RenderGeometry
  long vertexCount = 0;  // in them
  long icons = 0;
  long jumps = 0;    // of the pointer
  long cursors = 0;  // its changes of shape

 private:
  static bool Count(long& calls) {
    ++calls;
    return true;
  }
};
