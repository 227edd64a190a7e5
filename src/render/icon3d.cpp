#include "korvane/icon3d.h"

namespace Korvane {

Icon3D::Icon3D() = default;
Icon3D::~Icon3D() = default;

}  // namespace Korvane
