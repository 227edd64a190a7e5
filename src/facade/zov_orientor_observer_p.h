#pragma once

#include <list>

#include "facade/zov_orientor_p.h"
#include "korvane/lifeline.h"
#include "korvane/orientor_observer.h"
#include "zov/qu_observer_ptr.h"
#include "zov/zov_orientor_observer.h"

/// The observer within a zovOrientorObserver. It keeps the owner for as long as it tells it something.
class zovOrientorObserverP : public Korvane::OrientorObserver {
 public:
  zovOrientorObserverP(zovOrientorObserver& outside, zovOrientorP& observed);
  /// Leaves all cubes, as a host must have it that shares an observer without owning it.
  ~zovOrientorObserverP() override;

  /// A cube that shares the owner, and must hear of its end.
  void BeToldBy(zovOrientorP& teller);

  void OnClicked(OrientorPart part) override;
  void OnDragBegin(OrientorPart part) override;
  void OnDragEnd() override;
  void OnPositionChange(Korvane::OrientorParameters::Location location) override;

  zovOrientorP* GetCube() const { return cube.Get(); }

 private:
  quObserverPtr<zovOrientorObserver> owner;
  Korvane::Borrowed<zovOrientorP> cube;
  std::list<Korvane::Borrowed<zovOrientorP>> tellers;
};
