#pragma once

namespace Korvane {

// Numbers that the library shares with the resources of its host. They convert to int freely; a value of
// int becomes one with a static_cast. A number without a name here is as good as one with: names are
// added where the library itself uses a number.

/// Keys that the library understands, whatever the host binds them to.
enum KeyID : int {
  KEY_SHIFT = 0,
  KEY_CONTROL = 1,
  KEY_DISC = 2,   // consumed by the navigation disc
  KEY_UP = 3,     // lifts a running walk; goes forward while looking
  KEY_DOWN = 4,   // lowers a running walk; goes back while looking
  KEY_RIGHT = 5,  // scrolls the storyboard strip; goes right while looking
  KEY_LEFT = 6,   // scrolls the storyboard strip back; goes left while looking
  KEY_DELETE = 7,
  KEY_ESCAPE = 8,  // cancels; stops playback or recording
  KEY_SLOWER = 9,
  KEY_FASTER = 10,
  KEY_RUN = 11,    // raises the walk speed
  KEY_SPACE = 12,  // play or pause
};

enum CursorID : int {
  CURSOR_ORBIT_CUBE = 0,  // a drag of the cube that has left its region
  CURSOR_ORBIT = 1,       // an orbit; a drag within the cube's region
  CURSOR_ZOOM = 2,
  CURSOR_PAN = 3,
  CURSOR_LOOK = 4,
  CURSOR_LOOK_AT = 5,
  CURSOR_WALK = 6,  // standing still
  CURSOR_WALK_FORWARD = 7,
  CURSOR_WALK_BACK = 8,
  CURSOR_WALK_LEFT = 9,
  CURSOR_WALK_RIGHT = 10,
  CURSOR_WALK_FORWARD_LEFT = 11,
  CURSOR_WALK_FORWARD_RIGHT = 12,
  CURSOR_WALK_BACK_LEFT = 13,
  CURSOR_WALK_BACK_RIGHT = 14,
  CURSOR_RUN_FORWARD = 15,  // each run cursor is its walk cursor plus 8
  CURSOR_RUN_BACK = 16,
  CURSOR_RUN_LEFT = 17,
  CURSOR_RUN_RIGHT = 18,
  CURSOR_RUN_FORWARD_LEFT = 19,
  CURSOR_RUN_FORWARD_RIGHT = 20,
  CURSOR_RUN_BACK_LEFT = 21,
  CURSOR_RUN_BACK_RIGHT = 22,
  CURSOR_NO_TARGET = 23,  // off the model, where a point of it is wanted
  CURSOR_CUBE_PART = 24,  // over a part of the cube
  CURSOR_ARROW = 26,      // the normal pointer
  CURSOR_NONE = 27,       // no change asked for
};

/// Context menus of the host.
enum MenuID : int {
  MENU_TOUR_BUILDING = 0,
  MENU_VIEW_OBJECT = 1,
  MENU_FULL_NAVIGATION = 2,
  MENU_TWO_D = 3,
  MENU_ORIENTOR = 4,
  MENU_STORYBOARD = 5,
};

/// Models of the host that 3D icons draw.
enum ModelID : int { MODEL_PIVOT_BALL = 0, MODEL_PIVOT_SHADOW = 1 };

/// Numbers that lie together, both ends among them.
struct ResourceRange {
  int first;
  int last;

