#pragma once

#include <string>

#include "zov/qmtext.h"

/// Texts between host and library.
class zovStringConverter {
 public:
  /// The text's own memory, ended by a zero: valid until the text is assigned to or goes, so never longer
  /// than the expression for a text that has no name. A zero within the text ends it for whoever reads it so.
  static const wchar_t* to_KORVANE_CHAR_T(const qmString& text) { return text.convert(qmStringWcs).c_str(); }
  /// A copy, zeros included.
  static std::wstring to_KORVANE_STRING_T(const qmString& text) { return text.convert(qmStringWcs); }
  /// Well formed, as every qmString; see there what becomes of the rest.
  static qmString to_qmString(const std::wstring& text) { return {text, qmStringWcs}; }
};
