#include "korvane/story.h"

namespace Korvane {

Sequence::Sequence() = default;
Sequence::~Sequence() = default;

Story::Story() = default;
Story::~Story() = default;

}  // namespace Korvane
