#pragma once

#include <list>
#include <memory>

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

  /// Takes over pointers to the owner that a cube gives up while it is being told, until it has been told;
  /// leaves them where they are while it is not.
  void KeepWhileTold(std::list<std::shared_ptr<zovOrientorObserver>>& pointers);

  zovOrientorP* GetCube() const { return cube.Get(); }

 private:
  class Telling;

  quObserverPtr<zovOrientorObserver> owner;
  Korvane::Borrowed<zovOrientorP> cube;
  std::list<Korvane::Borrowed<zovOrientorP>> tellers;
  int tellings = 0;  // under way
  std::list<std::shared_ptr<zovOrientorObserver>> kept;
  Korvane::Lifeline lifeline;
};
