#include "scene/scene_importer.h"

#include <assimp/config.h>
#include <assimp/importerdesc.h>
#include <assimp/postprocess.h>
#include <assimp/scene.h>
#if defined(__GLIBC__)
#  include <malloc.h>
#endif

#include <algorithm>
#include <assimp/Importer.hpp>
#include <assimp/ProgressHandler.hpp>
#include <cmath>
#include <cstring>
#include <limits>
#include <memory>
#include <new>
#include <utility>

#include "projection/matrix.h"
#include "scene/confined_files.h"
#include "scene/material_importer.h"
#include "scene/mesh_repair.h"

namespace zovhost {

using Korvane::Vector3;

namespace {

// How a format arrives from assimp 5.2 when that is not y-up as written. Found by importing a file of each:
// `turned` formats get a root that lays z-up over to y-up, which is undone here, so that coordinates are
// those of the file; the others arrive as written.
struct FormatTraits {
  const char* extension;  // how assimp's importer names itself: one of its extensions
  bool zUp;
  bool turned;
  bool linearColours;
};
constexpr FormatTraits FORMATS[] = {
    {"ifc", true, true, false},     // always z-up
    {"stl", true, false, false},    // by custom: the format does not say
    {"3mf", true, false, false},    // by definition of the format
    {"amf", true, false, false},    // as 3MF, its successor
    {"blend", true, false, false},  // always z-up
    {"smd", true, false, false},    // always z-up
    {"3ds", true, true, false},     // always z-up
    {"ase", true, true, false},     // as 3DS
    {"dxf", true, true, false},     // always z-up
    {"glb", false, false, true},    // glTF
};
constexpr FormatTraits USUAL_FORMAT = {"", false, false, false};

// (x, y, z) with y up back to z up: (x, -z, y).
constexpr Matrix Y_UP_TO_Z_UP = {1, 0, 0, 0, 0, 0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1};

constexpr const char* NO_MEMORY = "reading it takes more memory than is allowed";
constexpr const char* CANCELLED = "reading it was broken off";
constexpr double READING_SHARE = 0.8;   // of the progress; the rest is ours
constexpr double PICTURES_SHARE = 0.1;  // of it, of which the pictures are this

bool HasExtension(const aiImporterDesc& description, const char* extension) {
  const std::string all = std::string(" ") + description.mFileExtensions + " ";
  return all.find(std::string(" ") + extension + " ") != std::string::npos;
}

const FormatTraits& GetTraits(const Assimp::Importer& importer) {
  const int index = importer.GetPropertyInteger("importerIndex", -1);
  if (index < 0) return USUAL_FORMAT;
  const aiImporterDesc* description = importer.GetImporterInfo(static_cast<std::size_t>(index));
  if (description == nullptr || description->mFileExtensions == nullptr) return USUAL_FORMAT;
  for (const FormatTraits& format : FORMATS)
    if (HasExtension(*description, format.extension)) return format;
  return USUAL_FORMAT;
}

// FBX states its axis and assimp hands it on; COLLADA states it too and assimp turns the model to y-up.
Vector3 GetUpDirection(const FormatTraits& format, const aiScene& source) {
  std::int32_t axis = format.zUp ? 2 : 1;
  std::int32_t sign = 1;
  if (source.mMetaData != nullptr) {
    source.mMetaData->Get("UpAxis", axis);
    source.mMetaData->Get("UpAxisSign", sign);
  }
  Vector3 up;
  up[std::clamp(axis, 0, 2)] = sign < 0 ? -1.0 : 1.0;
  return up;
}

// assimp owns the handler and tells it 0 to 1, or a negative number for "no idea".
class ReadingProgress : public Assimp::ProgressHandler {
 public:
  explicit ReadingProgress(const Progress& target) : progress(target) {}
  bool Update(float fraction) override {
    return !progress || !(fraction >= 0.0f) ||
           progress(std::min(double{fraction}, 1.0) * READING_SHARE, "Reading the file");
  }

 private:
  const Progress& progress;
};

Matrix GetMatrix(const aiMatrix4x4& m) {
  return {m.a1, m.b1, m.c1, m.d1, m.a2, m.b2, m.c2, m.d2, m.a3, m.b3, m.c3, m.d3, m.a4, m.b4, m.c4, m.d4};
}

std::string GetPartName(const aiNode& node, const aiMesh& mesh, std::size_t number) {
  for (const aiString* name : {&node.mName, &mesh.mName})
    if (name->length > 0) return name->C_Str();
  return "Part " + std::to_string(number);
}

std::uint8_t GetByte(float value) {
  return static_cast<std::uint8_t>(std::lround(std::clamp(value, 0.0f, 1.0f) * 255.0f));
}

class SceneConverter {
 public:
  SceneConverter(const aiScene& sourceScene, const FormatTraits& sourceFormat, const ModelFolder& folder,
                 SceneData& sceneData, const ImportOptions& options)
      : source(sourceScene),
        format(sourceFormat),
        data(sceneData),
        sink(options.sink),
        materials(sourceScene, folder, sourceFormat.linearColours, options.imageBytes, sceneData),
        converted(sourceScene.mNumMeshes) {}

