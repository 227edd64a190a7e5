#include "window/find_typeface.h"

#include <fontconfig/fontconfig.h>
#include <ft2build.h>
#include FT_FREETYPE_H

#include <filesystem>
#include <memory>

#include "zovhost/typefaces.h"

namespace zovhost {

namespace {

struct FontconfigDeleter {
  void operator()(FcPattern* pattern) const { FcPatternDestroy(pattern); }
  void operator()(FcCharSet* characters) const { FcCharSetDestroy(characters); }
};
using FontPattern = std::unique_ptr<FcPattern, FontconfigDeleter>;
using CharacterSet = std::unique_ptr<FcCharSet, FontconfigDeleter>;

const FcChar8* ToFontconfig(const char* text) { return reinterpret_cast<const FcChar8*>(text); }

// A typeface of Chinese says which way of writing it has.
std::string GetFontLanguage(std::string_view tag) { return tag == "zh" ? "zh-cn" : std::string(tag); }

FontPattern MakeWanted(std::string_view tag, const std::vector<wchar_t>& characters, bool needed) {
  FontPattern wanted(FcPatternCreate());
  if (wanted == nullptr) return wanted;
  for (const char* const family : TYPEFACES) {
    FcPatternAddString(wanted.get(), FC_FAMILY, ToFontconfig(family));
  }
  FcPatternAddString(wanted.get(), FC_LANG, ToFontconfig(GetFontLanguage(tag).c_str()));
  FcPatternAddBool(wanted.get(), FC_SCALABLE, FcTrue);
  if (needed) {
    const CharacterSet set(FcCharSetCreate());
    for (const wchar_t character : characters) FcCharSetAddChar(set.get(), static_cast<FcChar32>(character));
    FcPatternAddCharSet(wanted.get(), FC_CHARSET, set.get());
  }
  FcConfigSubstitute(nullptr, wanted.get(), FcMatchPattern);
  FcDefaultSubstitute(wanted.get());
  return wanted;
}

double MeasureHeight(const Typeface& typeface) {
  FT_Library library = nullptr;
  if (FT_Init_FreeType(&library) != 0) return 1.0;
  double height = 1.0;
  FT_Face face = nullptr;
  if (FT_New_Face(library, typeface.file.c_str(), typeface.index, &face) == 0) {
    const bool usable = face->units_per_EM > 0 && face->ascender > face->descender;
    if (usable) height = static_cast<double>(face->ascender - face->descender) / face->units_per_EM;
    FT_Done_Face(face);
  }
  FT_Done_FreeType(library);
  return height;
}

}  // namespace

Typeface FindTypeface(std::string_view languageTag, const std::vector<wchar_t>& characters, bool needed) {
  const FontPattern wanted = MakeWanted(languageTag, characters, needed);
  if (wanted == nullptr) return {};
  FcResult result = FcResultNoMatch;
  const FontPattern found(FcFontMatch(nullptr, wanted.get(), &result));
  FcChar8* file = nullptr;
  FcCharSet* has = nullptr;
  if (found == nullptr || FcPatternGetString(found.get(), FC_FILE, 0, &file) != FcResultMatch) return {};
  Typeface typeface;
  typeface.file = reinterpret_cast<const char*>(file);
  std::error_code failure;
  if (!std::filesystem::is_regular_file(typeface.file, failure)) return {};
  constexpr int INDEX_BITS = 0xFFFF;  // those above number the instances of a variable typeface
  if (FcPatternGetInteger(found.get(), FC_INDEX, 0, &typeface.index) != FcResultMatch) typeface.index = 0;
  typeface.index &= INDEX_BITS;
  if (FcPatternGetCharSet(found.get(), FC_CHARSET, 0, &has) == FcResultMatch) {
    for (const wchar_t character : characters) {
      if (FcCharSetHasChar(has, static_cast<FcChar32>(character)) != 0)
        typeface.characters.push_back(character);
    }
  }
  typeface.height = MeasureHeight(typeface);
  return typeface;
}

}  // namespace zovhost
