#pragma once

#include <Eigen/Geometry>
#include <array>

/// The yardstick for whatever places a camera at once: one spherical interpolation between two rotations,
/// and the matrix that looks from there at the target.
class BareTurn {
 public:
  void Restart() { next = 0; }
  void Step();
  /// Whether the matrix looks at the target from the distance.
  bool LooksAtTarget() const;

 private:
  static constexpr std::size_t COUNT = 256;

  const Eigen::Quaterniond from{Eigen::AngleAxisd(0.3, Eigen::Vector3d(0.6, 0.0, 0.8))};
  const Eigen::Quaterniond to{Eigen::AngleAxisd(1.9, Eigen::Vector3d(0.0, 0.8, -0.6))};
  const Eigen::Vector3d target{1.0, 0.5, -2.0};
  const double distance = 17.0;
  Eigen::Matrix4d view = Eigen::Matrix4d::Zero();
  std::size_t next = 0;
};