  constexpr bool Contains(int id) const { return id >= first && id <= last; }
};

/// Texts, 0 to 101. The range tells what kind of icon a text becomes; see Renderer::GetStringTexture.
enum StringID : int {
  STRING_RECORD_WALK = 9,    // the message before a walk that is recorded; a tooltip of discs as well
  STRING_LOOK_KEYS = 28,     // the message of a look that the arrow keys move
  STRING_OFF_MODEL = 31,     // a point of the scene is wanted and the cursor is over none
  STRING_DISC_CLOSED = 32,   // the note of a disc that has just been closed
  STRING_REWIND_EMPTY = 33,  // there is nothing to go back to
  STRING_WALK = 34,          // messages of a walk: how to set out, that it may not, its keys
  STRING_WALK_REFUSED = 36,
  STRING_CLICK_ZOOM = 37,  // how a click zooms
  STRING_WALK_UP_DOWN = 38,
  STRING_PIVOT = 41,        // the pivot ball's label
  STRING_LOOK = 49,         // the note of a look
  STRING_ORBIT = 50,        // the note of the middle button's orbit
  STRING_PAN = 51,          // the note of the middle button's pan
  STRING_REWIND = 52,       // the note of a slide along the film strip
  STRING_WHEEL_ZOOM = 55,   // the note of a zoom
  STRING_RECT_ZOOM = 56,    // the note of a rectangle to zoom to
  STRING_LOOK_AT = 57,      // the note of a face to look at
  STRING_UCS_DEFAULT = 67,  // the name of the default coordinate system
  STRING_CUBE_HOME = 68,    // tooltips of the cube: its home button, its lock, its parts, its ring, its menu
  STRING_CUBE_LOCK = 69,
  STRING_CUBE_PART = 70,
  STRING_CUBE_COMPASS = 71,
  STRING_CUBE_MENU = 72,
  STRING_SEQUENCE_NAME = 73,  // what a new sequence is called, with its number
  STRING_SHOT_NAME = 74,
  STRING_STORY_PLAY = 75,  // tooltips of the storyboard: its title bar, its slides and their buttons
  STRING_STORY_PAUSE = 76,
  STRING_STORY_STOP = 77,
  STRING_STORY_LOOP = 78,
  STRING_STORY_CLOSE = 79,
  STRING_SEQUENCE_ADD = 80,
  STRING_SEQUENCE_PLAY = 81,
  STRING_STORY_TARGET = 82,  // of a sequence's slide and of a shot's
  STRING_SHOT_ADD = 83,
  STRING_SHOT_PLAY = 84,
  STRING_STORY_SLIDE = 85,  // likewise
  STRING_BAR_CLOSE = 86,    // tooltips of the navigation bar: its corners, its grip, its items
  STRING_BAR_MENU = 87,
  STRING_BAR_GRIP = 88,
  STRING_BAR_MORE_CONTROLS = 89,
  STRING_BAR_ORIENTOR = 90,
  STRING_BAR_FULL_NAVIGATION = 91,
  STRING_BAR_MINI_FULL_NAVIGATION = 92,
  STRING_BAR_MINI_VIEW_OBJECT = 93,
  STRING_BAR_MINI_TOUR_BUILDING = 94,
  STRING_BAR_VIEW_OBJECT = 95,
  STRING_BAR_TOUR_BUILDING = 96,
  STRING_BAR_TWO_D = 97,
  STRING_BAR_STORYBOARD = 98,
  STRING_DEVICE_WALK_REFUSED = 99,  // a six-axis device may not walk, or fly, in this view
  STRING_DEVICE_FLY_REFUSED = 100,
  STRING_NONE = 102,
};

/// What becomes of a text as an icon; one in no range has none.
constexpr ResourceRange STRINGS_TOOLTIP = {0, 27};
constexpr ResourceRange STRINGS_MESSAGE = {28, 38};
constexpr ResourceRange STRINGS_PIVOT_LABEL = {39, 42};
constexpr ResourceRange STRINGS_TOOLTIP_HUD = {47, 57};
constexpr ResourceRange STRINGS_MINI_WHEEL_LABEL = {58, 66};
constexpr ResourceRange STRINGS_LATER_MESSAGE = {99, 100};

/// Pictures, 0 to 184.
enum TextureID : int {
  TEXTURE_CUBE_FACES = 0,    // six rows, from the top Top, Bottom, Right, Left, Back, Front
  TEXTURE_CUBE_LABELS = 1,   // their texts, in the same rows
  TEXTURE_CUBE_SHADING = 2,  // of each outer side of the whole cube
  TEXTURE_CUBE_SHADOW = 3,   // on the ground below
  TEXTURE_COMPASS_RING = 4,
  TEXTURE_COMPASS_RING_ACTIVE = 5,  // under the mouse, as with every picture of this name
  TEXTURE_COMPASS_LETTERS = 6,      // four, one above the other
  TEXTURE_CUBE_HOME = 7,
  TEXTURE_CUBE_HOME_ACTIVE = 8,
  TEXTURE_CUBE_LOCK = 9,
  TEXTURE_CUBE_LOCK_ACTIVE = 10,
  TEXTURE_CUBE_MENU = 11,
  TEXTURE_CUBE_MENU_ACTIVE = 12,
  TEXTURE_CUBE_ROTATE = 13,  // both rotate arrows
  TEXTURE_CUBE_ROTATE_COUNTER_CLOCKWISE_ACTIVE = 14,
  TEXTURE_CUBE_ROTATE_CLOCKWISE_ACTIVE = 15,
  TEXTURE_WELCOME_ADVANCED_MAP = 83,  // the regions of the welcome screen, by colour, of each of its pages
  TEXTURE_WELCOME_BASIC_MAP = 88,
  TEXTURE_REWIND_FRAME = 89,            // around each picture of the film strip
  TEXTURE_REWIND_FRAME_ACTIVE = 90,     // around the one that the view shows
  TEXTURE_REWIND_BRACKET = 91,          // marks the place on the strip
  TEXTURE_REWIND_BRACKET_SNAPPED = 92,  // the same, on an element
  TEXTURE_WALK_REFUSED = 93,            // where a walk would start that the projection does not allow
  TEXTURE_WALK_START = 94,              // where a walk starts, the circle in which it rests
  TEXTURE_HEIGHT_GAUGE = 95,            // between the floor and the top of the scene
  TEXTURE_HEIGHT_START = 96,            // on it, the height of the start
  TEXTURE_HEIGHT_MARK = 97,             // and that of now
  TEXTURE_FORWARD_GAUGE = 98,           // the way to a point of the scene
  TEXTURE_FORWARD_TARGET = 99,          // on it, the point
  TEXTURE_REWIND_GLASS = 100,           // over each picture of the film strip
  TEXTURE_ROLL_RING = 101,              // around the pivot of a roll
  TEXTURE_STORY_FRAME = 102,            // behind the shots; stretched between caps of an eighth of its width
  TEXTURE_STORY_TITLE_BAR = 103,
  TEXTURE_STORY_PLAY = 104,  // buttons of the title bar
  TEXTURE_STORY_PLAY_ACTIVE = 105,
  TEXTURE_STORY_PAUSE = 106,
  TEXTURE_STORY_PAUSE_ACTIVE = 107,
  TEXTURE_STORY_STOP = 108,
  TEXTURE_STORY_STOP_ACTIVE = 109,
  TEXTURE_STORY_LOOP = 110,  // the story is played once
  TEXTURE_STORY_LOOP_ACTIVE = 111,
  TEXTURE_STORY_LOOP_ON = 112,  // again and again
  TEXTURE_STORY_LOOP_ON_ACTIVE = 113,
  TEXTURE_STORY_CLOSE = 114,
  TEXTURE_STORY_CLOSE_ACTIVE = 115,
  TEXTURE_SEQUENCE_SLIDE = 116,  // the card below a thumbnail
  TEXTURE_SEQUENCE_SLIDE_ACTIVE = 117,
  TEXTURE_SEQUENCE_SLIDE_SELECTED = 118,  // whose shots are shown
  TEXTURE_SEQUENCE_SLIDE_SELECTED_ACTIVE = 119,
  TEXTURE_SEQUENCE_SLIDE_PLAYING = 120,  // over card and thumbnail
  TEXTURE_SEQUENCE_SLIDE_PAUSED = 121,
  TEXTURE_SEQUENCE_ADD = 122,  // the slide that adds a sequence
  TEXTURE_SEQUENCE_ADD_ACTIVE = 123,
  TEXTURE_SEQUENCE_STACK_LEFT = 124,  // a shade over a slide that lies in a stack
  TEXTURE_SEQUENCE_STACK_RIGHT = 125,
  TEXTURE_SEQUENCE_PLAY = 126,  // buttons on a slide
  TEXTURE_SEQUENCE_PLAY_ACTIVE = 127,
  TEXTURE_SEQUENCE_PAUSE = 128,
  TEXTURE_SEQUENCE_PAUSE_ACTIVE = 129,
  TEXTURE_SEQUENCE_TARGET = 130,  // to where it starts
  TEXTURE_SEQUENCE_TARGET_ACTIVE = 131,
  TEXTURE_SHOT_SLIDE = 132,  // the same for shots
  TEXTURE_SHOT_SLIDE_ACTIVE = 133,
  TEXTURE_SHOT_SLIDE_SELECTED = 134,
  TEXTURE_SHOT_SLIDE_PLAYING = 135,
  TEXTURE_SHOT_SLIDE_PAUSED = 136,
  TEXTURE_SHOT_ADD = 137,
  TEXTURE_SHOT_ADD_ACTIVE = 138,
  TEXTURE_SHOT_PLAY = 139,
  TEXTURE_SHOT_PLAY_ACTIVE = 140,
  TEXTURE_SHOT_PAUSE = 141,
  TEXTURE_SHOT_PAUSE_ACTIVE = 142,
  TEXTURE_SHOT_TARGET = 143,
  TEXTURE_SHOT_TARGET_ACTIVE = 144,
  TEXTURE_SEQUENCE_DROP = 145,  // between two slides, where a dragged one lands
  TEXTURE_SHOT_DROP = 146,
  TEXTURE_BAR_CLOSE = 147,  // the corner buttons of the navigation bar
  TEXTURE_BAR_MENU = 148,
  TEXTURE_BAR_FLYOUT = 149,           // the arrow of a flyout button
  TEXTURE_BAR_MORE_HORIZONTAL = 152,  // more controls, on a horizontal bar
  TEXTURE_BAR_MORE_VERTICAL = 153,
  TEXTURE_BAR_ORIENTOR = 154,         // shows the cube
  TEXTURE_BAR_FULL_NAVIGATION = 155,  // opens a disc, as the next six
  TEXTURE_BAR_MINI_FULL_NAVIGATION = 156,
  TEXTURE_BAR_MINI_VIEW_OBJECT = 157,
  TEXTURE_BAR_MINI_TOUR_BUILDING = 158,
  TEXTURE_BAR_VIEW_OBJECT = 159,
  TEXTURE_BAR_TOUR_BUILDING = 160,
  TEXTURE_BAR_TWO_D = 161,
  TEXTURE_BAR_STORYBOARD = 170,
  TEXTURE_BAR_TOP_LEFT = 171,  // the corners of the strip, filled
  TEXTURE_BAR_TOP_RIGHT = 172,
  TEXTURE_BAR_BOTTOM_RIGHT = 173,
  TEXTURE_BAR_BOTTOM_LEFT = 174,
  TEXTURE_BAR_TOP_LEFT_EDGE = 175,  // the border around them
  TEXTURE_BAR_TOP_RIGHT_EDGE = 176,
  TEXTURE_BAR_BOTTOM_RIGHT_EDGE = 177,
  TEXTURE_BAR_BOTTOM_LEFT_EDGE = 178,
  TEXTURE_NONE = 185,
};

/// Those of the storyboard; a shown panel wants the gauges of a walk as well.
constexpr ResourceRange TEXTURES_STORY = {TEXTURE_STORY_FRAME, TEXTURE_SHOT_DROP};

/// Those of the orientation cube.
constexpr ResourceRange TEXTURES_CUBE = {TEXTURE_CUBE_FACES, TEXTURE_CUBE_ROTATE_CLOCKWISE_ACTIVE};

}  // namespace Korvane
