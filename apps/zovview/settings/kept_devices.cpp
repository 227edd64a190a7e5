#include "settings/kept_devices.h"

#include <charconv>
#include <nlohmann/json.hpp>
#include <string>

#include "settings/device_settings.h"

namespace zovview {

using Json = nlohmann::ordered_json;
using zovhost::SixAxisSettings;

namespace {

constexpr const char* SOURCES_NAME = "sources";

// ---- writing ----

// Only buttons that do something.
Json FormatButtons(const SixAxisSettings& settings) {
  Json buttons = Json::object();
  for (int i = 0; i < SixAxisSettings::BUTTON_COUNT; ++i) {
    const int command = settings.commands[static_cast<std::size_t>(i)];
    if (command != SixAxisSettings::NOTHING) buttons[std::to_string(i)] = command;
  }
  return buttons;
}

Json FormatSource(const SixAxisSettings& settings) {
  Json axes = Json::array();
  for (const SixAxisSettings::Axis& axis : settings.axes) {
    axes.push_back({{"to", axis.to}, {"inverted", axis.inverted}, {"scale", axis.scale}});
  }
  return {{"axes", axes},
          {"locked", settings.locked},
          {"deadZone", settings.deadZone},
          {"buttons", FormatButtons(settings)}};
}

// ---- reading ----

template <class Number>
bool TakeNumber(const Json& from, const char* name, Number& number) {
  const auto value = from.find(name);
  if (value == from.end()) return true;
  const bool isOfKind = std::is_integral_v<Number> ? value->is_number_integer() : value->is_number();
  if (isOfKind) number = value->get<Number>();
  return isOfKind;
}

bool TakeSwitch(const Json& value, bool& on) {
  if (value.is_boolean()) on = value.get<bool>();
  return value.is_boolean();
}

bool TakeAxis(const Json& from, SixAxisSettings::Axis& axis) {
  if (!from.is_object()) return false;
  const bool inverted = !from.contains("inverted") || TakeSwitch(from["inverted"], axis.inverted);
  return inverted && TakeNumber(from, "to", axis.to) && TakeNumber(from, "scale", axis.scale);
}

// All of a row, one after the other.
template <class Row, class TakeOne>
bool TakeRow(const Json& from, const char* name, Row& row, TakeOne takeOne) {
  const auto list = from.find(name);
  if (list == from.end()) return true;
  if (!list->is_array() || list->size() != row.size()) return false;
  for (std::size_t i = 0; i < row.size(); ++i) {
    if (!takeOne((*list)[i], row[i])) return false;
  }
  return true;
}

bool TakeButton(const std::string& name, const Json& command, SixAxisSettings& settings) {
  int number = -1;
  const char* const end = name.data() + name.size();
  const auto [stop, failure] = std::from_chars(name.data(), end, number);
  const bool isNumber = failure == std::errc() && stop == end;
  if (!isNumber || number < 0 || number >= SixAxisSettings::BUTTON_COUNT) return false;
  if (!command.is_number_integer()) return false;
  settings.commands[static_cast<std::size_t>(number)] = command.get<int>();
  return true;
}

// What is missing here does nothing.
bool TakeButtons(const Json& from, SixAxisSettings& settings) {
  const auto buttons = from.find("buttons");
  if (buttons == from.end()) return true;
  if (!buttons->is_object()) return false;
  settings.commands.fill(SixAxisSettings::NOTHING);
  for (const auto& [name, command] : buttons->items()) {
    if (!TakeButton(name, command, settings)) return false;
  }
  return true;
}

bool TakeSource(const Json& from, SixAxisSettings& settings) {
  if (!from.is_object()) return false;
  return TakeRow(from, "axes", settings.axes, TakeAxis) &&
         TakeRow(from, "locked", settings.locked, TakeSwitch) &&
         TakeNumber(from, "deadZone", settings.deadZone) && TakeButtons(from, settings) && IsValid(settings);
}

bool TakeValue(const Json& from, KeptDevices::Value& kept) {
  const auto value = from.find(kept.setting->name);
  if (value == from.end()) return true;
  if (!value->is_number() || !kept.setting->Takes(value->get<double>())) return false;
  kept.value = value->get<double>();
  return true;
}

}  // namespace

Json KeptDevices::Format() const {
  Json text = Json::object();
  for (const Value& kept : values) text[std::string(kept.setting->name)] = kept.value;
  for (const Source& source : sources) {
    text[SOURCES_NAME][std::string(source.name)] = FormatSource(source.settings);
  }
  return text;
}

bool KeptDevices::Take(const Json& from) {
  if (!from.is_object()) return false;
  for (Value& kept : values) {
    if (!TakeValue(from, kept)) return false;
  }
  const auto rows = from.find(SOURCES_NAME);
  if (rows == from.end()) return true;
  if (!rows->is_object()) return false;
  for (Source& source : sources) {
    const auto row = rows->find(source.name);
    if (row != rows->end() && !TakeSource(*row, source.settings)) return false;
  }
  return true;
}

}  // namespace zovview
