// The viewer: the frame.
#include "viewer/viewer.h"

#include <epoxy/gl.h>
#include <imgui.h>

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

#include "commands/language_commands.h"
#include "panel/cube_place.h"
#include "zovhost/accent.h"
#include "zovhost/panel_texts.h"

namespace zovview {

namespace {

constexpr float EDITOR_TOP = 12.0F;  // points
constexpr float BESIDE_EDITOR = 8.0F;
constexpr float EDITOR_WIDTH = 330.0F;  // about, each
constexpr float PAGE_WIDTH = 430.0F;
constexpr float PAGE_HEIGHT = 360.0F;
constexpr float BELOW_TITLE = 40.0F;
constexpr double MARK_WIDTH = 2.0;
constexpr double PATIENCE = 0.05;  // seconds of a frame for a large model at rest

// Of the upper right corner, in points.
struct PagePlace {
  float right;
  float top;
};

// What a page may take: from the panel to the cubes, down to the foot of the window.
struct PageRoom {
  float left;
  float right;
  float foot;
};

// The editor of shots and the page of devices stand beside each other; where there is no room for that one
// stands below the other, and where there is none either, so that both titles show.
PagePlace FindPlaceBeside(const std::optional<zovhost::PageEdges>& other, const PageRoom& room, float width) {
  if (!other.has_value()) return {room.right, EDITOR_TOP};
  const float beside = other->left - BESIDE_EDITOR;
  if (beside - width >= room.left) return {beside, EDITOR_TOP};
  const float below = other->foot + BESIDE_EDITOR;
  return {room.right, below + PAGE_HEIGHT <= room.foot ? below : EDITOR_TOP + BELOW_TITLE};
}

}  // namespace

void Viewer::DrawFrame() {
  log.AddFrame();
  if (spoken != &FindLanguage(preferences)) SpeakLanguage();
  desk.Advance();
  namedViews.Advance();
  devices.Advance(recorder);
  glDisable(GL_SCISSOR_TEST);
  glClearColor(0.0F, 0.0F, 0.0F, 1.0F);  // what shows between two views
  glClear(GL_COLOR_BUFFER_BIT);
  // Over a panel or a menu the pointer is no tool.
  const bool ofPanels = gui.HasPointer() || menus.IsOpen() || desk.IsOpen();
  if (ofPanels) views[active]->LeaveToPanels();
  DrawViews();
  if (views[active]->GetStory().IsPresenting()) {
    window.SetCursor(Korvane::CURSOR_NONE);
  } else if (ofPanels || !views[active]->GetManager().OnSetCursor()) {
    ShowCursor(Korvane::CURSOR_ARROW);
  }
  glViewport(0, 0, window.GetWidth(), window.GetHeight());
  gui.BeginFrame();
  TellFontProblem();
  DrawPanels();
  MarkActiveView();
  gui.EndFrame();
  DrawTooltips();
  NoteMargins();
  if (arrival.has_value() && !IsAsking()) window.Wake();
  if (window.IsFrameRequested()) return;  // what has changed is drawn first
  KeepSettings();
  namedViews.Save();
}

void Viewer::DrawViews() {
  for (const auto& view : views) {
    view->PerformFrame();
    sceneView.GetOptions().moving =
        sceneView.DropsDetail() && rest.IsMoving(*view, contents.loading.has_value());
    sceneView.GetOptions().selectedPart = view->GetSelection().GetPart();
    const bool whole =
        sceneView.DrawGradually(view->GetHub().GetView(), view->GetX(), view->GetY(), view->GetWidth(),
                                view->GetHeight(), window.GetScale(), PATIENCE);
    if (!whole) window.RequestFrame();
    view->DrawWidgets();
  }
}

// Over the panels as well, where there is no room beside them.
void Viewer::DrawTooltips() {
  Viewport& view = *views[active];
  if (!view.GetTooltip().IsShown()) return;
  std::vector<Korvane::Box2> over = gui.GetPanels();
  for (Korvane::Box2& place : over) place.center -= Korvane::Vector2(view.GetX(), view.GetY());
  view.DrawTooltip(std::move(over));
}

// That the keys go to; one alone needs no mark.
void Viewer::MarkActiveView() const {
  if (views.size() < 2) return;
  const double points = 1.0 / window.GetScale();
  const ViewPlace& place = places[active];
  const double inset = (MARK_WIDTH - 1.0) / 2.0;  // a line is drawn through the middles of pixels
  const auto [left, right] =
      std::minmax({zovhost::MirrorPlace(static_cast<float>(place.x * points + inset)),
                   zovhost::MirrorPlace(static_cast<float>((place.x + place.width) * points - inset))});
  const int rows = window.GetHeight() - place.y;  // counted from the top
  const auto top = static_cast<float>((rows - place.height) * points + inset);
  const auto bottom = static_cast<float>(rows * points - inset);
  const auto& [red, green, blue] = zovhost::ACCENT_COLOUR;
  const ImVec4 accent(static_cast<float>(red), static_cast<float>(green), static_cast<float>(blue), 1.0F);
  ImGui::GetBackgroundDrawList()->AddRect(ImVec2(left, top), ImVec2(right, bottom),
                                          ImGui::GetColorU32(accent), 0.0F, 0,
                                          static_cast<float>(MARK_WIDTH));
}

// The views that the panel stands over, and the cubes that it keeps clear of.
void Viewer::NotePlaces() {
  const double points = 1.0 / window.GetScale();
  contents.viewWidth = static_cast<float>(window.GetWidth() * points);
  contents.cubes.clear();
  contents.boards.clear();
  for (const auto& view : views) {
    if (view->GetX() == 0)
      contents.viewWidth = std::min(contents.viewWidth, static_cast<float>(view->GetWidth() * points));
    const auto cube = FindCubePlace(*view, window.GetHeight(), window.GetScale());
    if (cube.has_value()) contents.cubes.push_back(*cube);
    const auto board = FindBoardPlace(*view, window.GetHeight(), window.GetScale());
    if (board.has_value()) contents.boards.push_back(*board);
  }
}

// What is not drawn has no keys.
void Viewer::SkipPages(bool all) {
  for (std::size_t i = 0; i < views.size(); ++i) {
    if (all || i != active) views[i]->GetStory().GetEditor().GetKeys().Skip();
  }
  if (all) devices.GetPage().GetKeys().Skip();
}

// The editor leaves the storyboard that it is of to be seen.
void Viewer::DrawPages() {
  const ImVec2 display = ImGui::GetIO().DisplaySize;
  const auto board = FindBoardPlace(*views[active], window.GetHeight(), window.GetScale());
  const PageRoom room = {panel.GetReach(), FindPageRight(contents.cubes, display.x), display.y};
  zovhost::ShotEditorPanel& editor = views[active]->GetStory().GetEditor();
  const PagePlace ofEditor = FindPlaceBeside(devices.GetPage().GetEdges(), room, EDITOR_WIDTH);
  editor.Draw(ofEditor.right, ofEditor.top, board.has_value() ? board->top : 0.0F);
  const PagePlace ofPage = FindPlaceBeside(editor.GetEdges(), room, PAGE_WIDTH);
  devices.DrawPage(ofPage.right, ofPage.top);
  NotePages();
}

void Viewer::DrawPanels() {
  const ViewTarget& target = views[active]->GetTarget();
  desk.Draw();
  const bool presenting = target.story->IsPresenting();
  SkipPages(presenting);
  if (presenting) return;
  NotePlaces();
  DrawPages();
  panel.ShowFocus(panelFocus.Get());
  const ViewCommand* const pressed = panel.Draw(contents, target);
  if (const std::optional<int> next = panel.TakeNextFocus()) {
    panelFocus.GoTo(*next);
    window.RequestFrame();
  }
  const bool hadMenu = menus.IsOpen();
  const ViewCommand* const chosen = menus.Draw(target);
  if (menus.IsOpen() != hadMenu) window.RequestFrame();  // the pointer changes with it
  panelFocus.Get();                                      // tells of a state that has changed
  if (pressed != nullptr) Run(*pressed);
  if (pressed != nullptr && panelFocus.IsActive()) window.RequestFrame();
  if (chosen != nullptr) Run(*chosen);
}

}  // namespace zovview
