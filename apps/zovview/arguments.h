#pragma once

#include <optional>
#include <string>

#include "tour/tour.h"

namespace zovview {

/// What the command line asks for.
struct Arguments {
  std::string model;
  bool headless = false;
  bool split = false;
  int views = 1;
  bool log = false;
  bool noSettings = false;
  std::string record;
  std::string replay;
  std::string play;
  std::string language;
  std::string view;
  int rate = 6;
  double scale = 0.0;
  TourOptions tour;
};

constexpr int EXIT_BAD_INPUT = 2;

/// The exit code when the program is to end here: help was asked for, or a line on stderr says what is wrong.
std::optional<int> ReadArguments(int argc, char** argv, Arguments& arguments);

}  // namespace zovview
