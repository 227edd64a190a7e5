#include "pictures/painted_pictures.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "pictures/disc_painter.h"
#include "pictures/disc_plan.h"

namespace zovhost {

namespace {

constexpr double usualLargePoints = 128.0;
constexpr double usualSmallPoints = 64.0;
constexpr double largestSide = 4096.0;  // pixels

enum class DiscPicture : int { Overlay, Map, Whole };

// What a number stands for. Ordered by the number.
struct Row {
  int id = 0;
  DiscPicture kind = DiscPicture::Whole;
  const DiscPlan* plan = nullptr;
  const DiscWedge* highlight = nullptr;
};

std::vector<Row> MakeRows() {
  std::vector<Row> rows;
  for (const DiscPlan& plan : GetDiscPlans()) {
    if (plan.IsLarge()) rows.push_back({plan.overlay, DiscPicture::Overlay, &plan, nullptr});
    rows.push_back({plan.map, DiscPicture::Map, &plan, nullptr});
    rows.push_back({plan.base, DiscPicture::Whole, &plan, nullptr});
    for (const DiscWedge& wedge : plan.wedges) {
      rows.push_back({wedge.picture, DiscPicture::Whole, &plan, &wedge});
    }
  }
  std::sort(rows.begin(), rows.end(), [](const Row& a, const Row& b) { return a.id < b.id; });
  return rows;
}

const Row* FindRow(int id) {
  static const std::vector<Row> rows = MakeRows();
  const auto found = std::lower_bound(rows.begin(), rows.end(), id,
                                      [](const Row& row, int wanted) { return row.id < wanted; });
  return found != rows.end() && found->id == id ? &*found : nullptr;
}

}  // namespace

bool IsPainted(int id) { return FindRow(id) != nullptr; }

double GetUsualPoints(int id) {
  const Row* row = FindRow(id);
  if (row == nullptr) return 0.0;
  return row->plan->IsLarge() ? usualLargePoints : usualSmallPoints;
}

bool PaintPicture(int id, double points, double scale, const FindText& findText, Image& image) {
  const Row* row = FindRow(id);
  const double pixels = points * scale;
  if (row == nullptr || !(points > 0.0) || !(pixels >= 1.0) || !(pixels <= largestSide)) return false;
  if (row->kind == DiscPicture::Map) {
    image = PaintDiscMap(*row->plan);
    return true;
  }
  const DiscSize size = {points, scale};
  if (row->kind == DiscPicture::Overlay) return PaintDiscCaptions(*row->plan, size, findText, image);
  return PaintDisc(*row->plan, row->highlight, size, findText, image);
}

bool PaintMap(int id, Image& image) {
  const Row* row = FindRow(id);
  if (row == nullptr || row->kind != DiscPicture::Map) return false;
  image = PaintDiscMap(*row->plan);
  return true;
}

}  // namespace zovhost
