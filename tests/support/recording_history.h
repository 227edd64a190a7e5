#pragma once

#include <gtest/gtest.h>

#include <functional>

#include "korvane/camera_parameters.h"
#include "korvane/rewind_history.h"

/// Counts the records, keeps their cameras, and then does what the test wants. Two may be open at once, as
/// where a shot is begun while another runs.
class RecordingHistory : public Korvane::RewindHistory {
 public:
  bool BeginElementRecord(const Korvane::CameraParameters& camera) override {
    ++begun;
    open = true;
    beginCamera = camera;
    if (onBegin) onBegin();
    return true;
  }
  bool EndElementRecord(const Korvane::CameraParameters& camera) override {
    ++ended;
    open = false;
    endCamera = camera;
    if (onEnd) onEnd();
    return true;
  }
  bool AddElementSubrecord(const Korvane::CameraParameters& camera) override {
    ++samples;
    sampleCamera = camera;
    return true;
  }

  int GetOpenCount() const { return begun - ended; }
  /// As many begun as given and as many ended, since the beginning.
  ::testing::AssertionResult Has(int expectedBegun, int expectedEnded) const {
    if (begun == expectedBegun && ended == expectedEnded) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << begun << " begun, " << ended << " ended";
  }

  int begun = 0;
  int ended = 0;
  int samples = 0;
  bool open = false;  // the last bracket was a beginning
  Korvane::CameraParameters beginCamera;
  Korvane::CameraParameters endCamera;
  Korvane::CameraParameters sampleCamera;
  std::function<void()> onBegin;
  std::function<void()> onEnd;
};
