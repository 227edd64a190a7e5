#pragma once

#include <utility>

#include "cube/cube_drag.h"
#include "cube/cube_fade.h"
#include "cube/cube_label.h"
#include "cube/cube_layout.h"
#include "cube/cube_mouse.h"
#include "cube/cube_painter.h"
#include "cube/cube_picker.h"
#include "cube/cube_space.h"
#include "cube/cube_tooltips.h"
#include "cube/orientor_transition_shot_observer.h"
#include "korvane/lifeline.h"

namespace Korvane {

/// What a cube consists of, by what changes together.
struct OrientorParts {
  // A stretch within which the cube is put away, and begins neither a gesture nor a move.
  class Closing {
   public:
    explicit Closing(OrientorParts& cube) : parts(cube), before(std::exchange(cube.closing, true)) {}
    Closing(const Closing&) = delete;
    Closing& operator=(const Closing&) = delete;
    ~Closing() { parts.closing = before; }

   private:
    OrientorParts& parts;
    bool before;
  };

  // Which of the calls of Create found the memory to count the textures.
  struct TextureCounts {
    bool Note(bool counted) {
      times += counted ? 1 : 0;
      refused = !counted;
      return counted;
    }
    /// Whether they are to be counted down: not where the one Create that there was counted none.
    bool End() {
      const bool none = std::exchange(refused, false) && times == 0;
      if (times > 0) --times;
      return !none;
    }

    int times = 0;
    bool refused = false;
  };

  OrientorParts(Orientor* cube, const OrientorParameters& settings)
      : parameters(settings), transitionObserver(cube), drag(partners, settings) {}

  /// Brings the space up to date with the host's camera. False without a hub.
  bool Look();
  bool IsLockedToSelection() const;
  bool IsMouseOnOverlay() const;
  /// Something of the cube shows that the mouse is there.
  bool ShowsMouse() const { return mouse.IsOnAny() || fade.mouseInRegion; }
  bool AreArrowsShown() const { return fade.mouseInRegion || drag.IsActive(); }
  OverlayQuads::State GetOverlayState(bool arrows) const;
  CubeLook GetLook() const;
  /// The part of cube or compass at a viewport pixel, y upward. Remembers the arrows that it finds.
  int PickGeometry(const Vector2& point);
  /// The part of the overlay, -1 for none. `arrows`: the arrows that roll the view show.
  int PickOverlay(const Vector2& point, bool arrows) const;

  /// Where in the viewport a part of cube or compass is hit, if it can be.
  bool FindGeometry(int part, Vector2& point);
  /// The middle of a part of the overlay, if it is there.
  bool FindOverlay(int part, Vector2& point) const;

  void DrawGeometry(Renderer& target);
  void DrawOverlay(Renderer& target) const;
  /// How a drag of the pressed part of the compass will count.
  void TakeCompassSense();

  const OrientorParameters& parameters;
  CubeDrag::Partners partners;
  Borrowed<Renderer> renderer;
  OrientorTransitionShotObserver transitionObserver;
  RewindRecord transitionRecord;

  CubeLayout layout;
  CubeSpace space;
  CubeMouse mouse;
  CubeDrag drag;
  CubeFade fade;
  ClosestPart closest;
  CubePicker picker;
  CubeLabel label;
  CubeTooltips tooltips;

  TextureCounts textures;
  bool arrowsVisible = false;  // a face arrow has been laid since the last draw began
  bool compassFollowsPointer = false;
  bool closing = false;  // see Closing
};

}  // namespace Korvane
