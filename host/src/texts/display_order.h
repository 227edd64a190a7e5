#pragma once

#include <string>

namespace zovhost {

/// Which way a line is read that does not say so itself, as a number or a name in other letters does not.
enum class Reading : int {
  FromLeft,
  FromRight,
  FromRightAlways,  // whatever its letters say
};

/// Lines as they stand on the screen from left to right, with their letters joined.
std::wstring ToDisplayOrder(const std::wstring& text, Reading reading);

}  // namespace zovhost
