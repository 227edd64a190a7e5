#pragma once

#include <memory>

#include "korvane/export.h"
#include "korvane/icon2d.h"
#include "korvane/renderer_loans.h"
#include "korvane/timer.h"
#include "korvane/tool.h"

namespace Korvane {

class FlyOperation;

/// Walks, with the cursor as a joystick: the press takes it to a start in the lower part of the view, and the
/// way from there steers. A view that may not leave orthographic shows a warning instead.
class ZOVTOOLS_API WalkTool : public Tool {
 public:
  WalkTool();
  ~WalkTool() override;

  void SetRenderer(Renderer* value) override;
  void OnDraw() override;
  bool OnMouseMove(int x, int y) override;
  bool OnMouseDown(int x, int y) override;
  bool OnMouseUp(int x, int y) override;
  bool OnKeyDown(KeyID key) override;
  /// Counts for Shift and Control as a press, so that once touched they stay down; hosts know it so.
  bool OnKeyUp(KeyID key) override;
  /// Holds, and gives back, the pictures of the start.
  void Activate() override;
  void Deactivate() override;

  /// Shows the direction of the walk.
  CursorID GetWalkCursorID() const;

  /// Notes for the host to choose from with SetViewportHUD; the warning is shown by the tool, and stays after
  /// the release. The renderer owns them.
  void SetMessageHUD(DynamicIcon2D* icon) { messageHUD = icon; }
  void SetWarningHUD(DynamicIcon2D* icon) { warningHUD = icon; }
  void SetUpDownHUD(DynamicIcon2D* icon) { upDownHUD = icon; }
  DynamicIcon2D* GetMessageHUD() const { return messageHUD; }
  DynamicIcon2D* GetUpDownHUD() const { return upDownHUD; }
  /// Seconds. From 1 on a walk leaves a chain of rewind records, each of this length; below, one record.
  void SetRewindHistoryInterval(double seconds) { rewindHistoryInterval = seconds; }

 private:
  FlyOperation* GetFlyOperation() const;
  bool HasRecordInterval() const;
  void BeginWalk(Steps& steps);
  void RestartHistoryTimer();
  bool UseKey(KeyID key, bool pressed);
  void PressRunKey(bool pressed);
  void LetGoOfRunKey();
  void DrawStart();
  void RecordWalk();

  bool active = false;
  bool walking = false;
  bool runKeyDown = false;  // pressed in this walk
  DynamicIcon2D* messageHUD = nullptr;
  DynamicIcon2D* warningHUD = nullptr;
  DynamicIcon2D* upDownHUD = nullptr;
  double rewindHistoryInterval = 0.0;
  Timer historyTimer;
  TextureLoan textures;
  // Shared with a drawing that goes on: the host may destroy the tool in it.
  std::shared_ptr<ResourceIcon2D> startIcon;
  std::shared_ptr<ResourceIcon2D> refusedIcon;
};

}  // namespace Korvane
