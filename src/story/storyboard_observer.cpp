#include "korvane/storyboard_observer.h"

namespace Korvane {

StoryboardObserver::~StoryboardObserver() = default;

}  // namespace Korvane
