#pragma once

#include <memory>

#include "camera/combined_operation.h"
#include "camera/operation_factory.h"
#include "korvane/camera_parameters.h"
#include "korvane/lifeline.h"

namespace Korvane {

/// The camera move of a six-axis device, in the mode that the hub's `cam3d_controller_mode` says. An input is
/// a step: each frame moves by the last one.
///
/// It works on a camera of its own: a host that moves its camera meanwhile is overruled by the next frame.
class Cam3DControllerOperation : public CombinedOperation {
 public:
  /// Hears, before anybody hears that the operation has ended, that it goes. May not call out.
  class Owner {
   public:
    virtual ~Owner() = default;
    virtual void OnOperationGoes() = 0;
  };

  Cam3DControllerOperation();
  ~Cam3DControllerOperation() override;

  void InitOperation(int x, int y, const CameraOperations* hub) override;
  void PerformOperation(double dt, CameraParameters& camera) override;

  /// About the pivot, by angles in radians about the camera's right, up and view.
  virtual void DoOrbit(double dt, CameraParameters& camera);
  /// Sideways, up and forward; `planar` keeps to the ground of the scene.
  virtual void DoTrackAndDolly(double dt, CameraParameters& camera, bool planar);

  /// Leaves out a zoom that would turn an orthographic view inside out.
  void LimitOrthographicZoom(bool limit) { limitsOrthographicZoom = limit; }

  /// Null for nobody. Borrowed.
  void SetOwner(Owner* value) { owner = value; }

  Lifeline& GetLifeline() { return lifeline; }
  static std::unique_ptr<Operation> Make();

 private:
  // The ways of a walk or a flight, of unit length.
  struct Ways {
    Vector3 upward;
    Vector3 forward;
  };

  bool HasMembers() const;
  void Move(double dt, CameraParameters& camera);
  void MoveModel(double dt, CameraParameters& camera);
  void MoveWalker(double dt, CameraParameters& camera, bool planar);
  void ScaleView(CameraParameters& camera) const;
  double GetPace(const Vector3& eye) const;
  Ways GetWaysOnGround(const Vector3& direction, const Vector3& trueUp) const;

  CameraParameters startCamera;
  CameraParameters workingCamera;
  bool limitsOrthographicZoom = false;
  Owner* owner = nullptr;
  Lifeline lifeline;
};

/// Lets every hub begin it, for the life of the library.
extern OperationKind cam3DControllerKind;

}  // namespace Korvane
