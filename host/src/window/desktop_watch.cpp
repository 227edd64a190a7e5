#include "window/desktop_watch.h"

#include <SDL_syswm.h>
#include <X11/Xatom.h>

#include "window/settings_manager.h"

namespace zovhost {

#if defined(SDL_VIDEO_DRIVER_X11)

namespace {

Display* FindDisplay(SDL_Window* window) {
  SDL_SysWMinfo info = {};
  SDL_VERSION(&info.version);
  const bool isKnown = window != nullptr && SDL_GetWindowWMInfo(window, &info) == SDL_TRUE;
  return isKnown && info.subsystem == SDL_SYSWM_X11 ? info.info.x11.display : nullptr;
}

void Hear(Display* display, Window window, long events) {
  XWindowAttributes present = {};
  if (XGetWindowAttributes(display, window, &present) != 0)
    XSelectInput(display, window, present.your_event_mask | events);
}

}  // namespace

void DesktopWatch::Begin(SDL_Window* window) {
  Display* const display = FindDisplay(window);
  if (display == nullptr) return;
  watched = window;
  SDL_EventState(SDL_SYSWMEVENT, SDL_ENABLE);
  Hear(display, DefaultRootWindow(display), PropertyChangeMask | StructureNotifyMask);
  FindManager();
}

// While the server is held nobody's window can go.
void DesktopWatch::FindManager() {
  Display* const display = FindDisplay(watched);
  if (display == nullptr) return;
  XGrabServer(display);
  manager = XGetSelectionOwner(display, FindSettingsSelection(display));
  if (manager != 0) Hear(display, manager, PropertyChangeMask | StructureNotifyMask);
  XUngrabServer(display);
  XFlush(display);
}

bool DesktopWatch::Notices(const SDL_Event& event) {
  if (watched == nullptr || event.type != SDL_SYSWMEVENT || event.syswm.msg == nullptr) return false;
  const SDL_SysWMmsg& message = *event.syswm.msg;
  if (message.subsystem != SDL_SYSWM_X11) return false;
  const XEvent& told = message.msg.x11.event;
  Display* const display = FindDisplay(watched);
  if (display == nullptr) return false;
  if (told.type == PropertyNotify) {
    const bool ofRoot = told.xproperty.window == DefaultRootWindow(display);
    return ofRoot ? told.xproperty.atom == XA_RESOURCE_MANAGER
                  : manager != 0 && told.xproperty.window == manager;
  }
  const bool comes = told.type == ClientMessage && told.xclient.format == 32 &&
                     static_cast<Atom>(told.xclient.data.l[1]) == FindSettingsSelection(display);
  const bool goes = told.type == DestroyNotify && manager != 0 && told.xdestroywindow.window == manager;
  if (comes || goes) FindManager();
  return comes || goes;
}

#else

void DesktopWatch::Begin(SDL_Window* /*window*/) {}
bool DesktopWatch::Notices(const SDL_Event& /*event*/) { return false; }
void DesktopWatch::FindManager() {}

#endif

}  // namespace zovhost
