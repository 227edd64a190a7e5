#include "tour/scene_keeper.h"

#include <epoxy/gl.h>

#include "viewport/view_rest.h"

namespace zovview {

bool SceneKeeper::IsSame(const Shown& a, const Shown& b) {
  return a.height == b.height && a.selectedPart == b.selectedPart && IsSameView(a.camera, b.camera);
}

// A camera that moves is drawn where it is wanted; the first picture of one that rests is drawn once more, to
// be kept.
bool SceneKeeper::Draw(const Korvane::CameraParameters& camera, int height,
                       const zovhost::OffscreenTarget& target) {
  const Shown wanted = {camera, height, sceneView.GetOptions().selectedPart};
  const bool rests = IsSame(wanted, shown);
  if (!rests) isKept = false;
  shown = wanted;
  if (!rests || !kept.Create(target.GetWidth(), target.GetHeight(), target.GetSamples())) {
    return DrawInto(target);
  }
  if (!isKept) isKept = DrawInto(kept);
  if (!isKept || !kept.CopyTo(target)) return DrawInto(target);
  ++copiedCount;
  return target.Bind();
}

bool SceneKeeper::DrawInto(const zovhost::OffscreenTarget& target) {
  if (!target.Bind()) return false;
  ++drawnCount;
  glClearColor(0.87F, 0.88F, 0.9F, 1.0F);  // what shows above a low view
  glClear(GL_COLOR_BUFFER_BIT);
  return sceneView.Draw(shown.camera, 0, 0, target.GetWidth(), shown.height, 1.0);
}

}  // namespace zovview
