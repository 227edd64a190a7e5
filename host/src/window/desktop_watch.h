#pragma once

#include <SDL_events.h>
#include <SDL_video.h>

namespace zovhost {

/// Hears of changes of the settings that an X desktop has for all its windows, by the connection of a window.
/// On other displays it hears nothing.
class DesktopWatch {
 public:
  /// From now on, for as long as the window lives; the messages of the window system come as events then.
  void Begin(SDL_Window* window);
  /// Whether the event tells of a change.
  bool Notices(const SDL_Event& event);

 private:
  void FindManager();

  SDL_Window* watched = nullptr;
  unsigned long manager = 0;  // the window of what has the settings; 0: none
};

}  // namespace zovhost
