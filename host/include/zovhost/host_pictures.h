#pragma once

#include "zovhost/image.h"

namespace zovhost {

/// Pictures for the buttons that a host puts on a toolbar or a panel: a number is a Korvane::TextureID by a
/// cast. The library knows nothing of them, so they stand above its own numbers.
enum HostPicture : int {
  HOST_PICTURE_HOME = 186,
  HOST_PICTURE_FIT = 187,
  HOST_PICTURE_PROJECTION = 188,
  // The tools of the left button.
  HOST_PICTURE_ORBIT = 189,
  HOST_PICTURE_PAN = 190,
  HOST_PICTURE_ZOOM = 191,
  HOST_PICTURE_RECTANGLE_ZOOM = 192,
  HOST_PICTURE_LOOK = 193,
  HOST_PICTURE_LOOK_MOVE = 194,
  HOST_PICTURE_LOOK_AT = 195,
  HOST_PICTURE_CENTRE = 196,
  HOST_PICTURE_WALK = 197,
  // What a six-axis device moves.
  HOST_PICTURE_DEVICE_OBJECT = 198,
  HOST_PICTURE_DEVICE_WALK = 199,
  HOST_PICTURE_DEVICE_FLY = 200,
  HOST_PICTURE_DEVICE_PAN = 201,
  // Views.
  HOST_PICTURE_PREVIOUS_VIEW = 202,
  HOST_PICTURE_NEXT_VIEW = 203,
  HOST_PICTURE_ISOMETRIC = 204,
  HOST_PICTURE_FIT_SELECTION = 205,
  HOST_PICTURE_FRONT = 206,
  HOST_PICTURE_BACK = 207,
  HOST_PICTURE_LEFT = 208,
  HOST_PICTURE_RIGHT = 209,
  HOST_PICTURE_TOP = 210,
  HOST_PICTURE_BOTTOM = 211,
  // Those that are kept.
  HOST_PICTURE_KEEP_VIEW = 212,
  HOST_PICTURE_IMPORT = 213,
  HOST_PICTURE_EXPORT = 214,
  // Stories.
  HOST_PICTURE_PLAY = 215,
  HOST_PICTURE_PRESENT = 216,
  HOST_PICTURE_ADD_SEQUENCE = 217,
  HOST_PICTURE_ADD_SHOT = 218,
  HOST_PICTURE_UNDO = 219,
  HOST_PICTURE_REDO = 220,
  HOST_PICTURE_LOOP = 221,
  // Files.
  HOST_PICTURE_NEW_FILE = 222,
  HOST_PICTURE_OPEN_FILE = 223,
  HOST_PICTURE_SAVE = 224,
  HOST_PICTURE_SAVE_AS = 225,
  // What a six-axis device may do.
  HOST_PICTURE_UPRIGHT = 226,
  HOST_PICTURE_ROTATION = 227,
  HOST_PICTURE_TRANSLATION = 228,
  HOST_PICTURE_SETTINGS = 229,
  // A panel.
  HOST_PICTURE_FOLD = 230,
  HOST_PICTURE_UNFOLD = 231,
};

/// Such a picture, or one of the library's for the buttons of a bar, in one colour: white, as opaque as its
/// lines cover each pixel. `pixels` wide and high, drawn for that size, 1 to 512. `fromRight`: for a language
/// that is read so, where a picture that tells of before and after is turned round. False, with `image`
/// untouched, for a number that is none of them and a size out of range.
bool PaintIcon(int picture, int pixels, bool fromRight, Image& image);

}  // namespace zovhost
