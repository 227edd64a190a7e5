#include "scene/material_importer.h"

#include <assimp/GltfMaterial.h>
#include <assimp/material.h>
#include <assimp/scene.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>

#include "zovhost/read_image.h"

namespace zovhost {

namespace {

// Below this a surface counts as forgotten rather than as invisible: several programs write 0 for opaque.
constexpr float LEAST_OPACITY = 0.01f;

float Limit(float value) { return std::isfinite(value) ? std::clamp(value, 0.0f, 1.0f) : 0.8f; }

bool HasSameLetters(const std::string& a, const std::string& b) {
  const auto fold = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [&](char x, char y) { return fold(x) == fold(y); });
}

std::string GetName(const aiMaterial& material) {
  aiString name;
  return material.Get(AI_MATKEY_NAME, name) == AI_SUCCESS ? name.C_Str() : "";
}

bool IgnoresOpacity(const aiMaterial& material) {
  aiString mode;
  return material.Get(AI_MATKEY_GLTF_ALPHAMODE, mode) == AI_SUCCESS && mode == aiString("OPAQUE");
}

// Texels of an embedded picture that is not compressed are stored blue first.
Image CopyTexels(const aiTexture& texture) {
  Image image;
  image.width = static_cast<int>(texture.mWidth);
  image.height = static_cast<int>(texture.mHeight);
  const std::size_t count = std::size_t{texture.mWidth} * texture.mHeight;
  image.rgba.reserve(4 * count);
  for (std::size_t i = 0; i < count; ++i) {
    const aiTexel& texel = texture.pcData[i];
    image.rgba.insert(image.rgba.end(), {texel.r, texel.g, texel.b, texel.a});
  }
  return image;
}

bool ReadEmbedded(const aiTexture& texture, Image& image, std::string& error, std::size_t room) {
  if (texture.pcData == nullptr || texture.mWidth == 0) {
    error = "the embedded picture is empty";
    return false;
  }
  if (texture.mHeight == 0)
    return DecodeImage(reinterpret_cast<const std::uint8_t*>(texture.pcData), texture.mWidth, image, error,
                       room);
  if (std::uint64_t{4} * texture.mWidth * texture.mHeight > room) {
    error = "there is no room for the embedded picture";
    return false;
  }
  image = CopyTexels(texture);
  return true;
}

}  // namespace

float EncodeSrgb(float linear) {
  return linear <= 0.0031308f ? 12.92f * linear : 1.055f * std::pow(linear, 1.0f / 2.4f) - 0.055f;
}

MaterialImporter::MaterialImporter(const aiScene& sourceScene, const ModelFolder& modelFolder,
                                   bool coloursAreLinear, std::size_t imageBytes, SceneData& sceneData)
    : source(sourceScene),
      folder(modelFolder),
      linearColours(coloursAreLinear),
      room(imageBytes),
      data(sceneData) {}

void MaterialImporter::ImportAll(const Report& report) {
  for (unsigned i = 0; i < source.mNumMaterials; ++i) {
    textureSets.push_back(0);
    data.materials.push_back(Convert(*source.mMaterials[i]));
    report((i + 1.0) / source.mNumMaterials);
  }
}

SceneMaterial MaterialImporter::Convert(const aiMaterial& material) {
  SceneMaterial result;
  result.name = GetName(material);
  result.colour = GetColour(material);
  result.image = GetImage(material);
  int twoSided = 1;
  if (material.Get(AI_MATKEY_TWOSIDED, twoSided) == AI_SUCCESS) result.twoSided = twoSided != 0;
  // A black surface under a picture would hide the picture: the file means the picture alone.
  if (result.image >= 0 && *std::max_element(result.colour.begin(), result.colour.begin() + 3) == 0.0f)
    result.colour = {1.0f, 1.0f, 1.0f, result.colour[3]};
  return result;
}

std::array<float, 4> MaterialImporter::GetColour(const aiMaterial& material) const {
  aiColor4D colour(0.8f, 0.8f, 0.8f, 1.0f);
  if (material.Get(AI_MATKEY_BASE_COLOR, colour) != AI_SUCCESS) material.Get(AI_MATKEY_COLOR_DIFFUSE, colour);
  float opacity = colour.a;
  material.Get(AI_MATKEY_OPACITY, opacity);
  opacity = Limit(opacity);
  if (IgnoresOpacity(material) || opacity < LEAST_OPACITY) opacity = 1.0f;
  std::array<float, 4> result = {Limit(colour.r), Limit(colour.g), Limit(colour.b), opacity};
  if (linearColours) std::transform(result.begin(), result.begin() + 3, result.begin(), EncodeSrgb);
  return result;
}

int MaterialImporter::GetImage(const aiMaterial& material) {
  for (const aiTextureType type : {aiTextureType_BASE_COLOR, aiTextureType_DIFFUSE}) {
    aiString name;
    unsigned set = 0;
    if (material.GetTexture(type, 0, &name, nullptr, &set) != AI_SUCCESS || name.length == 0) continue;
    textureSets.back() = set;
    return FindOrLoad(name.C_Str());
  }
  return -1;
}

int MaterialImporter::FindOrLoad(const std::string& name) {
  const auto known = images.find(name);
  if (known != images.end()) return known->second;
  Image image;
  std::string error;
  int index = -1;
  if (Load(name, image, error)) {
    index = static_cast<int>(data.images.size());
    room -= image.rgba.size();
    data.images.push_back(std::move(image));
  } else {
    data.warnings.push_back("texture " + name + ": " + error);
  }
  return images[name] = index;
}

bool MaterialImporter::Load(const std::string& name, Image& image, std::string& error) const {
  if (const aiTexture* embedded = source.GetEmbeddedTexture(name.c_str()))
    return ReadEmbedded(*embedded, image, error, std::min(LARGEST_IMAGE, room));
  error = "the file is not there";
  const std::filesystem::path path = FindFile(name, error);
  return !path.empty() && ReadImage(path, image, error, std::min(LARGEST_IMAGE, room));
}

// Files name their pictures by paths of the machine that wrote them: as written, else beside the model.
std::filesystem::path MaterialImporter::FindFile(const std::string& name, std::string& reason) const {
  std::string slashes = name;
  std::replace(slashes.begin(), slashes.end(), '\\', '/');
  const std::filesystem::path written(slashes);
  const std::filesystem::path path = folder.Find(folder.GetPath() / written, reason);
  return path.empty() ? FindBesideModel(written.filename().string(), reason) : path;
}

// Whatever the case of its letters: many files were written where that does not matter.
std::filesystem::path MaterialImporter::FindBesideModel(const std::string& fileName,
                                                        std::string& reason) const {
  std::error_code failure;
  std::filesystem::directory_iterator entry(folder.GetPath(), failure);
  for (; !failure && entry != std::filesystem::directory_iterator(); entry.increment(failure)) {
    if (!HasSameLetters(entry->path().filename().string(), fileName)) continue;
    std::filesystem::path path = folder.Find(entry->path(), reason);
    if (!path.empty()) return path;
  }
  return {};
}

}  // namespace zovhost
