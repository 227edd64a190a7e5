#include "cube/orientor_transition_shot_observer.h"

#include "korvane/orientor.h"

namespace Korvane {

void OrientorTransitionShotObserver::OnEndShot(Shot* /*shot*/, const CameraParameters& /*camera*/) {
  watching = false;
  orientor->OnTransitionEnded();
}

}  // namespace Korvane
