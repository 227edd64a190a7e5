#pragma once

#include <initializer_list>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "zovhost/languages.h"

namespace zovhost {

/// The words of panels, menus and messages in one language, by the English phrase that stands in the code.
/// Two uses that need two words in some language have two phrases in English as well. All texts are UTF-8.
///
/// The tables are built in, a line a phrase: `English = other`, in that of English the phrase alone. A phrase
/// may have places, `{}`, that are filled when it is said; a table may set them in another order by `{1}`,
/// `{2}` and so on. Names of keys stand in brackets: `[Home] = Pos1`.
///
/// A phrase is there twice: as it is written, and as the typefaces of panels, which know nothing of joined
/// letters, draw it: each letter in the form that it takes between its neighbours. Both stand in the order in
/// which they are read; the Gui puts them into that of the screen.
class Phrases {
 public:
  /// A language of GetLanguages; any other gives English. Made when first asked for, and there as long as the
  /// process lives.
  static const Phrases& Find(const Language& language);
  ~Phrases();
  Phrases(const Phrases&) = delete;
  Phrases& operator=(const Phrases&) = delete;

  const Language& GetLanguage() const;

  // A phrase that the table does not have is given as it is. The texts live as long as the process.

  /// As a panel draws it.
  const char* Say(const char* english) const;
  /// For an item of Dear ImGui, whose identifier is the same in each language: "Speichern###Save".
  const char* SayLabel(const char* english) const;
  /// As it is written: for the title of a window, a file, a text that is set by whoever joins letters
  /// himself.
  const char* SayPlain(const char* english) const;
  bool Has(std::string_view english) const;

  /// With its places filled, as a panel draws it. A place without a value stays empty.
  std::string Say(const char* english, std::initializer_list<std::string_view> values) const;
  std::string SayPlain(const char* english, std::initializer_list<std::string_view> values) const;
  /// A phrase with one place, as a format of printf: `number` is the conversion that stands in the place.
  std::string SayFormat(const char* english, const char* number) const;
  /// The key or keys as they are named on a keyboard: "Ctrl+Z".
  std::string SayKey(std::string_view names) const;
  /// A line that was put together in English, as an error is: a phrase, or a name, ": " and a phrase. Numbers
  /// in it fill places, and so does what nobody translates at its end ("it cannot be opened: {}"). What is
  /// known of it is said, as it is written.
  std::string TranslateLine(std::string_view line) const;

  /// Each character that the phrases are drawn with, once.
  std::wstring_view GetCharacters() const;
  /// The English phrases of the table, in its order.
  std::span<const std::string_view> GetKeys() const;

 private:
  struct Table;
  explicit Phrases(const Language& language);

  std::unique_ptr<Table> table;
};

/// A text of the user's with its letters joined, as panels draw it.
std::string JoinLetters(std::string_view text);

// The language that this process speaks: one for all its panels, as there is one of them at a time, and like
// the locale of the C library. English until it is told; to be told between two frames, on their thread.

void SpeakLanguage(const Language& language);
const Phrases& GetPhrases();

/// Of the language that the process speaks.
inline const char* Say(const char* english) { return GetPhrases().Say(english); }
inline const char* SayLabel(const char* english) { return GetPhrases().SayLabel(english); }
inline std::string Say(const char* english, std::initializer_list<std::string_view> values) {
  return GetPhrases().Say(english, values);
}

}  // namespace zovhost
