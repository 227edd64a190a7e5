#pragma once

#include <optional>

namespace zovhost {

/// Counts a wheel as the library wants it, 120 a notch. What a fine wheel turns beyond a whole count goes
/// into the next.
class WheelCounter {
 public:
  /// Positive away from the user. Nothing for a turn that comes of no hand, which counts for nothing.
  std::optional<int> Turn(double notches);
  void Restart() { rest = 0.0; }

 private:
  double rest = 0.0;  // below one count
};

}  // namespace zovhost
