#pragma once

#include <memory>
#include <string>

#include "korvane/box2.h"
#include "korvane/changing_in_time.h"
#include "korvane/color_rgba.h"
#include "korvane/export.h"
#include "korvane/lifeline.h"
#include "korvane/orientor_parameters.h"
#include "korvane/resource_ids.h"
#include "korvane/toolbar_item.h"
#include "korvane/vector2.h"

namespace Korvane {

class CameraOperations;
class Renderer;
class ToolbarObserver;
struct ToolbarParts;

/// A strip of icon buttons on an edge, or in a corner, of the viewport. It lays its items out along the edge,
/// leaves out from the end what does not fit, is dragged to another edge by its grip, gives way to the
/// orientation cube and to the host's ribbon, and fades as the mouse goes away. What it holds is its owner's
/// choice.
///
/// In use: SetKorvane, SetRenderer, GetItems to fill it, the icons, Create, SetVisible; SetViewportSize, the
/// ribbon and the cube; SetWantAnimation; then the events, and Draw once a frame. Whoever changes items
/// through GetItems says so with ApplyItemChanges.
///
/// Positions are viewport pixels with the origin at the bottom left, y upward; a handler answers true when it
/// has used the event. Hub, renderer and observers are borrowed; null takes them away, and a hub or a
/// renderer that is destroyed is forgotten. What is set takes effect with the next Draw.
///
/// Wherever the strip calls out - the hub, the renderer, its observers, its own virtual operations - a host
/// may change the items, move, hide, Destroy and delete the strip, and give it other collaborators or none.
/// Within an operation of the renderer it may not be deleted.
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
  enum Orientation : int { ORIENTATION_VERTICAL = 0, ORIENTATION_HORIZONTAL = 1 };

  static constexpr double DEFAULT_FADE_DISTANCE_FACTOR = 2.0;
  static constexpr double DEFAULT_FADE_STEP_VALUE = 0.01;
  static constexpr double POSITION_ANIMATION_TIME = 0.2;  // seconds
  static constexpr double OPACITY_ANIMATION_TIME = 0.5;
  static constexpr double SIZE_ANIMATION_TIME = 0.2;
  static constexpr ColorRGBA DEFAULT_BACKGROUND_COLOR{225.0 / 255.0, 225.0 / 255.0, 225.0 / 255.0, 0.65};
  static constexpr ColorRGBA DEFAULT_BORDER_COLOR{0.0, 0.0, 0.0, 0.5};
  static constexpr ColorRGBA DEFAULT_HIGHLIGHT_COLOR{1.0, 1.0, 1.0, 0.25};
  static constexpr ColorRGBA DEFAULT_MOUSEOVER_COLOR{0.71, 0.84, 0.95, 1.0};
  static constexpr ColorRGBA DEFAULT_MOUSEDOWN_COLOR{184.0 / 255.0, 214.0 / 255.0, 242.0 / 255.0, 1.0};
  static constexpr ColorRGBA DEFAULT_OUTLINE_COLOR{1.0 / 255.0, 96.0 / 255.0, 191.0 / 255.0, 1.0};
  static constexpr ColorRGBA DEFAULT_SELECTED_COLOR{185.0 / 255.0, 215.0 / 255.0, 243.0 / 255.0, 1.0};
  static constexpr ColorRGBA DEFAULT_GRIP_COLOR{187.0 / 255.0, 187.0 / 255.0, 187.0 / 255.0, 1.0};
  static constexpr ColorRGBA DEFAULT_SEPARATOR_COLOR{0.0, 0.0, 0.0, 0.2};

  Toolbar();
  virtual ~Toolbar();
  Toolbar(const Toolbar&) = delete;
  Toolbar& operator=(const Toolbar&) = delete;

  /// Takes the pictures of new items and lays out anew.
  virtual void ApplyItemChanges();
  /// Takes the pictures and lays out with the next frame. True, also when it was created before.
  virtual bool Create();
  /// Gives the pictures back and ends a press. Always true.
  virtual bool Destroy();
  /// Lays out now. Nothing before Create.
  virtual void Refresh();
  /// Nothing without a hub, a renderer or a viewport.
  virtual void Draw();
  virtual bool OnMouseMove(int x, int y);
  virtual bool OnLeftMouseDown(int x, int y);
  virtual bool OnLeftMouseUp(int x, int y);
  virtual bool OnRightMouseDown(int x, int y);
  /// Always false.
  virtual bool OnRightMouseUp(int x, int y);

 protected:
  // Each tells every observer.
  virtual void OnItemClicked(const ToolbarItem& item);
  virtual void OnItemMouseDown(const ToolbarItem& item);
  virtual void OnItemMouseEnter(const ToolbarItem& item);
  virtual void OnItemMouseExit(const ToolbarItem& item);
  virtual void OnItemFlyoutOpened(ToolbarItem& item);
  virtual void OnItemContextMenu(const ToolbarItem& item);
  virtual void OnItemVisibilityChanged(const ToolbarItem& item);
  virtual void OnPositionChanged();
  virtual void OnToolbarDragged();

 public:
  void SetKorvane(CameraOperations* hub);
  /// The pictures move to another renderer.
  void SetRenderer(Renderer* value);
  /// Null is refused with false. One that is held is added no second time.
  bool AddObserver(ToolbarObserver* observer);
  void RemoveObserver(ToolbarObserver* observer);

