#pragma once

#include <span>
#include <string_view>

namespace zovhost {

/// The point that an orbit turns about, whatever begins it: the mouse, a disc, the cube, a six-axis device.
enum class PivotPolicy : int {
  Last,       ///< The one of before, which zooms, looks and the centre tool set; brought into the view.
  Pointer,    ///< Of the model under the pointer; the last beside it.
  Selection,  ///< The middle of what is selected, or else of the scene.
  Scene,      ///< The middle of the whole model.
};

struct PivotPolicyName {
  PivotPolicy policy;
  std::string_view name;  ///< For files and commands: stays when the label changes.
  const char* label;      ///< For a person to read.
};

/// In the order of the policies.
std::span<const PivotPolicyName> GetPivotPolicies();
/// Last for a name that none has.
PivotPolicy FindPivotPolicy(std::string_view name);

/// Zooms go to the pivot as well, instead of to the point under the pointer.
constexpr bool DrawsZooms(PivotPolicy policy) {
  return policy == PivotPolicy::Selection || policy == PivotPolicy::Scene;
}

}  // namespace zovhost
