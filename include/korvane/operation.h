#pragma once

#include <memory>

#include "korvane/export.h"
#include "korvane/resource_ids.h"
#include "korvane/vector3.h"

namespace Korvane {

class ApplicationParameters;
class CameraOperations;
struct CameraParameters;

/// The kinds of interactive camera moves. Values up to OPERATION_CAM3D_CONTROLLER index the hub's slots;
/// 11 is no kind and fails everywhere.
enum OperationType : int {
  OPERATION_PAN = 0,
  OPERATION_ORBIT = 1,
  OPERATION_LOOK = 2,
  OPERATION_FLY = 3,
  OPERATION_DOLLY = 4,
  OPERATION_ZOOM = 5,
  OPERATION_ZOOM2D = 6,
  OPERATION_HEIGHT = 7,
  OPERATION_SLIDE = 8,
  OPERATION_ROLL = 9,
  OPERATION_CAM3D_CONTROLLER = 10,
  OPERATION_ALL = 12,  // all of the eleven above
};

/// The kinds, numbered from 0.
constexpr int OPERATION_KIND_COUNT = 11;

constexpr bool IsOperationKind(OperationType type) {
  return static_cast<unsigned>(type) < OPERATION_KIND_COUNT;
}

/// One interactive camera move in progress. Made, owned and destroyed by the hub; one that is ended while it
/// is being called, by a hook that it runs, lives until that call is over.
///
/// It stores the input as it comes and moves the camera only when a frame performs it. Cursors are
/// viewport pixels with the origin at the TOP left, y downward. Most measure motion in fractions
/// of the viewport, so that the same drag does the same on any view size.
class ZOVTOOLS_API Operation {
 public:
  virtual ~Operation();

  /// Begins at cursor (x, y) with the hub's camera. A null hub is legal; performing then does nothing.
  virtual void InitOperation(int x, int y, const CameraOperations* hub);
  /// Computes the camera of this frame; `dt` is the frame's length in seconds.
  virtual void PerformOperation(double dt, CameraParameters& camera) = 0;
  /// Adds to the running sums of the six-axis input. Input that is not finite is ignored.
  virtual void Update3DControllerInput(Vector3 translation, Vector3 rotation);
  virtual void Set3DControllerOperation(bool isController);
  /// Normalised: the world up with `fly_planar_motion`, else the camera's up; (0, 1, 0) without a hub.
  virtual Vector3 GetUpDirection();

  /// Null for a kind out of range or one that the library does not make.
  static std::unique_ptr<Operation> CreateOperation(OperationType type);

  void UpdateCursor(int x, int y);
  /// KEY_UP and KEY_DOWN are kept; any other key is ignored.
  void UpdateKey(KeyID key, bool pressed);
  /// The end of a frame: what is current becomes previous.
  void UpdatePreviousCursor();

  bool IsCombined() const { return combined; }
  /// A member of a combined operation works from the camera of the last frame, not from the initial one.
  void SetCombined(bool isCombined) { combined = isCombined; }
  bool Is3DControllerOperation() const { return controllerOperation; }

 protected:
  struct Cursor {
    int x = 0;
    int y = 0;
  };

  Operation();
  Operation(const Operation&) = delete;
  Operation& operator=(const Operation&) = delete;

  /// Pixels to fractions of the viewport. A viewport without size gives 0.
  void ConvertCoordsToWindow(double dx, double dy, double& wx, double& wy) const;
  /// The way from one cursor to another as fractions of the viewport.
  void GetCursorMotion(const Cursor& from, const Cursor& to, double& wx, double& wy) const;
  /// The motion since the last frame that turns a view: the cursor's as fractions of the viewport, or, for a
  /// six-axis controller, the change of its rotation about y (dx) and about x (dy).
  void GetRotationMotion(double& dx, double& dy) const;
  /// The hub's settings; the hub must not be null.
  const ApplicationParameters& GetParameters() const;

  Cursor currentCursor;
  Cursor initialCursor;
  Cursor previousCursor;
  bool upKey = false;
  bool downKey = false;
  Vector3 translationInput;
  Vector3 rotationInput;
  Vector3 previousTranslationInput;
  Vector3 previousRotationInput;
  const CameraOperations* hub = nullptr;
  bool combined = false;
  bool controllerOperation = false;
};

/// Is told of the life of every operation of a hub. Borrowed by the hub; remove it before it dies.
///
/// While it is being told it may begin and end operations and shots, add and remove observers, and change
/// settings; an operation that it ends while a frame performs it lives until the frame has done with it. A
/// begin within a frame queries the host's camera again and so loses what this frame had moved. Those told
/// after an observer that ends a kind in its own begin hear the end first; ask IsOperationActive. It must not
/// destroy the hub; PerformOperations does nothing in there.
class ZOVTOOLS_API OperationObserver {
 public:
  virtual ~OperationObserver();
  virtual void OnBeginOperation(OperationType type, const CameraParameters& camera) = 0;
  /// The camera as this operation left it; `dt` in seconds.
  virtual void OnPerformOperation(OperationType type, double dt, const CameraParameters& camera) = 0;
  virtual void OnEndOperation(OperationType type) = 0;

 protected:
  OperationObserver();
};

}  // namespace Korvane
