#include "stories/story_text.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace zovhost {

namespace {

/// Puts the values of a text together as they come, which no depth of them overflows, and ends it at the
/// first that is too much.
class TreeBuilder : public nlohmann::json_sax<Json> {
 public:
  TreeBuilder(std::string_view parsed, Json& result, std::string& reason)
      : text(parsed), root(result), error(reason) {}

  bool null() override { return Place(nullptr) != nullptr; }
  bool boolean(bool value) override { return Place(value) != nullptr; }
  bool number_integer(number_integer_t value) override { return Place(value) != nullptr; }
  bool number_unsigned(number_unsigned_t value) override { return Place(value) != nullptr; }
  bool number_float(number_float_t value, const string_t& /*digits*/) override {
    return Place(value) != nullptr;
  }
  bool string(string_t& value) override { return Place(std::move(value)) != nullptr; }
  bool binary(binary_t& value) override { return Place(std::move(value)) != nullptr; }
  bool start_object(std::size_t /*size*/) override { return Open(Json::object()); }
  bool start_array(std::size_t /*size*/) override { return Open(Json::array()); }
  bool end_object() override { return Close(); }
  bool end_array() override { return Close(); }

  bool key(string_t& name) override {
    Json& object = *open.back();
    if (object.contains(name)) return Refuse(Quote(name) + " stands twice in one object");
    member = &object[name];
    return true;
  }

  bool parse_error(std::size_t position, const std::string& /*token*/, const Json::exception& what) override {
    constexpr int OVERFLOW_ID = 406;  // of a number that no double holds
    const std::size_t end = std::min(position, text.size());
    const auto line = 1 + std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(end), '\n');
    const char* const reason = what.id == OVERFLOW_ID   ? "a number is too large"
                               : position > text.size() ? "it ends too early"
                                                        : "it is no JSON";
    return Refuse("line " + std::to_string(line) + ": " + reason);
  }

 private:
  // On one line whatever it holds, and short.
  static std::string Quote(const std::string& name) {
    constexpr std::size_t LONGEST = 40;
    return Json(name.substr(0, LONGEST)).dump(-1, ' ', true, Json::error_handler_t::replace);
  }

  bool Refuse(const std::string& reason) {
    error = reason;
    return false;
  }

  Json* Place(Json value) {
    if (++count > MOST_VALUES) {
      Refuse("it holds more than " + std::to_string(MOST_VALUES) + " values");
      return nullptr;
    }
    if (!open.empty() && open.back()->is_array()) {
      open.back()->push_back(std::move(value));
      return &open.back()->back();
    }
    Json* const place = open.empty() ? &root : member;
    *place = std::move(value);
    return place;
  }

  bool Open(Json empty) {
    if (open.size() == DEEPEST_VALUE) {
      return Refuse("it is nested more than " + std::to_string(DEEPEST_VALUE) + " deep");
    }
    Json* const place = Place(std::move(empty));
    if (place != nullptr) open.push_back(place);
    return place != nullptr;
  }

  bool Close() {
    open.pop_back();
    return true;
  }

  const std::string_view text;
  Json& root;
  std::string& error;
  std::vector<Json*> open;  // an open array gets nothing new while one in it is open, so none moves
  Json* member = nullptr;   // where the next value of the open object goes
  std::size_t count = 0;
};

void Print(const OrderedJson& value, int depth, int deep, std::string& text) {
  if (depth >= deep || !value.is_structured() || value.empty()) {
    text += value.dump();
    return;
  }
  const bool isObject = value.is_object();
  const std::string indent(2 * static_cast<std::size_t>(depth + 1), ' ');
  const char* separator = isObject ? "{\n" : "[\n";
  for (const auto& [name, member] : value.items()) {
    text += separator + indent;
    if (isObject) text += OrderedJson(name).dump() + ": ";
    Print(member, depth + 1, deep, text);
    separator = ",\n";
  }
  text += "\n" + indent.substr(2) + (isObject ? "}" : "]");
}

}  // namespace

bool ParseJson(std::string_view text, Json& root, std::string& error) {
  if (text.size() > LARGEST_TEXT) {
    error = "it is too large";
    return false;
  }
  TreeBuilder builder(text, root, error);
  return Json::sax_parse(text.begin(), text.end(), &builder);
}

std::string PrintJson(const OrderedJson& root, int deep) {
  std::string text;
  Print(root, 0, deep, text);
  return text + "\n";
}

}  // namespace zovhost
