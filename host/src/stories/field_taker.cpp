#include "stories/field_taker.h"

#include <utility>

#include "zovhost/wide_text.h"

namespace zovhost {

bool RefuseField(const char* name, const char* wrong, std::string& error) {
  error = std::string(".") + name + ": " + wrong;
  return false;
}

bool Within(const std::string& place, bool good, std::string& error) {
  if (!good) error.insert(0, place);
  return good;
}

bool FieldTaker::IsObject() {
  if (!object.is_object()) error = ": it is no object";
  return object.is_object();
}

bool FieldTaker::TakeHead(const char* mark, int newest, const char* otherwise) {
  const auto refuse = [this](const std::string& reason) {
    error = reason;
    return false;
  };
  if (!object.is_object()) return refuse(otherwise);
  const std::optional<Json> format = Take(field::FORMAT);
  if (!format || *format != mark) return refuse(otherwise);
  const std::optional<Json> version = Take(field::VERSION);
  const bool isNumber = version && version->is_number() && *version >= 1;
  if (!isNumber) return refuse("it has no version");
  if (*version <= newest) return true;
  return refuse("it is of version " + version->dump() + ", which is newer than this program");
}

bool FieldTaker::Needs(const char* name) {
  return object.contains(name) || RefuseField(name, "it is missing", error);
}

std::optional<Json> FieldTaker::Take(const char* name) {
  const auto found = object.find(name);
  if (found == object.end()) return std::nullopt;
  Json value = std::move(*found);
  object.erase(found);
  return value;
}

bool FieldTaker::TakeNumber(const char* name, double& number) {
  const std::optional<Json> value = Take(name);
  if (value && !value->is_number()) return RefuseField(name, "it is no number", error);
  if (value) number = value->get<double>();
  return true;
}

bool FieldTaker::TakeSwitch(const char* name, bool& value) {
  const std::optional<Json> taken = Take(name);
  if (taken && !taken->is_boolean()) return RefuseField(name, "it is neither true nor false", error);
  if (taken) value = taken->get<bool>();
  return true;
}

bool FieldTaker::TakeText(const char* name, std::wstring& text) {
  const std::optional<Json> value = Take(name);
  if (value && !value->is_string()) return RefuseField(name, "it is no text", error);
  if (value) text = Utf8ToWide(value->get_ref<const std::string&>());
  return true;
}

bool FieldTaker::TakePoint(const char* name, Korvane::Vector3& point) {
  const std::optional<Json> value = Take(name);
  if (!value) return true;
  const Json& read = *value;
  const bool isPoint = read.is_array() && read.size() == 3 && read[0].is_number() && read[1].is_number() &&
                       read[2].is_number();
  if (!isPoint) return RefuseField(name, "it is no three numbers", error);
  point = {read[0].get<double>(), read[1].get<double>(), read[2].get<double>()};
  return true;
}

}  // namespace zovhost
