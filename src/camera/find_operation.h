#pragma once

#include "korvane/camera_operations.h"

namespace Korvane {

/// The operation of a type that is active in a hub, as the kind that it is. Null where none is, and for null.
template <class Kind>
Kind* FindOperation(const CameraOperations* hub, OperationType type) {
  return hub != nullptr ? dynamic_cast<Kind*>(hub->GetActiveOperation(type)) : nullptr;
}

}  // namespace Korvane
