#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "korvane/box3.h"
#include "korvane/vector3.h"
#include "zovhost/image.h"

namespace zovhost {

/// How a surface looks.
struct SceneMaterial {
  std::string name;
  std::array<float, 4> colour = {0.8f, 0.8f, 0.8f, 1.0f};  // sRGB and opacity, 0 to 1; multiplies the image
  int image = -1;                                          // index into the scene's images, -1: none
  bool twoSided = true;                                    // draw both faces
};

/// Triangles in a space of their own; a part places them in the world.
struct SceneMesh {
  std::vector<float> positions;        // 3 a vertex
  std::vector<float> normals;          // 3 a vertex, unit length
  std::vector<float> texCoords;        // 2 a vertex, v = 0 at the top row of the image; or empty
  std::vector<std::uint8_t> colours;   // 4 a vertex, sRGB and opacity, multiply the material; or empty
  std::vector<std::uint32_t> indices;  // 3 a triangle, counter-clockwise seen from the front
  int material = 0;                    // index into the scene's materials
};

/// One placement of a mesh.
struct ScenePart {
  std::string name;
  int mesh = 0;
  /// Column major, from the mesh to the world. Double precision, because models often stand far from the
  /// origin: multiply it with the view matrix before rounding to float and nothing trembles.
  std::array<double, 16> transform = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
  Korvane::Box3 bounds;  // in the world, along its axes; filled by MakeScene
};

/// What a scene is made of.
struct SceneData {
  std::vector<SceneMesh> meshes;
  std::vector<SceneMaterial> materials;
  std::vector<Image> images;
  std::vector<ScenePart> parts;
  Korvane::Vector3 upDirection = {0.0, 1.0, 0.0};  // unit length, in the world
  std::vector<std::string> warnings;               // what was left out of the file, a line each
};

/// A flat face of a part: the triangles of one plane that are joined by their sides.
struct SceneFace {
  int part = -1;                         // -1: none
  std::vector<std::uint32_t> triangles;  // of the part's mesh, ascending
  std::vector<float> corners;            // 9 a triangle, in the space of the mesh
};

class FaceIndex;
class RayIndex;
struct FaceLimits;

class RayAnswers;

/// A model in memory that answers for its size and for rays. Immutable: every const member may be called from
/// any number of threads at once.
class Scene {
 public:
  struct Hit {
    Korvane::Vector3 point;   // in the world
    Korvane::Vector3 normal;  // of the triangle, unit length, turned towards the origin of the ray
    double distance = 0.0;    // from the origin of the ray, in world units whatever the direction's length
    int part = -1;
    std::uint32_t triangle = 0;  // of the part's mesh
    bool fromBehind = false;     // the triangle showed its back
  };

  ~Scene();
  Scene(const Scene&) = delete;
  Scene& operator=(const Scene&) = delete;

  const std::vector<SceneMesh>& GetMeshes() const { return data.meshes; }
  const std::vector<SceneMaterial>& GetMaterials() const { return data.materials; }
  const std::vector<Image>& GetImages() const { return data.images; }
  const std::vector<ScenePart>& GetParts() const { return data.parts; }
  const std::vector<std::string>& GetWarnings() const { return data.warnings; }

  /// The box along the world's axes around everything, in double precision; never empty.
  Korvane::Vector3 GetMin() const { return minimum; }
  Korvane::Vector3 GetMax() const { return maximum; }
  Korvane::Vector3 GetCentre() const { return (minimum + maximum) * 0.5; }
  Korvane::Box3 GetBoundingBox() const;
  /// Half the diagonal of the box; above zero.
  double GetRadius() const { return (maximum - minimum).Length() * 0.5; }
  /// Which way the model stands, of unit length. A camera with this up shows the model upright.
  Korvane::Vector3 GetUpDirection() const { return data.upDirection; }
  /// Triangles of all parts: a mesh placed twice counts twice.
  std::size_t GetTriangleCount() const { return triangleCount; }

