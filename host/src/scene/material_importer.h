#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <string>

#include "scene/model_folder.h"
#include "zovhost/scene.h"

struct aiMaterial;
struct aiScene;

namespace zovhost {

/// Turns the importer's materials into the scene's, and decodes the pictures that they name.
class MaterialImporter {
 public:
  /// `linearColours`: the file states colours as light intensities (glTF) and not as sRGB. `imageBytes`: what
  /// the pixels of all pictures may take.
  MaterialImporter(const aiScene& source, const ModelFolder& folder, bool linearColours,
                   std::size_t imageBytes, SceneData& data);

  /// Told after each material, 0 to 1.
  using Report = std::function<void(double fraction)>;
  /// Appends all materials to the scene, one for each of the file and in its order.
  void ImportAll(const Report& report);

  /// Which set of texture coordinates the picture of a material is laid out with.
  unsigned GetTextureSet(unsigned material) const { return textureSets[material]; }

 private:
  SceneMaterial Convert(const aiMaterial& material);
  std::array<float, 4> GetColour(const aiMaterial& material) const;
  int GetImage(const aiMaterial& material);
  int FindOrLoad(const std::string& name);
  bool Load(const std::string& name, Image& image, std::string& error) const;
  std::filesystem::path FindFile(const std::string& name, std::string& reason) const;
  std::filesystem::path FindBesideModel(const std::string& fileName, std::string& reason) const;

  const aiScene& source;
  const ModelFolder& folder;
  const bool linearColours;
  std::size_t room;  // bytes for the pixels of further pictures
  SceneData& data;
  std::map<std::string, int> images;  // by the name that the file uses; -1: could not be read
  std::vector<unsigned> textureSets;
};

/// A light intensity, 0 to 1, as an sRGB value (IEC 61966-2-1).
float EncodeSrgb(float linear);

}  // namespace zovhost
