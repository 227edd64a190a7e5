// What the renderer asks the scene.
#include "widget_renderer/gl_renderer_impl.h"

namespace zovhost {

using Korvane::Vector2;
using Korvane::Vector3;

namespace {

constexpr int rectangleRays = 9;  // along each side of a rectangle that is searched

}  // namespace

bool GLRenderer::QueryRaySceneIntersection(const Vector3& origin, const Vector3& direction, Vector3& hit) {
  return impl->sceneRay && impl->sceneRay(origin, direction, hit);
}

// The point that is seen closest to the middle of the rectangle: whoever zooms into a rectangle wants its
// middle in the middle, and takes what lies beside it only when there is nothing.
bool GLRenderer::QueryScreenRectRaySceneIntersection(int left, int bottom, int right, int top, Vector3& hit) {
  if (!impl->sceneRay || !impl->hasCamera) return false;
  const Projection projection(impl->camera, impl->depths.GetSphere());
  const Vector2 middle((static_cast<double>(left) + right) / 2.0, (static_cast<double>(bottom) + top) / 2.0);
  const Vector2 step((static_cast<double>(right) - left) / (rectangleRays - 1),
                     (static_cast<double>(top) - bottom) / (rectangleRays - 1));
  double closest = Korvane::Math::MAX_VALUE;
  for (int i = 0; i < rectangleRays * rectangleRays; ++i) {
    const int column = i % rectangleRays;
    const int row = i / rectangleRays;
    const Vector2 pixel(left + step.x * column, bottom + step.y * row);
    const double distance = (pixel - middle).LengthSquared();
    Vector3 origin;
    Vector3 direction;
    if (distance >= closest) continue;
    if (!projection.PixelToRay(pixel, impl->viewport.width, impl->viewport.height, origin, direction))
      continue;
    if (QueryRaySceneIntersection(origin, direction, hit)) closest = distance;
  }
  return closest < Korvane::Math::MAX_VALUE;
}

bool GLRenderer::ProjectToScreen(Vector3 point, Vector2& pixel) {
  if (!impl->hasCamera) return false;
  const Projection projection(impl->camera, impl->depths.GetSphere());
  return projection.WorldToPixel(point, impl->viewport.width, impl->viewport.height, pixel);
}

// ---- the face under the pointer ----

bool GLRenderer::BeginMouseoverComponent(bool highlightFaces) {
  EndMouseoverComponent();
  impl->picksFaces = impl->scene != nullptr;
  impl->showsFaces = impl->picksFaces && highlightFaces;
  return impl->picksFaces;
}

bool GLRenderer::GetMouseoverComponent(Vector2 pixel, Vector3& point, Vector3& normal) {
  if (!impl->picksFaces || !impl->hasCamera) return false;
  const Projection projection(impl->camera, impl->depths.GetSphere());
  Vector3 origin;
  Vector3 direction;
  Scene::Hit hit;
  const PixelRectangle& area = impl->viewport;
  const bool found = projection.PixelToRay(pixel, area.width, area.height, origin, direction) &&
                     impl->scene->Intersect(origin, direction, hit);
  impl->PointAtFace(found ? &hit : nullptr);
  if (!found) return false;
  point = hit.point;
  normal = hit.fromBehind ? -hit.normal : hit.normal;
  return true;
}

bool GLRenderer::EndMouseoverComponent() {
  if (!impl->picksFaces) return false;
  impl->PointAtFace(nullptr);
  impl->picksFaces = impl->showsFaces = false;
  return true;
}

bool GLRenderer::IsFindingFace() const { return impl->face.IsSearching(); }

void GLRenderer::Impl::PointAtFace(const Scene::Hit* hit) {
  if (showsFaces && face.Point(*scene, faceShow ? hit : nullptr)) ShowFace();
}

void GLRenderer::Impl::ShowFace() {
  if (faceShow) faceShow(face.Get());
}

}  // namespace zovhost
