#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>

#include "korvane/camera_parameters.h"
#include "korvane/vector3.h"

namespace zovhost {

/// A viewpoint as programs for buildings exchange it (BCF): what is said of the camera in a file of
/// VisualizationInfo, by the names of that format. Its space is right-handed, x to the east, y to the north
/// and z up, in metres, in the coordinates of the model.
struct BcfViewpoint {
  enum class Camera : int { None, Perspective, Orthogonal };

  std::string guid;  ///< As of IsGuid; empty for one of version 2.0, which has none.
  Camera camera = Camera::None;
  Korvane::Vector3 cameraViewPoint;
  Korvane::Vector3 cameraDirection;  ///< Of any length but 0.
  Korvane::Vector3 cameraUpVector;   ///< Likewise, and not along the direction.
  double fieldOfView = 0.0;          ///< Of a perspective one: degrees from its lower to its upper edge.
  double viewToWorldScale = 0.0;     ///< Of an orthogonal one: metres from its lower to its upper edge.
  double aspectRatio = 0.0;          ///< Width through height; 0 before version 3.0, which does not tell it.
};

/// The largest file that is read, in bytes.
constexpr std::size_t LARGEST_BCF_VIEWPOINT = std::size_t{16} << 20;

/// Reads versions 2.0, 2.1 and 3.0, by the rules of their schema: each element in its place and as often as
/// it may be, numbers that are numbers; what is within the components and the bitmaps counts for nothing.
/// Beyond the schema the camera has to show something: a direction and an up vector of some length that are
/// not one along the other, an angle between 0 and 180 degrees, a scale and an aspect ratio above 0. An angle
/// outside of the 45 to 60 degrees of versions before 3.0 is taken, as those versions propose themselves, and
/// so are the capital digits of an identifier. Where there are both cameras, as those versions allow, it is
/// the perspective one. A file with a document type is refused.
///
/// False, with `viewpoint` as it was, puts one line that says where and what is wrong into `error`.
bool ParseBcfViewpoint(std::string_view xml, BcfViewpoint& viewpoint, std::string& error);

/// As version 3.0, numbers bit for bit. False puts one line into `error`: for one that ParseBcfViewpoint
/// would refuse, or that has no camera, no identifier or no aspect ratio.
bool FormatBcfViewpoint(const BcfViewpoint& viewpoint, std::string& xml, std::string& error);

// ---- cameras ----

/// How a model stands in its coordinates: unit length, perpendicular to each other. A model that is drawn as
/// buildings are has these, and its viewpoints have its coordinates. Another is laid over so that its up is z
/// and its front -y: of a model on y that faces +z, (x, y, z) is (x, -z, y) in a viewpoint.
struct ModelAxes {
  Korvane::Vector3 up = {0.0, 0.0, 1.0};
  Korvane::Vector3 front = {0.0, -1.0, 0.0};  ///< Outward; ChooseFront has it for an `up`.
};

/// The camera of a viewpoint. A unit of the model counts as a metre.
///
/// `distance`: from the eye to the centre and the pivot, which a viewpoint does not tell; above 0. Without an
/// aspect ratio the view is as wide as high, which a ViewHub gives the proportions of its viewport. False,
/// with `camera` as it was, for a viewpoint without a camera, axes that are none, and a `distance` that is
/// none.
bool CameraFromBcf(const BcfViewpoint& viewpoint, const ModelAxes& axes, double distance,
                   Korvane::CameraParameters& camera);

/// The other way; the identifier of `viewpoint` stays. False puts one line into `error`: for a camera that
/// shows nothing, and for one whose view is not the same to both sides of its axis, which the format cannot
/// say.
bool CameraToBcf(const Korvane::CameraParameters& camera, const ModelAxes& axes, BcfViewpoint& viewpoint,
                 std::string& error);

}  // namespace zovhost