  /// False at first. With animation it fades in and out.
  void SetVisible(bool value);
  /// It shows, be it only still on its way out.
  bool IsVisible() const;
  /// A disabled strip uses no events and keeps its least opacity. A drag that goes on is undone.
  void SetDisabled(bool value);
  /// See ApplyItemChanges.
  ToolbarItem::List& GetItems();
  const ToolbarItem::List& GetItems() const;

  // ---- the place; numbers that are not finite are ignored ----

  /// POSITION_RIGHT at first.
  Position GetPosition() const;
  /// Sets the orientation as well: horizontal at the top and at the bottom. The edge offset stays, on both
  /// axes: set it as well. A number that is no position is ignored.
  void SetPosition(Position value);
  void SetOrientation(Orientation value);
  /// Distances from the two sides of a corner, inward, for the four corner positions.
  void SetCornerOffset(const Vector2& offset);
  /// From the middle of the edge, for the four edges: to the right and up. A drag and the dock hold it to
  /// what the viewport, the ribbon and the cube leave; for a strip that is kept in view each layout does.
  const Vector2& GetEdgeOffset() const;
  void SetEdgeOffset(const Vector2& offset);
  /// A strip at an edge gives way as well when the viewport shrinks, or the ribbon or the cube comes, and
  /// goes back when there is room again: the offset stays what it is. False at first: it stands where it was
  /// put.
  void SetKeepInView(bool value);
  bool GetKeepInView() const;
  /// A corner becomes the edge beside it, in the same place. True when that changed the position.
  bool ConvertToEdgePosition();
  void SetViewportSize(int width, int height);
  /// The host's ribbon over the top left corner; (0, 0): there is none.
  void SetRibbonSize(int width, int height);
  /// The greatest size; below 0: no limit.
  void SetSizeLimits(int width, int height);
  void SetOrientorBounds(const Box2& value);
  void SetOrientorLocation(OrientorParameters::Location value);

  /// Whether the strip moves and fades gradually. False at first; to be set after Create, so that the first
  /// layout is at once in its place.
  void SetWantAnimation(bool value);
  bool GetWantAnimation() const;
  /// Centre and half sizes, which may be changing in time.
  const ChangingInTimeBox2& GetToolbarBounds() const;

  // ---- the mouse ----

  bool IsMouseInBounds() const;
  /// The cursor is on the strip or near it.
  bool IsMouseInRegion() const;
  /// A press that began on an item goes on.
  bool IsMouseDownOnItem() const;
  bool IsPointInBounds(int x, int y) const;
  /// The tag of the item under the cursor; 0 for none and during a press.
  int GetCurrentTooltipItemTag() const;
  /// The text of that item; empty for none.
  const std::wstring& GetTooltip() const;

  // ---- items by their tags: those of the strip, then their flyout items; false for a tag that is not there

  /// The flyout item takes the place of the item that owns it: tag, picture, tooltip and data. False also for
  /// the tag of an item of the strip.
  bool ChooseFlyoutItem(int tag);
  /// The item that owns it shows it now.
  bool IsFlyoutItemChosen(int tag) const;
  bool IsItemEnabled(int tag) const;
  /// True when that changed the item, here and below.
  bool SetItemEnabled(int tag, bool enabled);
  bool IsItemSelected(int tag) const;
  /// A flyout item that is selected is also chosen; to deselect it deselects the item that owns it.
  bool SetItemSelected(int tag, bool selected);
  /// By the owner's wish.
  bool IsItemHidden(int tag) const;
  /// It does not show, by the owner's wish or for want of room.
  bool IsItemExcluded(int tag) const;
  /// The owner's wish, which every layout respects.
  bool SetItemExcluded(int tag, bool excluded);

  // ---- the look: textures and sizes in pixels ----

  void SetFlyoutIcon(TextureID texture, int width, int height);
  /// By the orientation of the strip, as the next.
  void SetGripHandleIcon(Orientation orientation, TextureID texture, int width, int height);
  void SetMoreControlsIcon(Orientation orientation, TextureID texture, int width, int height);
  /// The rounded corners, filled; tinted with the colour of the background.
  void SetCornerIcons(TextureID topLeft, TextureID topRight, TextureID bottomRight, TextureID bottomLeft,
                      int width, int height);
  /// The border and the highlight around these corners, in their own colours.
  void SetCornerHighlightedIcons(TextureID topLeft, TextureID topRight, TextureID bottomRight,
                                 TextureID bottomLeft, int width, int height);

  /// For all toolbars: the distance, in half sizes of the narrower side, within which a strip keeps its full
  /// opacity, and the least change of opacity that is worth a frame. Only finite numbers from 0 on count.
  static void SetFadeDistanceFactor(double factor);
  static void SetFadeStepValue(double step);
  static double sm_fadeDistanceFactor;
  static double sm_fadeStepValue;

  Lifeline& GetLifeline();

 protected:
  /// For the tests of the library, which see what it is.
  ToolbarParts& GetParts() { return *parts; }
  /// Lays out with the next frame.
  void PostRefresh();

 private:
  void ApplyLook();
  void RecalculateLayout();
  void TellOfPointer(int before);
  void BeginDrag();
  void Drag();
  void Dock();
  void PressDownItem();
  void DrawStrip();
  void ShowCursor();
  void DrawAnimations();
  bool DrawOpacityAnimation();
  bool DrawPositionAnimation();
  bool DrawSizeAnimation();

  std::shared_ptr<ToolbarParts> parts;
};

}  // namespace Korvane
