#include "pictures/painted_pictures.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "pictures/bar_pictures.h"
#include "pictures/disc_painter.h"
#include "pictures/disc_plan.h"
#include "pictures/story_pictures.h"
#include "pictures/welcome_painter.h"
#include "pictures/welcome_plan.h"

namespace zovhost {

namespace {

constexpr double usualLargePoints = 128.0;
constexpr double usualSmallPoints = 64.0;
constexpr double largestSide = 4096.0;  // pixels

// What a number stands for: a picture of a disc or one of a page of the welcome screen.
struct Row {
  enum class Kind : int { Overlay, Map, Whole };

  int id = 0;
  Kind kind = Kind::Whole;
  const DiscPlan* disc = nullptr;
  const DiscWedge* wedge = nullptr;  // under the pointer
  const WelcomePage* page = nullptr;
  const WelcomeArea* area = nullptr;  // likewise
};

void AddDisc(const DiscPlan& disc, std::vector<Row>& rows) {
  if (disc.IsLarge()) rows.push_back({disc.overlay, Row::Kind::Overlay, &disc});
  rows.push_back({disc.map, Row::Kind::Map, &disc});
  rows.push_back({disc.base, Row::Kind::Whole, &disc});
  for (const DiscWedge& wedge : disc.wedges) {
    rows.push_back({wedge.picture, Row::Kind::Whole, &disc, &wedge});
  }
}

void AddPage(const WelcomePage& page, std::vector<Row>& rows) {
  rows.push_back({page.map, Row::Kind::Map, nullptr, nullptr, &page});
  rows.push_back({page.plain, Row::Kind::Whole, nullptr, nullptr, &page});
  for (const WelcomeArea& area : page.areas) {
    if (area.picture >= 0) rows.push_back({area.picture, Row::Kind::Whole, nullptr, nullptr, &page, &area});
  }
}

// Ordered by the number.
std::vector<Row> MakeRows() {
  std::vector<Row> rows;
  for (const DiscPlan& disc : GetDiscPlans()) AddDisc(disc, rows);
  for (const WelcomePage& page : GetWelcomePages()) AddPage(page, rows);
  std::sort(rows.begin(), rows.end(), [](const Row& a, const Row& b) { return a.id < b.id; });
  return rows;
}

const Row* FindRow(int id) {
  static const std::vector<Row> rows = MakeRows();
  const auto found = std::lower_bound(rows.begin(), rows.end(), id,
                                      [](const Row& row, int wanted) { return row.id < wanted; });
  return found != rows.end() && found->id == id ? &*found : nullptr;
}

// A picture without words.
bool PaintPlain(int id, int pixels, Image& image) {
  return IsStoryPicture(id) ? PaintStoryPicture(id, pixels, image) : PaintBarPicture(id, pixels, image);
}

}  // namespace

bool IsPainted(int id) { return FindRow(id) != nullptr || IsBarPicture(id) || IsStoryPicture(id); }

double GetUsualPoints(int id) {
  const Row* row = FindRow(id);
  if (row == nullptr) return IsStoryPicture(id) ? GetStoryPoints(id) : GetBarPoints(id);
  if (row->page != nullptr) return welcomePoints;
  return row->disc->IsLarge() ? usualLargePoints : usualSmallPoints;
}

bool PaintPicture(int id, double points, double scale, const FindText& findText, Image& image) {
  const Row* row = FindRow(id);
  const double pixels = points * scale;
  if (!(points > 0.0) || !(pixels >= 1.0) || !(pixels <= largestSide)) return false;
  if (row == nullptr) return PaintPlain(id, static_cast<int>(std::lround(pixels)), image);
  if (row->kind == Row::Kind::Map) return PaintMap(id, image);
  if (row->page != nullptr) {
    return PaintWelcome(*row->page, row->area, pixels / welcomePoints, findText, image);
  }
  const DiscSize size = {points, scale};
  if (row->kind == Row::Kind::Overlay) return PaintDiscCaptions(*row->disc, size, findText, image);
  return PaintDisc(*row->disc, row->wedge, size, findText, image);
}

bool PaintMap(int id, Image& image) {
  const Row* row = FindRow(id);
  if (row == nullptr || row->kind != Row::Kind::Map) return false;
  image = row->page != nullptr ? PaintWelcomeMap(*row->page) : PaintDiscMap(*row->disc);
  return true;
}

}  // namespace zovhost
