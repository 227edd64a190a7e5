#include "stored_stream.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <string_view>

#include "replayed.h"
#include "zovhost/scene.h"

namespace apps_test {

namespace fs = std::filesystem;
using Korvane::Vector3;

namespace {

constexpr double SAME_ELSEWHERE = 1e-6;  // world units, of some tens; of a last bit, some frames later

// FNV-1a.
class Hash {
 public:
  void Add(std::string_view bytes) {
    for (const char byte : bytes) value = (value ^ static_cast<unsigned char>(byte)) * 0x100000001b3U;
  }
  void Add(double number) { Add({reinterpret_cast<const char*>(&number), sizeof number}); }
  std::string GetText() const {
    std::ostringstream text;
    text << std::hex << value;
    return text.str();
  }

 private:
  std::uint64_t value = 0xcbf29ce484222325U;
};

void AddFunctions(Hash& hash) {
  for (int i = 1; i <= 2000; ++i) {
    const double x = i * 0.0123;
    for (const double each :
         {std::sin(x), std::cos(x), std::tan(x), std::atan2(x, 2.0), std::acos(1.0 / i), std::asin(1.0 / i),
          std::pow(x, 0.3), std::exp(-x), std::log(x), std::hypot(x, 1.0)}) {
      hash.Add(each);
    }
  }
}

void AddRays(Hash& hash) {
  const std::unique_ptr<zovhost::Scene> scene = zovhost::MakeDemoBuilding();
  const Vector3 eye = scene->GetCentre() + Vector3(0.5, -0.75, 0.45) * (3.0 * scene->GetRadius());
  for (int i = 0; i < 400; ++i) {
    const int column = i % 20;
    const int row = i / 20;
    const Vector3 aim(column / 10.0 - 1.0, row / 10.0 - 1.0, 0.3);
    zovhost::Scene::Hit hit;
    if (!scene->Intersect(eye, scene->GetCentre() + aim * scene->GetRadius() - eye, hit)) continue;
    for (const double each : {hit.point.x, hit.point.y, hit.point.z}) hash.Add(each);
  }
}

// Of what a machine brings along: its C library's functions, and the rays of its processor.
const std::string& GetMachine() {
  static const std::string machine = [] {
    Hash hash;
    AddFunctions(hash);
    AddRays(hash);
    return hash.GetText();
  }();
  return machine;
}

struct Stream {
  std::string machine;
  std::string hash;  // of all lines
  int count = 0;
  std::string last;  // the line of the last camera
};

Stream MakeStream(const std::string& printed) {
  Stream stream;
  stream.machine = GetMachine();
  Hash hash;
  hash.Add(printed);
  stream.hash = hash.GetText();
  std::istringstream lines(printed);
  for (std::string line; std::getline(lines, line);) {
    if (line.starts_with('#')) continue;
    ++stream.count;
    stream.last = line;
  }
  return stream;
}

void Write(const Stream& stream, const fs::path& file) {
  std::ofstream output(file, std::ios::binary);
  output << "machine " << stream.machine << "\nstream " << stream.hash << "\ncameras " << stream.count << '\n'
         << stream.last << '\n';
}

bool Read(const fs::path& file, Stream& stream) {
  std::ifstream input(file, std::ios::binary);
  std::string word;
  input >> word >> stream.machine >> word >> stream.hash >> word >> stream.count >> std::ws;
  return static_cast<bool>(std::getline(input, stream.last));
}

// The greatest distance between their points.
double GetDistance(const Stream& a, const Stream& b) {
  const Camera mine = ReadCameras(a.last).at(0);
  const Camera other = ReadCameras(b.last).at(0);
  double distance = 0.0;
  for (Vector3 Camera::*point : {&Camera::eye, &Camera::centre, &Camera::up, &Camera::pivot}) {
    distance = std::max(distance, (mine.*point - other.*point).Length());
  }
  return distance;
}

}  // namespace

void ExpectStoredStream(const std::string& name, const std::string& printed) {
  constexpr const char* RENEW =
      "\nIf the change is meant: ZOV_KEEP_STREAMS=1 build/dev/tests/apps/apps_tests "
      "--gtest_filter='*EveryRecording*'";
  const fs::path file = fs::path(ZOVVIEW_STREAMS) / (name + ".txt");
  const Stream stream = MakeStream(printed);
  if (std::getenv("ZOV_KEEP_STREAMS") != nullptr) Write(stream, file);  // NOLINT(concurrency-mt-unsafe)
  Stream stored;
  ASSERT_TRUE(Read(file, stored)) << file << " cannot be read" << RENEW;
  EXPECT_EQ(stream.count, stored.count) << RENEW;
  EXPECT_LE(GetDistance(stream, stored), SAME_ELSEWHERE) << "between the last cameras" << RENEW;
  const bool isSameMachine = stream.machine == stored.machine;
  EXPECT_TRUE(!isSameMachine || stream.hash == stored.hash) << "a bit has changed" << RENEW;
}

}  // namespace apps_test
