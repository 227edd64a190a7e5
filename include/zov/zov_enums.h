#pragma once

// Numbers that the host shares with the library. A number without a name here is as good as one with: names
// stand where the library itself uses a number, and a static_cast makes a value of any other. They are the
// numbers of the library, so that a host may hold on to one table for both.

/// How a number changes in time.
enum class zovInterpolationMethod : int {
  Linear = 0,
  Eased = 1,
};

/// How a camera sees.
enum class zovProjectionType : int {
  Perspective = 0,
  Orthographic = 1,
};

/// What describes the bounds of the model better.
enum class zovBoundGeometryType : int {
  Sphere = 0,
  Box = 1,
};

/// What a six-axis controller does.
enum class zovNavigationMode : int {
  Object = 0,
  Walk = 1,
  Fly = 2,
  Pan = 3,
};

/// What a pass draws into.
enum class zovRenderMode : int {
  Overlay = 0,      // orthographic, in viewport pixels
  Perspective = 1,  // by the four half angles of the camera
  Scene = 2,        // by the projection of the scene itself
};

/// How a host is to draw the vertices; the library passes the number through.
enum class zovDrawMode : int {
  Quads = 0,       // plain, textured or coloured
  CubeLabels = 2,  // blended over the faces of the cube
  Solid = 3,       // the edges of the cube and of its selected part; the outline of a rectangle
  CubeShadow = 4,
  Through = 5,       // shows through what stands in front
  OverlayIcons = 6,  // flat
};

/// The order of the first three bytes of a pixel; the fourth is opacity.
enum class zovPixelFormat : int {
  Bgra = 0,
  Rgba = 1,
};

/// Models of the host that 3D icons draw.
enum class zovModelID : int {
  PivotBall = 0,
  PivotShadow = 1,
};

/// Context menus of the host.
enum class zovMenuID : int {
  TourBuilding = 0,
  ViewObject = 1,
  FullNavigation = 2,
  TwoD = 3,
  Orientor = 4,
  Storyboard = 5,
};

/// Shapes of the pointer.
enum class zovCursorID : int {
  OrbitCube = 0,  // a drag of the cube that has left its region
  Orbit = 1,      // an orbit; a drag within the cube's region
  Zoom = 2,
  Pan = 3,
  Look = 4,
  LookAt = 5,
  Walk = 6,  // standing still
  WalkForward = 7,
  WalkBack = 8,
  WalkLeft = 9,
  WalkRight = 10,
  WalkForwardLeft = 11,
  WalkForwardRight = 12,
  WalkBackLeft = 13,
  WalkBackRight = 14,
  RunForward = 15,  // each run cursor is its walk cursor plus 8
  RunBack = 16,
  RunLeft = 17,
  RunRight = 18,
  RunForwardLeft = 19,
  RunForwardRight = 20,
  RunBackLeft = 21,
  RunBackRight = 22,
  NoTarget = 23,  // off the model, where a point of it is wanted
  CubePart = 24,  // over a part of the cube
  Arrow = 26,     // the normal pointer
  NoCursor = 27,  // no change asked for
};

