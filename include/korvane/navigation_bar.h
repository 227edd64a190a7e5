#pragma once

#include <memory>
#include <string>

#include "korvane/export.h"

namespace Korvane {

class CameraOperations;
class Renderer;
class Toolbar;
enum class DiscType : int;

/// The toolbar with the library's own navigation items. It stands on an edge of the viewport or is linked to
/// the orientation cube, below or above which it then hangs.
///
/// The bar itself is still to come: for now it makes no toolbar and so is never visible, uses no events and
/// draws nothing. Its location, and what it is told, is kept.
///
/// Positions are viewport pixels with the origin at the bottom left, y upward; a handler answers true when it
/// has used the event. What is handed over is borrowed; null takes it away.
class ZOVTOOLS_API NavigationBar {
 public:
  enum Location : int {
    LOCATION_LINKED = 0,  // to the orientation cube
    LOCATION_LEFT = 1,
    LOCATION_TOP = 2,
    LOCATION_RIGHT = 3,
    LOCATION_BOTTOM = 4,
  };

  NavigationBar();
  virtual ~NavigationBar();
  NavigationBar(const NavigationBar&) = delete;
  NavigationBar& operator=(const NavigationBar&) = delete;

  virtual void SetViewportSize(int width, int height);
  /// The bar has a button that stands in for a cube that does not show.
  virtual void SetOrientorIsVisible(bool value);
  /// Unlinked, the bar goes to the right edge.
  virtual void SetLinkedToOrientor(bool linked);
  virtual void SetActiveHelmDisc(DiscType type);
  virtual bool Create();
  virtual bool Destroy();
  virtual void Draw();
  virtual bool OnMouseMove(int x, int y);
  virtual bool OnLeftMouseDown(int x, int y);
  virtual bool OnLeftMouseUp(int x, int y);
  virtual bool OnRightMouseDown(int x, int y);
  virtual bool OnRightMouseUp(int x, int y);
  /// True when that changed the item. Items are named by their tags; those of tools are the tools' own.
  virtual bool SetItemSelected(int tag, bool selected);

  void SetKorvane(CameraOperations* hub) { cameraOperations = hub; }
  void SetRenderer(Renderer* value) { renderer = value; }

  bool IsVisible() const { return visible; }
  void SetVisible(bool value);
  /// The cursor is on the bar or near it.
  bool IsMouseInRegion() const;
  bool IsMouseDownOnItem() const;
  /// Empty for none.
  const std::wstring& GetTooltip() const;
  Location GetLocation() const { return location; }
  /// Null until the bar is created.
  Toolbar* GetToolbar() const { return toolbar.get(); }

 protected:
  CameraOperations* cameraOperations = nullptr;
  Renderer* renderer = nullptr;
  std::unique_ptr<Toolbar> toolbar;
  Location location = LOCATION_LINKED;
  bool visible = true;
  std::wstring emptyTooltip;
};

}  // namespace Korvane
