#pragma once

#include "korvane/borrowed_settings.h"
#include "korvane/export.h"
#include "korvane/renderer_loans.h"
#include "korvane/tool.h"

namespace Korvane {

class HelmDisc;
class TrackMenu;

/// Brings the point of the scene on which the button is released to the middle of the view; the camera turns
/// about it from then on. Off the scene everything stays as it was.
class ZOVTOOLS_API CenterTool : public Tool {
 public:
  /// Both are borrowed and may be null. `label` is the text of the pivot ball.
  CenterTool(HelmDisc* disc, TrackMenu* menu, StringID label);
  ~CenterTool() override;

  void SetRenderer(Renderer* value) override;
  void OnDraw() override;
  bool OnMouseMove(int x, int y) override;
  bool OnMouseDown(int x, int y) override;
  bool OnMouseUp(int x, int y) override;
  /// Takes, and gives back, the text of the hint.
  void Activate() override;
  void Deactivate() override;

  /// Moves the camera's pivot to the point of the scene under a viewport pixel, if there is one, and marks
  /// it.
  virtual void UpdatePivotPosition(int x, int y);

  /// A release whose press went elsewhere moves the pivot and shows the ball there, as a press does. On, the
  /// ball is hidden again; off at first.
  void SetHideBallAtStrayRelease(bool on) { hidesStrayBall = on; }

  /// Stands in for the hint of an active tool where there is none. The renderer owns it.
  void SetOffModelHUD(DynamicIcon2D* icon) { offModelHUD = icon; }

 protected:
  HelmDisc* helmDisc;
  TrackMenu* trackMenu;

 private:
  void TakeHint();
  void DropHintNote();
  bool EndPress(Closing& closing);
  bool BeginCenterShot(Closing& closing);
  void LabelPivotBall();
  void FollowShot();
  void UpdateNotes();

  bool active = false;
  bool onModel = false;
  bool hidesStrayBall = false;
  BorrowedPivot savedPivot;  // during a gesture
  StringID pivotLabel;
  DynamicIcon2D* offModelHUD = nullptr;
  StringLoan hint;
  const DynamicIcon2D* hintNote = nullptr;  // the hint that was shown last; only compared
};

}  // namespace Korvane
