#pragma once

#include <memory>

#include "zovhost/six_axis_source.h"

namespace zovhost {

/// A game controller, through the window system library: the first that is connected, and another when it is
/// gone.
///
/// Its axes, by number: left stick to the right and down, right stick to the right and down, left and right
/// trigger; 400 at full deflection. SixAxisSettings::ForGameController leads them to the library's. Its
/// buttons have the numbers of the window system library (SDL_GameControllerButton).
///
/// It is read by Poll and, while nothing moves, by a timer of the library's platform, some sixty times a
/// second, or once a second while there is none. The window system library itself would do so a thousand
/// times a second: that is switched off (SDL_HINT_AUTO_UPDATE_JOYSTICKS), unless the host or the user has
/// chosen.
class GameControllerSource : public SixAxisSource {
 public:
  GameControllerSource();
  ~GameControllerSource() override;

  void Poll() override;
  bool HasDevice() const override;
  SixAxisSettings GetDefaults() const override { return SixAxisSettings::ForGameController(); }
  void SetWake(std::function<void()> wake) override;

 private:
  class Impl;
  std::unique_ptr<Impl> impl;
};

}  // namespace zovhost
