// What a history keeps: recording, adding, changing, removing, stepping, and whom it tells.
#include <limits>

#include "story/history/rewind_scene.h"
#include "support/virtual_slot.h"

using namespace Korvane;

// ---- the beginning ----

struct RewindElementsTest : RewindScene {};

TEST_F(RewindElementsTest, begins_empty_with_these_defaults) {
  RewindHistory fresh;
  EXPECT_EQ(fresh.GetElementCount(), 0);
  EXPECT_TRUE(fresh.IsTimelineEmpty());
  EXPECT_FALSE(fresh.IsTimelineOpen());
  EXPECT_EQ(fresh.GetMaxHistorySize(), 100U);
  EXPECT_TRUE(fresh.GetSnapEnabled());
  EXPECT_TRUE(fresh.GetRecordEnabled());
  EXPECT_TRUE(RewindHistory::GetAngularInterpolation());
  EXPECT_EQ(fresh.GetBracketPosition(), Vector2());
  const RewindHistory::HistoryElement element;
  EXPECT_EQ(element.thumbnail, nullptr);
  EXPECT_EQ(element.bounds.center, Vector2());
  EXPECT_EQ(element.bounds.halfExtent, Vector2());
  EXPECT_EQ(element.weight, 0.0);
  EXPECT_FALSE(element.outsideView);
}

TEST_F(RewindElementsTest, the_strip_begins_with_these_defaults) {
  const RewindStrip strip;
  EXPECT_EQ(strip.thumbnailSize, 0.0F);
  EXPECT_EQ(strip.thumbnailGapSize, 0.0F);
  EXPECT_EQ(strip.viewportWidth, 0);
  EXPECT_EQ(strip.viewportHeight, 0);
  EXPECT_FALSE(strip.snapped);
  EXPECT_FALSE(strip.layoutStale);
  EXPECT_EQ(strip.pendingShift, 0.0);
  for (const Vector2& zero : {strip.bracketOrigin, strip.bracketPosition, strip.scrollLeft, strip.scrollRight,
                              strip.openPosition, strip.mouseCorrection, strip.bracketOffset}) {
    EXPECT_EQ(zero, Vector2());
  }
}

TEST_F(RewindElementsTest, the_current_index_of_an_empty_history_is_minus_one) {
  EXPECT_EQ(history.GetCurrentElementIndex(), -1);
  CameraParameters camera = At(7);
  EXPECT_FALSE(history.GetTransitionCamera(camera));
  EXPECT_FALSE(history.GetElementCamera(0, camera));
  EXPECT_FALSE(history.SetCurrentElementIndex(0));
  EXPECT_FALSE(history.ShiftBackOneElement());
  EXPECT_FALSE(history.ShiftForwardOneElement());
  EXPECT_FALSE(history.UpdateCurrentElement(At(1)));
  EXPECT_FALSE(history.UpdateLastElement(At(1)));
  EXPECT_EQ(history.RemoveHistoryElements(1), 0);
  EXPECT_EQ(history.GetElementThumbnail(0), nullptr);
  EXPECT_EQ(camera.eye.x, 7.0);
  EXPECT_TRUE(journal.lines.empty());
}

TEST(RewindHistoryObserver, has_its_operations_in_this_order) {
  using O = RewindHistoryObserver;
  const int slots[] = {
      VirtualSlot(&O::OnCurrentElementChanged), VirtualSlot(&O::OnElementAdded),
      VirtualSlot(&O::OnElementUpdated),        VirtualSlot(&O::OnElementRemoved),
      VirtualSlot(&O::OnHistoryCleared),        VirtualSlot(&O::OnTimelineClosed),
      VirtualSlot(&O::OnTimelineOpened),        VirtualSlot(&O::OnTimelineSlid),
  };
  int expected = 2;  // after the destructor
  for (const int slot : slots) EXPECT_EQ(slot, expected++);
}

TEST_F(RewindElementsTest, null_is_no_observer_and_one_that_left_hears_nothing) {
  EXPECT_FALSE(history.AddObserver(nullptr));
  EXPECT_TRUE(history.AddObserver(&listener));
  history.RemoveObserver(&listener);
  history.RemoveObserver(nullptr);
  Fill(1);
  history.AddHistoryElement(At(2), nullptr);
  EXPECT_TRUE(journal.lines.empty());
}

