#include "window/icon_glyphs.h"

#include <imgui.h>

#include <array>
#include <cmath>
#include <cstring>
#include <utility>

namespace zovhost {

namespace {

constexpr std::array SIZES = {IconSize::BesideWord, IconSize::Alone};
constexpr int FIRST_CODE = 0xE000;  // of those that no script has
constexpr int CODES_OF_SIZE = 0x400;

}  // namespace

void IconGlyphs::Set(std::vector<int> wantedPictures, IconPainter iconPainter) {
  std::erase_if(wantedPictures, [](int picture) { return picture < 0 || picture >= CODES_OF_SIZE; });
  pictures = std::move(wantedPictures);
  painter = std::move(iconPainter);
  covers.clear();
}

ImWchar IconGlyphs::GetCharacter(int picture, IconSize size) {
  return static_cast<ImWchar>(FIRST_CODE + static_cast<int>(size) * CODES_OF_SIZE + picture);
}

void IconGlyphs::Reserve(ImFontAtlas& atlas, ImFont& font, float density, bool fromRight) {
  places.clear();
  if (!painter) return;
  if (std::exchange(coverDensity, density) != density || std::exchange(turned, fromRight) != fromRight)
    covers.clear();
  for (const IconSize size : SIZES) {
    const auto pixels = static_cast<int>(std::lround(GetIconPoints(size) * density));
    for (const int picture : pictures) {
      const ImWchar code = GetCharacter(picture, size);
      places.push_back(
          {picture, pixels,
           atlas.AddCustomRectFontGlyph(&font, code, pixels, pixels, static_cast<float>(pixels))});
    }
  }
}

void IconGlyphs::Paint(ImFontAtlas& atlas) {
  if (places.empty()) return;
  unsigned char* texture = nullptr;
  int width = 0;
  int height = 0;
  atlas.GetTexDataAsAlpha8(&texture, &width, &height);
  for (const Place& place : places) {
    const ImFontAtlasCustomRect& room = *atlas.GetCustomRectByIndex(place.rectangle);
    const std::vector<std::uint8_t>& cover = FindCover(place.picture, place.pixels);
    if (texture == nullptr || !room.IsPacked() || cover.empty()) continue;
    const auto row = static_cast<std::size_t>(place.pixels);
    unsigned char* at = texture + static_cast<std::size_t>(room.Y) * static_cast<std::size_t>(width) + room.X;
    for (std::size_t y = 0; y < row; ++y, at += width) std::memcpy(at, &cover[y * row], row);
  }
}

// Empty for a picture that cannot be drawn.
const std::vector<std::uint8_t>& IconGlyphs::FindCover(int picture, int pixels) {
  const auto [found, isNew] = covers.try_emplace({picture, pixels});
  std::vector<std::uint8_t>& cover = found->second;
  Image image;
  if (!isNew || !painter(picture, pixels, turned, image)) return cover;
  const auto count = static_cast<std::size_t>(pixels) * static_cast<std::size_t>(pixels);
  if (image.rgba.size() != count * 4) return cover;
  cover.resize(count);
  for (std::size_t i = 0; i < count; ++i) cover[i] = image.rgba[i * 4 + 3];
  return cover;
}

}  // namespace zovhost
