// The film strip in numbers: pictures of 64 pixels with a gap of 4, so a pitch of 68, in a view of 800, so a
// band of 136 to 664 beyond which the strip scrolls.
#include <algorithm>
#include <numeric>

#include "story/history/rewind_scene.h"
#include "support/random.h"

using namespace Korvane;

struct RewindStripTest : RewindScene {
  double Sum() {
    const Numbers weights = Weights();
    return std::accumulate(weights.begin(), weights.end(), 0.0);
  }
  Numbers Except(std::size_t index, double value) {
    Numbers numbers(List().size(), 0.0);
    numbers[index] = value;
    return numbers;
  }
};

// ---- opening ----

TEST_F(RewindStripTest, opens_with_the_current_element_under_the_mouse) {
  Fill(3);
  EXPECT_TRUE(history.OpenTimeline({400, 300}, At(3)));
  EXPECT_TRUE(history.IsTimelineOpen());
  EXPECT_EQ(Places(), (Numbers{264, 332, 400}));
  for (const auto& element : List()) {
    EXPECT_EQ(element.bounds.center.y, 300.0);
    EXPECT_EQ(element.bounds.halfExtent, Vector2(32, 32));
    EXPECT_EQ(element.thumbnail->GetPosition(), element.bounds.center);
  }
  EXPECT_EQ(Weights(), (Numbers{0, 0, 1}));
  EXPECT_EQ(history.GetBracketPosition(), Vector2(400, 300));
  EXPECT_EQ(Strip().bracketOrigin, Vector2(400, 300));
  EXPECT_EQ(Strip().openPosition, Vector2(400, 300));
  EXPECT_EQ(Strip().scrollLeft, Vector2(136, 300));
  EXPECT_EQ(Strip().scrollRight, Vector2(664, 300));
  EXPECT_TRUE(Strip().snapped);
  EXPECT_FALSE(Strip().layoutStale);
  EXPECT_EQ(journal.Take(), Lines{"opened"});
}

TEST_F(RewindStripTest, opens_around_a_current_element_in_the_middle) {
  Fill(4);
  history.SetCurrentElementIndex(1);
  Open(500);
  EXPECT_EQ(Places(), (Numbers{432, 500, 568, 636}));
  EXPECT_EQ(Weights(), (Numbers{0, 1, 0, 0}));
}

TEST_F(RewindStripTest, the_last_element_takes_the_camera_at_the_opening) {
  Fill(2);
  OpenAt(400, 7);
  EXPECT_EQ(Eyes(), (Numbers{1, 7}));
  EXPECT_EQ(journal.Take(), (Lines{"updated 1 at 7", "opened"}));
}

TEST_F(RewindStripTest, an_element_before_the_last_keeps_its_camera_at_the_opening) {
  Fill(2);
  history.SetCurrentElementIndex(0);
  journal.Take();
  OpenAt(400, 7);
  EXPECT_EQ(Eyes(), (Numbers{1, 2}));
  EXPECT_EQ(journal.Take(), Lines{"opened"});
}

TEST_F(RewindStripTest, in_a_narrow_view_the_ends_of_the_band_change_places) {
  Fill(2);
  history.SetViewportSize(200, 100);
  Open(100);
  EXPECT_EQ(Strip().scrollLeft.x, 64.0);  // 200 - 136
  EXPECT_EQ(Strip().scrollRight.x, 136.0);
}

TEST_F(RewindStripTest, an_empty_strip_opens_and_stays_empty) {
  EXPECT_TRUE(history.OpenTimeline({400, 300}, At(1)));
  EXPECT_TRUE(history.IsTimelineOpen());
  EXPECT_TRUE(history.IsTimelineEmpty());
  EXPECT_FALSE(Slide(300));
  CameraParameters camera = At(4);
  EXPECT_FALSE(history.GetInterpolatedCamera(camera));
  EXPECT_EQ(camera.eye.x, 4.0);
  EXPECT_TRUE(Close());
  EXPECT_EQ(journal.Take(), (Lines{"opened", "closed"}));
}

TEST_F(RewindStripTest, a_strip_of_one_opens_and_its_camera_is_that_of_the_element) {
  Fill(1);
  Open(400);
  for (const double x : {400.0, 300.0, 700.0, 405.0, 400.0}) {
    EXPECT_TRUE(Slide(x));
    EXPECT_EQ(Weights(), Numbers{1}) << x;
    EXPECT_EQ(Bracket(), Places()[0]) << x;
    CameraParameters camera;
    EXPECT_TRUE(history.GetInterpolatedCamera(camera));
    EXPECT_TRUE(SameBits(camera, At(1))) << x;
  }
}

