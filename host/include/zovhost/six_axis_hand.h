#pragma once

#include <array>
#include <bitset>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "korvane/lifeline.h"
#include "korvane/vector3.h"
#include "zovhost/six_axis_settings.h"
#include "zovhost/six_axis_source.h"

namespace Korvane {
class Cam3DController;
}

namespace zovhost {

/// Leads what comes from six-axis sources to the library's controller, as their settings say.
///
///     zovhost::SpnavSource source;
///     zovhost::SixAxisHand hand(&controller);
///     hand.AddSource(&source);
///     ...
///     hand.Advance(isFocused);  // once a frame, right before PerformOperations
///     hub.PerformOperations();
///     if (hand.IsMoving()) window->RequestFrame();
///
/// The controller is told once a frame of a device that is deflected, once of its coming to rest, and nothing
/// then. It moves the camera by the same for each input, so what it is told is scaled by the time since the
/// last frame, beyond the controller's threshold: the camera is as fast at any rate, from MOST_FRAME_SECONDS
/// a frame on.
///
/// Sources are borrowed, and forgotten when they go. The controller is borrowed, and must outlive the hand or
/// be taken away before it goes. Its buttons are the hand's: it maps each number from 0 to that command, and
/// tells of commands. Within what the hand calls - the controller and whom that tells, and its own handlers -
/// a host may do anything with it, delete it included. All calls belong on the window's thread.
class SixAxisHand {
 public:
  static constexpr double MOST_FRAME_SECONDS = 0.1;
  /// What is told of a state, and of a command that a button stands for.
  using StateHandler =
      std::function<void(const Korvane::Vector3& translation, const Korvane::Vector3& rotation)>;
  using CommandHandler = std::function<void(int command, bool pressed)>;

  explicit SixAxisHand(Korvane::Cam3DController* toController = nullptr);
  /// What the controller was told of ends, and the handlers are not told.
  ~SixAxisHand();
  SixAxisHand(const SixAxisHand&) = delete;
  SixAxisHand& operator=(const SixAxisHand&) = delete;

  /// What the former one was told of ends. Null: nothing is told.
  void SetController(Korvane::Cam3DController* toController);
  /// With the source's default settings. False for null and for one that is there already.
  bool AddSource(SixAxisSource* source);
  /// What it holds ends with the next Advance.
  void RemoveSource(SixAxisSource* source);
  /// False, and nothing changes, for settings that are not valid and for a source that is not there.
  bool SetSettings(const SixAxisSource* source, const SixAxisSettings& settings);
  /// The default ones of a device for a source that is not there.
  SixAxisSettings GetSettings(const SixAxisSource* source) const;
  /// Called right before the controller is told, with just what it is told. Whoever tells a controller of the
  /// same things at the same frames moves the same camera in the same way.
  void SetStateHandler(StateHandler handler);
  void SetCommandHandler(CommandHandler handler);
  /// For every source, also for those that come later; see SixAxisSource::SetWake.
  void SetWake(std::function<void()> wakeHost);

  /// Takes in what has come and tells the controller, of the buttons first. Whether it told of anything. A
  /// window without the focus takes nothing: what is held is released, and the axes rest. Within what it
  /// calls it does nothing.
  bool Advance(bool focused);
  /// A device is deflected beyond what the controller's threshold leaves, as of the last Advance, so that
  /// another frame is wanted.
  bool IsMoving() const { return moving; }
  /// The device's axes as the settings have led them, of the last Advance, whether focused or not: for a page
  /// of settings.
  const SixAxes& GetAxes() const { return axes; }

 private:
  struct Command {
    int number;
    bool pressed;
  };
  /// Of which the handlers are being told, and the controller will be.
  struct Unsaid {
    std::optional<int> release;
    bool rest = false;
  };
  struct Source {
    std::optional<Command> TakeNext(bool focused);
    std::optional<Command> ReleaseNext();
    Command Release(std::size_t number);

    Korvane::Borrowed<SixAxisSource> from;  // null: gone, and its row goes with the next Advance
    SixAxisSettings settings;
    std::array<int, SixAxisSettings::BUTTON_COUNT> commands{};  // that the held buttons have begun
    std::bitset<SixAxisSettings::BUTTON_COUNT> held;
  };

  Source* Find(const SixAxisSource* source) const;
  void PollSources();
  std::optional<Command> TakeCommand(bool focused);
  void TellCommand(const Command& command);
  bool TellState(const SixAxes& state);
  void End();
  void EndUnsaid();
  SixAxes ScaleToFrame(const SixAxes& state);
  double TakeScale();

  Korvane::Cam3DController* controller = nullptr;
  unsigned joined = 0;  // controllers until now: whoever is told of one may have taken another
  std::vector<std::unique_ptr<Source>> sources;
  std::function<void()> wake;
  std::shared_ptr<const StateHandler> onState;  // kept by whoever calls it
  std::shared_ptr<const CommandHandler> onCommand;
  SixAxes axes{};
  Unsaid unsaid;
  bool moving = false;
  bool advancing = false;
  std::optional<std::uint32_t> lastTick;  // of the last frame of a motion
  Korvane::Lifeline lifeline;
};

}  // namespace zovhost
