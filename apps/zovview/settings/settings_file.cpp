#include "settings/settings_file.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <system_error>
#include <utility>
#include <variant>

#include "korvane/helm_disc.h"
#include "zovhost/languages.h"
#include "zovhost/navigation_style.h"
#include "zovhost/pivot_policy.h"
#include "zovhost/scene_ground.h"
#include "zovhost/whole_file.h"

namespace zovview {

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;
using Korvane::DiscType;
using Korvane::HelmDisc;
using Parameters = Korvane::HelmDiscParameters;

namespace {

constexpr int VERSION = 1;
constexpr std::uintmax_t LARGEST_FILE =
    262'144;  // bytes; what the program writes is mostly a hundredth of it
// As it is written again: what the program adds must leave it readable.
constexpr std::size_t LARGEST_TEXT = LARGEST_FILE / 2;
constexpr int DEEPEST_VALUE = 32;  // objects and arrays within each other, which are walked one in the other
constexpr int MOST_NAMES = 4096;   // each is looked for among those before it
constexpr const char* VERSION_NAME = "version";
constexpr const char* LAST_DISC_NAME = "lastDisc";

// In the order of DiscType.
constexpr std::array<const char*, 7> DISC_NAMES = {
    "view-object",      "tour-building",      "full-navigation",     "2d",
    "mini-view-object", "mini-tour-building", "mini-full-navigation"};

constexpr const char* BAR_NAME = "navigationBar";
constexpr const char* TOOLS_NAME = "toolbar";
constexpr const char* DEVICE_NAME = "sixAxisDevice";
constexpr const char* CUBE_NAME = "orientationCube";
constexpr const char* LINKED_NAME = "cube";
// In the order of Toolbar::Position.
constexpr std::array<const char*, 4> EDGE_NAMES = {"left", "top", "right", "bottom"};
constexpr double FARTHEST_OFFSET = 16'384.0;  // pixels, more than a view has

struct Setting {
  const char* name;
  std::variant<bool Parameters::*, int Parameters::*, double Parameters::*> field;
  double least = 0.0;
  double most = 1.0;
};

const auto SETTINGS = std::to_array<Setting>({
    {"welcomeSeen", &Parameters::welcomeSeen},
    {"largeDiscSize", &Parameters::largeDiscSize, 16, 1024},
    {"miniDiscSize", &Parameters::miniDiscSize, 16, 1024},
    {"largeDiscOpacity", &Parameters::largeDiscOpacity, 0.1, 3.0},
    {"miniDiscOpacity", &Parameters::miniDiscOpacity, 0.1, 3.0},
    {"walkSpeedFactor", &Parameters::walkSpeedFactor, 0.1, 50.0},
    {"showMessages", &Parameters::showMessages},
    {"showTooltips", &Parameters::showTooltips},
    {"showToolHUDs", &Parameters::showToolHUDs},
    {"invertLookVertical", &Parameters::invertLookVertical},
    {"clickZoom", &Parameters::clickZoom},
    {"keepSceneUpright", &Parameters::keepSceneUpright},
});

struct Choice {
  const char* name;
  std::variant<bool Choices::*, std::string Choices::*, std::vector<std::string> Choices::*> field;
  bool (*isName)(const std::string& text) = nullptr;  // of a text that names something; empty names nothing
};

bool IsLanguage(const std::string& name) { return zovhost::FindLanguage(name) != nullptr; }
bool IsGround(const std::string& name) { return zovhost::FindSceneGround(name) != nullptr; }
bool IsStyle(const std::string& name) { return zovhost::FindNavigationStyle(name).name == name; }
bool IsPivot(const std::string& name) {
  const auto policies = zovhost::GetPivotPolicies();
  return std::any_of(policies.begin(), policies.end(), [&](const auto& each) { return each.name == name; });
}
bool IsPanel(const std::string& name) { return name == Choices::PANEL_FOLDED || name == Choices::PANEL_OPEN; }

const auto CHOICES = std::to_array<Choice>({
    {"reducedMotion", &Choices::reducedMotion},
    {"language", &Choices::language, IsLanguage},
    {"ground", &Choices::ground, IsGround},
    {"navigationStyle", &Choices::navigationStyle, IsStyle},
    {"pivotPolicy", &Choices::pivotPolicy, IsPivot},
    {"panel", &Choices::panel, IsPanel},
    {"recentFiles", &Choices::recentFiles},
});
constexpr std::size_t MOST_TEXTS = 32;       // of a list
constexpr std::size_t LONGEST_TEXT = 4'096;  // bytes

// ---- values ----

bool Take(const Json& value, const Setting& /*setting*/, bool& field) {
  if (value.is_boolean()) field = value.get<bool>();
  return value.is_boolean();
}

template <class Number>
bool Take(const Json& value, const Setting& setting, Number& field) {
  const bool isOfKind = std::is_integral_v<Number> ? value.is_number_integer() : value.is_number();
  if (!isOfKind) return false;
  const auto number = value.get<double>();
  if (!(number >= setting.least && number <= setting.most)) return false;
  field = static_cast<Number>(number);
  return true;
}

bool TakeText(const Json& value, std::string& field) {
  const auto* const text = value.get_ptr<const std::string*>();
  if (text == nullptr || text->size() > LONGEST_TEXT) return false;
  field = *text;
  return true;
}

bool TakeTexts(const Json& value, std::vector<std::string>& field) {
  if (!value.is_array() || value.size() > MOST_TEXTS) return false;
  std::vector<std::string> texts(value.size());
  for (std::size_t i = 0; i < texts.size(); ++i) {
    if (!TakeText(value[i], texts[i])) return false;
  }
  field = std::move(texts);
  return true;
}

// What is missing stays as it is.
bool TakeChoice(const Json& settings, const Choice& choice, Choices& into) {
  const auto value = settings.find(choice.name);
  if (value == settings.end()) return true;
  struct Taker {
    const Json& value;
    const Choice& choice;
    Choices& into;
    bool operator()(bool Choices::*field) const { return Take(value, {}, into.*field); }
    bool operator()(std::string Choices::*field) const {
      std::string& text = into.*field;
      return TakeText(value, text) && (text.empty() || choice.isName(text));
    }
    bool operator()(std::vector<std::string> Choices::*field) const { return TakeTexts(value, into.*field); }
  };
  return std::visit(Taker{*value, choice, into}, choice.field);
}

// What is missing stays as it is.
bool TakeSetting(const Json& settings, const Setting& setting, Parameters& into) {
  const auto value = settings.find(setting.name);
  if (value == settings.end()) return true;
  return std::visit([&](auto field) { return Take(*value, setting, into.*field); }, setting.field);
}

bool TakeLastDisc(const Json& settings, DiscType& type) {
  const auto value = settings.find(LAST_DISC_NAME);
  if (value == settings.end()) return true;
  const auto* const found =
      std::find_if(DISC_NAMES.begin(), DISC_NAMES.end(), [&](const char* name) { return *value == name; });
  if (found == DISC_NAMES.end()) return false;
  type = static_cast<DiscType>(found - DISC_NAMES.begin());
  return true;
}

// ---- where the bars stand ----

bool TakeEdge(const Json& value, BarPlace& place) {
  place.linked = value == LINKED_NAME;
  const auto* const found =
      std::find_if(EDGE_NAMES.begin(), EDGE_NAMES.end(), [&](const char* name) { return value == name; });
  if (found != EDGE_NAMES.end())
    place.edge = static_cast<Korvane::Toolbar::Position>(found - EDGE_NAMES.begin());
  return place.linked || found != EDGE_NAMES.end();
}

bool TakeOffset(const Json& value, BarPlace& place) {
  if (!value.is_number() || std::abs(value.get<double>()) > FARTHEST_OFFSET) return false;
  place.offset = value.get<double>();
  return true;
}

// What is missing stays as it is.
bool TakePlace(const Json& settings, const char* name, BarPlace& place) {
  const auto bar = settings.find(name);
  if (bar == settings.end()) return true;
  if (!bar->is_object()) return false;
  const bool shown = !bar->contains("shown") || Take((*bar)["shown"], {}, place.visible);
  const bool at = !bar->contains("at") || TakeEdge((*bar)["at"], place);
  return shown && at && (!bar->contains("offset") || TakeOffset((*bar)["offset"], place));
}

Json FormatPlace(const BarPlace& place) {
  const char* const at = place.linked ? LINKED_NAME : EDGE_NAMES[static_cast<std::size_t>(place.edge)];
  return {{"shown", place.visible}, {"at", at}, {"offset", place.offset}};
}

// What was read of a file.
struct Kept {
  Parameters parameters;
  DiscType lastDisc;
  BarPlaces bars;
  KeptDevices devices;
  KeptCube cube;
  Choices choices;
};

// The name of the first value that is wrong; null for none.
const char* TakeAll(const Json& settings, Kept& kept) {
  for (const Setting& setting : SETTINGS) {
    if (!TakeSetting(settings, setting, kept.parameters)) return setting.name;
  }
  if (!TakePlace(settings, BAR_NAME, kept.bars.navigation)) return BAR_NAME;
  if (!TakePlace(settings, TOOLS_NAME, kept.bars.tools) || kept.bars.tools.linked) return TOOLS_NAME;
  for (const Choice& choice : CHOICES) {
    if (!TakeChoice(settings, choice, kept.choices)) return choice.name;
  }
  const auto device = settings.find(DEVICE_NAME);
  if (device != settings.end() && !kept.devices.Take(*device)) return DEVICE_NAME;
  const auto cube = settings.find(CUBE_NAME);
  if (cube != settings.end() && !kept.cube.Take(*cube)) return CUBE_NAME;
  return TakeLastDisc(settings, kept.lastDisc) ? nullptr : LAST_DISC_NAME;
}

std::string Print(const Json& settings) {
  return settings.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

Parameters MeasureInPoints(const HelmDisc& disc, double scale) {
  Parameters parameters = disc.GetParameters();
  for (int* const size : {&parameters.largeDiscSize, &parameters.miniDiscSize}) {
    *size = static_cast<int>(std::lround(*size / scale));
  }
  return parameters;
}

std::string Format(DiscType lastDisc, const Parameters& disc, const BarPlaces& bars, const Choices& choices,
                   const KeptDevices& devices, const KeptCube& cube) {
  Json settings;
  settings[VERSION_NAME] = VERSION;
  settings[LAST_DISC_NAME] = DISC_NAMES[static_cast<std::size_t>(lastDisc)];
  for (const Setting& setting : SETTINGS) {
    std::visit([&](auto field) { settings[setting.name] = disc.*field; }, setting.field);
  }
  settings[BAR_NAME] = FormatPlace(bars.navigation);
  settings[TOOLS_NAME] = FormatPlace(bars.tools);
  settings[CUBE_NAME] = cube.Format();
  for (const Choice& choice : CHOICES) {
    std::visit([&](auto field) { settings[choice.name] = choices.*field; }, choice.field);
  }
  if (!devices.values.empty()) settings[DEVICE_NAME] = devices.Format();
  return Print(settings);
}

// What is another now than it was goes into the file's, field by field.
void TakeChanges(const Json& before, const Json& now, Json& into) {
  for (const auto& [name, value] : now.items()) {
    const auto former = before.find(name);
    if (former != before.end() && *former == value) continue;
    const bool inBoth = former != before.end() && former->is_object() && value.is_object();
    if (inBoth && into.contains(name) && into[name].is_object()) {
      TakeChanges(*former, value, into[name]);
    } else {
      into[name] = value;
    }
  }
}

// ---- the file ----

// Discarded for what is no JSON, what is nested too deeply, and what has too many names.
Json ParseText(const std::string& text) {
  bool isSmall = true;
  int names = 0;
  const auto keep = [&](int depth, Json::parse_event_t event, Json&) {
    if (event == Json::parse_event_t::key) ++names;
    isSmall = isSmall && depth <= DEEPEST_VALUE && names <= MOST_NAMES;
    return isSmall;
  };
  Json settings = Json::parse(text, keep, false);
  return isSmall ? settings : Json(Json::value_t::discarded);
}

// Null, with a reason, for what is none of this program's.
Json ReadJson(const fs::path& file, const char*& reason) {
  std::error_code failure;
  reason = "cannot be read";
  if (!fs::is_regular_file(file, failure)) return {};  // a pipe would be waited for
  std::ifstream input(file, std::ios::binary);
  if (!input) return {};
  reason = "is no settings file";
  if (fs::file_size(file, failure) > LARGEST_FILE || failure) return {};
  const std::string text{std::istreambuf_iterator<char>(input), std::istreambuf_iterator<char>()};
  Json settings = ParseText(text);
  const bool isOurs = settings.is_object() && settings.contains(VERSION_NAME) &&
                      settings[VERSION_NAME].is_number_integer() && settings[VERSION_NAME] >= 1 &&
                      Print(settings).size() <= LARGEST_TEXT;
  return isOurs ? settings : Json();
}

fs::path FromEnvironment(const char* name) {
  const char* const value = std::getenv(name);  // NOLINT(concurrency-mt-unsafe): nothing writes it
  const fs::path path = value != nullptr ? value : "";
  return path.is_absolute() ? path : fs::path();
}

fs::path FindFolder() {
#if defined(_WIN32)
  return FromEnvironment("APPDATA");
#elif defined(__APPLE__)
  const fs::path home = FromEnvironment("HOME");
  return home.empty() ? home : home / "Library" / "Application Support";
#else
  const fs::path given = FromEnvironment("XDG_CONFIG_HOME");
  const fs::path home = FromEnvironment("HOME");
  return !given.empty() || home.empty() ? given : home / ".config";
#endif
}

}  // namespace

fs::path SettingsFile::FindPlace() {
  const fs::path folder = FindFolder();
  return folder.empty() ? folder : folder / "zovview" / "settings.json";
}

fs::path SettingsFile::FindAside(const fs::path& file) {
  fs::path aside = file;
  return aside += ".broken";
}

fs::path SettingsFile::GetModelFolder() const { return file.empty() ? file : file.parent_path() / "models"; }

bool SettingsFile::Read(HelmDisc& disc, std::string& error) {
  kept = first = FormatNow(disc, 1.0);
  seen.clear();
  broken = false;
  std::error_code failure;
  if (file.empty() || fs::symlink_status(file, failure).type() == fs::file_type::not_found) return true;
  const auto fail = [&](const std::string& what) {
    broken = !closed;
    error = file.string() + " " + what + "; the settings are those of a first start";
    return false;
  };
  const char* reason = nullptr;
  const Json settings = ReadJson(file, reason);
  if (settings.is_null()) return fail(reason);
  closed = settings[VERSION_NAME] > VERSION;
  if (closed) return fail("is of a newer version, and stays as it is");
  Kept read = {disc.GetParameters(), disc.GetDefaultDiscType(), bars, devices, cube, choices};
  if (const char* const wrong = TakeAll(settings, read)) {
    return fail(std::string("has a wrong value for \"") + wrong + "\"");
  }
  disc.GetParameters() = read.parameters;
  disc.SetDefaultDiscType(read.lastDisc);
  bars = read.bars;
  devices = read.devices;
  cube = read.cube;
  choices = read.choices;
  kept = first = FormatNow(disc, 1.0);
  return true;
}

std::string SettingsFile::FormatNow(const HelmDisc& disc, double pixelsForPoint) const {
  return Format(disc.GetDefaultDiscType(), MeasureInPoints(disc, pixelsForPoint), bars, choices, devices,
                cube);
}

// That of the file, which another program may have written meanwhile; or as it was kept last, where there is
// no file, or a broken one. Null for one of a newer version.
Json SettingsFile::ReadPresent() {
  std::error_code failure;
  const char* reason = nullptr;
  const bool isThere = fs::symlink_status(file, failure).type() != fs::file_type::not_found;
  Json present = isThere && !broken ? ReadJson(file, reason) : Json();
  if (!present.is_null()) return present[VERSION_NAME] > VERSION ? Json() : present;
  broken = isThere;
  return Json::parse(kept);
}

bool SettingsFile::Keep(const HelmDisc& disc, std::string& error, std::size_t view) {
  if (closed || file.empty()) return true;
  if (seen.size() <= view) seen.resize(view + 1, first);
  const std::string before = std::exchange(seen[view], FormatNow(disc, scale));
  if (seen[view] == before) return true;
  Json present = ReadPresent();
  closed = present.is_null();
  if (closed) {
    error = file.string() + " is of a newer version by now, and stays as it is";
    return false;
  }
  TakeChanges(Json::parse(before), Json::parse(seen[view]), present);
  std::string text = Print(present);
  if (text.size() > LARGEST_TEXT) {  // what others have written leaves no room
    broken = true;
    text = seen[view];
  }
  if (text == kept && !broken) return true;
  kept = std::move(text);
  if (std::exchange(broken, false)) SetAside();
  closed = !WriteText(kept, error);
  return !closed;
}

// The new one is written whether this succeeds or not: what is broken may be a folder that nobody may change.
void SettingsFile::SetAside() const {
  std::error_code ignored;
  if (fs::is_regular_file(file, ignored)) fs::rename(file, FindAside(file), ignored);
}

bool SettingsFile::WriteText(const std::string& text, std::string& error) const {
  std::error_code ignored;  // the file then tells what is wrong
  fs::create_directories(file.parent_path(), ignored);
  zovhost::WholeFile output(file);
  output.Write(text.data(), text.size());
  return output.Finish(error);
}

}  // namespace zovview
