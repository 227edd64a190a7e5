#pragma once

#include <filesystem>
#include <string>

#include "zovhost/gl_scene_view.h"
#include "zovhost/view_hub.h"

namespace zovview {

/// Writes what a view shows of the model as a PNG, `enlargement` times as wide and high as the view, with its
/// lines as much wider; `scale` is that of the view, `selectedPart` its part or -1. In the context of the
/// scene view. False with one line in `error`, and no file.
bool WritePictureFile(const std::filesystem::path& file, const zovhost::ViewHub& hub,
                      zovhost::GLSceneView& sceneView, int selectedPart, int enlargement, double scale,
                      std::string& error);

}  // namespace zovview
