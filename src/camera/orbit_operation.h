#pragma once

#include "camera/standard_views.h"
#include "korvane/camera_parameters.h"
#include "korvane/operation.h"
#include "korvane/quaternion.h"

namespace Korvane {

/// Turns the camera about its pivot.
///
/// As a turntable (`preserve_orbit_up_direction`) the camera keeps its relation to an up axis and is always
/// computed from the start of the drag, so nothing drifts. In the free mode each frame's motion is applied
/// to the last frame, in the camera's own axes. On both lies optional snapping: near one of the 26
/// standard views the motion speeds up towards the view, lands on it, and holds until the cursor
/// has left a dead zone.
class OrbitOperation : public Operation {
 public:
  enum RotationType : int { ROTATION_HORIZONTAL = 0, ROTATION_VERTICAL = 1 };

  void InitOperation(int x, int y, const CameraOperations* hub) override;
  void PerformOperation(double dt, CameraParameters& camera) override;

  /// The camera at the start of the drag, straightened.
  const CameraParameters& GetInitialCamera() const { return initialCamera; }

 protected:
  /// The motion since the last frame: fractions of the viewport, or of the six-axis input.
  void GetDeltaXY(double& dx, double& dy) const;
  /// The axes of the standard views, front first. Model and world are chosen the other way round than in
  /// the hub's GetWorldUpDirection; hosts rely on both.
  void GetWorldUpAndFront(Vector3& front, Vector3& up) const;
  /// How far, in radians, the view stands from the nearest standard view. Without snapping the outputs stay.
  void SnapToClosestView(const Vector3& upAxis, double& remainingX, double& remainingY);
  /// The angle by which a frame turns about one axis, under the pull of a view `remaining` radians away.
  double GetNextRotation(RotationType type, double remaining, double delta);

 private:
  // The state of snapping about one axis.
  struct AxisSnap {
    double accumulated = 0.0;  // cursor motion while held, fractions of the viewport
    bool snapped = false;
    double rotation = 0.0;  // total angle so far, radians
  };
  struct SnapCurve;
  // What a turntable turns about, from the directions of the scene.
  struct TurntableAxes {
    Vector3 front;
    Vector3 up;
    Vector3 side;
    Vector3 upAxis;  // of unit length, exactly perpendicular to front

    TurntableAxes() = default;
    TurntableAxes(const Vector3& frontDirection, const Vector3& upDirection)
        : front(frontDirection),
          up(upDirection),
          side(front.Cross(up)),
          upAxis(side.Cross(front).Normalized()) {}
  };
  // What a turntable turns: a camera as its pivot sees it. Directions are of unit length but `right`.
  struct Turntable {
    Vector3 pivot;
    double pivotDistance = 0.0;
    double viewingDistance = 0.0;
    Vector3 fromPivot;
    Vector3 backward;
    Vector3 right;
    Vector3 up;

    Turntable() = default;
    explicit Turntable(const CameraParameters& camera);
    void TurnAbout(const Vector3& axis, double angle) {
      const Quaternion q = Quaternion::AxisAngle(axis, angle);
      fromPivot = q.Rotate(fromPivot);
      backward = q.Rotate(backward);
      right = q.Rotate(right);
      up = q.Rotate(up);
    }
  };

  bool KeepsUp() const;
  SnapCurve GetSnapCurve(RotationType type) const;
  double LeaveSnap(AxisSnap& snap, double delta, const SnapCurve& curve);

  const TurntableAxes& GetTurntableAxes(const ApplicationParameters& parameters);
  void PerformTurntable(CameraParameters& camera);
  void PerformFree(CameraParameters& camera);
  void GetTurntableMotion(double& x, double& y) const;
  double ChooseAngle(RotationType type, double remaining, double motion);
  double GetFreeAngle(RotationType type, double remaining, double delta);
  void KeepPlace(const CameraParameters& camera);
  bool ReversesHorizontalSense(const Vector3& upAxis) const;

  void MeasureRemaining(const Vector3& forward, Vector3 heading, const Vector3& target, const Vector3& upAxis,
                        double& remainingX, double& remainingY) const;
  void ReleaseSnapOnNewView(const Vector3& upAxis, const Vector3& target);

  CameraParameters initialCamera;
  TurntableAxes turntableAxes;     // of the last frame
  Turntable initialTurntable;      // of the initial camera
  CameraParameters workingCamera;  // placed as the last frame left the camera
  StandardViews standardViews;
  AxisSnap snaps[2];  // by RotationType
  bool doSnap = false;
  Vector3 closestView;  // from eye to target
};

}  // namespace Korvane
