#include "scene_view/scene_buffers.h"

#include <algorithm>
#include <cstdint>
#include <numeric>

#include "gl/buffer_offset.h"
#include "gl/gl_program.h"
#include "projection/matrix.h"
#include "scene_view/crease_edges.h"

namespace zovhost {

namespace {

// Looking for edges takes time and memory in proportion; beyond this they would be a thicket anyway.
constexpr std::size_t mostEdgeIndices = std::size_t{6} * 1000 * 1000;
constexpr std::size_t edgeFloats = 6;

struct Vertex {
  float position[3];
  float normal[3];  // zero: the shader takes the triangle's own
  float texCoord[2];
  std::uint8_t colour[4];
};

Vertex MakeVertex(const SceneMesh& mesh, std::size_t index) {
  Vertex vertex = {{}, {}, {}, {255, 255, 255, 255}};
  std::copy_n(mesh.positions.begin() + static_cast<std::ptrdiff_t>(3 * index), 3, vertex.position);
  const auto copy = [index](const auto& from, std::size_t count, auto* to) {
    if (from.size() < count * (index + 1)) return;
    std::copy_n(from.begin() + static_cast<std::ptrdiff_t>(count * index), count, to);
  };
  copy(mesh.normals, 3, vertex.normal);
  copy(mesh.texCoords, 2, vertex.texCoord);
  copy(mesh.colours, 4, vertex.colour);
  return vertex;
}

bool IsTransparent(const Scene& scene, const SceneMesh& mesh) {
  constexpr int opaque = 250;
  const SceneMaterial& material = scene.GetMaterials()[static_cast<std::size_t>(mesh.material)];
  if (material.colour[3] * 255.0F < static_cast<float>(opaque)) return true;
  for (std::size_t i = 3; i < mesh.colours.size(); i += 4) {
    if (mesh.colours[i] < opaque) return true;
  }
  return false;
}

template <typename Element>
GLuint MakeBuffer(GLenum target, const std::vector<Element>& elements) {
  GLuint buffer = 0;
  glGenBuffers(1, &buffer);
  glBindBuffer(target, buffer);
  glBufferData(target, static_cast<GLsizeiptr>(elements.size() * sizeof(Element)), elements.data(),
               GL_STATIC_DRAW);
  return buffer;
}

}  // namespace

bool SceneBuffers::Upload(const Scene& scene) {
  for (int i = 0; i < 16 && glGetError() != GL_NO_ERROR; ++i) {
  }
  UploadMaterials(scene);
  UploadTriangles(scene);
  UploadEdges(scene);
  SortParts(scene);
  return glGetError() == GL_NO_ERROR;
}

void SceneBuffers::Destroy() {
  glDeleteTextures(static_cast<GLsizei>(textures.size()), textures.data());
  const GLuint buffers[3] = {vertexBuffer, indexBuffer, edgeBuffer};
  glDeleteBuffers(3, buffers);
  const GLuint arrays[2] = {triangleArray, edgeArray};
  glDeleteVertexArrays(2, arrays);
  *this = {};
}

void SceneBuffers::UploadMaterials(const Scene& scene) {
  for (const Image& image : scene.GetImages()) {
    textures.push_back(UploadTexture(image, {.mipmaps = true, .repeat = true, .premultiply = false}));
  }
  for (const SceneMaterial& material : scene.GetMaterials()) {
    const bool hasImage = material.image >= 0 && static_cast<std::size_t>(material.image) < textures.size();
    materials.push_back({material.colour, hasImage ? textures[static_cast<std::size_t>(material.image)] : 0,
                         material.twoSided});
  }
}

void SceneBuffers::UploadTriangles(const Scene& scene) {
  std::vector<Vertex> vertices;
  std::vector<std::uint32_t> indices;
  for (const SceneMesh& mesh : scene.GetMeshes()) {
    const auto base = static_cast<std::uint32_t>(vertices.size());
    meshes.push_back({.firstIndex = indices.size(),
                      .indexCount = static_cast<GLsizei>(mesh.indices.size()),
                      .material = static_cast<std::size_t>(mesh.material),
                      .transparent = IsTransparent(scene, mesh)});
    for (std::size_t i = 0; i < mesh.positions.size() / 3; ++i) vertices.push_back(MakeVertex(mesh, i));
    for (const std::uint32_t index : mesh.indices) indices.push_back(base + index);
  }
  glGenVertexArrays(1, &triangleArray);
  glBindVertexArray(triangleArray);
  vertexBuffer = MakeBuffer(GL_ARRAY_BUFFER, vertices);
  indexBuffer = MakeBuffer(GL_ELEMENT_ARRAY_BUFFER, indices);
  const auto attribute = [](GLuint location, GLint size, GLenum type, GLboolean normalised,
                            std::size_t offset) {
    glEnableVertexAttribArray(location);
    glVertexAttribPointer(location, size, type, normalised, sizeof(Vertex), BufferOffset(offset));
  };
  attribute(0, 3, GL_FLOAT, GL_FALSE, offsetof(Vertex, position));
  attribute(1, 3, GL_FLOAT, GL_FALSE, offsetof(Vertex, normal));
  attribute(2, 2, GL_FLOAT, GL_FALSE, offsetof(Vertex, texCoord));
  attribute(3, 4, GL_UNSIGNED_BYTE, GL_TRUE, offsetof(Vertex, colour));
}

void SceneBuffers::UploadEdges(const Scene& scene) {
  std::vector<float> edges;
  std::size_t indicesSeen = 0;
  for (std::size_t i = 0; i < meshes.size(); ++i) {
    indicesSeen += scene.GetMeshes()[i].indices.size();
    if (indicesSeen > mostEdgeIndices) break;
    const std::vector<float> found = FindCreaseEdges(scene.GetMeshes()[i]);
    meshes[i].firstEdge = edges.size() / edgeFloats;
    meshes[i].edgeCount = static_cast<GLsizei>(found.size() / edgeFloats);
    edges.insert(edges.end(), found.begin(), found.end());
  }
  glGenVertexArrays(1, &edgeArray);
  glBindVertexArray(edgeArray);
  edgeBuffer = MakeBuffer(GL_ARRAY_BUFFER, edges);
  for (const GLuint location : {0U, 1U}) {
    glEnableVertexAttribArray(location);
    glVertexAttribDivisor(location, 1);
  }
}

void SceneBuffers::BindEdges(const Mesh& mesh) const {
  glBindVertexArray(edgeArray);
  glBindBuffer(GL_ARRAY_BUFFER, edgeBuffer);
  constexpr std::size_t stride = edgeFloats * sizeof(float);
  for (const GLuint end : {0U, 1U}) {
    glVertexAttribPointer(end, 3, GL_FLOAT, GL_FALSE, stride,
                          BufferOffset(mesh.firstEdge * stride + end * stride / 2));
  }
}

void SceneBuffers::SortParts(const Scene& scene) {
  const std::vector<ScenePart>& from = scene.GetParts();
  std::vector<std::size_t> order(from.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  const auto meshOf = [&](std::size_t part) -> const Mesh& {
    return meshes[static_cast<std::size_t>(from[part].mesh)];
  };
  std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
    const Mesh& first = meshOf(a);
    const Mesh& second = meshOf(b);
    if (first.transparent != second.transparent) return second.transparent;
    return first.material < second.material;
  });
  placeOfPart.resize(from.size());
  for (const std::size_t part : order) {
    placeOfPart[part] = parts.size();
    parts.push_back({static_cast<std::size_t>(from[part].mesh), from[part].transform,
                     IsMirrored(from[part].transform), from[part].bounds.GetCenter()});
    if (!meshOf(part).transparent) ++opaqueCount;
  }
}

std::size_t SceneBuffers::FindPart(int index) const {
  const bool known = index >= 0 && static_cast<std::size_t>(index) < placeOfPart.size();
  return known ? placeOfPart[static_cast<std::size_t>(index)] : parts.size();
}

}  // namespace zovhost
