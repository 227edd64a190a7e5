#pragma once

#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <string>

#include "zovhost/scene.h"

namespace zovtest {

/// A net of hills, `side` squares along each side of a square from -1 to 1, without normals.
inline zovhost::SceneMesh MakeHills(std::uint32_t side) {
  zovhost::SceneMesh mesh;
  for (std::uint32_t y = 0; y <= side; ++y) {
    for (std::uint32_t x = 0; x <= side; ++x) {
      const float u = 2.0F * static_cast<float>(x) / static_cast<float>(side) - 1.0F;
      const float v = 2.0F * static_cast<float>(y) / static_cast<float>(side) - 1.0F;
      mesh.positions.insert(mesh.positions.end(), {u, v, 0.2F * std::sin(7.0F * u) * std::cos(5.0F * v)});
    }
  }
  for (std::uint32_t y = 0; y < side; ++y) {
    for (std::uint32_t x = 0; x < side; ++x) {
      const std::uint32_t a = y * (side + 1) + x;
      const std::uint32_t c = a + side + 1;
      for (const std::uint32_t corner : {a, a + 1, c + 1, a, c + 1, c}) mesh.indices.push_back(corner);
    }
  }
  return mesh;
}

inline zovhost::SceneData MakeSceneData(zovhost::SceneMesh mesh) {
  zovhost::SceneData data;
  data.materials.emplace_back();
  data.meshes.push_back(std::move(mesh));
  data.parts.emplace_back();
  data.upDirection = {0.0, 0.0, 1.0};
  return data;
}

/// The hills as a binary STL.
inline std::string MakeHillsStl(std::uint32_t side) {
  const zovhost::SceneMesh mesh = MakeHills(side);
  std::string bytes(80, ' ');
  const auto add = [&bytes](const auto& value) {
    bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
  };
  add(static_cast<std::uint32_t>(mesh.indices.size() / 3));
  for (std::size_t i = 0; i < mesh.indices.size(); i += 3) {
    for (const float axis : {0.0F, 0.0F, 1.0F}) add(axis);
    for (std::size_t corner = 0; corner < 3; ++corner) {
      for (std::size_t axis = 0; axis < 3; ++axis) add(mesh.positions[3 * mesh.indices[i + corner] + axis]);
    }
    add(std::uint16_t{0});
  }
  return bytes;
}

/// The hills, of which each second triangle is lit from the other side, so that one that is left out shows.
inline std::string MakeRoughStl(std::uint32_t side) {
  constexpr std::size_t HEADER = 84;
  constexpr std::size_t FACET = 50;
  std::string bytes = MakeHillsStl(side);
  for (std::size_t i = 0; HEADER + i * FACET < bytes.size(); ++i) {
    const std::array<float, 3> normal = {i % 2 == 0 ? 0.8F : -0.8F, 0.0F, 0.6F};
    std::memcpy(bytes.data() + HEADER + i * FACET, normal.data(), sizeof normal);
  }
  return bytes;
}

}  // namespace zovtest
