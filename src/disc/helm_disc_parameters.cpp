#include "korvane/helm_disc_parameters.h"

namespace Korvane {

const int HelmDiscParameters::SIZE_MINI_SMALL = 32;
const int HelmDiscParameters::SIZE_MINI_NORMAL = 64;
const int HelmDiscParameters::SIZE_MINI_LARGE = 128;
const int HelmDiscParameters::SIZE_MINI_EXTRA = 256;
const int HelmDiscParameters::SIZE_LARGE_SMALL = 64;
const int HelmDiscParameters::SIZE_LARGE_NORMAL = 128;
const int HelmDiscParameters::SIZE_LARGE_LARGE = 256;
const double HelmDiscParameters::OPACITY_25 = 0.5;
const double HelmDiscParameters::OPACITY_50 = 1.0;
const double HelmDiscParameters::OPACITY_75 = 2.0;
const double HelmDiscParameters::OPACITY_100 = 3.0;
const double HelmDiscParameters::minimumSpeedFactor = 0.1;
const double HelmDiscParameters::maximumSpeedFactor = 50.0;

HelmDiscParameters::HelmDiscParameters() = default;

}  // namespace Korvane
