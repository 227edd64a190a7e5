#include "zovhost/scene_ground.h"

#include <algorithm>

namespace zovhost {

namespace {

// The lines of a model are dark on every ground: they lie on its surfaces, which are lit. On a dark one they
// are softer, since there the surfaces themselves stand out, and a shadow has to be deep to be seen at all.
constexpr std::array<SceneGround, 4> grounds = {
    SceneGround{},
    SceneGround{.name = "light",
                .top = {0.915F, 0.92F, 0.925F},
                .bottom = {0.945F, 0.948F, 0.95F},
                .shadow = 0.36F,
                .lightPanels = true},
    SceneGround{.name = "dark",
                .top = {0.115F, 0.125F, 0.14F},
                .bottom = {0.205F, 0.215F, 0.23F},
                .edge = {0.05F, 0.06F, 0.08F, 0.55F},
                .shadow = 0.70F},
    SceneGround{.name = "white",
                .top = {1.0F, 1.0F, 1.0F},
                .bottom = {1.0F, 1.0F, 1.0F},
                .shadow = 0.28F,
                .lightPanels = true},
};

}  // namespace

std::span<const SceneGround> GetSceneGrounds() { return grounds; }

const SceneGround* FindSceneGround(std::string_view name) {
  const auto* const found = std::find_if(grounds.begin(), grounds.end(),
                                         [name](const SceneGround& ground) { return ground.name == name; });
  return found != grounds.end() ? found : nullptr;
}

}  // namespace zovhost
