#pragma once

#include "korvane/export.h"
#include "korvane/renderer.h"
#include "korvane/tool.h"
#include "korvane/vector3.h"

namespace Korvane {

struct CameraParameters;

/// Highlights the face under the cursor while the button is held; on the release the camera flies in front of
/// it and looks at it. Needs a renderer that knows the parts of the scene. Escape gives the press up.
class ZOVTOOLS_API LookAtTool : public Tool {
 public:
  LookAtTool();
  ~LookAtTool() override;

  void OnDraw() override;
  bool OnMouseMove(int x, int y) override;
  bool OnMouseDown(int x, int y) override;
  bool OnMouseUp(int x, int y) override;
  /// Consumes every key.
  bool OnKeyDown(KeyID key) override;

  virtual void EnableFaceHighlighting();
  virtual void DisableFaceHighlighting();
  /// Stay in front of what stands between. Each press takes it from the application parameters.
  virtual void EnableObstructionDetection();
  virtual void DisableObstructionDetection();
  /// A face seen from behind is approached from behind.
  virtual void EnableBackfaceViewing();
  virtual void DisableBackfaceViewing();

 private:
  void GiveUp();
  bool BeginLookAt(CameraParameters& camera, const Vector3& point, const Vector3& normal, Renderer* opened);
  double GetClearDistance(const CameraParameters& camera, const Vector3& point, const Vector3& normal) const;
  void EndLookAt();
  Renderer* TakeMouseover();

  bool faceHighlighting = true;
  bool obstructionDetection = false;
  bool backfaceViewing = true;
  Borrowed<Renderer> mouseover;  // in which one is open
};

}  // namespace Korvane