TEST_F(RewindStripTest, closed_it_does_not_slide) {
  Fill(2);
  EXPECT_FALSE(Slide(300));
  Open(400);
  Close();
  EXPECT_FALSE(Slide(300));
}

// ---- weights ----

TEST_F(RewindStripTest, halfway_both_elements_weigh_half_and_the_earlier_is_selected) {
  Fill(3);
  Open(400);  // 264, 332, 400
  journal.Take();
  Slide(366);
  EXPECT_EQ(Weights(), (Numbers{0, 0.5, 0.5}));
  EXPECT_EQ(Bracket(), 366.0);
  EXPECT_EQ(Strip().bracketOffset.x, 332.0 - 366.0);
  EXPECT_FALSE(Strip().snapped);
  EXPECT_EQ(journal.Take(), Lines{"slid 1 by 0.5"});
}

TEST_F(RewindStripTest, weights_go_by_the_distance_in_pitches) {
  Fill(3);
  Open(400);
  Slide(349);  // 17 from 332, 51 from 400
  EXPECT_EQ(Weights(), (Numbers{0, 0.75, 0.25}));
  Slide(281);
  EXPECT_EQ(Weights(), (Numbers{0.75, 0.25, 0}));
}

TEST_F(RewindStripTest, beyond_the_last_thumbnail_it_weighs_all_and_the_correction_holds_the_bracket) {
  Fill(3);
  history.SetCurrentElementIndex(1);
  Open(400);  // 332, 400, 468
  journal.Take();
  Slide(540);
  EXPECT_EQ(Weights(), (Numbers{0, 0, 1}));
  EXPECT_EQ(Bracket(), 468.0);
  EXPECT_EQ(Strip().mouseCorrection.x, -72.0);
  EXPECT_TRUE(Strip().snapped);
  EXPECT_EQ(Strip().bracketOffset.x, 0.0);
  EXPECT_EQ(journal.Take(), Lines{"slid 2 by 1"});
  Slide(510);  // 30 back, so 30 before the last
  EXPECT_EQ(Bracket(), 438.0);
  EXPECT_EQ(Strip().mouseCorrection.x, -72.0);
}

TEST_F(RewindStripTest, beyond_the_first_thumbnail_it_weighs_all_and_the_correction_holds_the_bracket) {
  Fill(3);
  Open(400);  // 264, 332, 400
  Slide(200);
  EXPECT_EQ(Weights(), (Numbers{1, 0, 0}));
  EXPECT_EQ(Bracket(), 264.0);
  EXPECT_EQ(Strip().mouseCorrection.x, 64.0);
  Slide(230);
  EXPECT_EQ(Bracket(), 294.0);
}

TEST_F(RewindStripTest, the_correction_grows_with_each_step_beyond_the_end) {
  Fill(2);
  Open(400);
  Slide(500);
  EXPECT_EQ(Strip().mouseCorrection.x, -100.0);
  Slide(550);
  EXPECT_EQ(Strip().mouseCorrection.x, -150.0);
  EXPECT_EQ(Bracket(), 400.0);
}

TEST_F(RewindStripTest, the_bracket_stays_on_the_strip_whatever_the_mouse_does_upward) {
  Fill(3);
  Open(400);
  history.SlideTimeline({366, 20});
  EXPECT_EQ(history.GetBracketPosition(), Vector2(366, 300));
}

// ---- snapping ----

struct SnapStep {
  double mouse;
  double bracket;
  bool snapped;
};

// Elements at 264, 332 and 400. It snaps below 4 and stays below 16; both are strict.
constexpr SnapStep SNAP_STEPS[] = {
    {400, 400, true},  {391, 400, true},  {385, 400, true},   // 15 away: it stays
    {384, 384, false},                                        // 16 away: it goes
    {395, 395, false}, {396, 396, false},                     // 5, 4 away: not yet
    {397, 400, true},                                         // 3 away
    {385, 400, true},  {366, 366, false}, {337, 337, false},  // 5 from the next
    {335, 332, true},  {317, 332, true},  {316, 316, false},
};

TEST_F(RewindStripTest, stays_snapped_at_a_wider_distance_than_it_snaps_at) {
  Fill(3);
  Open(400);
  for (const SnapStep& step : SNAP_STEPS) {
    Slide(step.mouse);
    EXPECT_EQ(Bracket(), step.bracket) << step.mouse;
    EXPECT_EQ(Strip().snapped, step.snapped) << step.mouse;
  }
}

