#pragma once

#include <string>
#include <vector>

#include "sheet.h"
#include "zovhost/image.h"

namespace zovsheets {

/// What the navigation bar, with three items of a host's, is to look like in one picture.
struct BarState {
  enum class Mouse : int { Far, OnStrip, OnItem, OnArrow };

  std::string name;  // of a file as well
  bool horizontal = false;
  Mouse mouse = Mouse::OnStrip;
  int item = 0;  // the tag under the mouse
  bool pressed = false;
  int selected = 0;  // likewise, of items in other states; 0: none
  int disabled = 0;
  bool narrow = false;    // so that not all items have room
  bool orientor = false;  // the cube does not show, and a button stands in for it
  Ground ground = Ground::Gradient;
  double scale = 1.0;  // pixels for one point
};

/// The states that the look of a bar is judged by, each with a name of its own.
std::vector<BarState> GetBarStates();

/// Draws a state in an OpenGL context that is current, over its ground. False when the driver refuses, and
/// when a picture is missing.
bool PaintBar(const BarState& state, zovhost::Image& image);

}  // namespace zovsheets
