#pragma once

#include <memory>
#include <utility>
#include <vector>

#include "foundation/staying.h"
#include "korvane/camera_operations.h"
#include "korvane/observer_set.h"
#include "korvane/renderer_loans.h"
#include "korvane/toolbar_observer.h"
#include "toolbar/strip_fade.h"
#include "toolbar/strip_motion.h"
#include "toolbar/strip_mouse.h"
#include "toolbar/toolbar_layout.h"
#include "toolbar/toolbar_painter.h"
#include "toolbar/toolbar_place.h"

namespace Korvane {

/// What a toolbar is made of, by what changes together.
struct ToolbarParts {
  struct Partners {
    Borrowed<CameraOperations> hub;
    Borrowed<Renderer> renderer;
    ObserverSet<ToolbarObserver> observers;
  };

  struct Life {
    bool created = false;
    bool visible = false;
    bool disabled = false;
    bool refreshPending = false;
    bool texturesMissing = false;  // there was no memory for them
  };

  struct Drag {
    bool active = false;
    StripPlace former;    // where a drag that is cut short goes back to: at the press, and what is set since
    Vector2 startOffset;  // the edge offset where the strip showed then
  };

  struct Textures {
    Textures(std::vector<TextureID> wanted, Renderer& renderer)
        : ids(std::move(wanted)), loan(ids), lender(&renderer) {
      loan.Want(&renderer);
    }

    const std::vector<TextureID> ids;
    TextureLoan loan;
    const Renderer* lender;  // only compared
  };

  using ItemsTold = std::vector<std::shared_ptr<ToolbarItem>>;

  /// True when that is a change.
  template <class Value>
  bool SetPlace(Value StripPlace::*member, const Value& value) {
    if (drag.active) drag.former.*member = value;
    return std::exchange(place.*member, value) != value;
  }
  /// Lays out. The items that have come or gone with it.
  ItemsTold Arrange();
  /// Where the strip is to stand: the wish, held back where it is kept in view.
  StripPlace GetShownPlace() const;
  /// Holds the edge offset to what there is room for.
  void Constrain();
  /// Brings items and opacity up to date with the mouse, and asks for a frame when any of it shows.
  void Update();
  /// True when the opacity changes.
  bool UpdateOpacity();
  double GetOpacityFromMouse() const;
  /// The item that a release clicks now; null for none.
  std::shared_ptr<ToolbarItem> FindClicked() const;
  /// The strip goes back to where it was dragged from.
  void EndDrag();
  void EndPress();

  /// Those of the strip and of all its items now; or gives back what is held. False where memory runs out:
  /// the next frame tries again.
  bool UpdateTextures(bool wanted);
  void SetCursor(CursorID id) const;
  void RequestUpdate() const;
  bool CanDraw() const;
  /// Be it only still on its way out.
  bool IsShown() const { return life.visible || (fade.inProgress && fade.Get() > 0.0); }

  Partners partners;
  Life life;
  StripLook look;
  StripRoom room;
  StripPlace place;
  bool keepInView = false;
  Vector2 halfSize;  // that the layout wants
  StripSpacing spacing;
  StripMotion motion;
  StripFade fade;
  StripMouse mouse;
  Drag drag;
  ToolbarItem::List items;
  std::vector<StripItem> strip;  // the items as the layout sees them
  std::unique_ptr<Textures> textures;
  Lifeline lifeline;

 private:
  std::unique_ptr<Textures> TakeTextures(Renderer& renderer) const;
  bool UpdateItems();
  bool UpdateItemState(int index);
  bool UpdateMouseArea();
  void UpdateTooltip();
};

}  // namespace Korvane
