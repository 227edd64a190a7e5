#include "disc/height_region_listener.h"

#include "camera/height_operation.h"
#include "camera/pixels.h"
#include "korvane/track_menu.h"
#include "render/display_scale.h"
#include "render/render_pass.h"

namespace Korvane {

HeightRegionListener::HeightRegionListener(TrackMenu* menu, HelmDisc* helmDisc)
    : OperationRegionListener(menu, helmDisc, OPERATION_HEIGHT, HeightGauge::GetTextures()) {}

void HeightRegionListener::OnLeftMouseDown(int x, int y) {
  DiscRegionListener::OnLeftMouseDown(x, y);
  Press(*this).HideMenu().ThenWithHub([&](CameraOperations& hub) { operation.Begin(hub, x, y); }).Then([&] {
    NoteStart();
    operation.BeginRecord(*this);
  });
}

void HeightRegionListener::NoteStart() {
  auto* const height = operation.Get<HeightOperation>();
  startHeight = height != nullptr ? HeightGauge::GetHeight(*height) : 0.0;
}

void HeightRegionListener::OnLeftMouseUp(int x, int y) {
  DiscRegionListener::OnLeftMouseUp(x, y);
  ShowMenu();
  operation.End();
}

void HeightRegionListener::OnDraw() {
  DiscRegionListener::OnDraw();
  if (!IsMouseDown()) return;
  Press(*this).ThenWithHub([&](const CameraOperations& hub) { DrawGauge(hub); }).Then([&] {
    operation.Sample();
  });
}

void HeightRegionListener::DrawGauge(const CameraOperations& hub) {
  const TrackMenu& menu = *GetTrackMenu();
  const Vector2 place(WrapAround(downX, menu.GetViewportWidth()),
                      WrapAround(downY, menu.GetViewportHeight()));
  const Press frame(*this);
  const FullViewPass pass(GetRenderer(), hub);
  if (!pass) return;
  gauge.SetScale(PixelsPerPoint(&hub));
  gauge.SetPosition(place);
  gauge.DrawGauge(*pass.operator->());
  auto* const height = frame ? operation.Get<HeightOperation>() : nullptr;
  if (height != nullptr) gauge.DrawMarks(*pass.operator->(), startHeight, HeightGauge::GetHeight(*height));
}

}  // namespace Korvane
