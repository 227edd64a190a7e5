#pragma once

#include <cstddef>
#include <string>
#include <vector>

struct ImDrawData;
struct ImDrawList;
struct ImFont;
struct ImFontGlyph;

namespace zovhost {

/// Puts what the panels have drawn into the order of the screen. They set characters one after the other from
/// left to right and know of no other way: texts that are read from the right are set anew here, and in a
/// language that is read so everything is mirrored, each character in itself upright.
class ScreenOrder {
 public:
  /// The font that the panels draw with, each time its atlas has been filled.
  void SetFont(const ImFont& font);
  /// Vertices of a list that move as one, from `left` to `right` on the panel, and are not mirrored in
  /// themselves.
  void AddUpright(const ImDrawList* list, int firstVertex, int lastVertex, float left, float right);
  /// Once for what a frame has drawn. `fontScale`: points for a pixel of the font.
  void Apply(ImDrawData& drawn, bool mirrored, float fontScale);

 private:
  struct Upright {
    const ImDrawList* list;
    int firstVertex;
    int lastVertex;
    float shift;
    float left;
    float right;
  };
  // A character that was drawn: the first of its vertices, and where its pen stood.
  struct Quad {
    int vertex;
    const ImFontGlyph* glyph;
    float pen;
    float line;
    float left;
    float right;
    const Upright* upright;
  };
  // What was drawn in one go: `quads` by character, null for a space.
  struct Run {
    std::wstring text;
    std::vector<int> quads;
    std::vector<float> advances;
    float start = 0.0F;
    float end = 0.0F;

    void Clear();
  };

  std::size_t FindCell(int x, int y) const;
  const ImFontGlyph* FindGlyph(float u, float v) const;
  bool ReadQuad(const ImDrawList& list, int vertex, Quad& quad) const;
  void CollectQuads(const ImDrawList& list);
  void Mirror(ImDrawList& list) const;
  void PlaceRuns(ImDrawList& list);
  bool Follows(const Quad& quad, std::wstring& blanks) const;
  void AddToRun(int quad, const std::wstring& blanks);
  void PlaceRun(ImDrawList& list);
  void PlaceQuad(ImDrawList& list, const Quad& quad, wchar_t drawn, float pen) const;
  const Upright* FindUpright(const ImDrawList* list, int vertex) const;
  void MirrorTicks(ImDrawList& list) const;

  const ImFont* font = nullptr;
  int columns = 0;  // of the cells of the atlas
  std::vector<std::vector<const ImFontGlyph*>> cells;
  std::vector<Upright> uprights;
  std::vector<Quad> quads;  // of the list at hand
  Run run;
  bool mirrored = false;
  float scale = 1.0F;
  float width = 0.0F;  // of the screen
};

}  // namespace zovhost
