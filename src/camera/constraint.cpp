#include "camera/constraint.h"

namespace Korvane {

Constraint::Constraint() = default;
Constraint::~Constraint() = default;

std::unique_ptr<Constraint> Constraint::CreateConstraint(ConstraintType /*type*/) { return nullptr; }

}  // namespace Korvane