// ---- equality ----

TEST_F(RewindElementsTest, cameras_are_equal_by_the_part_of_up_across_the_view) {
  const CameraParameters upright = At(1);
  CameraParameters leaning = upright;
  leaning.up = {0, 0.5, -3};  // along the view, which is -z, it counts nothing
  EXPECT_FALSE(hub.CheckCamerasEqual(&leaning, &upright));
  EXPECT_TRUE(history.CamerasAreEqual(leaning, At(1)));
  leaning.up = {0.5, 0.5, 0};
  EXPECT_FALSE(history.CamerasAreEqual(leaning, At(1)));
  EXPECT_EQ(leaning.up, Vector3(0.5, 0.5, 0));
}

TEST_F(RewindElementsTest, cameras_are_equal_only_with_the_same_wish_for_projection) {
  CameraParameters other = At(1);
  other.perspective_with_ortho = !other.perspective_with_ortho;
  EXPECT_FALSE(history.CamerasAreEqual(At(1), other));
  EXPECT_TRUE(history.CamerasAreEqual(other, other));
}

TEST_F(RewindElementsTest, an_up_along_the_view_counts_as_none) {
  CameraParameters degenerate = At(1);
  CameraParameters none = At(1);
  degenerate.up = {0, 0, 4};
  none.up = {0, 0, 0};
  EXPECT_TRUE(history.CamerasAreEqual(degenerate, none));
}

TEST_F(RewindElementsTest, without_a_hub_nothing_is_equal_and_nothing_out_of_sight) {
  EXPECT_TRUE(history.IsSceneOutsideView(At(-1)));
  EXPECT_FALSE(history.IsSceneOutsideView(At(1)));
  history.SetKorvane(nullptr);
  EXPECT_FALSE(history.CamerasAreEqual(At(1), At(1)));
  EXPECT_FALSE(history.IsSceneOutsideView(At(-1)));
}

// ---- adding ----

TEST_F(RewindElementsTest, an_added_element_is_the_last_and_the_current_one) {
  EXPECT_EQ(history.AddHistoryElement(At(1), nullptr), 0);
  EXPECT_EQ(history.AddHistoryElement(At(2), nullptr), 1);
  EXPECT_EQ(history.GetCurrentElementIndex(), 1);
  EXPECT_EQ(journal.Take(), (Lines{"added 0 at 1", "added 1 at 2"}));
  CameraParameters camera;
  EXPECT_TRUE(history.GetTransitionCamera(camera));
  EXPECT_TRUE(SameBits(camera, At(2)));
  EXPECT_FALSE(history.GetElementCamera(2, camera));
  EXPECT_FALSE(history.GetElementCamera(-1, camera));
}

TEST_F(RewindElementsTest, the_101st_element_pushes_out_the_first) {
  Fill(100);
  EXPECT_EQ(history.AddHistoryElement(At(101), nullptr), 99);
  EXPECT_EQ(history.GetElementCount(), 100);
  EXPECT_EQ(Eyes().front(), 2.0);
  EXPECT_EQ(Eyes().back(), 101.0);
  EXPECT_EQ(history.GetCurrentElementIndex(), 99);
  EXPECT_EQ(history.GetParts().elements.GetCurrent(), 99);
  EXPECT_EQ(journal.Take(), (Lines{"removed 0", "current 98", "added 99 at 101"}));
  EXPECT_EQ(renderer.GetLiveIconCount(), 100);
}

TEST_F(RewindElementsTest, a_history_of_one_begins_anew_with_each_element) {
  history.SetMaxHistorySize(1);
  history.AddHistoryElement(At(1), nullptr);
  EXPECT_EQ(history.AddHistoryElement(At(2), nullptr), 0);
  EXPECT_EQ(journal.Take(), (Lines{"added 0 at 1", "cleared", "added 0 at 2"}));
}

// ---- recording ----

