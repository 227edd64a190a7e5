#include "scene_view/scene_buffers.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <new>
#include <numeric>
#include <utility>

#include "gl/buffer_offset.h"
#include "gl/gl_program.h"
#include "projection/matrix.h"
#include "scene_view/coarse_mesh.h"
#include "scene_view/coarse_parts.h"
#include "scene_view/crease_edges.h"
#include "scene_view/packed_edges.h"
#include "scene_view/packed_vertices.h"
#include "zovhost/gl_state_guard.h"

namespace zovhost {

namespace {

// Looking for edges takes time and memory in proportion; beyond this they would be a thicket anyway.
constexpr std::size_t mostEdgeIndices = std::size_t{6} * 1000 * 1000;
// Triangles that a frame of a moving view draws, so that it keeps up without a graphics card.
constexpr std::size_t movingTriangles = 100'000;
constexpr std::size_t mostQuickDraws = 1000;
constexpr std::size_t fewestCoarse = 500;  // a mesh of fewer triangles is drawn whole
constexpr std::size_t pieceBytes = std::size_t{4} << 20;
constexpr const char* UPLOADING = "Uploading";

bool IsTransparent(const Scene& scene, const SceneMesh& mesh) {
  constexpr int opaque = 250;
  const SceneMaterial& material = scene.GetMaterials()[static_cast<std::size_t>(mesh.material)];
  if (material.colour[3] * 255.0F < static_cast<float>(opaque)) return true;
  for (std::size_t i = 3; i < mesh.colours.size(); i += 4) {
    if (mesh.colours[i] < opaque) return true;
  }
  return false;
}

// What is seen through shows the backs of its triangles.
bool CoversAll(const Scene& scene, const SceneMesh& mesh) {
  return !IsTransparent(scene, mesh) &&
         scene.GetMaterials()[static_cast<std::size_t>(mesh.material)].image < 0;
}

GLuint MakeBuffer(GLenum target, std::size_t bytes, const void* data) {
  GLuint buffer = 0;
  glGenBuffers(1, &buffer);
  glBindBuffer(target, buffer);
  glBufferData(target, static_cast<GLsizeiptr>(bytes), data, GL_STATIC_DRAW);
  return buffer;
}

void Fill(GLuint buffer, std::size_t offset, const void* data, std::size_t bytes) {
  const GLStateGuard guard;
  glBindBuffer(GL_ARRAY_BUFFER, buffer);
  glBufferSubData(GL_ARRAY_BUFFER, static_cast<GLintptr>(offset), static_cast<GLsizeiptr>(bytes), data);
}

// The lines of each part of a batch, placed; `found` by mesh of the scene.
void AppendEdges(const Scene& scene, const PartBatch& batch, const std::vector<std::vector<Crease>>& found,
                 std::vector<PackedEdge>& edges) {
  for (const PartBatch::Member& member : batch.members) {
    const ScenePart& part = scene.GetParts()[member.part];
    for (const Crease& crease : found[static_cast<std::size_t>(part.mesh)])
      edges.push_back(PackEdge(crease, part.transform, batch.origin));
  }
}

}  // namespace

bool SceneBuffers::Upload(const Scene& scene, const Progress& progress) {
  for (int i = 0; i < 16 && glGetError() != GL_NO_ERROR; ++i) {
  }
  constexpr double planned = 0.6;  // of the progress
  Plan plan;
  const Progress planning = [&progress](double fraction, const char* what) {
    return progress(fraction * planned, what);
  };
  PacedProgress paced(progress);
  const Progress uploading = [&paced](double fraction, const char* what) {
    return paced.Tell(planned + fraction * (1.0 - planned), what);
  };
  const auto work = [&](WorkReport& report) { MakePlan(scene, plan, report); };
  if (!RunReported(progress ? planning : Progress(), work)) return false;
  if (!UploadMaterials(scene, uploading) || !UploadEdges(plan, uploading)) return false;
  if (!UploadVertices(scene, plan, uploading) || !UploadIndices(scene, plan, uploading)) return false;
  const GLStateGuard guard;
  MakeTriangleArray(plan);
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

// ---- the plan ----

void SceneBuffers::MakePlan(const Scene& scene, Plan& plan, WorkReport& report) {
  report.BeginStep(0.0, 0.3, "Gathering the parts");
  std::vector<bool> transparent;
  for (const SceneMesh& mesh : scene.GetMeshes()) transparent.push_back(IsTransparent(scene, mesh));
  std::vector<bool> gathered;
  for (const ScenePart& part : scene.GetParts()) {
    gathered.push_back(!transparent[static_cast<std::size_t>(part.mesh)]);
  }
  plan.batches = GatherParts(scene, gathered, report);
  std::fill(gathered.begin(), gathered.end(), false);
  for (const PartBatch& batch : plan.batches) {
    for (const PartBatch::Member& member : batch.members) gathered[member.part] = true;
  }
  PlanMeshes(scene, gathered, plan);
  for (std::size_t i = 0; i < transparent.size(); ++i) meshes[i].transparent = transparent[i];
  SortDrawn(scene, gathered, plan);
  report.BeginStep(0.3, 0.6, "Looking for edges");
  PlanEdges(scene, plan, report);
  report.BeginStep(0.6, 1.0, "Making a coarse model");
  PlanCoarse(scene, plan, report);
}

void SceneBuffers::PlanMeshes(const Scene& scene, const std::vector<bool>& gathered, Plan& plan) {
  plan.sources.resize(scene.GetMeshes().size());
  for (std::size_t i = 0; i < gathered.size(); ++i) {
    if (gathered[i]) continue;
    const auto number = static_cast<std::size_t>(scene.GetParts()[i].mesh);
    const SceneMesh& mesh = scene.GetMeshes()[number];
    plan.sources[number] = {&mesh, nullptr, mesh.positions.size() / 3, mesh.indices.size()};
  }
  for (const PartBatch& batch : plan.batches)
    plan.sources.push_back({nullptr, &batch, batch.vertexCount, batch.indexCount});
  for (const Plan::Source& source : plan.sources) {
    const bool ofMesh = source.mesh != nullptr;
    const bool ofBatch = source.batch != nullptr;
    if ((ofMesh && !source.mesh->texCoords.empty()) || (ofBatch && source.batch->hasTexCoords))
      plan.kind.hasTexCoords = true;
    if ((ofMesh && !source.mesh->colours.empty()) || (ofBatch && source.batch->hasColours))
      plan.kind.hasColours = true;
    plan.vertexCount += source.vertexCount;
    const int material = ofMesh ? source.mesh->material : ofBatch ? source.batch->material : 0;
    meshes.push_back({.material = static_cast<std::size_t>(material)});
  }
}

bool SceneBuffers::AreSolid(const Scene& scene, const PartBatch& batch) const {
  return std::all_of(batch.members.begin(), batch.members.end(), [&](const PartBatch::Member& member) {
    return meshes[static_cast<std::size_t>(scene.GetParts()[member.part].mesh)].solid;
  });
}

// A batch has those of its parts, each found in its own mesh: where parts touch is no fold.
void SceneBuffers::PlanEdges(const Scene& scene, Plan& plan, WorkReport& report) {
  const std::size_t count = scene.GetMeshes().size();
  std::vector<std::vector<Crease>> found(count);
  std::size_t indicesSeen = 0;
  for (std::size_t i = 0; i < count; ++i) {
    report.Tell(static_cast<double>(i) / static_cast<double>(count));
    indicesSeen += scene.GetMeshes()[i].indices.size();
    if (indicesSeen > mostEdgeIndices) break;
    MeshEdges edges = FindEdges(scene.GetMeshes()[i], &report);
    found[i] = std::move(edges.creases);
    meshes[i].solid = edges.solid && CoversAll(scene, scene.GetMeshes()[i]);
  }
  for (std::size_t i = 0; i < meshes.size(); ++i) {
    const std::size_t before = plan.edges.size();
    if (i < count && plan.sources[i].mesh != nullptr) {
      for (const Crease& crease : found[i]) plan.edges.push_back(PackEdge(crease));
    }
    if (i >= count) AppendEdges(scene, plan.batches[i - count], found, plan.edges);
    if (i >= count) meshes[i].solid = AreSolid(scene, plan.batches[i - count]);
    meshes[i].firstEdge = before;
    meshes[i].edgeCount = static_cast<GLsizei>(plan.edges.size() - before);
  }
}

// Each mesh gets its share of what a frame may draw, by its triangles.
void SceneBuffers::PlanCoarse(const Scene& scene, Plan& plan, WorkReport& report) {
  plan.coarse.resize(meshes.size());
  double triangles = 0.0;
  for (const Drawn& one : drawn) triangles += static_cast<double>(plan.sources[one.mesh].indexCount) / 3.0;
  large = triangles > movingTriangles || drawn.size() > mostQuickDraws;
  if (triangles <= movingTriangles) return;
  CoarseParts chooser(scene, report);
  for (std::size_t i = 0; i < meshes.size(); ++i) {
    const std::size_t own = plan.sources[i].indexCount / 3;
    const double share = static_cast<double>(own) * movingTriangles / triangles;
    const auto wanted = static_cast<std::size_t>(std::max(share, 20.0));
    if (own < fewestCoarse) continue;
    plan.coarse[i] = i < scene.GetMeshes().size()
                         ? FindCoarseTriangles(*plan.sources[i].mesh, wanted, report)
                         : chooser.Choose(plan.batches[i - scene.GetMeshes().size()], wanted);
  }
}

void SceneBuffers::SortDrawn(const Scene& scene, const std::vector<bool>& gathered, const Plan& plan) {
  const std::vector<ScenePart>& from = scene.GetParts();
  parts.resize(from.size());
  for (std::size_t i = 0; i < from.size(); ++i) {
    parts[i] = {static_cast<std::size_t>(from[i].mesh), from[i].transform, from[i].bounds.GetCenter(), 0};
  }
  for (std::size_t i = 0; i < plan.batches.size(); ++i) {
    const PartBatch& batch = plan.batches[i];
    Drawn one{scene.GetMeshes().size() + i, identityMatrix, false, batch.origin, batch.radius, batch.members};
    batch.origin.ToArray(one.transform.data() + 12);
    drawn.push_back(std::move(one));
  }
  for (std::size_t i = 0; i < from.size(); ++i) {
    if (gathered[i]) continue;
    drawn.push_back({parts[i].mesh,
                     from[i].transform,
                     IsMirrored(from[i].transform),
                     parts[i].centre,
                     from[i].bounds.GetExtent().Length(),
                     {}});
    drawn.back().members.push_back({.part = i});
  }
  SortByMaterial();
}

void SceneBuffers::SortByMaterial() {
  std::stable_sort(drawn.begin(), drawn.end(), [this](const Drawn& a, const Drawn& b) {
    const Mesh& first = meshes[a.mesh];
    const Mesh& second = meshes[b.mesh];
    if (first.transparent != second.transparent) return second.transparent;
    return first.material < second.material;
  });
  for (std::size_t i = 0; i < drawn.size(); ++i) {
    for (const PartBatch::Member& member : drawn[i].members) parts[member.part].drawn = i;
    if (!meshes[drawn[i].mesh].transparent) ++opaqueCount;
    if (drawn[i].members.front().indexCount == 0) drawn[i].members.clear();
  }
}

// ---- the upload: false where it is broken off ----

bool SceneBuffers::UploadMaterials(const Scene& scene, const Progress& progress) {
  for (const Image& image : scene.GetImages()) {
    if (!progress(0.0, UPLOADING)) return false;
    const GLStateGuard guard;
    textures.push_back(UploadTexture(image, {.mipmaps = true, .repeat = true, .premultiply = false}));
  }
  for (const SceneMaterial& material : scene.GetMaterials()) {
    const bool hasImage = material.image >= 0 && static_cast<std::size_t>(material.image) < textures.size();
    materials.push_back({material.colour, hasImage ? textures[static_cast<std::size_t>(material.image)] : 0,
                         material.twoSided});
  }
  return progress(0.0, UPLOADING);
}

namespace {

// A mesh of the scene, or one that is made for as long as `made` lives.
const SceneMesh& TakeMesh(const Scene& scene, const SceneMesh* mesh, const PartBatch* batch,
                          SceneMesh& made) {
  if (mesh != nullptr) return *mesh;
  return made = MakeBatchMesh(scene, *batch);
}

}  // namespace

bool SceneBuffers::UploadVertices(const Scene& scene, const Plan& plan, const Progress& progress) {
  const std::size_t size = GetBufferSize(plan.kind, plan.vertexCount);
  {
    const GLStateGuard guard;
    vertexBuffer = MakeBuffer(GL_ARRAY_BUFFER, size, nullptr);
  }
  if (!progress(0.0, UPLOADING)) return false;
  std::vector<std::uint8_t> piece;
  std::size_t done = 0;
  for (const Plan::Source& source : plan.sources) {
    if (source.vertexCount == 0) continue;
    SceneMesh made;
    const SceneMesh& mesh = TakeMesh(scene, source.mesh, source.batch, made);
    for (std::size_t i = 0; i < source.vertexCount; ++i) {
      AppendVertex(mesh, i, plan.kind, piece);
      if (piece.size() < pieceBytes) continue;
      Fill(vertexBuffer, done, piece.data(), piece.size());
      done += piece.size();
      piece.clear();
      if (!progress(0.7 * static_cast<double>(done) / static_cast<double>(size), UPLOADING)) return false;
    }
  }
  AppendEnd(plan.kind, piece);
  Fill(vertexBuffer, done, piece.data(), piece.size());
  return progress(0.7, UPLOADING);
}

namespace {

// The indices of all meshes, one after the other, each counted from the points of its own.
class IndexUpload {
 public:
  IndexUpload(GLuint toBuffer, std::size_t ofCount, const Progress& told)
      : buffer(toBuffer), count(ofCount), progress(told) {}

  /// Where the next index goes.
  std::size_t GetPlace() const { return done + piece.size(); }
  void PassPoints(std::uint32_t points) { base += points; }

  // False: broken off.

  bool Append(const std::vector<std::uint32_t>& indices) {
    for (const std::uint32_t index : indices) {
      piece.push_back(base + index);
      if (piece.size() * sizeof(std::uint32_t) >= pieceBytes && !Flush()) return false;
    }
    return true;
  }

  bool Flush() {
    Fill(buffer, done * sizeof(std::uint32_t), piece.data(), piece.size() * sizeof(std::uint32_t));
    done += piece.size();
    piece.clear();
    return progress(0.7 + 0.3 * static_cast<double>(done) / static_cast<double>(count), UPLOADING);
  }

 private:
  const GLuint buffer;
  const std::size_t count;
  const Progress& progress;
  std::vector<std::uint32_t> piece;
  std::size_t done = 0;
  std::uint32_t base = 0;
};

}  // namespace

std::size_t SceneBuffers::CountIndices(const Plan& plan) {
  std::size_t count = 0;
  for (const Plan::Source& source : plan.sources) count += source.indexCount;
  for (const std::vector<std::uint32_t>& coarse : plan.coarse) count += coarse.size();
  return count;
}

bool SceneBuffers::UploadIndices(const Scene& scene, const Plan& plan, const Progress& progress) {
  const std::size_t count = CountIndices(plan);
  {
    const GLStateGuard guard;
    indexBuffer = MakeBuffer(GL_ARRAY_BUFFER, count * sizeof(std::uint32_t), nullptr);
  }
  if (!progress(0.7, UPLOADING)) return false;
  IndexUpload upload(indexBuffer, count, progress);
  for (std::size_t i = 0; i < meshes.size(); ++i) {
    if (plan.sources[i].indexCount == 0) continue;
    SceneMesh made;
    const SceneMesh& source = TakeMesh(scene, plan.sources[i].mesh, plan.sources[i].batch, made);
    const std::vector<std::uint32_t>& coarse = plan.coarse[i];
    Mesh& mesh = meshes[i];
    mesh.firstIndex = mesh.firstCoarse = upload.GetPlace();
    mesh.indexCount = mesh.coarseCount = static_cast<GLsizei>(source.indices.size());
    if (!upload.Append(source.indices)) return false;
    if (source.indices.size() / 3 >= fewestCoarse && !coarse.empty()) {
      mesh.firstCoarse = upload.GetPlace();
      mesh.coarseCount = static_cast<GLsizei>(coarse.size());
      if (!upload.Append(coarse)) return false;
    }
    upload.PassPoints(static_cast<std::uint32_t>(source.positions.size() / 3));
  }
  return upload.Flush();
}

void SceneBuffers::MakeTriangleArray(const Plan& plan) {
  glGenVertexArrays(1, &triangleArray);
  glBindVertexArray(triangleArray);
  glBindBuffer(GL_ARRAY_BUFFER, vertexBuffer);
  glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, indexBuffer);
  PointAttributes(plan.kind, plan.vertexCount);
}

// The plan has done with them then.
bool SceneBuffers::UploadEdges(Plan& plan, const Progress& progress) {
  constexpr std::size_t piece = pieceBytes / sizeof(PackedEdge);
  const std::vector<PackedEdge> edges = std::exchange(plan.edges, {});
  {
    const GLStateGuard guard;
    glGenVertexArrays(1, &edgeArray);
    glBindVertexArray(edgeArray);
    edgeBuffer = MakeBuffer(GL_ARRAY_BUFFER, edges.size() * sizeof(PackedEdge), nullptr);
    for (const GLuint location : {0U, 1U, 2U, 3U}) {
      glEnableVertexAttribArray(location);
      glVertexAttribDivisor(location, 1);
    }
  }
  for (std::size_t first = 0; first < edges.size(); first += piece) {
    const std::size_t count = std::min(piece, edges.size() - first);
    Fill(edgeBuffer, first * sizeof(PackedEdge), edges.data() + first, count * sizeof(PackedEdge));
    if (!progress(0.0, UPLOADING)) return false;
  }
  return true;
}

void SceneBuffers::BindEdges(const Mesh& mesh, std::size_t first) const {
  glBindVertexArray(edgeArray);
  glBindBuffer(GL_ARRAY_BUFFER, edgeBuffer);
  PointEdgeAttributes(mesh.firstEdge + first);
}

const SceneBuffers::Part* SceneBuffers::FindPart(int index) const {
  const bool known = index >= 0 && static_cast<std::size_t>(index) < parts.size();
  return known ? &parts[static_cast<std::size_t>(index)] : nullptr;
}

}  // namespace zovhost
