#include "zov/zov_orientor_observer.h"

#include "facade/zov_orientor_observer_p.h"
#include "zov/zov_orientor.h"

using Korvane::OrientorParameters;

zovOrientorObserverP::zovOrientorObserverP(zovOrientorObserver& outside, zovOrientorP& observed)
    : OrientorObserver(&observed), owner(&outside), cube(&observed) {}

// It may have been added to its cube without the facade, too.
zovOrientorObserverP::~zovOrientorObserverP() {
  if (zovOrientorP* const observed = cube.Get()) observed->RemoveObserver(this);
  for (const auto& teller : tellers) {
    zovOrientorP* const each = teller.Get();
    if (each == nullptr) continue;
    each->RemoveObserver(this);
    each->GetOwner()->forget(owner.get());
  }
}

void zovOrientorObserverP::BeToldBy(zovOrientorP& teller) {
  tellers.remove_if([&](const auto& each) { return each.Get() == nullptr || each.Get() == &teller; });
  tellers.emplace_back(&teller);
}

void zovOrientorObserverP::OnClicked(OrientorPart part) {
  const auto kept = owner->weak_from_this().lock();
  owner->on_clicked(static_cast<zovOrientorPart>(part));
}

void zovOrientorObserverP::OnDragBegin(OrientorPart part) {
  const auto kept = owner->weak_from_this().lock();
  owner->on_drag_begin(static_cast<zovOrientorPart>(part));
}

void zovOrientorObserverP::OnDragEnd() {
  const auto kept = owner->weak_from_this().lock();
  owner->on_drag_end();
}

void zovOrientorObserverP::OnPositionChange(OrientorParameters::Location location) {
  const auto kept = owner->weak_from_this().lock();
  owner->on_position_change(static_cast<zovOrientorLocation>(location));
}

zovOrientorObserver::zovOrientorObserver(zovOrientor& orientor)
    : inner(std::make_unique<zovOrientorObserverP>(*this, *orientor.inner)) {}
zovOrientorObserver::~zovOrientorObserver() = default;

Korvane::OrientorObserver& zovOrientorObserver::korvane() const { return *inner; }

quObserverPtr<zovOrientor> zovOrientorObserver::get_orientor() const {
  const zovOrientorP* const cube = inner->GetCube();
  return cube != nullptr ? cube->GetOwner() : nullptr;
}
