#include "zovhost/phrases.h"

#include <algorithm>
#include <unordered_map>
#include <vector>

#include "texts/embedded_files.h"
#include "texts/reading_order.h"
#include "zovhost/wide_text.h"

namespace zovhost {

namespace {

constexpr std::string_view equals = " = ";
constexpr std::string_view nameEnds = ": ";
constexpr std::string_view digits = "0123456789";
constexpr std::string_view anyPlace = "\x01";  // for a number that is yet to come
constexpr std::size_t unknown = std::string_view::npos;

std::string_view TakeLine(std::string_view& text) {
  const std::size_t end = text.find('\n');
  const std::string_view line = text.substr(0, end);
  text.remove_prefix(end == unknown ? text.size() : end + 1);
  return line;
}

std::string_view FindTable(std::string_view tag) {
  const std::string name = "phrases/" + std::string(tag) + ".txt";
  const EmbeddedFiles files = GetEmbeddedPhrases();
  const auto* const found =
      std::find_if(files.begin, files.end, [&name](const EmbeddedFile& file) { return file.name == name; });
  return found != files.end ? found->content : std::string_view();
}

// "[Ctrl]" is the key "Ctrl".
std::string_view WithoutBrackets(std::string_view english) {
  return english.starts_with('[') && english.ends_with(']') ? english.substr(1, english.size() - 2) : english;
}

// The value that a place stands for, whose text begins behind its opening brace; `next` is the one of a place
// that names none.
std::size_t FindValue(std::string_view place, std::size_t& next) {
  if (place.front() == '}') return next++;
  return static_cast<std::size_t>(place.front() - '1');
}

std::size_t GetPlaceLength(std::string_view text) {
  if (text.starts_with("{}")) return 2;
  const bool named = text.size() > 2 && text[0] == '{' && text[1] > '0' && text[1] <= '9' && text[2] == '}';
  return named ? 3 : 0;
}

std::string Fill(std::string_view phrase, std::span<const std::string_view> values) {
  std::string result;
  std::size_t next = 0;
  while (!phrase.empty()) {
    const std::size_t length = GetPlaceLength(phrase);
    if (length == 0) {
      result += phrase.front();
    } else if (const std::size_t value = FindValue(phrase.substr(1), next); value < values.size()) {
      result += values[value];
    }
    phrase.remove_prefix(std::max<std::size_t>(length, 1));
  }
  return result;
}

std::string DoubleSigns(std::string_view text) {
  std::string result;
  for (const char c : text) result.append(c == '%' ? 2 : 1, c);
  return result;
}

}  // namespace

struct Phrases::Table {
  struct Entry {
    std::string plain;
    std::string drawn;
    std::string label;
  };

  const Entry* FindEntry(std::string_view english) const {
    const auto found = entries.find(english);
    return found != entries.end() ? &found->second : nullptr;
  }
  std::string_view FindPlain(std::string_view english) const {
    const Entry* const entry = FindEntry(english);
    return entry != nullptr ? std::string_view(entry->plain) : english;
  }
  void Add(std::string_view english, std::string_view other);
  void CollectCharacters();
  std::string FillNumbers(std::string_view line) const;
  std::string Translate(std::string_view line) const;

