#include "scene_view/draw_pace.h"

#include <utility>

namespace zovhost {

DrawPace::~DrawPace() { glDeleteSync(previous); }

bool DrawPace::Pass(std::size_t triangles) {
  constexpr GLuint64 LONGEST_WAIT = 10'000'000'000;  // nanoseconds; a step takes some hundredths of a second
  waiting += triangles;
  if (waiting < STEP) return true;
  waiting = 0;
  GLsync const reached = std::exchange(previous, glFenceSync(GL_SYNC_GPU_COMMANDS_COMPLETE, 0));
  glFlush();
  if (reached != nullptr) {
    glClientWaitSync(reached, GL_SYNC_FLUSH_COMMANDS_BIT, LONGEST_WAIT);
    glDeleteSync(reached);
  }
  return Clock::now() < deadline;
}

}  // namespace zovhost
