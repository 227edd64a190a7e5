#pragma once

#include <array>

namespace zovhost {

constexpr int SIX_AXIS_COUNT = 6;
/// The state of a device: x, y, z and the rotations about them. Each 0 at rest, some hundreds at full
/// deflection, MOST_DEFLECTION at most.
using SixAxes = std::array<double, SIX_AXIS_COUNT>;
constexpr double MOST_DEFLECTION = 2000.0;

/// What a host makes of a source, by the source's own numbers of axes and buttons. A plain record, for the
/// host to save.
struct SixAxisSettings {
  static constexpr int BUTTON_COUNT = 64;
  static constexpr int NOWHERE = -1;  ///< An axis that moves nothing.
  static constexpr int NOTHING = -1;  ///< A button that does nothing.
  static constexpr double MOST_SCALE = 10.0;
  static constexpr double MOST_DEAD_ZONE = 500.0;

  struct Axis {
    int to = NOWHERE;  ///< An axis of SixAxes. Several axes that go to one are added.
    bool inverted = false;
    double scale = 1.0;  ///< 0 to MOST_SCALE
    bool operator==(const Axis&) const = default;
  };

  std::array<Axis, SIX_AXIS_COUNT> axes{};    ///< By the source's axis.
  std::array<bool, SIX_AXIS_COUNT> locked{};  ///< By the axis of SixAxes: it stays at rest.
  /// Of each of the source's axes: up to it nothing is felt, and what is beyond it counts from it. 0 to
  /// MOST_DEAD_ZONE.
  double deadZone = 0.0;
  /// By the source's button: a Korvane::Cam3DControllerKeyID, or NOTHING.
  std::array<int, BUTTON_COUNT> commands{};

  /// Each axis to its own, and no buttons.
  SixAxisSettings();
  /// Of a device with six axes: its first button fits the view, its second begins and ends MODE_PAN.
  static SixAxisSettings ForDevice();
  /// Of a game controller: the left stick moves aside and ahead, the right one turns, the triggers lower and
  /// raise, and buttons are commands of the view.
  static SixAxisSettings ForGameController();

  bool operator==(const SixAxisSettings&) const = default;
};

/// Every number finite and within its range.
bool IsValid(const SixAxisSettings& settings);
/// What was read from a file: a number out of its range becomes the nearest within, and one that is not
/// finite, or names no axis and no command, that of `defaults`.
SixAxisSettings MakeValid(const SixAxisSettings& settings, const SixAxisSettings& defaults);
/// The axes of a source, as valid settings lead them. Nothing beyond MOST_DEFLECTION comes out, and of a
/// number that is not finite nothing.
SixAxes Apply(const SixAxisSettings& settings, const SixAxes& ofSource);

}  // namespace zovhost
