#include "disc/zoom_region_listener.h"

#include "korvane/track_menu.h"

namespace Korvane {

ZoomRegionListener::ZoomRegionListener(TrackMenu* menu, HelmDisc* helmDisc, StringID pivotLabelString,
                                       StringID maxZoomInString, StringID maxZoomOutString, bool constrain,
                                       bool rectangle)
    : DiscRegionListener(menu, helmDisc),
      pivotLabel(pivotLabelString),
      allowRectZoom(rectangle),
      texts({maxZoomInString, maxZoomOutString, STRING_WHEEL_ZOOM, STRING_CLICK_ZOOM, STRING_RECT_ZOOM}),
      zoomTool(*this),
      rectZoomTool(*this) {
  zoomTool->SetConstrainZoom(constrain);
}

void ZoomRegionListener::OnTrackMenuActivate(bool active) {
  DiscRegionListener::OnTrackMenuActivate(active);
  if (!active) {
    zoomTool.EndGesture();
    rectZoomTool.EndGesture();
    zoomTool->SetViewportHUD(nullptr);
    zoomTool->SetMaxZoomInHUD(nullptr);
    zoomTool->SetMaxZoomOutHUD(nullptr);
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
        ChooseMode();
      })
      .Then([&] { LabelPivotBall(pivotLabel); })
      .Then([&] { PrepareTools(); })
      .Then([&] { PressTool(x, y); });
}

// The tools are to know the keys as the press finds them.
void ZoomRegionListener::ChooseMode() {
  const bool shift = IsShiftDown();
  const bool control = IsControlDown();
  if (shift) {
    OnKeyDown(KEY_SHIFT);
  } else {
    OnKeyUp(KEY_SHIFT);
  }
  const bool draws = shift && allowRectZoom && IsSet(&HelmDiscParameters::rectZoomOnShift);
  mode = draws ? MODE_RECTANGLE : MODE_ZOOM;
  if (control) {
    OnKeyDown(KEY_CONTROL);
  } else {
    OnKeyUp(KEY_CONTROL);
  }
}

void ZoomRegionListener::PrepareTools() {
  const bool basic = IsOnBasicDisc();
  zoomTool->SetMaxZoomInHUD(texts.Get(TEXT_MAX_IN));
  zoomTool->SetMaxZoomOutHUD(texts.Get(TEXT_MAX_OUT));
  zoomTool->SetClickZoomEnabled(basic || IsSet(&HelmDiscParameters::clickZoom));
  zoomTool->SetUseCurrentPivotPoint(basic || IsControlDown());
}

void ZoomRegionListener::PressTool(int x, int y) {
  GetTrackMenu()->GetActiveRegion().SetWrap(mode == MODE_ZOOM);
  if (mode == MODE_ZOOM) {
    ShowZoomNote();
    zoomTool->OnMouseDown(x, y);
  } else {
    SetRegionNote(STRING_RECT_ZOOM, texts.Get(TEXT_RECTANGLE));
    rectZoomTool->OnMouseDown(x, y);
  }
}

void ZoomRegionListener::ShowZoomNote() { SetRegionNote(STRING_WHEEL_ZOOM, texts.Get(TEXT_ZOOM)); }

// ---- the drag ----

void ZoomRegionListener::OnMouseMove(int x, int y) {
  if (IsShiftDown() && zoomTool->IsOperating() && !IsMouseDrag()) RedoPress();
  DiscRegionListener::OnMouseMove(x, y);
  if (!IsAnimating()) GetToolOfMode().OnMouseMove(x, y);
}

// Shift just after the button still brings the rectangle.
void ZoomRegionListener::RedoPress() {
  Press press(*this);
  const int x = zoomTool->GetMouseX();
  const int y = zoomTool->GetMouseY();
  const bool clickZoom = zoomTool->GetClickZoomEnabled();
  zoomTool->SetClickZoomEnabled(false);
  zoomTool->OnMouseUp(x, y);
  zoomTool->SetClickZoomEnabled(clickZoom);
  press.Then([&] { OnLeftMouseDown(x, y); });
}

ZoomTool& ZoomRegionListener::GetToolOfMode() {
  if (mode == MODE_RECTANGLE) return *rectZoomTool.operator->();
  return *zoomTool.operator->();
}

void ZoomRegionListener::OnKeyDown(KeyID key) {
  zoomTool->OnKeyDown(key);
  if (IsSet(&HelmDiscParameters::rectZoomOnShift)) rectZoomTool->OnKeyDown(key);
}

void ZoomRegionListener::OnKeyUp(KeyID key) {
  zoomTool->OnKeyUp(key);
  if (IsSet(&HelmDiscParameters::rectZoomOnShift)) rectZoomTool->OnKeyUp(key);
}

// ---- the release ----

void ZoomRegionListener::OnLeftMouseUp(int x, int y) {
  DiscRegionListener::OnLeftMouseUp(x, y);
  if (IsAnimating()) return;
  Press release(*this);
  if (mode == MODE_ZOOM) {
    ReleaseZoom(x, y);
  } else {
    ReleaseRectangle(x, y);
  }
  release.ShowMenu();
}

void ZoomRegionListener::ReleaseZoom(int x, int y) {
  zoomTool->OnMouseUp(x, y);
  zoomTool->SetMaxZoomInHUD(nullptr);
  zoomTool->SetMaxZoomOutHUD(nullptr);
}

// A click with Shift zooms as one without.
void ZoomRegionListener::ReleaseRectangle(int x, int y) {
  const Press release(*this);
  rectZoomTool->OnMouseUp(x, y);
  if (!release || IsMouseDrag() || !IsShiftDown()) return;
  ShowZoomNote();
  mode = MODE_ZOOM;
  zoomTool->OnMouseDown(x, y);
  zoomTool->OnMouseUp(x, y);
}

// ---- a frame ----

void ZoomRegionListener::OnDraw() {
  DiscRegionListener::OnDraw();
  Press(*this).Then([&] { GetToolOfMode().OnDraw(); }).Then([&] {
    if (!zoomTool.IsBusy() && !rectZoomTool.IsBusy()) ComeBack();
  });
}

}  // namespace Korvane
