#pragma once

#include <memory>

#include "sheet.h"
#include "zovhost/image.h"
#include "zovhost/resource_pack.h"

namespace zovsheets {

/// Every kind of text that appears in a view, the pivot and the targets of a walk, in one picture. Needs a
/// current OpenGL context. `scale`: pixels for one point.
/// False when the driver refuses, and when a picture is missing.
bool PaintNotes(Ground ground, double scale, zovhost::Image& image,
                std::shared_ptr<const zovhost::ResourcePack> pack = nullptr);

}  // namespace zovsheets
