#pragma once

#include <string>

#include "korvane/renderer.h"

namespace Korvane {

/// The name of the n-th object of a kind, by a format of the host in which "%d", with or without a width,
/// stands for the number and "%%" for a per cent sign; whatever else there is stands for itself. A format
/// without a place for the number has it behind. At most 255 characters, the number always among them.
std::wstring FormatName(const std::wstring& format, unsigned number);

/// The format of the host, or the library's own where the host has none.
std::wstring LoadNameFormat(Renderer* renderer, StringID id, const wchar_t* otherwise);

/// The lowest name, counted from 1, that `isTaken(name)` does not know.
template <class IsTaken>
std::wstring FindFreeName(const std::wstring& format, const IsTaken& isTaken) {
  for (unsigned number = 1;; ++number) {
    std::wstring name = FormatName(format, number);
    if (!isTaken(name)) return name;
  }
}

}  // namespace Korvane
