#pragma once

namespace zovhost {

/// Texts that the kit's own pictures show: the faces of the cube, the letters of its compass, words
/// of the discs. The library knows nothing of them, so they stand above its own numbers.
enum HostText : int {
  HOST_TEXT_BACK = 103,
  HOST_TEXT_FRONT = 104,
  HOST_TEXT_BOTTOM = 105,
  HOST_TEXT_TOP = 106,
  HOST_TEXT_RIGHT = 107,
  HOST_TEXT_LEFT = 108,
  HOST_TEXT_NORTH = 109,
  HOST_TEXT_EAST = 110,
  HOST_TEXT_SOUTH = 111,
  HOST_TEXT_WEST = 112,
  HOST_TEXT_FORWARD = 113,  // a caption of a large disc; its other captions are those of the small ones
};

}  // namespace zovhost
