#include "story/history/rewind_interpolation.h"

#include <algorithm>

#include "shots/shot_math.h"

namespace Korvane {

namespace {

using Element = RewindHistory::HistoryElement;

constexpr Vector3 CameraParameters::*PLACES[] = {
    &CameraParameters::eye,
    &CameraParameters::centre,
    &CameraParameters::up,
    &CameraParameters::pivot,
};

// No blend of projections runs on the strip, whatever ran when an element was recorded.
CameraParameters MakeZero() {
  CameraParameters zero;
  zero.page_scale = 0.0;
  zero.projection_transition = -1.0;
  return zero;
}

void TakeProjection(const CameraParameters& from, CameraParameters& camera) {
  camera.projection_type = from.projection_type;
  camera.perspective_with_ortho = from.perspective_with_ortho;
}

CameraParameters Turn(const Element& from, const Element& to) {
  const double t = to.weight;
  const CameraParameters& a = from.camera;
  const CameraParameters& b = to.camera;
  Quaternion rotation;
  rotation.Slerp(t, CameraRotation(a), CameraRotation(b));
  Vector3 rows[3];
  rotation.ToRotationMatrix(rows);
  const double distance = Math::LinearInterp(t, ViewingDistance(a), ViewingDistance(b));

  CameraParameters camera = MakeZero();
  camera.centre = Interpolate(t, a.centre, b.centre);
  camera.eye = camera.centre - rows[0] * distance;
  camera.up = rows[1];
  camera.pivot = Interpolate(t, a.pivot, b.pivot);
  InterpolateLens(t, a, b, camera);
  TakeProjection(to.weight > from.weight ? b : a, camera);
  return camera;
}

void AddWeighted(const Element& element, CameraParameters& sum) {
  for (const auto field : PLACES) sum.*field += element.camera.*field * element.weight;
  for (const auto field : LENS_FIELDS) sum.*field += element.camera.*field * element.weight;
}

CameraParameters Sum(std::span<const Element> elements) {
  CameraParameters camera = MakeZero();
  for (const Element& element : elements) AddWeighted(element, camera);
  const auto heaviest =
      std::max_element(elements.begin(), elements.end(),
                       [](const Element& a, const Element& b) { return a.weight < b.weight; });
  TakeProjection(heaviest->camera, camera);
  return camera;
}

}  // namespace

bool InterpolateElements(std::span<const Element> elements, bool angular, CameraParameters& camera) {
  const auto weighs = [](const Element& element) { return element.weight > 0.0; };
  const auto first = std::find_if(elements.begin(), elements.end(), weighs);
  if (first == elements.end()) return false;
  const bool two = std::count_if(first, elements.end(), weighs) == 2;
  const CameraParameters result = angular && two ? Turn(*first, *(first + 1)) : Sum(elements);
  if (!result.IsFinite()) return false;
  camera = result;
  return true;
}

}  // namespace Korvane
