#pragma once

#include <span>

#include "korvane/rewind_history.h"

namespace Korvane {

/// The camera between elements, by their weights. `angular`: where two of them weigh, the view turns from the
/// one to the other on the sphere. False, with the camera untouched, where none weighs, and where the result
/// would not be finite.
bool InterpolateElements(std::span<const RewindHistory::HistoryElement> elements, bool angular,
                         CameraParameters& camera);

}  // namespace Korvane
