#pragma once

#include <span>

namespace zovhost {

/// A list of phrases that folds down, under an identifier without words. True when another row was chosen.
bool ChoosePhrase(const char* id, int& row, std::span<const char* const> phrases);

}  // namespace zovhost
