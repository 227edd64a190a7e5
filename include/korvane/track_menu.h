#pragma once

#include <memory>

#include "korvane/export.h"
#include "korvane/lifeline.h"
#include "korvane/resource_ids.h"
#include "korvane/vector2.h"
#include "korvane/vector3.h"

namespace Korvane {

class CameraOperations;
class DynamicIcon2D;
class PixelIcon2D;
class RegionListener;
class Renderer;
class ResourceIcon2D;
struct TrackMenuParts;

/// A menu without a fixed place: a picture that rides under the cursor, divided into regions by a second,
/// hidden picture, the region map. It knows nothing of cameras: what a region does lies in its listener.
///
/// In use: SetKorvane, SetRenderer, Create, SetRegionMap, SetMenu, SetDisabledRegion, AddRegion for each
/// region; SetViewportSize, SetSize, SetOpacity; then the events, and Draw once a frame.
///
/// Positions are viewport pixels with the origin at the bottom left, y upward; the place of a menu is its
/// centre. All calls belong on the host's window thread.
///
/// Wherever the menu calls out - the hub, the renderer, its listeners - a host may show and hide it, give it
/// other collaborators or none, add regions, and Destroy it. Within a listener it may also be deleted.
class ZOVTOOLS_API TrackMenu {
 public:
  /// A part of the menu: where the region map has its colour. A plain record, copied by value.
  struct ZOVTOOLS_API Region {
    Vector3 color;                            ///< Red, green, blue, each 0 to 1.
    RegionListener* listener = nullptr;       ///< Owned by the list of regions, as the two pictures are.
    ResourceIcon2D* icon = nullptr;           ///< Drawn while the region is active, and
    ResourceIcon2D* overlayIcon = nullptr;    ///< above it.
    StringID labelString = STRING_NONE;       ///< The texts of the three icons below.
    StringID tooltipString = STRING_NONE;     ///< ...
    StringID tooltipHUDString = STRING_NONE;  ///< ...
    DynamicIcon2D* label = nullptr;           ///< On the menu while the region is active. The texts are
    DynamicIcon2D* tooltip = nullptr;         ///< the renderer's, and held while the menu is active.
    DynamicIcon2D* tooltipHUD = nullptr;      ///< Beside the cursor while the menu is hidden in a drag.
    CursorID cursorID = CURSOR_ARROW;         ///< While the menu is hidden and the region is active.
    bool sticky = false;                      ///< Read on the first region only: a region is left no
                                              ///< sooner than 3 pixels beyond its edge.
    bool enabled = true;                      ///< One that is not is never chosen.
    bool wrap = true;                         ///< The cursor wraps at the edges of the viewport.
    int zone = -1;                            ///< What observers are told, a HelmDiscZone; -1: nothing.

    void SetTooltipHUD(DynamicIcon2D* value) { tooltipHUD = value; }
    void SetTooltipString(StringID value) { tooltipString = value; }
    void SetWrap(bool value) { wrap = value; }
    void SetCursorID(CursorID value) { cursorID = value; }
    /// Deletes the listener and the two pictures, and forgets the texts. For a record that is in no menu.
    void Destroy();
  };

  TrackMenu();
  /// Deletes what the menu owns. The renderer is not among that.
  virtual ~TrackMenu();
  TrackMenu(const TrackMenu&) = delete;
  TrackMenu& operator=(const TrackMenu&) = delete;

  /// Borrowed; null takes it away. A hub that is destroyed is forgotten.
  virtual void SetKorvane(CameraOperations* hub);
  /// The menu owns what it is given here: another renderer, or null, deletes the one that it holds, so a
  /// renderer is set once. It does not with SetRendererShared. The last one that it holds is not deleted with
  /// the menu, and one that is destroyed elsewhere is forgotten. An active menu gives its resources back to
  /// the old renderer and takes them from the new one; applying the counts is its owner's.
  virtual void SetRenderer(Renderer* value);
  /// Always true.
  virtual bool Create();
  /// Hides the menu, gives its resources back, and deletes the regions. Always true.
  virtual bool Destroy();
  /// A frame: follows the cursor, then draws. Nothing without a hub or a renderer.
  virtual void Draw();
  virtual void OnMouseMove(int x, int y);
  virtual void OnLeftMouseDown(int x, int y);
  virtual void OnLeftMouseUp(int x, int y);
  /// KEY_SHIFT and KEY_CONTROL may change the active region.
  virtual void OnKeyDown(KeyID key);
  virtual void OnKeyUp(KeyID key);
  /// Pixels; below 0 counts as 0.
  virtual void SetViewportSize(int width, int height);
  virtual void SetLocation(int x, int y);
  /// The context menu. False without a renderer, and for a menu that is not enabled.
  virtual bool OpenMenu();
  /// Takes over what the region owns. False, and nothing taken, while there is no region map. The menu shows
  /// the last region that was added with a picture, until it finds the one under the cursor.
  virtual bool AddRegion(Region region);
  /// Stands in while the menu is not enabled, and where its colour is under the cursor. As AddRegion.
  virtual bool SetDisabledRegion(Region region);
  /// The map in use from now on. False without a renderer, and when it has no such picture; the former map is
  /// gone then.
  virtual bool SetRegionMap(TextureID id);
  /// A second map, for UseAlternateRegionMap.
  virtual bool SetAlternateRegionMap(TextureID id);
  virtual void UseAlternateRegionMap(bool alternate);
  virtual void SetMenu(MenuID id);
  /// In the order of AddRegion; null for an index out of range. Valid until Destroy.
  virtual Region* GetRegion(int index);
  /// Takes the record as it is, until the next update.
  virtual void SetActiveRegion(Region region);
  /// A copy of the chosen region: what is changed here is gone when it is chosen again.
  virtual Region& GetActiveRegion();
  /// Null while there is none.
  virtual PixelIcon2D* GetRegionMap();
  /// Pixels; below 0 counts as 0. The size no longer comes from the region map.
  virtual void SetSize(int width, int height);
  /// 0 to 1 and above: it is multiplied into the pictures.
  virtual void SetOpacity(float value);

