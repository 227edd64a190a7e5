#include "generated_model.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <numbers>
#include <string>
#include <vector>

namespace {

using Point = std::array<float, 3>;
using Corners = std::array<std::uint32_t, 3>;

struct Ball {
  std::vector<Point> points;
  std::vector<Corners> triangles;
};

// A grid over the sphere, closed around it, its rows from pole to pole.
Ball MakeBall(std::size_t triangles, Point centre, float radius) {
  const auto rows =
      std::max<std::size_t>(3, static_cast<std::size_t>(std::sqrt(static_cast<double>(triangles) / 4)));
  const std::size_t columns = 2 * rows;
  Ball ball;
  ball.points.reserve((rows + 1) * columns);
  ball.triangles.reserve(rows * columns * 2);
  for (std::size_t row = 0; row <= rows; ++row) {
    const double polar =
        std::numbers::pi * (0.02 + 0.96 * static_cast<double>(row) / static_cast<double>(rows));
    for (std::size_t column = 0; column < columns; ++column) {
      const double around =
          2.0 * std::numbers::pi * static_cast<double>(column) / static_cast<double>(columns);
      const double r = radius * (1.0 + 0.05 * std::sin(12.0 * around) * std::sin(9.0 * polar));
      const double x = r * std::sin(polar) * std::cos(around);
      const double y = r * std::sin(polar) * std::sin(around);
      const double z = r * std::cos(polar);
      ball.points.push_back({static_cast<float>(centre[0] + x), static_cast<float>(centre[1] + y),
                             static_cast<float>(centre[2] + z)});
    }
  }
  const auto at = [columns](std::size_t row, std::size_t column) {
    return static_cast<std::uint32_t>(row * columns + column % columns);
  };
  for (std::size_t row = 0; row < rows; ++row) {
    for (std::size_t column = 0; column < columns; ++column) {
      ball.triangles.push_back({at(row, column), at(row + 1, column), at(row + 1, column + 1)});
      ball.triangles.push_back({at(row, column), at(row + 1, column + 1), at(row, column + 1)});
    }
  }
  return ball;
}

// Written in pieces that a drive likes.
class Output {
 public:
  explicit Output(const std::filesystem::path& path) : file(path, std::ios::binary) {}
  void Add(const void* bytes, std::size_t size) {
    const char* const from = static_cast<const char*>(bytes);
    buffer.insert(buffer.end(), from, from + size);
    if (buffer.size() > PIECE) Flush();
  }
  template <typename T>
  void AddValue(const T& value) {
    Add(&value, sizeof(T));
  }
  void AddText(const std::string& text) { Add(text.data(), text.size()); }
  bool Finish() {
    Flush();
    file.close();
    return file.good();
  }

