#pragma once

#include <epoxy/gl.h>

#include <array>
#include <cstddef>
#include <vector>

#include "scene/work_report.h"
#include "scene_view/packed_edges.h"
#include "scene_view/packed_vertices.h"
#include "scene_view/part_batches.h"
#include "zovhost/projection.h"
#include "zovhost/scene.h"

namespace zovhost {

/// A scene on the graphics card: all vertices in one buffer, all edges in another.
class SceneBuffers {
 public:
  struct Mesh {
    std::size_t firstIndex = 0;
    GLsizei indexCount = 0;
    std::size_t firstCoarse = 0;  // triangles for a view that moves; those of the mesh where it has few
    GLsizei coarseCount = 0;
    std::size_t firstEdge = 0;
    GLsizei edgeCount = 0;
    std::size_t material = 0;
    bool transparent = false;
    bool solid = false;  // from outside nobody sees the back of a triangle
  };
  struct Material {
    std::array<float, 4> colour = {};  // sRGB, straight alpha
    GLuint texture = 0;                // 0: none
    bool twoSided = true;
  };
  struct Part {
    std::size_t mesh = 0;
    Matrix4 transform = identityMatrix;
    Korvane::Vector3 centre;
    std::size_t drawn = 0;  // among those drawn
  };
  /// What one draw draws: a part, or many of one material that were joined.
  struct Drawn {
    std::size_t mesh = 0;
    Matrix4 transform = identityMatrix;
    bool mirrored = false;    // turns the winding around
    Korvane::Vector3 centre;  // of a sphere around it, in the world
    double radius = 0.0;
    std::vector<PartBatch::Member> members;  // by part; empty for a single part
  };

  /// Makes the buffers in the current context, whose state it leaves as it finds it whenever `progress` is
  /// told. False when the graphics card's memory is short or `progress` has broken it off.
  bool Upload(const Scene& scene, const Progress& progress);
  void Destroy();

  const std::vector<Mesh>& GetMeshes() const { return meshes; }
  const std::vector<Material>& GetMaterials() const { return materials; }
  /// Opaque ones first, those of one material together; then the transparent ones, each a single part.
  const std::vector<Drawn>& GetDrawn() const { return drawn; }
  std::size_t GetOpaqueCount() const { return opaqueCount; }
  /// Whether a frame of it takes long without a graphics card.
  bool IsLarge() const { return large; }
  /// Part `index` of the scene; null when there is none.
  const Part* FindPart(int index) const;

  /// Attributes 0 to 3: position, normal, texture coordinate, colour.
  GLuint GetTriangleArray() const { return triangleArray; }
  /// Points attributes 0 to 3, one line an instance, at line `first` of a mesh.
  void BindEdges(const Mesh& mesh, std::size_t first) const;

 private:
  // What is worked out of a scene ahead of the upload.
  struct Plan {
    // What a mesh of the buffers is made of: a mesh of the scene, a batch, or neither: drawn in batches
    // alone.
    struct Source {
      const SceneMesh* mesh = nullptr;
      const PartBatch* batch = nullptr;
      std::size_t vertexCount = 0;
      std::size_t indexCount = 0;
    };
    std::vector<PartBatch> batches;
    std::vector<Source> sources;
    std::vector<std::vector<std::uint32_t>> coarse;
    std::vector<PackedEdge> edges;
    VertexKind kind;
    std::size_t vertexCount = 0;
  };

  void MakePlan(const Scene& scene, Plan& plan, WorkReport& report);
  void PlanMeshes(const Scene& scene, const std::vector<bool>& gathered, Plan& plan);
  bool AreSolid(const Scene& scene, const PartBatch& batch) const;
  void PlanEdges(const Scene& scene, Plan& plan, WorkReport& report);
  void PlanCoarse(const Scene& scene, Plan& plan, WorkReport& report);
  void SortDrawn(const Scene& scene, const std::vector<bool>& gathered, const Plan& plan);
  void SortByMaterial();
  bool UploadMaterials(const Scene& scene, const Progress& progress);
  static std::size_t CountIndices(const Plan& plan);
  bool UploadVertices(const Scene& scene, const Plan& plan, const Progress& progress);
  bool UploadIndices(const Scene& scene, const Plan& plan, const Progress& progress);
  bool UploadEdges(Plan& plan, const Progress& progress);
  void MakeTriangleArray(const Plan& plan);

  std::vector<Mesh> meshes;  // those of the scene, then those of the batches
  std::vector<Material> materials;
  std::vector<Part> parts;
  std::vector<Drawn> drawn;
  std::size_t opaqueCount = 0;
  bool large = false;
  std::vector<GLuint> textures;
  GLuint triangleArray = 0;
  GLuint vertexBuffer = 0;
  GLuint indexBuffer = 0;
  GLuint edgeArray = 0;
  GLuint edgeBuffer = 0;
};

}  // namespace zovhost
