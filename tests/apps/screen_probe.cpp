// Looks at an X display, for the tests of the viewer's window:
//   screen_probe cursor             a number that stands for the picture of the pointer
//   screen_probe pointer            where the pointer is, x and y from the top left
//   screen_probe pixels X Y W H     how many pixels of a rectangle are of the accent colour's kind: bluish
//   screen_probe resources TEXT     sets what programs find as the resources of the display
//   screen_probe settings           is the manager of the settings of all programs until its input ends; each
//                                   line of that is a number, Xft/DPI, or a word: then they are broken. Says
//                                   when it has told them
#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/Xfixes.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "support/x_settings_bytes.h"

namespace {

struct DisplayCloser {
  void operator()(Display* display) const { XCloseDisplay(display); }
};
struct ImageDestroyer {
  void operator()(XImage* image) const { XDestroyImage(image); }
};
struct Freer {
  void operator()(XFixesCursorImage* image) const { XFree(image); }
};

// FNV-1a, over the size, the hot spot and the pixels.
class Hash {
 public:
  void Add(std::uint64_t value) { sum = (sum ^ value) * 1099511628211ULL; }
  std::uint64_t GetSum() const { return sum; }

 private:
  std::uint64_t sum = 14695981039346656037ULL;
};

int PrintCursor(Display* display) {
  const std::unique_ptr<XFixesCursorImage, Freer> image(XFixesGetCursorImage(display));
  if (image == nullptr) return 1;
  Hash hash;
  for (const unsigned value : {image->width, image->height, image->xhot, image->yhot}) hash.Add(value);
  const int count = image->width * image->height;
  for (int i = 0; i < count; ++i) hash.Add(image->pixels[i] & 0xFFFFFFFFU);
  std::printf("%016llx\n", static_cast<unsigned long long>(hash.GetSum()));
  return 0;
}

int PrintPointer(Display* display) {
  Window root = 0;
  Window child = 0;
  int x = 0;
  int y = 0;
  int ignored = 0;
  unsigned mask = 0;
  if (!XQueryPointer(display, DefaultRootWindow(display), &root, &child, &x, &y, &ignored, &ignored, &mask)) {
    return 1;
  }
  std::printf("%d %d\n", x, y);
  return 0;
}

int PrintBluish(Display* display, char** rectangle) {
  const int x = std::atoi(rectangle[0]);
  const int y = std::atoi(rectangle[1]);
  const int width = std::atoi(rectangle[2]);
  const int height = std::atoi(rectangle[3]);
  const std::unique_ptr<XImage, ImageDestroyer> image(
      XGetImage(display, DefaultRootWindow(display), x, y, static_cast<unsigned>(width),
                static_cast<unsigned>(height), AllPlanes, ZPixmap));
  if (image == nullptr) return 1;
  int count = 0;
  for (int row = 0; row < height; ++row) {
    for (int column = 0; column < width; ++column) {
      const unsigned long pixel = XGetPixel(image.get(), column, row);
      const int red = static_cast<int>(pixel >> 16 & 0xFF);
      const int blue = static_cast<int>(pixel & 0xFF);
      if (blue > red + 45) ++count;
    }
  }
  std::printf("%d\n", count);
  return 0;
}

void SetProperty(Display* display, Window window, Atom name, Atom type,
                 const std::vector<unsigned char>& bytes) {
  XChangeProperty(display, window, name, type, 8, PropModeReplace, bytes.data(),
                  static_cast<int>(bytes.size()));
  XFlush(display);
}

int SetResources(Display* display, std::string_view text) {
  SetProperty(display, DefaultRootWindow(display), XA_RESOURCE_MANAGER, XA_STRING,
              {text.begin(), text.end()});
  XSync(display, False);
  return 0;
}

// Tells all that there is a manager now.
void Announce(Display* display, Window manager, Atom selection) {
  XSetSelectionOwner(display, selection, manager, CurrentTime);
  XEvent event = {};
  event.xclient.type = ClientMessage;
  event.xclient.window = DefaultRootWindow(display);
  event.xclient.message_type = XInternAtom(display, "MANAGER", False);
  event.xclient.format = 32;
  event.xclient.data.l[0] = CurrentTime;
  event.xclient.data.l[1] = static_cast<long>(selection);
  event.xclient.data.l[2] = static_cast<long>(manager);
  XSendEvent(display, DefaultRootWindow(display), False, StructureNotifyMask, &event);
  XFlush(display);
}

int ManageSettings(Display* display) {
  const Window manager = XCreateSimpleWindow(display, DefaultRootWindow(display), 0, 0, 1, 1, 0, 0, 0);
  const Atom name = XInternAtom(display, "_XSETTINGS_SETTINGS", False);
  bool announced = false;
  for (std::string line; std::getline(std::cin, line);) {
    XSettingsBytes settings;
    settings.AddText("Net/ThemeName", "Plain").AddNumber("Xft/DPI", std::atoi(line.c_str()));
    std::vector<unsigned char> bytes = settings.Get();
    if (std::atoi(line.c_str()) == 0) bytes.resize(bytes.size() / 2);
    SetProperty(display, manager, name, name, bytes);
    if (!announced) Announce(display, manager, XInternAtom(display, "_XSETTINGS_S0", False));
    announced = true;
    XSync(display, False);
    std::puts("told");
    std::fflush(stdout);
  }
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  const std::unique_ptr<Display, DisplayCloser> display(XOpenDisplay(nullptr));
  if (display == nullptr || argc < 2) return 2;
  const std::string_view question = argv[1];
  if (question == "cursor") return PrintCursor(display.get());
  if (question == "pointer") return PrintPointer(display.get());
  if (question == "pixels" && argc == 6) return PrintBluish(display.get(), argv + 2);
  if (question == "resources" && argc == 3) return SetResources(display.get(), argv[2]);
  if (question == "settings") return ManageSettings(display.get());
  return 2;
}
