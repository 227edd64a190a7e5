#pragma once

#include "disc/wedge_texts.h"
#include "disc/wedge_tool.h"
#include "korvane/changing_in_time.h"
#include "korvane/walk_tool.h"

namespace Korvane {

/// The wedge that walks. A message fades in where the walker stands, and out, for that of the up and down
/// keys, where it sets out; on a disc whose messages come at once, without fading.
class WalkRegionListener : public ToolRegionListener<WalkTool> {
 public:
  WalkRegionListener(TrackMenu* menu, HelmDisc* helmDisc);

  void OnLeftMouseDown(int x, int y) override;
  void OnLeftMouseUp(int x, int y) override;
  void OnKeyDown(KeyID key) override;
  void OnKeyUp(KeyID key) override;
  void OnDraw() override;
  void OnTrackMenuActivate(bool active) override;

 private:
  enum Text : int { TEXT_MESSAGE, TEXT_WARNING, TEXT_UP_DOWN };

  // Where the pointer was when Shift changed the wedge under it.
  struct Pointer {
    bool pending = false;
    int x = 0;
    int y = 0;
  };
  struct Messages {
    bool showWalkHUD = true;
    bool showMoveHUD = true;
    bool fadePending = true;

    void Renew(bool shown) {
      if (shown) showWalkHUD = fadePending = true;
    }
  };

  void RememberPointer();
  void RestorePointer();
  void RaiseSpeed();
  void RestoreSpeed();
  void Fade(DynamicIcon2D* note, double from, double to) const;
  void ShowHUDs();
  void ShowMoving();

  Pointer restored;
  Messages messages;
  double savedSpeedFactor = -1.0;  // negative: none
  WedgeTexts<3> texts;
  TextureLoan textures;
};

}  // namespace Korvane
