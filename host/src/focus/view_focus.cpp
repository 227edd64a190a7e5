#include "zovhost/view_focus.h"

#include <algorithm>
#include <array>
#include <utility>

#include "focus/disc_wedges.h"
#include "focus/focus_things.h"
#include "focus/story_focus.h"
#include "korvane/camera_operations.h"
#include "korvane/helm_disc.h"
#include "korvane/navigation_bar.h"
#include "korvane/renderer.h"
#include "korvane/toolbar.h"
#include "korvane/track_menu.h"
#include "zovhost/accent.h"
#include "zovhost/phrases.h"
#include "zovhost/wide_text.h"

namespace zovhost {

using Korvane::Box2;
using Korvane::Renderer;
using Korvane::ToolbarItem;
using Korvane::TrackMenu;
using Korvane::Vector2;
using Type = WindowEvent::Type;

namespace {

constexpr int FRAMES_TO_FOLLOW = 2;    // a widget sees the pointer, and draws itself under it
constexpr int ARROW_OF_ITEM = 100000;  // added to the tag of the item that it opens the list of
constexpr double WEDGE_SIZE = 12.0;
constexpr double FRAME_WIDTH = 2.0;                      // points
constexpr double FRAME_REACH = 1.0 + FRAME_WIDTH + 2.0;  // from the thing, with a gap
constexpr double FAINT = 0.5;

bool IsReachable(const ToolbarItem& item) {
  const ToolbarItem::Type type = item.GetType();
  const bool isHandle = type == ToolbarItem::TYPE_GRIP || type == ToolbarItem::TYPE_SEPARATOR ||
                        type == ToolbarItem::TYPE_PLAIN;
  return !isHandle && !item.IsHidden() && !item.IsExcluded() && item.GetBounds().halfExtent.x > 0.0;
}

// That opens the menu of the navigation bar, whose first items have none of their own.
std::optional<PixelPosition> FindMenuItem(Korvane::Toolbar& strip) {
  for (int i = 0; i < strip.GetItems().GetCount(); ++i) {
    const ToolbarItem& item = strip.GetItems().GetAt(i);
    if (item.GetTag() == Korvane::NavigationBar::TAG_MENU && IsReachable(item))
      return GetMiddle(item.GetBounds());
  }
  return std::nullopt;
}

}  // namespace

ViewFocus::ViewFocus(Widgets ofView, std::function<void(const WindowEvent&)> toSend)
    : widgets(std::move(ofView)), send(std::move(toSend)) {
  focus.AddGroup([this] { return ListCube(); },
                 [this](int part, FocusStep step) { return SteerCube(part, step); });
  focus.AddGroup([this] { return ListCubeButtons(); });
  focus.AddGroup([this] { return ListDisc(); });
  focus.AddGroup([this] {
    return widgets.bar.IsVisible() ? ListBar(widgets.bar.GetToolbar(), "Navigation bar")
                                   : std::vector<FocusThing>();
  });
  for (Korvane::Toolbar* const strip : widgets.toolbars) {
    focus.AddGroup([this, strip] { return ListBar(strip, "Toolbar"); });
  }
  if (widgets.storyboard != nullptr) AddStory();
}

void ViewFocus::AddStory() {
  story = std::make_unique<StoryFocus>(StoryFocus::Partners{
      *widgets.storyboard, widgets.renderer, widgets.typeShotName, [this](int id) { focus.GoTo(id); },
      [this](const Box2& bounds) { Send(Type::MouseMove, GetMiddle(bounds)); }});
  focus.AddGroup([this] { return story->List(); },
                 [this](int id, FocusStep step) { return story->Steer(id, step); });
}

ViewFocus::~ViewFocus() = default;

std::optional<Box2> ViewFocus::FindStoryThing(PixelPosition at) {
  std::optional<Box2> smallest;
  if (story == nullptr) return smallest;
  for (const FocusThing& thing : story->List()) {
    const Box2& place = thing.bounds;
    const bool isSmaller = !smallest.has_value() || place.halfExtent.x < smallest->halfExtent.x;
    if (isSmaller && place.IsPointInside(Vector2(at.x, at.y))) smallest = place;
  }
  return smallest;
}

bool ViewFocus::OnEvent(const WindowEvent& event) {
  if (sending) return false;
  if (event.type == Type::MouseMove) pointing = false;
  if (event.type == Type::MouseLeave) pointedAt.reset();
  const bool wasActive = focus.IsActive();
  const bool used = focus.OnEvent(event);
  if (used || wasActive != focus.IsActive()) widgets.hub.RequestApplicationUpdate();
  return used;
}

std::string ViewFocus::LoadText(int id) const { return WideToUtf8(widgets.renderer.LoadStringResource(id)); }

// ---- the disc and the bars ----

std::vector<FocusThing> ViewFocus::ListDisc() {
  std::vector<FocusThing> things;
  const bool isOpen = widgets.disc.GetActiveDisc() != Korvane::DiscType::None;
  TrackMenu* const menu = isOpen ? widgets.disc.GetActiveTrackMenu() : nullptr;
  if (menu == nullptr) return things;
  for (const DiscWedge& wedge : FindWedges(*menu)) {
    const TrackMenu::Region& region = *menu->GetRegion(wedge.region);
    FocusThing thing;
    thing.id = wedge.region;
    thing.group = GetPhrases().SayPlain("Disc");
    for (const int text : {region.tooltipString, region.labelString, region.tooltipHUDString}) {
      if (thing.name.empty()) thing.name = LoadText(text);
    }
    thing.bounds = MakeBox(wedge.at, WEDGE_SIZE * scale);
    AddClick(thing, wedge.at, true);
    thing.key = OnMenuKey([this] { widgets.disc.OpenMenu(); });
    things.push_back(std::move(thing));
  }
  return things;
}

// The arrow of an item is a thing by itself.
std::vector<FocusThing> ViewFocus::ListBar(Korvane::Toolbar* strip, const char* group) {
  std::vector<FocusThing> things;
  if (strip == nullptr || !strip->IsVisible()) return things;
  const std::optional<PixelPosition> menu = FindMenuItem(*strip);
  for (int i = 0; i < strip->GetItems().GetCount(); ++i) {
    const ToolbarItem& item = strip->GetItems().GetAt(i);
    if (!IsReachable(item)) continue;
    FocusThing thing;
    thing.id = item.GetTag();
    thing.group = GetPhrases().SayPlain(group);
    thing.name = WideToUtf8(item.GetTooltip());
    thing.on = item.IsSelected();
    thing.enabled = item.IsEnabled();
    const bool isMenu = item.GetType() == ToolbarItem::TYPE_MORE_CONTROLS ||
                        item.GetTag() == Korvane::NavigationBar::TAG_MENU;
    thing.role = isMenu ? FocusRole::MenuButton : FocusRole::Button;
    const bool hasArrow = item.GetType() == ToolbarItem::TYPE_FLYOUT_BUTTON;
    thing.bounds = hasArrow ? item.GetNonFlyoutIconBounds() : item.GetBounds();
    AddClick(thing, GetMiddle(thing.bounds), false);
    thing.key = OnMenuKey([this, at = GetMiddle(thing.bounds), menu] {
      PressAt(menu.value_or(at), true, false, menu.has_value() ? MouseButton::Left : MouseButton::Right);
    });
    things.push_back(thing);
    if (!hasArrow) continue;
    thing.id += ARROW_OF_ITEM;
    thing.on = false;
    thing.role = FocusRole::MenuButton;
    thing.bounds = item.GetFlyoutIconBounds();
    AddClick(thing, GetMiddle(thing.bounds), false);
    things.push_back(std::move(thing));
  }
  return things;
}

// ---- clicks ----

void ViewFocus::AddClick(FocusThing& thing, PixelPosition at, bool held) {
  thing.press = [this, at, held](bool pressed) { PressAt(at, pressed, held); };
  if (!held) return;
  thing.drag = [this](int right, int up) {
    const auto step = static_cast<int>(DRAG_STEP * scale);
    pointer = {pointer.x + right * step, pointer.y + up * step};
    if (down) Send(Type::MouseMove, pointer);
  };
}

void ViewFocus::PressAt(PixelPosition at, bool pressed, bool held, MouseButton by) {
  if (!pressed) return held ? LetGo() : void();
  pointer = at;
  pressedBy = by;
  Send(Type::MouseMove, at);
  framesToPress = FRAMES_TO_FOLLOW;
  letsGoThen = !held;
  widgets.hub.RequestApplicationUpdate();
}

void ViewFocus::PressPending() {
  if (framesToPress == 0) return;
  widgets.hub.RequestApplicationUpdate();
  if (--framesToPress > 0) return;
  down = true;
  Send(Type::MouseDown, pointer);
  if (std::exchange(letsGoThen, false)) LetGo();
}

// A disc stays where it is, others are left by the pointer.
void ViewFocus::LetGo() {
  if (framesToPress > 0) {
    letsGoThen = true;
    return;
  }
  if (!std::exchange(down, false)) return;
  Send(Type::MouseUp, pointer);
  if (widgets.disc.GetActiveDisc() == Korvane::DiscType::None) Send(Type::MouseLeave, {-1, -1});
}

void ViewFocus::Send(Type type, PixelPosition at) {
  WindowEvent event;
  event.type = type;
  event.button = type == Type::MouseDown || type == Type::MouseUp ? pressedBy : MouseButton::Left;
  event.x = at.x;
  event.y = at.y;
  event.clicks = type == Type::MouseDown ? 1 : 0;
  event.ofTouch = true;
  const bool within = std::exchange(sending, true);
  send(event);
  sending = within;
}

// ---- the mark ----

void ViewFocus::Draw(int viewportWidth, int viewportHeight) {
  PressPending();
  const FocusThing* const thing = focus.Get();
  ShowCubeButtons();
  PointAtButton(thing);
  if (thing == nullptr || viewportWidth <= 0 || viewportHeight <= 0) return;
  const Vector2 size(viewportWidth, viewportHeight);
  const Box2 viewport(size / 2.0, size / 2.0);
  Korvane::CameraParameters camera;
  widgets.hub.QueryCameraParameters(camera);
  if (!widgets.renderer.BeginRender(viewport, camera, Renderer::RENDER_OVERLAY)) return;
  DrawFrame(FitFrame(thing->bounds, size), thing->inSight ? 1.0 : FAINT);
  widgets.renderer.EndRender();
}

// What stands at the edge of the view has its frame within.
Box2 ViewFocus::FitFrame(const Box2& bounds, const Vector2& view) const {
  const double reach = FRAME_REACH * scale;
  const Vector2 most = view - Vector2(reach);
  const Box2 whole(view / 2.0, view / 2.0);
  if (!whole.IsPointInside(bounds.center) || most.x < reach || most.y < reach) return bounds;
  const auto fit = [&](const Vector2& corner) {
    return Vector2(std::clamp(corner.x, reach, most.x), std::clamp(corner.y, reach, most.y));
  };
  const Vector2 low = fit(bounds.Min());
  const Vector2 high = fit(bounds.Max());
  return Box2((low + high) / 2.0, (high - low) / 2.0);
}

// Accent between two white lines, so that one of them stands out from any ground.
void ViewFocus::DrawFrame(const Box2& bounds, double opacity) {
  struct Line {
    double outside;  // points from the thing
    double width;
    std::array<double, 3> colour;
  };
  constexpr std::array<double, 3> WHITE = {1.0, 1.0, 1.0};
  constexpr std::array<Line, 2> LINES = {
      {{FRAME_REACH, FRAME_WIDTH + 2.0, WHITE}, {FRAME_REACH - 1.0, FRAME_WIDTH, ACCENT_COLOUR}}};
  for (const Line& line : LINES) {
    const Vector2 half = bounds.halfExtent + Vector2(line.outside * scale);
    const Vector2 inner = half - Vector2(line.width * scale);
    const std::array<Box2, 4> sides = {Box2(bounds.center + Vector2(0.0, (half.y + inner.y) / 2.0),
                                            Vector2(half.x, (half.y - inner.y) / 2.0)),
                                       Box2(bounds.center - Vector2(0.0, (half.y + inner.y) / 2.0),
                                            Vector2(half.x, (half.y - inner.y) / 2.0)),
                                       Box2(bounds.center + Vector2((half.x + inner.x) / 2.0, 0.0),
                                            Vector2((half.x - inner.x) / 2.0, inner.y)),
                                       Box2(bounds.center - Vector2((half.x + inner.x) / 2.0, 0.0),
                                            Vector2((half.x - inner.x) / 2.0, inner.y))};
    std::array<float, 48> vertices = {};  // four rectangles
    auto next = vertices.begin();
    for (const Box2& side : sides) {
      const Vector2 low = side.Min();
      const Vector2 high = side.Max();
      for (const Vector2& corner : {low, Vector2(high.x, low.y), high, Vector2(low.x, high.y)}) {
        for (const double value : {corner.x, corner.y, 0.0}) *next++ = static_cast<float>(value);
      }
    }
    Renderer::MaterialParams material;
    for (std::size_t i = 0; i < 3; ++i) material.colour[i] = static_cast<float>(line.colour[i]);
    material.colour[3] = static_cast<float>(opacity);
    widgets.renderer.RenderGeometry(static_cast<unsigned>(vertices.size() / 3), vertices.data(), nullptr,
                                    &material);
  }
}

}  // namespace zovhost
