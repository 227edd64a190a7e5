#pragma once

#include <functional>
#include <memory>

#include "zov/zov_renderer.h"

/// A window of the host kit with the kit's renderer in it, for a host that knows the facade alone. The
/// widgets go before it, since it takes the graphics with it. Pixels count from the bottom left, y upward.
class KitView {
 public:
  /// Offscreen, nothing shows, and the frames are drawn all the same. Null, with a line on the standard
  /// error, when there is no display or no graphics.
  static std::unique_ptr<KitView> Open(bool offscreen);
  virtual ~KitView() = default;

  virtual std::shared_ptr<zovRenderer> GetRenderer() const = 0;
  virtual int GetWidth() const = 0;
  virtual int GetHeight() const = 0;
  virtual void RequestFrame() = 0;
  /// Until the window is closed.
  virtual void Run() = 0;
  /// A round of events and at most one frame. False when no further frame has been asked for.
  virtual bool Step() = 0;
  /// Of the last frame, whether anything was drawn; offscreen only.
  virtual bool ShowsAnything() const = 0;

  // What the host does.
  std::function<void()> onResize;
  std::function<void()> onDraw;
  std::function<void(int x, int y)> onMove;
  std::function<void(int x, int y)> onPress;  // of the left button
  std::function<void(int x, int y)> onRelease;
};
