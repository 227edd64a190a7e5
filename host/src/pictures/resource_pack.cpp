#include "zovhost/resource_pack.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <utility>

#include "korvane/resource_ids.h"
#include "pictures/canvas.h"
#include "pictures/painted_pictures.h"
#include "pictures/svg_painter.h"
#include "pictures/text_font.h"
#include "texts/embedded_files.h"
#include "zovhost/accent.h"

namespace zovhost {

namespace {

constexpr double largestScale = 8.0;
constexpr int placeholderSize = 64;  // units
constexpr int placeholderSquare = 4;
constexpr int cursorPlaceholderSize = 32;
constexpr std::string_view blanks = " \t\r";

template <typename Slots>
bool IsSlot(const Slots& slots, int id) {
  return id >= 0 && static_cast<std::size_t>(id) < slots.size();
}

template <typename Slots>
auto& Slot(Slots& slots, int id) {
  return slots[static_cast<std::size_t>(id)];
}

bool IsScale(double scale) { return scale > 0.0 && scale <= largestScale; }

std::string_view Trim(std::string_view text) {
  const std::size_t first = text.find_first_not_of(blanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::string_view TakeLine(std::string_view& text) {
  const std::size_t end = text.find('\n');
  const std::string_view line = text.substr(0, end);
  text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  return Trim(line);
}

std::string_view TakeWord(std::string_view& line) {
  const std::string_view word = line.substr(0, line.find_first_of(blanks));
  line.remove_prefix(word.size());
  line = Trim(line);
  return word;
}

bool ReadNumber(std::string_view word, int& number) {
  const auto [end, failure] = std::from_chars(word.data(), word.data() + word.size(), number);
  return failure == std::errc() && end == word.data() + word.size();
}

std::string Unescape(std::string_view text) {
  std::string result;
  for (std::size_t at = text.find("\\n"); at != std::string_view::npos; at = text.find("\\n")) {
    result.append(text.substr(0, at)).push_back('\n');
    text.remove_prefix(at + 2);
  }
  return result.append(text);
}

// ---- placeholders ----

void DrawChecker(cairo_t* context, int size) {
  cairo_set_source_rgb(context, 0.93, 0.93, 0.93);
  cairo_rectangle(context, 0, 0, size, size);
  cairo_fill(context);
  cairo_set_source_rgb(context, 0.80, 0.80, 0.80);
  for (int y = 0; y < size; y += placeholderSquare) {
    for (int x = (y / placeholderSquare % 2) * placeholderSquare; x < size; x += 2 * placeholderSquare) {
      cairo_rectangle(context, x, y, placeholderSquare, placeholderSquare);
    }
  }
  cairo_fill(context);
  cairo_set_source_rgb(context, ACCENT_COLOUR[0], ACCENT_COLOUR[1], ACCENT_COLOUR[2]);
  cairo_set_line_width(context, 1.0);
  cairo_rectangle(context, 0.5, 0.5, size - 1, size - 1);
  cairo_stroke(context);
}

void DrawNumber(cairo_t* context, int number, double middle, double size) {
  const std::string text = std::to_string(number);
  cairo_select_font_face(context, "Sans", CAIRO_FONT_SLANT_NORMAL, CAIRO_FONT_WEIGHT_BOLD);
  cairo_set_font_size(context, size);
  cairo_text_extents_t extents;
  cairo_text_extents(context, text.c_str(), &extents);
  cairo_move_to(context, middle - extents.width / 2 - extents.x_bearing,
                middle - extents.height / 2 - extents.y_bearing);
  cairo_text_path(context, text.c_str());
  cairo_set_line_join(context, CAIRO_LINE_JOIN_ROUND);
  cairo_set_line_width(context, size / 5.0);
  cairo_set_source_rgb(context, 1.0, 1.0, 1.0);
  cairo_stroke_preserve(context);
  cairo_set_source_rgb(context, ACCENT_COLOUR[0], ACCENT_COLOUR[1], ACCENT_COLOUR[2]);
  cairo_fill(context);
}

Image MakePlaceholder(int id, int size, double numberSize, double scale) {
  const int pixels = static_cast<int>(std::ceil(size * scale));
  const Canvas canvas(pixels, pixels);
  cairo_t* context = canvas.GetContext();
  cairo_scale(context, scale, scale);
  DrawChecker(context, size);
  DrawNumber(context, id, size / 2.0, numberSize);
  return canvas.MakeImage();
}

// ---- the kit's own pack ----

// "pictures/007.svg" gives 7.
bool ReadFileNumber(std::string_view name, std::string_view folder, int& number) {
  if (!name.starts_with(folder) || !name.ends_with(".svg")) return false;
  name.remove_prefix(folder.size());
  return ReadNumber(name.substr(0, name.find_first_of("-.")), number);
}

// A cursor's drawing says where its hot spot is: `data-hot="x y"` on the root element.
void ReadHotSpot(std::string_view svg, double& x, double& y) {
  constexpr std::string_view attribute = "data-hot=\"";
  const std::size_t at = svg.find(attribute);
  if (at == std::string_view::npos) return;
  std::string_view value = svg.substr(at + attribute.size());
  value = value.substr(0, value.find('"'));
  int hotX = 0;
  int hotY = 0;
  if (!ReadNumber(TakeWord(value), hotX) || !ReadNumber(value, hotY)) return;
  x = hotX;
  y = hotY;
}

}  // namespace

ResourcePack::ResourcePack() = default;
ResourcePack::~ResourcePack() = default;

std::shared_ptr<const ResourcePack> ResourcePack::GetDefault() {
  static const std::shared_ptr<const ResourcePack> pack = MakeDefault();
  return pack;
}

std::shared_ptr<ResourcePack> ResourcePack::MakeDefault() { return Make(GetLanguages().front()); }

std::shared_ptr<ResourcePack> ResourcePack::Make(const Language& language) {
  auto pack = std::make_shared<ResourcePack>();
  pack->SetLanguage(language);
  const std::string tableName = "strings/" + std::string(language.tag) + ".txt";
  for (int id = 0; id < pictureCount; ++id) pack->painted[static_cast<std::size_t>(id)] = IsPainted(id);
  const EmbeddedFiles files = GetEmbeddedFiles();
  for (const EmbeddedFile* file = files.begin; file != files.end; ++file) {
    int number = 0;
    std::string error;
    if (ReadFileNumber(file->name, "pictures/", number)) {
      pack->SetPicture(number, std::string(file->content));
    } else if (ReadFileNumber(file->name, "cursors/", number)) {
      double hotX = 0.0;
      double hotY = 0.0;
      ReadHotSpot(file->content, hotX, hotY);
      pack->SetCursor(number, std::string(file->content), hotX, hotY);
    } else if (file->name == tableName) {
      pack->ReadStrings(file->content, error);
    }
  }
  return pack;
}

bool ResourcePack::SetPicture(int id, std::string svg) {
  if (!IsSlot(pictures, id)) return false;
  Slot(pictures, id) = std::move(svg);
  painted[static_cast<std::size_t>(id)] = false;
  return true;
}

bool ResourcePack::SetString(int id, std::string utf8) {
  if (!IsSlot(strings, id) || id == Korvane::STRING_NONE) return false;
  Slot(strings, id) = std::move(utf8);
  return true;
}

bool ResourcePack::SetCursor(int id, std::string svg, double hotX, double hotY) {
  if (!IsSlot(cursors, id)) return false;
  Slot(cursors, id) = {std::move(svg), hotX, hotY};
  return true;
}

void ResourcePack::SetLanguage(const Language& spoken) { language = spoken; }
const Language& ResourcePack::GetLanguage() const { return language; }

bool ResourcePack::ReadStrings(std::string_view table, std::string& error) {
  for (int lineNumber = 1; !table.empty(); ++lineNumber) {
    std::string_view line = TakeLine(table);
    if (line.empty() || line.front() == '#') continue;
    int id = 0;
    if (ReadNumber(TakeWord(line), id) && SetString(id, Unescape(line))) continue;
    error = "line " + std::to_string(lineNumber) + ": no number of a text at the start of the line";
    return false;
  }
  return true;
}

bool ResourcePack::HasPicture(int id) const {
  return IsSizedPicture(id) || (IsSlot(pictures, id) && !Slot(pictures, id).empty());
}

bool ResourcePack::HasCursor(int id) const { return IsSlot(cursors, id) && !Slot(cursors, id).svg.empty(); }

bool ResourcePack::RenderPicture(int id, double scale, Image& image) const {
  if (!IsSlot(pictures, id) || !IsScale(scale)) return false;
  if (IsSizedPicture(id)) return RenderSizedPicture(id, GetUsualPoints(id), scale, image);
  if (HasPicture(id)) {
    const auto findText = [this](int number) -> const std::string& { return GetString(number); };
    const LanguageInUse inUse(language.tag);
    return PaintSvg(Slot(pictures, id), scale, false, findText, image);
  }
  image = RenderPlaceholder(id, scale);
  return true;
}

bool ResourcePack::IsSizedPicture(int id) const {
  return IsSlot(pictures, id) && painted[static_cast<std::size_t>(id)];
}

bool ResourcePack::RenderSizedPicture(int id, double points, double scale, Image& image) const {
  const auto findText = [this](int number) -> const std::string& { return GetString(number); };
  const LanguageInUse inUse(language.tag);
  return IsSizedPicture(id) && IsScale(scale) && PaintPicture(id, points, scale, findText, image);
}

bool ResourcePack::RenderHitMap(int id, Image& image) const {
  if (IsSizedPicture(id)) return PaintMap(id, image);
  return HasPicture(id) && PaintSvg(Slot(pictures, id), 1.0, true, {}, image);
}

bool ResourcePack::RenderCursor(int id, double scale, CursorPicture& cursor) const {
  if (!IsSlot(cursors, id) || !IsScale(scale)) return false;
  if (!HasCursor(id)) {
    const int middle = static_cast<int>(0.5 * cursorPlaceholderSize * scale);
    cursor = {MakePlaceholder(id, cursorPlaceholderSize, 18.0, scale), middle, middle};
    return true;
  }
  const Cursor& slot = Slot(cursors, id);
  Image image;
  if (!PaintSvg(slot.svg, scale, false, {}, image)) return false;
  const auto within = [scale](double hot, int size) {
    return std::clamp(static_cast<int>(std::lround(hot * scale)), 0, size - 1);
  };
  const int hotX = within(slot.hotX, image.width);
  const int hotY = within(slot.hotY, image.height);
  cursor = {std::move(image), hotX, hotY};
  return true;
}

Image ResourcePack::RenderPlaceholder(int id, double scale) {
  return MakePlaceholder(id, placeholderSize, 26.0, IsScale(scale) ? scale : 1.0);
}

const std::string& ResourcePack::GetString(int id) const {
  static const std::string none;
  return IsSlot(strings, id) ? Slot(strings, id) : none;
}

}  // namespace zovhost
