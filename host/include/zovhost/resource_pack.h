#pragma once

#include <array>
#include <bitset>
#include <memory>
#include <string>
#include <string_view>

#include "zovhost/image.h"
#include "zovhost/languages.h"

namespace zovhost {

/// A pointer's shape; the hot spot counts in the image's pixels from its top left.
struct CursorPicture {
  Image image;
  int hotX = 0;
  int hotY = 0;
};

/// Pictures, texts and cursors under the numbers that the library uses. Pictures and cursors are vectors
/// (SVG) and drawn at whatever scale the display has. A picture may hold places for texts, which are set when
/// it is drawn: a rectangle with the identifier "text-" and a text's number; all texts of a picture are set
/// in white and in one size, the largest that fits. "-turned" behind the number sets a text upside down,
/// "-edged" gives it a dark edge. The pictures of the discs, the bars and the storyboard are no drawings:
/// the kit paints them for the size at which they are shown, until SetPicture puts a drawing in their place.
/// A slot without a picture gives a placeholder: a fine checker that shows its number.
class ResourcePack {
 public:
  static constexpr int pictureCount = 232;  // the library's 185, none, and the kit's own; see host_pictures.h
  static constexpr int stringCount = 131;   // the library's 102, and the kit's own; see host_texts.h
  static constexpr int cursorCount = 27;

  /// Every slot empty.
  ResourcePack();
  ~ResourcePack();
  ResourcePack(const ResourcePack&) = delete;
  ResourcePack& operator=(const ResourcePack&) = delete;

  /// The kit's own pack, which is built into it. One for the process.
  static std::shared_ptr<const ResourcePack> GetDefault();
  /// A copy of it to change, for another language or pictures of one's own.
  static std::shared_ptr<ResourcePack> MakeDefault();
  /// The kit's own pack with the texts of another language of GetLanguages.
  static std::shared_ptr<ResourcePack> Make(const Language& language);

  // Numbers out of range are refused with false.
  bool SetPicture(int id, std::string svg);
  bool SetString(int id, std::string utf8);
  /// The hot spot counts in units of the drawing.
  bool SetCursor(int id, std::string svg, double hotX, double hotY);
  /// The language of the texts, by which they are shaped; English unless it was told.
  void SetLanguage(const Language& spoken);
  const Language& GetLanguage() const;
  /// A table of texts, a line each: the number, blanks, the text to the end of the line. `\n` in a text
  /// breaks the line; lines that begin with # are remarks. Stops at the first line that is neither and
  /// tells which in `error`.
  bool ReadStrings(std::string_view table, std::string& error);

  bool HasPicture(int id) const;
  bool HasCursor(int id) const;

  /// The picture at 1, 2 or 3 pixels a unit (other scales work as well, above 0 up to 8). An empty slot
  /// gives its placeholder. False, with `image` untouched, when the slot's drawing is broken, for a number
  /// out of range and for a scale out of range.
  bool RenderPicture(int id, double scale, Image& image) const;
  /// Whether the picture is another one at each size, as a disc has no captions when it is small. Any other
  /// has one size, and is stretched.
  bool IsSizedPicture(int id) const;
  /// Such a picture for a width of `points`; scale and failures as above, also for any other picture.
  bool RenderSizedPicture(int id, double points, double scale, Image& image) const;
  /// The picture without antialiasing, a drawing at 1 pixel a unit, the map of a disc at its own size: each
  /// pixel is wholly of one region or wholly transparent. False for an empty slot, as a placeholder has no
  /// regions, and for a picture of a disc that is no map.
  bool RenderHitMap(int id, Image& image) const;
  bool RenderCursor(int id, double scale, CursorPicture& cursor) const;
  /// The placeholder of a number, 64 units wide and high.
  static Image RenderPlaceholder(int id, double scale);

  /// UTF-8; empty for an empty slot or a number out of range.
  const std::string& GetString(int id) const;

 private:
  struct Cursor {
    std::string svg;
    double hotX = 0.0;
    double hotY = 0.0;
  };

  std::array<std::string, pictureCount> pictures;
  std::bitset<pictureCount> painted;  // by the kit, having no drawing
  std::array<std::string, stringCount> strings;
  Language language = GetLanguages().front();
  std::array<Cursor, cursorCount> cursors;
};

}  // namespace zovhost
