#pragma once

#include "camera/find_operation.h"
#include "korvane/camera_operations.h"
#include "korvane/operation.h"
#include "korvane/rewind_record.h"

namespace Korvane {

class DiscRegionListener;

/// An operation of the hub that a wedge drives by itself, and the record of it. Each ends once, in the hub in
/// which it was begun, at the latest with the wedge.
class WedgeOperation {
 public:
  explicit WedgeOperation(OperationType operationType) : type(operationType) {}
  WedgeOperation(const WedgeOperation&) = delete;
  WedgeOperation& operator=(const WedgeOperation&) = delete;
  ~WedgeOperation() { End(); }

  /// At a viewport pixel. What is still open ends before.
  void Begin(CameraOperations& operated, int x, int y);
  /// With the host's camera; not where the operation has ended meanwhile.
  void BeginRecord(const DiscRegionListener& wedge);
  void Move(int x, int y);
  /// A frame of the record.
  void Sample();
  /// The record stays open.
  void EndOperation();
  void End();

  /// Null where none is active.
  template <class Kind>
  Kind* Get() const {
    return FindOperation<Kind>(hub.Get(), type);
  }

 private:
  void EndOpen();

  const OperationType type;
  Borrowed<CameraOperations> hub;  // in which the operation, or its record, is open
  bool operating = false;
  RewindRecord record;
  Lifeline ends;  // cut by End: what is about to begin then does not
};

}  // namespace Korvane
