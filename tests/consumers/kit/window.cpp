// A window without a display, its events in a view manager, and the devices of the system's daemon.
#include "zovhost/window.h"

#include <cstdio>

#include "zovhost/spnav_source.h"
#include "zovhost/window_view_manager.h"

int main() {
  zovhost::Window::Options options;
  options.width = 320;
  options.height = 200;
  options.offscreen = true;
  std::string error;
  const auto window = zovhost::Window::Create(options, error);
  if (window == nullptr) {
    std::fprintf(stderr, "%s\n", error.c_str());
    return 1;
  }

  zovhost::WindowViewManager manager;
  manager.SetViewportSize(window->GetWidth(), window->GetHeight());
  zovhost::WindowEvent press;
  press.type = zovhost::WindowEvent::Type::MouseDown;
  manager.OnEvent(press);

  zovhost::SpnavSource device;
  device.Poll();
  return manager.IsPressed() ? 0 : 1;
}
