#pragma once

#include "korvane/export.h"

namespace Korvane {

class CameraOperations;
class PivotBall;
class Renderer;
class RewindHistory;

/// Moves the camera by a six-axis input device.
///
/// The controller itself is still to come: for now it takes no input and draws nothing. Its switch is there,
/// which the view manager turns off while a widget has the mouse.
///
/// What is handed over is borrowed; null takes it away.
class ZOVTOOLS_API Cam3DController {
 public:
  Cam3DController();
  virtual ~Cam3DController();
  Cam3DController(const Cam3DController&) = delete;
  Cam3DController& operator=(const Cam3DController&) = delete;

  virtual void SetPivotBall(PivotBall* ball);
  virtual PivotBall* GetPivotBall() const;
  virtual void SetRenderer(Renderer* value);
  virtual Renderer* GetRenderer() const;
  /// False without a renderer.
  virtual bool Create();
  virtual bool Destroy();
  virtual void Draw();
  virtual void SetEnabled(bool value);
  virtual bool GetEnabled() const;

  void SetKorvane(CameraOperations* hub) { cameraOperations = hub; }
  void SetRewindHistory(RewindHistory* history) { rewindHistory = history; }

 protected:
  bool enabled = true;
  CameraOperations* cameraOperations = nullptr;
  RewindHistory* rewindHistory = nullptr;
  PivotBall* pivotBall = nullptr;
  Renderer* renderer = nullptr;
};

}  // namespace Korvane
