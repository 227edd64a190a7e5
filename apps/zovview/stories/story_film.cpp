#include "stories/story_film.h"

#include <epoxy/gl.h>

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "korvane/story.h"
#include "views/picture_look.h"
#include "zovhost/start_camera.h"

namespace zovview {

namespace {

constexpr int SAMPLES = 4;

double MeasureLength(const Korvane::Sequence& sequence) {
  double seconds = 0.0;
  for (std::uint64_t i = 0; i < sequence.GetShotCount(); ++i) seconds += sequence.GetShot(i)->GetDuration();
  return seconds;
}

double MeasureLength(const Korvane::Story& story) {
  double seconds = 0.0;
  for (std::uint64_t i = 0; i < story.GetSequenceCount(); ++i) {
    seconds += MeasureLength(*story.GetSequence(i));
  }
  return seconds;
}

}  // namespace

StoryFilm::Platform::Platform(TourClock& clock) : former(Korvane::GetPlatform()) {
  Korvane::SetPlatform(&clock);
}
StoryFilm::Platform::~Platform() { Korvane::SetPlatform(&former); }

StoryFilm::StoryFilm(const zovhost::Scene& ofScene, zovhost::GLSceneView& view, const Options& wanted)
    : scene(ofScene), sceneView(view), options(wanted), hub([] {}) {
  Korvane::Platform& former = Korvane::GetPlatform();
  clock = std::make_unique<TourClock>();
  Korvane::SetPlatform(&former);
}

// The clock puts the system's in force when it goes.
StoryFilm::~StoryFilm() {
  Korvane::Platform& former = Korvane::GetPlatform();
  Korvane::SetPlatform(clock.get());
  board.reset();
  renderer.Destroy();
  clock.reset();
  Korvane::SetPlatform(&former);
}

bool StoryFilm::Begin(std::unique_ptr<Korvane::Story> story, std::string& error) {
  const Platform platform(*clock);
  length = MeasureLength(*story);
  if (!(length <= LONGEST)) {
    error = "the story takes longer than an hour, which is too long for a film";
    return false;
  }
  if (!target.Create(options.width, options.height, SAMPLES) || !renderer.Create()) {
    error = "the graphics memory does not hold a picture of this size";
    return false;
  }
  renderer.SetHost(&host);
  renderer.SetViewport(0, 0, options.width, options.height);
  renderer.SetScene(&scene);
  hub.SetViewportSize(options.width, options.height);
  zovhost::EnterScene(hub, scene);
  board = std::make_unique<Korvane::Storyboard>();
  board->SetKorvane(&hub);
  board->SetRenderer(&renderer);
  board->Create();
  board->SetViewportSize(options.width, options.height);
  board->SetFadeWhilePresenting(true);
  board->SetStory(story.release());
  board->SetMode(Korvane::Storyboard::MODE_PRESENTING);
  if (board->PlaybackStory(board->GetStory())) return true;
  error = "the story begins with no shot that can be played";
  return false;
}

bool StoryFilm::TakeNext(zovhost::Image& picture, std::string& error) {
  const Platform platform(*clock);
  if (board == nullptr || !board->IsPlayingBack()) return false;
  if (!Draw(picture)) {
    error = "a picture could not be drawn";
    return false;
  }
  for (int i = 0; i < TourClock::FRAMES_PER_SECOND / options.picturesPerSecond; ++i) Advance();
  return true;
}

// The storyboard goes on when it is drawn.
void StoryFilm::Advance() {
  clock->Advance();
  ++frames;
  hub.PerformOperations();
  target.Bind();
  board->Draw();
}

bool StoryFilm::Draw(zovhost::Image& picture) {
  GLint shown = 0;
  glGetIntegerv(GL_DRAW_FRAMEBUFFER_BINDING, &shown);
  const PictureLook look(sceneView);
  renderer.SetCamera(hub.GetView());
  const bool drawn = target.Bind() && sceneView.Draw(hub.GetView(), options.width, options.height);
  board->Draw();  // what fades
  const bool taken = drawn && target.Read(picture);
  glBindFramebuffer(GL_FRAMEBUFFER, static_cast<GLuint>(shown));
  return taken;
}

double StoryFilm::GetProgress() const {
  if (length <= 0.0) return 1.0;
  return std::min(1.0, static_cast<double>(frames) / TourClock::FRAMES_PER_SECOND / length);
}

int StoryFilm::GetLength() const { return static_cast<int>(std::lround(length * options.picturesPerSecond)); }

}  // namespace zovview
