#pragma once

#include <string>

#include "korvane/box2.h"
#include "korvane/changing_in_time.h"
#include "korvane/export.h"
#include "korvane/orientor_parameters.h"
#include "korvane/vector2.h"

namespace Korvane {

class CameraOperations;
class Renderer;

/// A strip of icon buttons on an edge, or in a corner, of the viewport.
///
/// The strip itself is still to come: for now it is never visible, holds no items, uses no events and draws
/// nothing. What it is told about its surroundings is kept.
///
/// Positions are viewport pixels with the origin at the bottom left, y upward; a handler answers true when it
/// has used the event. What is handed over is borrowed; null takes it away.
class ZOVTOOLS_API Toolbar {
 public:
  enum Position : int {
    POSITION_LEFT = 0,
    POSITION_TOP = 1,
    POSITION_RIGHT = 2,
    POSITION_BOTTOM = 3,
    POSITION_TOP_LEFT = 4,
    POSITION_TOP_RIGHT = 5,
    POSITION_BOTTOM_RIGHT = 6,
    POSITION_BOTTOM_LEFT = 7,
  };

  Toolbar();
  virtual ~Toolbar();
  Toolbar(const Toolbar&) = delete;
  Toolbar& operator=(const Toolbar&) = delete;

  virtual bool Create();
  virtual bool Destroy();
  virtual void Draw();
  virtual bool OnMouseMove(int x, int y);
  virtual bool OnLeftMouseDown(int x, int y);
  virtual bool OnLeftMouseUp(int x, int y);
  virtual bool OnRightMouseDown(int x, int y);
  virtual bool OnRightMouseUp(int x, int y);

  void SetKorvane(CameraOperations* hub) { cameraOperations = hub; }
  void SetRenderer(Renderer* value) { renderer = value; }

  bool IsVisible() const { return visible; }
  void SetVisible(bool value) { visible = value; }
  /// The cursor is on the strip or near it.
  bool IsMouseInRegion() const { return mouseInRegion; }
  /// A press that began on an item goes on.
  bool IsMouseDownOnItem() const { return mouseDownOnItem; }
  /// Empty for none.
  const std::wstring& GetTooltip() const { return tooltip; }
  Position GetPosition() const { return position; }
  /// Where the strip stands: its centre and half sizes, which may be changing in time.
  const ChangingInTimeBox2& GetToolbarBounds() const { return bounds; }

  // What the strip has to know to find its place.

  void SetViewportSize(int width, int height);
  void SetPosition(Position value) { position = value; }
  /// The greatest size; -1: no limit.
  void SetSizeLimits(int width, int height);
  /// From the corner, for the four corner positions.
  void SetCornerOffset(const Vector2& offset) { cornerOffset = offset; }
  /// The host's ribbon over the top left corner; (0, 0): there is none.
  void SetRibbonSize(int width, int height);
  void SetOrientorBounds(const Box2& value) { orientorBounds = value; }
  void SetOrientorLocation(OrientorParameters::Location value) { orientorLocation = value; }
  /// A disabled strip reacts to nothing.
  void SetDisabled(bool value) { disabled = value; }

 protected:
  CameraOperations* cameraOperations = nullptr;
  Renderer* renderer = nullptr;
  Position position = POSITION_RIGHT;
  Vector2 cornerOffset;
  int viewportWidth = 0;
  int viewportHeight = 0;
  int ribbonWidth = 0;
  int ribbonHeight = 0;
  int sizeLimitWidth = -1;
  int sizeLimitHeight = -1;
  Box2 orientorBounds;
  OrientorParameters::Location orientorLocation = OrientorParameters::LOCATION_TOP_RIGHT;
  bool visible = false;
  bool disabled = false;
  ChangingInTimeBox2 bounds;
  bool mouseInRegion = false;
  bool mouseDownOnItem = false;
  std::wstring tooltip;
};

}  // namespace Korvane
