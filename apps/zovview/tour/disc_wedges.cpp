#include "tour/disc_wedges.h"

#include <cmath>
#include <vector>

#include "korvane/helm_disc.h"
#include "korvane/pixel_icon2d.h"
#include "korvane/track_menu.h"

namespace zovview {

using Korvane::PixelIcon2D;
using Korvane::TrackMenu;
using Korvane::Vector2;
using Korvane::Vector3;

namespace {

// Of a map's colours, which are bytes; as far as the library goes.
constexpr double SAME_COLOUR = 0.14;

std::vector<Vector2> FindPixels(const PixelIcon2D& map, const Vector3& colour) {
  const Vector2 middle = map.GetPosition();
  const auto left = static_cast<int>(std::ceil(middle.x - map.GetWidth() / 2.0));
  const auto bottom = static_cast<int>(std::ceil(middle.y - map.GetHeight() / 2.0));
  std::vector<Vector2> pixels;
  Vector3 found;
  for (int y = bottom; y < middle.y + map.GetHeight() / 2.0; ++y) {
    for (int x = left; x < middle.x + map.GetWidth() / 2.0; ++x) {
      if (map.GetColor(Vector2(x, y), found) && (found - colour).Length() < SAME_COLOUR) {
        pixels.emplace_back(x, y);
      }
    }
  }
  return pixels;
}

}  // namespace

bool FindColour(TrackMenu& menu, const Vector3& colour, int& x, int& y) {
  const PixelIcon2D* const map = menu.GetRegionMap();
  const std::vector<Vector2> pixels = map != nullptr ? FindPixels(*map, colour) : std::vector<Vector2>();
  if (pixels.empty()) return false;
  Vector2 sum;
  for (const Vector2& pixel : pixels) sum = sum + pixel;
  const Vector2 centre = sum * (1.0 / static_cast<double>(pixels.size()));
  // What is bent has its centre beside it.
  const Vector2* nearest = &pixels.front();
  for (const Vector2& pixel : pixels) {
    if ((pixel - centre).Length() < (*nearest - centre).Length()) nearest = &pixel;
  }
  x = static_cast<int>(nearest->x);
  y = static_cast<int>(nearest->y);
  return true;
}

bool FindWedge(Korvane::HelmDisc& disc, int zone, int& x, int& y) {
  TrackMenu* const menu = disc.GetActiveTrackMenu();
  if (menu == nullptr) return false;
  for (int i = 0; const TrackMenu::Region* const region = menu->GetRegion(i); ++i) {
    if (region->zone == zone && region->enabled) return FindColour(*menu, region->color, x, y);
  }
  return false;
}

}  // namespace zovview
