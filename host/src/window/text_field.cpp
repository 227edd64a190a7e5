#include "zovhost/text_field.h"

#include <imgui.h>
#include <imgui_internal.h>
#include <imgui_stdlib.h>

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>
#include <vector>

#include "texts/reading_order.h"
#include "window/panel_state.h"
#include "zovhost/panel_texts.h"
#include "zovhost/wide_text.h"

namespace zovhost {

namespace {

constexpr float BEFORE_CARET = 12.0F;  // points of a long text that show beside the caret
constexpr float CARET_ABOVE = 1.0F;

float FindAdvance(wchar_t character) {
  if (character == JOINED_AWAY) return 0.0F;
  const float scale = ImGui::GetFontSize() / ImGui::GetFont()->FontSize;
  return ImGui::GetFont()->GetCharAdvance(static_cast<ImWchar>(character)) * scale;
}

// Where the characters of a text stand on the screen, from the left of the whole.
class Line {
 public:
  Line(const std::wstring& text, bool fromRight)
      : shaped(JoinInPlace(text)), places(shaped.size()), begins(fromRight) {
    for (const PlacedCharacter& each : FindScreenOrder(shaped, fromRight)) {
      const float advance = FindAdvance(each.drawn);
      places[each.index] = {width, width + advance, each.fromRight};
      width += advance;
    }
  }

  float GetWidth() const { return width; }
  float GetLeft(std::size_t index) const { return places[index].left; }
  float GetRight(std::size_t index) const { return places[index].right; }

  // Before a character.
  float FindCaret(std::size_t index) const {
    if (index < places.size()) return places[index].fromRight ? places[index].right : places[index].left;
    return begins ? 0.0F : width;
  }
  // The caret nearest to it; beside the text its begin or its end.
  std::size_t FindIndex(float x) const {
    if (x <= 0.0F || x >= width) return (x <= 0.0F) == begins ? places.size() : 0;
    std::size_t nearest = 0;
    for (std::size_t i = 1; i <= places.size(); ++i) {
      if (std::abs(FindCaret(i) - x) < std::abs(FindCaret(nearest) - x)) nearest = i;
    }
    return nearest;
  }

  // What shows between two places, and where it begins: a text that is cut off at its beginning is put into
  // its order without what is cut off.
  std::pair<std::string, float> FindShown(float from, float to) const {
    std::size_t first = places.size();
    std::size_t last = 0;
    float left = width;
    for (std::size_t i = 0; i < places.size(); ++i) {
      if (places[i].left < from || places[i].right > to) continue;
      first = std::min(first, i);
      last = i + 1;
      left = std::min(left, places[i].left);
    }
    std::wstring shown = first < last ? shaped.substr(first, last - first) : std::wstring();
    std::erase(shown, JOINED_AWAY);
    return {WideToUtf8(shown), left};
  }

  // Of the field, so that the caret shows; none: nobody types.
  float FindStart(float room, std::optional<std::size_t> caret) const {
    if (width <= room) return begins ? room - width : 0.0F;
    const float first = begins ? room - width : 0.0F;
    if (!caret.has_value()) return first;
    const float at = FindCaret(*caret);
    const float shown =
        std::clamp(first, BEFORE_CARET - at, std::max(BEFORE_CARET - at, room - BEFORE_CARET - at));
    return std::clamp(shown, room - width, 0.0F);
  }

 private:
  struct Place {
    float left = 0.0F;
    float right = 0.0F;
    bool fromRight = false;
  };

  std::wstring shaped;
  std::vector<Place> places;  // by index
  bool begins;
  float width = 0.0F;
};

// The field while its text is shown by other means than the library's own.
class Field {
 public:
  Field(const char* name, const std::string& text, bool fromRight)
      : mirrored(fromRight),
        id(ImGui::GetCurrentWindow()->GetID(name)),
        low(ImGui::GetCursorScreenPos()),
        high(low.x + ImGui::CalcItemWidth(), low.y + ImGui::GetFrameHeight()),
        given(Utf8ToWide(text)) {}

  // So that the library finds under the pointer what shows there.
  void TurnPointer() const {
    ImGuiIO& io = ImGui::GetIO();
    if (!ImGui::IsMousePosValid() || !IsPointerMeant()) return;
    const std::wstring text = FindText();
    const Line line(text, mirrored);
    const std::size_t index = line.FindIndex(io.MousePos.x - FindStart(line));
    float x = GetInnerLeft() - (FindState() != nullptr ? FindState()->ScrollX : 0.0F);
    for (std::size_t i = 0; i < index; ++i) x += FindAdvance(text[i]);
    io.MousePos.x = std::clamp(x, low.x, high.x - 1.0F);
  }

