#include "panel/named_views_panel.h"

#include <imgui.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

#include "views/view_list.h"
#include "zovhost/accent.h"
#include "zovhost/panel_texts.h"
#include "zovhost/phrases.h"
#include "zovhost/text_field.h"

namespace zovview {

namespace {

// Points.
constexpr float PICTURE_WIDTH = 88.0F;
constexpr float PICTURE_HEIGHT = 55.0F;
constexpr float GAP = 12.0F;  // between a picture and the words beside it
constexpr float ROW_HEIGHT = PICTURE_HEIGHT + 8.0F;
constexpr float ROUNDING = 3.0F;
constexpr int MOST_ROWS = 4;  // beyond them the list scrolls
// A window knows in the next frame how far it can scroll.
constexpr int FRAMES_OF_NEWS = 2;
constexpr int PARTS = 8;  // numbers of a row
constexpr std::size_t MOST_NUMBERS = 100'000'000;

constexpr ImU32 FRAME = IM_COL32(255, 255, 255, 70);
constexpr ImU32 EMPTY = IM_COL32(255, 255, 255, 20);
constexpr ImU32 GROUND = IM_COL32(255, 255, 255, 26);  // of the row under the pointer

ImU32 AccentFrame() {
  const auto [red, green, blue] = zovhost::ACCENT_COLOUR;
  return ImGui::GetColorU32(
      ImVec4(static_cast<float>(red), static_cast<float>(green), static_cast<float>(blue), 1.0F));
}

// The same as long as it is the same view.
int FindRow(const std::string& guid) {
  return NamedViewsPanel::FIRST_ID + static_cast<int>(std::hash<std::string>()(guid) % MOST_NUMBERS) * PARTS;
}

const char* NamePart(NamedViewsPanel::Part part) {
  constexpr std::array<const char*, 6> NAMES = {"",       "Further up", "Further down",
                                                "Rename", "Delete",     "Cancel"};
  return NAMES[static_cast<std::size_t>(part)];
}

// Cut between characters, with dots where something is left out.
std::string FitText(const std::string& text, float width) {
  if (ImGui::CalcTextSize(text.c_str()).x <= width) return text;
  std::string cut = text;
  while (!cut.empty() && ImGui::CalcTextSize((cut + "...").c_str()).x > width) {
    while (cut.size() > 1 && (static_cast<unsigned char>(cut.back()) & 0xC0U) == 0x80U) cut.pop_back();
    cut.pop_back();
  }
  return cut + "...";
}

// The view shows it, in the proportions that it has.
bool IsShown(const zovhost::ViewHub& hub, Korvane::CameraParameters camera) {
  zovhost::ShapeToViewport(camera, hub.GetViewportWidth(), hub.GetViewportHeight());
  camera.projection_transition = hub.GetView().projection_transition;
  return hub.CheckCamerasEqual(&camera, &hub.GetView());
}

void DrawPicture(ViewList& list, const zovhost::NamedView& view, const ImVec2& at, bool isShown) {
  const ImVec2 end(at.x + PICTURE_WIDTH, at.y + PICTURE_HEIGHT);
  const float scale = std::max(1.0F, ImGui::GetIO().DisplayFramebufferScale.x);
  const unsigned texture =
      list.GetPictures().Find(view.guid, view.camera, static_cast<int>(PICTURE_WIDTH * scale));
  ImDrawList& drawing = *ImGui::GetWindowDrawList();
  if (texture != 0) {
    // Its rows run from the bottom, and a mirrored panel would turn its sides. The number of a texture is its
    // handle here.
    const float left = zovhost::ArePanelsMirrored() ? 1.0F : 0.0F;
    // NOLINTNEXTLINE(performance-no-int-to-ptr)
    drawing.AddImageRounded(reinterpret_cast<ImTextureID>(static_cast<std::uintptr_t>(texture)), at, end,
                            ImVec2(left, 1.0F), ImVec2(1.0F - left, 0.0F), IM_COL32_WHITE, ROUNDING);
  } else {
    drawing.AddRectFilled(at, end, EMPTY, ROUNDING);
  }
  drawing.AddRect(at, end, isShown ? AccentFrame() : FRAME, ROUNDING, 0, isShown ? 2.0F : 1.0F);
}

void BeginRows(std::size_t count, float width) {
  const auto rows = static_cast<float>(std::min<std::size_t>(count, MOST_ROWS));
  ImGui::PushStyleVar(ImGuiStyleVar_ItemSpacing, ImVec2(4.0F, 0.0F));
  ImGui::BeginChild("##views", ImVec2(width, rows * ROW_HEIGHT));
}

void EndRows() {
  ImGui::EndChild();
  ImGui::PopStyleVar();
}

}  // namespace

std::optional<NamedViewsPanel::Place> NamedViewsPanel::FindPart(std::size_t index, Part part) const {
  const auto found = std::find_if(drawn.begin(), drawn.end(), [=](const DrawnPart& each) {
    return each.index == index && each.part == part;
  });
  return found != drawn.end() ? std::optional<Place>(found->place) : std::nullopt;
}

// The one that keeps the view has the number of the one that asked, so that keys that have pressed that are
// on it and a second press of them deletes nothing.
int NamedViewsPanel::MakeId(Part part) const {
  constexpr int ANSWER = 6;
  if (part == Part::Keep) return row + static_cast<int>(Part::Delete);
  return row + (isAsked && part == Part::Delete ? ANSWER : static_cast<int>(part));
}

bool NamedViewsPanel::HasFocus() const {
  return focus.id.has_value() && *focus.id >= row && *focus.id < row + PARTS;
}

// True when keys have pressed it. One that has become impossible under the focus stays there.
bool NamedViewsPanel::Note(std::size_t index, Part part, const std::string& said, bool enabled) {
  const ImVec2 low = ImGui::GetItemRectMin();
  const ImVec2 high = ImGui::GetItemRectMax();
  const int id = MakeId(part);
  const bool reached = enabled || focus.id == id;
  drawn.push_back(
      {index, part, {(low.x + high.x) * 0.5F, (low.y + high.y) * 0.5F}, id, reached, ImGui::IsItemVisible()});
  return (*focus.noteItem)(id, said, reached) && enabled;
}

bool NamedViewsPanel::IsRowInSight(int id) const {
  return std::any_of(drawn.begin(), drawn.end(), [id](const DrawnPart& each) {
    return each.id == id && each.part == Part::Picture && each.inSight;
  });
}

// Up and down from row to row, aside within one.
std::optional<int> NamedViewsPanel::Steer(int id, zovhost::FocusStep step) const {
  const auto from =
      std::find_if(drawn.begin(), drawn.end(), [id](const DrawnPart& each) { return each.id == id; });
  if (from == drawn.end()) return std::nullopt;
  if (step.up != 0) {
    const auto next = std::find_if(drawn.begin(), drawn.end(), [&](const DrawnPart& each) {
      return each.part == Part::Picture && each.index + static_cast<std::size_t>(step.up) == from->index;
    });
    return next != drawn.end() ? std::optional(next->id) : std::nullopt;
  }
  const bool onward = (step.right > 0) != zovhost::ArePanelsMirrored();
  std::optional<int> found;
  for (const DrawnPart& each : drawn) {
    if (each.index != from->index || !each.enabled || each.id == id) continue;
    const bool after = &each > &*from;
    if (after != onward) continue;
    found = each.id;
    if (after) break;
  }
  return found.has_value() ? found : std::optional(id);
}

void NamedViewsPanel::Draw(ViewList& list, const ViewTarget& target, float width, std::optional<int> focused,
                           const NoteItem& noteItem) {
  drawn.clear();
  focus = {focused, &noteItem};
  const std::size_t count = list.GetViews().GetCount();
  if (renamed.has_value() && !list.GetViews().FindGuid(*renamed).has_value()) renamed.reset();
  if (std::exchange(frame, ImGui::GetFrameCount()) + 1 < ImGui::GetFrameCount()) EndUnseen(list);
  nameDrawn = false;
  if (count == 0) {
    ImGui::TextDisabled("%s", zovhost::Say("None is kept of this model yet."));
    return;
  }
  BeginRows(count, width);
  DrawRows(list, target, static_cast<int>(count));
  EndRows();
  if (renamed.has_value() && !nameDrawn) EndUnseen(list);  // scrolled away
  const bool wished = wish.has_value();
  Fulfil(list);
  const bool beginsText = renamed.has_value() && !ImGui::GetIO().WantTextInput;
  if (list.GetPictures().IsWanted() || framesOfNews > 0 || beginsText || wished)
    target.hub.RequestApplicationUpdate();
}

void NamedViewsPanel::DrawRows(ViewList& list, const ViewTarget& target, int count) {
  if (news.has_value()) ImGui::SetScrollY(static_cast<float>(*news) * ROW_HEIGHT);
  const float room = ImGui::GetContentRegionAvail().x;
  ImGuiListClipper clipper;
  clipper.Begin(count, ROW_HEIGHT);
  AddRowsOfKeys(list, count - 1, clipper);
  while (clipper.Step()) {
    for (int i = clipper.DisplayStart; i < clipper.DisplayEnd; ++i) {
      DrawRow(list, target, static_cast<std::size_t>(i), room);
    }
  }
}

// Those out of sight that arrows lead to next, and that of the focus with its neighbours wherever it is.
void NamedViewsPanel::AddRowsOfKeys(const ViewList& list, int last, ImGuiListClipper& clipper) {
  const auto add = [&clipper, last](int from, int to) {
    clipper.ForceDisplayRangeByIndices(std::max(0, from), std::min(last, to) + 1);
  };
  const auto top = std::min(static_cast<int>(ImGui::GetScrollY() / ROW_HEIGHT), last);
  add(top - 1, top + MOST_ROWS + 1);
  for (int i = 0; focus.id >= FIRST_ID && i <= last; ++i) {
    row = FindRow(list.GetViews().Get()[static_cast<std::size_t>(i)].guid);
    if (HasFocus()) add(i - 1, i + 1);
  }
}

bool NamedViewsPanel::TakeNews(ViewList& list) {
  const std::optional<std::size_t> found = list.TakeNews();
  if (!found.has_value()) return false;
  news = found;
  framesOfNews = FRAMES_OF_NEWS;
  return true;
}

void NamedViewsPanel::ScrollToNews() {
  if (framesOfNews == 0) return;
  ImGui::SetScrollHereY(1.0F);
  if (--framesOfNews == 0) news.reset();
}

void NamedViewsPanel::DrawRow(ViewList& list, const ViewTarget& target, std::size_t index, float width) {
  const zovhost::NamedView& view = list.GetViews().Get()[index];
  const ImVec2 at = ImGui::GetCursorScreenPos();
  const ImVec2 size(width, ROW_HEIGHT - 2.0F);
  const bool isHovered = ImGui::IsWindowHovered(ImGuiHoveredFlags_AllowWhenBlockedByActiveItem) &&
                         ImGui::IsMouseHoveringRect(at, ImVec2(at.x + size.x, at.y + size.y));
  const bool isShown = IsShown(target.hub, view.camera);
  row = FindRow(view.guid);
  isAsked = doomed == view.guid;
  ImGui::PushID(view.guid.c_str());
  if (isHovered) {
    ImGui::GetWindowDrawList()->AddRectFilled(at, ImVec2(at.x + size.x, at.y + size.y), GROUND, ROUNDING);
  }
  if (ImGui::InvisibleButton("##fly", size)) wish = Wish{Part::Picture, index};
  ImGui::SetItemAllowOverlap();
  if (Note(index, Part::Picture, view.name)) wish = Wish{Part::Picture, index};
  const ImVec2 after = ImGui::GetCursorScreenPos();
  DrawPicture(list, view, ImVec2(at.x + 3.0F, at.y + 3.0F), isShown);

  const float left = at.x + PICTURE_WIDTH + GAP;
  ImGui::SetCursorScreenPos(ImVec2(left, at.y + 4.0F));
  DrawName(list, index, width - (left - at.x) - 4.0F);
  if (isHovered || isShown || isAsked || HasFocus()) {
    ImGui::SetCursorScreenPos(ImVec2(left, at.y + size.y - ImGui::GetFrameHeight() - 3.0F));
    if (isAsked)
      DrawQuestion(index);
    else
      DrawButtons(index, list.GetViews().GetCount());
  }
  ImGui::SetCursorScreenPos(ImVec2(at.x, after.y));
  ImGui::Dummy(ImVec2(0.0F, ROW_HEIGHT - size.y));
  ImGui::PopID();
}

void NamedViewsPanel::DrawName(ViewList& list, std::size_t index, float width) {
  const zovhost::NamedView& view = list.GetViews().Get()[index];
  if (renamed != view.guid) {
    ImGui::TextUnformatted(FitText(zovhost::ToPanelText(view.name), width).c_str());
    return;
  }
  nameDrawn = true;
  ImGui::SetNextItemWidth(width);
  const bool begins = std::exchange(focuses, false);
  if (begins) ImGui::SetKeyboardFocusHere();
  const bool entered = zovhost::DrawTextField(
      "##name", name, ImGuiInputTextFlags_EnterReturnsTrue | ImGuiInputTextFlags_AutoSelectAll);
  // Escape gives the text back what it was.
  if (!begins && (entered || ImGui::IsItemDeactivated())) EndRenaming(list);
}

void NamedViewsPanel::DrawButtons(std::size_t index, std::size_t count) {
  if (DrawButton(index, Part::Up, index > 0)) wish = Wish{Part::Up, index};
  ImGui::SameLine();
  if (DrawButton(index, Part::Down, index + 1 < count)) wish = Wish{Part::Down, index};
  ImGui::SameLine();
  if (DrawButton(index, Part::Rename, true)) wish = Wish{Part::Rename, index};
  ImGui::SameLine();
  if (DrawButton(index, Part::Delete, true)) wish = Wish{Part::Delete, index};
}

// The answers stand so that a second click of the same hand deletes nothing.
void NamedViewsPanel::DrawQuestion(std::size_t index) {
  if (DrawButton(index, Part::Delete, true)) wish = Wish{Part::Delete, index};
  ImGui::SameLine();
  if (DrawButton(index, Part::Keep, true)) wish = Wish{Part::Keep, index};
}

bool NamedViewsPanel::DrawButton(std::size_t index, Part part, bool enabled) {
  bool pressed = false;
  ImGui::BeginDisabled(!enabled);
  if (part == Part::Up) pressed = ImGui::ArrowButton("##up", ImGuiDir_Up);
  if (part == Part::Down) pressed = ImGui::ArrowButton("##down", ImGuiDir_Down);
  if (part >= Part::Rename) pressed = ImGui::Button(zovhost::SayLabel(NamePart(part)));
  ImGui::EndDisabled();
  return Note(index, part, zovhost::GetPhrases().SayPlain(NamePart(part)), enabled) || pressed;
}

void NamedViewsPanel::Fulfil(ViewList& list) {
  const std::optional<Wish> asked = std::exchange(wish, std::nullopt);
  if (!asked.has_value()) return;
  const std::size_t index = asked->index;
  const std::string guid = list.GetViews().Get()[index].guid;
  const std::optional<std::string> condemned = std::exchange(doomed, std::nullopt);
  switch (asked->part) {
    case Part::Picture:
      return list.Fly(index);
    case Part::Up:
      list.Move(index, index - 1);
      return;
    case Part::Down:
      list.Move(index, index + 1);
      return;
    case Part::Rename:
      renamed = guid;
      name = list.GetViews().Get()[index].name;
      focuses = true;
      return;
    case Part::Delete:
      if (condemned == guid) {
        row = FindRow(guid);
        if (HasFocus()) FocusBeside(list, index);
        list.Remove(index);
      } else {
        doomed = guid;
      }
      return;
    case Part::Keep:
      return;
  }
}

// On the one that takes its place, or else on the one before.
void NamedViewsPanel::FocusBeside(const ViewList& list, std::size_t index) {
  const std::vector<zovhost::NamedView>& views = list.GetViews().Get();
  const std::size_t next = index + 1 < views.size() ? index + 1 : index - 1;
  if (views.size() > 1) nextFocus = FindRow(views[next].guid);
}

// What was typed, or asked, in a row that is out of sight.
void NamedViewsPanel::EndUnseen(ViewList& list) {
  if (renamed.has_value()) EndRenaming(list);
  focuses = false;
  doomed.reset();
}

void NamedViewsPanel::EndRenaming(ViewList& list) {
  const std::optional<std::size_t> index = list.GetViews().FindGuid(*renamed);
  if (index.has_value()) list.Rename(*index, name);
  renamed.reset();
}

}  // namespace zovview
