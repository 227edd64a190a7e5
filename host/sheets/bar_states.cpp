#include "bar_states.h"

#include <cmath>

#include "korvane/navigation_bar.h"
#include "korvane/navigation_bar_observer.h"
#include "korvane/toolbar.h"
#include "painted.h"
#include "still_hub.h"
#include "zovhost/gl_renderer.h"
#include "zovhost/host_pictures.h"
#include "zovhost/toolbar_dress.h"

namespace zovsheets {

using Korvane::NavigationBar;
using Korvane::ToolbarItem;
using zovhost::Image;
using Mouse = BarState::Mouse;

namespace {

constexpr int HOME = 200;
constexpr int FIT = 201;
constexpr int PROJECTION = 202;

constexpr double across = 56.0;  // points, of the viewport
constexpr double along = 250.0;
constexpr double alongNarrow = 150.0;

// ---- the states ----

void AddPointed(std::vector<BarState>& states, bool horizontal) {
  const std::string prefix = horizontal ? "horizontal-" : "vertical-";
  const auto add = [&](const char* name, Mouse mouse, int item, bool pressed = false) -> BarState& {
    BarState& state = states.emplace_back();
    state.name = prefix + name;
    state.horizontal = horizontal;
    state.mouse = mouse;
    state.item = item;
    state.pressed = pressed;
    return state;
  };
  add("rest", Mouse::OnStrip, 0);
  add("far", Mouse::Far, 0);
  add("over", Mouse::OnItem, HOME);
  add("pressed", Mouse::OnItem, HOME, true);
  add("over-disc", Mouse::OnItem, NavigationBar::TAG_FULL_NAVIGATION);
  add("over-flyout", Mouse::OnArrow, NavigationBar::TAG_FULL_NAVIGATION);
  add("pressed-flyout", Mouse::OnArrow, NavigationBar::TAG_FULL_NAVIGATION, true);
  add("over-close", Mouse::OnItem, NavigationBar::TAG_CLOSE);
  add("over-menu", Mouse::OnItem, NavigationBar::TAG_MENU);
  add("over-grip", Mouse::OnItem, NavigationBar::TAG_GRIP);
  add("selected", Mouse::OnStrip, 0).selected = PROJECTION;
  add("disabled", Mouse::OnStrip, 0).disabled = FIT;
  add("narrow", Mouse::OnItem, NavigationBar::TAG_MORE_CONTROLS).narrow = true;
  add("without-cube", Mouse::OnStrip, 0).orientor = true;
}

void AddGrounds(std::vector<BarState>& states) {
  for (const Ground ground : grounds) {
    for (const Mouse mouse : {Mouse::Far, Mouse::OnItem}) {
      BarState& state = states.emplace_back();
      state.ground = ground;
      state.mouse = mouse;
      state.item = mouse == Mouse::OnItem ? FIT : 0;
      state.selected = PROJECTION;
      state.name = "on-" + std::string(GetName(ground)) + (mouse == Mouse::Far ? "-far" : "-over");
    }
  }
}

void AddScales(std::vector<BarState>& states) {
  for (const double scale : {1.5, 2.0, 3.0}) {
    for (const bool horizontal : {false, true}) {
      BarState& state = states.emplace_back();
      state.scale = scale;
      state.horizontal = horizontal;
      state.mouse = Mouse::OnItem;
      state.item = HOME;
      state.selected = PROJECTION;
      const char* const name = scale < 1.75 ? "-at-1-and-a-half" : scale < 2.5 ? "-at-2x" : "-at-3x";
      state.name = std::string(horizontal ? "horizontal" : "vertical") + name;
    }
  }
}

// ---- drawing ----

class HostItems : public Korvane::NavigationBarObserver {
 public:
  explicit HostItems(NavigationBar* bar) : NavigationBarObserver(bar) {}
  void OnItemClicked(int) override {}
  bool OnItemContextMenu(int, int, int) override { return false; }
  bool OnItemFlyoutPressed(int, int, int) override { return true; }
  bool OnBarMenuPressed(int, int) override { return true; }
  void OnItemsPopulated() override {}
  int OnMoreControlsPressed(int, int) override { return 0; }
  void OnMoreControlsVisibilityChanged(bool) override {}
  void OnPopulateApplicationItems(ToolbarItem::List& items) override {
    const auto add = [&items](int tag, zovhost::HostPicture picture) {
      items.Append(zovhost::MakeToolbarButton(tag, static_cast<Korvane::TextureID>(picture), L""));
    };
    add(HOME, zovhost::HOST_PICTURE_HOME);
    add(FIT, zovhost::HOST_PICTURE_FIT);
    add(PROJECTION, zovhost::HOST_PICTURE_PROJECTION);
  }
  void OnPositionChanged(bool) override {}
};

class BarScene {
 public:
  BarScene(const BarState& shown, int viewWidth, int viewHeight)
      : state(shown), width(viewWidth), height(viewHeight), items(&bar) {}

