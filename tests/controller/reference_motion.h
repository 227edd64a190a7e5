#pragma once

#include <algorithm>
#include <cmath>

#include "camera/oracle.h"
#include "korvane/application_parameters.h"
#include "korvane/camera_parameters.h"

/// The move of a six-axis device written apart from the library, in straight formulas on the oracle's
/// mathematics. It takes the settings as they are at each frame and knows nothing of a hub.
class ReferenceMotion {
 public:
  using Vec = oracle::Vec;

  ReferenceMotion(const Korvane::CameraParameters& start, const Korvane::ApplicationParameters& settings)
      : p(settings), lens(start), camera(start), width(start.ortho_width), height(start.ortho_height) {
    if (p.preserve_orbit_up_direction && p.align_orbit_up_direction) Level();
    lookView = camera.centre - camera.eye;
    lookUp = camera.up;
  }

  void Input(const Vec& translation, const Vec& rotation) {
    lastTranslation = translation;
    lastRotation = rotation;
  }

  void Frame() {
    const Vec view = camera.centre - camera.eye;
    camera.up = view.cross(camera.up).cross(view);
    switch (static_cast<int>(p.cam3d_controller_mode)) {
      case 0:
      case 3:
        Orbit();
        Pan();
        lens.projection_type == Korvane::CameraParameters::ProjectionType::Orthographic ? Scale() : Dolly();
        break;
      case 1:
        Look();
        Track(true);
        break;
      case 2:
        Look();
        Track(false);
        break;
      default:
        break;
    }
  }

  const oracle::Camera& GetCamera() const { return camera; }
  double GetWidth() const { return width; }
  double GetHeight() const { return height; }

 private:
  static constexpr double TOLERANCE = 0x1p-23;

  Vec WorldUp() const {
    return oracle::Unit(oracle::From(p.scene_is_world ? p.scene_up_direction : p.world_up_direction));
  }
  Vec WorldFront() const {
    return oracle::Unit(oracle::From(p.scene_is_world ? p.scene_front_direction : p.world_front_direction));
  }
  Vec Direction() const { return oracle::Unit(camera.centre - camera.eye); }
  double Distance() const { return (camera.centre - camera.eye).norm(); }
  Vec Right() const { return oracle::Unit(Direction().cross(camera.up)); }
  Vec TrueUp() const { return oracle::Unit(Right().cross(Direction())); }

  // The up of the start goes into the plane of the view and the world's up.
  void Level() {
    const Vec f = Direction();
    const Vec w = WorldUp();
    camera.up = oracle::Unit(camera.up);
    const double a = camera.up.dot(w);
    const double b = f.dot(w);
    if (std::abs(a) < TOLERANCE && std::abs(b) < TOLERANCE) {
      camera.up = w;
    } else if (1.0 - std::abs(a) > TOLERANCE && 1.0 - std::abs(b) > TOLERANCE) {
      camera.up = f.cross(w).cross(f) * (a < 0.0 ? -1.0 : 1.0);
    }
  }

  void Orbit() {
    const double distance = Distance();
    Vec direction = Direction();
    Vec right = Right();
    Vec up = TrueUp();
    Vec relative = camera.eye - camera.pivot;
    const Vec axis = lastRotation.x() * right + lastRotation.y() * up + lastRotation.z() * direction;
    if (p.preserve_orbit_up_direction) {
      const Vec w = WorldUp();
      const double a = w.dot(axis);
      right = oracle::Turn(w, a, right);
      up = oracle::Turn(w, a, up);
      relative = oracle::Turn(w, a, relative);
      direction = oracle::Turn(w, a, direction);
      right = oracle::Unit(right);
      up = oracle::Turn(right, lastRotation.x(), up);
      relative = oracle::Turn(right, lastRotation.x(), relative);
      direction = oracle::Turn(right, lastRotation.x(), direction);
    } else {
      const Vec n = oracle::Unit(axis);
      relative = oracle::Turn(n, axis.norm(), relative);
      direction = oracle::Turn(n, axis.norm(), direction);
      up = oracle::Turn(n, axis.norm(), up);
    }
    camera.eye = camera.pivot + relative;
    camera.centre = camera.eye + direction * distance;
    camera.up = up;
  }

