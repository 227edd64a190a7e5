#include "views/preferences.h"

namespace zovview {

const zovhost::SceneGround& FindGround(std::string_view name) {
  const zovhost::SceneGround* const found = zovhost::FindSceneGround(name);
  return found != nullptr ? *found : zovhost::GetSceneGrounds().front();
}

}  // namespace zovview
