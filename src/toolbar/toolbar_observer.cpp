#include "korvane/toolbar_observer.h"

namespace Korvane {

ToolbarObserver::~ToolbarObserver() = default;

}  // namespace Korvane
