#pragma once

namespace Korvane {

/// The settings of a six-axis controller.
struct Cam3DControllerParameters {
  enum NavigationMode : int { MODE_OBJECT = 0, MODE_WALK = 1, MODE_FLY = 2, MODE_PAN = 3 };
};

}  // namespace Korvane
