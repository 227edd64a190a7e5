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

  // The welcome screen: its heading, what each page says below it, a name and a line for each disc, and what
  // leads to the other page.
  HOST_TEXT_WELCOME = 114,
  HOST_TEXT_WELCOME_BASIC = 115,
  HOST_TEXT_WELCOME_ADVANCED = 116,
  HOST_TEXT_VIEW_OBJECT = 117,
  HOST_TEXT_VIEW_OBJECT_LINE = 118,
  HOST_TEXT_TOUR_BUILDING = 119,
  HOST_TEXT_TOUR_BUILDING_LINE = 120,
  HOST_TEXT_MINI_VIEW_OBJECT = 121,
  HOST_TEXT_MINI_VIEW_OBJECT_LINE = 122,
  HOST_TEXT_MINI_TOUR_BUILDING = 123,
  HOST_TEXT_MINI_TOUR_BUILDING_LINE = 124,
  HOST_TEXT_MINI_FULL_NAVIGATION = 125,
  HOST_TEXT_MINI_FULL_NAVIGATION_LINE = 126,
  HOST_TEXT_FULL_NAVIGATION = 127,
  HOST_TEXT_FULL_NAVIGATION_LINE = 128,
  HOST_TEXT_TO_ADVANCED = 129,
  HOST_TEXT_TO_BASIC = 130,
};

}  // namespace zovhost