  void Pan() {
    const double dx = lastTranslation.x() * 0.5;
    const double dy = lastTranslation.y() * -0.5;
    const Vec f = Direction();
    const Vec left = oracle::Unit(camera.up.cross(f));
    const Vec up = oracle::Unit(f.cross(camera.up.cross(f)));
    const double depth = (camera.pivot - camera.eye).dot(f);
    const auto tangent = [](double degrees) { return std::tan(degrees * oracle::PI / 180.0); };
    const bool flat = lens.projection_type == Korvane::CameraParameters::ProjectionType::Orthographic;
    const double w = flat ? width : (tangent(lens.right_fov) + tangent(lens.left_fov)) * depth;
    const double h = flat ? height : (tangent(lens.bottom_fov) + tangent(lens.top_fov)) * depth;
    Move((left * std::abs(w) * dx + up * std::abs(h) * dy) * p.pan_multiplier);
  }

  void Dolly() {
    const Vec f = Direction();
    const double depth = std::abs((camera.pivot - camera.eye).dot(f)) / Distance();
    const double amount = lastTranslation.z() * -0.5 * std::max(0.2, depth);
    Move(f * (p.scene_scale * amount * p.dolly_multiplier));
  }

  void Scale() {
    const double dz = lastTranslation.z() * p.scene_scale * p.dolly_multiplier;
    const double d = Distance();
    width *= (d + dz) / d;
    height *= (d + dz) / d;
  }

  void Look() {
    const double m = p.look_multiplier;
    const double pitch = lastRotation.x() * (p.look_invert_vertical_axis ? -1.0 : 1.0);
    const Vec r = oracle::Unit(lookView.cross(lookUp));
    const Vec view = oracle::Turn(r, m * pitch, lookView);
    const Vec up = oracle::Unit(oracle::Turn(r, m * pitch, lookUp));
    const bool upright = p.preserve_orbit_up_direction && p.align_orbit_up_direction;
    const Vec w = oracle::From(p.scene_is_world ? p.scene_up_direction : p.world_up_direction);
    const double limit = std::cos((p.look_invert_tolerance + 90.0) * oracle::PI / 180.0);
    const double sign = upright && up.dot(w) < limit ? -1.0 : 1.0;
    const Vec axis = upright ? oracle::Unit(w) : up;
    lookView = oracle::Turn(axis, sign * m * lastRotation.y(), view);
    lookUp = oracle::Turn(axis, sign * m * lastRotation.y(), up);
    camera.centre = camera.eye + lookView;
    camera.up = lookUp;
  }

  void Track(bool planar) {
    const double distance = Distance();
    const Vec direction = Direction();
    const Vec right = Right();
    const Vec up = TrueUp();
    const Vec move = lastTranslation * p.scene_scale * 1.25 * Pace();
    Vec forward = direction;
    Vec upward = up;
    if (planar) {
      const Vec w = WorldUp();
      const Vec front = WorldFront();
      const Vec side = oracle::Unit(front.cross(w));
      forward = front * front.dot(direction) + side * side.dot(direction);
      upward = w;
      if (forward.norm() < TOLERANCE) {
        forward = direction.dot(w) < 0.0 ? up : Vec(-up);
      } else if (up.dot(w) < 0.0) {
        const double limit = std::cos((p.look_invert_tolerance + 90.0) * oracle::PI / 180.0);
        if (up.dot(w) > limit) {
          forward = -forward;
        } else {
          upward = -upward;
        }
      }
      forward = oracle::Unit(forward);
    }
    camera.eye += right * move.x() + upward * move.y() + forward * move.z();
    camera.centre = camera.eye + direction * distance;
  }

  double Pace() const {
    double from = (camera.eye - oracle::From(p.global_bound_centre)).norm();
    double bound = p.global_bound_radius;
    if (p.global_bound_geometry == Korvane::ApplicationParameters::BoundGeometryType::Box) {
      Vec relative = camera.eye - oracle::From(p.global_bound_box.GetCenter());
      const Vec extent = oracle::From(p.global_bound_box.GetExtent());
      from = relative.norm();
      if (from <= TOLERANCE) return 1.0;
      for (int i = 0; i < 3; ++i) relative[i] = relative[i] == 0.0 ? TOLERANCE : relative[i];
      bound = from * (extent.array() / relative.array()).abs().minCoeff();
    }
    return from > TOLERANCE && bound > TOLERANCE && from > bound ? from / bound : 1.0;
  }

  void Move(const Vec& shift) {
    camera.eye += shift;
    camera.centre += shift;
  }

  const Korvane::ApplicationParameters& p;
  const Korvane::CameraParameters lens;
  oracle::Camera camera;
  double width;
  double height;
  Vec lookView = Vec::Zero();
  Vec lookUp = Vec::Zero();
  Vec lastTranslation = Vec::Zero();
  Vec lastRotation = Vec::Zero();
};