/// Texts, 0 to 101. The range tells what kind of icon a text becomes; see zovRenderer::get_string_texture.
enum class zovStringID : int {
  RecordWalk = 9,    // the message before a walk that is recorded; a tooltip of discs as well
  LookKeys = 28,     // the message of a look that the arrow keys move
  OffModel = 31,     // a point of the scene is wanted and the cursor is over none
  DiscClosed = 32,   // the note of a disc that has just been closed
  RewindEmpty = 33,  // there is nothing to go back to
  Walk = 34,         // messages of a walk: how to set out, that it may not, its keys
  WalkRefused = 36,
  ClickZoom = 37,  // how a click zooms
  WalkUpDown = 38,
  Pivot = 41,       // the pivot ball's label
  Look = 49,        // the note of a look
  Orbit = 50,       // the note of the middle button's orbit
  Pan = 51,         // the note of the middle button's pan
  Rewind = 52,      // the note of a slide along the film strip
  WheelZoom = 55,   // the note of a zoom
  RectZoom = 56,    // the note of a rectangle to zoom to
  LookAt = 57,      // the note of a face to look at
  UcsDefault = 67,  // the name of the default coordinate system
  CubeHome = 68,    // tooltips of the cube: its home button, its lock, its parts, its ring, its menu
  CubeLock = 69,
  CubePart = 70,
  CubeCompass = 71,
  CubeMenu = 72,
  SequenceName = 73,  // what a new sequence is called, with its number
  ShotName = 74,
  StoryPlay = 75,  // tooltips of the storyboard: its title bar, its slides and their buttons
  StoryPause = 76,
  StoryStop = 77,
  StoryLoop = 78,
  StoryClose = 79,
  SequenceAdd = 80,
  SequencePlay = 81,
  StoryTarget = 82,  // of a sequence's slide and of a shot's
  ShotAdd = 83,
  ShotPlay = 84,
  StorySlide = 85,  // likewise
  BarClose = 86,    // tooltips of the navigation bar: its corners, its grip, its items
  BarMenu = 87,
  BarGrip = 88,
  BarMoreControls = 89,
  BarOrientor = 90,
  BarFullNavigation = 91,
  BarMiniFullNavigation = 92,
  BarMiniViewObject = 93,
  BarMiniTourBuilding = 94,
  BarViewObject = 95,
  BarTourBuilding = 96,
  BarTwoD = 97,
  BarStoryboard = 98,
  DeviceWalkRefused = 99,  // a six-axis device may not walk, or fly, in this view
  DeviceFlyRefused = 100,
  NoString = 102,
};

/// Pictures, 0 to 184.
enum class zovTextureID : int {
  CubeFaces = 0,    // six rows, from the top Top, Bottom, Right, Left, Back, Front
  CubeLabels = 1,   // their texts, in the same rows
  CubeShading = 2,  // of each outer side of the whole cube
  CubeShadow = 3,   // on the ground below
  CompassRing = 4,
  CompassRingActive = 5,  // under the mouse, as with every picture of this name
  CompassLetters = 6,     // four, one above the other
  CubeHome = 7,
  CubeHomeActive = 8,
  CubeLock = 9,
  CubeLockActive = 10,
  CubeMenu = 11,
  CubeMenuActive = 12,
  CubeRotate = 13,  // both rotate arrows
  CubeRotateCounterClockwiseActive = 14,
  CubeRotateClockwiseActive = 15,
  WelcomeAdvancedMap = 83,  // the regions of the welcome screen, by colour, of each of its pages
  WelcomeBasicMap = 88,
  RewindFrame = 89,           // around each picture of the film strip
  RewindFrameActive = 90,     // around the one that the view shows
  RewindBracket = 91,         // marks the place on the strip
  RewindBracketSnapped = 92,  // the same, on an element
  WalkRefused = 93,           // where a walk would start that the projection does not allow
  WalkStart = 94,             // where a walk starts, the circle in which it rests
  HeightGauge = 95,           // between the floor and the top of the scene
  HeightStart = 96,           // on it, the height of the start
  HeightMark = 97,            // and that of now
  ForwardGauge = 98,          // the way to a point of the scene
  ForwardTarget = 99,         // on it, the point
  RewindGlass = 100,          // over each picture of the film strip
  RollRing = 101,             // around the pivot of a roll
  StoryFrame = 102,           // behind the shots; stretched between caps of an eighth of its width
  StoryTitleBar = 103,
  StoryPlay = 104,  // buttons of the title bar
  StoryPlayActive = 105,
  StoryPause = 106,
  StoryPauseActive = 107,
  StoryStop = 108,
  StoryStopActive = 109,
  StoryLoop = 110,  // the story is played once
  StoryLoopActive = 111,
  StoryLoopOn = 112,  // again and again
  StoryLoopOnActive = 113,
  StoryClose = 114,
  StoryCloseActive = 115,
  SequenceSlide = 116,  // the card below a thumbnail
  SequenceSlideActive = 117,
  SequenceSlideSelected = 118,  // whose shots are shown
  SequenceSlideSelectedActive = 119,
  SequenceSlidePlaying = 120,  // over card and thumbnail
  SequenceSlidePaused = 121,
  SequenceAdd = 122,  // the slide that adds a sequence
  SequenceAddActive = 123,
  SequenceStackLeft = 124,  // a shade over a slide that lies in a stack
  SequenceStackRight = 125,
  SequencePlay = 126,  // buttons on a slide
  SequencePlayActive = 127,
  SequencePause = 128,
  SequencePauseActive = 129,
  SequenceTarget = 130,  // to where it starts
  SequenceTargetActive = 131,
  ShotSlide = 132,  // the same for shots
  ShotSlideActive = 133,
  ShotSlideSelected = 134,
  ShotSlidePlaying = 135,
  ShotSlidePaused = 136,
  ShotAdd = 137,
  ShotAddActive = 138,
  ShotPlay = 139,
  ShotPlayActive = 140,
  ShotPause = 141,
  ShotPauseActive = 142,
  ShotTarget = 143,
  ShotTargetActive = 144,
  SequenceDrop = 145,  // between two slides, where a dragged one lands
  ShotDrop = 146,
  BarClose = 147,  // the corner buttons of the navigation bar
  BarMenu = 148,
  BarFlyout = 149,          // the arrow of a flyout button
  BarMoreHorizontal = 152,  // more controls, on a horizontal bar
  BarMoreVertical = 153,
  BarOrientor = 154,        // shows the cube
  BarFullNavigation = 155,  // opens a disc, as the next six
  BarMiniFullNavigation = 156,
  BarMiniViewObject = 157,
  BarMiniTourBuilding = 158,
  BarViewObject = 159,
  BarTourBuilding = 160,
  BarTwoD = 161,
  BarStoryboard = 170,
  BarTopLeft = 171,  // the corners of the strip, filled
  BarTopRight = 172,
  BarBottomRight = 173,
  BarBottomLeft = 174,
  BarTopLeftEdge = 175,  // the border around them
  BarTopRightEdge = 176,
  BarBottomRightEdge = 177,
  BarBottomLeftEdge = 178,
  NoTexture = 185,
};

