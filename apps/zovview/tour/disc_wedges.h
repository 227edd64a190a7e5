#pragma once

namespace Korvane {
class HelmDisc;
class TrackMenu;
struct Vector3;
}  // namespace Korvane

namespace zovview {

/// Where a region map shows one colour: the pixel of the viewport, origin at the bottom left, that is in the
/// middle of what it covers. False, with the place untouched, where it shows none.
bool FindColour(Korvane::TrackMenu& menu, const Korvane::Vector3& colour, int& x, int& y);

/// The middle of a wedge of the open disc, by its zone (a HelmDiscZone). False without such a wedge.
bool FindWedge(Korvane::HelmDisc& disc, int zone, int& x, int& y);

}  // namespace zovview