  bool Create() {
    renderer.SetViewport(0, 0, width, height);
    renderer.SetDisplayScale(state.scale);
    if (!renderer.Create()) return false;
    hub.SetViewportSize(width, height);
    bar.SetKorvane(&hub);
    bar.SetRenderer(&renderer);
    bar.AddObserver(&items);
    bar.SetLinkedToOrientor(false);
    bar.SetOrientorIsVisible(!state.orientor);
    if (!bar.Create()) return false;
    Korvane::Toolbar& toolbar = *bar.GetToolbar();
    toolbar.SetWantAnimation(false);
    toolbar.SetPosition(state.horizontal ? Korvane::Toolbar::POSITION_TOP : Korvane::Toolbar::POSITION_RIGHT);
    zovhost::DressToolbar(toolbar, state.scale);
    zovhost::ResizeItems(toolbar.GetItems(), state.scale);
    bar.SetItemSelected(state.selected, true);
    bar.SetItemEnabled(state.disabled, false);
    bar.SetViewportSize(width, height);
    renderer.ApplyTextureUsage();
    toolbar.Refresh();
    MoveMouse(toolbar);
    return true;
  }
  ~BarScene() {
    bar.RemoveObserver(&items);
    bar.Destroy();
    renderer.Destroy();
  }
  BarScene(const BarScene&) = delete;
  BarScene& operator=(const BarScene&) = delete;

  void Draw() { bar.Draw(); }
  bool IsWhole() const { return renderer.GetPlaceholderCount() == 0; }

 private:
  Korvane::Vector2 FindMouse(const Korvane::Toolbar& toolbar) const {
    const Korvane::Box2 strip = toolbar.GetToolbarBounds();
    if (state.mouse == Mouse::Far) return Korvane::Vector2(-10000.0, -10000.0);
    const ToolbarItem::List& all = toolbar.GetItems();
    for (int i = 0; i < all.GetCount(); ++i) {
      const ToolbarItem& item = all.GetAt(i);
      if (state.mouse == Mouse::OnStrip || item.GetTag() != state.item) continue;
      return state.mouse == Mouse::OnArrow ? item.GetFlyoutIconBounds().center
                                           : item.GetNonFlyoutIconBounds().center;
    }
    return strip.Min() + Korvane::Vector2(1.0);
  }

  void MoveMouse(const Korvane::Toolbar& toolbar) {
    const Korvane::Vector2 place = FindMouse(toolbar);
    const auto x = static_cast<int>(std::floor(place.x));
    const auto y = static_cast<int>(std::floor(place.y));
    bar.OnMouseMove(x, y);
    if (state.pressed) bar.OnLeftMouseDown(x, y);
  }

  const BarState& state;
  const int width;
  const int height;
  StillHub hub;
  zovhost::GLRenderer renderer;
  NavigationBar bar;
  HostItems items;
};

}  // namespace

std::vector<BarState> GetBarStates() {
  std::vector<BarState> states;
  AddPointed(states, false);
  AddPointed(states, true);
  AddGrounds(states);
  AddScales(states);
  return states;
}

bool PaintBar(const BarState& state, Image& image) {
  const auto pixels = [&state](double points) { return static_cast<int>(std::lround(points * state.scale)); };
  const int length = pixels(state.narrow ? alongNarrow : along);
  const int width = state.horizontal ? length : pixels(across);
  const int height = state.horizontal ? pixels(across) : length;
  BarScene scene(state, width, height);
  return scene.Create() && PaintOnGround([&scene] { scene.Draw(); }, state.ground, width, height, image) &&
         scene.IsWhole();
}

}  // namespace zovsheets