  void Draw() const {
    const std::wstring text = FindText();
    const Line line(text, mirrored);
    const float start = FindStart(line);
    ImDrawList& list = *ImGui::GetWindowDrawList();
    list.PushClipRect(ImVec2(GetInnerLeft() - 1.0F, low.y), ImVec2(GetInnerRight() + 1.0F, high.y), true);
    DrawSelection(list, line, start);
    const float top = low.y + ImGui::GetStyle().FramePadding.y;
    ToPanelText(WideToUtf8(text));
    const auto [shown, left] = line.FindShown(GetInnerLeft() - 1.0F - start, GetInnerRight() + 1.0F - start);
    list.AddText(ImVec2(start + left, top), ImGui::GetColorU32(ImGuiCol_Text), shown.c_str());
    if (const std::optional<std::size_t> caret = FindCaret()) {
      const float x = std::floor(start + line.FindCaret(*caret)) + 0.5F;
      list.AddLine(ImVec2(x, top - CARET_ABOVE), ImVec2(x, top + ImGui::GetFontSize() + CARET_ABOVE),
                   ImGui::GetColorU32(ImGuiCol_Text));
    }
    list.PopClipRect();
  }

 private:
  // Null while nobody types in it.
  const ImGuiInputTextState* FindState() const {
    return ImGui::GetActiveID() == id ? ImGui::GetInputTextState(id) : nullptr;
  }
  std::wstring FindText() const {
    const ImGuiInputTextState* const state = FindState();
    return state != nullptr ? std::wstring(state->TextW.begin(), state->TextW.begin() + state->CurLenW)
                            : given;
  }
  std::optional<std::size_t> FindCaret() const {
    const ImGuiInputTextState* const state = FindState();
    if (state == nullptr) return std::nullopt;
    return static_cast<std::size_t>(std::clamp(state->Stb.cursor, 0, state->CurLenW));
  }
  float GetInnerLeft() const { return low.x + ImGui::GetStyle().FramePadding.x; }
  float GetInnerRight() const { return high.x - ImGui::GetStyle().FramePadding.x; }
  float FindStart(const Line& line) const {
    return GetInnerLeft() + line.FindStart(GetInnerRight() - GetInnerLeft(), FindCaret());
  }
  bool IsPointerMeant() const {
    const bool goesOn = FindState() != nullptr && !ImGui::IsMouseClicked(ImGuiMouseButton_Left);
    return goesOn || ImRect(low, high).Contains(ImGui::GetIO().MousePos);
  }

  void DrawSelection(ImDrawList& list, const Line& line, float start) const {
    const ImGuiInputTextState* const state = FindState();
    if (state == nullptr || !state->HasSelection()) return;
    const auto [from, to] = std::minmax(state->Stb.select_start, state->Stb.select_end);
    for (int i = std::max(from, 0); i < std::min(to, state->CurLenW); ++i) {
      const auto index = static_cast<std::size_t>(i);
      list.AddRectFilled(ImVec2(start + line.GetLeft(index), low.y + 2.0F),
                         ImVec2(start + line.GetRight(index), high.y - 2.0F),
                         ImGui::GetColorU32(ImGuiCol_TextSelectedBg));
    }
  }

  bool mirrored;
  ImGuiID id;
  ImVec2 low;
  ImVec2 high;
  std::wstring given;
};

}  // namespace

bool DrawTextField(const char* id, std::string& text, int flags) {
  ToPanelText(text);
  const UprightItem upright;
  const std::wstring wide = Utf8ToWide(text);
  if (!IsReadFromRight(wide)) return ImGui::InputText(id, &text, flags);
  const bool fromRight = ArePanelsMirrored() && BeginsFromRight(wide);
  const Field field(id, text, fromRight);
  const float pointer = ImGui::GetIO().MousePos.x;
  field.TurnPointer();
  const ImVec4 NOTHING(0.0F, 0.0F, 0.0F, 0.0F);
  for (const ImGuiCol_ part : {ImGuiCol_Text, ImGuiCol_TextSelectedBg}) ImGui::PushStyleColor(part, NOTHING);
  const bool result = ImGui::InputText(id, &text, flags);
  ImGui::PopStyleColor(2);
  ImGui::GetIO().MousePos.x = pointer;
  field.Draw();
  auto* const panels = static_cast<PanelState*>(ImGui::GetIO().UserData);
  if (panels != nullptr && ImGui::IsItemActive()) panels->typedFromRight = fromRight;
  return result;
}

}  // namespace zovhost
