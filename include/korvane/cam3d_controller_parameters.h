#pragma once

namespace Korvane {

/// What a six-axis controller moves: the model, a walker, a flyer, or the page.
struct Cam3DControllerParameters {
  enum NavigationMode : int { MODE_OBJECT = 0, MODE_WALK = 1, MODE_FLY = 2, MODE_PAN = 3 };
};

}  // namespace Korvane
