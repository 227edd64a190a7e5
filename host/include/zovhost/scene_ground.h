#pragma once

#include <array>
#include <span>
#include <string_view>

namespace zovhost {

/// What is behind a scene and suits it: colours are red, green, blue, sRGB, 0 to 1.
struct SceneGround {
  std::string_view name = "gradient";  ///< In settings and on command lines.
  std::array<float, 3> top = {0.80F, 0.85F, 0.90F};
  std::array<float, 3> bottom = {0.95F, 0.955F, 0.96F};
  std::array<float, 4> edge = {0.10F, 0.12F, 0.15F, 0.62F};  ///< Of the model's lines, with their opacity.
  float shadow = 0.42F;                                      ///< Opacity of the shadow at the model's foot.
  /// Panels over it are light ones with dark words.
  bool lightPanels = false;

  bool operator==(const SceneGround&) const = default;
};

/// Those that the kit offers: the gradient first, which is what is shown without a choice, then light, dark
/// and white. They live as long as the program.
std::span<const SceneGround> GetSceneGrounds();
/// Null for a name of none.
const SceneGround* FindSceneGround(std::string_view name);

}  // namespace zovhost
