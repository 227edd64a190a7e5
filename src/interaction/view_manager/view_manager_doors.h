#pragma once

#include <cstddef>
#include <string>
#include <type_traits>

#include "camera/pixels.h"
#include "foundation/out_of_memory.h"
#include "korvane/cam3d_controller.h"
#include "korvane/camera_operations.h"
#include "korvane/helm_disc.h"
#include "korvane/mouse_wheel_zoom_tool.h"
#include "korvane/navigation_bar.h"
#include "korvane/orbit_tool.h"
#include "korvane/orientor.h"
#include "korvane/pan_tool.h"
#include "korvane/pivot_ball.h"
#include "korvane/renderer.h"
#include "korvane/storyboard.h"
#include "korvane/toolbar.h"
#include "korvane/view_manager.h"

namespace Korvane {

// The rows of which the view manager's tables are made: a widget, and what it is asked or given. A new widget
// gets a row in each table that concerns it.
//
// A widget may be taken away by whatever it calls, so a row looks for it anew after each call.

struct ViewManager::Event {
  int x = 0;
  int y = 0;
  KeyID key = KEY_SHIFT;
  bool dragging = false;  // somebody who was asked drags
};

enum class CleanScreen { Stays, Hides };  // what a clean screen does to a widget

/// Who may take an event.
struct ViewManager::Door {
  bool (*offer)(ViewManager&, Event&);
  CleanScreen cleanScreen = CleanScreen::Stays;
};

/// Who draws.
struct ViewManager::Drawing {
  void (*draw)(ViewManager&);
  CleanScreen cleanScreen = CleanScreen::Stays;
};

/// While widgets are called; what must not happen in their calls asserts that none is.
class ViewManager::CallOut {
 public:
  explicit CallOut(ViewManager& owner) : callsOut(owner.callsOut) { ++callsOut; }
  CallOut(const CallOut&) = delete;
  CallOut& operator=(const CallOut&) = delete;
  ~CallOut() { --callsOut; }

 private:
  int& callsOut;
};

struct ViewManager::Doors {
  /// Up to the first who takes the event.
  template <std::size_t COUNT>
  static bool Offer(ViewManager& owner, const Door (&doors)[COUNT], Event& event) {
    const CallOut calling(owner);
    for (const Door& door : doors) {
      if (owner.cleanScreen && door.cleanScreen == CleanScreen::Hides) continue;
      if (OrFail([&] { return door.offer(owner, event); })) return true;
    }
    return false;
  }

  // ---- widgets: a member of the view manager that points to one, or one of these ----

  static OrbitTool* Orbit(const ViewManager& owner) { return owner.navigation.orbitTool.get(); }
  static PanTool* Pan(const ViewManager& owner) { return owner.navigation.panTool.get(); }
  static MouseWheelZoomTool* Zoom(const ViewManager& owner) { return owner.navigation.zoomTool.get(); }
  static PivotBall* Ball(const ViewManager& owner) { return owner.pivotBall.get(); }

  template <auto WIDGET>
  static auto* Get(const ViewManager& owner) {
    if constexpr (std::is_member_object_pointer_v<decltype(WIDGET)>) {
      return owner.*WIDGET;
    } else {
      return WIDGET(owner);
    }
  }

  // ---- what they are asked ----

  template <auto OPERATION, class Widget>
  static bool Ask(Widget& widget, const Event& event) {
    using Member = decltype(OPERATION);
    if constexpr (std::is_invocable_v<Member, Widget&, int, int>) {
      return (widget.*OPERATION)(event.x, event.y);
    } else if constexpr (std::is_invocable_v<Member, Widget&, KeyID>) {
      return (widget.*OPERATION)(event.key);
    } else {
      return (widget.*OPERATION)();
    }
  }

  template <auto WIDGET, auto OPERATION>
  static bool Offer(ViewManager& owner, Event& event) {
    auto* const widget = Get<WIDGET>(owner);
    return widget != nullptr && Ask<OPERATION>(*widget, event);
  }

  template <auto OPERATION>
  static bool OfferToToolbars(ViewManager& owner, Event& event) {
    bool taken = false;
    owner.toolbars.Notify([&](Toolbar& toolbar) { taken = taken || Ask<OPERATION>(toolbar, event); });
    return taken;
  }