TEST_F(RewindStripTest, snapped_an_element_weighs_all_and_the_offset_is_none) {
  Fill(3);
  Open(400);
  Slide(366);
  Slide(334);
  EXPECT_EQ(Weights(), (Numbers{0, 1, 0}));
  EXPECT_EQ(Strip().bracketOffset.x, 0.0);
}

TEST_F(RewindStripTest, without_snapping_the_bracket_goes_with_the_mouse) {
  Fill(3);
  history.SetSnapEnabled(false);
  Open(400);
  EXPECT_FALSE(Strip().snapped);
  Slide(398);
  EXPECT_EQ(Bracket(), 398.0);
  EXPECT_FALSE(Strip().snapped);
  EXPECT_EQ(Strip().bracketOffset.x, 2.0);
  Slide(332);
  EXPECT_EQ(Weights(), (Numbers{0, 1, 0}));
  EXPECT_FALSE(Strip().snapped);  // though it is on the element
}

TEST_F(RewindStripTest, snapping_that_is_turned_off_lets_the_bracket_go) {
  Fill(3);
  Open(400);
  Slide(398);
  ASSERT_TRUE(Strip().snapped);
  history.SetSnapEnabled(false);
  Slide(397);
  EXPECT_FALSE(Strip().snapped);
}

TEST_F(RewindStripTest, of_two_elements_within_reach_the_earlier_takes_the_bracket) {
  history.SetThumbnailSize(10.0F);
  history.SetThumbnailGapSize(0.0F);
  Fill(4);
  Open(400);  // 370, 380, 390, 400; snapped, so within 16
  Slide(384);
  EXPECT_EQ(Bracket(), 370.0);  // 14 away, before 380
}

// ---- scrolling ----

// Ten elements, the last under the mouse at 400: -212, -144, -76, -8, 60, 128, 196, 264, 332, 400.
TEST_F(RewindStripTest, left_of_the_band_the_strip_scrolls_and_the_bracket_stays) {
  Fill(10);
  Open(400);
  Slide(100);  // 36 beyond 136
  EXPECT_EQ(Bracket(), 136.0);
  EXPECT_EQ(Places()[0], -176.0);
  EXPECT_EQ(Places()[4], 96.0);
  EXPECT_EQ(Places()[9], 436.0);
  EXPECT_EQ(List()[4].thumbnail->GetPosition(), Vector2(96, 300));
  EXPECT_EQ(Strip().bracketOrigin.x, 364.0);
  EXPECT_EQ(Strip().scrollLeft.x, 100.0);
  EXPECT_EQ(Strip().scrollRight.x, 628.0);
  // 40 from the fifth, at 96, and 28 from the sixth, at 164.
  EXPECT_DOUBLE_EQ(Weights()[4], 28.0 / 68.0);
  EXPECT_DOUBLE_EQ(Weights()[5], 40.0 / 68.0);
  EXPECT_EQ(Strip().bracketOffset.x, 28.0);
}

// The mirror: 400, 468, ... 1012.
TEST_F(RewindStripTest, right_of_the_band_the_strip_scrolls_and_the_bracket_stays) {
  Fill(10);
  history.SetCurrentElementIndex(0);
  Open(400);
  Slide(700);  // 36 beyond 664
  EXPECT_EQ(Bracket(), 664.0);
  EXPECT_EQ(Places()[9], 976.0);
  EXPECT_EQ(Strip().bracketOrigin.x, 436.0);
  EXPECT_EQ(Strip().scrollLeft.x, 172.0);
  EXPECT_EQ(Strip().scrollRight.x, 700.0);
}

TEST_F(RewindStripTest, on_the_edge_of_the_band_it_does_not_scroll) {
  Fill(10);
  Open(400);
  Slide(136);
  EXPECT_EQ(Strip().bracketOrigin.x, 400.0);
  EXPECT_EQ(Places()[9], 400.0);
}

// Five elements, the first at 128: it scrolls until that stands at 136.
TEST_F(RewindStripTest, to_the_left_the_strip_scrolls_only_until_its_first_element_is_at_the_margin) {
  Fill(5);
  Open(400);
  Slide(100);
  EXPECT_EQ(Places()[0], 136.0);
  EXPECT_EQ(Strip().bracketOrigin.x, 392.0);
  EXPECT_EQ(Bracket(), 136.0);  // 108, held at the first
  EXPECT_EQ(Strip().mouseCorrection.x, 28.0);
}

