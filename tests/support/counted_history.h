#pragma once

#include <functional>

#include "korvane/rewind_history.h"

/// Knows how many records are open, and calls the test when one begins and when one ends.
class CountedHistory : public Korvane::RewindHistory {
 public:
  bool BeginElementRecord(const Korvane::CameraParameters& camera) override {
    ++open;
    const bool begun = RewindHistory::BeginElementRecord(camera);
    if (onRecord) onRecord();
    return begun;
  }
  bool EndElementRecord(const Korvane::CameraParameters& camera) override {
    --open;
    const bool ended = RewindHistory::EndElementRecord(camera);
    if (onRecord) onRecord();
    return ended;
  }

  int open = 0;
  std::function<void()> onRecord;
};
