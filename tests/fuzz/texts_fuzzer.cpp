// Tables of texts, and texts of the user's in a language whose letters join and that runs from the right.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "zovhost/phrases.h"
#include "zovhost/resource_pack.h"
#include "zovhost/wide_text.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
  static const zovhost::Phrases& phrases = zovhost::Phrases::Find(*zovhost::FindLanguage("ar"));
  const std::string text(reinterpret_cast<const char*>(bytes), count);
  zovhost::ResourcePack pack;
  std::string error;
  if (!pack.ReadStrings(text, error) && error.empty()) std::abort();
  zovhost::JoinLetters(text);
  phrases.TranslateLine(text);
  phrases.SayKey(text);
  phrases.Say(text.c_str(), {text, "other"});
  phrases.SayFormat(text.c_str(), "%d");
  return 0;
}