  /// `IS_DRAGGING` counts whether or not the event was taken.
  template <auto WIDGET, auto OPERATION, auto IS_DRAGGING>
  static bool OfferDrag(ViewManager& owner, Event& event) {
    const bool taken = Offer<WIDGET, OPERATION>(owner, event);
    const auto* const widget = Get<WIDGET>(owner);
    event.dragging = event.dragging || (widget != nullptr && (widget->*IS_DRAGGING)());
    return taken;
  }

  /// Whoever has taken a press or a key says whether the cursor is to be wrapped.
  template <auto WIDGET, auto OPERATION>
  static bool OfferWrapping(ViewManager& owner, Event& event) {
    if (Get<WIDGET>(owner) == nullptr) return false;
    const bool taken = Offer<WIDGET, OPERATION>(owner, event);
    const auto* const widget = Get<WIDGET>(owner);
    owner.wantCursorWrapping = taken && widget != nullptr && widget->WantCursorWrapping();
    return taken;
  }

  static bool OfferMoveToOrientor(ViewManager& owner, Event& event) {
    Orientor* const cube = owner.orientor;
    if (cube == nullptr) return false;
    const bool taken = cube->OnMouseMove(event.x, event.y);
    if (owner.orientor != cube) return taken;
    cube->SetViewportMousePosition(event.x, FlipRow(owner.viewportHeight, event.y));
    if (owner.orientor != cube || !cube->IsDragActive()) return taken;
    owner.NoticeOrientorDrag(*cube);
    event.dragging = true;
    return taken;
  }

  static bool OfferPressToOrientor(ViewManager& owner, Event& event) {
    if (owner.orientor == nullptr) return false;
    const bool taken = owner.orientor->OnLeftMouseDown(event.x, event.y);
    owner.wantCursorWrapping = taken;
    return taken;
  }

  static bool OfferPressToTool(ViewManager& owner, Event& event) {
    if (owner.activeTool == nullptr || !owner.WantActiveToolEnabled()) return false;
    return OfferWrapping<&ViewManager::activeTool, &Tool::OnMouseDown>(owner, event);
  }

  static bool OfferReleaseToBar(ViewManager& owner, Event& event) {
    if (owner.navigationBar != nullptr) owner.HandOrientorToBar();
    return Offer<&ViewManager::navigationBar, &NavigationBar::OnLeftMouseUp>(owner, event);
  }

  /// The space bar, while the left button is down, is not for the panel.
  static bool OfferKeyToStoryboard(ViewManager& owner, Event& event) {
    if (event.key == KEY_SPACE && owner.mouse.leftDown) return false;
    return Offer<&ViewManager::storyboard, &Storyboard::OnKeyDown>(owner, event);
  }

  // ---- what else takes an event ----

  static bool IsOnRibbon(ViewManager& owner, Event& /*event*/) {
    return owner.IsRibbonVisible() && owner.IsMouseInRibbonRegion();
  }
  static bool IsPlaying(ViewManager& owner, Event& /*event*/) {
    return owner.storyboard != nullptr && owner.storyboard->IsPlayingBack();
  }
  static bool HasDiscMenu(ViewManager& owner, Event& /*event*/) {
    return owner.helmDisc != nullptr && owner.helmDisc->GetEnabled();  // the menu that is open
  }
  template <auto QUESTION>
  static bool Is(ViewManager& owner, Event& /*event*/) {
    return (owner.*QUESTION)();
  }

  template <auto WIDGET, auto OPERATION>
  static void Do(ViewManager& owner) {
    if (auto* const widget = Get<WIDGET>(owner)) (widget->*OPERATION)();
  }

  template <auto OPERATION>
  static void Call(ViewManager& owner) {
    (owner.*OPERATION)();
  }

  // ---- the text for what is under the cursor; null for none ----

  template <auto WIDGET, auto... IS_SHOWN>
  static const std::wstring* GetTooltip(const ViewManager& owner) {
    const auto* const widget = Get<WIDGET>(owner);
    const bool asked = widget != nullptr && ((widget->*IS_SHOWN)() && ...) && widget->IsMouseInRegion();
    return asked ? &widget->GetTooltip() : nullptr;
  }

