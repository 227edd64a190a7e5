#include "disc/welcome_tables.h"

#include <algorithm>
#include <array>

namespace Korvane {

namespace {

using Part = WelcomeMenuPart;
using Picture = WelcomePicture;

constexpr TextureID Texture(int id) { return static_cast<TextureID>(id); }

constexpr WelcomeTurn TO_ADVANCED = {true, Picture::AdvancedTitle, Part::SwitchToAdvanced};
constexpr WelcomeTurn TO_BASIC = {false, Picture::BasicTitle, Part::SwitchToBasic};

}  // namespace

std::span<const WelcomePictureRow> GetWelcomePictures() {
  static constexpr std::array<WelcomePictureRow, WELCOME_PICTURE_COUNT> PICTURES = {{
      {Texture(77)},
      {Texture(78), WelcomeClick{Part::AdvancedTitle, DiscType::FullNavigation}},
      {Texture(79), WelcomeClick{Part::AdvancedFirst, DiscType::MiniViewObject}},
      {Texture(80), WelcomeClick{Part::AdvancedSecond, DiscType::MiniTourBuilding}},
      {Texture(81), WelcomeClick{Part::AdvancedThird, DiscType::MiniFullNavigation}},
      {Texture(82), WelcomeClick{Part::AdvancedFourth, DiscType::FullNavigation}},
      {Texture(84)},
      {Texture(85), WelcomeClick{Part::BasicTitle, DiscType::ViewObject}},
      {Texture(86), WelcomeClick{Part::BasicFirst, DiscType::ViewObject}},
      {Texture(87), WelcomeClick{Part::BasicSecond, DiscType::TourBuilding}},
  }};
  return PICTURES;
}

// The ground, the title, an area that changes nothing, the two switches, the choices of each page. A choice
// of the other page is none.
std::span<const WelcomeArea> GetWelcomeAreas() {
  static constexpr WelcomeArea AREAS[] = {
      {{1, 0, 0}, Picture::AdvancedTitle, Picture::BasicTitle, true},
      {{0, 0, 0.5}, Picture::AdvancedTitle, Picture::BasicTitle, true},
      {{0, 1, 1}, Picture::Keep, Picture::Keep},
      {{0.5, 0, 0}, Picture::Keep, Picture::Keep, false, TO_ADVANCED},
      {{0, 0.5, 0}, Picture::Keep, Picture::Keep, false, TO_BASIC},
      {{1, 1, 0}, Picture::AdvancedPart1, Picture::Basic},
      {{0, 1, 0}, Picture::AdvancedPart2, Picture::Basic},
      {{1, 0, 1}, Picture::AdvancedPart3, Picture::Basic},
      {{0, 0, 1}, Picture::AdvancedPart4, Picture::Basic},
      {{0.5, 0.5, 0}, Picture::Advanced, Picture::BasicPart1},
      {{0.5, 0, 0.5}, Picture::Advanced, Picture::BasicPart2},
  };
  return AREAS;
}

const WelcomeArea* FindWelcomeArea(const Vector3& colour) {
  const std::span<const WelcomeArea> areas = GetWelcomeAreas();
  const auto found = std::find_if(areas.begin(), areas.end(),
                                  [&](const WelcomeArea& area) { return area.colour == colour; });
  return found != areas.end() ? &*found : nullptr;
}

WelcomePicture ChooseWelcomePicture(bool advancedPage, const WelcomeArea* area) {
  if (area == nullptr) return advancedPage ? Picture::Advanced : Picture::Basic;
  return advancedPage ? area->onAdvanced : area->onBasic;
}

}  // namespace Korvane
