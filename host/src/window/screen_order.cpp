#include "window/screen_order.h"

#include <imgui.h>

#include <algorithm>
#include <cmath>

#include "texts/reading_order.h"

namespace zovhost {

namespace {

constexpr int CELL = 16;  // pixels of the atlas
constexpr int QUAD_INDICES = 6;
constexpr int QUAD_VERTICES = 4;
constexpr int MOST_BLANKS = 4;                   // within a text
constexpr wchar_t BLANKS[] = {L' ', L'\u202f'};  // which draw nothing
constexpr float NEARLY = 0.05F;                  // points

// As a character is drawn: two triangles from the corner at the top left round.
bool IsQuad(const ImDrawIdx* index) {
  const int first = index[0];
  constexpr int PATTERN[QUAD_INDICES] = {0, 1, 2, 0, 2, 3};
  for (int i = 0; i < QUAD_INDICES; ++i) {
    if (index[i] != first + PATTERN[i]) return false;
  }
  return true;
}

}  // namespace

// ---- the font ----

void ScreenOrder::SetFont(const ImFont& used) {
  font = &used;
  const ImFontAtlas& atlas = *used.ContainerAtlas;
  columns = atlas.TexWidth / CELL + 1;
  const int rows = atlas.TexHeight / CELL + 1;
  cells.assign(static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows), {});
  const auto cellOf = [](float part, int size) {
    return static_cast<int>(part * static_cast<float>(size)) / CELL;
  };
  for (const ImFontGlyph& glyph : used.Glyphs) {
    if (glyph.Visible == 0) continue;
    for (int y = cellOf(glyph.V0, atlas.TexHeight); y <= cellOf(glyph.V1, atlas.TexHeight); ++y) {
      for (int x = cellOf(glyph.U0, atlas.TexWidth); x <= cellOf(glyph.U1, atlas.TexWidth); ++x) {
        cells[FindCell(x, y)].push_back(&glyph);
      }
    }
  }
}

std::size_t ScreenOrder::FindCell(int x, int y) const {
  return static_cast<std::size_t>(y) * static_cast<std::size_t>(columns) + static_cast<std::size_t>(x);
}

const ImFontGlyph* ScreenOrder::FindGlyph(float u, float v) const {
  const ImFontAtlas& atlas = *font->ContainerAtlas;
  if (!(u > 0.0F && u < 1.0F && v > 0.0F && v < 1.0F)) return nullptr;
  const int x = static_cast<int>(u * static_cast<float>(atlas.TexWidth)) / CELL;
  const int y = static_cast<int>(v * static_cast<float>(atlas.TexHeight)) / CELL;
  for (const ImFontGlyph* const glyph : cells[FindCell(x, y)]) {
    if (u >= glyph->U0 && u <= glyph->U1 && v >= glyph->V0 && v <= glyph->V1) return glyph;
  }
  return nullptr;
}

// ---- what was drawn ----

void ScreenOrder::AddUpright(const ImDrawList* list, int firstVertex, int lastVertex, float left,
                             float right) {
  uprights.push_back({list, firstVertex, lastVertex, 0.0F, left, right});
}

const ScreenOrder::Upright* ScreenOrder::FindUpright(const ImDrawList* list, int vertex) const {
  for (const Upright& upright : uprights) {
    if (upright.list == list && vertex >= upright.firstVertex && vertex < upright.lastVertex) return &upright;
  }
  return nullptr;
}

