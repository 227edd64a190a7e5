#include "korvane/rect_zoom_tool.h"

#include <cmath>
#include <utility>

#include "camera/camera_frame.h"
#include "interaction/tools/tool_gesture.h"

namespace Korvane {

namespace {

constexpr double FLIGHT_DURATION = 0.75;  // seconds
constexpr int NO_CROSSHAIR_BELOW = 15;    // pixels from the press to the crosshair
constexpr int SMALL_CROSSHAIR_BELOW = 25;
constexpr int CROSSHAIR_SIZE = 10;

void SetVertex(float* vertex, double x, double y) {
  vertex[0] = static_cast<float>(x);
  vertex[1] = static_cast<float>(y);
  vertex[2] = 0.0F;
}

}  // namespace

RectZoomTool::RectZoomTool() {
  SetWrapCursor(false);
  // Cut off, the rectangle is not flown to.
  SetGestureEnd([](Tool& tool) {
    auto& zoom = static_cast<RectZoomTool&>(tool);
    zoom.NoteRelease(zoom.mouseX, zoom.mouseY);
    Closing(zoom).EndRecord();
  });
}
RectZoomTool::~RectZoomTool() = default;

// ---- the gesture ----

bool RectZoomTool::OnMouseDown(int x, int y) {
  startX = x;
  startY = y;
  NotePress(x, y);
  if (operating || !CanOperate()) return animating;
  whiteRectangle = blackRectangle = MakeRectangle(x, y, x, y);
  UpdateCrosshairPosition(x, y);
  Opening(*this).BeginRecord();
  return true;
}

bool RectZoomTool::OnMouseMove(int x, int y) {
  ClampToViewport(x, y);
  NoteMove(x, y);
  if (operating) UpdateRectangle(x, y);
  return true;
}

bool RectZoomTool::OnKeyDown(KeyID key) {
  ZoomTool::OnKeyDown(key);
  if (key == KEY_CONTROL) SetRectMode(RECT_ABOUT_PRESS);
  if (key == KEY_ESCAPE) GiveUp();
  return true;
}

bool RectZoomTool::OnKeyUp(KeyID key) {
  ZoomTool::OnKeyUp(key);
  if (key == KEY_CONTROL) SetRectMode(RECT_FROM_PRESS);
  return true;
}

void RectZoomTool::GiveUp() {
  Abandon();
  if (cameraOperations != nullptr) cameraOperations->RequestApplicationUpdate();
}

void RectZoomTool::SetRectMode(int mode) {
  rectMode = mode;
  if (operating) UpdateRectangle(mouseX, mouseY);
}

bool RectZoomTool::OnMouseUp(int x, int y) {
  ClampToViewport(x, y);
  NoteRelease(x, y);
  const bool zooms = operating && mouseDragged && cameraOperations != nullptr &&
                     whiteRectangle.GetWidth() > 0.0 && whiteRectangle.GetHeight() > 0.0;
  if (zooms) return BeginRectShot();
  Abandon();
  return animating;
}

// The record stays open in its history, also when that is taken away.
void RectZoomTool::Abandon() {
  if (std::exchange(operating, false)) record.Forget();
}

void RectZoomTool::ClampToViewport(int& x, int& y) const {
  if (rectMode != RECT_FROM_PRESS || cameraOperations == nullptr) return;
  const ApplicationParameters& parameters = cameraOperations->GetApplicationParameters();
  x = Truncate(Math::Clamp(x, 0.0, parameters.viewport_width));
  y = Truncate(Math::Clamp(y, 0.0, parameters.viewport_height));
}

bool RectZoomTool::BeginRectShot() {
  Closing closing(*this);
  CameraParameters camera;
  Vector3 pivot;
  bool begun = false;
  Release(*this)
      .Query(camera)
      .Then([&] { pivot = PickPivot(camera); })
      .Then([&] { camera.pivot = pivot; })
      .Apply(camera)
      .Then([&] { PlacePivotBall(pivotBall.Get(), camera, false); })
      .Then([&] {
        if (closing.LeaveRecord()) begun = Flight(*this, MakeRectShot(camera)).HasBegun();
      });
  closing.EndRecord();  // of a flight that there is not to be
  return begun;
}

ZoomRectShotParameters RectZoomTool::MakeRectShot(const CameraParameters& camera) const {
  const ApplicationParameters& parameters = cameraOperations->GetApplicationParameters();
  const Vector3 direction = ViewDirection(camera);
  const Vector3 up = camera.up.Normalized();
  const Vector3 left = up.Cross(direction).Normalize();
  const Vector3 sideways = fliesToRectangle ? -left : left;
  const Vector3 toPivot = camera.pivot - camera.eye;
  // The side of the rectangle that meets the edges of the viewport first.
  const double scale = Math::Min(parameters.viewport_width / whiteRectangle.GetWidth(),
                                 parameters.viewport_height / whiteRectangle.GetHeight());
  ZoomRectShotParameters shot;
  shot.duration = FLIGHT_DURATION;
  shot.sidewaysOffset = toPivot.Dot(sideways);
  shot.upwardOffset = toPivot.Dot(up);
  shot.forwardOffset = toPivot.Dot(direction) * (1.0 - 1.0 / scale);
  return shot;
}

// What the host finds in the rectangle, else what lies under its middle.
Vector3 RectZoomTool::PickPivot(const CameraParameters& camera) {
  const Rectangle& drawn = whiteRectangle;
  const Vector2 centre = drawn.GetCentre();
  Vector3 point;
  bool found = false;
  Steps(*this)
      .Then([&] {
        found = renderer != nullptr && renderer->QueryScreenRectRaySceneIntersection(
                                           Truncate(drawn.GetLeft()), Truncate(drawn.GetBottom()),
                                           Truncate(drawn.GetRight()), Truncate(drawn.GetTop()), point);
      })
      .Then([&] {
        if (found) return;
        PickPoint(renderer, cameraOperations->GetApplicationParameters(), camera, Truncate(centre.x),
                  Truncate(centre.y), point);
      });
  return point;
}

// ---- the rectangle and the crosshair ----

RectZoomTool::Rectangle RectZoomTool::MakeRectangle(double left, double bottom, double right, double top) {
  Rectangle rectangle;
  const Vector2 corners[4] = {{left, top}, {right, top}, {right, bottom}, {left, bottom}};
  float* vertex = rectangle.vertices;
  for (const Vector2& corner : corners) {
    SetVertex(vertex, corner.x, corner.y);
    vertex += COORDINATES;
  }
  return rectangle;
}

RectZoomTool::Line RectZoomTool::MakeLine(const Vector2& from, const Vector2& to) {
  Line line;
  SetVertex(line.vertices, from.x, from.y);
  SetVertex(line.vertices + COORDINATES, to.x, to.y);
  return line;
}

void RectZoomTool::UpdateRectangle(int x, int y) {
  if (cameraOperations == nullptr) return;
  if (rectMode == RECT_FROM_PRESS) {
    whiteRectangle =
        MakeRectangle(Math::Min(x, startX), Math::Min(y, startY), Math::Max(x, startX), Math::Max(y, startY));
    UpdateCrosshairSize();
    const Vector2 centre = whiteRectangle.GetCentre();
    UpdateCrosshairPosition(centre.x, centre.y);
  } else {
    const Vector2 extent = GetExtentAboutPress(std::abs(static_cast<double>(x) - startX),
                                               std::abs(static_cast<double>(y) - startY));
    whiteRectangle =
        MakeRectangle(startX - extent.x, startY - extent.y, startX + extent.x, startY + extent.y);
    UpdateCrosshairSize();
    UpdateCrosshairPosition(startX, startY);
  }
  blackRectangle = ConvertRectWhiteToBlack(whiteRectangle);
  cameraOperations->RequestApplicationUpdate();
}

// Widened to the shape of the viewport, and not larger than it.
Vector2 RectZoomTool::GetExtentAboutPress(double dx, double dy) const {
  const ApplicationParameters& parameters = cameraOperations->GetApplicationParameters();
  const double width = parameters.viewport_width;
  const double height = parameters.viewport_height;
  if (!(width > 0.0) || !(height > 0.0)) return {};
  const double aspect = width / height;
  if (dx / dy > aspect) {
    dy = dx / aspect;
  } else {
    dx = dy * aspect;
  }
  if (2.0 * dx > width || 2.0 * dy > height) return {width * 0.5, height * 0.5};
  return {dx, dy};
}

// A crosshair too near to the press hides. The small sizes alternate with none from one call to the next.
void RectZoomTool::UpdateCrosshairSize() {
  const int d = GetCrosshairDistance();
  if (d < NO_CROSSHAIR_BELOW && crosshairSize != 0) {
    crosshairSize = 0;
  } else if (d < SMALL_CROSSHAIR_BELOW) {
    const int size = d - CROSSHAIR_SIZE;
    crosshairSize = size < CROSSHAIR_SIZE ? size : CROSSHAIR_SIZE;
  } else {
    crosshairSize = CROSSHAIR_SIZE;
  }
}

int RectZoomTool::GetCrosshairDistance() const {
  if (rectMode != RECT_FROM_PRESS) {
    return Truncate(
        Math::Min(std::abs(whiteRectangle.GetRight() - startX), std::abs(whiteRectangle.GetTop() - startY)));
  }
  const Vector2 centre = whiteRectangle.GetCentre();
  return Truncate(
      Math::Min(std::abs(startX - std::trunc(centre.x)), std::abs(startY - std::trunc(centre.y))));
}

void RectZoomTool::UpdateCrosshairPosition(double x, double y) {
  const double size = crosshairSize;
  whiteLines[0] = MakeLine({x, y + size}, {x, y - size});
  whiteLines[1] = MakeLine({x - size, y}, {x + size, y});
  for (int i = 0; i < 2; ++i) blackLines[i] = ConvertLineWhiteToBlack(whiteLines[i]);
}

// A dark edge around the white line, seen on any background: one pixel outward.
RectZoomTool::Rectangle RectZoomTool::ConvertRectWhiteToBlack(const Rectangle& white) {
  return MakeRectangle(white.GetLeft() - 1.0, white.GetBottom() - 1.0, white.GetRight() + 1.0,
                       white.GetTop() + 1.0);
}

RectZoomTool::Line RectZoomTool::ConvertLineWhiteToBlack(const Line& white) {
  Line black = white;
  for (float* vertex : {black.vertices, black.vertices + COORDINATES}) {
    vertex[0] -= 1.0F;
    vertex[1] += 1.0F;
  }
  return black;
}

}  // namespace Korvane
