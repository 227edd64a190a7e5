#pragma once

#include <string>

#include "zovhost/image.h"

namespace zovhost {

/// True for an image with pixels and as many bytes as they take; else a few words go into `error`.
bool IsDrawable(const Image& image, std::string& error);

}  // namespace zovhost