// A character may be cut off at the edge of its room; its pen stands where it would for the whole.
bool ScreenOrder::ReadQuad(const ImDrawList& list, int vertex, Quad& quad) const {
  const ImDrawVert& first = list.VtxBuffer[vertex];
  const ImDrawVert& last = list.VtxBuffer[vertex + 2];
  if (first.uv.x == last.uv.x || first.uv.y == last.uv.y) return false;
  const ImFontGlyph* const glyph =
      FindGlyph((first.uv.x + last.uv.x) * 0.5F, (first.uv.y + last.uv.y) * 0.5F);
  if (glyph == nullptr) return false;
  const float cutLeft = (first.uv.x - glyph->U0) / (glyph->U1 - glyph->U0) * (glyph->X1 - glyph->X0);
  const float cutTop = (first.uv.y - glyph->V0) / (glyph->V1 - glyph->V0) * (glyph->Y1 - glyph->Y0);
  quad = {vertex,
          glyph,
          first.pos.x - (glyph->X0 + cutLeft) * scale,
          first.pos.y - (glyph->Y0 + cutTop) * scale,
          first.pos.x,
          last.pos.x,
          FindUpright(&list, vertex)};
  return true;
}

void ScreenOrder::CollectQuads(const ImDrawList& list) {
  quads.clear();
  for (const ImDrawCmd& command : list.CmdBuffer) {
    const auto begin = static_cast<int>(command.IdxOffset);
    const int end = begin + static_cast<int>(command.ElemCount);
    for (int i = begin; i + QUAD_INDICES <= end;) {
      const int vertex = static_cast<int>(list.IdxBuffer[i] + command.VtxOffset);
      Quad quad = {};
      const bool drawn = IsQuad(&list.IdxBuffer.Data[i]) && vertex + QUAD_VERTICES <= list.VtxBuffer.Size &&
                         ReadQuad(list, vertex, quad);
      if (drawn) quads.push_back(quad);
      i += drawn ? QUAD_INDICES : 3;
    }
  }
}

// ---- everything else ----

void ScreenOrder::Mirror(ImDrawList& list) const {
  for (int i = 0; i < list.VtxBuffer.Size; ++i) {
    float& x = list.VtxBuffer[i].pos.x;
    const Upright* const upright = FindUpright(&list, i);
    x = upright != nullptr ? x + upright->shift : width - x;
  }
  for (ImDrawCmd& command : list.CmdBuffer) {
    const float left = command.ClipRect.x;
    command.ClipRect.x = width - command.ClipRect.z;
    command.ClipRect.z = width - left;
  }
}

// A tick has one shape, whichever way is read. It is known by its colour, and by not being a character.
void ScreenOrder::MirrorTicks(ImDrawList& list) const {
  const ImU32 colour = ImGui::GetColorU32(ImGuiCol_CheckMark);
  constexpr ImU32 HUE = ~IM_COL32_A_MASK;  // its edges are transparent
  for (int first = 0; first < list.VtxBuffer.Size;) {
    float low = width;
    float high = 0.0F;
    int end = first;
    for (; end < list.VtxBuffer.Size && ((list.VtxBuffer[end].col ^ colour) & HUE) == 0; ++end) {
      low = std::min(low, list.VtxBuffer[end].pos.x);
      high = std::max(high, list.VtxBuffer[end].pos.x);
    }
    for (int i = first; i < end; ++i) list.VtxBuffer[i].pos.x = low + high - list.VtxBuffer[i].pos.x;
    first = std::max(end, first + 1);
  }
}

// ---- texts ----

bool ScreenOrder::Follows(const Quad& quad, std::wstring& blanks) const {
  if (run.quads.empty()) return false;
  const Quad& last = quads[static_cast<std::size_t>(run.quads.back())];
  if (std::abs(last.line - quad.line) > NEARLY || last.upright != quad.upright) return false;
  const float gap = quad.pen - run.end;
  if (std::abs(gap) < NEARLY) return true;
  for (const wchar_t blank : BLANKS) {
    const float advance = font->GetCharAdvance(static_cast<ImWchar>(blank)) * scale;
    const auto count = static_cast<int>(std::lround(gap / advance));
    if (count < 1 || count > MOST_BLANKS || std::abs(gap - static_cast<float>(count) * advance) > NEARLY)
      continue;
    blanks.assign(static_cast<std::size_t>(count), blank);
    return true;
  }
  return false;
}

