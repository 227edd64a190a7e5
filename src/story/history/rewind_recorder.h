#pragma once

#include "story/history/rewind_elements.h"

namespace Korvane {

/// The bracket around a move of the camera.
class RewindRecorder {
 public:
  RewindRecorder(RewindPartners& historyPartners, RewindElements& history, const RewindStrip& filmStrip)
      : partners(historyPartners), elements(history), strip(filmStrip) {}

  bool Begin(const CameraParameters& camera);
  bool End(const CameraParameters& camera);

  bool enabled = true;

 private:
  RewindPartners& partners;
  RewindElements& elements;
  const RewindStrip& strip;
  bool armed = true;  // the open record is to be ended
  CameraParameters start;
};

}  // namespace Korvane
