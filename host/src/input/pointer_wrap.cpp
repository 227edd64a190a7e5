#include "zovhost/pointer_wrap.h"

#include <cstdlib>

namespace zovhost {

void PointerWrap::SetSize(int width, int height) {
  axes[0].size = width;
  axes[1].size = height;
}

void PointerWrap::Restart(PixelPosition position) {
  axes[0].Restart(position.x);
  axes[1].Restart(position.y);
}

void PointerWrap::Axis::Restart(int position) {
  last = position;
  offset = 0;
  jumped = refused = false;
}

PixelPosition PointerWrap::Follow(PixelPosition position, bool wrapping, std::optional<PixelPosition>& jump) {
  const PixelPosition previous = GetPosition();
  axes[0].Follow(position.x);
  axes[1].Follow(position.y);
  if (wrapping) {
    // A pointer that cannot be pushed beyond an edge wraps when it comes to it.
    const bool onEdgeX = previous.x != axes[0].last && axes[0].Wrap();
    const bool onEdgeY = previous.y != axes[1].last && axes[1].Wrap();
    if (onEdgeX || onEdgeY) jump = GetPosition();
  }
  return {axes[0].last + axes[0].offset, axes[1].last + axes[1].offset};
}

// The first motion after a jump starts where that has led to, or else there was none.
void PointerWrap::Axis::Follow(int position) {
  if (jumped && std::abs(position - before) < std::abs(position - last)) {
    offset = offsetBefore;
    refused = true;
  }
  jumped = false;
  last = position;
}

bool PointerWrap::Axis::Wrap() {
  if (size < 2 || refused) return false;
  if (last > 0 && last < size - 1) return false;
  const int beyond = last == 0 ? -1 : last == size - 1 ? size : last;
  const int target = (beyond % size + size) % size;
  before = last;
  offsetBefore = offset;
  offset += beyond - target;
  last = target;
  jumped = true;
  return true;
}

}  // namespace zovhost
