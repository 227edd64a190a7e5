#pragma once

#include <memory>

namespace Korvane {

/// The base of restrictions on the motion of a camera. There are none; the kinds are numbered by hosts.
class Constraint {
 public:
  enum ConstraintType : int {};

  virtual ~Constraint();
  /// Null for every kind.
  static std::unique_ptr<Constraint> CreateConstraint(ConstraintType type);

 protected:
  Constraint();
};

}  // namespace Korvane
