#include "commands/view_bars.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <map>
#include <string>

#include "commands/device_commands.h"
#include "commands/disc_commands.h"
#include "commands/view_commands.h"
#include "korvane/orientor.h"
#include "views/view_tools.h"
#include "views/viewer_view_manager.h"
#include "zovhost/host_pictures.h"
#include "zovhost/phrases.h"
#include "zovhost/resource_pack.h"
#include "zovhost/toolbar_dress.h"
#include "zovhost/wide_text.h"

namespace zovview {

using Korvane::NavigationBar;
using Korvane::Toolbar;
using Korvane::ToolbarItem;

namespace {

constexpr int GRIP = 1;  // tags of the toolbar of the tools, beside those of the tools
constexpr int MORE = 2;
constexpr int NO_PICTURE = Korvane::TEXTURE_NONE;

// What an item does, and its picture where it is no item of the library's.
struct Button {
  int tag;
  std::string_view command;
  int picture = NO_PICTURE;
};

constexpr Button LIBRARY_BUTTONS[] = {
    {NavigationBar::TAG_CLOSE, "toggle-bar"},
    {NavigationBar::TAG_ORIENTOR, "toggle-cube"},
    {NavigationBar::TAG_FULL_NAVIGATION, "disc-full-navigation"},
    {NavigationBar::TAG_MINI_FULL_NAVIGATION, "disc-mini-full-navigation"},
    {NavigationBar::TAG_MINI_VIEW_OBJECT, "disc-mini-view-object"},
    {NavigationBar::TAG_MINI_TOUR_BUILDING, "disc-mini-tour-building"},
    {NavigationBar::TAG_VIEW_OBJECT, "disc-view-object"},
    {NavigationBar::TAG_TOUR_BUILDING, "disc-tour-building"},
    {NavigationBar::TAG_TWO_D, "disc-2d"},
    {NavigationBar::TAG_STORYBOARD, "toggle-storyboard"},
};

constexpr Button HOST_BUTTONS[] = {
    {201, "home", zovhost::HOST_PICTURE_HOME},
    {202, "fit-all", zovhost::HOST_PICTURE_FIT},
    {203, "toggle-projection", zovhost::HOST_PICTURE_PROJECTION},
};

// What a six-axis device moves, one at a time; in the order of its modes.
constexpr Button DEVICE_BUTTONS[] = {
    {204, "device-object", zovhost::HOST_PICTURE_DEVICE_OBJECT},
    {205, "device-walk", zovhost::HOST_PICTURE_DEVICE_WALK},
    {206, "device-fly", zovhost::HOST_PICTURE_DEVICE_FLY},
    {207, "device-pan", zovhost::HOST_PICTURE_DEVICE_PAN},
};

bool IsDeviceTag(int tag) {
  return std::any_of(std::begin(DEVICE_BUTTONS), std::end(DEVICE_BUTTONS),
                     [tag](const Button& button) { return button.tag == tag; });
}

constexpr Button TOOL_BUTTONS[] = {
    {TOOL_ORBIT, "orbit", zovhost::HOST_PICTURE_ORBIT},
    {TOOL_PAN, "pan", zovhost::HOST_PICTURE_PAN},
    {TOOL_ZOOM, "zoom", zovhost::HOST_PICTURE_ZOOM},
    {TOOL_RECTANGLE, "rectangle-zoom", zovhost::HOST_PICTURE_RECTANGLE_ZOOM},
    {TOOL_LOOK, "look", zovhost::HOST_PICTURE_LOOK},
    {TOOL_LOOK_MOVE, "look-and-move", zovhost::HOST_PICTURE_LOOK_MOVE},
    {TOOL_LOOK_AT, "look-at-face", zovhost::HOST_PICTURE_LOOK_AT},
    {TOOL_CENTRE, "centre", zovhost::HOST_PICTURE_CENTRE},
    {TOOL_WALK, "walk", zovhost::HOST_PICTURE_WALK},
};

ToolbarItem MakeButton(const Button& button) {
  const ViewCommand& command = *FindViewCommand(button.command);
  const zovhost::Phrases& phrases = zovhost::GetPhrases();
  const std::string key = phrases.SayKey(command.keyName);
  const std::string label = phrases.SayPlain(command.label);
  const std::string text = key.empty() ? label : phrases.SayPlain("{} ({})", {label, key});
  return zovhost::MakeToolbarButton(button.tag, static_cast<Korvane::TextureID>(button.picture),
                                    zovhost::Utf8ToWide(text));
}

std::wstring SayWide(const char* phrase) {
  return zovhost::Utf8ToWide(zovhost::GetPhrases().SayPlain(phrase));
}

// ---- words of items ----

using Words = std::map<int, std::wstring>;  // by tag

void CollectWords(const ToolbarItem::List& items, Words& words) {
  for (int i = 0; i < items.GetCount(); ++i) {
    words.emplace(items.GetAt(i).GetTag(), items.GetAt(i).GetTooltip());
    CollectWords(items.GetAt(i).GetFlyoutItems(), words);
  }
}

void RenewWords(ToolbarItem::List& items, const Words& words) {
  for (int i = 0; i < items.GetCount(); ++i) {
    ToolbarItem& item = items.GetAt(i);
    if (const auto found = words.find(item.GetTag()); found != words.end()) item.SetTooltip(found->second);
    RenewWords(item.GetFlyoutItems(), words);
  }
}

// Across an edge lies the one with the number two higher or lower.
Toolbar::Position GetOpposite(Toolbar::Position edge) {
  return static_cast<Toolbar::Position>((edge + 2) % 4);
}

bool IsAlong(Toolbar::Position edge) {
  return edge == Toolbar::POSITION_TOP || edge == Toolbar::POSITION_BOTTOM;
}

bool IsOverStrip(const Toolbar* strip, int x, int y) {
  return strip != nullptr && strip->IsVisible() && strip->IsPointInBounds(x, y);
}

}  // namespace

const ViewCommand* FindBarCommand(int tag) {
  for (const std::span<const Button> buttons :
       {std::span<const Button>(LIBRARY_BUTTONS), std::span<const Button>(HOST_BUTTONS),
        std::span<const Button>(DEVICE_BUTTONS), std::span<const Button>(TOOL_BUTTONS)}) {
    const auto found = std::find_if(buttons.begin(), buttons.end(),
                                    [tag](const Button& button) { return button.tag == tag; });
    if (found != buttons.end()) return FindViewCommand(found->command);
  }
  return nullptr;
}

// ---- life ----

ViewBars::ViewBars(ViewerViewManager& viewManager, const ViewTarget& viewTarget)
    : manager(viewManager),
      target(viewTarget),
      host(&bar, {[this](int tag) { Click(tag); },
                  [this](zovhost::NavigationBarHost::Menu menu, int tag, int x, int y) {
                    return bar.GetToolbar() != nullptr && Open(FindMenu(menu, tag), *bar.GetToolbar(), x, y);
                  },
                  [](ToolbarItem::List& items) { AddHostItems(items); },
                  {},
                  [this](bool dragged) {
                    if (dragged) NoteDrag(*bar.GetToolbar());
                  }}),
      toolsHost(&tools, *this) {
  bar.SetLinkedToOrientor(false);
  bar.AddObserver(&host);
  AddTools();
  tools.AddObserver(&toolsHost);
  manager.AddToolbar(&tools);
}

ViewBars::~ViewBars() {
  bar.RemoveObserver(&host);
  tools.RemoveObserver(&toolsHost);
}

// The library takes a bar for all the introduction that discs need; here they have their own on the first
// start as well, so the bar comes after them.
bool ViewBars::Create(Korvane::Renderer& renderer) {
  bar.SetKorvane(&target.hub);
  bar.SetRenderer(&renderer);
  if (!bar.Create()) return false;
  zovhost::DressToolbar(*bar.GetToolbar(), scale);
  zovhost::ResizeItems(bar.GetToolbar()->GetItems(), scale);
  bar.GetToolbar()->SetKeepInView(true);
  SetReducedMotion(reducedMotion);
  manager.SetNavigationBar(&bar);
  manager.Refresh();
  return true;
}

void ViewBars::SetReducedMotion(bool reduced) {
  reducedMotion = reduced;
  if (bar.GetToolbar() == nullptr) return;  // before Create, so that the first layout is at once in its place
  bar.GetToolbar()->SetWantAnimation(!reduced);
  tools.SetWantAnimation(!reduced);
}

void ViewBars::AddTools() {
  zovhost::DressToolbar(tools);
  tools.SetPosition(Toolbar::POSITION_BOTTOM);
  tools.SetKeepInView(true);
  AppendTools(tools.GetItems());
}

void ViewBars::AppendTools(ToolbarItem::List& items) {
  items.Append(zovhost::MakeToolbarGrip(GRIP, SayWide("Drag to another edge of the view")));
  for (const Button& button : TOOL_BUTTONS) items.Append(MakeButton(button));
  items.Append(zovhost::MakeToolbarMoreControls(MORE, SayWide("More tools")));
}

// Those of the library's own items are in a bar that is made anew.
void ViewBars::RenewWords(Korvane::Renderer& renderer) {
  Words words;
  ToolbarItem::List items;
  AppendTools(items);
  AddHostItems(items);
  CollectWords(items, words);
  zovview::RenewWords(tools.GetItems(), words);
  NavigationBar fresh;
  fresh.SetKorvane(&target.hub);
  fresh.SetRenderer(&renderer);
  if (bar.GetToolbar() == nullptr || !fresh.Create()) return;
  CollectWords(fresh.GetToolbar()->GetItems(), words);
  zovview::RenewWords(bar.GetToolbar()->GetItems(), words);
  fresh.Destroy();
}

void ViewBars::AddHostItems(ToolbarItem::List& items) {
  for (const Button& button : HOST_BUTTONS) items.Append(MakeButton(button));
  std::vector<ToolbarItem> modes;
  for (const Button& button : DEVICE_BUTTONS) modes.push_back(MakeButton(button));
  ToolbarItem device = zovhost::MakeToolbarFlyoutButton(modes);
  device.SetHidden(true);
  items.Append(device);
}

void ViewBars::SetScale(double value) {
  if (value == scale) return;
  const double factor = value / scale;
  scale = value;
  for (Toolbar* const strip : {bar.GetToolbar(), &tools}) {
    if (strip == nullptr) continue;
    zovhost::DressToolbar(*strip, scale);
    zovhost::ResizeItems(strip->GetItems(), factor);
    strip->ApplyItemChanges();
  }
}

// ---- what the items do ----

// A disc that is open is closed by its button; that of the device stands for what is chosen already.
void ViewBars::Click(int tag) {
  const ViewCommand* const command = FindBarCommand(tag);
  if (command == nullptr) return;
  const bool closes = command->place == ViewCommand::Place::Discs && command->isOn(target);
  if (closes) return CloseDisc(target);
  if (command->place == ViewCommand::Place::Device) return ToggleDevicePage(target);
  if (run) return run(*command);
  command->run(target);
}

ViewBars::Menu ViewBars::FindMenu(zovhost::NavigationBarHost::Menu menu, int tag) {
  if (menu != zovhost::NavigationBarHost::Menu::MoreControls && IsDeviceTag(tag)) return Menu::Device;
  if (menu == zovhost::NavigationBarHost::Menu::Flyout) return Menu::Discs;
  return menu == zovhost::NavigationBarHost::Menu::MoreControls ? Menu::MoreOfBar : Menu::Bar;
}

bool ViewBars::Open(Menu menu, Toolbar& strip, int x, int y) const {
  if (!openMenu) return false;
  const zovhost::ViewHub& hub = target.hub;
  openMenu(menu, zovhost::FindBarMenuPlace(strip, hub.GetViewportWidth(), hub.GetViewportHeight(), x, y));
  return true;
}

std::vector<const ViewCommand*> ViewBars::GetMoreCommands(Menu menu) const {
  std::vector<const ViewCommand*> commands;
  const Toolbar* const strip = menu == Menu::MoreOfTools ? &tools : bar.GetToolbar();
  const int count = strip != nullptr ? strip->GetItems().GetCount() : 0;
  for (int i = 0; i < count; ++i) {
    const ToolbarItem& item = strip->GetItems().GetAt(i);
    if (item.IsHidden() || !item.IsExcluded()) continue;
    const ToolbarItem::List& flyout = item.GetFlyoutItems();
    for (int k = 0; k < flyout.GetCount(); ++k) commands.push_back(FindBarCommand(flyout.GetAt(k).GetTag()));
    if (flyout.IsEmpty()) commands.push_back(FindBarCommand(item.GetTag()));
  }
  std::erase(commands, nullptr);
  return commands;
}

bool ViewBars::IsOver(int x, int y) const {
  return IsOverStrip(bar.GetToolbar(), x, y) || IsOverStrip(&tools, x, y);
}

void ViewBars::Update() {
  for (const Button& button : HOST_BUTTONS) {
    const ViewCommand& command = *FindViewCommand(button.command);
    if (command.isOn != nullptr) bar.SetItemSelected(button.tag, command.isOn(target));
  }
  ShowDeviceMode();
  for (const Button& button : TOOL_BUTTONS)
    tools.SetItemSelected(button.tag, manager.GetActiveTool() == button.tag);
  tools.SetOrientorBounds(manager.GetOrientorBounds());
  tools.SetOrientorLocation(target.cube.GetParameters().screen_location);
}

// Of those that its arrow offers it stands for the one that is chosen.
void ViewBars::ShowDeviceMode() {
  for (const Button& button : DEVICE_BUTTONS) {
    if (FindViewCommand(button.command)->isOn(target)) bar.ChooseFlyoutItem(button.tag);
  }
}

int ViewBars::FindDeviceTag() {
  for (const Button& button : DEVICE_BUTTONS) {
    if (bar.IsFlyoutItemChosen(button.tag)) return button.tag;
  }
  return DEVICE_BUTTONS[0].tag;
}

void ViewBars::ShowDevice(bool shown) {
  if (shown == deviceShown) return;
  deviceShown = shown;
  bar.SetItemExcluded(FindDeviceTag(), !shown);
}

// ---- places ----

BarPlaces ViewBars::GetPlaces() const {
  BarPlaces places = wished;
  places.navigation.visible = bar.IsVisible();
  places.navigation.linked = bar.GetLocation() == NavigationBar::LOCATION_LINKED;
  return places;
}

void ViewBars::SetPlaces(const BarPlaces& places) {
  Stand(tools, places.tools.edge, places.tools.offset);
  SetToolsVisible(places.tools.visible);
  bar.SetVisible(places.navigation.visible);
  if (Toolbar* const strip = bar.GetToolbar())
    Stand(*strip, places.navigation.edge, places.navigation.offset);
  manager.SetNavigationBarLinkedToOrientor(places.navigation.linked);
  manager.Refresh();
}

void ViewBars::Stand(Toolbar& strip, Toolbar::Position edge, double offset) {
  BarPlace& place = FindPlace(strip);
  place.edge = edge;
  place.offset = offset;
  strip.SetPosition(edge);
  strip.SetEdgeOffset(IsAlong(edge) ? Korvane::Vector2(offset, 0.0) : Korvane::Vector2(0.0, offset));
}

void ViewBars::NoteDrag(Toolbar& strip) {
  const Korvane::Vector2& offset = strip.GetEdgeOffset();
  BarPlace& place = FindPlace(strip);
  place.edge = strip.GetPosition();
  place.offset = IsAlong(place.edge) ? offset.x : offset.y;
  Toolbar* const other = &strip == &tools ? bar.GetToolbar() : &tools;
  if (other != nullptr) MakeRoom(strip, *other);
}

void ViewBars::MoveBar(Toolbar::Position edge) {
  manager.SetNavigationBarLinkedToOrientor(false);
  Toolbar* const strip = bar.GetToolbar();
  if (strip == nullptr) return;
  Stand(*strip, edge, 0.0);
  MakeRoom(*strip, tools);
  manager.Refresh();
}

bool ViewBars::IsBarAt(Toolbar::Position edge) const {
  const Toolbar* const strip = bar.GetToolbar();
  return strip != nullptr && bar.GetLocation() != NavigationBar::LOCATION_LINKED &&
         strip->GetPosition() == edge;
}

void ViewBars::SetToolsVisible(bool visible) {
  wished.tools.visible = visible;
  tools.SetVisible(visible);
  if (visible && bar.GetToolbar() != nullptr) MakeRoom(*bar.GetToolbar(), tools);
}

// Two strips on one edge would lie upon each other.
void ViewBars::MakeRoom(const Toolbar& moved, Toolbar& other) {
  if (moved.GetPosition() == other.GetPosition()) Stand(other, GetOpposite(moved.GetPosition()), 0.0);
}

// ---- the toolbar of the tools ----

bool ViewBars::ToolsHost::OnItemMouseDown(const ToolbarItem& item) {
  if (item.GetTag() != MORE) return false;
  const Korvane::Box2& bounds = item.GetBounds();
  return owner.Open(Menu::MoreOfTools, *toolbar, static_cast<int>(bounds.Max().x),
                    static_cast<int>(bounds.Min().y));
}

// None of the tools has any.
bool ViewBars::ToolsHost::OnItemFlyoutOpened(ToolbarItem& /*item*/) { return false; }

bool ViewBars::ToolsHost::OnItemContextMenu(const ToolbarItem& item) {
  const Korvane::Box2& bounds = item.GetBounds();
  return owner.Open(Menu::Bar, *toolbar, static_cast<int>(bounds.Max().x), static_cast<int>(bounds.Min().y));
}

void ViewBars::ToolsHost::OnPositionChanged() { owner.target.hub.RequestApplicationUpdate(); }

void ViewBars::ToolsHost::OnToolbarDragged() { owner.NoteDrag(*toolbar); }

void ViewBars::ToolsHost::Redraw(const ToolbarItem& /*item*/) { owner.target.hub.RequestApplicationUpdate(); }

}  // namespace zovview
