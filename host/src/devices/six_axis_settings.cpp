#include "zovhost/six_axis_settings.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "korvane/cam3d_controller_observer.h"

namespace zovhost {

namespace {

// The dead zone of a stick that has been used for years.
constexpr double STICK_DEAD_ZONE = 50.0;

// By the axes of GameControllerSource.
constexpr std::array<SixAxisSettings::Axis, SIX_AXIS_COUNT> STICKS_AND_TRIGGERS = {{
    {0, false, 1.0},  // left stick to the right
    {2, true, 1.0},   // left stick down
    {4, true, 1.0},   // right stick to the right: turns to the right
    {3, true, 1.0},   // right stick down: looks down
    {1, true, 1.0},   // left trigger
    {1, false, 1.0},  // right trigger
}};

struct ButtonCommand {
  int button;
  Korvane::Cam3DControllerKeyID command;
};

// By the numbers of SDL_GameControllerButton.
constexpr std::array<ButtonCommand, 12> GAME_CONTROLLER_COMMANDS = {{
    {0, Korvane::CAM3D_KEY_FIT},                     // A
    {1, Korvane::CAM3D_KEY_HOME},                    // B
    {2, Korvane::CAM3D_KEY_PAN_MODE},                // X
    {3, Korvane::CAM3D_KEY_FRONT},                   // Y
    {4, Korvane::CAM3D_KEY_HISTORY_BACK},            // back
    {6, Korvane::CAM3D_KEY_HISTORY_FORWARD},         // start
    {9, Korvane::CAM3D_KEY_ROLL_COUNTER_CLOCKWISE},  // left shoulder
    {10, Korvane::CAM3D_KEY_ROLL_CLOCKWISE},         // right shoulder
    {11, Korvane::CAM3D_KEY_TOP},                    // the cross: up
    {12, Korvane::CAM3D_KEY_BOTTOM},                 // down
    {13, Korvane::CAM3D_KEY_LEFT},                   // left
    {14, Korvane::CAM3D_KEY_RIGHT},                  // right
}};

bool IsWithin(double value, double most) { return value >= 0.0 && value <= most; }
bool IsAxis(int axis) { return axis >= SixAxisSettings::NOWHERE && axis < SIX_AXIS_COUNT; }
bool IsCommand(int command) {
  return command >= SixAxisSettings::NOTHING && command < Korvane::CAM3D_KEY_COUNT;
}
bool IsAxisValid(const SixAxisSettings::Axis& axis) {
  return IsAxis(axis.to) && IsWithin(axis.scale, SixAxisSettings::MOST_SCALE);
}

double Clamp(double value, double most, double otherwise) {
  return std::isfinite(value) ? std::clamp(value, 0.0, most) : otherwise;
}

double Leave(double value, double deadZone) {
  if (!std::isfinite(value) || std::abs(value) <= deadZone) return 0.0;
  return std::copysign(std::abs(value) - deadZone, value);
}

}  // namespace

SixAxisSettings::SixAxisSettings() {
  for (int axis = 0; axis < SIX_AXIS_COUNT; ++axis) axes[static_cast<std::size_t>(axis)].to = axis;
  commands.fill(NOTHING);
}

SixAxisSettings SixAxisSettings::ForDevice() {
  SixAxisSettings settings;
  settings.commands[0] = Korvane::CAM3D_KEY_FIT;
  settings.commands[1] = Korvane::CAM3D_KEY_PAN_MODE;
  return settings;
}

SixAxisSettings SixAxisSettings::ForGameController() {
  SixAxisSettings settings;
  settings.axes = STICKS_AND_TRIGGERS;
  settings.deadZone = STICK_DEAD_ZONE;
  for (const auto& [button, command] : GAME_CONTROLLER_COMMANDS) {
    settings.commands[static_cast<std::size_t>(button)] = command;
  }
  return settings;
}

bool IsValid(const SixAxisSettings& settings) {
  return IsWithin(settings.deadZone, SixAxisSettings::MOST_DEAD_ZONE) &&
         std::all_of(settings.axes.begin(), settings.axes.end(), IsAxisValid) &&
         std::all_of(settings.commands.begin(), settings.commands.end(), IsCommand);
}

SixAxisSettings MakeValid(const SixAxisSettings& settings, const SixAxisSettings& defaults) {
  SixAxisSettings valid = settings;
  valid.deadZone = Clamp(settings.deadZone, SixAxisSettings::MOST_DEAD_ZONE, defaults.deadZone);
  for (std::size_t i = 0; i < valid.axes.size(); ++i) {
    SixAxisSettings::Axis& axis = valid.axes[i];
    if (!IsAxis(axis.to)) axis.to = defaults.axes[i].to;
    axis.scale = Clamp(axis.scale, SixAxisSettings::MOST_SCALE, defaults.axes[i].scale);
  }
  for (std::size_t i = 0; i < valid.commands.size(); ++i) {
    if (!IsCommand(valid.commands[i])) valid.commands[i] = defaults.commands[i];
  }
  return valid;
}

SixAxes Apply(const SixAxisSettings& settings, const SixAxes& ofSource) {
  SixAxes result{};
  for (std::size_t i = 0; i < ofSource.size(); ++i) {
    const SixAxisSettings::Axis& axis = settings.axes[i];
    if (axis.to < 0 || axis.to >= SIX_AXIS_COUNT || settings.locked[static_cast<std::size_t>(axis.to)])
      continue;
    const double value = Leave(ofSource[i], settings.deadZone) * axis.scale;
    result[static_cast<std::size_t>(axis.to)] += axis.inverted ? -value : value;
  }
  for (double& value : result) value = std::clamp(value, -MOST_DEFLECTION, MOST_DEFLECTION);
  return result;
}

}  // namespace zovhost
