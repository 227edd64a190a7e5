#include "zovhost/panel_icons.h"

#include <imgui.h>

#include <cmath>

#include "window/icon_glyphs.h"

namespace zovhost {

// On whole pixels, which points need not be.
bool DrawPanelIcon(int picture, IconSize size, float x, float y) {
  ImFont* const font = ImGui::GetFont();
  const ImFontGlyph* const glyph = font->FindGlyphNoFallback(IconGlyphs::GetCharacter(picture, size));
  if (picture < 0 || glyph == nullptr) return false;
  const float pixels = ImGui::GetIO().DisplayFramebufferScale.x;
  const float side = (glyph->X1 - glyph->X0) * ImGui::GetIO().FontGlobalScale;
  const ImVec2 low(std::round(x * pixels) / pixels, std::round(y * pixels) / pixels);
  ImGui::GetWindowDrawList()->AddImage(font->ContainerAtlas->TexID, low, ImVec2(low.x + side, low.y + side),
                                       ImVec2(glyph->U0, glyph->V0), ImVec2(glyph->U1, glyph->V1),
                                       ImGui::GetColorU32(ImGuiCol_Text));
  return true;
}

}  // namespace zovhost
