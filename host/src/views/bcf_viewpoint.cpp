#include "zovhost/bcf_viewpoint.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <cmath>
#include <sstream>

#include "views/bcf_schema.h"
#include "zovhost/named_views.h"

namespace zovhost {

using Camera = BcfViewpoint::Camera;
using Korvane::Vector3;

namespace {

constexpr const char* ROOT_NAME = "VisualizationInfo";
constexpr const char* GUID_NAME = "Guid";
constexpr const char* PERSPECTIVE_NAME = "PerspectiveCamera";
constexpr const char* ORTHOGONAL_NAME = "OrthogonalCamera";
constexpr const char* FIELD_OF_VIEW_NAME = "FieldOfView";
constexpr const char* SCALE_NAME = "ViewToWorldScale";
constexpr const char* ASPECT_NAME = "AspectRatio";

constexpr double FARTHEST = 1e12;       // metres
constexpr double LEAST_SINE = 1e-6;     // between the direction and the up vector
constexpr double MOST_ASPECT = 1e4;     // and its inverse the least
constexpr double WIDEST_ANGLE = 180.0;  // degrees

struct CameraVector {
  const char* name;
  Vector3 BcfViewpoint::*place;
};
constexpr CameraVector VECTORS[] = {{"CameraViewPoint", &BcfViewpoint::cameraViewPoint},
                                    {"CameraDirection", &BcfViewpoint::cameraDirection},
                                    {"CameraUpVector", &BcfViewpoint::cameraUpVector}};
constexpr const char* AXES[] = {"X", "Y", "Z"};

bool Refuse(const std::string& wrong, std::string& error) {
  error = wrong;
  return false;
}

// Of what the schema allows, what shows something.

bool IsWithin(const Vector3& vector) {
  return vector.IsFinite() &&
         std::max({std::abs(vector.x), std::abs(vector.y), std::abs(vector.z)}) <= FARTHEST;
}

bool CheckVectors(const BcfViewpoint& viewpoint, const std::string& at, std::string& error) {
  for (const CameraVector& vector : VECTORS) {
    if (!IsWithin(viewpoint.*vector.place)) return Refuse(at + vector.name + ": it is too far away", error);
  }
  const Vector3 direction = viewpoint.cameraDirection.Normalized();
  const Vector3 up = viewpoint.cameraUpVector.Normalized();
  if (direction == Vector3()) return Refuse(at + "CameraDirection: it has no length", error);
  if (up == Vector3()) return Refuse(at + "CameraUpVector: it has no length", error);
  if (direction.Cross(up).Length() > LEAST_SINE) return true;
  return Refuse(at + "CameraUpVector: it lies along the direction", error);
}

bool CheckLens(const BcfViewpoint& viewpoint, const std::string& at, std::string& error) {
  const bool isPerspective = viewpoint.camera == Camera::Perspective;
  const double angle = viewpoint.fieldOfView;
  if (isPerspective && !(angle > 0.0 && angle < WIDEST_ANGLE)) {
    return Refuse(at + FIELD_OF_VIEW_NAME + ": it is not between 0 and 180 degrees", error);
  }
  const double scale = viewpoint.viewToWorldScale;
  if (!isPerspective && !(scale > 0.0 && scale <= FARTHEST)) {
    return Refuse(at + SCALE_NAME + ": it is not above 0, or too large", error);
  }
  return true;
}

bool CheckAspect(double aspect, const std::string& at, std::string& error) {
  if (aspect >= 1.0 / MOST_ASPECT && aspect <= MOST_ASPECT) return true;
  return Refuse(at + ASPECT_NAME + ": it is not above 0, or that of no picture", error);
}

std::string PathOf(Camera camera) {
  return std::string(ROOT_NAME) + "." + (camera == Camera::Perspective ? PERSPECTIVE_NAME : ORTHOGONAL_NAME) +
         ".";
}

// ---- reading ----

pugi::xml_node FindChild(const pugi::xml_node& node, std::string_view name) {
  return node.find_child([name](const pugi::xml_node& child) { return LocalName(child.name()) == name; });
}

double TakeNumber(const pugi::xml_node& node, const char* name) {
  double number = 0.0;
  ReadNumber(FindChild(node, name).child_value(), number);
  return number;
}

bool TakeCamera(const pugi::xml_node& node, Camera camera, BcfViewpoint& viewpoint, std::string& error) {
  viewpoint.camera = camera;
  for (const CameraVector& vector : VECTORS) {
    const pugi::xml_node of = FindChild(node, vector.name);
    viewpoint.*vector.place = {TakeNumber(of, "X"), TakeNumber(of, "Y"), TakeNumber(of, "Z")};
  }
  viewpoint.fieldOfView = TakeNumber(node, FIELD_OF_VIEW_NAME);
  viewpoint.viewToWorldScale = TakeNumber(node, SCALE_NAME);
  viewpoint.aspectRatio = TakeNumber(node, ASPECT_NAME);
  const std::string at = PathOf(camera);
  const bool hasAspect = !FindChild(node, ASPECT_NAME).empty();
  return CheckVectors(viewpoint, at, error) && CheckLens(viewpoint, at, error) &&
         (!hasAspect || CheckAspect(viewpoint.aspectRatio, at, error));
}

bool TakeGuid(const pugi::xml_node& root, BcfViewpoint& viewpoint, std::string& error) {
  const pugi::xml_attribute guid = root.attribute(GUID_NAME);
  if (guid.empty()) return true;
  std::string text = guid.value();
  std::transform(text.begin(), text.end(), text.begin(),
                 [](unsigned char digit) { return static_cast<char>(std::tolower(digit)); });
  if (!IsGuid(text)) return Refuse(std::string(ROOT_NAME) + ".Guid: it is no identifier", error);
  viewpoint.guid = std::move(text);
  return true;
}

bool TakeCameras(const pugi::xml_node& root, BcfViewpoint& viewpoint, std::string& error) {
  const pugi::xml_node orthogonal = FindChild(root, ORTHOGONAL_NAME);
  const pugi::xml_node perspective = FindChild(root, PERSPECTIVE_NAME);
  bool isThird = false;  // version 3.0, which each of its cameras tells
  if (!orthogonal.empty()) {
    if (!TakeCamera(orthogonal, Camera::Orthogonal, viewpoint, error)) return false;
    isThird = viewpoint.aspectRatio > 0.0;
  }
  if (!perspective.empty()) {
    if (!TakeCamera(perspective, Camera::Perspective, viewpoint, error)) return false;
    isThird = isThird || viewpoint.aspectRatio > 0.0;
  }
  if (!isThird) return true;
  if (!orthogonal.empty() && !perspective.empty()) {
    return Refuse(std::string(ROOT_NAME) + ": there are two cameras", error);
  }
  return !viewpoint.guid.empty() || Refuse(std::string(ROOT_NAME) + ".Guid: it is missing", error);
}

// ---- writing ----

void PutNumber(pugi::xml_node& owner, const char* name, double number) {
  std::array<char, 32> digits{};
  *std::to_chars(digits.data(), digits.data() + digits.size() - 1, number).ptr = '\0';
  owner.append_child(name).text().set(digits.data());
}

void PutCamera(const BcfViewpoint& viewpoint, pugi::xml_node node) {
  for (const CameraVector& vector : VECTORS) {
    pugi::xml_node of = node.append_child(vector.name);
    const Vector3& value = viewpoint.*vector.place;
    for (std::size_t axis = 0; axis < std::size(AXES); ++axis) {
      PutNumber(of, AXES[axis], value[static_cast<int>(axis)]);
    }
  }
  const bool isPerspective = viewpoint.camera == Camera::Perspective;
  PutNumber(node, isPerspective ? FIELD_OF_VIEW_NAME : SCALE_NAME,
            isPerspective ? viewpoint.fieldOfView : viewpoint.viewToWorldScale);
  PutNumber(node, ASPECT_NAME, viewpoint.aspectRatio);
}

}  // namespace

bool ParseBcfViewpoint(std::string_view xml, BcfViewpoint& viewpoint, std::string& error) {
  if (xml.size() > LARGEST_BCF_VIEWPOINT) return Refuse("it is too large", error);
  pugi::xml_document document;
  BcfViewpoint read;
  if (!LoadXml(xml, document, error)) return false;
  const pugi::xml_node root = document.document_element();
  if (!CheckVisualizationInfo(root, error) || !TakeGuid(root, read, error) ||
      !TakeCameras(root, read, error)) {
    return false;
  }
  viewpoint = read;
  return true;
}

bool FormatBcfViewpoint(const BcfViewpoint& viewpoint, std::string& xml, std::string& error) {
  const std::string at = PathOf(viewpoint.camera);
  if (viewpoint.camera == Camera::None) return Refuse("the viewpoint has no camera", error);
  if (!IsGuid(viewpoint.guid)) return Refuse(std::string(ROOT_NAME) + ".Guid: it is no identifier", error);
  if (!CheckVectors(viewpoint, at, error) || !CheckLens(viewpoint, at, error) ||
      !CheckAspect(viewpoint.aspectRatio, at, error)) {
    return false;
  }
  pugi::xml_document document;
  pugi::xml_node declaration = document.append_child(pugi::node_declaration);
  declaration.append_attribute("version") = "1.0";
  declaration.append_attribute("encoding") = "UTF-8";
  pugi::xml_node root = document.append_child(ROOT_NAME);
  root.append_attribute(GUID_NAME) = viewpoint.guid.c_str();
  PutCamera(viewpoint,
            root.append_child(viewpoint.camera == Camera::Perspective ? PERSPECTIVE_NAME : ORTHOGONAL_NAME));
  std::ostringstream text;
  document.save(text, "  ");
  xml = text.str();
  return true;
}

}  // namespace zovhost