  // Empties the meshes of the source. False when it was broken off.
  bool Run(const Progress& progress) {
    data.upDirection = GetUpDirection(format, source);
    materials.ImportAll([&](double fraction) {
      wanted = wanted && Report(progress, READING_SHARE + PICTURES_SHARE * fraction);
    });
    if (data.materials.empty()) data.materials.emplace_back();
    ConvertNodes(progress);
    if (dropped > 0)
      data.warnings.push_back(std::to_string(dropped) +
                              (dropped == 1 ? " broken triangle was" : " broken triangles were") +
                              " left out");
    return wanted;
  }

 private:
  struct Placed {
    const aiNode* node;
    Matrix transform;
  };
  struct ConvertedMesh {
    int index = UNSEEN;
    Vector3 offset;
  };
  static constexpr int UNSEEN = -2;
  static constexpr int NOTHING = -1;

  static bool Report(const Progress& progress, double fraction) {
    return !progress || progress(fraction, "Preparing surfaces");
  }

  // Without recursion: a hostile file nests deeper than any stack.
  void ConvertNodes(const Progress& progress) {
    constexpr Matrix identity = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    std::vector<Placed> pending = {{source.mRootNode, format.turned ? Y_UP_TO_Z_UP : identity}};
    while (!pending.empty() && wanted) {
      const Placed parent = pending.back();
      pending.pop_back();
      if (parent.node == nullptr) continue;  // some importers count children that they do not make
      const aiNode& node = *parent.node;
      const Matrix transform = Multiply(parent.transform, GetMatrix(node.mTransformation));
      for (unsigned i = 0; i < node.mNumMeshes && wanted; ++i)
        AddPart(node, node.mMeshes[i], transform, progress);
      for (unsigned i = node.mNumChildren; i-- > 0;) pending.push_back({node.mChildren[i], transform});
    }
  }

  void AddPart(const aiNode& node, unsigned meshNumber, const Matrix& transform, const Progress& progress) {
    if (meshNumber >= source.mNumMeshes) return;
    aiMesh& mesh = *source.mMeshes[meshNumber];
    const ConvertedMesh& own = Convert(meshNumber, progress);
    if (own.index == NOTHING) return;
    ScenePart part;
    part.name = GetPartName(node, mesh, data.parts.size() + 1);
    part.mesh = own.index;
    part.transform = transform;
    TransformPoint(transform, own.offset).ToArray(part.transform.data() + 12);
    const bool usable = std::all_of(part.transform.begin(), part.transform.end(),
                                    [](double v) { return std::abs(v) <= LARGEST_COORDINATE; });
    if (usable)
      data.parts.push_back(std::move(part));
    else
      data.warnings.push_back("part " + part.name + " lies nowhere and was left out");
  }

  const ConvertedMesh& Convert(unsigned number, const Progress& progress) {
    ConvertedMesh& result = converted[number];
    if (result.index != UNSEEN) return result;
    result.index = NOTHING;
    SceneMesh mesh = Copy(*source.mMeshes[number]);
    dropped += DropBrokenTriangles(mesh);
    if (!mesh.indices.empty()) {
      result.offset = MoveToOrigin(mesh);
      CompleteNormals(mesh);
      result.index = meshCount++;
      Keep(std::move(mesh));
    }
    ++convertedCount;
    const double fraction = static_cast<double>(convertedCount) / source.mNumMeshes;
    constexpr double before = READING_SHARE + PICTURES_SHARE;
    wanted = Report(progress, before + (1.0 - before) * fraction);
    return result;
  }

  void Keep(SceneMesh&& mesh) {
    if (sink) return sink(std::move(mesh));
    data.meshes.push_back(std::move(mesh));
  }

  template <typename T>
  static void Free(T*& array) {
    delete[] array;
    array = nullptr;
  }

  // Each array is freed when it was copied: together they are larger than the copy.
  SceneMesh Copy(aiMesh& from) const {
    SceneMesh mesh;
    if (!from.HasPositions()) return mesh;
    mesh.material = from.mMaterialIndex < data.materials.size() ? static_cast<int>(from.mMaterialIndex) : 0;
    CopyVectors(from.mVertices, from.mNumVertices, mesh.positions);
    if (from.HasNormals()) CopyVectors(from.mNormals, from.mNumVertices, mesh.normals);
    CopyTexCoords(from, mesh);
    if (from.HasVertexColors(0)) CopyColours(from, mesh);
    Free(from.mVertices), Free(from.mNormals), Free(from.mTangents), Free(from.mBitangents);
    for (aiVector3D*& set : from.mTextureCoords) Free(set);
    for (aiColor4D*& set : from.mColors) Free(set);
    CopyTriangles(from, mesh);
    Free(from.mFaces);
    return mesh;
  }

