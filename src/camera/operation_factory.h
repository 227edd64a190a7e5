#pragma once

#include <memory>

#include "korvane/operation.h"

namespace Korvane {

/// A kind of operation that is made higher in the house: for as long as this object lives, the factory makes
/// it. Whoever owns the class holds one for the life of the process; it may be made before main begins.
class OperationKind {
 public:
  using Make = std::unique_ptr<Operation> (*)();

  /// Holds nothing for a kind out of range, one that is made already, and a null `make`.
  OperationKind(OperationType type, Make make);
  OperationKind(const OperationKind&) = delete;
  OperationKind& operator=(const OperationKind&) = delete;
  ~OperationKind();

  bool IsHeld() const { return held; }

 private:
  const OperationType kind;
  const bool held;
};

}  // namespace Korvane
