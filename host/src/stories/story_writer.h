#pragma once

#include <string>

#include "korvane/story.h"
#include "stories/unknown_fields.h"

namespace zovhost {

/// The file of a story with what is unknown here. False puts one line into `error`.
bool WriteStory(const Korvane::Story& story, const UnknownFields& unknown, OrderedJson& file,
                std::string& error);

}  // namespace zovhost