TEST_F(RewindElementsTest, the_first_move_leaves_its_two_ends) {
  EXPECT_TRUE(Move(1, 2));
  EXPECT_EQ(Eyes(), (Numbers{1, 2}));
  EXPECT_EQ(journal.Take(), (Lines{"added 0 at 1", "added 1 at 2"}));
}

TEST_F(RewindElementsTest, a_move_from_where_the_last_one_ended_adds_one) {
  Move(1, 2);
  EXPECT_TRUE(Move(2, 3));
  EXPECT_EQ(Eyes(), (Numbers{1, 2, 3}));
}

TEST_F(RewindElementsTest, a_move_that_ends_where_it_began_adds_no_element) {
  Move(1, 2);
  journal.Take();
  EXPECT_TRUE(Move(2, 2));
  EXPECT_EQ(Eyes(), (Numbers{1, 2}));
  EXPECT_TRUE(journal.lines.empty());
}

TEST_F(RewindElementsTest, a_camera_that_changed_outside_of_records_is_taken_at_the_next_begin) {
  Move(1, 2);
  journal.Take();
  renderer.ClearCalls();
  history.BeginElementRecord(At(5));
  EXPECT_EQ(Eyes(), (Numbers{1, 5}));
  EXPECT_EQ(journal.Take(), Lines{"updated 1 at 5"});
  EXPECT_EQ(renderer.TakeCalls(), (Lines{"DestroyIcon(2)", "CreateSceneScreenshot(64, 64, (5, 0, 5))"}));
}

TEST_F(RewindElementsTest, a_move_after_a_rewind_removes_what_came_after_the_current_element) {
  Fill(5);
  history.SetCurrentElementIndex(1);
  journal.Take();
  EXPECT_TRUE(Move(2, 9));
  EXPECT_EQ(Eyes(), (Numbers{1, 2, 9}));
  EXPECT_EQ(journal.Take(), (Lines{"removed 4", "removed 3", "removed 2", "added 2 at 9"}));
  EXPECT_EQ(renderer.GetLiveIconCount(), 3);
}

TEST_F(RewindElementsTest, nothing_is_recorded_while_the_strip_is_open) {
  Fill(3);
  Open(400);
  journal.Take();
  EXPECT_FALSE(history.BeginElementRecord(At(9)));
  EXPECT_FALSE(history.EndElementRecord(At(10)));
  EXPECT_FALSE(history.UpdateCurrentElement(At(9)));
  EXPECT_FALSE(history.UpdateLastElement(At(9)));
  EXPECT_FALSE(history.SetCurrentElementIndex(0));
  EXPECT_EQ(history.RemoveHistoryElements(1), 0);
  EXPECT_EQ(history.RemoveHistoryElements(3), 0);
  EXPECT_EQ(Eyes(), (Numbers{1, 2, 3}));
  EXPECT_TRUE(journal.lines.empty());
}

TEST_F(RewindElementsTest, a_move_that_began_while_recording_was_off_is_not_recorded) {
  Fill(1);
  history.SetRecordEnabled(false);
  EXPECT_FALSE(history.GetRecordEnabled());
  EXPECT_FALSE(history.BeginElementRecord(At(1)));
  history.SetRecordEnabled(true);
  EXPECT_FALSE(history.EndElementRecord(At(2)));
  EXPECT_EQ(Eyes(), Numbers{1});
  EXPECT_TRUE(Move(1, 2));  // the end has armed the next
  EXPECT_EQ(Eyes(), (Numbers{1, 2}));
}

TEST_F(RewindElementsTest, a_move_that_ends_while_recording_is_off_is_not_recorded) {
  Fill(1);
  EXPECT_TRUE(history.BeginElementRecord(At(1)));
  history.SetRecordEnabled(false);
  EXPECT_FALSE(history.EndElementRecord(At(2)));
  history.SetRecordEnabled(true);
  EXPECT_TRUE(history.EndElementRecord(At(3)));
  EXPECT_EQ(Eyes(), (Numbers{1, 3}));
}

