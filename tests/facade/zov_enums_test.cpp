#include "zov/zov_enums.h"

#include <gtest/gtest.h>

#include <cctype>
#include <fstream>
#include <map>
#include <regex>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace {

using Members = std::map<std::string, int>;

std::string Read(const std::string& name) {
  std::ifstream file(std::string(ZOV_HEADERS) + "/" + name);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

// The members of an enumeration as they stand in a header.
Members MembersOf(const std::string& header, const std::string& name) {
  const std::string text = Read(header);
  std::smatch block;
  const std::regex enumeration("enum (?:class )?" + name + R"( : int \{([^}]*)\};)");
  Members members;
  if (!std::regex_search(text, block, enumeration)) return members;
  const std::string body = std::regex_replace(block[1].str(), std::regex("//[^\n]*"), "");
  const std::regex member(R"((\w+) = (-?\d+))");
  for (std::sregex_iterator each(body.begin(), body.end(), member), end; each != end; ++each)
    members[(*each)[1]] = std::stoi((*each)[2]);
  return members;
}

// ORBIT_CUBE becomes OrbitCube.
std::string InFacadeSpelling(const std::string& name) {
  std::string result;
  bool wordBegins = true;
  for (const char c : name) {
    if (c != '_') result += wordBegins ? c : static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    wordBegins = c == '_';
  }
  return result;
}

struct Pair {
  const char* facade;
  const char* header;
  const char* inner;
  const char* prefix;  // of the inner names; empty where both sides spell alike
  const char* none;    // what the facade calls the inner NONE
};

TEST(ZovEnums, have_the_members_and_numbers_of_the_library) {
  const Pair pairs[] = {
      {"zovInterpolationMethod", "changing_in_time.h", "InterpolationMethod", "INTERPOLATION_", ""},
      {"zovProjectionType", "camera_parameters.h", "ProjectionType", "", ""},
      {"zovBoundGeometryType", "application_parameters.h", "BoundGeometryType", "", ""},
      {"zovNavigationMode", "cam3d_controller_parameters.h", "NavigationMode", "MODE_", ""},
      {"zovRenderMode", "renderer.h", "RenderMode", "RENDER_", ""},
      {"zovDrawMode", "renderer.h", "DrawMode", "DRAW_", ""},
      {"zovPixelFormat", "pixel_icon2d.h", "PixelFormat", "PIXEL_FORMAT_", ""},
      {"zovModelID", "resource_ids.h", "ModelID", "MODEL_", ""},
      {"zovMenuID", "resource_ids.h", "MenuID", "MENU_", ""},
      {"zovCursorID", "resource_ids.h", "CursorID", "CURSOR_", "NoCursor"},
      {"zovStringID", "resource_ids.h", "StringID", "STRING_", "NoString"},
      {"zovTextureID", "resource_ids.h", "TextureID", "TEXTURE_", "NoTexture"},
      {"zovOrientorLocation", "orientor_parameters.h", "Location", "LOCATION_", ""},
      {"zovOrientorSize", "orientor_parameters.h", "Size", "SIZE_", ""},
      {"zovOrientorPart", "orientor_observer.h", "OrientorPart", "PART_", "NoPart"},
  };
  for (const Pair& pair : pairs) {
    const std::string prefix = pair.prefix;
    Members expected;
    for (const auto& [name, number] : MembersOf(std::string("korvane/") + pair.header, pair.inner)) {
      const std::string rest = name.substr(prefix.size());
      expected[rest == "NONE" ? pair.none : prefix.empty() ? rest : InFacadeSpelling(rest)] = number;
    }
    EXPECT_GE(expected.size(), 2U) << pair.inner;
    EXPECT_EQ(MembersOf("zov/zov_enums.h", pair.facade), expected) << pair.facade;
  }
}

// A host has a picture for each of these, by its number.
TEST(ZovEnums, have_a_number_for_each_pointer) {
  const std::vector<std::pair<zovCursorID, int>> rows = {
      {zovCursorID::OrbitCube, 0},
      {zovCursorID::Orbit, 1},
      {zovCursorID::Zoom, 2},
      {zovCursorID::Pan, 3},
      {zovCursorID::Look, 4},
      {zovCursorID::LookAt, 5},
      {zovCursorID::Walk, 6},
      {zovCursorID::WalkForward, 7},
      {zovCursorID::WalkBack, 8},
      {zovCursorID::WalkLeft, 9},
      {zovCursorID::WalkRight, 10},
      {zovCursorID::WalkForwardLeft, 11},
      {zovCursorID::WalkForwardRight, 12},
      {zovCursorID::WalkBackLeft, 13},
      {zovCursorID::WalkBackRight, 14},
      {zovCursorID::RunForward, 15},
      {zovCursorID::RunBack, 16},
      {zovCursorID::RunLeft, 17},
      {zovCursorID::RunRight, 18},
      {zovCursorID::RunForwardLeft, 19},
      {zovCursorID::RunForwardRight, 20},
      {zovCursorID::RunBackLeft, 21},
      {zovCursorID::RunBackRight, 22},
      {zovCursorID::NoTarget, 23},
      {zovCursorID::CubePart, 24},
      {zovCursorID::Arrow, 26},
      {zovCursorID::NoCursor, 27},
  };
  for (const auto& [cursor, number] : rows) EXPECT_EQ(static_cast<int>(cursor), number);
  EXPECT_EQ(MembersOf("zov/zov_enums.h", "zovCursorID").size(), rows.size());
}

TEST(ZovEnums, have_a_number_for_each_picture) {
  const std::vector<std::pair<zovTextureID, int>> rows = {
      {zovTextureID::CubeFaces, 0},
      {zovTextureID::CubeLabels, 1},
      {zovTextureID::CubeShading, 2},
      {zovTextureID::CubeShadow, 3},
      {zovTextureID::CompassRing, 4},
      {zovTextureID::CompassRingActive, 5},
      {zovTextureID::CompassLetters, 6},
      {zovTextureID::CubeHome, 7},
      {zovTextureID::CubeHomeActive, 8},
      {zovTextureID::CubeLock, 9},
      {zovTextureID::CubeLockActive, 10},
      {zovTextureID::CubeMenu, 11},
      {zovTextureID::CubeMenuActive, 12},
      {zovTextureID::CubeRotate, 13},
      {zovTextureID::CubeRotateCounterClockwiseActive, 14},
      {zovTextureID::CubeRotateClockwiseActive, 15},
      {zovTextureID::WelcomeAdvancedMap, 83},
      {zovTextureID::WelcomeBasicMap, 88},
      {zovTextureID::RewindFrame, 89},
      {zovTextureID::RewindFrameActive, 90},
      {zovTextureID::RewindBracket, 91},
      {zovTextureID::RewindBracketSnapped, 92},
      {zovTextureID::WalkRefused, 93},
      {zovTextureID::WalkStart, 94},
      {zovTextureID::HeightGauge, 95},
      {zovTextureID::HeightStart, 96},
      {zovTextureID::HeightMark, 97},
      {zovTextureID::ForwardGauge, 98},
      {zovTextureID::ForwardTarget, 99},
      {zovTextureID::RewindGlass, 100},
      {zovTextureID::RollRing, 101},
      {zovTextureID::StoryFrame, 102},
      {zovTextureID::StoryTitleBar, 103},
      {zovTextureID::StoryPlay, 104},
      {zovTextureID::StoryPlayActive, 105},
      {zovTextureID::StoryPause, 106},
      {zovTextureID::StoryPauseActive, 107},
      {zovTextureID::StoryStop, 108},
      {zovTextureID::StoryStopActive, 109},
      {zovTextureID::StoryLoop, 110},
      {zovTextureID::StoryLoopActive, 111},
      {zovTextureID::StoryLoopOn, 112},
      {zovTextureID::StoryLoopOnActive, 113},
      {zovTextureID::StoryClose, 114},
      {zovTextureID::StoryCloseActive, 115},
      {zovTextureID::SequenceSlide, 116},
      {zovTextureID::SequenceSlideActive, 117},
      {zovTextureID::SequenceSlideSelected, 118},
      {zovTextureID::SequenceSlideSelectedActive, 119},
      {zovTextureID::SequenceSlidePlaying, 120},
      {zovTextureID::SequenceSlidePaused, 121},
      {zovTextureID::SequenceAdd, 122},
      {zovTextureID::SequenceAddActive, 123},
      {zovTextureID::SequenceStackLeft, 124},
      {zovTextureID::SequenceStackRight, 125},
      {zovTextureID::SequencePlay, 126},
      {zovTextureID::SequencePlayActive, 127},
      {zovTextureID::SequencePause, 128},
      {zovTextureID::SequencePauseActive, 129},
      {zovTextureID::SequenceTarget, 130},
      {zovTextureID::SequenceTargetActive, 131},
      {zovTextureID::ShotSlide, 132},
      {zovTextureID::ShotSlideActive, 133},
      {zovTextureID::ShotSlideSelected, 134},
      {zovTextureID::ShotSlidePlaying, 135},
      {zovTextureID::ShotSlidePaused, 136},
      {zovTextureID::ShotAdd, 137},
      {zovTextureID::ShotAddActive, 138},
      {zovTextureID::ShotPlay, 139},
      {zovTextureID::ShotPlayActive, 140},
      {zovTextureID::ShotPause, 141},
      {zovTextureID::ShotPauseActive, 142},
      {zovTextureID::ShotTarget, 143},
      {zovTextureID::ShotTargetActive, 144},
      {zovTextureID::SequenceDrop, 145},
      {zovTextureID::ShotDrop, 146},
      {zovTextureID::BarClose, 147},
      {zovTextureID::BarMenu, 148},
      {zovTextureID::BarFlyout, 149},
      {zovTextureID::BarMoreHorizontal, 152},
      {zovTextureID::BarMoreVertical, 153},
      {zovTextureID::BarOrientor, 154},
      {zovTextureID::BarFullNavigation, 155},
      {zovTextureID::BarMiniFullNavigation, 156},
      {zovTextureID::BarMiniViewObject, 157},
      {zovTextureID::BarMiniTourBuilding, 158},
      {zovTextureID::BarViewObject, 159},
      {zovTextureID::BarTourBuilding, 160},
      {zovTextureID::BarTwoD, 161},
      {zovTextureID::BarStoryboard, 170},
      {zovTextureID::BarTopLeft, 171},
      {zovTextureID::BarTopRight, 172},
      {zovTextureID::BarBottomRight, 173},
      {zovTextureID::BarBottomLeft, 174},
      {zovTextureID::BarTopLeftEdge, 175},
      {zovTextureID::BarTopRightEdge, 176},
      {zovTextureID::BarBottomRightEdge, 177},
      {zovTextureID::BarBottomLeftEdge, 178},
      {zovTextureID::NoTexture, 185},
  };
  for (const auto& [id, number] : rows) EXPECT_EQ(static_cast<int>(id), number);
  EXPECT_EQ(MembersOf("zov/zov_enums.h", "zovTextureID").size(), rows.size());
}

TEST(ZovEnums, have_a_number_for_each_text) {
  const std::vector<std::pair<zovStringID, int>> rows = {
      {zovStringID::RecordWalk, 9},
      {zovStringID::LookKeys, 28},
      {zovStringID::OffModel, 31},
      {zovStringID::DiscClosed, 32},
      {zovStringID::RewindEmpty, 33},
      {zovStringID::Walk, 34},
      {zovStringID::WalkRefused, 36},
      {zovStringID::ClickZoom, 37},
      {zovStringID::WalkUpDown, 38},
      {zovStringID::Pivot, 41},
      {zovStringID::Look, 49},
      {zovStringID::Orbit, 50},
      {zovStringID::Pan, 51},
      {zovStringID::Rewind, 52},
      {zovStringID::WheelZoom, 55},
      {zovStringID::RectZoom, 56},
      {zovStringID::LookAt, 57},
      {zovStringID::UcsDefault, 67},
      {zovStringID::CubeHome, 68},
      {zovStringID::CubeLock, 69},
      {zovStringID::CubePart, 70},
      {zovStringID::CubeCompass, 71},
      {zovStringID::CubeMenu, 72},
      {zovStringID::SequenceName, 73},
      {zovStringID::ShotName, 74},
      {zovStringID::StoryPlay, 75},
      {zovStringID::StoryPause, 76},
      {zovStringID::StoryStop, 77},
      {zovStringID::StoryLoop, 78},
      {zovStringID::StoryClose, 79},
      {zovStringID::SequenceAdd, 80},
      {zovStringID::SequencePlay, 81},
      {zovStringID::StoryTarget, 82},
      {zovStringID::ShotAdd, 83},
      {zovStringID::ShotPlay, 84},
      {zovStringID::StorySlide, 85},
      {zovStringID::BarClose, 86},
      {zovStringID::BarMenu, 87},
      {zovStringID::BarGrip, 88},
      {zovStringID::BarMoreControls, 89},
      {zovStringID::BarOrientor, 90},
      {zovStringID::BarFullNavigation, 91},
      {zovStringID::BarMiniFullNavigation, 92},
      {zovStringID::BarMiniViewObject, 93},
      {zovStringID::BarMiniTourBuilding, 94},
      {zovStringID::BarViewObject, 95},
      {zovStringID::BarTourBuilding, 96},
      {zovStringID::BarTwoD, 97},
      {zovStringID::BarStoryboard, 98},
      {zovStringID::DeviceWalkRefused, 99},
      {zovStringID::DeviceFlyRefused, 100},
      {zovStringID::NoString, 102},
  };
  for (const auto& [id, number] : rows) EXPECT_EQ(static_cast<int>(id), number);
  EXPECT_EQ(MembersOf("zov/zov_enums.h", "zovStringID").size(), rows.size());
}

// The numbers that a host's resources go by.
TEST(ZovEnums, have_the_numbers_that_hosts_know) {
  EXPECT_EQ(static_cast<int>(zovTextureID::NoTexture), 185);
  EXPECT_EQ(static_cast<int>(zovTextureID::CubeRotateClockwiseActive), 15);
  EXPECT_EQ(static_cast<int>(zovStringID::NoString), 102);
  EXPECT_EQ(static_cast<int>(zovStringID::CubeHome), 68);
  EXPECT_EQ(static_cast<int>(zovCursorID::NoCursor), 27);
  EXPECT_EQ(static_cast<int>(zovCursorID::Arrow), 26);
  EXPECT_EQ(static_cast<int>(zovMenuID::Orientor), 4);
  EXPECT_EQ(static_cast<int>(zovDrawMode::OverlayIcons), 6);
  EXPECT_EQ(static_cast<int>(zovPixelFormat::Rgba), 1);
  EXPECT_EQ(static_cast<int>(zovRenderMode::Perspective), 1);
  EXPECT_EQ(static_cast<int>(zovOrientorPart::CompassRing), 41);
  EXPECT_EQ(static_cast<int>(zovOrientorPart::BackArrow), 26);
  EXPECT_EQ(static_cast<int>(zovOrientorPart::RotateCounterClockwise), 32);
  EXPECT_EQ(static_cast<int>(zovOrientorLocation::BottomLeft), 3);
  EXPECT_EQ(static_cast<int>(zovOrientorSize::Large), 4);
  EXPECT_EQ(static_cast<int>(zovInterpolationMethod::Eased), 1);
}

}  // namespace
