#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "sheet.h"
#include "zovhost/resource_pack.h"

namespace zovsheets {

/// How a sheet is shown, as far as somebody asked.
struct Show {
  std::shared_ptr<const zovhost::ResourcePack> pack;  // of a language
  std::optional<Ground> ground;                       // none: all, or those of the states
  std::optional<double> scale;                        // pixels for one point; none likewise
  std::string wanted;                                 // of states those whose names contain it
  int columns = 0;                                    // 0: as many as suit the sheet
  int enlarged = 1;                                   // sheet pixels for one of a picture

  std::vector<Ground> GetGrounds() const {
    return ground.has_value() ? std::vector{*ground} : std::vector(grounds.begin(), grounds.end());
  }
  std::vector<double> GetScales() const {
    return scale.has_value() ? std::vector{*scale} : std::vector{1.0, 2.0};
  }
  double GetScale() const { return scale.value_or(1.0); }
  bool IsWanted(const std::string& name) const { return name.find(wanted) != std::string::npos; }

  /// The states that are wanted. Of those that differ by nothing but the ground, or the scale, only the usual
  /// one is shown where another is asked for.
  template <class State>
  std::vector<State> Choose(std::vector<State> states) const {
    const State usual;
    std::erase_if(states, [&](const State& state) {
      return !IsWanted(state.name) || (ground.has_value() && state.ground != usual.ground) ||
             (scale.has_value() && state.scale != usual.scale);
    });
    for (State& state : states) {
      state.ground = ground.value_or(state.ground);
      state.scale = scale.value_or(state.scale);
    }
    return states;
  }
};

}  // namespace zovsheets
