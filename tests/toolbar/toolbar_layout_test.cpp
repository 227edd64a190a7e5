#include "toolbar/toolbar_layout.h"

#include <gtest/gtest.h>

#include <vector>

#include "support/random.h"

using namespace Korvane;

namespace {

using Item = ToolbarItem;
using Items = std::vector<StripItem>;

constexpr Toolbar::Orientation VERTICAL = Toolbar::ORIENTATION_VERTICAL;
constexpr Toolbar::Orientation HORIZONTAL = Toolbar::ORIENTATION_HORIZONTAL;
constexpr double UNLIMITED = 1e9;

StripItem Make(int type, double width, double height, double flyoutSize = 0.0) {
  StripItem item;
  item.type = static_cast<Item::Type>(type);
  item.width = width;
  item.height = height;
  item.flyoutSize = flyoutSize;
  return item;
}

// The bar as it comes: corner buttons, grip, button, disc button, separator, button, more controls.
Items MakeBar() {
  return {Make(3, 10, 10),     Make(4, 10, 10), Make(5, 24, 12), Make(0, 28, 28),
          Make(1, 28, 28, 10), Make(7, 4, 4),   Make(0, 28, 28), Make(6, 12, 12)};
}

Items Without(Items items, std::initializer_list<int> types) {
  for (StripItem& item : items) {
    for (const int type : types) item.hidden = item.hidden || item.type == type;
  }
  return items;
}

// Without padding and spacing, so that the items alone count.
StripSize MeasureBare(Items items, Toolbar::Orientation orientation) {
  return MeasureStrip(items, orientation, StripSpacing{0.0, 0.0, 0.0});
}

struct MeasureRow {
  const char* what;
  Items items;
  double verticalLength;
  double verticalThickness;
  double horizontalLength;
  double horizontalThickness;
};

TEST(ToolbarLayout, measures_row_by_row) {
  const MeasureRow rows[] = {
      {"nothing", {}, 0, 0, 0, 0},
      {"a button", {Make(0, 30, 20)}, 20, 30, 30, 20},
      {"a plain item", {Make(2, 30, 20)}, 20, 30, 30, 20},
      {"a separator", {Make(7, 6, 4)}, 4, 6, 6, 4},
      {"a flyout button", {Make(1, 30, 20, 10)}, 30, 30, 40, 20},
      {"a flyout size on a button", {Make(0, 30, 20, 10)}, 20, 30, 30, 20},
      {"the head corner", {Make(3, 12, 10)}, 10, 12, 12, 10},
      {"the tail corner", {Make(4, 12, 10)}, 10, 12, 12, 10},
      {"the grip", {Make(5, 24, 12)}, 12, 24, 12, 24},
      {"more controls", {Make(6, 12, 14)}, 0, 12, 0, 14},
      // Of two lengths 12 and 20 in one slot, the second adds what it has more; the heights add up.
      {"both corners", {Make(3, 12, 10), Make(4, 20, 11)}, 21, 20, 20, 21},
      {"both corners, the longer first", {Make(3, 20, 10), Make(4, 12, 11)}, 21, 20, 20, 21},
      {"both corners, the tail first", {Make(4, 12, 11), Make(3, 20, 10)}, 21, 20, 20, 21},
      {"the head corner beside the grip", {Make(3, 12, 10), Make(5, 24, 12)}, 12, 24, 24, 24},
      {"the grip before the head corner", {Make(5, 24, 12), Make(3, 12, 10)}, 12, 24, 24, 24},
      {"the tail corner and the grip", {Make(4, 12, 10), Make(5, 24, 12)}, 22, 24, 24, 24},
      // 12 + 10 + 28 + 38 + 4 + 28; across 28. Horizontally 12 + 10 + 28 + 38 + 4 + 28.
      {"the whole bar", MakeBar(), 120, 28, 120, 28},
      {"a hidden button", Without({Make(0, 30, 20), Make(7, 5, 5)}, {0}), 5, 5, 5, 5},
  };
  for (const MeasureRow& row : rows) {
    const StripSize vertical = MeasureBare(row.items, VERTICAL);
    const StripSize horizontal = MeasureBare(row.items, HORIZONTAL);
    EXPECT_EQ(vertical.length, row.verticalLength) << row.what;
    EXPECT_EQ(vertical.thickness, row.verticalThickness) << row.what;
    EXPECT_EQ(horizontal.length, row.horizontalLength) << row.what;
    EXPECT_EQ(horizontal.thickness, row.horizontalThickness) << row.what;
  }
}

TEST(ToolbarLayout, counts_only_the_first_of_each_handle) {
  for (const int type : {3, 4, 5, 6}) {
    Items items = {Make(0, 28, 28), Make(type, 10, 10), Make(type, 50, 50), Make(type, 60, 60)};
    MeasureStrip(items, VERTICAL, {});
    EXPECT_FALSE(items[1].hidden) << type;
    EXPECT_TRUE(items[2].hidden && items[3].hidden) << type;
    EXPECT_FALSE(items[0].hidden);
  }
  for (const int type : {0, 1, 2, 7}) {
    Items items = {Make(type, 10, 10), Make(type, 10, 10)};
    MeasureStrip(items, HORIZONTAL, {});
    EXPECT_FALSE(items[0].hidden || items[1].hidden) << type;
  }
}

// Of a hidden handle the next one counts.
TEST(ToolbarLayout, passes_over_a_hidden_handle) {
  Items items = {Make(5, 24, 12), Make(5, 30, 14)};
  items[0].hidden = true;
  EXPECT_EQ(MeasureStrip(items, VERTICAL, {0, 0, 0}).length, 14);
  EXPECT_FALSE(items[1].hidden);
}

TEST(ToolbarLayout, pads_both_axes_and_spaces_the_handles) {
  const StripSpacing usual;
  EXPECT_EQ(usual.inner, 2.0);
  EXPECT_EQ(usual.outer, 2.0);
  EXPECT_EQ(usual.grip, 5.0);
  const auto measure = [](Items items, const StripSpacing& spacing) {
    return MeasureStrip(items, VERTICAL, spacing);
  };
  // 28, and 2 * 2 twice.
  EXPECT_EQ(measure({Make(0, 28, 28)}, usual).length, 36);
  EXPECT_EQ(measure({Make(0, 28, 28)}, usual).thickness, 36);
  EXPECT_EQ(measure({Make(0, 28, 28)}, {3.0, -4.0, 5.0}).thickness, 34);
  EXPECT_EQ(measure({Make(0, 28, 28)}, {0.0, 0.0, 5.0}).thickness, 28);
  EXPECT_EQ(measure({Make(0, 28, 28), Make(5, 24, 12)}, usual).length, 36 + 12 + 5);
  EXPECT_EQ(measure({Make(0, 28, 28), Make(3, 10, 10)}, usual).length, 36 + 10 + 5);
  EXPECT_EQ(measure({Make(0, 28, 28), Make(3, 10, 10), Make(5, 24, 12)}, usual).length, 36 + 12 + 5);
  EXPECT_EQ(measure({Make(0, 28, 28), Make(4, 10, 10)}, usual).length, 36 + 10 + 5);
  EXPECT_EQ(measure({Make(0, 28, 28), Make(4, 10, 10), Make(5, 24, 12)}, usual).length, 36 + 22 + 10);
}

std::string Excluded(const Items& items) {
  std::string excluded;
  for (const StripItem& item : items) excluded += item.excluded ? 'x' : '.';
  return excluded;
}

TEST(ToolbarLayout, has_no_more_controls_where_all_fits) {
  for (const Toolbar::Orientation orientation : {VERTICAL, HORIZONTAL}) {
    Items items = MakeBar();
    const double length = MeasureStrip(items, orientation, {}).length;
    EXPECT_EQ(FitStrip(items, orientation, length, length), length);
    EXPECT_EQ(Excluded(items), ".......x");
  }
}

// The whole bar is 120 + 8 + 10 = 138 long.
struct FitRow {
  double available;
  Toolbar::Orientation orientation;
  const char* excluded;
  double length;
};

TEST(ToolbarLayout, items_beyond_the_available_length_vanish_from_the_end) {
  const FitRow rows[] = {
      {138, VERTICAL, ".......x", 138},
      // 138 + 12 - 10: already more than there is, so the last button goes as well.
      {137, VERTICAL, ".x....x.", 112},
      {112, VERTICAL, ".x....x.", 112},
      {111, VERTICAL, ".x...xx.", 108},
      {107, VERTICAL, ".x..xxx.", 70},
      {69, VERTICAL, ".x.xxxx.", 42},
      {0, VERTICAL, ".x.xxxx.", 42},
      {-100, VERTICAL, ".x.xxxx.", 42},
      // Horizontally the length of the tail corner stays in: 138 + 12.
      {137, HORIZONTAL, ".x....x.", 122},
      {121, HORIZONTAL, ".x...xx.", 118},
      {117, HORIZONTAL, ".x..xxx.", 80},
      {79, HORIZONTAL, ".x.xxxx.", 52},
  };
  for (const FitRow& row : rows) {
    Items items = MakeBar();
    const double length = MeasureStrip(items, row.orientation, {}).length;
    ASSERT_EQ(length, 138);
    EXPECT_EQ(FitStrip(items, row.orientation, length, row.available), row.length) << row.available;
    EXPECT_EQ(Excluded(items), row.excluded) << row.available << " " << row.orientation;
  }
}

// With 10 pixels of a tail corner less and 12 of more controls more, 140 + 2 is still too much for 141: the
// separator at the end goes, and with it there is room.
TEST(ToolbarLayout,
     a_separator_next_to_an_excluded_item_can_be_excluded_with_it_and_the_tail_corner_goes_first) {
  Items items = {Make(4, 10, 10), Make(0, 28, 28), Make(0, 28, 28), Make(7, 4, 4),
                 Make(0, 28, 28), Make(7, 4, 4),   Make(6, 12, 12)};
  const double length = MeasureStrip(items, VERTICAL, {}).length;
  ASSERT_EQ(length, 10 + 28 * 3 + 8 + 8 + 5);
  Items few = items;
  EXPECT_EQ(FitStrip(few, VERTICAL, length, length - 1), length + 12 - 10 - 4);
  EXPECT_EQ(Excluded(few), "x....x.");
  Items fewer = items;
  FitStrip(fewer, VERTICAL, length, length + 12 - 10 - 4 - 28 - 1);
  EXPECT_EQ(Excluded(fewer), "x..xxx.");
}

TEST(ToolbarLayout, leaves_out_nothing_that_is_hidden_or_a_handle) {
  Items items = MakeBar();
  items[3].hidden = true;
  MeasureStrip(items, VERTICAL, {});
  FitStrip(items, VERTICAL, UNLIMITED, 0.0);
  EXPECT_EQ(Excluded(items), ".x..xxx.");
}

Box2 MakeStrip(const Vector2& center, const StripSize& size, double length,
               Toolbar::Orientation orientation) {
  const Vector2 vertical(size.thickness / 2.0, length / 2.0);
  return {center, orientation == VERTICAL ? vertical : Vector2(vertical.y, vertical.x)};
}

void ExpectBox(const Box2& box, double left, double bottom, double right, double top) {
  EXPECT_EQ(box.Min(), Vector2(left, bottom));
  EXPECT_EQ(box.Max(), Vector2(right, top));
}

// A strip of 36 x 138, its content from (4, 4) to (32, 134).
TEST(ToolbarLayout, lays_a_vertical_strip_from_the_top) {
  Items items = MakeBar();
  const StripSize size = MeasureStrip(items, VERTICAL, {});
  FitStrip(items, VERTICAL, size.length, UNLIMITED);
  LayStrip(items, VERTICAL, MakeStrip({18, 69}, size, size.length, VERTICAL), {});
  ExpectBox(items[2].bounds, 4, 122, 22, 134);   // the grip, beside
  ExpectBox(items[0].bounds, 22, 124, 32, 134);  // the head corner
  ExpectBox(items[3].bounds, 4, 89, 32, 117);    // after a gap of 5
  ExpectBox(items[4].bounds, 4, 51, 32, 89);
  ExpectBox(items[4].nonFlyoutBounds, 4, 61, 32, 89);
  ExpectBox(items[4].flyoutBounds, 4, 51, 32, 61);
  ExpectBox(items[5].bounds, 4, 47, 32, 51);
  ExpectBox(items[6].bounds, 4, 19, 32, 47);
  ExpectBox(items[1].bounds, 22, 4, 32, 14);  // the tail corner
  ExpectBox(items[7].bounds, 0, 0, 0, 0);     // more controls, which is left out
}

// A strip of 138 x 36.
TEST(ToolbarLayout, lays_a_horizontal_strip_from_the_left) {
  Items items = MakeBar();
  const StripSize size = MeasureStrip(items, HORIZONTAL, {});
  FitStrip(items, HORIZONTAL, size.length, UNLIMITED);
  LayStrip(items, HORIZONTAL, MakeStrip({69, 18}, size, size.length, HORIZONTAL), {});
  ExpectBox(items[2].bounds, 4, 6, 16, 30);  // the grip lies across, in the middle
  ExpectBox(items[3].bounds, 21, 4, 49, 32);
  ExpectBox(items[4].nonFlyoutBounds, 49, 4, 77, 32);
  ExpectBox(items[4].flyoutBounds, 77, 4, 87, 32);
  ExpectBox(items[5].bounds, 87, 4, 91, 32);
  ExpectBox(items[6].bounds, 91, 4, 119, 32);
  ExpectBox(items[0].bounds, 124, 22, 134, 32);  // the corners in one slot
  ExpectBox(items[1].bounds, 124, 4, 134, 14);
}

TEST(ToolbarLayout, puts_more_controls_at_the_tail) {
  Items items = MakeBar();
  const StripSize size = MeasureStrip(items, VERTICAL, {});
  const double length = FitStrip(items, VERTICAL, size.length, 112);
  LayStrip(items, VERTICAL, MakeStrip({18, length / 2.0}, size, length, VERTICAL), {});
  ExpectBox(items[7].bounds, 12, 4, 24, 16);
  ExpectBox(items[1].bounds, 0, 0, 0, 0);
  ExpectBox(items[6].bounds, 0, 0, 0, 0);
}

// ---- random bars ----

Items MakeRandomBar(Random& random) {
  Items items;
  const int count = random.Integer(0, 14);
  for (int i = 0; i < count; ++i) {
    items.push_back(Make(random.Integer(0, 7), random.Integer(1, 40), random.Integer(1, 40),
                         random.Coin() ? random.Integer(0, 15) : 0));
    items.back().hidden = random.Integer(0, 9) == 0;
  }
  return items;
}

bool Overlap(const Box2& a, const Box2& b) {
  const Vector2 apart = a.center - b.center;
  const Vector2 reach = a.halfExtent + b.halfExtent;
  constexpr double TOUCH = 1e-9;
  return std::abs(apart.x) < reach.x - TOUCH && std::abs(apart.y) < reach.y - TOUCH;
}

bool Contains(const Box2& outer, const Box2& inner) {
  constexpr double ROUNDING = 1e-9;
  const Vector2 low = inner.Min() - outer.Min();
  const Vector2 high = outer.Max() - inner.Max();
  return low.x >= -ROUNDING && low.y >= -ROUNDING && high.x >= -ROUNDING && high.y >= -ROUNDING;
}

struct RandomBar {
  explicit RandomBar(Random& random)
      : orientation(random.Coin() ? VERTICAL : HORIZONTAL), items(MakeRandomBar(random)), before(items) {
    size = MeasureStrip(items, orientation, spacing);
    available = random.Uniform(0.0, size.length * 1.3 + 1.0);
    length = FitStrip(items, orientation, size.length, available);
    strip = MakeStrip({random.Uniform(-500, 500), random.Uniform(-500, 500)}, size, length, orientation);
    LayStrip(items, orientation, strip, spacing);
  }

