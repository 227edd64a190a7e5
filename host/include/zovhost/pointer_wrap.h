#pragma once

#include <array>
#include <optional>

namespace zovhost {

/// A pixel of a viewport, origin at the bottom left; outside of it during a drag.
struct PixelPosition {
  int x = 0;
  int y = 0;
};

inline bool operator==(const PixelPosition& a, const PixelPosition& b) { return a.x == b.x && a.y == b.y; }

/// Follows a pointer that is set back to the opposite edge of a viewport when it reaches one, and tells where
/// it would be if it had gone on. That differs from where it is by whole viewports.
///
/// A pointer that does not jump when it is asked to is not asked again until the next press.
class PointerWrap {
 public:
  /// Pixels. Below 2 on an axis nothing wraps there.
  void SetSize(int width, int height);
  /// The pointer has been pressed, released or put somewhere by others: it is where it seems to be.
  void Restart(PixelPosition position);
  /// Where the pointer would be. With `wrapping`, `jump` becomes where it has to be set to now, if anywhere.
  PixelPosition Follow(PixelPosition position, bool wrapping, std::optional<PixelPosition>& jump);
  PixelPosition GetPosition() const { return {axes[0].last, axes[1].last}; }

 private:
  struct Axis {
    int size = 0;
    int last = 0;    // of the pointer itself
    int offset = 0;  // whole sizes that it has been set back by
    int before = 0;  // the last jump
    int offsetBefore = 0;
    bool jumped = false;
    bool refused = false;  // a jump has not been made

    void Restart(int position);
    void Follow(int position);
    bool Wrap();
  };

  std::array<Axis, 2> axes;
};

}  // namespace zovhost
