#include "disc/rewind_region_listener.h"

#include <cmath>

#include "camera/host_camera.h"
#include "foundation/truncate.h"
#include "korvane/helm_disc.h"
#include "korvane/icon2d.h"
#include "korvane/rewind_history.h"
#include "korvane/track_menu.h"
#include "render/display_scale.h"
#include "render/render_pass.h"

namespace Korvane {

namespace {

constexpr double SHOW_TIMER_INTERVAL = 0.25;  // seconds
constexpr double STEP_DURATION = 0.5;
constexpr double CLICK_DISTANCE = 4.0;  // pixels; below it a press with its release is a click
constexpr double HINT_DISTANCE = 76.0;  // from the bracket

constexpr TextureID TEXTURES[] = {
    TEXTURE_REWIND_FRAME,           TEXTURE_REWIND_FRAME_ACTIVE, TEXTURE_REWIND_BRACKET,
    TEXTURE_REWIND_BRACKET_SNAPPED, TEXTURE_REWIND_GLASS,
};

}  // namespace

RewindRegionListener::RewindRegionListener(TrackMenu* menu, HelmDisc* helmDisc)
    : DiscRegionListener(menu, helmDisc), textures(TEXTURES) {
  showTimer.SetListener(this);
  hideTimer.SetListener(this);
}

bool RewindRegionListener::IsTimelineOpen() const {
  const RewindHistory* const history = GetHistory();
  return history != nullptr && history->IsTimelineOpen();
}

// ---- the mouse ----

void RewindRegionListener::OnLeftMouseDown(int x, int y) {
  DiscRegionListener::OnLeftMouseDown(x, y);
  const Lifeline::Watch alive(GetLifeline());
  HideMenu();
  if (alive && IsMouseDown()) showTimer.Start(SHOW_TIMER_INTERVAL, false);
}

void RewindRegionListener::OnMouseMove(int x, int y) {
  DiscRegionListener::OnMouseMove(x, y);
  const Lifeline::Watch alive(GetLifeline());
  if (IsMouseDown() && !IsTimelineOpen() && IsBeyondClick(x, y)) {
    showTimer.Stop();
    OnShowTimeline();
  }
  if (alive && IsTimelineOpen() && !hideTimer.IsRunning()) Slide(x, y);
}

bool RewindRegionListener::IsBeyondClick(int x, int y) const {
  const double reach = CLICK_DISTANCE * PixelsPerPoint(GetHub());
  return std::abs(static_cast<double>(x) - downX) >= reach ||
         std::abs(static_cast<double>(y) - downY) >= reach;
}

void RewindRegionListener::Slide(int x, int y) {
  const Lifeline::Watch alive(GetLifeline());
  GetHistory()->SlideTimeline(Vector2(x, y));
  if (alive) ApplyInterpolated();
}

// An empty strip has no camera.
void RewindRegionListener::ApplyInterpolated() {
  const RewindHistory* const history = GetHistory();
  const Borrowed<CameraOperations> hub(GetHub());
  CameraParameters camera;
  if (history == nullptr || hub.Get() == nullptr || !history->GetInterpolatedCamera(camera)) return;
  hub.Get()->ApplyCameraParameters(camera);
  if (CameraOperations* const still = hub.Get()) still->RequestApplicationUpdate();
}

void RewindRegionListener::OnLeftMouseUp(int x, int y) {
  DiscRegionListener::OnLeftMouseUp(x, y);
  showTimer.Stop();
  if (IsTimelineOpen()) {
    EndSlide();
  } else {
    GoBack();
  }
}

// After a drag the pointer stands where the bracket was held.
void RewindRegionListener::EndSlide() {
  RewindHistory& history = *GetHistory();
  const int bracketX = Truncate(history.GetBracketPosition().x);
  const int bracketY = Truncate(history.GetBracketPosition().y);
  const Lifeline::Watch alive(GetLifeline());
  history.CloseTimeline(Vector2(mouseX, mouseY));
  if (alive && IsMouseDrag()) {
    if (Renderer* const renderer = GetRenderer()) renderer->SetCursorPosition(bracketX, bracketY);
    if (TrackMenu* const menu = alive ? GetTrackMenu() : nullptr) menu->OnMouseMove(bracketX, bracketY);
  }
  if (alive) BringMenuBack();
}

// A click. The strip shows for a moment where it has led.
void RewindRegionListener::GoBack() {
  const Lifeline::Watch alive(GetLifeline());
  RewindHistory* const history = GetHistory();
  const bool stepped = history != nullptr && history->ShiftBackOneElement();
  TransitionShotParameters shot;
  shot.easeEnd = 1.0;
  shot.duration = STEP_DURATION;
  CameraOperations* const hub = alive && stepped ? GetHub() : nullptr;
  if (hub != nullptr && GetHistory()->GetTransitionCamera(shot.targetCamera)) hub->BeginShot(shot);
  if (alive) OnShowTimeline();
  if (!alive) return;
  hideTimer.Start(HIDE_TIMER_INTERVAL, false);
  if (!IsMouseDrag()) timer.Start();
}

// ---- the strip ----

void RewindRegionListener::OnShowTimeline() {
  if (GetHistory() == nullptr || IsTimelineOpen()) return;
  const Lifeline::Watch alive(GetLifeline());
  GetHistory()->SetScale(PixelsPerPoint(GetHub()));
  if (!alive || GetHistory() == nullptr) return;
  GetHistory()->UpdateThumbnails();
  CameraOperations* const hub = alive ? GetHub() : nullptr;
  if (hub == nullptr) return;
  const CameraParameters camera = QueryCamera(*hub);
  if (!alive || GetHistory() == nullptr) return;
  GetHistory()->OpenTimeline(Vector2(downX, downY), camera);
  CameraOperations* const still = alive ? GetHub() : nullptr;
  if (still != nullptr) still->RequestApplicationUpdate();
}

void RewindRegionListener::OnHideTimeline() {
  if (!IsTimelineOpen()) return;
  const Lifeline::Watch alive(GetLifeline());
  GetHistory()->CloseTimeline(Vector2(mouseX, mouseY));
  if (alive) BringMenuBack();
}

void RewindRegionListener::BringMenuBack() {
  const Lifeline::Watch alive(GetLifeline());
  ShowMenu();
  CameraOperations* const hub = alive ? GetHub() : nullptr;
  if (hub != nullptr) hub->RequestApplicationUpdate();
}

// ---- textures and texts ----

void RewindRegionListener::OnTrackMenuActivate(bool active) {
  const Lifeline::Watch alive(GetLifeline());
  Renderer* const renderer = active ? GetRenderer() : nullptr;
  textures.Want(renderer);
  hintHUD.Take(renderer, STRING_REWIND);
  if (alive) emptyHUD.Take(renderer, STRING_REWIND_EMPTY);
  if (alive && !active) Cancel();
}

// No timer brings back a menu that has been put away, and no open strip keeps the history from recording.
void RewindRegionListener::Cancel() {
  const bool mine = IsMouseDown() || hideTimer.IsRunning();
  showTimer.Stop();
  hideTimer.Stop();
  DiscRegionListener::OnLeftMouseUp(mouseX, mouseY);
  if (mine && IsTimelineOpen()) GetHistory()->CloseTimeline(Vector2(mouseX, mouseY));
}

// ---- drawing ----

// A timer of the platform may come late; the frame then sees for itself that the moment is over.
void RewindRegionListener::OnDraw() {
  DiscRegionListener::OnDraw();
  if (!IsMouseDown() && !hideTimer.IsRunning()) return;
  const Lifeline::Watch alive(GetLifeline());
  if (!IsMouseDrag() && Timer::GetTime() - timer.GetStartTime() > HIDE_TIMER_INTERVAL) {
    timer.Reset();
    OnHideTimeline();
  }
  const Borrowed<CameraOperations> hub(alive ? GetHub() : nullptr);
  if (hub.Get() == nullptr) return;
  RewindHistory* const history = GetHistory();
  if (!history->IsTimelineOpen() && !history->IsTimelineEmpty()) return;
  if (history->IsTimelineOpen()) history->Draw(hub.Get()->GetCameraParameters());
  if (alive && hub.Get() != nullptr) DrawNotes(*hub.Get());
}

void RewindRegionListener::DrawNotes(CameraOperations& hub) {
  const Lifeline::Watch alive(GetLifeline());
  const double width = hub.GetApplicationParameters().viewport_width;
  const FullViewPass pass(GetRenderer(), hub);
  if (!pass || !alive) return;
  if (DynamicIcon2D* const note = PlaceNote(width)) pass->Render(note);
}

// Null where none is to be shown.
DynamicIcon2D* RewindRegionListener::PlaceNote(double width) {
  HelmDisc* const owner = GetDisc();
  const RewindHistory* const history = GetHistory();
  if (owner == nullptr) return nullptr;
  const HelmDiscParameters& parameters = owner->GetParameters();
  if (history->IsTimelineEmpty()) {
    DynamicIcon2D* const note = parameters.showMessages ? emptyHUD.Get() : nullptr;
    if (note != nullptr) note->SetPosition(Vector2(width / 2.0, note->GetHeight()));
    return note;
  }
  const bool hints = parameters.showToolHUDs || IsOnBasicDisc();
  DynamicIcon2D* const note = hints && !hideTimer.IsRunning() ? hintHUD.Get() : nullptr;
  const Vector2 bracket = history->GetBracketPosition();
  const double distance = HINT_DISTANCE * PixelsPerPoint(GetHub());
  const double way = bracket.y < distance ? distance : -distance;
  if (note != nullptr) note->SetPosition(bracket + Vector2(0.0, way));
  return note;
}

}  // namespace Korvane
