#include "settings/kept_cube.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <nlohmann/json.hpp>

#include "commands/cube_commands.h"
#include "korvane/application_parameters.h"
#include "zovhost/cube_dress.h"

namespace zovview {

using Json = nlohmann::ordered_json;
using Parameters = Korvane::OrientorParameters;

namespace {

// In the orders of Size and Location.
constexpr std::array<const char*, 5> SIZE_NAMES = {"automatic", "tiny", "small", "normal", "large"};
constexpr std::array<const char*, 4> CORNER_NAMES = {"top-right", "bottom-right", "top-left", "bottom-left"};
constexpr double OPACITY_STEPS = 1000.0;

// As it was meant, and not as a float has it.
double FindOpacity(float opacity) {
  return std::round(static_cast<double>(opacity) * OPACITY_STEPS) / OPACITY_STEPS;
}

KeptCube::Parameters MakeFirst() {
  Parameters parameters;
  zovhost::DressCube(parameters);
  return parameters;
}

void TakeLook(const Parameters& parameters, KeptCube& into) {
  into.size = parameters.size;
  into.corner = parameters.screen_location;
  into.opacity = FindOpacity(parameters.min_opacity);
  into.compass = parameters.draw_compass;
  into.fitsOnClick = parameters.zoom_to_fit_scene;
}

// What is missing stays as it is.

template <class Value, std::size_t COUNT>
bool TakeName(const Json& from, const char* field, const std::array<const char*, COUNT>& names, Value& into) {
  const auto value = from.find(field);
  if (value == from.end()) return true;
  const auto* const found =
      std::find_if(names.begin(), names.end(), [&](const char* name) { return *value == name; });
  if (found != names.end()) into = static_cast<Value>(found - names.begin());
  return found != names.end();
}

bool TakeSwitch(const Json& from, const char* field, bool& into) {
  const auto value = from.find(field);
  if (value == from.end()) return true;
  if (value->is_boolean()) into = value->get<bool>();
  return value->is_boolean();
}

bool TakeShare(const Json& from, const char* field, double& into) {
  const auto value = from.find(field);
  if (value == from.end()) return true;
  if (!value->is_number() || value->get<double>() < 0.0 || value->get<double>() > 1.0) return false;
  into = value->get<double>();
  return true;
}

}  // namespace

KeptCube::KeptCube() : snaps(Korvane::ApplicationParameters().do_snap_orbit) { TakeLook(MakeFirst(), *this); }

Json KeptCube::Format() const {
  return {{"size", SIZE_NAMES[static_cast<std::size_t>(size)]},
          {"corner", CORNER_NAMES[static_cast<std::size_t>(corner)]},
          {"opacity", opacity},
          {"compass", compass},
          {"fitsOnClick", fitsOnClick},
          {"snapsToViews", snaps}};
}

bool KeptCube::Take(const Json& from) {
  return from.is_object() && TakeName(from, "size", SIZE_NAMES, size) &&
         TakeName(from, "corner", CORNER_NAMES, corner) && TakeShare(from, "opacity", opacity) &&
         TakeSwitch(from, "compass", compass) && TakeSwitch(from, "fitsOnClick", fitsOnClick) &&
         TakeSwitch(from, "snapsToViews", snaps);
}

KeptCube ReadCube(const ViewTarget& target) {
  KeptCube kept;
  TakeLook(GetCubeParameters(target), kept);
  kept.snaps = target.hub.GetApplicationParameters().do_snap_orbit;
  return kept;
}

// What has not changed is left alone, as the opacity is that was rounded.
void RestoreCube(const KeptCube& kept, const ViewTarget& target) {
  const KeptCube now = ReadCube(target);
  if (kept.size != now.size) SetCubeSize(target, kept.size);
  if (kept.corner != now.corner) SetCubeCorner(target, kept.corner);
  if (kept.opacity != now.opacity) SetCubeOpacity(target, static_cast<float>(kept.opacity));
  if (kept.compass != now.compass) ToggleCompass(target);
  if (kept.fitsOnClick != now.fitsOnClick) ToggleFitOnClick(target);
  target.hub.GetApplicationParameters().do_snap_orbit = kept.snaps;
}

}  // namespace zovview
