// The viewer: the keys of the pages at the right, which stand after the panel in the order of Tab.
#include <SDL_keycode.h>

#include <algorithm>
#include <cstddef>

#include "viewer/viewer.h"
#include "zovhost/page_keys.h"

namespace zovview {

using zovhost::WindowEvent;

namespace {

constexpr unsigned HELD = WindowEvent::CONTROL | WindowEvent::ALT;

}  // namespace

// Those that are open, others null.
std::array<zovhost::PageKeys*, 2> Viewer::FindPages() {
  zovhost::SixAxisPanel& page = devices.GetPage();
  zovhost::ShotEditorPanel& editor = views[active]->GetStory().GetEditor();
  return {page.GetEdges().has_value() ? &page.GetKeys() : nullptr,
          editor.GetEdges().has_value() ? &editor.GetKeys() : nullptr};
}

// One more than before is new, for as long as the pointer does nothing else; not with another view.
void Viewer::NotePages() {
  const auto pages = FindPages();
  const auto count = static_cast<std::size_t>(2 - std::count(pages.begin(), pages.end(), nullptr));
  if (active != pagesOfView) {
    hasNewPage = false;
  } else if (count != openPages) {
    hasNewPage = count > openPages;
  }
  pagesOfView = active;
  openPages = count;
}

// The one after that, or before; from none the first, or the last. False when there is no such.
bool Viewer::EnterPage(std::optional<std::size_t> from, bool back) {
  const auto pages = FindPages();
  const auto count = static_cast<std::ptrdiff_t>(pages.size());
  const std::ptrdiff_t way = back ? -1 : 1;
  const std::ptrdiff_t outside = back ? count : -1;
  const std::ptrdiff_t start = from.has_value() ? static_cast<std::ptrdiff_t>(*from) : outside;
  for (std::ptrdiff_t i = start + way; i >= 0 && i < count; i += way) {
    zovhost::PageKeys* const page = pages[static_cast<std::size_t>(i)];
    if (page == nullptr) continue;
    page->Take();
    hasNewPage = false;
    window.RequestFrame();
    return true;
  }
  return false;
}

bool Viewer::OnPageKey(const WindowEvent& event) {
  if (event.type != WindowEvent::Type::KeyDown || (event.modifiers & HELD) != 0) return false;
  if (views[active]->GetStory().IsPresenting()) return false;
  if (event.key == SDLK_TAB) return LeavePage((event.modifiers & WindowEvent::SHIFT) != 0);
  return event.key == SDLK_ESCAPE && !event.repeated && ClosePage();
}

// Tab has led on from the page that had the keys, to the next one, or back to the panel; the view follows by
// itself. Without a focus it leads to a page that has just come.
bool Viewer::LeavePage(bool back) {
  const auto pages = FindPages();
  for (std::size_t i = 0; i < pages.size(); ++i) {
    if (pages[i] == nullptr || !pages[i]->Leave()) continue;
    hasNewPage = false;
    panelFocus.Leave();
    views[active]->GetFocus().Leave();
    if (EnterPage(i, back)) return true;
    const bool toPanel = back && panelFocus.Enter(true);
    if (toPanel) window.RequestFrame();
    return toPanel;
  }
  const bool hasFocus = panelFocus.IsActive() || views[active]->GetFocus().GetFocus().IsActive();
  return hasNewPage && !hasFocus && EnterPage(std::nullopt, true);
}

// Where Escape has nothing to end in the view; what is selected stays so.
bool Viewer::ClosePage() {
  const Viewport& view = *views[active];
  if (openPages == 0 || panelFocus.IsActive() || !view.IsAtRest()) return false;
  zovhost::ShotEditorPanel& editor = views[active]->GetStory().GetEditor();
  if (editor.GetEdges().has_value() && editor.IsPanelVisible()) {
    editor.Close();
  } else if (devices.IsPageVisible()) {
    devices.TogglePage();
  } else {
    return false;
  }
  window.RequestFrame();
  return true;
}

}  // namespace zovview
