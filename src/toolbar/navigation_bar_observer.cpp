#include "korvane/navigation_bar_observer.h"

namespace Korvane {

NavigationBarObserver::~NavigationBarObserver() = default;

}  // namespace Korvane