// The mirror: the last at 672, until it stands at 664.
TEST_F(RewindStripTest, to_the_right_the_strip_scrolls_only_until_its_last_element_is_at_the_margin) {
  Fill(5);
  history.SetCurrentElementIndex(0);
  Open(400);
  Slide(700);
  EXPECT_EQ(Places()[4], 664.0);
  EXPECT_EQ(Strip().bracketOrigin.x, 408.0);
  EXPECT_EQ(Bracket(), 664.0);  // 692, held at the last
  EXPECT_EQ(Strip().mouseCorrection.x, -28.0);
}

TEST_F(RewindStripTest, a_strip_within_the_band_does_not_scroll) {
  Fill(3);
  Open(400);
  Slide(50);
  EXPECT_EQ(Places(), (Numbers{264, 332, 400}));
  EXPECT_EQ(Strip().bracketOrigin.x, 400.0);
}

// The fifth element comes to 96 + 38 = 134, and the 2 that it lacks to the bracket at 136 are kept back.
TEST_F(RewindStripTest, while_it_scrolls_the_element_snaps_to_the_bracket_and_the_rest_is_pending) {
  Fill(10);
  Open(400);
  Slide(100);
  Slide(62);
  EXPECT_TRUE(Strip().snapped);
  EXPECT_EQ(Bracket(), 136.0);
  EXPECT_EQ(Places()[4], 136.0);
  EXPECT_EQ(Strip().pendingShift, -2.0);
  EXPECT_EQ(Weights(), Except(4, 1.0));

  Slide(62);  // no further: the rest of the way is made up, and the bracket goes along
  EXPECT_EQ(Places()[4], 134.0);
  EXPECT_EQ(Bracket(), 134.0);
  EXPECT_EQ(Strip().pendingShift, 0.0);
}

TEST_F(RewindStripTest, snapped_it_scrolls_on_in_one_piece) {
  Fill(10);
  Open(400);
  Slide(100);
  Slide(62);
  // 10 more: 134 + 10 = 144 is 8 from 136, so it stays snapped and 8 are kept back; 10 more leave it.
  Slide(52);
  EXPECT_EQ(Places()[4], 136.0);
  EXPECT_EQ(Strip().pendingShift, 8.0);
  Slide(42);
  EXPECT_FALSE(Strip().snapped);
  EXPECT_EQ(Places()[4], 154.0);  // 134 + 20
  EXPECT_EQ(Strip().pendingShift, 0.0);
}

TEST_F(RewindStripTest, a_view_that_shrinks_while_open_keeps_the_bracket_on_the_strip) {
  Fill(10);
  Open(400);
  Slide(300);
  history.SetViewportSize(100, 600);
  for (double x = 300; x > -500; x -= 13) {
    Slide(x);
    EXPECT_GE(Bracket(), Places().front());
    EXPECT_LE(Bracket(), Places().back());
    EXPECT_NEAR(Sum(), 1.0, 1e-12);
  }
}

// ---- from one opening to the next ----

TEST_F(RewindStripTest, the_place_of_the_bracket_is_kept_from_one_opening_to_the_next) {
  Fill(4);
  Open(400);
  Slide(284);  // 20 after the second
  const Numbers weights = Weights();
  Close();
  EXPECT_EQ(history.GetCurrentElementIndex(), 1);
  OpenAt(500, 77);
  EXPECT_EQ(Places()[1], 480.0);
  EXPECT_EQ(Bracket(), 500.0);
  EXPECT_EQ(Weights(), weights);
  EXPECT_FALSE(Strip().snapped);
  EXPECT_EQ(Eyes()[1], 2.0);
  Slide(500);
  EXPECT_EQ(Weights(), weights);
}

TEST_F(RewindStripTest, a_step_lays_the_strip_out_anew) {
  Fill(4);
  Open(400);
  Slide(284);
  Close();
  history.ShiftBackOneElement();  // to the second itself
  OpenAt(500, 77);
  EXPECT_EQ(Places()[1], 500.0);
  EXPECT_EQ(Weights(), Except(1, 1.0));
  EXPECT_TRUE(Strip().snapped);
}

