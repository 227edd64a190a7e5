#include "views/selection.h"

#include "zovhost/view_hub.h"

namespace zovview {

using Korvane::Vector3;

bool FindHit(const zovhost::ViewHub& hub, const zovhost::Scene& scene, int x, int y,
             zovhost::Scene::Hit& hit) {
  Vector3 origin;
  Vector3 direction;
  return hub.GetPixelRay(x, y, origin, direction) && scene.Intersect(origin, direction, hit);
}

Selection::Selection(zovhost::ViewHub& operations) : hub(operations) {}

void Selection::SetScene(const zovhost::Scene* newScene) {
  Clear();
  scene = newScene;
}

void Selection::PickAt(int x, int y) {
  zovhost::Scene::Hit hit;
  if (scene == nullptr || !FindHit(hub, *scene, x, y, hit)) return Clear();
  Select(hit.part);
}

// The bounds of the hub's scene follow at once, since pan and orbit go by them, too.
void Selection::Select(int index) {
  part = index;
  const Korvane::Box3& box = scene->GetParts()[static_cast<std::size_t>(part)].bounds;
  hub.SetGeometrySelection(box.GetExtent().Length(), box.GetCenter());
  hub.SetBoundingBoxSelection(box, box.GetCenter());
  hub.RecalculateSceneBounds();
  hub.RequestApplicationUpdate();
}

void Selection::Clear() {
  if (part < 0) return;
  part = -1;
  hub.ResetGeometrySelection();
  hub.RecalculateSceneBounds();
  hub.RequestApplicationUpdate();
}

std::string Selection::GetName() const {
  if (part < 0) return {};
  const std::string& name = scene->GetParts()[static_cast<std::size_t>(part)].name;
  return name.empty() ? "part " + std::to_string(part + 1) : name;
}

}  // namespace zovview
