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
