#pragma once

#include <epoxy/gl.h>

#include <chrono>
#include <cstddef>

namespace zovhost {

/// Keeps what is drawn little ahead of what has been drawn: a driver without a graphics card sets aside
/// hundreds of bytes for each triangle that waits, and nobody knows how long a frame takes that is all put
/// into a queue at once.
class DrawPace {
 public:
  using Clock = std::chrono::steady_clock;

  /// Triangles of one step at most.
  static constexpr std::size_t STEP = 50'000;

  explicit DrawPace(Clock::time_point end) : deadline(end) {}
  ~DrawPace();
  DrawPace(const DrawPace&) = delete;
  DrawPace& operator=(const DrawPace&) = delete;

  /// After `triangles` were drawn; waits now and then. False once the time is over.
  bool Pass(std::size_t triangles);

 private:
  const Clock::time_point deadline;
  std::size_t waiting = 0;
  GLsync previous = nullptr;
};

}  // namespace zovhost