TEST_F(RewindStripTest, pending_way_and_correction_are_not_kept) {
  Fill(10);
  Open(400);
  Slide(100);
  Slide(62);
  Slide(2000);
  ASSERT_NE(Strip().mouseCorrection.x, 0.0);
  Strip().pendingShift = 3.0;
  Close();
  Open(400);
  EXPECT_EQ(Strip().mouseCorrection, Vector2());
  EXPECT_EQ(Strip().pendingShift, 0.0);
}

// ---- closing ----

TEST_F(RewindStripTest, closed_the_element_next_to_the_bracket_is_the_current_one) {
  Fill(4);
  Open(400);
  Slide(270);
  journal.Take();
  EXPECT_TRUE(Close());
  EXPECT_FALSE(history.IsTimelineOpen());
  EXPECT_EQ(history.GetCurrentElementIndex(), 1);
  EXPECT_EQ(journal.Take(), (Lines{"current 1", "closed"}));
}

TEST_F(RewindStripTest, closed_where_it_was_opened_nothing_is_chosen) {
  Fill(4);
  Open(400);
  Slide(398);
  journal.Take();
  Close();
  EXPECT_EQ(journal.Take(), Lines{"closed"});
}

TEST_F(RewindStripTest, an_opening_forgets_a_slide_that_was_not_closed) {
  Fill(4);
  Open(400);
  Slide(270);
  Open(400);
  Close();
  EXPECT_EQ(history.GetCurrentElementIndex(), 3);
}

// ---- any slide ----

TEST_F(RewindStripTest, the_bracket_never_leaves_the_strip_and_the_weights_are_one) {
  Random random;
  for (int round = 0; round < 300; ++round) {
    history.ClearHistory();
    history.SetThumbnailSize(static_cast<float>(random.Uniform(1, 200)));
    history.SetThumbnailGapSize(static_cast<float>(random.Uniform(0, 50)));
    history.SetViewportSize(random.Integer(0, 2000), 600);
    history.SetSnapEnabled(random.Integer(0, 3) > 0);
    Fill(random.Integer(1, 12));
    history.SetCurrentElementIndex(random.Integer(0, history.GetElementCount() - 1));
    Open(random.Integer(0, 2000));
    for (int step = 0; step < 30; ++step) {
      Slide(random.Integer(-500, 2500));
      const Numbers places = Places();
      ASSERT_GE(Bracket(), places.front());
      ASSERT_LE(Bracket(), places.back());
      ASSERT_NEAR(Sum(), 1.0, 1e-9);
      for (std::size_t i = 1; i < places.size(); ++i)
        ASSERT_NEAR(places[i] - places[i - 1], Strip().GetPitch(), 1e-6);
      for (const double weight : Weights()) ASSERT_TRUE(weight >= 0.0 && weight <= 1.0);
    }
    Close();
  }
}

TEST_F(RewindStripTest, snapped_means_that_one_element_weighs_all) {
  Random random;
  Fill(9);
  Open(400);
  int snapped = 0;
  for (int step = 0; step < 2000; ++step) {
    Slide(random.Integer(-500, 2500));
    const Numbers weights = Weights();
    const bool whole = std::count(weights.begin(), weights.end(), 1.0) == 1;
    ASSERT_EQ(Strip().snapped, whole) << step;
    snapped += whole;
  }
  EXPECT_GT(snapped, 100);
  EXPECT_LT(snapped, 1900);
}

// ---- sizes while open ----

TEST_F(RewindStripTest, another_size_while_open_spaces_the_elements_anew) {
  Fill(3);
  Open(400);
  history.SetThumbnailSize(30.0F);
  history.SetThumbnailGapSize(6.0F);
  EXPECT_EQ(Places(), (Numbers{264, 300, 336}));
  Slide(318);
  EXPECT_NEAR(Sum(), 1.0, 1e-12);
}

TEST_F(RewindStripTest, an_element_that_comes_while_open_stands_at_the_end) {
  Fill(2);
  Open(400);
  history.AddHistoryElement(At(3), nullptr);
  EXPECT_EQ(Places(), (Numbers{332, 400, 468}));
  history.ClearHistory();
  history.AddHistoryElement(At(4), nullptr);
  EXPECT_EQ(Places(), Numbers{400});
}

TEST_F(RewindStripTest, without_a_size_all_elements_share) {
  history.SetThumbnailSize(0.0F);
  history.SetThumbnailGapSize(0.0F);
  Fill(4);
  Open(400);
  Slide(400);
  EXPECT_EQ(Weights(), (Numbers{0.25, 0.25, 0.25, 0.25}));
}
