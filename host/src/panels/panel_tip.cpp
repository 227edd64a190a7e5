#include "zovhost/panel_tip.h"

#include <imgui.h>

#include <algorithm>
#include <utility>

#include "zovhost/panel_texts.h"

namespace zovhost {

namespace {

// Points.
constexpr float BESIDE = 10.0F;
constexpr float BELOW = 5.0F;
constexpr float BORDER = 4.0F;  // that a tip keeps to the edge of the window
constexpr float ACROSS = 8.0F;  // around its words
constexpr float ALONG = 5.0F;

bool IsPressed() {
  const ImGuiIO& io = ImGui::GetIO();
  return std::any_of(std::begin(io.MouseDown), std::end(io.MouseDown), [](bool down) { return down; });
}

float KeepWithin(float low, float size, float room) {
  return std::max(std::min(low, room - BORDER - size), BORDER);
}

}  // namespace

PanelTip::PanelTip(std::function<void()> request) : requestFrame(std::move(request)) {}

void PanelTip::Note(int id, const char* text, Side side, bool focused) {
  if (!focused && !ImGui::IsItemHovered()) return;
  const ImVec2 low = ImGui::GetItemRectMin();
  const ImVec2 high = ImGui::GetItemRectMax();
  under = {id, text, side, low.x, low.y, high.x, high.y, focused};
}

void PanelTip::OnRest() {
  rested = true;
  if (requestFrame) requestFrame();
}

void PanelTip::Draw() {
  Follow();
  under = {};
  if (shown) DrawText();
}

void PanelTip::Follow() {
  const ImVec2 pointer = ImGui::GetIO().MousePos;
  const bool moved = std::exchange(pointerX, pointer.x) != pointer.x;
  const bool movedAcross = std::exchange(pointerY, pointer.y) != pointer.y;
  const bool isOther = under.id != present.id;
  if (isOther) spent = false;
  if (isOther && !shown) rested = false;
  present = under;
  if (IsPressed()) spent = true;
  if (present.id == NONE || spent) {
    timer.Stop();
    rested = shown = false;
    return;
  }
  shown = rested || present.focused;
  if (!shown && (isOther || moved || movedAcross)) timer.Start(REST_SECONDS, false);
}

// What is beside an item is at its right on the screen, however panels are read.
void PanelTip::DrawText() const {
  const ImVec2 words = ImGui::CalcTextSize(present.text);
  const ImVec2 size(words.x + 2.0F * ACROSS, words.y + 2.0F * ALONG);
  const ImVec2 room = ImGui::GetIO().DisplaySize;
  ImVec2 low(present.left, present.bottom + BELOW);
  if (present.side == Side::Beside) {
    low.x = ArePanelsMirrored() ? present.left - BESIDE - size.x : present.right + BESIDE;
    low.y = (present.top + present.bottom - size.y) * 0.5F;
  } else if (low.y + size.y > room.y - BORDER) {
    low.y = present.top - BELOW - size.y;
  }
  low = ImVec2(KeepWithin(low.x, size.x, room.x), KeepWithin(low.y, size.y, room.y));
  const ImVec2 high(low.x + size.x, low.y + size.y);
  const ImGuiStyle& style = ImGui::GetStyle();
  ImVec4 ground = style.Colors[ImGuiCol_PopupBg];
  ground.w = 1.0F;
  ImDrawList& list = *ImGui::GetForegroundDrawList();
  list.AddRectFilled(low, high, ImGui::GetColorU32(ground), style.FrameRounding);
  list.AddRect(low, high, ImGui::GetColorU32(ImGuiCol_Border), style.FrameRounding);
  list.AddText(ImVec2(low.x + ACROSS, low.y + ALONG), ImGui::GetColorU32(ImGuiCol_Text), present.text);
}

}  // namespace zovhost
