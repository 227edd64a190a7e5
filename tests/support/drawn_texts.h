#pragma once

#include <imgui.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

/// The characters that panels have drawn, as they lie on the screen.
class DrawnTexts {
 public:
  struct Character {
    ImVec2 low;
    ImVec2 high;
    wchar_t code;
    const ImDrawList* list;
    bool cut;  // at its left or right
  };

  explicit DrawnTexts(const ImDrawData& drawn) : font(*ImGui::GetIO().Fonts->Fonts[0]) {
    for (int i = 0; i < drawn.CmdListsCount; ++i) Read(*drawn.CmdLists[i]);
  }

  std::size_t GetCount() const { return characters.size(); }
  /// The first of this kind; null for none.
  const Character* Find(wchar_t code) const {
    const auto found = std::ranges::find(characters, code, &Character::code);
    return found != characters.end() ? &*found : nullptr;
  }

  /// One line about the first that is cut off, lies upon another or is unknown to the font; empty for none.
  std::string FindFault() const {
    for (std::size_t i = 0; i < characters.size(); ++i) {
      const Character& one = characters[i];
      if (one.cut) return "cut: " + Describe(i);
      if (one.code == UNKNOWN) return "unknown: " + Describe(i);
      for (std::size_t k = i + 2; k < characters.size(); ++k) {  // neighbours may touch
        if (Overlap(one, characters[k])) return "overlap: " + Describe(i) + " and " + Describe(k);
      }
    }
    return {};
  }

 private:
  static constexpr wchar_t UNKNOWN = 0xFFFD;
  static constexpr float SLACK = 1.5F;  // points

  static bool Overlap(const Character& one, const Character& other) {
    const float width = std::min(one.high.x, other.high.x) - std::max(one.low.x, other.low.x);
    const float height = std::min(one.high.y, other.high.y) - std::max(one.low.y, other.low.y);
    return one.list == other.list && width > SLACK && height > SLACK;
  }

  // With what was drawn around it.
  std::string Describe(std::size_t at) const {
    std::string text;
    for (std::size_t i = at < 8 ? 0 : at - 8; i < std::min(at + 8, characters.size()); ++i) {
      const wchar_t code = characters[i].code;
      text += code < 0x7F ? std::string(1, static_cast<char>(code)) : "<" + std::to_string(code) + ">";
    }
    return text + " at " + std::to_string(std::lround(characters[at].low.x)) + ", " +
           std::to_string(std::lround(characters[at].low.y));
  }

  void Read(const ImDrawList& list) {
    for (const ImDrawCmd& command : list.CmdBuffer) {
      for (unsigned i = 0; i + 6 <= command.ElemCount; i += 3) {
        const ImDrawIdx* const index = &list.IdxBuffer.Data[command.IdxOffset + i];
        const bool quad = index[1] == index[0] + 1 && index[2] == index[0] + 2 && index[4] == index[0] + 2 &&
                          index[5] == index[0] + 3;
        if (quad) Take(list, &list.VtxBuffer.Data[index[0] + command.VtxOffset], command.ClipRect);
      }
    }
  }

  void Take(const ImDrawList& list, const ImDrawVert* corners, const ImVec4& room) {
    const ImVec2 low = corners[0].uv;
    const ImVec2 high = corners[2].uv;
    const ImVec2 middle((low.x + high.x) * 0.5F, (low.y + high.y) * 0.5F);
    for (const ImFontGlyph& glyph : font.Glyphs) {
      const bool within =
          middle.x > glyph.U0 && middle.x < glyph.U1 && middle.y > glyph.V0 && middle.y < glyph.V1;
      if (glyph.Visible == 0 || !within) continue;
      const ImVec2 at = corners[0].pos;
      const ImVec2 end = corners[2].pos;
      if (end.y <= room.y || at.y >= room.w) return;  // scrolled away
      const bool whole = std::abs(low.x - glyph.U0) < NEARLY && std::abs(high.x - glyph.U1) < NEARLY;
      const bool inRoom = at.x > room.x - SLACK && end.x < room.z + SLACK;
      characters.push_back({at, end, static_cast<wchar_t>(glyph.Codepoint), &list, !whole || !inRoom});
      return;
    }
  }

  static constexpr float NEARLY = 1e-6F;  // of the texture
  const ImFont& font;
  std::vector<Character> characters;
};
