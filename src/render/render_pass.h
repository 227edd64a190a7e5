#pragma once

#include <cassert>

#include "korvane/camera_operations.h"
#include "korvane/renderer.h"
#include "render/full_viewport.h"

namespace Korvane {

/// A draw pass, open for as long as this lives; false when there is none, or no renderer. It keeps the
/// renderer in which it was opened, whatever becomes meanwhile of who opened it; the renderer itself must
/// outlive it.
class RenderPass {
 public:
  RenderPass(Renderer* renderer, const Box2& viewport, const CameraParameters& camera,
             Renderer::RenderMode mode) {
    if (renderer == nullptr) return;
    const bool begun = renderer->BeginRender(viewport, camera, mode);
    if (!begun) return;
    opened = renderer;
    alive.Attach(renderer->GetLifeline());
  }
  RenderPass(const RenderPass&) = delete;
  RenderPass& operator=(const RenderPass&) = delete;
  ~RenderPass() {
    if (opened == nullptr) return;
    assert(alive && "a renderer that is destroyed within its own pass");
    opened->EndRender();
  }

  explicit operator bool() const { return opened != nullptr; }
  /// Only in an open pass.
  Renderer* operator->() const { return opened; }

 private:
  Renderer* opened = nullptr;
  Lifeline::Watch alive;
};

/// A pass over the whole view of a hub, with its camera.
class FullViewPass : public RenderPass {
 public:
  FullViewPass(Renderer* renderer, const CameraOperations& hub,
               Renderer::RenderMode mode = Renderer::RENDER_OVERLAY)
      : RenderPass(renderer, FullViewport(hub.GetApplicationParameters()), hub.GetCameraParameters(), mode) {}
};

}  // namespace Korvane
