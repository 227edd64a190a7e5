#pragma once

#include "korvane/application_parameters.h"
#include "korvane/box2.h"

namespace Korvane {

/// The box of a render pass over the whole view, in viewport pixels.
inline Box2 FullViewport(const ApplicationParameters& parameters) {
  const Vector2 middle(parameters.viewport_width / 2.0, parameters.viewport_height / 2.0);
  return {middle, middle};
}

}  // namespace Korvane