TEST_F(RewindElementsTest, an_element_recorded_with_the_scene_out_of_sight_is_replaced) {
  Fill(1);
  Move(1, -2);  // out of sight
  journal.Take();
  EXPECT_TRUE(Move(-2, 3));
  EXPECT_EQ(Eyes(), (Numbers{1, 3}));
  EXPECT_EQ(journal.Take(), (Lines{"removed 1", "added 1 at 3"}));
  EXPECT_EQ(history.GetCurrentElementIndex(), 1);
  EXPECT_EQ(renderer.GetLiveIconCount(), 2);
}

TEST_F(RewindElementsTest, a_lonely_element_out_of_sight_is_replaced_as_well) {
  history.AddHistoryElement(At(-1), nullptr);
  journal.Take();
  Move(-1, 4);
  EXPECT_EQ(Eyes(), Numbers{4});
  EXPECT_EQ(journal.Take(), (Lines{"removed 0", "added 0 at 4"}));
}

TEST_F(RewindElementsTest, a_sample_is_free) {
  Fill(2);
  EXPECT_TRUE(history.AddElementSubrecord(At(50)));
  EXPECT_EQ(Eyes(), (Numbers{1, 2}));
  EXPECT_TRUE(journal.lines.empty());
  EXPECT_TRUE(renderer.GetCalls().empty());
}

// A slide leaves the bracket after the middle element; the move sets out from the one behind it.
TEST_F(RewindElementsTest, a_move_from_a_bracket_between_two_elements_sets_out_from_the_later_one) {
  Fill(4);
  Open(400);  // 196, 264, 332, 400
  Slide(284);
  Close();
  ASSERT_EQ(history.GetCurrentElementIndex(), 1);
  ASSERT_EQ(Strip().bracketOffset.x, -20.0);  // 264 - 284
  journal.Take();
  EXPECT_TRUE(history.BeginElementRecord(At(2.3)));
  EXPECT_EQ(journal.Take(), (Lines{"current 2", "removed 3", "updated 2 at 2.3"}));
  EXPECT_EQ(Eyes(), (Numbers{1, 2, 2.3}));
}

TEST_F(RewindElementsTest, a_move_from_a_bracket_before_its_element_sets_out_from_that) {
  Fill(4);
  Open(400);
  Slide(244);
  Close();
  ASSERT_EQ(history.GetCurrentElementIndex(), 1);
  ASSERT_EQ(Strip().bracketOffset.x, 20.0);
  journal.Take();
  history.BeginElementRecord(At(1.7));
  EXPECT_EQ(Eyes(), (Numbers{1, 1.7}));
  EXPECT_EQ(journal.Take(), (Lines{"removed 3", "removed 2", "updated 1 at 1.7"}));
}

TEST_F(RewindElementsTest, a_snapped_bracket_sets_out_from_its_element) {
  Fill(4);
  Open(400);
  Slide(300);
  Slide(265);  // within 4 of 264
  Close();
  ASSERT_TRUE(Strip().snapped);
  history.BeginElementRecord(At(2));
  EXPECT_EQ(Eyes(), (Numbers{1, 2}));
}

TEST_F(RewindElementsTest, a_bracket_that_counts_as_snapped_is_on_its_element_to_the_last_fraction) {
  Fill(4);
  history.SetCurrentElementIndex(1);
  Strip().layoutStale = false;
  Strip().bracketOffset.x = -1e-13;  // what rounding has left
  Strip().snapped = true;
  history.BeginElementRecord(At(2));
  EXPECT_EQ(Eyes(), (Numbers{1, 2}));
}

TEST_F(RewindElementsTest, without_a_hub_a_move_is_always_a_move) {
  history.SetKorvane(nullptr);
  EXPECT_TRUE(Move(1, 1));
  EXPECT_EQ(Eyes(), (Numbers{1, 1}));
}

// ---- changing ----

TEST_F(RewindElementsTest, an_equal_camera_changes_nothing_but_the_weight_and_the_layout) {
  Fill(2);
  List()[1].weight = 0.7;
  Strip().layoutStale = false;
  EXPECT_TRUE(history.UpdateHistoryElement(1, At(2)));
  EXPECT_EQ(List()[1].weight, 0.0);
  EXPECT_TRUE(Strip().layoutStale);
  EXPECT_TRUE(journal.lines.empty());
  EXPECT_TRUE(renderer.GetCalls().empty());
}