void ScreenOrder::AddToRun(int quad, const std::wstring& blanks) {
  const Quad& added = quads[static_cast<std::size_t>(quad)];
  if (run.quads.empty()) run.start = run.end = added.pen;
  const auto add = [this](wchar_t character, int of, float advance) {
    run.text.push_back(character);
    run.quads.push_back(of);
    run.advances.push_back(advance * scale);
    run.end += run.advances.back();
  };
  for (const wchar_t blank : blanks) add(blank, -1, font->GetCharAdvance(static_cast<ImWchar>(blank)));
  add(static_cast<wchar_t>(added.glyph->Codepoint), quad, added.glyph->AdvanceX);
}

// Keeps its room.
void ScreenOrder::Run::Clear() {
  text.clear();
  quads.clear();
  advances.clear();
  start = end = 0.0F;
}

void ScreenOrder::PlaceRuns(ImDrawList& list) {
  run.Clear();
  for (std::size_t i = 0; i < quads.size(); ++i) {
    std::wstring blanks;
    if (!run.quads.empty() && !Follows(quads[i], blanks)) {
      PlaceRun(list);
      run.Clear();
    }
    AddToRun(static_cast<int>(i), blanks);
  }
  if (!run.quads.empty()) PlaceRun(list);
}

// A line that is read from the right as a whole begins there; names and numbers by themselves do not.
void ScreenOrder::PlaceRun(ImDrawList& list) {
  const Upright* const upright = quads[static_cast<std::size_t>(run.quads.front())].upright;
  const bool fromRight = IsReadFromRight(run.text);
  if (!mirrored && !fromRight) return;
  float pen = run.start;
  if (mirrored) pen = upright != nullptr ? run.start + upright->shift : width - run.end;
  const bool beginsThere = upright != nullptr ? BeginsFromRight(run.text) : fromRight;
  for (const PlacedCharacter& place : FindScreenOrder(run.text, mirrored && beginsThere)) {
    const int quad = run.quads[place.index];
    if (quad >= 0) PlaceQuad(list, quads[static_cast<std::size_t>(quad)], place.drawn, pen);
    pen += run.advances[place.index];
  }
}

void ScreenOrder::PlaceQuad(ImDrawList& list, const Quad& quad, wchar_t drawn, float pen) const {
  ImDrawVert* const corners = &list.VtxBuffer[quad.vertex];
  const ImFontGlyph* const other = static_cast<unsigned>(drawn) != quad.glyph->Codepoint
                                       ? font->FindGlyphNoFallback(static_cast<ImWchar>(drawn))
                                       : nullptr;
  float left = quad.left + pen - quad.pen;
  float right = quad.right + pen - quad.pen;
  if (other != nullptr) {
    left = pen + other->X0 * scale;
    right = pen + other->X1 * scale;
    corners[0].uv = ImVec2(other->U0, other->V0);
    corners[1].uv = ImVec2(other->U1, other->V0);
    corners[2].uv = ImVec2(other->U1, other->V1);
    corners[3].uv = ImVec2(other->U0, other->V1);
  }
  corners[0].pos.x = corners[3].pos.x = left;
  corners[1].pos.x = corners[2].pos.x = right;
}

void ScreenOrder::Apply(ImDrawData& drawn, bool isMirrored, float fontScale) {
  mirrored = isMirrored;
  scale = fontScale;
  width = drawn.DisplaySize.x;
  for (Upright& upright : uprights) upright.shift = width - upright.right - upright.left;
  for (int i = 0; font != nullptr && i < drawn.CmdListsCount; ++i) {
    ImDrawList& list = *drawn.CmdLists[i];
    CollectQuads(list);
    if (mirrored) Mirror(list);
    if (mirrored) MirrorTicks(list);
    PlaceRuns(list);
  }
  uprights.clear();
}

}  // namespace zovhost
