#pragma once

#include <memory>
#include <vector>

#include "disc/listener_calls.h"
#include "disc/region_belongings.h"
#include "disc/region_loans.h"
#include "disc/single_icon.h"
#include "korvane/camera_operations.h"
#include "korvane/pixel_icon2d.h"
#include "korvane/renderer.h"
#include "korvane/timer.h"
#include "korvane/track_menu.h"

namespace Korvane {

/// What a track menu is made of.
struct TrackMenuParts {
  using Region = TrackMenu::Region;

  struct Partners {
    Borrowed<CameraOperations> hub;
    Borrowed<Renderer> renderer;
    bool rendererIsShared = false;
  };

  struct Maps {
    std::unique_ptr<PixelIcon2D> primary;
    std::unique_ptr<PixelIcon2D> alternate;
    PixelIcon2D* present = nullptr;  // one of the two
  };

  struct HeldRegion {
    Region region;
    RegionLoans loans;
  };

  struct Mouse {
    Vector2 GetPosition() const { return Vector2(x, y); }

    int x = 0;
    int y = 0;
    int dragOffsetX = 0;  // from the mouse to the menu, at the press
    int dragOffsetY = 0;
    bool leftButtonDown = false;
    bool modifierADown = false;
    bool modifierBDown = false;
  };

  struct State {
    bool enabled = true;
    bool visible = false;
    bool active = false;
    bool locked = false;
    bool openingMenu = false;  // the host's context menu is up
    bool ignoreMouseMovement = false;
    bool suspendUpdateActiveRegion = false;
    bool beingPutAway = false;  // its listeners are being told
    // Pressed while it was put away, by the host, behind the back of its disc; stays past the release, since
    // what that has begun may go on.
    bool pressedPutAway = false;
  };

  struct Look {
    int width = 128;
    int height = 128;
    bool sizeIsFixed = true;
    float opacity = 1.0F;
    MenuID menu = MENU_TOUR_BUILDING;
    CursorID menuCursorID = CURSOR_ARROW;
  };

  struct Switches {
    static bool IsOn(const bool* value) { return value == nullptr || *value; }

    const bool* showTooltip = nullptr;
    const bool* showSecond = nullptr;
    const bool* showTooltipHUD = nullptr;
  };

  /// `call(listener)`, unless there is none. False when the menu is gone afterwards.
  template <class Call>
  bool Tell(RegionListener* listener, const Call& call) {
    if (listener == nullptr) return true;
    const Lifeline::Watch alive(lifeline);
    const ListenerCalls::Call running(calls, *listener);
    call(*listener);
    return static_cast<bool>(alive);
  }

  bool HasViewport() const { return viewportWidth > 0 && viewportHeight > 0; }
  /// The colour that counts as the one under the mouse. False where the active region stays.
  bool FindColour(Vector3& colour) const;
  /// The last enabled region of a colour becomes the active one; the disabled region goes before all.
  void Choose(const Vector3& colour);
  /// Where a hidden menu stands: at the cursor as it shows on the screen.
  Vector2 GetDragPosition() const;
  /// Calls `place(icon)` for each picture and text that stands with the map.
  template <class Place>
  void ForEachIcon(const Place& place);
  void PlaceIcons();
  /// Sizes the pictures and the text of a region that is being added.
  void SizeToImage(Region& region);
  bool Hold(const Region& region);
  bool ReplaceDisabled(Region& region);
  void ForgetPictures();

  void DrawRegion(Renderer& pass) const;
  void DrawTooltip(Renderer& pass, double scale) const;
  void DrawNote(Renderer& pass, double scale) const;

  Lifeline lifeline;
  Partners partners;
  Maps maps;
  std::vector<std::unique_ptr<HeldRegion>> regions;
  RegionBelongings room;  // for what they own, so that they can go without memory
  HeldRegion disabled;
  Region active;
  Mouse mouse;
  State state;
  Look look;
  SingleIcon single;
  Switches switches;
  int viewportWidth = 0;
  int viewportHeight = 0;
  Timer rest;           // of the cursor, for the tooltip
  Lifeline activation;  // cut when the menu becomes active or inactive
  Lifeline rendererChange;
  ListenerCalls calls;
};

}  // namespace Korvane
