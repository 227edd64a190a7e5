#include "korvane/cam3d_controller_observer.h"

namespace Korvane {

Cam3DControllerObserver::Cam3DControllerObserver() = default;
Cam3DControllerObserver::~Cam3DControllerObserver() = default;

}  // namespace Korvane
