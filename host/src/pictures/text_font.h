#pragma once

#include <pango/pangocairo.h>

#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "zovhost/typefaces.h"

namespace zovhost {

/// The language of the texts that are set as long as this is there, on this thread: typefaces write some
/// characters otherwise in one language than in another. Without one it is the one of the process's locale.
class LanguageInUse {
 public:
  explicit LanguageInUse(std::string_view tag)
      : before(std::exchange(now, pango_language_from_string(std::string(tag).c_str()))) {}
  LanguageInUse(const LanguageInUse&) = delete;
  LanguageInUse& operator=(const LanguageInUse&) = delete;
  ~LanguageInUse() { now = before; }

  static PangoLanguage* Get() { return now; }

 private:
  static inline thread_local PangoLanguage* now = nullptr;
  PangoLanguage* before;
};

struct PangoDeleter {
  void operator()(PangoLayout* layout) const { g_object_unref(layout); }
  void operator()(PangoFontDescription* font) const { pango_font_description_free(font); }
};
using TextLayout = std::unique_ptr<PangoLayout, PangoDeleter>;

/// The one typeface of the kit, at a size in units of the layout's context. `narrow`: its condensed form,
/// where there is one.
inline void SetFont(PangoLayout* layout, double size, bool bold, bool narrow = false) {
  const std::unique_ptr<PangoFontDescription, PangoDeleter> font(pango_font_description_new());
  pango_font_description_set_family_static(font.get(), TYPEFACE_LIST);
  pango_font_description_set_weight(font.get(), bold ? PANGO_WEIGHT_SEMIBOLD : PANGO_WEIGHT_NORMAL);
  if (narrow) pango_font_description_set_stretch(font.get(), PANGO_STRETCH_CONDENSED);
  pango_font_description_set_absolute_size(font.get(), size * PANGO_SCALE);
  pango_layout_set_font_description(layout, font.get());
  if (LanguageInUse::Get() == nullptr) return;
  pango_context_set_language(pango_layout_get_context(layout), LanguageInUse::Get());
  pango_layout_context_changed(layout);
}

}  // namespace zovhost
