#include "toolbar/bar_tables.h"

#include <cstddef>
#include <iterator>

#include "korvane/helm_disc.h"

namespace Korvane {

namespace {

using Bar = NavigationBar;
using Item = ToolbarItem;

constexpr int WIDTH = Bar::COMMON_ITEM_WIDTH;
constexpr int HEIGHT = Bar::COMMON_ITEM_HEIGHT;

constexpr BarItem BEFORE[] = {
    {Bar::TAG_CLOSE, Item::TYPE_HEAD_CORNER, 10, 10, 0, TEXTURE_BAR_CLOSE, 8, STRING_BAR_CLOSE},
    {Bar::TAG_MENU, Item::TYPE_TAIL_CORNER, 10, 10, 0, TEXTURE_BAR_MENU, 8, STRING_BAR_MENU},
    {Bar::TAG_GRIP, Item::TYPE_GRIP, 24, 12, 0, TEXTURE_NONE, 0, STRING_BAR_GRIP},
    {Bar::TAG_ORIENTOR, Item::TYPE_BUTTON, WIDTH, HEIGHT, 0, TEXTURE_BAR_ORIENTOR, 32, STRING_BAR_ORIENTOR},
    {Bar::TAG_FULL_NAVIGATION, Item::TYPE_FLYOUT_BUTTON, WIDTH, HEIGHT, 10, TEXTURE_BAR_FULL_NAVIGATION, 32,
     STRING_BAR_FULL_NAVIGATION},
    {Bar::TAG_FIRST_SEPARATOR, Item::TYPE_SEPARATOR, 4, 4, 0, TEXTURE_NONE, 0, STRING_NONE},
};

constexpr BarItem AFTER[] = {
    {Bar::TAG_SECOND_SEPARATOR, Item::TYPE_SEPARATOR, 4, 4, 0, TEXTURE_NONE, 0, STRING_NONE},
    {Bar::TAG_STORYBOARD, Item::TYPE_BUTTON, WIDTH, HEIGHT, 0, TEXTURE_BAR_STORYBOARD, 32,
     STRING_BAR_STORYBOARD},
    {Bar::TAG_MORE_CONTROLS, Item::TYPE_MORE_CONTROLS, 12, 12, 0, TEXTURE_NONE, 0, STRING_BAR_MORE_CONTROLS},
};

constexpr BarItem MakeDisc(int tag, TextureID texture, StringID tooltip) {
  return {tag, Item::TYPE_BUTTON, WIDTH, HEIGHT, 0, texture, 32, tooltip};
}

constexpr BarItem DISCS[] = {
    MakeDisc(Bar::TAG_FULL_NAVIGATION, TEXTURE_BAR_FULL_NAVIGATION, STRING_BAR_FULL_NAVIGATION),
    MakeDisc(Bar::TAG_MINI_FULL_NAVIGATION, TEXTURE_BAR_MINI_FULL_NAVIGATION,
             STRING_BAR_MINI_FULL_NAVIGATION),
    MakeDisc(Bar::TAG_MINI_VIEW_OBJECT, TEXTURE_BAR_MINI_VIEW_OBJECT, STRING_BAR_MINI_VIEW_OBJECT),
    MakeDisc(Bar::TAG_MINI_TOUR_BUILDING, TEXTURE_BAR_MINI_TOUR_BUILDING, STRING_BAR_MINI_TOUR_BUILDING),
    MakeDisc(Bar::TAG_VIEW_OBJECT, TEXTURE_BAR_VIEW_OBJECT, STRING_BAR_VIEW_OBJECT),
    MakeDisc(Bar::TAG_TOUR_BUILDING, TEXTURE_BAR_TOUR_BUILDING, STRING_BAR_TOUR_BUILDING),
    MakeDisc(Bar::TAG_TWO_D, TEXTURE_BAR_TWO_D, STRING_BAR_TWO_D),
};

// By the number of the disc.
constexpr int DISC_TAGS[] = {
    Bar::TAG_VIEW_OBJECT,      Bar::TAG_TOUR_BUILDING,      Bar::TAG_FULL_NAVIGATION,      Bar::TAG_TWO_D,
    Bar::TAG_MINI_VIEW_OBJECT, Bar::TAG_MINI_TOUR_BUILDING, Bar::TAG_MINI_FULL_NAVIGATION,
};

}  // namespace

std::span<const BarItem> GetItemsBefore() { return BEFORE; }
std::span<const BarItem> GetItemsAfter() { return AFTER; }
std::span<const BarItem> GetDiscItems() { return DISCS; }

int GetDiscTag(DiscType type) {
  const int number = static_cast<int>(type);
  const bool isDisc = number >= 0 && number < static_cast<int>(std::size(DISC_TAGS));
  return isDisc ? DISC_TAGS[number] : 0;
}

}  // namespace Korvane
