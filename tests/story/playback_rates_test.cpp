// A story is the same film at 30, 60 and 144 frames a second: each frame is compared with the frame of the
// same millisecond of the same shot in a playback of a thousand frames a second.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <map>
#include <string>
#include <utility>

#include "korvane/math.h"
#include "story/open_storyboard.h"

using namespace Korvane;

namespace {

constexpr unsigned FINEST = 1000;   // frames a second
constexpr double SECONDS = 1.0005;  // of each shot: at no rate does it end with a frame
constexpr long LAST = 1000;         // the last millisecond before that

// A frame shows an earlier moment of the way than its own by no more than what the hub takes for no change:
// by the square root of the tolerance in a point, by the tolerance in a width. So of two frames of the same
// moment the one lies between the other and that moment, no further from it than this; and a thousandth more
// for the rounding of the sums of a thousand steps, each of less than 2e-16, at speeds below 100 a second.
const double LEAST_WAY = 1.001 * std::sqrt(Math::EPSILON_VALUE);
constexpr double LEAST_WIDTH = 1.001 * Math::EPSILON_VALUE;
// Of a fade in: the same rounding, divided by fades of a tenth of a second and more.
constexpr double LEAST_ALPHA = 1e-11;

using Moment = std::pair<std::uint64_t, long>;  // the number of the shot in the film; its milliseconds

/// What was seen at each moment.
struct Film {
  std::map<Moment, CameraParameters> views;  // by the begins of frames
  std::map<Moment, FadeOverlay> fades;       // by their ends
  std::map<std::uint64_t, CameraParameters> ends;
};

long GetMilliseconds(const CameraOperations& hub) {
  const Shot* const move = hub.GetActiveShot();
  return move != nullptr ? std::lround(move->GetElapsedTime() * 1000.0) : -1;
}

/// A story of two sequences with a shot of each type, every other one with a fade through black or white.
class AllTypes : public StoryboardStage {
 public:
  explicit AllTypes(bool orthographic) {
    hub.view = MakeCamera(orthographic, 0);
    board->SetVisible(false);
    Sequence* const first = AddSequence();
    Sequence* const second = AddSequence();
    for (int type = 0; type < ShotSpecification::SHOT_TYPE_COUNT; ++type) {
      Add(*(type % 2 == 0 ? first : second), type, MakeCamera(orthographic, type));
    }
  }

  /// Seconds over which a shot of the film fades in; 0 past the last.
  double GetFade(std::uint64_t shot) const {
    const std::uint64_t inFirst = board->GetStory()->GetSequence(0)->GetShotCount();
    const Sequence* const sequence = board->GetStory()->GetSequence(shot < inFirst ? 0 : 1);
    return GetFadeTransition(sequence->GetShot(shot < inFirst ? shot : shot - inFirst)).duration;
  }

  Film Play(unsigned framesPerSecond) {
    Film film;
    board->PlaybackStory(board->GetStory());
    std::uint64_t shot = 0;
    for (unsigned frame = 1; board->IsPlayingBack(); ++frame) {
      const std::uint64_t number = hub.GetShotNumber();
      const long begin = GetMilliseconds(hub);
      const unsigned step = frame * 1000 / framesPerSecond - (frame - 1) * 1000 / framesPerSecond;
      platform.Advance(step);
      hub.PerformOperations();
      if (hub.GetShotNumber() == number && begin > 0) {
        EXPECT_EQ(GetMilliseconds(hub) - begin, static_cast<long>(step));
      }
      (hub.GetShotNumber() == number ? film.views[{shot, begin}] : film.ends[shot]) = hub.view;
      if (hub.GetShotNumber() != number) ++shot;
      board->Draw();
      const long end = GetMilliseconds(hub);
      if (end >= 0 && end <= LAST) film.fades[{shot, end}] = board->GetParts().overlay;
    }
    return film;
  }

