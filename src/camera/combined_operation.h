#pragma once

#include <memory>
#include <vector>

#include "korvane/operation.h"

namespace Korvane {

/// Several operations driven by one input stream. How the members act on the camera is the subclass's.
class CombinedOperation : public Operation {
 public:
  ~CombinedOperation() override;

  void InitOperation(int x, int y, const CameraOperations* hub) override;
  void Update3DControllerInput(Vector3 translation, Vector3 rotation) override;
  void Set3DControllerOperation(bool isController) override;

  /// Takes ownership. A null member is kept and skipped.
  void AddOperation(std::unique_ptr<Operation> operation);
  int GetOperationCount() const { return static_cast<int>(members.size()); }
  /// Null for an index at or past the end, or below 0.
  Operation* GetOperation(int index) const;
  /// Destroys the member and closes the gap; an index out of range does nothing.
  void RemoveOperation(int index);
  void RemoveAll();

 protected:
  CombinedOperation();

 private:
  bool IsIndex(int index) const { return index >= 0 && index < GetOperationCount(); }

  std::vector<std::unique_ptr<Operation>> members;
};

}  // namespace Korvane
