#include "korvane/shot_specification.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <optional>
#include <stdexcept>

#include "korvane/shot_parameters.h"
#include "support/allocation_counter.h"
#include "support/cameras.h"
#include "support/manual_platform.h"
#include "support/memory_hub.h"

using namespace Korvane;

namespace {

constexpr double NAN_VALUE = std::numeric_limits<double>::quiet_NaN();

/// Keeps what it is asked for, and begins nothing.
class AskedHub : public MemoryHub {
 public:
  using MemoryHub::BeginShot;
  AskedHub() : MemoryHub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0})) {}

  bool BeginShot(const TrackShotParameters& asked) override { return Keep(track, asked); }
  bool BeginShot(const ZoomShotParameters& asked) override { return Keep(zoom, asked); }
  bool BeginShot(const CraneShotParameters& asked) override { return Keep(crane, asked); }
  bool BeginShot(const LookShotParameters& asked) override { return Keep(look, asked); }
  bool BeginShot(const OrbitShotParameters& asked) override { return Keep(orbit, asked); }
  bool BeginShot(const PanZoomShotParameters& asked) override { return Keep(panZoom, asked); }
  bool BeginShot(const TransitionShotParameters& asked) override { return Keep(transition, asked); }
  bool BeginShot(const KeyframeShotParameters& asked) override { return Keep(keyframe, asked); }

  std::optional<TrackShotParameters> track;
  std::optional<ZoomShotParameters> zoom;
  std::optional<CraneShotParameters> crane;
  std::optional<LookShotParameters> look;
  std::optional<OrbitShotParameters> orbit;
  std::optional<PanZoomShotParameters> panZoom;
  std::optional<TransitionShotParameters> transition;
  std::optional<KeyframeShotParameters> keyframe;
  int count = 0;
  bool answer = true;

 private:
  template <class Parameters>
  bool Keep(std::optional<Parameters>& place, const Parameters& asked) {
    place = asked;
    ++count;
    return answer;
  }
};

/// A shot of a type that starts 8 before the centre (1, 2, 3), with a number of its own in each field.
ShotSpecification MakeShot(int type) {
  CameraParameters start = LookAt({1, 2, 11}, {1, 2, 3}, {0, 1, 0});
  start.pivot = Vector3(7, 7, 7);
  ShotSpecification shot(start);
  shot.SetShotType(static_cast<ShotSpecification::ShotType>(type));
  shot.SetCameraPosition(TARGET_CAM_MIDDLE);
  shot.SetDuration(4.5);
  shot.SetInOutDistance(2.0);
  shot.SetLeftRightAngle(30.0);
  shot.SetLeftRightDistance(6.0);
  shot.SetLookAtCenterOfInterest(true);
  shot.SetUpDownDistance(5.0);
  shot.SetUpDownAngle(-20.0);
  return shot;
}

TEST(ShotSpecification, begins_with_its_defaults) {
  const CameraParameters start = LookAt({1, 2, 3}, {4, 5, 6}, {0, 0, 1});
  const ShotSpecification shot(start);
  EXPECT_EQ(shot.GetCameraParameters().eye, Vector3(1, 2, 3));
  EXPECT_EQ(shot.GetCameraPosition(), 0);
  EXPECT_EQ(shot.GetDuration(), 3.0);
  EXPECT_EQ(shot.GetInOutDistance(), 0.0);
  EXPECT_EQ(shot.GetLeftRightAngle(), 0.0);
  EXPECT_EQ(shot.GetLeftRightDistance(), 0.0);
  EXPECT_FALSE(shot.GetLookAtCenterOfInterest());
  EXPECT_EQ(shot.GetName(), L"");
  EXPECT_EQ(shot.GetShotType(), 9);
  EXPECT_EQ(shot.GetTransitionType(), 0);
  EXPECT_EQ(shot.GetTransitionDuration(), 1.0);
  EXPECT_EQ(shot.GetUpDownDistance(), 0.0);
  EXPECT_EQ(shot.GetUpDownAngle(), 0.0);
  EXPECT_EQ(shot.GetRecordedElementCount(), 0U);
}