TEST_F(RewindElementsTest, an_index_out_of_range_adds_an_element) {
  Fill(1);
  EXPECT_TRUE(history.UpdateHistoryElement(1, At(2)));
  EXPECT_TRUE(history.UpdateHistoryElement(-1, At(3)));
  EXPECT_TRUE(history.UpdateHistoryElement(77, At(3)));  // also one that is equal to the last
  EXPECT_EQ(Eyes(), (Numbers{1, 2, 3, 3}));
}

TEST_F(RewindElementsTest, an_update_below_the_current_element_takes_the_current_one_along) {
  Fill(5);
  EXPECT_TRUE(history.UpdateHistoryElement(1, At(9)));
  EXPECT_EQ(Eyes(), (Numbers{1, 9}));
  EXPECT_EQ(history.GetCurrentElementIndex(), 1);
  Close();
  EXPECT_EQ(history.GetCurrentElementIndex(), 1);
}

TEST_F(RewindElementsTest, an_update_out_of_sight_is_not_told) {
  Fill(2);
  EXPECT_TRUE(history.UpdateHistoryElement(1, At(-5)));
  EXPECT_EQ(Eyes(), (Numbers{1, -5}));
  EXPECT_TRUE(journal.lines.empty());
  EXPECT_EQ(renderer.TakeCalls(), (Lines{"DestroyIcon(2)", "CreateSceneScreenshot(64, 64, (-5, 0, 5))"}));
}

TEST_F(RewindElementsTest, the_current_element_takes_a_camera_that_sees_the_scene) {
  Fill(3);
  history.SetCurrentElementIndex(1);
  journal.Take();
  EXPECT_FALSE(history.UpdateCurrentElement(At(-1)));
  EXPECT_EQ(Eyes(), (Numbers{1, 2, 3}));
  EXPECT_TRUE(history.UpdateCurrentElement(At(7)));
  EXPECT_EQ(Eyes(), (Numbers{1, 7}));
  EXPECT_EQ(journal.Take(), (Lines{"removed 2", "updated 1 at 7"}));
}

TEST_F(RewindElementsTest, the_last_element_is_updated_without_a_new_picture) {
  Fill(2);
  Strip().layoutStale = false;
  EXPECT_TRUE(history.UpdateLastElement(At(7)));
  EXPECT_EQ(Eyes(), (Numbers{1, 7}));
  EXPECT_EQ(journal.Take(), Lines{"updated 1 at 7"});
  EXPECT_EQ(renderer.TakeCalls(), Lines{"DestroyIcon(2)"});
  EXPECT_EQ(history.GetElementThumbnail(1), nullptr);
  EXPECT_TRUE(Strip().layoutStale);
}

TEST_F(RewindElementsTest, the_last_element_is_not_updated_where) {
  Fill(2);
  Strip().layoutStale = false;
  EXPECT_FALSE(history.UpdateLastElement(At(-1)));  // it would be out of sight
  EXPECT_TRUE(history.UpdateLastElement(At(2)));    // it is so already
  EXPECT_FALSE(Strip().layoutStale);
  history.SetCurrentElementIndex(0);
  journal.Take();
  EXPECT_FALSE(history.UpdateLastElement(At(7)));  // it is not the current one
  EXPECT_EQ(Eyes(), (Numbers{1, 2}));
  EXPECT_TRUE(journal.lines.empty());
}

// ---- removing ----

TEST_F(RewindElementsTest, the_oldest_go_first) {
  Fill(4);
  history.SetCurrentElementIndex(1);
  journal.Take();
  Strip().layoutStale = false;
  EXPECT_EQ(history.RemoveHistoryElements(3), 3);
  EXPECT_EQ(Eyes(), Numbers{4});
  // The current index goes down with each, as far as it can.
  EXPECT_EQ(journal.Take(), (Lines{"removed 0", "current 0", "removed 0", "removed 0"}));
  EXPECT_EQ(renderer.TakeCalls(), (Lines{"DestroyIcon(1)", "DestroyIcon(2)", "DestroyIcon(3)"}));
  EXPECT_EQ(history.GetCurrentElementIndex(), 0);
  EXPECT_TRUE(Strip().layoutStale);
}

