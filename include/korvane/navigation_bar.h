#pragma once

#include <memory>
#include <span>
#include <string>

#include "korvane/export.h"
#include "korvane/lifeline.h"
#include "korvane/toolbar_item.h"
#include "korvane/vector2.h"

namespace Korvane {

class CameraOperations;
class NavigationBarObserver;
class Renderer;
class Toolbar;
enum class DiscType : int;
struct BarItem;
struct NavigationBarParts;

/// The toolbar with the library's own navigation items, and the host's among them. It stands on an edge of
/// the viewport or is linked to the orientation cube, below or above which it then hangs. What its items do
/// is the host's: an observer hears of each by its tag.
///
/// In use: SetKorvane, SetRenderer, AddObserver, SetLinkedToOrientor, and the bar goes to a view manager,
/// which creates it and brings it its events and frames.
///
/// Positions are viewport pixels with the origin at the bottom left, y upward; a handler answers true when it
/// has used the event. Hub, renderer and observers are borrowed; null takes them away, and a hub or a
/// renderer that is destroyed is forgotten. Without a toolbar, before Create, what is asked of one is false
/// or empty.
///
/// Wherever the bar calls out, a host may change its items, Destroy and delete it, and give it other
/// collaborators or none. Within an operation of the renderer it may not be deleted.
class ZOVTOOLS_API NavigationBar {
 public:
  enum Location : int {
    LOCATION_LINKED = 0,  // to the orientation cube
    LOCATION_LEFT = 1,
    LOCATION_TOP = 2,
    LOCATION_RIGHT = 3,
    LOCATION_BOTTOM = 4,
  };

  /// The bar's own items. A disc that is chosen becomes the tag of the disc button, TAG_FULL_NAVIGATION at
  /// first.
  enum Tag : int {
    TAG_CLOSE = 1,
    TAG_MENU = 2,
    TAG_GRIP = 3,
    TAG_MORE_CONTROLS = 4,
    TAG_ORIENTOR = 5,  // stands in for a cube that does not show
    TAG_FULL_NAVIGATION = 6,
    TAG_MINI_FULL_NAVIGATION = 7,
    TAG_MINI_VIEW_OBJECT = 8,
    TAG_MINI_TOUR_BUILDING = 9,
    TAG_VIEW_OBJECT = 10,
    TAG_TOUR_BUILDING = 11,
    TAG_TWO_D = 12,
    TAG_STORYBOARD = 13,
    TAG_FIRST_SEPARATOR = 44,
    TAG_SECOND_SEPARATOR = 45,
  };

  // Pixels: the bar's own items, and those that a host adds.
  static constexpr int COMMON_ITEM_WIDTH = 28;
  static constexpr int COMMON_ITEM_HEIGHT = 28;
  static constexpr int APPLICATION_ITEM_WIDTH = 28;
  static constexpr int APPLICATION_ITEM_HEIGHT = 28;

  NavigationBar();
  virtual ~NavigationBar();
  NavigationBar(const NavigationBar&) = delete;
  NavigationBar& operator=(const NavigationBar&) = delete;

  virtual void SetViewportSize(int width, int height);
  /// The bar has a button that stands in for a cube that does not show.
  virtual void SetOrientorIsVisible(bool value);
  /// Linked at first. Unlinked, the bar stays on the edge where it is, and goes to the right one before
  /// Create.
  virtual void SetLinkedToOrientor(bool linked);
  /// The disc button shows the disc and is selected; with DiscType::None it is not. Any other number changes
  /// nothing.
  virtual void SetActiveHelmDisc(DiscType type);
  /// Makes and fills the toolbar. False without a hub or a renderer, and while there is a toolbar.
  virtual bool Create();
  /// Lets go of the toolbar. False when there is none.
  virtual bool Destroy();
  virtual void Draw();
  virtual bool OnMouseMove(int x, int y);
  virtual bool OnLeftMouseDown(int x, int y);
  virtual bool OnLeftMouseUp(int x, int y);
  virtual bool OnRightMouseDown(int x, int y);
  virtual bool OnRightMouseUp(int x, int y);
  // As those of the toolbar.
  virtual bool ChooseFlyoutItem(int tag);
  virtual bool IsFlyoutItemChosen(int tag);
  virtual bool SetItemEnabled(int tag, bool enabled);
  virtual bool IsItemEnabled(int tag);
  /// That of TAG_ORIENTOR is a wish, which comes into effect whenever the cube does not show. When the last
  /// of TAG_ORIENTOR, the disc button by its first tag and TAG_STORYBOARD goes, the separators go with it.
  virtual bool SetItemExcluded(int tag, bool excluded);
  virtual bool IsItemExcluded(int tag);
  virtual bool SetItemSelected(int tag, bool selected);
  virtual bool IsItemSelected(int tag);

 protected:
  /// The caller owns it.
  virtual Toolbar* InstantiateToolbar();
  virtual void PopulateItems();
  /// Those of the host, at the end of what there is.
  virtual void PopulateApplicationItems();
  virtual void OnItemClicked(const ToolbarItem& item);
  /// True when somebody took it, here and below.
  virtual bool OnItemPressed(const ToolbarItem& item);
  virtual bool OnItemFlyoutPressed(ToolbarItem& item);
  virtual bool OnItemContextMenu(const ToolbarItem& item);
  virtual void OnItemVisibilityChanged(const ToolbarItem& item);
  virtual void OnItemsPopulated();
  virtual void OnPopulateApplicationItems(ToolbarItem::List& items);
  virtual void OnPositionChanged(bool dragged);

 public:
  void SetKorvane(CameraOperations* hub);
  void SetRenderer(Renderer* value);
  /// Null is refused with false. One that is held is added no second time.
  bool AddObserver(NavigationBarObserver* observer);
  void RemoveObserver(NavigationBarObserver* observer);

  /// True at first.
  bool IsVisible() const;
  void SetVisible(bool value);
  /// The cursor is on the bar or near it.
  bool IsMouseInRegion() const;
  bool IsMouseDownOnItem() const;
  /// Empty for none.
  const std::wstring& GetTooltip() const;
  Location GetLocation() const;
  /// From the middle of the edge, as Toolbar::GetEdgeOffset.
  Vector2 GetLocationOffset() const;
  /// Null until the bar is created.
  Toolbar* GetToolbar() const;

  Lifeline& GetLifeline();

 protected:
  /// For the tests of the library, which see what it is.
  NavigationBarParts& GetParts() { return *parts; }

 private:
  friend class NavigationBarToolbarObserver;

  void TakeLocation();
  void AppendItems(std::span<const BarItem> rows);
  void ApplyWishes();
  bool OfferMoreControls(int x, int y);
  void HideLonelySeparators();

  std::shared_ptr<NavigationBarParts> parts;
};

}  // namespace Korvane
