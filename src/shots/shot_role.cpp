#include "camera/shot_role.h"

#include <typeinfo>

#include "shots/crane_shot.h"
#include "shots/look_shot.h"
#include "shots/orbit_shot.h"
#include "shots/projection_transition_shot.h"
#include "shots/view_align_shot.h"

namespace Korvane {

ShotRole GetShotRole(const Shot& shot) {
  struct Row {
    const std::type_info& type;
    ShotRole role;
  };
  static const Row ROLES[] = {
      {typeid(CraneShot), ShotRole::Rotating},
      {typeid(LookShot), ShotRole::Rotating},
      {typeid(OrbitShot), ShotRole::Rotating},
      {typeid(ViewAlignShot), ShotRole::Aligning},
      {typeid(ProjectionTransitionShot), ShotRole::ChangingProjection},
  };
  for (const Row& row : ROLES) {
    if (row.type == typeid(shot)) return row.role;
  }
  return ShotRole::Plain;
}

}  // namespace Korvane
