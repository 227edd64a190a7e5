#include "window/settings_manager.h"

#include <cstddef>
#include <memory>
#include <string>

#include "window/x_settings.h"

namespace zovhost {

namespace {

constexpr long MOST_WORDS = 1L << 18;  // of four bytes

struct Freer {
  void operator()(unsigned char* data) const { XFree(data); }
};

double ReadScale(Display* display, Window manager) {
  const Atom name = XInternAtom(display, "_XSETTINGS_SETTINGS", False);
  Atom type = None;
  int format = 0;
  unsigned long count = 0;
  unsigned long left = 0;
  unsigned char* bytes = nullptr;
  const int status = XGetWindowProperty(display, manager, name, 0, MOST_WORDS, False, name, &type, &format,
                                        &count, &left, &bytes);
  const std::unique_ptr<unsigned char, Freer> read(bytes);
  const bool isUsable = status == Success && type == name && format == 8 && left == 0 && bytes != nullptr;
  return isUsable ? ParseXSettings({bytes, static_cast<std::size_t>(count)}) : 0.0;
}

}  // namespace

Atom FindSettingsSelection(Display* display) {
  const std::string name = "_XSETTINGS_S" + std::to_string(DefaultScreen(display));
  return XInternAtom(display, name.c_str(), False);
}

// While the server is held the window that is read cannot go.
double FindManagedScale(Display* display) {
  XGrabServer(display);
  const Window manager = XGetSelectionOwner(display, FindSettingsSelection(display));
  const double scale = manager != None ? ReadScale(display, manager) : 0.0;
  XUngrabServer(display);
  XFlush(display);
  return scale;
}

}  // namespace zovhost