  static const std::wstring* GetToolbarTooltip(const ViewManager& owner) {
    const std::wstring* text = nullptr;
    owner.toolbars.Any([&text](const Toolbar& toolbar) {
      if (toolbar.IsVisible() && toolbar.IsMouseInRegion()) text = &toolbar.GetTooltip();
      return text != nullptr && !text->empty();
    });
    return text;
  }

  // ---- what they are given ----

  struct Hub {
    template <class Widget>
    static void HandOn(const ViewManager& owner, Widget& widget) {
      widget.SetKorvane(owner.cameraOperations);
    }
  };
  struct Pictures {
    template <class Widget>
    static void HandOn(const ViewManager& owner, Widget& widget) {
      widget.SetRenderer(owner.renderer);
    }
  };
  struct History {
    template <class Widget>
    static void HandOn(const ViewManager& owner, Widget& widget) {
      widget.SetRewindHistory(owner.GetRewindHistory());
    }
  };
  struct Pivot {
    template <class Widget>
    static void HandOn(const ViewManager& owner, Widget& widget) {
      widget.SetPivotBall(owner.pivotBall.get());
    }
  };
  /// Who has a ball of its own keeps it.
  struct NoPivot {
    template <class Widget>
    static void HandOn(const ViewManager& owner, Widget& widget) {
      if (widget.GetPivotBall() == owner.pivotBall.get()) widget.SetPivotBall(nullptr);
    }
  };

  template <class... GIFTS, class Widget>
  static void Give(const ViewManager& owner, Widget& widget) {
    (GIFTS::HandOn(owner, widget), ...);
  }
  /// A widget that is given something may be taken away, or have another take its place.
  template <auto WIDGET, class... GIFTS>
  static void Give(ViewManager& owner) {
    const auto give = [&](auto handOn) {
      if (auto* const widget = Get<WIDGET>(owner)) handOn(owner, *widget);
    };
    (give([](const ViewManager& giver, auto& widget) { GIFTS::HandOn(giver, widget); }), ...);
  }
  /// A tool that is given something may have tools added and removed.
  template <class... GIFTS>
  static void GiveTool(ViewManager& owner, int id) {
    (HandOnToTool(owner, id, &GIFTS::template HandOn<Tool>), ...);
  }
  static void HandOnToTool(ViewManager& owner, int id, void (*handOn)(const ViewManager&, Tool&)) {
    if (Tool* const tool = owner.FindTool(id)) handOn(owner, *tool);
  }
  /// In the order of their identifiers.
  template <class... GIFTS>
  static void GiveTools(ViewManager& owner) {
    for (auto entry = owner.tools.begin(); entry != owner.tools.end();) {
      const int id = entry->first;
      GiveTool<GIFTS...>(owner, id);
      entry = owner.tools.upper_bound(id);
    }
  }

  /// A widget that has a ball of its own keeps it.
  template <auto WIDGET>
  static void TakeBall(ViewManager& owner) {
    auto* const widget = Get<WIDGET>(owner);
    if (widget != nullptr && widget->GetPivotBall() == owner.pivotBall.get()) widget->SetPivotBall(nullptr);
  }

  template <auto WIDGET, class... GIFTS>
  static bool Create(ViewManager& owner) {
    Give<WIDGET, GIFTS...>(owner);
    auto* const widget = Get<WIDGET>(owner);
    return widget == nullptr || widget->Create();
  }

  /// The tools of the middle button work only with their disc.
  static bool CreateHelmDisc(ViewManager& owner) {
    Give<&ViewManager::helmDisc, Hub, Pictures>(owner);
    if (owner.pivotBall != nullptr) Give<&ViewManager::helmDisc, Pivot>(owner);
    HelmDisc* const disc = owner.helmDisc;
    if (disc == nullptr) return true;
    if (owner.navigationBar != nullptr) disc->GetParameters().suppressWelcome = true;
    if (!disc->Create()) return false;
    Give<Orbit, Hub, Pictures, History, Pivot>(owner);
    Give<Pan, Hub, Pictures, History>(owner);
    Give<Zoom, Hub, Pictures, History, Pivot>(owner);
    return true;
  }

  template <auto WIDGET>
  static bool Destroy(ViewManager& owner) {
    auto* const widget = Get<WIDGET>(owner);
    return widget == nullptr || widget->Destroy();
  }
};

}  // namespace Korvane
