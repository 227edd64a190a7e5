#pragma once

#include <epoxy/gl.h>

#include <array>
#include <cstddef>
#include <vector>

#include "zovhost/projection.h"
#include "zovhost/scene.h"

namespace zovhost {

/// A scene on the graphics card: all vertices in one buffer, all edges in another.
class SceneBuffers {
 public:
  struct Mesh {
    std::size_t firstIndex = 0;
    GLsizei indexCount = 0;
    std::size_t firstEdge = 0;
    GLsizei edgeCount = 0;
    std::size_t material = 0;
    bool transparent = false;
  };
  struct Material {
    std::array<float, 4> colour = {};  // sRGB, straight alpha
    GLuint texture = 0;                // 0: none
    bool twoSided = true;
  };
  struct Part {
    std::size_t mesh = 0;
    Matrix4 transform = identityMatrix;
    bool mirrored = false;  // turns the winding around
    Korvane::Vector3 centre;
  };

  /// Wrap in a GLStateGuard. False when the graphics card's memory is short.
  bool Upload(const Scene& scene);
  void Destroy();

  const std::vector<Mesh>& GetMeshes() const { return meshes; }
  const std::vector<Material>& GetMaterials() const { return materials; }
  /// Opaque parts first, those of one material together; then the transparent ones.
  const std::vector<Part>& GetParts() const { return parts; }
  std::size_t GetOpaqueCount() const { return opaqueCount; }
  /// Where part `index` of the scene stands in GetParts; the number of parts when there is none.
  std::size_t FindPart(int index) const;

  /// Attributes 0 to 3: position, normal, texture coordinate, colour.
  GLuint GetTriangleArray() const { return triangleArray; }
  /// Points attributes 0 and 1, both ends of a line, one line an instance, at the first line of a mesh.
  void BindEdges(const Mesh& mesh) const;

 private:
  void UploadMaterials(const Scene& scene);
  void UploadTriangles(const Scene& scene);
  void UploadEdges(const Scene& scene);
  void SortParts(const Scene& scene);

  std::vector<Mesh> meshes;
  std::vector<Material> materials;
  std::vector<Part> parts;
  std::vector<std::size_t> placeOfPart;
  std::size_t opaqueCount = 0;
  std::vector<GLuint> textures;
  GLuint triangleArray = 0;
  GLuint vertexBuffer = 0;
  GLuint indexBuffer = 0;
  GLuint edgeArray = 0;
  GLuint edgeBuffer = 0;
};

}  // namespace zovhost