TEST_F(RewindElementsTest, to_remove_all_is_to_clear) {
  Fill(3);
  EXPECT_EQ(history.RemoveHistoryElements(7), 3);
  EXPECT_EQ(journal.Take(), Lines{"cleared"});
  EXPECT_EQ(history.RemoveHistoryElements(1), 0);
  EXPECT_EQ(history.RemoveHistoryElements(0), 0);
  EXPECT_TRUE(journal.lines.empty());
}

TEST_F(RewindElementsTest, no_number_below_one_removes) {
  Fill(3);
  for (const int count : {0, -1, std::numeric_limits<int>::min()}) {
    EXPECT_EQ(history.RemoveHistoryElements(count), 0);
  }
  EXPECT_EQ(history.GetElementCount(), 3);
}

TEST_F(RewindElementsTest, cleared_it_is_empty_and_has_given_the_pictures_back) {
  Fill(3);
  history.ClearHistory();
  EXPECT_EQ(journal.Take(), Lines{"cleared"});
  EXPECT_EQ(history.GetElementCount(), 0);
  EXPECT_EQ(history.GetCurrentElementIndex(), -1);
  EXPECT_EQ(renderer.TakeCalls(), (Lines{"DestroyIcon(1)", "DestroyIcon(2)", "DestroyIcon(3)"}));
  EXPECT_EQ(renderer.GetLiveIconCount(), 0);
  history.ClearHistory();
  EXPECT_EQ(journal.Take(), Lines{"cleared"});
}

TEST_F(RewindElementsTest, an_element_can_be_asked_for_while_its_end_is_told) {
  Fill(2);
  double eye = 0.0;
  listener.onHear = [&](const std::string& what) {
    CameraParameters camera;
    if (what == "removed" && history.GetElementCamera(0, camera)) eye = camera.eye.x;
  };
  history.RemoveHistoryElements(1);
  EXPECT_EQ(eye, 1.0);
}

struct Limit {
  unsigned int before;
  unsigned int after;
  int count;  // elements before
  int left;
};

class RewindLimit : public RewindScene, public ::testing::WithParamInterface<Limit> {};

TEST_P(RewindLimit, removes_the_oldest_when_it_falls) {
  const Limit& limit = GetParam();
  history.SetMaxHistorySize(limit.before);
  Fill(limit.count);
  history.SetMaxHistorySize(limit.after);
  EXPECT_EQ(history.GetMaxHistorySize(), limit.after);
  EXPECT_EQ(history.GetElementCount(), limit.left);
  EXPECT_EQ(Eyes().back(), limit.count);
}

constexpr Limit LIMITS[] = {
    {100, 0, 5, 5},          // no limit removes nothing
    {100, 3, 5, 3},          // lower than before and than the count
    {100, 5, 5, 5},          // as many as there are
    {100, 6, 5, 5},          // lower than before, above the count
    {0, 3, 5, 3},            // no limit before
    {0, 0, 5, 5},            // none, before and after
    {5, 8, 5, 5},            // higher
    {5, 4294967295U, 5, 5},  // the highest
    {0, 4294967295U, 5, 5},  // the highest, from none
    {100, 1, 5, 1},
};

INSTANTIATE_TEST_SUITE_P(Rows, RewindLimit, ::testing::ValuesIn(LIMITS));

TEST_F(RewindElementsTest, without_a_limit_it_grows) {
  history.SetMaxHistorySize(0);
  Fill(150);
  EXPECT_EQ(history.GetElementCount(), 150);
}

TEST_F(RewindElementsTest, a_limit_that_falls_while_the_strip_is_open_removes_at_the_next_element) {
  Fill(5);
  Open(400);
  history.SetMaxHistorySize(2);
  EXPECT_EQ(history.GetElementCount(), 5);
  Close();
  history.AddHistoryElement(At(6), nullptr);
  EXPECT_EQ(Eyes(), (Numbers{5, 6}));
}

// ---- stepping ----

