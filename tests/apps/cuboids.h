#pragma once

#include <memory>
#include <span>

#include "korvane/box3.h"
#include "zovhost/scene.h"

namespace apps_test {

/// A scene of solid boxes along the world's axes, a part each, that stands on the z axis.
std::unique_ptr<zovhost::Scene> MakeCuboids(std::span<const Korvane::Box3> boxes);

}  // namespace apps_test