 private:
  static constexpr std::size_t PIECE = std::size_t{1} << 20;
  void Flush() {
    file.write(buffer.data(), static_cast<std::streamsize>(buffer.size()));
    buffer.clear();
  }
  std::ofstream file;
  std::vector<char> buffer;
};

Point NormalOf(const Ball& ball, const Corners& corners) {
  const Point& a = ball.points[corners[0]];
  const Point& b = ball.points[corners[1]];
  const Point& c = ball.points[corners[2]];
  const Point u = {b[0] - a[0], b[1] - a[1], b[2] - a[2]};
  const Point v = {c[0] - a[0], c[1] - a[1], c[2] - a[2]};
  const Point n = {u[1] * v[2] - u[2] * v[1], u[2] * v[0] - u[0] * v[2], u[0] * v[1] - u[1] * v[0]};
  const float length = std::max(std::hypot(n[0], n[1], n[2]), 1e-30F);
  return {n[0] / length, n[1] / length, n[2] / length};
}

void WriteStl(Output& output, const Ball& ball) {
  output.Add(std::array<char, 80>().data(), 80);
  output.AddValue(static_cast<std::uint32_t>(ball.triangles.size()));
  for (const Corners& corners : ball.triangles) {
    output.AddValue(NormalOf(ball, corners));
    for (const std::uint32_t corner : corners) output.AddValue(ball.points[corner]);
    output.AddValue(std::uint16_t{0});
  }
}

void WritePly(Output& output, const Ball& ball) {
  output.AddText(
      "ply\nformat binary_little_endian 1.0\nelement vertex " + std::to_string(ball.points.size()) +
      "\nproperty float x\nproperty float y\nproperty float z\nelement face " +
      std::to_string(ball.triangles.size()) + "\nproperty list uchar uint vertex_indices\nend_header\n");
  output.Add(ball.points.data(), ball.points.size() * sizeof(Point));
  for (const Corners& corners : ball.triangles) {
    output.AddValue(std::uint8_t{3});
    output.AddValue(corners);
  }
}

void AddChunk(Output& output, std::uint32_t kind, std::size_t size) {
  output.AddValue(static_cast<std::uint32_t>(size));
  output.AddValue(kind);
}

// Each ball a mesh and a node of its own, in four materials.
void WriteGlb(Output& output, std::size_t triangles, std::size_t parts) {
  const auto side = static_cast<std::size_t>(std::ceil(std::cbrt(static_cast<double>(parts))));
  const Ball ball = MakeBall(triangles / parts, {0, 0, 0}, 0.4F);
  const std::size_t pointBytes = ball.points.size() * sizeof(Point);
  const std::size_t triangleBytes = ball.triangles.size() * sizeof(Corners);
  std::string nodes;
  std::string meshes;
  std::string children;
  const auto separate = [](std::string& text) {
    if (!text.empty()) text += ',';
  };
  for (std::size_t i = 0; i < parts; ++i) {
    separate(nodes), separate(meshes), separate(children);
    nodes += R"({"name":"ball )" + std::to_string(i) + R"(","mesh":)" + std::to_string(i) +
             R"(,"translation":[)" + std::to_string(i % side) + "," + std::to_string(i / side % side) + "," +
             std::to_string(i / side / side) + "]}";
    meshes += R"({"primitives":[{"attributes":{"POSITION":0},"indices":1,"material":)" +
              std::to_string(i % 4) + "}]}";
    children += std::to_string(i);
  }
  std::string json =
      R"({"asset":{"version":"2.0"},"scene":0,"scenes":[{"nodes":[)" + children + R"(]}],"nodes":[)" + nodes +
      R"(],"meshes":[)" + meshes +
      R"(],"materials":[{"pbrMetallicRoughness":{"baseColorFactor":[0.8,0.3,0.2,1]}},{"pbrMetallicRoughness":{"baseColorFactor":[0.2,0.6,0.3,1]}},{"pbrMetallicRoughness":{"baseColorFactor":[0.2,0.3,0.8,1]}},{}],)" +
      R"("accessors":[{"bufferView":0,"componentType":5126,"count":)" + std::to_string(ball.points.size()) +
      R"(,"type":"VEC3","min":[-1,-1,-1],"max":[1,1,1]},{"bufferView":1,"componentType":5125,"count":)" +
      std::to_string(ball.triangles.size() * 3) +
      R"(,"type":"SCALAR"}],"bufferViews":[{"buffer":0,"byteLength":)" + std::to_string(pointBytes) +
      R"(},{"buffer":0,"byteOffset":)" + std::to_string(pointBytes) + R"(,"byteLength":)" +
      std::to_string(triangleBytes) + R"(}],"buffers":[{"byteLength":)" +
      std::to_string(pointBytes + triangleBytes) + "}]}";
  while (json.size() % 4 != 0) json += ' ';
  constexpr std::size_t HEADER = 12;
  constexpr std::size_t CHUNK = 8;
  output.AddText("glTF");
  output.AddValue(std::uint32_t{2});
  output.AddValue(
      static_cast<std::uint32_t>(HEADER + CHUNK + json.size() + CHUNK + pointBytes + triangleBytes));
  AddChunk(output, 0x4E4F534A, json.size());
  output.AddText(json);
  AddChunk(output, 0x004E4942, pointBytes + triangleBytes);
  output.Add(ball.points.data(), pointBytes);
  output.Add(ball.triangles.data(), triangleBytes);
}

}  // namespace

bool WriteGeneratedModel(const std::filesystem::path& path, std::size_t triangles, std::size_t parts) {
  Output output(path);
  if (path.extension() == ".glb") {
    WriteGlb(output, triangles, parts);
  } else {
    const Ball ball = MakeBall(triangles, {0, 0, 0}, 1.0F);
    path.extension() == ".ply" ? WritePly(output, ball) : WriteStl(output, ball);
  }
  return output.Finish();
}