TEST_F(RewindElementsTest, steps_back_and_forward_to_the_ends) {
  Fill(3);
  Strip().layoutStale = false;
  EXPECT_FALSE(history.ShiftForwardOneElement());
  EXPECT_FALSE(Strip().layoutStale);
  EXPECT_TRUE(history.ShiftBackOneElement());
  EXPECT_TRUE(Strip().layoutStale);
  EXPECT_TRUE(history.ShiftBackOneElement());
  EXPECT_FALSE(history.ShiftBackOneElement());
  EXPECT_TRUE(history.ShiftForwardOneElement());
  EXPECT_EQ(journal.Take(), (Lines{"current 1", "current 0", "current 1"}));
}

TEST_F(RewindElementsTest, beside_the_current_element_the_first_step_back_goes_to_it) {
  Fill(4);
  Open(400);
  Slide(284);  // after the second, which stands at 264
  Close();
  journal.Take();
  EXPECT_TRUE(history.ShiftBackOneElement());
  EXPECT_EQ(history.GetCurrentElementIndex(), 1);
  EXPECT_TRUE(Strip().layoutStale);
  EXPECT_TRUE(journal.lines.empty());
  EXPECT_TRUE(history.ShiftBackOneElement());
  EXPECT_EQ(history.GetCurrentElementIndex(), 0);
}

TEST_F(RewindElementsTest, beside_the_current_element_the_first_step_forward_goes_to_it) {
  Fill(4);
  Open(400);
  Slide(244);  // before the second
  Close();
  EXPECT_TRUE(history.ShiftForwardOneElement());
  EXPECT_EQ(history.GetCurrentElementIndex(), 1);
  EXPECT_TRUE(history.ShiftForwardOneElement());
  EXPECT_EQ(history.GetCurrentElementIndex(), 2);
}

TEST_F(RewindElementsTest, a_step_away_from_the_bracket_goes_to_the_neighbour) {
  Fill(4);
  Open(400);
  Slide(284);
  Close();
  EXPECT_TRUE(history.ShiftForwardOneElement());
  EXPECT_EQ(history.GetCurrentElementIndex(), 2);
}

TEST_F(RewindElementsTest, an_element_is_chosen_by_its_index) {
  Fill(3);
  Strip().layoutStale = false;
  EXPECT_TRUE(history.SetCurrentElementIndex(2));  // as it is
  EXPECT_FALSE(Strip().layoutStale);
  EXPECT_FALSE(history.SetCurrentElementIndex(3));
  EXPECT_FALSE(history.SetCurrentElementIndex(-1));
  EXPECT_TRUE(journal.lines.empty());
  EXPECT_TRUE(history.SetCurrentElementIndex(0));
  EXPECT_TRUE(Strip().layoutStale);
  EXPECT_EQ(journal.Take(), Lines{"current 0"});
}

// ---- pictures ----

TEST_F(RewindElementsTest, each_element_has_one_picture_made_of_its_camera) {
  history.AddHistoryElement(At(1), nullptr);
  EXPECT_EQ(renderer.TakeCalls(), Lines{"CreateSceneScreenshot(64, 64, (1, 0, 5))"});
  history.UpdateThumbnails();
  EXPECT_TRUE(renderer.GetCalls().empty());
  DynamicIcon2D* const picture = history.GetElementThumbnail(0);
  ASSERT_NE(picture, nullptr);
  EXPECT_EQ(picture->GetWidth(), 64.0);
  EXPECT_EQ(picture->GetHeight(), 64.0);
}

TEST_F(RewindElementsTest, the_size_of_a_picture_is_cut_to_pixels) {
  history.SetThumbnailSize(48.75F);
  history.AddHistoryElement(At(1), nullptr);
  EXPECT_EQ(renderer.TakeCalls(), Lines{"CreateSceneScreenshot(48, 48, (1, 0, 5))"});
  EXPECT_EQ(history.GetElementThumbnail(0)->GetWidth(), 48.75);
}

