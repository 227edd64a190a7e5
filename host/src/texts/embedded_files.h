#pragma once

#include <cstddef>
#include <string_view>

namespace zovhost {

/// A file of host/resources, built into a library.
struct EmbeddedFile {
  std::string_view name;  // its path within that folder, with slashes
  std::string_view content;
};

struct EmbeddedFiles {
  const EmbeddedFile* begin;
  const EmbeddedFile* end;
};

// Generated at build time from the folder.

/// The tables of phrases.
EmbeddedFiles GetEmbeddedPhrases();
/// Pictures, texts and cursors.
EmbeddedFiles GetEmbeddedFiles();

}  // namespace zovhost