 protected:
  virtual void DrawTrackMenu();
  /// Follows the cursor, finds the active region and times the tooltip. Asks for a frame when any of it
  /// changed and the menu is visible.
  virtual void Update();

 public:
  CameraOperations* GetKorvane() const;
  Renderer* GetRenderer() const;
  /// Whether the renderer belongs to somebody else, who shares it out: then the menu only borrows it.
  void SetRendererShared(bool shared);

  bool GetEnabled() const;
  /// A menu that is not enabled shows its disabled region and asks for no cursor.
  void SetEnabled(bool enabled);
  bool GetVisible() const;
  /// To show is refused while the left button is down. What is shown becomes active.
  void SetVisible(bool visible);
  /// Resources are held.
  bool GetActive() const;
  /// A visible menu stays active. The owner lets the renderer apply its counts afterwards.
  void SetActive(bool active);
  /// A locked menu does not follow the cursor.
  bool GetLocked() const;
  void SetLocked(bool locked);
  /// The mouse goes by unnoticed, and menu and active region stay.
  void SetIgnoreMouseMovement(bool ignore);
  /// The active region stays.
  void SetSuspendUpdateActiveRegion(bool suspend);
  /// Draws one picture in place of those of the regions; borrowed, null for none. A change asks for a frame.
  /// Its texture is taken, and given back, with the menu's; whoever changes it while the menu is active gives
  /// back the count of the former one and takes that of the new one, both in the menu's renderer.
  void SetUseSingleIconForDraw(bool use);
  void SetSingleIconForDraw(ResourceIcon2D* icon);
  /// The same for a caller who leaves the counts to the menu; asks for no frame. The owner lets the renderer
  /// apply its counts afterwards.
  void ExchangeSingleIconForDraw(ResourceIcon2D* icon);
  /// While this is not set, a region map gives the menu its own size.
  void SetSizeIsFixed(bool fixed);
  /// The cursor while the menu shows.
  CursorID GetMenuCursorID() const;
  void SetMenuCursorID(CursorID id);
  /// Switches that live elsewhere and outlive the menu; null counts as true. The second is not read here.
  void SetShowParams(const bool* showTooltip, const bool* showSecond, const bool* showTooltipHUD);

  Vector2 GetMouseCoords() const;
  bool IsLeftButtonDown() const;
  /// Forgets a press without a release to the listener: no click comes of it. Before the menu is put away,
  /// upon which the listeners end what the press has begun (see RegionListener::OnTrackMenuActivate).
  void CancelPress();
  /// KEY_SHIFT, KEY_CONTROL.
  bool IsModifierADown() const;
  bool IsModifierBDown() const;
  int GetViewportWidth() const;
  int GetViewportHeight() const;
  int GetWidth() const;
  int GetHeight() const;
  float GetOpacity() const;

  /// Shows the tooltip of the active region from 2 to 6 seconds after the cursor came to rest. True when that
  /// changed anything.
  bool UpdateTimer();
  bool UpdateTooltip() { return UpdateTimer(); }
  /// The point of a map, which is taken to be star-shaped around its centre, that is nearest to a point.
  /// Nothing without a map.
  static void GetClosestPoint(const PixelIcon2D* map, double x, double y, double& closestX, double& closestY);

  Lifeline& GetLifeline();

 protected:
  /// True when the menu has moved.
  bool UpdatePosition();
  /// True when the picture of the active region has changed.
  bool UpdateActiveRegion();

  /// For the tests of the library, which see what it is.
  TrackMenuParts& GetParts() { return *parts; }

 private:
  void RequestUpdateIfVisible();
  bool LoadMap(std::unique_ptr<PixelIcon2D>& slot, TextureID id);
  void Hold(bool state);
  void DropRegions();
  void TellOfChoice(const Region& before);

  std::unique_ptr<TrackMenuParts> parts;
};

}  // namespace Korvane
