#include "viewport/view_tooltip.h"

#include <utility>

#include "commands/view_bars.h"
#include "korvane/orientor.h"
#include "stories/view_story.h"
#include "views/viewer_view_manager.h"
#include "zovhost/disc_tooltips.h"
#include "zovhost/gl_renderer.h"
#include "zovhost/view_focus.h"
#include "zovhost/view_hub.h"

namespace zovview {

ViewTooltip::ViewTooltip(Sources of, std::function<void()> requestFrame)
    : sources(of), note(std::move(requestFrame)) {
  note.SetRenderer(&sources.renderer);
  note.SetFindThing([this] { return FindThing(); });
}

void ViewTooltip::Create() { zovhost::TakeTooltipsOf(sources.disc); }

void ViewTooltip::MoveTo(int x, int y) {
  pointerX = x;
  pointerY = y;
  elsewhere = false;
}

void ViewTooltip::LeaveToPanels() { elsewhere = true; }

void ViewTooltip::Dismiss() {
  discText = Korvane::STRING_NONE;
  note.Dismiss();
}

void ViewTooltip::Follow(bool pressed) {
  static const std::wstring NOTHING;
  note.Follow(elsewhere ? NOTHING : FindText(), pointerX, pointerY, pressed);
}

// A disc is under all others.
const std::wstring& ViewTooltip::FindText() {
  const std::wstring& text = sources.manager.GetTooltip();
  if (!text.empty() || pointerX < 0) return text;
  const Korvane::StringID found = zovhost::FindDiscTooltip(sources.disc);
  if (found == Korvane::STRING_NONE) return text;
  if (found != std::exchange(discText, found)) loaded = sources.renderer.LoadStringResource(found);
  return loaded;
}

// A bar as a whole, so that the note stands beside it.
Korvane::Box2 ViewTooltip::FindThing() {
  for (Korvane::Toolbar* const strip : {&sources.bars.GetTools(), sources.bars.GetBar().GetToolbar()}) {
    if (strip != nullptr && strip->IsVisible() && !strip->GetTooltip().empty())
      return strip->GetToolbarBounds();
  }
  if (sources.story.IsShown() && !sources.story.GetBoard().GetTooltip().empty())
    return sources.focus.FindStoryThing({pointerX, pointerY}).value_or(Korvane::Box2());
  if (!sources.cube.GetTooltip().empty()) return sources.manager.GetOrientorBounds();
  return zovhost::FindDiscBounds(sources.disc).value_or(Korvane::Box2());
}

void ViewTooltip::Draw(const zovhost::ViewHub& hub, std::vector<Korvane::Box2> panels) {
  note.SetPanels(std::move(panels));
  note.Draw(hub, hub.GetViewportWidth(), hub.GetViewportHeight());
}

}  // namespace zovview
