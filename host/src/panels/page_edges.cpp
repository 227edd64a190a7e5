#include "zovhost/page_edges.h"

#include <imgui.h>

#include "zovhost/panel_texts.h"

namespace zovhost {

PageEdges FindPageEdges() {
  const ImVec2 place = ImGui::GetWindowPos();
  const ImVec2 size = ImGui::GetWindowSize();
  return {ArePanelsMirrored() ? MirrorPlace(place.x + size.x) : place.x, place.y + size.y};
}

}  // namespace zovhost
