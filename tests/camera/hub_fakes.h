#pragma once

#include <functional>
#include <string>
#include <utility>

#include "korvane/operation.h"
#include "korvane/shot.h"
#include "support/memory_hub.h"

/// An observer that writes what it is told into the hub's log and then does what the test wants.
class FakeObserver : public Korvane::OperationObserver {
 public:
  FakeObserver(MemoryHub& watched, std::string whoAmI) : hub(watched), name(std::move(whoAmI)) {}

  void OnBeginOperation(Korvane::OperationType type, const Korvane::CameraParameters& camera) override {
    ++begun;
    lastCamera = camera;
    hub.Record(name + ": begin " + std::to_string(type));
    if (onBegin) onBegin(type);
  }
  void OnPerformOperation(Korvane::OperationType type, double dt,
                          const Korvane::CameraParameters& camera) override {
    ++performed;
    lastDelta = dt;
    lastCamera = camera;
    hub.Record(name + ": perform " + std::to_string(type));
    if (onPerform) onPerform(type);
  }
  void OnEndOperation(Korvane::OperationType type) override {
    ++ended;
    hub.Record(name + ": end " + std::to_string(type));
    if (onEnd) onEnd(type);
  }

  std::function<void(Korvane::OperationType)> onBegin;
  std::function<void(Korvane::OperationType)> onPerform;
  std::function<void(Korvane::OperationType)> onEnd;
  int begun = 0;
  int performed = 0;
  int ended = 0;
  double lastDelta = -1.0;
  Korvane::CameraParameters lastCamera;

 private:
  MemoryHub& hub;
  std::string name;
};

/// A shot that does what the test wants and writes its life into the hub's log.
class FakeShot : public Korvane::Shot {
 public:
  using Perform = std::function<bool(double, Korvane::CameraParameters&)>;

  explicit FakeShot(MemoryHub& owner, Perform toPerform = nullptr, std::string whoAmI = "shot")
      : hub(owner), perform(std::move(toPerform)), name(std::move(whoAmI)) {}
  ~FakeShot() override { hub.Record(name + (performing ? ": destroyed while performing" : ": destroyed")); }

  void InitShot(const Korvane::CameraOperations* operations) override {
    initialisedWith = operations;
    hub.Record(name + ": init");
  }
  bool PerformShot(double dt, Korvane::CameraParameters& camera) override {
    hub.Record(name + ": perform");
    lastDelta = dt;
    performing = true;
    const bool goesOn = !perform || perform(dt, camera);
    performing = false;
    return goesOn;
  }

  const Korvane::CameraOperations* initialisedWith = nullptr;
  double lastDelta = -1.0;

 private:
  MemoryHub& hub;
  Perform perform;
  std::string name;
  bool performing = false;
};

class FakeShotObserver : public Korvane::ShotObserver {
 public:
  explicit FakeShotObserver(MemoryHub& watched) : hub(watched) {}

  void OnEndShot(Korvane::Shot* shot, const Korvane::CameraParameters& camera) override {
    ++told;
    lastShot = shot;
    lastCamera = camera;
    hub.Record("shot observer");
    if (onEnd) onEnd();
  }

  std::function<void()> onEnd;
  int told = 0;
  Korvane::Shot* lastShot = nullptr;
  Korvane::CameraParameters lastCamera;

 private:
  MemoryHub& hub;
};
