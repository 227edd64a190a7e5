#pragma once

#include <bitset>
#include <functional>
#include <optional>

#include "korvane/lifeline.h"
#include "zovhost/six_axis_settings.h"

namespace zovhost {

struct SixAxisButton {
  int number = 0;  ///< The source's own, from 0.
  bool pressed = false;
};

/// Something that six axes and buttons come from. All calls belong on the host's window thread.
///
/// The axes are those of the library - x to the right, y up, z into the screen, rotations by the right hand
/// about them - unless the source's settings lead them there.
class SixAxisSource {
 public:
  virtual ~SixAxisSource();
  SixAxisSource(const SixAxisSource&) = delete;
  SixAxisSource& operator=(const SixAxisSource&) = delete;

  /// Takes in what has come. Never waits. A device that is gone rests and holds no button.
  virtual void Poll() = 0;
  /// Whether a device stands behind it.
  virtual bool HasDevice() const = 0;
  virtual SixAxisSettings GetDefaults() const = 0;
  /// Called when something has come, once until the next Poll: possibly on another thread, and within what
  /// must not be held up. It may do nothing but wake, as Window::Wake does. When this returns, the former one
  /// is not running and will not be called again.
  virtual void SetWake(std::function<void()> wake) = 0;

  /// As of the last Poll.
  const SixAxes& GetAxes() const { return axes; }
  /// The next button that has changed, in the order of the numbers. What one has done
  /// between two polls comes one by one, as far as a press, a release and a press.
  std::optional<SixAxisButton> TakeButton();

  Korvane::Lifeline& GetLifeline() { return lifeline; }

 protected:
  using Buttons = std::bitset<SixAxisSettings::BUTTON_COUNT>;

  SixAxisSource();
  /// A number that is not finite counts as 0.
  void SetAxes(const SixAxes& state);
  /// The buttons that are held, and those that have been pressed since the last call.
  void SetButtons(const Buttons& nowHeld, const Buttons& pressedSince);
  void Rest();

 private:
  SixAxes axes{};
  Buttons held;
  Buttons pressed;  // and not yet taken
  Buttons taken;    // of which the last that was taken is a press
  Korvane::Lifeline lifeline;
};

/// A source whose device the host reads itself.
class FedSource : public SixAxisSource {
 public:
  explicit FedSource(const SixAxisSettings& defaultSettings = SixAxisSettings::ForDevice());

  /// Counts from the next Poll.
  void Feed(const SixAxes& state);
  /// False for a number that is none.
  bool FeedButton(int number, bool isPressed);
  /// Until something is fed again.
  void RemoveDevice();

  void Poll() override;
  bool HasDevice() const override { return present; }
  SixAxisSettings GetDefaults() const override { return defaults; }
  void SetWake(std::function<void()> wake) override;

 private:
  void Come();

  SixAxisSettings defaults;
  SixAxes state{};
  Buttons down;
  Buttons pressedSince;
  bool present = false;
  bool woken = false;
  std::function<void()> onCome;
};

}  // namespace zovhost
