#include "zov/zov_orientor_observer.h"

#include <utility>

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

void zovOrientorObserverP::KeepWhileTold(std::list<std::shared_ptr<zovOrientorObserver>>& pointers) {
  if (tellings > 0) kept.splice(kept.end(), pointers);
}

// A stretch within which the owner is told something. It stays meanwhile by a pointer of its own, and by
// those that its cubes give up, which may own it through another object. One that the host ends all the same,
// since nothing but the host owns it, is not touched any more.
class zovOrientorObserverP::Telling {
 public:
  explicit Telling(zovOrientorObserverP& observer)
      : told(observer), stays(observer.lifeline), shared(observer.owner->weak_from_this().lock()) {
    ++told.tellings;
  }
  Telling(const Telling&) = delete;
  Telling& operator=(const Telling&) = delete;
  ~Telling() {
    if (stays && --told.tellings == 0) leaving.swap(told.kept);
  }

 private:
  zovOrientorObserverP& told;
  const Korvane::Lifeline::Watch stays;
  const std::shared_ptr<zovOrientorObserver> shared;
  std::list<std::shared_ptr<zovOrientorObserver>> leaving;
};

void zovOrientorObserverP::OnClicked(OrientorPart part) {
  const Telling here(*this);
  owner->on_clicked(static_cast<zovOrientorPart>(part));
}

void zovOrientorObserverP::OnDragBegin(OrientorPart part) {
  const Telling here(*this);
  owner->on_drag_begin(static_cast<zovOrientorPart>(part));
}

void zovOrientorObserverP::OnDragEnd() {
  const Telling here(*this);
  owner->on_drag_end();
}

void zovOrientorObserverP::OnPositionChange(OrientorParameters::Location location) {
  const Telling here(*this);
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
