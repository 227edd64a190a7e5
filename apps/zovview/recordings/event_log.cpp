#include "recordings/event_log.h"

#include <SDL_events.h>

#include <cstdio>
#include <utility>

#include "korvane/platform.h"
#include "recordings/recording.h"

namespace zovview {

void EventLog::Add(const zovhost::WindowEvent& event) {
  if (!enabled || !HasWords(event)) return;
  const std::string line = FormatEvent({Korvane::GetPlatform().GetTickCount(), event, nullptr});
  std::fprintf(stderr, "zovview: %s", line.c_str());
  busy = true;
}

void EventLog::AddFrame() {
  if (enabled) std::fprintf(stderr, "zovview: frame %u\n", ++frameCount);
  busy = true;
}

void EventLog::AddRest() {
  if (!enabled || !std::exchange(busy, false)) return;
  SDL_PumpEvents();  // hands what was drawn, and where the pointer was set, over to the display
  std::fputs("zovview: at rest\n", stderr);
}

}  // namespace zovview
