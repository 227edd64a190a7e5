#pragma once

#include <map>
#include <memory>
#include <string>

#include "korvane/helm_disc.h"
#include "korvane/orientor.h"
#include "support/manual_platform.h"
#include "support/memory_hub.h"
#include "support/open_view_manager.h"
#include "support/recording_history.h"
#include "support/recording_renderer.h"
#include "zovhost/projection.h"
#include "zovhost/scene.h"

namespace scenarios {

/// The sample house; made once, since it never changes.
const zovhost::Scene& GetHouse();

/// Answers rays with the house. It keeps no log of its drawing.
class HouseRenderer : public RecordingRenderer {
 public:
  /// The kit's, if wanted.
  Korvane::PixelIcon2D* CreateImageData(Korvane::TextureID id) override;
  bool QueryRaySceneIntersection(const Korvane::Vector3& origin, const Korvane::Vector3& direction,
                                 Korvane::Vector3& hit) override;

  bool hasRegionMaps = false;
};

/// A disc that is always up, so that the middle button and the wheel navigate.
class OpenDisc : public Korvane::HelmDisc {
 public:
  OpenDisc();
  ~OpenDisc() override;
  bool enabled = true;
  const RecordingHistory& GetRecord() const { return *record; }

 private:
  RecordingHistory* record;
};

/// Takes no notice of where the pointer is.
class EagerViewManager : public OpenViewManager {
 protected:
  bool WantMiddleMouseNavigation() const override { return !IsLeftMouseDown() && !IsRightMouseDown(); }
  bool WantActiveToolEnabled() const override { return true; }
};

/// A viewport over the house, without widgets, and a clock of its own.
class HouseViewport {
 public:
  static constexpr int WIDTH = 1000;
  static constexpr int HEIGHT = 800;

  explicit HouseViewport(bool orthographic);

  /// Where the camera shows a point, viewport pixels; a point behind the camera is far outside.
  Korvane::Vector2 PixelOf(const Korvane::Vector3& point) const;
  /// The point of the house at a pixel; false when there is none.
  bool PointAt(int x, int y, Korvane::Vector3& point) const;

  ManualPlatform platform;
  MemoryHub hub;
  HouseRenderer renderer;
};

/// The viewport with tools, driven as a window would drive it: events, and frames.
class HouseView : public HouseViewport {
 public:
  enum ToolID : int { ORBIT = 1, PAN, ZOOM, RECT_ZOOM, LOOK, LOOK_MOVE, LOOK_AT, CENTER, WALK };

  explicit HouseView(bool orthographic = false);
  ~HouseView();

  /// Lets time pass and draws a frame.
  void Frame(unsigned milliseconds = 16);
  /// Frames until nothing moves, five seconds at most.
  void Settle();
  void Choose(ToolID tool);
  /// A left drag along a line, a frame after each of `steps` moves, over `milliseconds` in all.
  void Drag(int fromX, int fromY, int toX, int toY, int steps, unsigned milliseconds);
  /// The same without the release.
  void Press(int fromX, int fromY, int toX, int toY, int steps, unsigned milliseconds);
  /// One notch of the wheel and a frame.
  void Notch(int x, int y, int notches, unsigned milliseconds = 16);

  /// The point at a pixel that is as deep in the view as another point.
  bool PointBeside(const Korvane::Vector3& other, int x, int y, Korvane::Vector3& point) const;

  OpenDisc disc;
  std::unique_ptr<EagerViewManager> manager;
};

}  // namespace scenarios
