#include "files/progress_line.h"

#include <algorithm>
#include <cstdio>
#if defined(_WIN32)
#  include <io.h>
#else
#  include <unistd.h>
#endif

namespace zovview {

namespace {

constexpr int BAR_LENGTH = 24;
constexpr const char* CLEAR_LINE = "\r\033[K";

bool IsTerminal() {
#if defined(_WIN32)
  return _isatty(_fileno(stderr)) != 0;
#else
  return isatty(STDERR_FILENO) != 0;
#endif
}

}  // namespace

void PrintLine(const std::string& line) {
  std::fprintf(stderr, "%szovview: %s\n", IsTerminal() ? CLEAR_LINE : "", line.c_str());
}

ProgressLine::ProgressLine(OffTerminal off) : offTerminal(off), onTerminal(IsTerminal()) {}

ProgressLine::~ProgressLine() { Clear(); }

void ProgressLine::Show(double fraction, const std::string& what) {
  const int percent = static_cast<int>(std::clamp(fraction, 0.0, 1.0) * 100.0);
  if (onTerminal) {
    ShowOnTerminal(percent, what);
  } else if (offTerminal == OffTerminal::Quarters) {
    ShowQuarter(percent, what);
  }
  lastPercent = percent;
  lastText = what;
}

void ProgressLine::ShowOnTerminal(int percent, const std::string& what) {
  if (percent == lastPercent && what == lastText) return;
  const int filled = percent * BAR_LENGTH / 100;
  const std::string bar = std::string(static_cast<std::size_t>(filled), '#') +
                          std::string(static_cast<std::size_t>(BAR_LENGTH - filled), '.');
  std::fprintf(stderr, "%s[%s] %3d %%  %s", CLEAR_LINE, bar.c_str(), percent, what.c_str());
  std::fflush(stderr);
}

void ProgressLine::ShowQuarter(int percent, const std::string& what) {
  if (percent / 25 == lastPercent / 25 && lastPercent >= 0) return;
  std::fprintf(stderr, "%3d %%  %s\n", percent, what.c_str());
}

void ProgressLine::Clear() {
  if (onTerminal && lastPercent >= 0) {
    std::fputs(CLEAR_LINE, stderr);
    std::fflush(stderr);
  }
  lastPercent = -1;
}

}  // namespace zovview
