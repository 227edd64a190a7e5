#pragma once

#include "korvane/export.h"
#include "korvane/lifeline.h"
#include "korvane/resource_ids.h"

namespace Korvane {

class TrackMenu;

/// What a region of a track menu does with the mouse while it is the active one. The base notes the mouse;
/// overrides call it first.
///
/// Positions are viewport pixels with the origin at the bottom left, y upward. Inside of each operation a
/// listener, and whoever it calls, may do with the menu what it likes, close and destroy it among that: the
/// menu keeps a listener that it gives up meanwhile until the call is over.
class ZOVTOOLS_API RegionListener {
 public:
  /// The menu is borrowed; null is legal.
  explicit RegionListener(TrackMenu* menu);
  RegionListener(const RegionListener&) = delete;
  RegionListener& operator=(const RegionListener&) = delete;

  virtual void OnMouseMove(int x, int y);
  virtual void OnLeftMouseDown(int x, int y);
  virtual void OnLeftMouseUp(int x, int y);
  virtual void OnKeyDown(KeyID key);
  virtual void OnKeyUp(KeyID key);
  /// The frame of a drawn menu, after its own pass.
  virtual void OnDraw();
  /// The menu takes its resources (true) or gives them back.
  virtual void OnTrackMenuActivate(bool active);
  /// A press that slides off is kept, and not handed on to the next region.
  virtual bool IsWelcomeListener();
  virtual ~RegionListener();

  /// Null once it is gone.
  TrackMenu* GetTrackMenu() const { return trackMenu.Get(); }
  /// From the press to the release.
  bool IsMouseDown() const { return mouseDown; }
  /// The mouse has moved since the press; stays after the release, which so tells a click from a drag.
  bool IsMouseDrag() const { return mouseDrag; }
  Lifeline& GetLifeline() { return lifeline; }

 protected:
  int mouseX = 0;
  int mouseY = 0;
  int downX = 0;  // where the button went down
  int downY = 0;

 private:
  Borrowed<TrackMenu> trackMenu;
  bool mouseDown = false;
  bool mouseDrag = false;
  Lifeline lifeline;
};

/// The listener of a region that only shows a picture.
class ZOVTOOLS_API NullRegionListener : public RegionListener {
 public:
  using RegionListener::RegionListener;
  ~NullRegionListener() override;
};

}  // namespace Korvane
