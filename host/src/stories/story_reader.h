#pragma once

#include <memory>
#include <string>

#include "korvane/story.h"
#include "stories/unknown_fields.h"

namespace zovhost {

/// The story of a file, and in `unknown`, which holds nothing yet, what else the file says. Null puts one
/// line into `error`.
std::unique_ptr<Korvane::Story> ReadStory(Json file, UnknownFields& unknown, std::string& error);

}  // namespace zovhost