/// The corner of the viewport in which the cube stands.
enum class zovOrientorLocation : int {
  TopRight = 0,
  BottomRight = 1,
  TopLeft = 2,
  BottomLeft = 3,
};

/// The size of the cube. Automatic goes by the viewport, between tiny and normal.
enum class zovOrientorSize : int {
  Automatic = 0,
  Tiny = 1,
  Small = 2,
  Normal = 3,
  Large = 4,
};

/// What a click or a drag of the cube was on. The same numbers name a part to be pressed from outside, but
/// for the arrows to the faces and the ring of the compass, which are only told of.
enum class zovOrientorPart : int {
  NoPart = -1,
  Back = 0,
  Front = 1,
  Bottom = 2,
  Top = 3,
  Right = 4,
  Left = 5,
  BackBottom = 6,
  BackTop = 7,
  FrontBottom = 8,
  FrontTop = 9,
  RightBottom = 10,
  LeftBottom = 11,
  RightTop = 12,
  LeftTop = 13,
  BackRight = 14,
  FrontRight = 15,
  BackLeft = 16,
  FrontLeft = 17,
  BackRightBottom = 18,
  BackLeftBottom = 19,
  BackRightTop = 20,
  BackLeftTop = 21,
  FrontRightBottom = 22,
  FrontLeftBottom = 23,
  FrontRightTop = 24,
  FrontLeftTop = 25,
  // A face reached by the arrow beside it.
  BackArrow = 26,
  FrontArrow = 27,
  BottomArrow = 28,
  TopArrow = 29,
  RightArrow = 30,
  LeftArrow = 31,
  // The overlay. The menu of coordinate systems has no number.
  RotateCounterClockwise = 32,
  RotateClockwise = 33,
  Home = 34,
  Lock = 35,
  ContextMenu = 36,
  // The compass: a letter by the direction for which it stands, and any place of the ring.
  CompassFront = 37,
  CompassBack = 38,
  CompassLeft = 39,
  CompassRight = 40,
  CompassRing = 41,
};
