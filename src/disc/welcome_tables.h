#pragma once

#include <optional>
#include <span>

#include "korvane/helm_disc.h"
#include "korvane/helm_disc_observer.h"
#include "korvane/resource_ids.h"
#include "korvane/vector3.h"

namespace Korvane {

/// The pictures of the welcome screen: each of its two pages with nothing under the cursor, with the cursor
/// on the page, and with the cursor on a choice.
enum class WelcomePicture : int {
  Advanced,
  AdvancedTitle,
  AdvancedPart1,
  AdvancedPart2,
  AdvancedPart3,
  AdvancedPart4,
  Basic,
  BasicTitle,
  BasicPart1,
  BasicPart2,
  Keep = -1,  // the one that shows
};
constexpr int WELCOME_PICTURE_COUNT = 10;

/// What a click means: what observers are told, and the disc that opens.
struct WelcomeClick {
  WelcomeMenuPart part;
  DiscType disc = DiscType::None;
};

struct WelcomePictureRow {
  TextureID texture;
  std::optional<WelcomeClick> click = {};  // while it shows; empty where a click is not for the screen
};
/// In the order of WelcomePicture.
std::span<const WelcomePictureRow> GetWelcomePictures();

/// A click that turns the page.
struct WelcomeTurn {
  bool toAdvanced;
  WelcomePicture title;
  WelcomeMenuPart part;
};

/// An area of the region maps, by its colour.
struct WelcomeArea {
  Vector3 colour;
  WelcomePicture onAdvanced;  // shown with the cursor here, for each page
  WelcomePicture onBasic;
  bool isEntry = false;  // the cursor comes to the screen here
  std::optional<WelcomeTurn> turn = {};
};
std::span<const WelcomeArea> GetWelcomeAreas();
/// Compared exactly: the colour of a region is a copy of that of an area. Null for another colour.
const WelcomeArea* FindWelcomeArea(const Vector3& colour);

/// What the page shows with the cursor on an area; null is none of them.
WelcomePicture ChooseWelcomePicture(bool advancedPage, const WelcomeArea* area);

}  // namespace Korvane
