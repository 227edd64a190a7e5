#pragma once

#include <memory>

#include "korvane/export.h"
#include "korvane/lifeline.h"
#include "korvane/renderer_loans.h"
#include "korvane/resource_ids.h"
#include "korvane/vector3.h"

namespace Korvane {

class CameraOperations;
class PivotBallHideTimer;
class ResourceIcon3D;
struct CameraParameters;

/// The marker in the scene at the point around which the camera turns, with a text beside it. It keeps the
/// size on the screen that it had when it was shown, and fades out when the camera has come so close that it
/// would fill the view.
///
/// The view manager owns one and shares it with the tools and widgets, which show and move it. It is drawn
/// in the scene pass. All calls belong on the host's window thread.
class ZOVTOOLS_API PivotBall {
 public:
  PivotBall();
  virtual ~PivotBall();
  PivotBall(const PivotBall&) = delete;
  PivotBall& operator=(const PivotBall&) = delete;

  /// Takes the text of the label. False without a renderer.
  virtual bool Create();
  /// Stops a pending hide and gives the text back. False without a renderer.
  virtual bool Destroy();
  /// World units. Drawing moves the ball to the camera's pivot anyway.
  virtual void SetPosition(const Vector3& position);
  virtual const Vector3& GetPosition() const;
  /// The diameter in world units.
  virtual double GetSize() const;
  /// Either way cancels a pending hide.
  virtual void SetVisible(bool visible);
  /// Hides after a delay in seconds; at once for a delay that is not above 0. False when already hidden.
  virtual bool Hide(double delay);
  /// Makes the ball as large as a fortieth of the view at its depth. To be called when the ball is shown:
  /// that it keeps this size afterwards is what the fade compares with.
  virtual void UpdateSize(const CameraParameters& camera);
  /// Nothing when hidden, or without a hub or a renderer.
  virtual void Draw();

 private:
  virtual void UpdateLabelPosition(const CameraParameters& camera, int width, int height);
  virtual void UpdateOpacity(const CameraParameters& camera);

 public:
  /// Borrowed; null takes it away.
  void SetKorvane(CameraOperations* hub) { cameraOperations = hub; }
  CameraOperations* GetKorvane() const { return cameraOperations; }
  /// Borrowed; null takes it away. Destroy the ball before its renderer changes: the label is the renderer's.
  void SetRenderer(Renderer* value) { renderer = value; }
  bool IsVisible() const;
  /// The text beside the ball; STRING_NONE for none.
  void SetLabel(StringID string);
  Lifeline& GetLifeline() { return lifeline; }

 private:
  void DrawBall();
  void DrawLabel();

  Lifeline lifeline;
  CameraOperations* cameraOperations = nullptr;
  Renderer* renderer = nullptr;
  std::unique_ptr<ResourceIcon3D> ball;
  std::unique_ptr<ResourceIcon3D> shadowBall;
  StringID labelString = STRING_PIVOT;
  StringLoan label;
  std::unique_ptr<PivotBallHideTimer> hideTimer;
};

}  // namespace Korvane