TEST(ShotSpecification, keeps_what_is_set) {
  ShotSpecification shot = MakeShot(4);
  shot.SetName(L"\u6a19\u984c \u05e9");
  shot.SetTransitionType(ShotSpecification::TRANSITION_CUT);
  shot.SetTransitionDuration(0.25);
  EXPECT_EQ(shot.GetCameraPosition(), 1);
  EXPECT_EQ(shot.GetDuration(), 4.5);
  EXPECT_EQ(shot.GetInOutDistance(), 2.0);
  EXPECT_EQ(shot.GetLeftRightAngle(), 30.0);
  EXPECT_EQ(shot.GetLeftRightDistance(), 6.0);
  EXPECT_TRUE(shot.GetLookAtCenterOfInterest());
  EXPECT_EQ(shot.GetName(), L"\u6a19\u984c \u05e9");
  EXPECT_EQ(shot.GetShotType(), 4);
  EXPECT_EQ(shot.GetTransitionType(), 2);
  EXPECT_EQ(shot.GetTransitionDuration(), 0.25);
  EXPECT_EQ(shot.GetUpDownDistance(), 5.0);
  EXPECT_EQ(shot.GetUpDownAngle(), -20.0);
}

TEST(ShotSpecification, ignores_numbers_and_cameras_that_are_none) {
  ShotSpecification shot = MakeShot(0);
  CameraParameters broken = shot.GetCameraParameters();
  broken.eye.x = NAN_VALUE;
  for (const double wild : {NAN_VALUE, std::numeric_limits<double>::infinity()}) {
    shot.SetDuration(wild);
    shot.SetInOutDistance(wild);
    shot.SetLeftRightAngle(wild);
    shot.SetLeftRightDistance(wild);
    shot.SetTransitionDuration(wild);
    shot.SetUpDownDistance(wild);
    shot.SetUpDownAngle(wild);
    shot.AddRecordedElement(shot.GetCameraParameters(), wild);
  }
  shot.SetCameraParameters(broken);
  shot.AddRecordedElement(broken, 1.0);
  EXPECT_EQ(shot.GetDuration(), 4.5);
  EXPECT_EQ(shot.GetInOutDistance(), 2.0);
  EXPECT_EQ(shot.GetLeftRightAngle(), 30.0);
  EXPECT_EQ(shot.GetLeftRightDistance(), 6.0);
  EXPECT_EQ(shot.GetTransitionDuration(), 1.0);
  EXPECT_EQ(shot.GetUpDownDistance(), 5.0);
  EXPECT_EQ(shot.GetUpDownAngle(), -20.0);
  EXPECT_EQ(shot.GetCameraParameters().eye, Vector3(1, 2, 11));
  EXPECT_EQ(shot.GetRecordedElementCount(), 0U);
  EXPECT_TRUE(ShotSpecification(broken).GetCameraParameters().IsFinite());
}

// ---- recorded elements ----

TEST(ShotSpecification, takes_recorded_elements_in_both_forms) {
  ShotSpecification shot = MakeShot(10);
  shot.AddRecordedElement(LookAt({1, 0, 0}, {0, 0, 0}, {0, 0, 1}), 0.5);
  shot.AddRecordedElement({LookAt({2, 0, 0}, {0, 0, 0}, {0, 0, 1}), 1.5});
  ASSERT_EQ(shot.GetRecordedElementCount(), 2U);
  EXPECT_EQ(shot.GetRecordedElement(0).camera.eye.x, 1.0);
  EXPECT_EQ(shot.GetRecordedElement(1).time, 1.5);
  EXPECT_THROW(shot.GetRecordedElement(2), std::out_of_range);
}

TEST(ShotSpecification, clearing_the_recorded_elements_keeps_their_storage) {
  ShotSpecification shot = MakeShot(10);
  const CameraParameters camera = shot.GetCameraParameters();
  shot.AddRecordedElement(camera, 0.0);
  shot.ClearRecordedElements();
  EXPECT_EQ(shot.GetRecordedElementCount(), 0U);
  const AllocationCounter counter;
  shot.AddRecordedElement(camera, 0.0);
  EXPECT_EQ(counter.GetAllocations(), 0U);
}

// ---- the move of each type ----

