#pragma once

#include <string>

namespace Korvane {

class Renderer;

/// The texts for what the mouse is on.
struct CubeTooltips {
  std::wstring home;
  std::wstring lock;
  std::wstring geometry;
  std::wstring compass;
  std::wstring context;
  std::wstring empty;

  void Load(Renderer& renderer);
};

}  // namespace Korvane
