#pragma once

namespace Korvane {

class Shot;

/// What the frame has to know of the class of the active shot. The camera engine stands below the shots,
/// so the answer is given by src/shots, where the classes are known.
enum class ShotRole { Plain, Rotating, Aligning, ChangingProjection };

ShotRole GetShotRole(const Shot& shot);

}  // namespace Korvane
