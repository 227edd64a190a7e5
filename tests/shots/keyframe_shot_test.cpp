#include "shots/keyframe_shot.h"

#include <algorithm>

#include "shots/shot_steps.h"

using namespace Korvane;
using oracle::From;
using oracle::To;
using oracle::Vec;

namespace {

using Keyframes = std::vector<CameraParameters>;
using Times = std::vector<double>;

// The eyes stand on the x axis, so an eye's x tells where the path has come.
CameraParameters At(double x) {
  CameraParameters camera = LookAt({x, 0, 10}, {x, 0, 0}, {0, 1, 0});
  camera.page_scale = x;
  return camera;
}

KeyframeShotParameters Record(const Keyframes& keyframes, const Times& times = {}, double duration = 2.0) {
  return KeyframeShotParameters{keyframes, times, duration};
}

double PlaceAt(MemoryHub& hub, const KeyframeShotParameters& record, double fraction) {
  return StepAt(hub, record, fraction).camera.eye.x;
}

// Between keyframes the projection and the blend stay those of the camera.
CameraParameters Expected(const CameraParameters& camera, const CameraParameters& a,
                          const CameraParameters& b, double weight) {
  CameraParameters expected = camera;
  expected.eye = To(oracle::Mix(weight, a.eye, b.eye));
  expected.centre = To(oracle::Mix(weight, a.centre, b.centre));
  expected.pivot = To(oracle::Mix(weight, a.pivot, b.pivot));
  expected.up = To(oracle::Mix(weight, a.up, b.up).normalized());
  oracle::MixLens(weight, a, b, expected);
  return expected;
}

}  // namespace

TEST(KeyframeShot, one_keyframe_gives_that_keyframe_at_every_step) {
  MemoryHub hub(At(5));
  const CameraParameters only = WithMarks(At(77));
  for (const Times& times : {Times(), Times{0.0}, Times{0.5}, Times{1.0}}) {
    for (const double fraction : {0.0, 0.3, 0.5, 0.9, 1.0}) {
      const Step step = StepAt(hub, Record({only}, times), fraction);
      EXPECT_TRUE(SameBits(step.camera, only)) << fraction;
      EXPECT_EQ(step.goesOn, fraction < 1.0);
    }
  }
}

TEST(KeyframeShot, an_empty_list_of_times_spreads_the_keyframes_evenly_over_the_duration) {
  MemoryHub hub;
  const KeyframeShotParameters record = Record({At(0), At(10), At(30), At(70), At(80)});
  const double places[] = {0, 5, 10, 20, 30, 50, 70, 75, 80};
  for (int eighth = 0; eighth <= 8; ++eighth) {
    EXPECT_NEAR(PlaceAt(hub, record, eighth / 8.0), places[eighth], 1e-13) << eighth;
  }
}

TEST(KeyframeShot, runs_linearly_and_does_not_ease) {
  MemoryHub hub;
  const Step step = StepAt(hub, Record({At(0), At(100)}), 0.25);
  EXPECT_NEAR(step.camera.eye.x, 25, 1e-13);
  EXPECT_EQ(step.unitTime, 0.25);
}

TEST(KeyframeShot, times_stretch_the_spans_and_the_search_walks_both_ways) {
  MemoryHub hub;
  // Evenly spread the guess for a unit time t is floor(4 t). With early times it must walk up, with late
  // ones down.
  const Keyframes keyframes = {At(0), At(10), At(20), At(30), At(40)};
  const KeyframeShotParameters early = Record(keyframes, {0.0, 0.0625, 0.125, 0.25, 1.0});
  EXPECT_NEAR(PlaceAt(hub, early, 0.03125), 5, 1e-13);
  EXPECT_NEAR(PlaceAt(hub, early, 0.1875), 25, 1e-13);  // the guess is 0, the span 2
  EXPECT_NEAR(PlaceAt(hub, early, 0.625), 35, 1e-13);   // the guess is 2, the span 3
  const KeyframeShotParameters late = Record(keyframes, {0.0, 0.75, 0.875, 0.9375, 1.0});
  EXPECT_NEAR(PlaceAt(hub, late, 0.375), 5, 1e-13);     // the guess is 1, the span 0
  EXPECT_NEAR(PlaceAt(hub, late, 0.8125), 15, 1e-13);   // the guess is 3, the span 1
  EXPECT_NEAR(PlaceAt(hub, late, 0.96875), 35, 1e-13);  // the guess is 3, the span 3
}

TEST(KeyframeShot, a_time_met_exactly_gives_the_whole_keyframe) {
  CameraParameters middle = WithMarks(At(10));
  middle.projection_type = CameraParameters::ProjectionType::Orthographic;
  MemoryHub hub(At(5));
  for (const Times& times : {Times(), Times{0.0, 0.5, 1.0}}) {
    EXPECT_TRUE(SameBits(StepAt(hub, Record({At(0), middle, At(20)}, times), 0.5).camera, middle));
  }
  EXPECT_TRUE(SameBits(StepAt(hub, Record({At(0), middle, At(20)}, {0.0, 0.75, 1.0}), 0.75).camera, middle));
}