TEST_F(RewindElementsTest, another_size_resizes_the_pictures_and_the_places) {
  Fill(2);
  history.SetThumbnailSize(100.0F);
  EXPECT_TRUE(renderer.GetCalls().empty());
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(history.GetElementThumbnail(i)->GetWidth(), 100.0);
    EXPECT_EQ(List()[static_cast<std::size_t>(i)].bounds.halfExtent, Vector2(50, 50));
  }
}

TEST_F(RewindElementsTest, a_picture_that_comes_with_the_element_is_sized_and_kept) {
  DynamicIcon2D* const given = renderer.CreateSceneScreenshot(10, 10, At(0));
  given->SetSize(10, 10);
  renderer.ClearCalls();
  history.AddHistoryElement(At(1), given);
  EXPECT_TRUE(renderer.GetCalls().empty());
  EXPECT_EQ(history.GetElementThumbnail(0), given);
  EXPECT_EQ(given->GetWidth(), 64.0);
  history.ClearHistory();
  EXPECT_EQ(renderer.GetLiveIconCount(), 0);
}

TEST_F(RewindElementsTest, a_picture_with_an_element_makes_none_that_others_lack) {
  renderer.FailAlways("CreateSceneScreenshot");
  Fill(1);
  renderer.Succeed("CreateSceneScreenshot");
  history.AddHistoryElement(At(2), renderer.CreateTooltip(L"a picture"));
  EXPECT_EQ(PictureCount(), 0);
  history.AddHistoryElement(At(3), nullptr);
  EXPECT_EQ(PictureCount(), 2);  // the first one's and its own
}

TEST_F(RewindElementsTest, a_picture_is_exchanged_and_the_one_of_before_given_back) {
  Fill(1);
  DynamicIcon2D* const other = renderer.CreateTooltip(L"a picture");
  renderer.ClearCalls();
  EXPECT_TRUE(history.SetElementThumbnail(0, other));
  EXPECT_EQ(renderer.TakeCalls(), Lines{"DestroyIcon(1)"});
  EXPECT_TRUE(history.SetElementThumbnail(0, other));
  EXPECT_TRUE(renderer.GetCalls().empty());
  EXPECT_EQ(other->GetWidth(), 64.0);
  EXPECT_TRUE(history.SetElementThumbnail(0, nullptr));
  EXPECT_EQ(history.GetElementThumbnail(0), nullptr);
  EXPECT_EQ(renderer.GetLiveIconCount(), 0);
  EXPECT_FALSE(history.SetElementThumbnail(1, nullptr));
  EXPECT_FALSE(history.SetElementThumbnail(-1, nullptr));
}

TEST_F(RewindElementsTest, a_renderer_that_cannot_make_a_picture_harms_nothing) {
  renderer.FailAlways("CreateSceneScreenshot");
  Move(1, 2);
  Open(400);
  Slide(366);
  history.Draw(hub.view);
  Close();
  EXPECT_EQ(history.GetElementThumbnail(1), nullptr);
  renderer.Succeed("CreateSceneScreenshot");
  history.UpdateThumbnails();
  EXPECT_NE(history.GetElementThumbnail(0), nullptr);
  EXPECT_NE(history.GetElementThumbnail(1), nullptr);
}

TEST_F(RewindElementsTest, without_a_renderer_there_are_no_pictures) {
  history.SetRenderer(nullptr);
  Fill(2);
  history.UpdateThumbnails();
  EXPECT_EQ(history.GetElementThumbnail(0), nullptr);
  history.SetRenderer(&renderer);
  history.UpdateThumbnails();
  EXPECT_EQ(PictureCount(), 2);
}

TEST_F(RewindElementsTest, no_picture_is_made_while_one_drags) {
  Fill(6);
  Open(400);
  renderer.ClearCalls();
  List()[2].thumbnail = nullptr;
  for (int x = 400; x > 0; x -= 7) Slide(x);
  history.Draw(hub.view);
  EXPECT_EQ(PictureCount(), 0);
}

TEST_F(RewindElementsTest, a_change_of_the_current_camera_costs_one_picture) {
  Fill(20);
  EXPECT_TRUE(Move(20, 21));
  EXPECT_EQ(PictureCount(), 1);
  Open(400);
  EXPECT_EQ(PictureCount(), 1);
}
