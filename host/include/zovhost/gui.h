#pragma once

#include <memory>
#include <string>
#include <vector>

#include "korvane/box2.h"
#include "zovhost/panel_icons.h"

namespace zovhost {

class Window;

/// Menus and panels by Dear ImGui over a window, or over a picture without any input.
///
/// Between BeginFrame and EndFrame the functions of imgui.h may be called. The pointer belongs to the
/// panels while it is over one of them, and while a menu is open, and the keys belong to them while a text is
/// typed; everything else goes on to the handler of the window's events. Those that lead through a menu do so
/// while one is open: arrows, Enter, the space bar, Escape and letters; Tab, arrows and the space bar lead
/// through a question. A press beside the panels ends the typing, and is an event of the window all the same.
/// A frame is asked for only when something on a panel may have changed. One at a time.
///
/// The panels speak the language of the process (see phrases.h), from the next frame on when it changes.
/// Their font has what its phrases need; see panel_texts.h for other texts.
class Gui {
 public:
  /// Over a window: takes the window's native event hook. The window must outlive it, with its context
  /// current here, in EndFrame and in the destructor.
  explicit Gui(Window& window);
  /// Over a picture of this size in pixels, `density` of which are a point, with the context current
  /// likewise.
  Gui(int width, int height, double density = 1.0);
  ~Gui();
  Gui(const Gui&) = delete;
  Gui& operator=(const Gui&) = delete;

  void BeginFrame();
  /// Draws what was put together into the bound framebuffer, and leaves the state of OpenGL as it was.
  void EndFrame();

  /// Light panels with dark words, for light grounds; at first they are dark ones. Between two frames.
  void SetLight(bool light);
  bool IsLight() const;
  /// Icons that panels can draw; see panel_icons.h. None at first. Between two frames.
  void SetIcons(std::vector<int> pictures, IconPainter painter);
  /// One line when the system has no typeface for the language of the panels, told once; else empty.
  std::string TakeProblem();

  /// Whether a viewport pixel, origin at the bottom left, lies on a panel of the last frame.
  bool IsOverPanel(int x, int y) const;
  /// The panels, notices and menus of the last frame, in viewport pixels, origin at the bottom left.
  std::vector<Korvane::Box2> GetPanels() const;
  /// Whether the last motion of the pointer belonged to the panels. A frame is drawn when that changes.
  bool HasPointer() const;

 private:
  class Impl;
  std::unique_ptr<Impl> impl;
};

}  // namespace zovhost
