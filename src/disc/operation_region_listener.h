#pragma once

#include <span>

#include "disc/disc_region_listener.h"
#include "disc/wedge_operation.h"
#include "korvane/renderer_loans.h"

namespace Korvane {

/// A wedge that drives an operation of the hub by itself, and draws a gauge of it. Derived ones say what a
/// press begins.
class OperationRegionListener : public DiscRegionListener {
 public:
  /// The pictures of the gauge are held while the menu is active.
  OperationRegionListener(TrackMenu* menu, HelmDisc* helmDisc, OperationType type,
                          std::span<const TextureID> gaugeTextures)
      : DiscRegionListener(menu, helmDisc), operation(type), textures(gaugeTextures) {}

  void OnMouseMove(int x, int y) override {
    DiscRegionListener::OnMouseMove(x, y);
    operation.Move(x, y);
  }
  void OnTrackMenuActivate(bool active) override {
    DiscRegionListener::OnTrackMenuActivate(active);
    if (!active) operation.End();
    textures.Want(active ? GetRenderer() : nullptr);
  }

 protected:
  WedgeOperation operation;

 private:
  TextureLoan textures;
};

}  // namespace Korvane
