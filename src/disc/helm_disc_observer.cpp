#include "korvane/helm_disc_observer.h"

namespace Korvane {

HelmDiscObserver::~HelmDiscObserver() = default;

}  // namespace Korvane
