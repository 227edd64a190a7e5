// A ray into a model, and a hub that sees it.
#include "zovhost/scene.h"

#include "zovhost/view_hub.h"

int main() {
  const auto house = zovhost::MakeDemoBuilding();
  const Korvane::Vector3 above = house->GetMax() + Korvane::Vector3(0.0, 0.0, 1.0);
  const Korvane::Vector3 eye(house->GetCentre().x, house->GetCentre().y, above.z);
  zovhost::Scene::Hit hit;
  const bool seen = house->Intersect(eye, {0.0, 0.0, -1.0}, hit);

  int frames = 0;
  zovhost::ViewHub hub([&frames] { ++frames; });
  hub.SetViewportSize(640, 480);
  return seen && frames > 0 && hub.GetViewportWidth() == 640 ? 0 : 1;
}
