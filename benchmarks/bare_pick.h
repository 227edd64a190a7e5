#pragma once

#include <Eigen/Core>

#include "bare_operations.h"

/// The nearest of a few quads along the ray of a pixel, in double precision.
class BarePick {
 public:
  /// `halfWidth` and `halfHeight` are half the viewport, whose centre they are, too.
  void Begin(double x, double y, double halfWidth, double halfHeight, const BareCamera& camera);
  /// Twelve floats.
  void Offer(const float* quad, int id);
  int GetSelection() const { return selection; }

 private:
  bool Meet(const Eigen::Vector3d& a, const Eigen::Vector3d& b, const Eigen::Vector3d& c, double& t) const;

  Eigen::Vector3d origin = Eigen::Vector3d::Zero();
  Eigen::Vector3d direction = Eigen::Vector3d::Zero();
  double nearest = 0.0;
  int selection = -1;  // before the first pass, too
};
