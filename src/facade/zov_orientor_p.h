#pragma once

#include "korvane/lifeline.h"
#include "korvane/orientor.h"
#include "zov/qu_observer_ptr.h"
#include "zov/zov_enums.h"
#include "zov/zov_orientor.h"

class zovRendererP;

/// The cube within a zovOrientor: what the library calls goes to the owner, and so to a host's override.
class zovOrientorP : public Korvane::Orientor {
 public:
  explicit zovOrientorP(zovOrientor& outside) : owner(&outside) {}

  bool Create() override;
  bool Destroy() override;
  void Draw() override;
  bool OnMouseMove(int x, int y) override;
  bool OnLeftMouseDown(int x, int y) override;
  bool OnLeftMouseUp(int x, int y) override;
  bool OpenMenu() override;
  void OpenUCSMenu() override;
  void GoToHomeView() override;

  /// The cube has an icon that this renderer has lent.
  bool ShowsLabelOf(const zovRendererP& maker);

  void InjectClick(zovOrientorPart part) { Orientor::InjectClick(static_cast<int>(part)); }

  /// For observers, which may outlive the cube.
  Korvane::Lifeline& GetLifeline() { return lifeline; }
  quObserverPtr<zovOrientor> GetOwner() const { return owner; }

 private:
  quObserverPtr<zovOrientor> owner;
  Korvane::Lifeline lifeline;
};
