#pragma once

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

using Lines = std::vector<std::string>;

/// What everyone who takes part in a test has seen, in the order in which it came.
class Journal {
 public:
  void Add(const std::string& line) {
    if (recording) lines.push_back(line);
  }
  /// The lines until now; it starts anew.
  Lines Take() { return std::exchange(lines, {}); }
  int Count(const std::string& line) const {
    return static_cast<int>(std::count(lines.begin(), lines.end(), line));
  }

  Lines lines;
  bool recording = true;
};
