#pragma once

#include <atomic>
#include <thread>

/// The most memory that this process and its children have had together, looked at by a thread of its own.
class MemoryWatch {
 public:
  MemoryWatch();
  ~MemoryWatch() { Stop(); }
  MemoryWatch(const MemoryWatch&) = delete;
  MemoryWatch& operator=(const MemoryWatch&) = delete;

  void Stop();
  /// In bytes.
  double GetPeak() const { return peak; }

 private:
  void Watch();

  std::atomic<bool> stopped = false;
  std::atomic<double> peak = 0.0;
  std::thread thread;
};
