#include "stories/camera_fields.h"

namespace zovhost {

using Korvane::CameraParameters;
using Korvane::Vector3;

namespace {

bool TakeLens(FieldTaker& fields, CameraParameters& camera) {
  camera.SetHorizontalFOV(45.0);
  camera.SetVerticalFOV(45.0);
  camera.ortho_width = camera.ortho_height = 1.0;
  for (const CameraNumber& number : CAMERA_NUMBERS) {
    if (!fields.TakeNumber(number.name, camera.*number.place)) return false;
  }
  return fields.TakeChoice(PROJECTION, camera) &&
         fields.TakeSwitch(field::PERSPECTIVE_WITH_ORTHO, camera.perspective_with_ortho);
}

OrderedJson FormatPoint(const Vector3& point) { return {point.x, point.y, point.z}; }

}  // namespace

bool TakeCamera(Json& object, CameraParameters& camera, std::string& error) {
  FieldTaker fields(object, error);
  if (!fields.IsObject()) return false;
  for (const CameraPoint& point : CAMERA_POINTS) {
    if (!fields.Needs(point.name) || !fields.TakePoint(point.name, camera.*point.place)) return false;
  }
  camera.pivot = camera.centre;
  return fields.TakePoint(CAMERA_PIVOT.name, camera.*CAMERA_PIVOT.place) && TakeLens(fields, camera);
}

bool PutCameraField(const CameraParameters& camera, OrderedJson& owner, std::string& error) {
  OrderedJson& object = owner[field::CAMERA];
  for (const CameraPoint& point : CAMERA_POINTS) object[point.name] = FormatPoint(camera.*point.place);
  object[CAMERA_PIVOT.name] = FormatPoint(camera.*CAMERA_PIVOT.place);
  const bool good = PutChoice(PROJECTION, camera, object, error);
  object[field::PERSPECTIVE_WITH_ORTHO] = camera.perspective_with_ortho;
  for (const CameraNumber& number : CAMERA_NUMBERS) object[number.name] = camera.*number.place;
  return Within(std::string(".") + field::CAMERA, good, error);
}

}  // namespace zovhost
