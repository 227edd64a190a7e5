#pragma once

#include <Eigen/Geometry>
#include <array>

#include "bare_operations.h"
#include "cursor_path.h"

// The least arithmetic that moves a camera in the same way: three vectors, no record, no settings, no
// snapping, the same half angle on both sides, the pivot in the middle of the view.

struct SimplestView {
  Eigen::Vector3d eye{9.0, 7.0, 12.0};
  Eigen::Vector3d target{1.0, 0.5, -2.0};
  Eigen::Vector3d up{0.0, 1.0, 0.0};
};

class SimplestMove {
 public:
  virtual ~SimplestMove() = default;
  /// Back to the start.
  virtual void Restart() = 0;
  virtual void Step() = 0;
  /// Whether the view is where the last step must have left it.
  virtual bool IsSensible() const = 0;
};

/// A move by the cursor.
class SimplestDrag : public SimplestMove {
 public:
  void Restart() override;
  void Step() override;

 protected:
  /// Pixels since the last step.
  virtual void Drag(int dx, int dy) = 0;

  SimplestView view;
  BareCursor cursor;

 private:
  CursorPath path;
};

/// A turn about the target by the motion of each step, in the camera's own axes.
class SimplestOrbit : public SimplestDrag {
 public:
  bool IsSensible() const override;

 protected:
  void Drag(int dx, int dy) override;

 private:
  Eigen::Vector3d previousEye;
};

class SimplestPan : public SimplestDrag {
 public:
  bool IsSensible() const override;

 protected:
  void Drag(int dx, int dy) override;
};

/// Towards the target by a power of the motion.
class SimplestZoom : public SimplestDrag {
 public:
  bool IsSensible() const override;

 protected:
  void Drag(int dx, int dy) override;
};

/// A frame of a move between two views: target and distance on a line, the rotation on the sphere.
class SimplestTransition : public SimplestMove {
 public:
  void Restart() override { frame = 0; }
  void Step() override;
  bool IsSensible() const override;

 private:
  static constexpr int FRAME_COUNT = 4096;

  const Eigen::Quaterniond from{Eigen::AngleAxisd(0.3, Eigen::Vector3d(0.6, 0.0, 0.8))};
  const Eigen::Quaterniond to{Eigen::AngleAxisd(1.9, Eigen::Vector3d(0.0, 0.8, -0.6))};
  const Eigen::Vector3d fromTarget{1.0, 0.5, -2.0};
  const Eigen::Vector3d toTarget{0.0, 1.0, 0.5};
  const double fromDistance = 17.0;
  const double toDistance = 7.0;
  SimplestView view;
  double t = 0.0;
  int frame = 0;
};

/// The smallest distance that holds the eight corners of a box, for ever new directions.
class SimplestFit : public SimplestMove {
 public:
  SimplestFit();
  void Restart() override { next = 0; }
  void Step() override;
  bool IsSensible() const override;

 private:
  std::array<Eigen::Vector3d, 256> directions;  // from the target to the eye
  std::size_t next = 0;
  SimplestView view;
};
