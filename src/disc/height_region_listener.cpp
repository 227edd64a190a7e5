#include "disc/height_region_listener.h"

#include "camera/height_operation.h"
#include "camera/pixels.h"
#include "korvane/track_menu.h"
#include "render/render_pass.h"

namespace Korvane {

namespace {

// Pixels.
constexpr double GAUGE_SIZE = 128.0;
constexpr double MARK_SIZE = 32.0;
constexpr double MARK_RANGE = 86.0;  // from the lowest height to the highest

constexpr TextureID TEXTURES[] = {TEXTURE_HEIGHT_GAUGE, TEXTURE_HEIGHT_START, TEXTURE_HEIGHT_MARK};

double AboveMiddle(HeightOperation& height) { return height.GetUnitHeight() - 0.5; }

}  // namespace

HeightRegionListener::HeightRegionListener(TrackMenu* menu, HelmDisc* helmDisc)
    : OperationRegionListener(menu, helmDisc, OPERATION_HEIGHT, TEXTURES),
      gauge(TEXTURE_HEIGHT_GAUGE),
      startMark(TEXTURE_HEIGHT_START),
      mark(TEXTURE_HEIGHT_MARK) {
  gauge.SetSize(GAUGE_SIZE, GAUGE_SIZE);
  startMark.SetSize(MARK_SIZE, MARK_SIZE);
  mark.SetSize(MARK_SIZE, MARK_SIZE);
}

void HeightRegionListener::OnLeftMouseDown(int x, int y) {
  DiscRegionListener::OnLeftMouseDown(x, y);
  Press(*this).HideMenu().ThenWithHub([&](CameraOperations& hub) { operation.Begin(hub, x, y); }).Then([&] {
    NoteStart();
    operation.BeginRecord(*this);
  });
}

void HeightRegionListener::NoteStart() {
  auto* const height = operation.Get<HeightOperation>();
  startHeight = height != nullptr ? AboveMiddle(*height) : 0.0;
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
  gauge.SetPosition(place);
  pass->Render(&gauge);
  auto* const height = frame ? operation.Get<HeightOperation>() : nullptr;
  if (height == nullptr) return;
  startMark.SetPosition(place + Vector2(0.0, startHeight * MARK_RANGE));
  mark.SetPosition(place + Vector2(0.0, AboveMiddle(*height) * MARK_RANGE));
  pass->Render(&startMark);
  pass->Render(&mark);
}

}  // namespace Korvane
