#pragma once

#include <filesystem>
#include <string>

#include "files/model_source.h"

namespace zovview {

/// One picture of a view of a model, without a display.
struct ViewStill {
  std::string view;           ///< The name of a view that is kept of the model, or a file of views.
  std::filesystem::path out;  ///< A .png, or the folder that gets view.png; empty: out.
  int width = 1280;           ///< Pixels.
  int height = 800;
  double scale = 1.0;                   ///< Pixels for one point, for the width of lines.
  std::string ground = {};              ///< A name of the kit's grounds; empty: the first.
  std::filesystem::path ownViews = {};  ///< Where the user keeps views of models that have none beside them.
};

/// Writes it, whole or not at all. The exit code of the program: 2 where there is no such view; what fails is
/// told in one line on the error stream.
int WriteViewStill(const LoadedModel& model, const ViewStill& still);

}  // namespace zovview