 private:
  static CameraParameters MakeCamera(bool orthographic, int number) {
    const CameraParameters camera =
        LookAt({3.0 + number, 4.0, 10.0 - number}, {1.0, 0.5, -1.0 * number}, {0, 1, 0});
    return orthographic ? WithOrthographic(camera, 16.0, 12.0) : camera;
  }
  static void Add(Sequence& sequence, int type, const CameraParameters& camera) {
    auto* const shot = new ShotSpecification(camera);
    shot->SetShotType(static_cast<ShotSpecification::ShotType>(type));
    shot->SetCameraPosition(static_cast<TargetCamPos>(type % 3));
    shot->SetDuration(SECONDS);
    shot->SetLeftRightDistance(3.0);
    shot->SetUpDownDistance(2.0);
    shot->SetInOutDistance(type == ShotSpecification::SHOT_PAN_ZOOM ? 0.25 : 2.0);
    shot->SetLeftRightAngle(40.0);
    shot->SetUpDownAngle(-20.0);
    shot->SetLookAtCenterOfInterest(type % 2 == 0);
    shot->SetTransitionType(static_cast<ShotSpecification::TransitionType>(type % 3));
    shot->SetTransitionDuration(0.1 + 0.05 * type);
    AddWalk(*shot, camera);
    sequence.AddShot(shot);
  }
  static void AddWalk(ShotSpecification& shot, CameraParameters camera) {
    for (const double time : {0.0, 0.4, 1.5, 2.0}) {
      shot.AddRecordedElement(camera, time);
      camera.eye += Vector3(0.5, -time, 0.25);
      camera.centre += Vector3(time, 0.5, -0.25);
    }
  }
};

void ExpectSameView(const CameraParameters& a, const CameraParameters& b) {
  EXPECT_LE((a.eye - b.eye).Length(), LEAST_WAY);
  EXPECT_LE((a.centre - b.centre).Length(), LEAST_WAY);
  EXPECT_LE((a.up - b.up).Length(), LEAST_WAY);
  EXPECT_LE((a.pivot - b.pivot).Length(), LEAST_WAY);
  EXPECT_LE(std::abs(a.ortho_width - b.ortho_width), LEAST_WIDTH);
  EXPECT_LE(std::abs(a.ortho_height - b.ortho_height), LEAST_WIDTH);
  EXPECT_EQ(a.projection_type, b.projection_type);
}

// How far apart two fades may be, e seconds into a shot. A fade in is a function of e. A fade out of f
// seconds is 1 - (e / p - e) / f, where the progress p is that of the begin of the frame: the begins of two
// frames that end together are at most the longer one apart, and the greatest speed of the sine ease is pi
// / 2. It begins with e / p - e = f, so that p is at least e / (e + f) in it; and so
//     e / f * (1 / p - 1 / q) <= (q - p) * (e + f)^2 / (e * f).
double GetFadeBound(double e, double fadeIn, double f, double longestFrame) {
  if (e < fadeIn || f == 0.0) return LEAST_ALPHA;
  return Math::PI / 2.0 / SECONDS * longestFrame * (e + f) * (e + f) / (e * f) + LEAST_ALPHA;
}

void ExpectSameFade(const FadeOverlay& a, const FadeOverlay& b, double bound) {
  EXPECT_NEAR(a.alpha, b.alpha, bound);
  EXPECT_TRUE(a.level == b.level || a.alpha <= bound || b.alpha <= bound);
}

/// `expect(place, value, of the finest)`.
template <class Places, class Expect>
void ExpectWithin(const Places& seen, const Places& finest, const Expect& expect) {
  for (const auto& [place, value] : seen) {
    SCOPED_TRACE(::testing::PrintToString(place));
    ASSERT_TRUE(finest.count(place) == 1);
    expect(place, value, finest.at(place));
  }
}

class PlaybackRates : public ::testing::TestWithParam<bool> {};

TEST_P(PlaybackRates, show_the_same_views_fades_and_ends) {
  AllTypes stage(GetParam());
  const Film finest = stage.Play(FINEST);
  ASSERT_EQ(finest.ends.size(), std::size_t{ShotSpecification::SHOT_TYPE_COUNT});
  for (const unsigned rate : {30U, 60U, 144U}) {
    SCOPED_TRACE(rate);
    const Film film = stage.Play(rate);
    EXPECT_EQ(film.ends.size(), finest.ends.size());
    // Of the frames of each shot the first and the last may not be among them.
    EXPECT_GE(film.views.size(), (rate - 2) * finest.ends.size());
    EXPECT_GE(film.fades.size(), (rate - 2) * finest.ends.size());
    const auto expectSameView = [](const auto&, const auto& a, const auto& b) { ExpectSameView(a, b); };
    ExpectWithin(film.views, finest.views, expectSameView);
    ExpectWithin(film.ends, finest.ends, expectSameView);
    const double longestFrame = std::ceil(1000.0 / rate) / 1000.0;
    ExpectWithin(film.fades, finest.fades, [&](const Moment& moment, const auto& a, const auto& b) {
      const auto [shot, milliseconds] = moment;
      ExpectSameFade(a, b,
                     GetFadeBound(static_cast<double>(milliseconds) / 1000.0, stage.GetFade(shot),
                                  stage.GetFade(shot + 1), longestFrame));
    });
  }
}

// What is compared does move, and fades.
TEST_P(PlaybackRates, are_of_moves_and_fades_that_are_seen) {
  AllTypes stage(GetParam());
  const Film film = stage.Play(FINEST);
  int faded = 0;
  for (const auto& [moment, fade] : film.fades) faded += fade.alpha > 0.0 ? 1 : 0;
  EXPECT_GT(faded, 1000);  // of eleven shots eight fade in, and seven out, over 0.1 to 0.6 seconds each
  int moved = 0;
  for (const auto& [shot, end] : film.ends) {
    const CameraParameters& begin = film.views.lower_bound({shot, 0})->second;
    const bool moves = (begin.eye - end.eye).Length() > 0.1 || (begin.centre - end.centre).Length() > 0.1;
    const bool widens = std::abs(begin.ortho_width - end.ortho_width) > 0.1;
    moved += moves || widens ? 1 : 0;
  }
  EXPECT_EQ(moved, ShotSpecification::SHOT_TYPE_COUNT - 1);  // all but the still
}

INSTANTIATE_TEST_SUITE_P(BothProjections, PlaybackRates, ::testing::Bool());

}  // namespace