  /// The nearest triangle along the ray, from either face. False, with `hit` untouched, when there is none
  /// or when the ray is degenerate: a direction without length, or anything that is not finite.
  bool Intersect(const Korvane::Vector3& origin, const Korvane::Vector3& direction, Hit& hit) const;
  /// The same, whoever answers in the place of the triangles.
  bool IntersectTriangles(const Korvane::Vector3& origin, const Korvane::Vector3& direction, Hit& hit) const;
  /// Who answers Intersect from now on; null, as at first, for the triangles. Not owned: it must stay until
  /// another is set or the scene is gone. Not while others call this scene.
  void SetRayAnswers(RayAnswers* answers) { rayAnswers = answers; }

  /// The face that was hit. A face that has the triangle of the hit already is left as it is, so that
  /// following a pointer costs only where the pointer comes to another face. False, with the face emptied,
  /// for a hit on no part of this scene.
  bool FindFace(const Hit& hit, SceneFace& face) const;
  /// The same, which `stopped` breaks off: false then, with the face emptied.
  bool FindFace(const Hit& hit, SceneFace& face, const std::atomic<bool>& stopped) const;
  /// The same for a face that is found within a millisecond or two: one of at most 300 triangles, of a mesh
  /// that is small or has its index. False for others, with the face emptied.
  bool FindSmallFace(const Hit& hit, SceneFace& face) const;
  /// Has a thread of its own index the sides of large meshes, once: FindFace, which looks through all
  /// triangles of a mesh until then, takes about as long as the face is large afterwards, and finds the same.
  /// The thread gives way to LoadScene, which forks, and ends with this at the latest. Not while others call
  /// this scene.
  void PrepareFaces();
  /// Whether that is done.
  bool AreFacesReady() const;

 private:
  friend class SceneMaker;
  explicit Scene(SceneData);
  const SceneMesh& GetMesh(std::size_t part) const;
  bool FindFace(const Hit& hit, SceneFace& face, const FaceLimits& limits) const;

  SceneData data;
  Korvane::Vector3 minimum;
  Korvane::Vector3 maximum;
  std::size_t triangleCount = 0;
  std::unique_ptr<RayIndex> rays;
  RayAnswers* rayAnswers = nullptr;
  std::unique_ptr<FaceIndex> faces;
};

/// Answers rays in the place of a scene's triangles, for instance with what they met in an earlier session.
class RayAnswers {
 public:
  virtual ~RayAnswers() = default;
  /// As Scene::Intersect, on the thread that asks the scene.
  virtual bool Answer(const Korvane::Vector3& origin, const Korvane::Vector3& direction, Scene::Hit& hit) = 0;
};

/// Told how far a long piece of work is: `fraction` from 0 to 1, never falling, and a few words that name the
/// step. Runs on the thread that asked for the work, at least ten times a second while it goes on, so a
/// window may serve its events from it. False breaks the work off, within a second.
using Progress = std::function<bool(double fraction, const char* what)>;

/// A scene of given parts. Null when an index points nowhere, a number is not finite or there is nothing to
/// show; `error` then holds one line. With `progress`, which may be empty, the work is done by a thread that
/// has ended when this returns; broken off, it is null as well.
std::unique_ptr<Scene> MakeScene(SceneData data, const Progress& progress, std::string& error);
inline std::unique_ptr<Scene> MakeScene(SceneData data, std::string& error) {
  return MakeScene(std::move(data), {}, error);
}

/// Reads a model: glTF, OBJ, STL, PLY, FBX, DAE, 3MF, IFC and whatever else the importer recognises. Null on
/// failure; `error` then holds one line that names the file and the reason. No file, however broken, brings
/// the program down: contained_import.h tells how. `progress` may be empty; when it breaks the load off, this
/// is a failure like others. Forks: threads of the caller's own should be at rest.
std::unique_ptr<Scene> LoadScene(const std::filesystem::path& path, const Progress& progress,
                                 std::string& error);

/// A two-storey house with a terrace on a lawn, generated; 1 unit is a metre, z is up, the entrance faces -y.
std::unique_ptr<Scene> MakeDemoBuilding();

}  // namespace zovhost
