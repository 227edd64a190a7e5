// Recordings, played by the program, and the cameras that it prints.
#pragma once

#include <array>
#include <filesystem>
#include <string>
#include <vector>

#include "korvane/vector3.h"

namespace apps_test {

struct Camera {
  int time = 0;
  Korvane::Vector3 eye;
  Korvane::Vector3 centre;
  Korvane::Vector3 up;
  Korvane::Vector3 pivot;
  std::array<double, 4> angles{};
  double orthoWidth = 0.0;
  double orthoHeight = 0.0;
  std::string projection;
  double blend = 0.0;

  Korvane::Vector3 Direction() const { return (centre - eye).Normalized(); }
  double ToPivot() const { return (pivot - eye).Length(); }
  double FromAxis() const { return Direction().Cross(pivot - eye).Length(); }
};

std::vector<Camera> ReadCameras(const std::string& text);
std::filesystem::path GetRecording(const std::string& name);
/// At least one.
std::vector<Camera> Play(const std::string& name);

/// Of the generated building, which stands on z and is looked at from the front and the right.
inline const Korvane::Vector3 UP(0, 0, 1);
Korvane::Vector3 Level(const Korvane::Vector3& vector);
/// Degrees.
double AngleBetween(const Korvane::Vector3& a, const Korvane::Vector3& b);
/// The sizes of the scene are some tens; an inverse of a projection costs a few digits of sixteen.
constexpr double CLOSE = 1e-9;

}  // namespace apps_test