TEST(KeyframeShot, between_keyframes_projection_wish_and_blend_stay_those_of_the_camera) {
  CameraParameters orthographic = WithMarks(At(10));
  orthographic.projection_type = CameraParameters::ProjectionType::Orthographic;
  MemoryHub hub(At(5));
  hub.view.projection_transition = 0.625;
  const Step step = StepAt(hub, Record({orthographic, orthographic}), 0.5);
  EXPECT_EQ(step.camera.projection_type, CameraParameters::ProjectionType::Perspective);
  EXPECT_FALSE(step.camera.perspective_with_ortho);
  EXPECT_EQ(step.camera.projection_transition, 0.625);
}

TEST(KeyframeShot, before_the_first_and_after_the_last_time_it_waits) {
  MemoryHub hub;
  const KeyframeShotParameters record = Record({At(10), At(20), At(30)}, {0.25, 0.5, 0.75});
  EXPECT_NEAR(PlaceAt(hub, record, 0.0), 10, 1e-13);
  EXPECT_NEAR(PlaceAt(hub, record, 0.125), 10, 1e-13);
  EXPECT_NEAR(PlaceAt(hub, record, 0.375), 15, 1e-13);
  EXPECT_NEAR(PlaceAt(hub, record, 0.875), 30, 1e-13);
  EXPECT_NEAR(PlaceAt(hub, record, 1.0), 30, 1e-13);
}

TEST(KeyframeShot, ends_on_the_last_keyframe) {
  MemoryHub hub;
  const CameraParameters last = WithMarks(At(20));
  for (const Times& times : {Times(), Times{0.0, 0.1, 1.0}}) {
    const Step step = StepAt(hub, Record({At(0), At(10), last}, times), 1.0);
    EXPECT_FALSE(step.goesOn);
    EXPECT_TRUE(SameBits(step.camera, last));
  }
}

TEST(KeyframeShot, keyframes_that_are_none_or_do_not_match_their_times_are_refused) {
  MemoryHub hub;
  EXPECT_FALSE(hub.BeginShot(Record({})));
  EXPECT_FALSE(hub.BeginShot(Record({}, {0.0})));
  EXPECT_FALSE(hub.BeginShot(Record({At(0), At(1)}, {0.0})));
  EXPECT_FALSE(hub.BeginShot(Record({At(0)}, {0.0, 1.0})));
  EXPECT_FALSE(hub.IsShotActive());
}

TEST(KeyframeShot, without_keyframes_a_step_writes_nothing) {
  KeyframeShot shot{KeyframeShotParameters()};
  CameraParameters camera = WithMarks(At(3));
  const CameraParameters before = camera;
  EXPECT_FALSE(shot.PerformShot(0.5, camera));
  EXPECT_TRUE(SameBits(camera, before));
}

TEST(KeyframeShot, stepped_back_before_its_start_it_shows_the_first_keyframe) {
  MemoryHub hub;
  for (const Times& times : {Times(), Times{0.0, 0.5, 1.0}}) {
    ASSERT_TRUE(hub.BeginShot(Record({At(10), At(20), At(30)}, times)));
    hub.AdvanceActiveShot(-5.0);
    const Step step = StepShot(hub, 0.0);
    EXPECT_TRUE(step.goesOn);
    EXPECT_NEAR(step.camera.eye.x, 10, 1e-13);
  }
}

TEST(KeyframeShot, times_out_of_order_never_leave_the_list) {
  Random random;
  for (int i = 0; i < 10000; ++i) {
    const int count = random.Integer(1, 6);
    Keyframes keyframes;
    Times times;
    for (int k = 0; k < count; ++k) {
      keyframes.push_back(At(k));
      times.push_back(random.Uniform(-1.0, 2.0));
    }
    MemoryHub hub(At(2));
    const double place = PlaceAt(hub, Record(keyframes, times), random.Uniform(0.0, 1.1));
    ASSERT_GE(place, 0.0);
    ASSERT_LE(place, count - 1);
  }
}

TEST(KeyframeShot, random_paths_are_linear_between_their_neighbours) {
  Random random;
  for (int i = 0; i < 10000; ++i) {
    const auto count = static_cast<std::size_t>(random.Integer(2, 7));
    Keyframes keyframes;
    Times times = {0.0, 1.0};
    for (std::size_t k = 0; k < count; ++k) {
      keyframes.push_back(WithMarks(RandomCamera(random)));
      if (k >= 2) times.push_back(random.Uniform(0.0, 1.0));
    }
    std::sort(times.begin(), times.end());
    const bool timed = random.Coin();
    if (!timed) {
      for (std::size_t k = 0; k < count; ++k) {
        times[k] = static_cast<double>(k) / static_cast<double>(count - 1);
      }
    }
    const double t = random.Uniform(0.0, 1.0);
    const auto next =
        static_cast<std::size_t>(std::upper_bound(times.begin(), times.end(), t) - times.begin());
    ASSERT_GT(next, 0U);
    ASSERT_LT(next, count);
    const double weight = (t - times[next - 1]) / (times[next] - times[next - 1]);

    MemoryHub hub(RandomCamera(random));
    const Step step = StepAt(hub, Record(keyframes, timed ? times : Times()), t);
    ASSERT_TRUE(IsNear(step.camera, Expected(hub.view, keyframes[next - 1], keyframes[next], weight), 1e-7))
        << i;
  }
}
