#pragma once

#include "korvane/camera_parameters.h"
#include "korvane/export.h"
#include "korvane/lifeline.h"
#include "korvane/rewind_history.h"

namespace Korvane {

class CameraOperations;

/// The record that a camera move opens in the rewind history and closes when it is over: once, and in the
/// history in which it was opened, unless that is gone.
class ZOVTOOLS_API RewindRecord {
 public:
  RewindRecord() = default;
  /// Takes the open record over: the other one is closed then.
  RewindRecord(RewindRecord&& other) noexcept;
  RewindRecord& operator=(RewindRecord&& other) noexcept;
  ~RewindRecord() = default;

  /// Opens a record with the camera before the move. A record that is still open is left so: the new one
  /// takes its place. Null records nothing.
  void Begin(RewindHistory* value, const CameraParameters& camera);
  /// A camera within the move, once a frame. Nothing when closed.
  void Sample(const CameraParameters& camera);
  /// Closes the record with the camera after the move. Nothing when closed.
  void End(const CameraParameters& camera);
  /// With the host's camera of now, which is asked for only when the record is open. Without a hub the
  /// record is forgotten.
  void End(const CameraOperations* hub);
  /// Lets go of the record as it is.
  void Forget() { history.Set(nullptr); }

  bool IsOpen() const { return history.Get() != nullptr; }
  bool IsOpenIn(const RewindHistory* value) const { return value != nullptr && history.Get() == value; }

 private:
  Borrowed<RewindHistory> history;
};

}  // namespace Korvane