  // A face is a small block of its own, and takes several times the memory of its three indices.
  static void CopyTriangles(aiMesh& from, SceneMesh& mesh) {
    constexpr unsigned PIECE = 1U << 20;
    mesh.indices.reserve(std::size_t{3} * from.mNumFaces);
    for (unsigned i = 0; i < from.mNumFaces; ++i) {
      aiFace& face = from.mFaces[i];  // lines and points keep fewer corners
      if (face.mNumIndices == 3) mesh.indices.insert(mesh.indices.end(), face.mIndices, face.mIndices + 3);
      Free(face.mIndices);
      if ((i + 1) % PIECE == 0) ReturnFreeMemory();
    }
  }

  // To the system: small blocks stay with the process otherwise.
  static void ReturnFreeMemory() {
#if defined(__GLIBC__)
    malloc_trim(0);
#endif
  }

  static void CopyVectors(const aiVector3D* from, unsigned count, std::vector<float>& to) {
    to.reserve(std::size_t{3} * count);
    for (unsigned i = 0; i < count; ++i) to.insert(to.end(), {from[i].x, from[i].y, from[i].z});
  }

  // assimp counts v from the bottom of the picture.
  void CopyTexCoords(const aiMesh& from, SceneMesh& mesh) const {
    if (data.materials[static_cast<std::size_t>(mesh.material)].image < 0) return;
    unsigned set = materials.GetTextureSet(static_cast<unsigned>(mesh.material));
    if (set >= AI_MAX_NUMBER_OF_TEXTURECOORDS || !from.HasTextureCoords(set)) set = 0;
    if (!from.HasTextureCoords(set)) return;
    for (unsigned i = 0; i < from.mNumVertices; ++i) {
      const aiVector3D& uv = from.mTextureCoords[set][i];
      const bool usable = std::isfinite(uv.x) && std::isfinite(uv.y);
      mesh.texCoords.insert(mesh.texCoords.end(), {usable ? uv.x : 0.0f, usable ? 1.0f - uv.y : 0.0f});
    }
  }

  void CopyColours(const aiMesh& from, SceneMesh& mesh) const {
    const auto encode = [this](float v) {
      const float limited = std::isfinite(v) ? std::clamp(v, 0.0f, 1.0f) : 1.0f;
      return GetByte(format.linearColours ? EncodeSrgb(limited) : limited);
    };
    for (unsigned i = 0; i < from.mNumVertices; ++i) {
      const aiColor4D& c = from.mColors[0][i];
      const float opacity = std::isfinite(c.a) ? c.a : 1.0f;
      mesh.colours.insert(mesh.colours.end(), {encode(c.r), encode(c.g), encode(c.b), GetByte(opacity)});
    }
  }

  const aiScene& source;
  const FormatTraits& format;
  SceneData& data;
  const MeshSink& sink;
  MaterialImporter materials;
  std::vector<ConvertedMesh> converted;
  int meshCount = 0;
  bool wanted = true;
  unsigned convertedCount = 0;
  std::size_t dropped = 0;
};

std::string GetReason(const Assimp::Importer& importer, const std::filesystem::path& path) {
  const std::string text = importer.GetErrorString();
  if (text.find("bad_alloc") != std::string::npos) return NO_MEMORY;
  if (text.find("No suitable reader") == std::string::npos)
    return "it cannot be read: " + (text.empty() ? std::string("the importer gives no reason") : text);
  return importer.IsExtensionSupported(path.extension().string())
             ? "it is broken, or its contents are not what its extension says"
             : "its format is not one that can be read";
}

}  // namespace

bool ImportScene(const std::filesystem::path& path, const Progress& progress, SceneData& data,
                 std::string& error, const ImportOptions& options) try {
  const ModelFolder folder(path);
  Assimp::Importer importer;
  importer.SetIOHandler(new ConfinedFiles(folder, data.warnings));
  importer.SetProgressHandler(new ReadingProgress(progress));
  // Pivots would come as nodes of their own, which double the names in the tree.
  importer.SetPropertyBool(AI_CONFIG_IMPORT_FBX_PRESERVE_PIVOTS, false);
  importer.SetPropertyBool(AI_CONFIG_IMPORT_NO_SKELETON_MESHES, true);
  const aiScene* source = importer.ReadFile(path.string(), aiProcess_Triangulate);
  if (source == nullptr || source->mRootNode == nullptr) {
    error = data.warnings.empty() ? GetReason(importer, path) : "it needs " + data.warnings.front();
    return false;
  }
  const std::unique_ptr<aiScene> owned(importer.GetOrphanedScene());
  if (!SceneConverter(*source, GetTraits(importer), folder, data, options).Run(progress)) {
    error = CANCELLED;
    return false;
  }
  if (data.parts.empty()) error = "there are no triangles in it";
  return !data.parts.empty();
} catch (const std::bad_alloc&) {
  error = NO_MEMORY;
  return false;
} catch (const std::exception& exception) {
  error = std::string("it cannot be read: ") + exception.what();
  return false;
}

}  // namespace zovhost
