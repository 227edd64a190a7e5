#pragma once

#include <filesystem>
#include <string>

#include "files/model_source.h"

namespace zovview {

struct TourOptions {
  int width = 1280;  // pixels
  int height = 800;
  std::filesystem::path directory;
  std::string ground = {};  // a name of the kit's grounds; empty: the first
  std::string glance = {};  // a name of the glances instead of the whole tour
};

/// Shows a model without a display: plays the tour through the hub and writes it as pictures. The exit code
/// of the program; what fails is told in one line on the error stream.
int RunTour(const LoadedModel& model, const TourOptions& options);

}  // namespace zovview
