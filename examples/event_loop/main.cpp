// A host with an event loop and no window: a script stands for the user, and a line is printed for each
// frame that is drawn. It shows the whole round: events in, frames on request, timers pumped, nothing
// drawn while nothing moves.
#include <chrono>
#include <cstdio>
#include <thread>
#include <vector>

#include "korvane/korvane.h"

namespace {

constexpr int WIDTH = 1280;
constexpr int HEIGHT = 720;

class View : public Korvane::CameraOperations {
 public:
  View() {
    camera.eye = Korvane::Vector3(0.0, 4.0, 20.0);
    camera.up = Korvane::Vector3(0.0, 1.0, 0.0);
    camera.SetHorizontalFOV(30.0);  // half angles, in degrees
    camera.SetVerticalFOV(18.0);
  }

  void ApplyCameraParameters(const Korvane::CameraParameters& moved) override { camera = moved; }
  void QueryCameraParameters(Korvane::CameraParameters& now) const override { now = camera; }
  void RequestApplicationUpdate() override { frameWanted = true; }

  // What the handler of a paint event does. The wish is taken back first, since the frame may renew it.
  void Paint() {
    frameWanted = false;
    PerformOperations();
    ++frames;
    std::printf("frame %2d: eye (%7.3f, %7.3f, %7.3f), centre (%7.3f, %7.3f, %7.3f)\n", frames, camera.eye.x,
                camera.eye.y, camera.eye.z, camera.centre.x, camera.centre.y, camera.centre.z);
  }

  bool WantsFrame() const { return frameWanted; }
  int GetFrames() const { return frames; }

 private:
  Korvane::CameraParameters camera;
  bool frameWanted = false;
  int frames = 0;
};

// What the library is told of the view and of the model in it.
void Describe(View& view) {
  Korvane::ApplicationParameters& parameters = view.GetApplicationParameters();
  parameters.viewport_width = WIDTH;
  parameters.viewport_height = HEIGHT;
  parameters.scene_scale = 1.7;  // one step of a walk, in world units

  const Korvane::Vector3 centre(0.0, 2.0, 0.0);
  const Korvane::Vector3 halfExtent(5.0, 2.0, 4.0);
  parameters.global_bound_centre = centre;
  parameters.global_bound_radius = halfExtent.Length();
  parameters.global_bound_box = Korvane::Box3(centre, halfExtent);
  view.SetSceneBoundingSphere(parameters.global_bound_radius, centre);
  view.SetSceneBoundingBox(parameters.global_bound_box, centre);
}

// An alarm of the host's own, on the library's timers: it says when the user has been idle for a while.
class IdleAlarm : public Korvane::IntervalTimer {
 protected:
  void Timeout() override { std::puts("idle"); }
};

struct Event {
  enum Kind { PRESS, MOVE, RELEASE };
  Kind kind;
  Korvane::OperationType operation;
  int x;  // viewport pixels from the bottom left, y upward
  int y;
};

void Handle(View& view, const Event& event) {
  const int y = HEIGHT - event.y - 1;  // operations count from the top
  switch (event.kind) {
    case Event::PRESS:
      view.EndOperation(Korvane::OPERATION_ALL);
      view.BeginOperation(event.operation, event.x, y);
      break;
    case Event::MOVE:
      view.UpdateOperationParams(event.x, y, event.operation);
      break;
    case Event::RELEASE:
      view.EndOperation(event.operation);
      break;
  }
}

std::vector<Event> MakeScript() {
  using Korvane::OPERATION_ORBIT;
  using Korvane::OPERATION_ZOOM;
  return {{Event::PRESS, OPERATION_ORBIT, 640, 360}, {Event::MOVE, OPERATION_ORBIT, 700, 350},
          {Event::MOVE, OPERATION_ORBIT, 760, 340},  {Event::RELEASE, OPERATION_ORBIT, 760, 340},
          {Event::PRESS, OPERATION_ZOOM, 640, 360},  {Event::MOVE, OPERATION_ZOOM, 640, 400},
          {Event::RELEASE, OPERATION_ZOOM, 640, 400}};
}

}  // namespace

int main() {
  View view;
  Describe(view);

  // On Windows the window system delivers timers by itself; elsewhere the loop pumps them.
  auto* const timers = dynamic_cast<Korvane::TimerQueue*>(&Korvane::GetPlatform());
  IdleAlarm alarm;
  alarm.Start(0.2, false);

  for (const Event& event : MakeScript()) {
    Handle(view, event);
    if (timers != nullptr) timers->DispatchTimers();
    if (view.WantsFrame()) view.Paint();
  }

  // Idle: the loop sleeps until a timer is due, and nothing is drawn.
  const int busyFrames = view.GetFrames();
  while (timers != nullptr && alarm.IsRunning()) {
    std::this_thread::sleep_for(std::chrono::milliseconds(timers->MillisecondsToNextTimer()));
    timers->DispatchTimers();
    if (view.WantsFrame()) view.Paint();
  }
  std::printf("%d frames while the user moved, %d after\n", busyFrames, view.GetFrames() - busyFrames);
  return busyFrames > 0 && view.GetFrames() == busyFrames ? 0 : 1;
}
