#pragma once

#include <string>

#include "zovhost/scene.h"

namespace zovhost {
class ViewHub;
}

namespace zovview {

/// What the model shows at a viewport pixel, origin at the bottom left. False, with `hit` untouched, beside
/// the model.
bool FindHit(const zovhost::ViewHub& hub, const zovhost::Scene& scene, int x, int y,
             zovhost::Scene::Hit& hit);

/// The part of the model that is selected, at most one. The hub knows its bounds, so a fit goes to it.
class Selection {
 public:
  explicit Selection(zovhost::ViewHub& hub);

  /// Borrowed; null for none. Nothing of it is selected.
  void SetScene(const zovhost::Scene* scene);
  const zovhost::Scene* GetScene() const { return scene; }

  /// Selects the part at a viewport pixel, origin at the bottom left; beside the model clears.
  void PickAt(int x, int y);
  void Clear();

  /// Index into the scene's parts, -1: none.
  int GetPart() const { return part; }
  /// For a person to read; empty for none.
  std::string GetName() const;

 private:
  void Select(int index);

  zovhost::ViewHub& hub;
  const zovhost::Scene* scene = nullptr;
  int part = -1;
};

}  // namespace zovview
