#pragma once

#include <memory>
#include <string>
#include <vector>

#include "korvane/orientor_parameters.h"
#include "korvane/vector3.h"
#include "sheet.h"
#include "zovhost/image.h"
#include "zovhost/resource_pack.h"

namespace zovsheets {

/// A place counted from the cube's corner of the viewport inward, in sizes of the cube.
struct CubePoint {
  double x = 0.0;
  double y = 0.0;
};
constexpr CubePoint outside = {-1.0, -1.0};
constexpr CubePoint cubeCentre = {0.45, 0.45};

/// What the orientation cube is to look like, in one picture.
struct CubeState {
  std::string name;                           // of a file as well
  Korvane::Vector3 from = {1.0, 0.55, -0.8};  // where the viewer is, seen from the cube; its own space
  Korvane::Vector3 up = {0.0, 1.0, 0.0};
  int size = 180;      // points
  double scale = 1.0;  // pixels for one point
  Ground ground = Ground::Gradient;
  CubePoint mouse = outside;
  bool compass = false;
  bool lock = false;
  bool coordinateSystem = false;  // its label shows
  const wchar_t* systemName = nullptr;
  std::shared_ptr<const zovhost::ResourcePack> pack = nullptr;  // null: the kit's own
  Korvane::OrientorParameters::Location location = Korvane::OrientorParameters::LOCATION_TOP_RIGHT;
};

/// The states that the look of the cube is judged by, each with a name of its own.
std::vector<CubeState> GetCubeStates();

/// Draws a state in an OpenGL context that is current, over its ground. False when the driver refuses, and
/// when a picture is missing.
bool PaintCube(const CubeState& state, zovhost::Image& image);

}  // namespace zovsheets