  Toolbar::Orientation orientation;
  StripSpacing spacing;
  Items items;
  Items before;
  StripSize size;
  double available;
  double length;
  Box2 strip;
};

bool IsInSequence(const StripItem& item) { return item.type < 3 || item.type > 6; }

// Along the strip, from the head.
double GetPlace(const RandomBar& bar, const StripItem& item) {
  return bar.orientation == VERTICAL ? -item.bounds.center.y : item.bounds.center.x;
}

void CheckPlaces(const RandomBar& bar) {
  const StripItem* former = nullptr;
  for (std::size_t i = 0; i < bar.items.size(); ++i) {
    const StripItem& item = bar.items[i];
    if (!item.IsShown()) {
      EXPECT_EQ(item.bounds.halfExtent, Vector2());
      continue;
    }
    EXPECT_TRUE(Contains(bar.strip, item.bounds)) << i;
    EXPECT_TRUE(Contains(item.bounds, item.nonFlyoutBounds)) << i;
    const bool hasArrow = item.flyoutBounds.halfExtent != Vector2();
    EXPECT_FALSE(hasArrow && Overlap(item.nonFlyoutBounds, item.flyoutBounds)) << i;
    EXPECT_TRUE(!hasArrow || Contains(item.bounds, item.flyoutBounds)) << i;
    for (std::size_t k = 0; k < i; ++k) {
      EXPECT_FALSE(bar.items[k].IsShown() && Overlap(item.bounds, bar.items[k].bounds)) << k << " " << i;
    }
    if (!IsInSequence(item)) continue;
    EXPECT_TRUE(former == nullptr || GetPlace(bar, *former) < GetPlace(bar, item)) << i;
    former = &item;
  }
}

// Every item of the sequence that shows stands before every one that is left out.
void CheckExclusion(const RandomBar& bar) {
  bool leftOut = false;
  bool anyShown = false;
  for (const StripItem& item : bar.items) {
    if (!IsInSequence(item) || item.hidden) continue;
    EXPECT_FALSE(leftOut && !item.excluded);
    leftOut = leftOut || item.excluded;
    anyShown = anyShown || !item.excluded;
  }
  const bool fits = bar.size.length <= bar.available;
  EXPECT_FALSE(fits && leftOut);
  EXPECT_TRUE(fits || !anyShown || bar.length <= bar.available);
  for (const StripItem& item : bar.items) {
    if (item.hidden) continue;
    EXPECT_TRUE(item.type != 6 || item.excluded == fits);
    EXPECT_TRUE(item.type != 4 || item.excluded == !fits);
    EXPECT_FALSE((item.type == 3 || item.type == 5) && item.excluded);
  }
}

void CheckHidden(const RandomBar& bar) {
  int seen[8] = {};
  for (std::size_t i = 0; i < bar.items.size(); ++i) {
    const int type = bar.items[i].type;
    const bool later = !IsInSequence(bar.items[i]) && !bar.before[i].hidden && seen[type]++ > 0;
    EXPECT_EQ(bar.items[i].hidden, bar.before[i].hidden || later) << i;
  }
}

TEST(ToolbarLayout, of_random_bars_overlaps_nowhere_leaves_nothing_out_in_between_and_keeps_the_order) {
  Random random;
  int cut = 0;
  for (int i = 0; i < 30000 && !::testing::Test::HasFailure(); ++i) {
    const RandomBar bar(random);
    SCOPED_TRACE(i);
    CheckPlaces(bar);
    CheckExclusion(bar);
    CheckHidden(bar);
    if (bar.size.length > bar.available) ++cut;
  }
  EXPECT_GT(cut, 10000);
}

}  // namespace
