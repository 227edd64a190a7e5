#pragma once

namespace zovhost {

/// Pictures for the buttons that a host puts on a toolbar: a number is a Korvane::TextureID by a cast. The
/// library knows nothing of them, so they stand above its own numbers.
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
};

}  // namespace zovhost