TEST(ShotSpecification, types_0_and_1_track) {
  for (const int type : {0, 1}) {
    AskedHub hub;
    EXPECT_TRUE(MakeShot(type).BeginShot(&hub));
    ASSERT_TRUE(hub.track.has_value());
    EXPECT_EQ(hub.track->direction, type == 0 ? 1 : 0);
    EXPECT_EQ(hub.track->anchor, 1);
    EXPECT_EQ(hub.track->duration, 4.5);
    EXPECT_EQ(hub.track->distance, 6.0);
    EXPECT_TRUE(hub.track->keepTarget);
  }
}

TEST(ShotSpecification, types_2_and_3_zoom_by_a_part_of_the_way_and_write_the_pivot) {
  for (const int type : {2, 3}) {
    AskedHub hub;
    ShotSpecification shot = MakeShot(type);
    EXPECT_TRUE(shot.BeginShot(&hub));
    ASSERT_TRUE(hub.zoom.has_value());
    EXPECT_EQ(hub.zoom->direction, type == 3 ? 1 : 0);
    EXPECT_EQ(hub.zoom->anchor, 1);
    EXPECT_EQ(hub.zoom->duration, 4.5);
    EXPECT_EQ(hub.zoom->amount, 2.0 / 8.0);
    EXPECT_EQ(shot.GetCameraParameters().pivot, Vector3(1, 2, 3));
  }
}

TEST(ShotSpecification, a_zoom_of_an_eye_on_its_centre_goes_nowhere) {
  AskedHub hub;
  ShotSpecification shot = MakeShot(2);
  CameraParameters start = shot.GetCameraParameters();
  start.eye = start.centre + Vector3(1.19e-7, 0, 0);
  shot.SetCameraParameters(start);
  shot.BeginShot(&hub);
  EXPECT_EQ(hub.zoom->amount, 0.0);
}

TEST(ShotSpecification, a_zoom_and_a_crane_over_the_least_way_still_divide) {
  constexpr double LEAST = 1.1920928955078125e-7;
  AskedHub hub;
  ShotSpecification zoom = MakeShot(2);
  CameraParameters start = zoom.GetCameraParameters();
  start.centre = Vector3(0, 0, 0);
  start.eye = Vector3(LEAST, 0, 0);
  zoom.SetCameraParameters(start);
  zoom.BeginShot(&hub);
  EXPECT_EQ(hub.zoom->amount, 2.0 / LEAST);
  ShotSpecification crane = MakeShot(4);
  crane.SetUpDownDistance(LEAST);
  crane.BeginShot(&hub);
  EXPECT_EQ(hub.crane->forwardRatio, 2.0 / LEAST);
}

TEST(ShotSpecification, types_4_and_5_crane) {
  for (const int type : {4, 5}) {
    AskedHub hub;
    EXPECT_TRUE(MakeShot(type).BeginShot(&hub));
    ASSERT_TRUE(hub.crane.has_value());
    EXPECT_EQ(hub.crane->direction, type == 4 ? 1 : 0);
    EXPECT_EQ(hub.crane->anchor, 1);
    EXPECT_EQ(hub.crane->duration, 4.5);
    EXPECT_EQ(hub.crane->height, 5.0);
    EXPECT_EQ(hub.crane->sidewaysDistance, 6.0);
    EXPECT_EQ(hub.crane->forwardRatio, 2.0 / 5.0);
    EXPECT_TRUE(hub.crane->keepTarget);
  }
}

TEST(ShotSpecification, a_crane_without_height_or_downward_has_the_ratio_1) {
  for (const double height : {0.0, 1.19e-7, -5.0}) {
    AskedHub hub;
    ShotSpecification shot = MakeShot(4);
    shot.SetUpDownDistance(height);
    shot.BeginShot(&hub);
    EXPECT_EQ(hub.crane->height, height);
    EXPECT_EQ(hub.crane->forwardRatio, 1.0);
  }
}

TEST(ShotSpecification, type_6_looks_by_the_angles_negated) {
  AskedHub hub;
  EXPECT_TRUE(MakeShot(6).BeginShot(&hub));
  ASSERT_TRUE(hub.look.has_value());
  EXPECT_EQ(hub.look->anchor, 1);
  EXPECT_EQ(hub.look->duration, 4.5);
  EXPECT_EQ(hub.look->horizontalAngle, -30.0);
  EXPECT_EQ(hub.look->verticalAngle, 20.0);
}

