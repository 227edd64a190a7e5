#include "replayed.h"

#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

#include "korvane/math.h"
#include "program.h"

namespace apps_test {

namespace fs = std::filesystem;
using Korvane::Math;
using Korvane::Vector3;

namespace {

std::istream& operator>>(std::istream& input, Vector3& vector) {
  return input >> vector.x >> vector.y >> vector.z;
}

}  // namespace

std::vector<Camera> ReadCameras(const std::string& text) {
  std::vector<Camera> cameras;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    if (line.front() == '#') continue;
    std::istringstream words(line);
    Camera camera;
    words >> camera.time >> camera.eye >> camera.centre >> camera.up >> camera.pivot;
    for (double& angle : camera.angles) words >> angle;
    words >> camera.orthoWidth >> camera.orthoHeight >> camera.projection >> camera.blend;
    EXPECT_TRUE(words && words.eof()) << line;
    cameras.push_back(camera);
  }
  return cameras;
}

fs::path GetRecording(const std::string& name) { return fs::path(ZOVVIEW_RECORDINGS) / (name + ".txt"); }

std::vector<Camera> Play(const std::string& name) {
  const ProgramResult result = RunViewer({"--replay", GetRecording(name).string()});
  EXPECT_EQ(result.exitCode, 0) << result.error;
  std::vector<Camera> cameras = ReadCameras(result.out);
  EXPECT_FALSE(cameras.empty()) << name;
  if (cameras.empty()) cameras.emplace_back();
  return cameras;
}

Vector3 Level(const Vector3& vector) { return (vector - UP * vector.Dot(UP)).Normalized(); }
double AngleBetween(const Vector3& a, const Vector3& b) {
  return std::atan2(a.Cross(b).Length(), a.Dot(b)) * Math::RAD_TO_DEG;
}

}  // namespace apps_test
