#pragma once

#include <nlohmann/json_fwd.hpp>

#include "korvane/orientor_parameters.h"

namespace zovview {

struct ViewTarget;

/// What is kept of the orientation cube, and of how it turns the view, from one start of the program to the
/// next.
struct KeptCube {
  using Parameters = Korvane::OrientorParameters;

  /// Of a first start.
  KeptCube();

  Parameters::Size size;
  Parameters::Location corner;
  double opacity;  ///< At rest, 0 to 1.
  bool compass;
  bool fitsOnClick;
  bool snaps;  ///< To the standard views, also beside the cube.

  friend bool operator==(const KeptCube&, const KeptCube&) = default;

  nlohmann::ordered_json Format() const;
  /// What is missing stays. False, with some of it taken, where anything is wrong.
  bool Take(const nlohmann::ordered_json& from);
};

KeptCube ReadCube(const ViewTarget& target);
/// To a cube that has been created.
void RestoreCube(const KeptCube& kept, const ViewTarget& target);

}  // namespace zovview
