#include "cube/cube_tooltips.h"

#include "korvane/renderer.h"

namespace Korvane {

void CubeTooltips::Load(Renderer& renderer) {
  home = renderer.LoadStringResource(STRING_CUBE_HOME);
  lock = renderer.LoadStringResource(STRING_CUBE_LOCK);
  geometry = renderer.LoadStringResource(STRING_CUBE_PART);
  compass = renderer.LoadStringResource(STRING_CUBE_COMPASS);
  context = renderer.LoadStringResource(STRING_CUBE_MENU);
}

}  // namespace Korvane
