#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string_view>
#include <vector>

#include "zovhost/six_axis_settings.h"

namespace zovview {

struct DeviceSetting;

/// What is kept of six-axis devices from one start of the program to the next.
struct KeptDevices {
  struct Value {
    const DeviceSetting* setting;
    double value;
  };
  struct Source {
    std::string_view name;
    zovhost::SixAxisSettings settings;
  };
  std::vector<Value> values;
  std::vector<Source> sources;

  nlohmann::ordered_json Format() const;
  /// Takes over the values and sources that are here and there; what is missing stays. False, with some of it
  /// taken, where anything is wrong.
  bool Take(const nlohmann::ordered_json& from);
};

}  // namespace zovview
