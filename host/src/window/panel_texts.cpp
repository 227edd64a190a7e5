#include "zovhost/panel_texts.h"

#include <imgui.h>
#include <imgui_internal.h>

#include <algorithm>
#include <cfloat>

#include "window/panel_state.h"
#include "zovhost/phrases.h"

namespace zovhost {

namespace {

// Null without a Gui.
PanelState* FindState() {
  return ImGui::GetCurrentContext() != nullptr ? static_cast<PanelState*>(ImGui::GetIO().UserData) : nullptr;
}

}  // namespace

std::string ToPanelText(std::string_view text) {
  std::string joined = JoinLetters(text);
  PanelState* const state = FindState();
  if (state == nullptr) return joined;
  state->font.Add(joined);
  state->font.Add(text);  // which is what a field shows that it is typed in
  return joined;
}

bool ArePanelsMirrored() {
  const PanelState* const state = FindState();
  return state != nullptr && state->mirrored;
}

float MirrorPlace(float x) { return ArePanelsMirrored() ? ImGui::GetIO().DisplaySize.x - x : x; }

void PlaceNextPanel(float x, float y, float fractionX, float fractionY, bool always) {
  const float fraction = ArePanelsMirrored() ? 1.0F - fractionX : fractionX;
  ImGui::SetNextWindowPos(ImVec2(MirrorPlace(x), y), always ? ImGuiCond_Always : ImGuiCond_Appearing,
                          ImVec2(fraction, fractionY));
}

void RaisePanel() {
  const ImGuiContext& context = *ImGui::GetCurrentContext();
  if (context.OpenPopupStack.empty()) ImGui::BringWindowToDisplayFront(context.CurrentWindow);
}

void TakeKeys() {
  ImGui::SetKeyboardFocusHere();
  if (PanelState* const state = FindState()) state->hasKeys = true;
}

bool FollowKeys(bool asked) {
  PanelState* const state = FindState();
  ImGuiContext& context = *ImGui::GetCurrentContext();
  if (state == nullptr || !(asked || state->byKeys) || context.LastItemData.ID == 0) return false;
  ImGui::FocusWindow(context.CurrentWindow);
  ImGui::SetFocusID(context.LastItemData.ID, context.CurrentWindow);
  context.NavDisableHighlight = false;
  context.NavDisableMouseHover = true;
  state->hasKeys = true;
  return true;
}

bool TakeEscape() {
  PanelState* const state = FindState();
  if (state == nullptr || state->escaped != ImGui::GetCurrentContext()->CurrentWindow->RootWindow)
    return false;
  state->escaped = nullptr;
  return true;
}

bool HasKeys() {
  const PanelState* const state = FindState();
  const ImGuiContext& context = *ImGui::GetCurrentContext();
  const bool ledHere =
      context.NavWindow != nullptr && context.NavWindow->RootWindow == context.CurrentWindow->RootWindow;
  return state != nullptr && state->hasKeys && ledHere;
}

void GiveKeysBack() {
  if (PanelState* const state = FindState()) state->hasKeys = false;
}

void BringItemIntoSight() { ImGui::ScrollToItem(ImGuiScrollFlags_KeepVisibleCenterY); }

void PressItem(const char* name) { ImGui::ActivateItem(ImGui::GetID(name)); }

void NoteTabStop(bool first) {
  if (PanelState* const state = FindState()) state->stops.Note(*ImGui::GetCurrentContext(), first);
}

// ---- phrases ----

float MeasureWidest(std::span<const char* const> phrases) {
  float widest = 0.0F;
  for (const char* const phrase : phrases) widest = std::max(widest, ImGui::CalcTextSize(Say(phrase)).x);
  return widest;
}

float FindFieldColumn(std::span<const char* const> names, float least) {
  const ImGuiStyle& style = ImGui::GetStyle();
  return std::max(least, style.WindowPadding.x + MeasureWidest(names) + style.ItemInnerSpacing.x);
}

void DrawFieldName(const char* name, float column) {
  ImGui::AlignTextToFramePadding();
  ImGui::TextUnformatted(Say(name));
  ImGui::SameLine(column);
  ImGui::SetNextItemWidth(-FLT_MIN);
}

// ---- items ----

UprightItem::UprightItem() : mirrored(ArePanelsMirrored()) {
  if (!mirrored) return;
  left = ImGui::GetCursorScreenPos().x;
  right = left + ImGui::CalcItemWidth();
  firstVertex = ImGui::GetWindowDrawList()->VtxBuffer.Size;
  TurnPointer();
}

UprightItem::~UprightItem() {
  if (!mirrored) return;
  TurnPointer();
  const ImDrawList* const list = ImGui::GetWindowDrawList();
  FindState()->order.AddUpright(list, firstVertex, list->VtxBuffer.Size, left, right);
}

// Twice is as before.
void UprightItem::TurnPointer() const {
  ImGuiIO& io = ImGui::GetIO();
  if (ImGui::IsMousePosValid()) io.MousePos.x = left + right - io.MousePos.x;
  io.MouseDelta.x = -io.MouseDelta.x;
}

}  // namespace zovhost
