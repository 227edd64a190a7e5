#pragma once

#include "support/memory_hub.h"

/// A hub that lets a host act in every call of the host's side: `host.Call()`.
template <class Host>
class MischievousHub : public MemoryHub {
 public:
  MischievousHub(Host& theHost, const Korvane::CameraParameters& start) : MemoryHub(start), host(theHost) {}

  void ApplyCameraParameters(const Korvane::CameraParameters& camera) override {
    broken = broken || !camera.IsFinite();
    view = camera;
    host.Call();
  }
  void QueryCameraParameters(Korvane::CameraParameters& camera) const override {
    camera = view;
    host.Call();
  }
  void RequestApplicationUpdate() override { host.Call(); }
  void RecalculateSelectionBounds() override { host.Call(); }
  void RecalculateGlobalBounds() override { host.Call(); }

  bool broken = false;  // has been given a camera that is none

 protected:
  void OnBeginShot(Korvane::Shot* /*shot*/) override { host.Call(); }
  void OnEndShot(Korvane::Shot* /*shot*/) override { host.Call(); }

 private:
  Host& host;
};
