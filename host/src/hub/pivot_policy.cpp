#include "zovhost/pivot_policy.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

#include "zovhost/view_hub.h"

namespace zovhost {

using Korvane::Vector3;

namespace {

constexpr std::array<PivotPolicyName, 4> POLICIES = {{
    {PivotPolicy::Last, "last", "About the last point"},
    {PivotPolicy::Pointer, "pointer", "About the point under the pointer"},
    {PivotPolicy::Selection, "selection", "About the selection"},
    {PivotPolicy::Scene, "scene", "About the middle of the model"},
}};

std::optional<Vector3> GetMiddle(const Korvane::ApplicationParameters& scene) {
  if (!(scene.global_bound_radius > 0.0)) return std::nullopt;
  return scene.global_bound_centre;
}

}  // namespace

std::span<const PivotPolicyName> GetPivotPolicies() { return POLICIES; }

PivotPolicy FindPivotPolicy(std::string_view name) {
  const auto* const found = std::find_if(POLICIES.begin(), POLICIES.end(),
                                         [name](const PivotPolicyName& each) { return each.name == name; });
  return found != POLICIES.end() ? found->policy : PivotPolicy::Last;
}

// ---- of the hub ----

std::optional<Vector3> ViewHub::FindPivot() {
  const Korvane::ApplicationParameters& scene = GetApplicationParameters();
  switch (pivotPolicy) {
    case PivotPolicy::Last:
      return std::nullopt;
    case PivotPolicy::Pointer:
      return pickPivot ? pickPivot() : std::nullopt;
    case PivotPolicy::Selection:
      return IsGeometrySelected() ? scene.selected_bound_centre : GetMiddle(scene);
    case PivotPolicy::Scene:
      return GetMiddle(scene);
  }
  return std::nullopt;
}

// The camera shows the same.
bool ViewHub::ChoosePivot() {
  const std::optional<Vector3> pivot = FindPivot();
  if (!pivot.has_value() || !pivot->IsFinite()) return false;
  view.pivot = *pivot;
  return true;
}

bool ViewHub::ConstrainPivotToViewport() {
  return ChoosePivot() || CameraOperations::ConstrainPivotToViewport();
}

// All others that turn about the pivot have it brought into the view first.
bool ViewHub::BeginOperation(Korvane::OperationType type, int x, int y) {
  if (type == Korvane::OPERATION_CAM3D_CONTROLLER) ChoosePivot();
  return CameraOperations::BeginOperation(type, x, y);
}

}  // namespace zovhost
