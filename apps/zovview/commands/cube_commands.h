#pragma once

#include "commands/view_commands.h"
#include "korvane/orientor_parameters.h"

namespace zovhost {
class Phrases;
}

namespace zovview {

// What the menu of the cube and the list of coordinate systems below it offer.

void GoHomeByCube(const ViewTarget& target);
/// The present view becomes the one where home leads.
void MakeHome(const ViewTarget& target);

/// The camera blends from the one to the other; a blend that is under way turns round. Ends the change of
/// projection at the faces.
void SetOrthographic(const ViewTarget& target, bool orthographic);
void UsePerspective(const ViewTarget& target);
void UseOrthographic(const ViewTarget& target);
/// Perspective, but orthographic where the view comes to rest along an axis of the scene.
void UseOrthographicFaces(const ViewTarget& target);
bool IsPlainPerspective(const ViewTarget& target);
bool IsPlainOrthographic(const ViewTarget& target);
bool HasOrthographicFaces(const ViewTarget& target);

/// The scene stays what is selected now. Nothing happens without a selection.
void ToggleLock(const ViewTarget& target);
bool IsLocked(const ViewTarget& target);
void ToggleFitOnClick(const ViewTarget& target);
bool FitsOnClick(const ViewTarget& target);
void ToggleCompass(const ViewTarget& target);
bool HasCompass(const ViewTarget& target);
void ToggleCoordinates(const ViewTarget& target);
bool HasCoordinates(const ViewTarget& target);

void SetCubeSize(const ViewTarget& target, Korvane::OrientorParameters::Size size);
void SetCubeCorner(const ViewTarget& target, Korvane::OrientorParameters::Location corner);
/// Of the cube with the pointer far away.
void SetCubeOpacity(const ViewTarget& target, float opacity);
const Korvane::OrientorParameters& GetCubeParameters(const ViewTarget& target);

template <Korvane::OrientorParameters::Size SIZE>
void UseCubeSize(const ViewTarget& target) {
  SetCubeSize(target, SIZE);
}
template <Korvane::OrientorParameters::Size SIZE>
bool IsCubeSize(const ViewTarget& target) {
  return GetCubeParameters(target).size == SIZE;
}
template <Korvane::OrientorParameters::Location CORNER>
void UseCubeCorner(const ViewTarget& target) {
  SetCubeCorner(target, CORNER);
}
template <Korvane::OrientorParameters::Location CORNER>
bool IsCubeCorner(const ViewTarget& target) {
  return GetCubeParameters(target).screen_location == CORNER;
}
template <int PERCENT>
void UseCubeOpacity(const ViewTarget& target) {
  SetCubeOpacity(target, PERCENT / 100.0F);
}
template <int PERCENT>
bool IsCubeOpacity(const ViewTarget& target) {
  return GetCubeParameters(target).min_opacity == PERCENT / 100.0F;
}

enum class CoordinateSystem : int { Model = 0, YUpward, ZUpward };

// What is up, for the cube, the standard views and a walk.
void UseModelCoordinates(const ViewTarget& target);
void UseYUpward(const ViewTarget& target);
void UseZUpward(const ViewTarget& target);
bool IsCoordinateSystem(const ViewTarget& target, CoordinateSystem system);
/// The process has come to speak another language: the cube reads its texts again. `before`: what it spoke.
void RenewCubeWords(const ViewTarget& target, const zovhost::Phrases& before);
template <CoordinateSystem SYSTEM>
bool HasCoordinatesOf(const ViewTarget& target) {
  return IsCoordinateSystem(target, SYSTEM);
}

}  // namespace zovview
