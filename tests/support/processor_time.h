#pragma once

#include <ctime>

/// What this process has used of the processor, in seconds; that of other programs does not count. For bounds
/// that hold on a busy machine.
class ProcessorTime {
 public:
#if defined(__SANITIZE_ADDRESS__)
  static constexpr double SLOWER = 8.0;
#else
  static constexpr double SLOWER = 1.0;
#endif

  /// Since it was made, or restarted; less where a sanitizer makes everything slower.
  double Get() const { return static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC / SLOWER; }
  void Restart() { begin = std::clock(); }

 private:
  std::clock_t begin = std::clock();
};
