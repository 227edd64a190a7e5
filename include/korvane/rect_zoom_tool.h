#pragma once

#include "korvane/export.h"
#include "korvane/shot_parameters.h"
#include "korvane/zoom_tool.h"

namespace Korvane {

struct CameraParameters;

/// Draws a rectangle on the view; on the release the view flies to it, while the rectangle grows to the edges
/// of the viewport. With Control held the press is the middle of the rectangle, which takes the viewport's
/// shape. Escape gives the rectangle up.
class ZOVTOOLS_API RectZoomTool : public ZoomTool {
 public:
  RectZoomTool();
  ~RectZoomTool() override;

  void OnDraw() override;
  bool OnMouseMove(int x, int y) override;
  bool OnMouseDown(int x, int y) override;
  /// A rectangle without width or height, and a press without a drag, zoom nowhere; the rewind record of the
  /// press then stays open, and the next one takes its place.
  bool OnMouseUp(int x, int y) override;
  bool OnKeyDown(KeyID key) override;
  bool OnKeyUp(KeyID key) override;

  /// Off, as at first, the flight goes as far to the other side as the rectangle's point lies beside the
  /// middle of the view, which hosts may have come to count on; on, it goes to the point.
  void SetFlyToRectangle(bool on) { fliesToRectangle = on; }

 private:
  static constexpr int COORDINATES = 3;  // a vertex; z is 0
  // Left top, right top, right bottom, left bottom; viewport pixels.
  struct Rectangle {
    float vertices[4 * COORDINATES] = {};
    double GetLeft() const { return vertices[0]; }
    double GetTop() const { return vertices[1]; }
    double GetRight() const { return vertices[2 * COORDINATES]; }
    double GetBottom() const { return vertices[2 * COORDINATES + 1]; }
    double GetWidth() const { return GetRight() - GetLeft(); }
    double GetHeight() const { return GetTop() - GetBottom(); }
    Vector2 GetCentre() const { return {(GetLeft() + GetRight()) * 0.5, (GetBottom() + GetTop()) * 0.5}; }
  };
  struct Line {
    float vertices[2 * COORDINATES] = {};
  };

  enum RectMode : int { RECT_ABOUT_PRESS = 0, RECT_FROM_PRESS = 1 };

  static Rectangle MakeRectangle(double left, double bottom, double right, double top);
  static Line MakeLine(const Vector2& from, const Vector2& to);
  static Rectangle ConvertRectWhiteToBlack(const Rectangle& white);
  static Line ConvertLineWhiteToBlack(const Line& white);

  void SetRectMode(int mode);
  void ClampToViewport(int& x, int& y) const;
  void UpdateRectangle(int x, int y);
  Vector2 GetExtentAboutPress(double dx, double dy) const;
  void UpdateCrosshairSize();
  int GetCrosshairDistance() const;
  void UpdateCrosshairPosition(double x, double y);

  void GiveUp();
  void Abandon();
  bool BeginRectShot();
  ZoomRectShotParameters MakeRectShot(const CameraParameters& camera) const;
  Vector3 PickPivot(const CameraParameters& camera);

  void DrawOperating();
  void DrawAnimating();
  void GrowRectangle(Rectangle& rectangle) const;

  int startX = 0;
  int startY = 0;
  int rectMode = RECT_FROM_PRESS;
  bool fliesToRectangle = false;
  int crosshairSize = 10;
  Line whiteLines[2];  // vertical, horizontal
  Line blackLines[2];
  Rectangle whiteRectangle;
  Rectangle blackRectangle;
};

}  // namespace Korvane
