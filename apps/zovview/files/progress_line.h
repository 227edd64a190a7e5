#pragma once

#include <string>

namespace zovview {

/// A line of its own on the error stream, in place of a progress that stands there.
void PrintLine(const std::string& line);

/// One line on the error stream that tells how far something is. On a terminal it is written over and over
/// in place; elsewhere a line is added at each quarter, or nothing at all if so asked.
class ProgressLine {
 public:
  enum class OffTerminal { Quarters, Silent };

  explicit ProgressLine(OffTerminal offTerminal);
  /// Leaves the terminal's line clean.
  ~ProgressLine();
  ProgressLine(const ProgressLine&) = delete;
  ProgressLine& operator=(const ProgressLine&) = delete;

  /// `fraction` from 0 to 1.
  void Show(double fraction, const std::string& what);
  void Clear();

 private:
  void ShowOnTerminal(int percent, const std::string& what);
  void ShowQuarter(int percent, const std::string& what);

  OffTerminal offTerminal;
  bool onTerminal;
  int lastPercent = -1;
  std::string lastText;
};

}  // namespace zovview
