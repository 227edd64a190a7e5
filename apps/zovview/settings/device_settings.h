#pragma once

#include <span>
#include <string_view>

namespace zovview {

struct ViewTarget;

/// A number that tells what a six-axis device does in a view. A switch is 0 or 1.
struct DeviceSetting {
  std::string_view name;  ///< In recordings and in the settings of the user.
  double least;
  double most;
  bool whole;  ///< It has no fraction.
  bool kept;   ///< From one start of the program to the next.
  double (*get)(const ViewTarget& target);
  void (*set)(const ViewTarget& target, double value);

  /// Whether it may be set to it.
  bool Takes(double value) const;
};

/// In a view with a controller.
std::span<const DeviceSetting> GetDeviceSettings();
/// Null for none's name.
const DeviceSetting* FindDeviceSetting(std::string_view name);

}  // namespace zovview
