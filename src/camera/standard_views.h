#pragma once

#include <array>

#include "korvane/vector3.h"

namespace Korvane {

/// The 26 directions from a target to an eye that count as standard views: six faces first, then twelve
/// edges, then eight corners.
class StandardViews {
 public:
  static constexpr int COUNT = 26;
  static constexpr int FACE_COUNT = 6;

  /// A direction (a, b, c) becomes a front + b up + c side.
  void Fill(const Vector3& front, const Vector3& up, const Vector3& side);

  /// As filled in, not normalised.
  const Vector3& GetDirection(int index) const { return directions[static_cast<std::size_t>(index)]; }

  /// The direction whose view runs most nearly along `view`, among the faces or among all; the lowest wins
  /// a tie. The direction itself, which points against the view.
  const Vector3& GetClosestAlignDir(const Vector3& view, bool facesOnly) const;

 private:
  std::array<Vector3, COUNT> directions;
  std::array<Vector3, COUNT> viewDirections;  // the normalised opposites
};

}  // namespace Korvane