TEST(ShotSpecification, type_7_orbits) {
  AskedHub hub;
  EXPECT_TRUE(MakeShot(7).BeginShot(&hub));
  ASSERT_TRUE(hub.orbit.has_value());
  EXPECT_EQ(hub.orbit->anchor, 1);
  EXPECT_EQ(hub.orbit->duration, 4.5);
  EXPECT_EQ(hub.orbit->horizontalAngle, 30.0);
  EXPECT_EQ(hub.orbit->verticalAngle, -20.0);
}

TEST(ShotSpecification, type_8_pans_and_zooms) {
  AskedHub hub;
  EXPECT_TRUE(MakeShot(8).BeginShot(&hub));
  ASSERT_TRUE(hub.panZoom.has_value());
  EXPECT_EQ(hub.panZoom->anchor, 1);
  EXPECT_EQ(hub.panZoom->duration, 4.5);
  EXPECT_EQ(hub.panZoom->sidewaysDistance, 6.0);
  EXPECT_EQ(hub.panZoom->upwardDistance, 5.0);
  EXPECT_EQ(hub.panZoom->zoomDistance, 8.0 * 2.0);
}

TEST(ShotSpecification, type_9_and_a_walk_of_nothing_stand_still) {
  for (const int type : {9, 10}) {
    AskedHub hub;
    EXPECT_TRUE(MakeShot(type).BeginShot(&hub));
    ASSERT_TRUE(hub.transition.has_value());
    EXPECT_EQ(hub.transition->targetCamera.eye, Vector3(1, 2, 11));
    EXPECT_EQ(hub.transition->easeEnd, 1.0);
    EXPECT_EQ(hub.transition->duration, 4.5);
  }
}

TEST(ShotSpecification, type_10_plays_the_recorded_walk_by_its_times) {
  AskedHub hub;
  ShotSpecification shot = MakeShot(10);
  for (const double time : {0.0, 0.5, 2.0})
    shot.AddRecordedElement(LookAt({time, 0, 10}, {0, 0, 0}, {0, 1, 0}), time);
  EXPECT_TRUE(shot.BeginShot(&hub));
  ASSERT_TRUE(hub.keyframe.has_value());
  EXPECT_EQ(hub.keyframe->duration, 4.5);
  ASSERT_EQ(hub.keyframe->keyframes.size(), 3U);
  EXPECT_EQ(hub.keyframe->keyframes[1].eye.x, 0.5);
  EXPECT_EQ(hub.keyframe->times, (std::vector<double>{0.0, 0.25, 1.0}));
}

TEST(ShotSpecification, a_recorded_walk_without_time_has_no_key_that_is_no_number) {
  AskedHub hub;
  ShotSpecification shot = MakeShot(10);
  shot.AddRecordedElement(shot.GetCameraParameters(), 0.0);
  EXPECT_TRUE(shot.BeginShot(&hub));
  for (const double time : hub.keyframe->times) EXPECT_TRUE(std::isfinite(time));
}

TEST(ShotSpecification, answers_what_the_hub_answers) {
  AskedHub hub;
  hub.answer = false;
  for (int type = 0; type <= 10; ++type) EXPECT_FALSE(MakeShot(type).BeginShot(&hub)) << type;
  EXPECT_EQ(hub.count, 11);
}

TEST(ShotSpecification, begins_nothing_without_a_hub_or_a_type) {
  AskedHub hub;
  EXPECT_FALSE(MakeShot(9).BeginShot(nullptr));
  EXPECT_FALSE(MakeShot(11).BeginShot(&hub));
  EXPECT_FALSE(MakeShot(-1).BeginShot(&hub));
  EXPECT_EQ(hub.count, 0);
}

// Through the real hub: the move begins, and the view is left to whoever plays.
TEST(ShotSpecification, leaves_the_camera_of_the_view_to_the_caller) {
  const ManualPlatform platform;
  for (int type = 0; type <= 10; ++type) {
    MemoryHub hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}));
    ShotSpecification shot = MakeShot(type);
    if (type == 10) shot.AddRecordedElement(shot.GetCameraParameters(), 1.0);
    EXPECT_TRUE(shot.BeginShot(&hub)) << type;
    EXPECT_TRUE(hub.IsShotActive()) << type;
    EXPECT_EQ(hub.view.eye, Vector3(0, 0, 10)) << type;
  }
}

}  // namespace
