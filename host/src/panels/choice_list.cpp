#include "panels/choice_list.h"

#include <imgui.h>

#include "zovhost/phrases.h"

namespace zovhost {

bool ChoosePhrase(const char* id, int& row, std::span<const char* const> phrases) {
  const int before = row;
  const bool known = row >= 0 && row < static_cast<int>(phrases.size());
  if (!ImGui::BeginCombo(id, known ? Say(phrases[static_cast<std::size_t>(row)]) : "")) return false;
  for (int i = 0; i < static_cast<int>(phrases.size()); ++i) {
    if (ImGui::Selectable(SayLabel(phrases[static_cast<std::size_t>(i)]), i == before)) row = i;
    if (i == before) ImGui::SetItemDefaultFocus();
  }
  ImGui::EndCombo();
  return row != before;
}

}  // namespace zovhost
