#include "disc/zoom_region_listener.h"

#include "korvane/track_menu.h"

namespace Korvane {

ZoomRegionListener::ZoomRegionListener(TrackMenu* menu, HelmDisc* helmDisc, StringID pivotLabelString,
                                       StringID maxZoomInString, StringID maxZoomOutString, bool constrain,
                                       bool rectangle)
    : ShiftToolRegionListener(menu, helmDisc, rectangle, &HelmDiscParameters::rectZoomOnShift),
      pivotLabel(pivotLabelString),
      texts({maxZoomInString, maxZoomOutString, STRING_WHEEL_ZOOM, STRING_CLICK_ZOOM, STRING_RECT_ZOOM}) {
  tool->SetConstrainZoom(constrain);
}

void ZoomRegionListener::OnTrackMenuActivate(bool active) {
  ShiftToolRegionListener::OnTrackMenuActivate(active);
  if (!active) {
    tool->SetViewportHUD(nullptr);
    tool->SetMaxZoomInHUD(nullptr);
    tool->SetMaxZoomOutHUD(nullptr);
  }
  texts.Take(active ? GetRenderer() : nullptr);
}

// ---- the press ----

// A zoom that still runs swallows it.
void ZoomRegionListener::OnLeftMouseDown(int x, int y) {
  DiscRegionListener::OnLeftMouseDown(x, y);
  if (IsAnimating()) return;
  Press(*this)
      .HideMenu()
      .Then([&] {
        FreezeRegion(true);
        ChooseByShift();
      })
      .Then([&] { TellKeys(); })
      .Then([&] { LabelPivotBall(pivotLabel); })
      .Then([&] { PrepareTools(); })
      .Then([&] { PressTool(x, y); });
}

// The tools are to know the keys as the press finds them.
void ZoomRegionListener::TellKeys() {
  const bool control = IsControlDown();
  PassKey(KEY_SHIFT, IsShiftDown());
  PassKey(KEY_CONTROL, control);
}

void ZoomRegionListener::PassKey(KeyID key, bool down) {
  if (down) {
    OnKeyDown(key);
  } else {
    OnKeyUp(key);
  }
}

void ZoomRegionListener::PrepareTools() {
  const bool basic = IsOnBasicDisc();
  tool->SetMaxZoomInHUD(texts.Get(TEXT_MAX_IN));
  tool->SetMaxZoomOutHUD(texts.Get(TEXT_MAX_OUT));
  tool->SetClickZoomEnabled(basic || IsSet(&HelmDiscParameters::clickZoom));
  tool->SetUseCurrentPivotPoint(basic || IsControlDown());
}

void ZoomRegionListener::PressTool(int x, int y) {
  GetTrackMenu()->GetActiveRegion().SetWrap(!usesShiftTool);
  if (usesShiftTool) {
    SetRegionNote(STRING_RECT_ZOOM, texts.Get(TEXT_RECTANGLE));
  } else {
    ShowZoomNote();
  }
  GetToolOfMode().OnMouseDown(x, y);
}

void ZoomRegionListener::ShowZoomNote() { SetRegionNote(STRING_WHEEL_ZOOM, texts.Get(TEXT_ZOOM)); }

// ---- the drag ----

void ZoomRegionListener::OnMouseMove(int x, int y) {
  if (IsShiftDown() && tool->IsOperating() && !IsMouseDrag()) RedoPress();
  ShiftToolRegionListener::OnMouseMove(x, y);
}

// Shift just after the button still brings the rectangle.
void ZoomRegionListener::RedoPress() {
  Press press(*this);
  const int x = tool->GetMouseX();
  const int y = tool->GetMouseY();
  const bool clickZoom = tool->GetClickZoomEnabled();
  tool->SetClickZoomEnabled(false);
  tool->OnMouseUp(x, y);
  tool->SetClickZoomEnabled(clickZoom);
  press.Then([&] { OnLeftMouseDown(x, y); });
}

void ZoomRegionListener::OnKeyDown(KeyID key) {
  tool->OnKeyDown(key);
  if (IsSet(&HelmDiscParameters::rectZoomOnShift)) shiftTool->OnKeyDown(key);
}

void ZoomRegionListener::OnKeyUp(KeyID key) {
  tool->OnKeyUp(key);
  if (IsSet(&HelmDiscParameters::rectZoomOnShift)) shiftTool->OnKeyUp(key);
}

// ---- the release ----

void ZoomRegionListener::OnLeftMouseUp(int x, int y) {
  DiscRegionListener::OnLeftMouseUp(x, y);
  if (IsAnimating()) return;
  Press release(*this);
  if (usesShiftTool) {
    ReleaseRectangle(x, y);
  } else {
    ReleaseZoom(x, y);
  }
  release.ShowMenu();
}

void ZoomRegionListener::ReleaseZoom(int x, int y) {
  tool->OnMouseUp(x, y);
  tool->SetMaxZoomInHUD(nullptr);
  tool->SetMaxZoomOutHUD(nullptr);
}

// A click with Shift zooms as one without.
void ZoomRegionListener::ReleaseRectangle(int x, int y) {
  const Press release(*this);
  shiftTool->OnMouseUp(x, y);
  if (!release || IsMouseDrag() || !IsShiftDown()) return;
  ShowZoomNote();
  usesShiftTool = false;
  tool->OnMouseDown(x, y);
  tool->OnMouseUp(x, y);
}

}  // namespace Korvane
