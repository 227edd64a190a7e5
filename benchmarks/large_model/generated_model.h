#pragma once

#include <cstddef>
#include <filesystem>

/// Writes a ball with ripples, of about that many triangles, in the form that the extension names: .stl and
/// .ply as one mesh, .glb as a block of `parts` balls with a mesh each. False when it cannot be written.
bool WriteGeneratedModel(const std::filesystem::path& path, std::size_t triangles, std::size_t parts);
