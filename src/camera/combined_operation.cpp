#include "camera/combined_operation.h"

#include <cstddef>
#include <utility>

namespace Korvane {

CombinedOperation::CombinedOperation() = default;
CombinedOperation::~CombinedOperation() { RemoveAll(); }

void CombinedOperation::InitOperation(int x, int y, const CameraOperations* operations) {
  Operation::InitOperation(x, y, operations);
  for (const auto& member : members) {
    if (member != nullptr) member->InitOperation(x, y, operations);
  }
}

void CombinedOperation::Update3DControllerInput(Vector3 translation, Vector3 rotation) {
  Operation::Update3DControllerInput(translation, rotation);
  for (const auto& member : members) {
    if (member != nullptr) member->Update3DControllerInput(translation, rotation);
  }
}

void CombinedOperation::Set3DControllerOperation(bool isController) {
  for (const auto& member : members) {
    if (member != nullptr) member->Set3DControllerOperation(isController);
  }
  Operation::Set3DControllerOperation(isController);
}

void CombinedOperation::AddOperation(std::unique_ptr<Operation> operation) {
  members.push_back(std::move(operation));
}

Operation* CombinedOperation::GetOperation(int index) const {
  return IsIndex(index) ? members[static_cast<std::size_t>(index)].get() : nullptr;
}

void CombinedOperation::RemoveOperation(int index) {
  if (IsIndex(index)) members.erase(members.begin() + index);
}

void CombinedOperation::RemoveAll() { members.clear(); }

}  // namespace Korvane
