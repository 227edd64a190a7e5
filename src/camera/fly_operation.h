#pragma once

#include <cstdint>

#include "korvane/camera_parameters.h"
#include "korvane/operation.h"

namespace Korvane {

/// A walk, or a flight: the cursor is a joystick, and its offset from where the drag began sets the speed of
/// going and of turning. Depends on time.
class FlyOperation : public Operation {
 public:
  void InitOperation(int x, int y, const CameraOperations* hub) override;
  void PerformOperation(double dt, CameraParameters& camera) override;

  virtual bool IsMovingForward() const;
  virtual bool IsMovingBack() const;
  virtual bool IsMovingRight() const;
  virtual bool IsMovingLeft() const;
  /// One switch for all walks; it only picks the cursor.
  virtual bool IsMoveAccelerated() const;
  virtual void SetMoveAccelerated(bool accelerated);

  /// The cursor that shows the state of the motion.
  CursorID GetWalkCursorID() const;
  /// The cursor, wherever it has wrapped to, is near the start on both axes.
  bool IsInDeadZone() const;

 private:
  // Pixels; wide enough for any two cursors.
  struct Offset {
    std::int64_t x = 0;
    std::int64_t y = 0;
  };
  struct Steering {
    double turn;  // seconds at full speed, positive to the right
    double go;    // positive forward
  };

  Offset GetOffset() const;
  std::int64_t GetDeadRadius() const;
  void SetBias(bool inZone);
  Steering GetSteering(double dt) const;
  Vector3 GetWayForward(const Vector3& forward, const Vector3& up) const;
  bool WalksBackwards(const Vector3& forward, const Vector3& up) const;
  double GetTurnAngle(double turn, const Vector3& forward, const Vector3& up) const;
  void Climb(double move, CameraParameters& camera) const;

  static bool m_moveAccelerated;

  CameraParameters initialCamera;
  Offset bias;  // whole viewports that the cursor has wrapped by
  bool inDeadZone = true;
};

}  // namespace Korvane
