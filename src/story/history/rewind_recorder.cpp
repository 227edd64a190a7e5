#include "story/history/rewind_recorder.h"

#include <utility>

namespace Korvane {

bool RewindRecorder::Begin(const CameraParameters& given) {
  if (strip.open) return false;
  if (!enabled) {
    armed = false;
    return false;
  }
  const CameraParameters camera = given;
  if (!camera.IsFinite()) return false;
  start = camera;
  const Lifeline::Watch lives(partners.life);
  elements.Advance();
  if (lives) elements.Update(elements.GetCurrent(), camera);
  return true;
}

// The end of a record that began while recording was off arms the next one.
bool RewindRecorder::End(const CameraParameters& given) {
  if (strip.open) return false;
  const bool begun = std::exchange(armed, true);
  if (!enabled || !begun) return false;
  const CameraParameters camera = given;
  if (!camera.IsFinite()) return false;
  const Lifeline::Watch lives(partners.life);
  const bool stayed = partners.AreEqual(camera, start);
  return stayed || (lives && elements.Follow(camera));
}

}  // namespace Korvane
