#include "bare_device.h"

#include <algorithm>
#include <array>
#include <cmath>

using Eigen::AngleAxisd;
using Eigen::Matrix3d;
using Eigen::Vector3d;

namespace {

constexpr double DEG_TO_RAD = 0.017453292519943295;

// The library turns against the right-hand rule.
Matrix3d Turn(const Vector3d& axis, double angle) { return AngleAxisd(-angle, axis).toRotationMatrix(); }

}  // namespace

void BareDevice::Step(Vector3d translation, Vector3d rotation, BareCamera& camera) {
  const auto adjust = [&](double value) {
    if (std::abs(value) <= settings.threshold) return 0.0;
    return (value > 0.0 ? value - settings.threshold : value + settings.threshold) * settings.sensitivity;
  };
  translation = translation.unaryExpr(adjust).cwiseProduct(settings.translation);
  rotation = rotation.unaryExpr(adjust).cwiseProduct(settings.rotation);
  const Vector3d view = working.centre - working.eye;
  working.up = view.cross(working.up).cross(view);
  if (mode == OBJECT || mode == PAN) {
    Orbit(rotation);
    PanAndDolly(translation);
  } else {
    Look(-rotation);
    Track(translation);
  }
  camera = working;
}

void BareDevice::Orbit(const Vector3d& rotation) {
  const Vector3d view = working.centre - working.eye;
  const double distance = view.norm();
  const Vector3d forward = view / distance;
  const Vector3d right = forward.cross(working.up).normalized();
  const Vector3d up = right.cross(forward);
  const Vector3d axis = right * rotation.x() + up * rotation.y() + forward * rotation.z();
  const Matrix3d turn = Turn(settings.up, settings.up.dot(axis));
  const Matrix3d both = Turn((turn * right).normalized(), rotation.x()) * turn;
  working.eye = working.pivot + both * (working.eye - working.pivot);
  working.centre = working.eye + both * forward * distance;
  working.up = both * up;
}

void BareDevice::PanAndDolly(const Vector3d& translation) {
  const Vector3d view = working.centre - working.eye;
  const double distance = view.norm();
  const Vector3d forward = view / distance;
  const Vector3d toTheLeft = working.up.cross(forward);
  const Vector3d up = forward.cross(toTheLeft).normalized();
  const double depth = (working.pivot - working.eye).dot(forward);
  std::array<double, 4> tangents;
  for (std::size_t i = 0; i < 4; ++i) tangents[i] = std::tan(working.halfAngles[i] * DEG_TO_RAD);
  const double width = std::abs((tangents[0] + tangents[1]) * depth);
  const double height = std::abs((tangents[2] + tangents[3]) * depth);
  const Vector3d shift =
      (toTheLeft.normalized() * (width * translation.x() * 0.5) - up * (height * translation.y() * 0.5)) *
      settings.panMultiplier;
  const double nearing = translation.z() * -0.5 * std::max(0.2, std::abs(depth) / distance);
  const Vector3d step = shift + forward * (settings.sceneScale * nearing * settings.dollyMultiplier);
  working.eye += step;
  working.centre += step;
}

void BareDevice::Look(const Vector3d& rotation) {
  const Matrix3d pitch = Turn(lookView.cross(lookUp).normalized(), settings.lookMultiplier * rotation.x());
  const Vector3d pitchedUp = (pitch * lookUp).normalized();
  const bool tipped = pitchedUp.dot(settings.up) < std::cos((settings.invertTolerance + 90.0) * DEG_TO_RAD);
  const Matrix3d yaw = Turn(settings.up, settings.lookMultiplier * rotation.y() * (tipped ? -1.0 : 1.0));
  lookView = yaw * (pitch * lookView);
  lookUp = yaw * pitchedUp;
  working.centre = working.eye + lookView;
  working.up = lookUp;
}

void BareDevice::Track(const Vector3d& translation) {
  const Vector3d view = working.centre - working.eye;
  const double distance = view.norm();
  const Vector3d direction = view / distance;
  const Vector3d right = direction.cross(working.up).normalized();
  const Vector3d up = right.cross(direction);
  const double from = (working.eye - settings.boundCentre).norm();
  const double pace = from > settings.boundRadius ? from / settings.boundRadius : 1.0;
  const Vector3d move = translation * (settings.sceneScale * 1.25 * pace);
  Vector3d forward = direction;
  Vector3d upward = up;
  if (mode == WALK) {
    const Vector3d side = settings.front.cross(settings.up).normalized();
    forward = (settings.front * settings.front.dot(direction) + side * side.dot(direction)).normalized();
    upward = settings.up;
  }
  working.eye += right * move.x() + upward * move.y() + forward * move.z();
  working.centre = working.eye + direction * distance;
}
