// The panel under the keyboard's focus.
#include <SDL_keycode.h>

#include <algorithm>
#include <cmath>
#include <utility>

#include "panel/viewer_panel.h"
#include "zovhost/phrases.h"

namespace zovview {

namespace {

constexpr double LINES_OF_ARROW = 3.0;  // that the help is scrolled by
constexpr double SAME_LINE = 6.0;       // points

// What is nearest in the line above or below, however far aside: a heading is wide, a box is not.
const zovhost::FocusThing* FindInNextLine(const std::vector<zovhost::FocusThing>& things,
                                          const zovhost::FocusThing& from, int up) {
  const zovhost::FocusThing* nearest = nullptr;
  double least = 0.0;
  double leastAside = 0.0;
  for (const zovhost::FocusThing& thing : things) {
    const Korvane::Vector2 way = thing.bounds.center - from.bounds.center;
    const double along = way.y * up;
    const double aside = std::abs(way.x);
    if (along < SAME_LINE) continue;
    const bool nearer = along < least - SAME_LINE || (along < least + SAME_LINE && aside < leastAside);
    if (nearest != nullptr && !nearer) continue;
    nearest = &thing;
    least = along;
    leastAside = aside;
  }
  return nearest;
}

}  // namespace

std::vector<zovhost::FocusThing> ViewerPanel::GetThings() {
  std::vector<zovhost::FocusThing> things;
  for (const Item& item : items) {
    zovhost::FocusThing& thing = things.emplace_back();
    thing.id = item.id;
    thing.group = zovhost::GetPhrases().SayPlain("Panel");
    thing.name = item.ofView.empty() ? item.name : item.ofView;
    thing.role = item.role;
    thing.on = item.on;
    thing.enabled = item.enabled;
    thing.bounds = item.bounds;
    if (item.id == helpId) thing.key = [this](const zovhost::WindowEvent& event) { return OnHelpKey(event); };
    thing.press = [this, id = item.id](bool down) {
      if (down) pressed = id;
    };
  }
  return things;
}

// The views that are kept are a list by themselves, of which some rows are out of sight; the help is read
// from its heading.
std::optional<int> ViewerPanel::Steer(int id, zovhost::FocusStep step) {
  if (id == helpId && ScrollHelp(-step.up * LINES_OF_ARROW)) return id;
  if (id >= NamedViewsPanel::FIRST_ID) {
    const std::optional<int> within = namedViews.Steer(id, step);
    if (within.has_value()) return within;
  }
  std::vector<zovhost::FocusThing> things = GetThings();
  const auto from = std::find_if(things.begin(), things.end(),
                                 [id](const zovhost::FocusThing& each) { return each.id == id; });
  if (from == things.end()) return std::nullopt;
  const zovhost::FocusThing start = *from;
  constexpr int ROWS = NamedViewsPanel::FIRST_ID;
  std::erase_if(things, [&](const zovhost::FocusThing& each) {
    return !each.enabled || (each.id >= ROWS && (id >= ROWS || !namedViews.IsRowInSight(each.id)));
  });
  const zovhost::FocusThing* const next =
      step.up != 0 ? FindInNextLine(things, start, step.up) : zovhost::FindOnSide(things, start, step);
  return next != nullptr ? std::optional(next->id) : std::nullopt;
}

bool ViewerPanel::OnHelpKey(const zovhost::WindowEvent& event) {
  const bool up = event.key == SDLK_PAGEUP;
  const bool paged = event.modifiers == 0 && (up || event.key == SDLK_PAGEDOWN);
  return paged && ScrollHelp(up ? -linesOfPage : linesOfPage);
}

// Upward until its heading shows again.
bool ViewerPanel::ScrollHelp(double lines) {
  if (!helpOpen || lines == 0.0 || (lines < 0.0 && linesAbove <= 0.0F)) return false;
  linesToScroll += std::max(lines, -static_cast<double>(linesAbove) - 1.0);
  requestFrame();
  return true;
}

void ViewerPanel::ShowFocus(const zovhost::FocusThing* thing) {
  const std::optional<int> now = thing != nullptr ? std::optional(thing->id) : std::nullopt;
  if (now != focused) broughtIntoSight = false;
  focused = now;
}

}  // namespace zovview