  const Language* language;
  std::unordered_map<std::string_view, Entry> entries;  // the keys lie in the tables that are built in
  std::vector<std::string_view> keys;
  std::wstring characters;
};

void Phrases::Table::Add(std::string_view english, std::string_view other) {
  Entry entry;
  entry.plain = other;
  entry.drawn = JoinLetters(other);
  entry.label = entry.drawn + "###" + std::string(english);
  if (entries.emplace(english, std::move(entry)).second) keys.push_back(english);
}

void Phrases::Table::CollectCharacters() {
  for (const auto& [english, entry] : entries) characters += Utf8ToWide(entry.drawn);
  std::ranges::sort(characters);
  characters.erase(std::unique(characters.begin(), characters.end()), characters.end());
}

Phrases::Phrases(const Language& language) : table(std::make_unique<Table>()) {
  table->language = &language;
  std::string_view rest = FindTable(language.tag);
  while (!rest.empty()) {
    const std::string_view line = TakeLine(rest);
    if (line.empty() || line.front() == '#') continue;
    const std::size_t end = line.find(equals);
    table->Add(line.substr(0, end),
               end == unknown ? WithoutBrackets(line) : line.substr(end + equals.size()));
  }
  table->CollectCharacters();
}

Phrases::~Phrases() = default;

const Phrases& Phrases::Find(const Language& language) {
  static std::unordered_map<std::string_view, std::unique_ptr<const Phrases>> made;
  const Language* const known = FindLanguage(language.tag);
  const Language& spoken = known != nullptr ? *known : GetLanguages().front();
  std::unique_ptr<const Phrases>& phrases = made[spoken.tag];
  if (phrases == nullptr) phrases.reset(new Phrases(spoken));
  return *phrases;
}

const Language& Phrases::GetLanguage() const { return *table->language; }

// ---- one phrase ----

const char* Phrases::Say(const char* english) const {
  const Table::Entry* const entry = table->FindEntry(english);
  return entry != nullptr ? entry->drawn.c_str() : english;
}

const char* Phrases::SayLabel(const char* english) const {
  const Table::Entry* const entry = table->FindEntry(english);
  return entry != nullptr ? entry->label.c_str() : english;
}

const char* Phrases::SayPlain(const char* english) const {
  const Table::Entry* const entry = table->FindEntry(english);
  return entry != nullptr ? entry->plain.c_str() : english;
}

bool Phrases::Has(std::string_view english) const { return table->FindEntry(english) != nullptr; }

std::wstring_view Phrases::GetCharacters() const { return table->characters; }
std::span<const std::string_view> Phrases::GetKeys() const { return table->keys; }

// ---- phrases that are put together ----

std::string Phrases::SayPlain(const char* english, std::initializer_list<std::string_view> values) const {
  return Fill(table->FindPlain(english), {values.begin(), values.size()});
}

std::string Phrases::Say(const char* english, std::initializer_list<std::string_view> values) const {
  return JoinLetters(SayPlain(english, values));
}

std::string Phrases::SayFormat(const char* english, const char* number) const {
  std::string format = DoubleSigns(Say(english, {anyPlace}));
  const std::size_t place = format.find(anyPlace);
  return place != unknown ? format.replace(place, anyPlace.size(), number) : format;
}

std::string Phrases::SayKey(std::string_view names) const {
  std::string result;
  while (!names.empty()) {
    const std::size_t end = std::min(names.find('+'), names.size());
    const Table::Entry* const key = table->FindEntry("[" + std::string(names.substr(0, end)) + "]");
    result += key != nullptr ? std::string_view(key->drawn) : names.substr(0, end);
    if (end < names.size()) result += '+';
    names.remove_prefix(std::min(end + 1, names.size()));
  }
  return result;
}

// "it is of version 7" is the phrase "it is of version {}".
std::string Phrases::Table::FillNumbers(std::string_view line) const {
  std::string phrase;
  std::vector<std::string_view> numbers;
  while (!line.empty()) {
    const std::size_t text = std::min(line.find_first_of(digits), line.size());
    phrase += line.substr(0, text);
    line.remove_prefix(text);
    const std::size_t number = std::min(line.find_first_not_of(digits), line.size());
    if (number > 0) numbers.push_back(line.substr(0, number)), phrase += "{}";
    line.remove_prefix(number);
  }
  const Entry* const entry = FindEntry(phrase);
  return entry != nullptr ? Fill(entry->plain, numbers) : std::string();
}

// Empty for what is no phrase.
std::string Phrases::Table::Translate(std::string_view line) const {
  if (const Entry* const entry = FindEntry(line)) return entry->plain;
  if (std::string filled = FillNumbers(line); !filled.empty()) return filled;
  const std::size_t end = line.find(nameEnds);
  if (end == unknown) return {};
  const Entry* const entry = FindEntry(std::string(line.substr(0, end)) + ": {}");
  const std::string_view values[] = {line.substr(end + nameEnds.size())};
  return entry != nullptr ? Fill(entry->plain, values) : std::string();
}

std::string Phrases::TranslateLine(std::string_view line) const {
  if (std::string whole = table->Translate(line); !whole.empty()) return whole;
  for (std::size_t end = line.find(nameEnds); end != unknown; end = line.find(nameEnds, end + 1)) {
    const std::string reason = table->Translate(line.substr(end + nameEnds.size()));
    const std::string_view values[] = {line.substr(0, end), reason};
    if (!reason.empty()) return Fill(table->FindPlain("{}: {}"), values);
  }
  return std::string(line);
}

std::string JoinLetters(std::string_view text) { return WideToUtf8(JoinLetters(Utf8ToWide(text))); }

// ---- the language of the process ----

namespace {

const Phrases*& Spoken() {
  static const Phrases* spoken = &Phrases::Find(GetLanguages().front());
  return spoken;
}

}  // namespace

void SpeakLanguage(const Language& language) { Spoken() = &Phrases::Find(language); }
const Phrases& GetPhrases() { return *Spoken(); }

}  // namespace zovhost
