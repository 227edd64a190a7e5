#pragma once

#include "korvane/export.h"
#include "korvane/lifeline.h"

namespace Korvane {

struct CameraParameters;

/// The cameras that the user has passed through. Whatever moves the camera brackets its move with
/// BeginElementRecord and EndElementRecord.
///
/// The history itself is still to come: for now this class only stands for it, so that it can be held and
/// told of moves. It keeps nothing.
///
/// Inside its operations a host may do what it may inside those of the hub, and take the history away from
/// whoever calls. A record is closed in the history in which it was opened, by a tool at the latest when that
/// is taken away; a history that is gone by then is left alone.
class ZOVTOOLS_API RewindHistory {
 public:
  RewindHistory();
  virtual ~RewindHistory();
  RewindHistory(const RewindHistory&) = delete;
  RewindHistory& operator=(const RewindHistory&) = delete;

  /// Opens a record with the camera before the move. False when nothing is recorded.
  virtual bool BeginElementRecord(const CameraParameters& camera);
  /// Closes it with the camera after the move. False when nothing was recorded.
  virtual bool EndElementRecord(const CameraParameters& camera);
  /// A camera within the move; called for every frame of it.
  virtual bool AddElementSubrecord(const CameraParameters& camera);

  Lifeline& GetLifeline() { return lifeline; }

 private:
  Lifeline lifeline;
};

}  // namespace Korvane
