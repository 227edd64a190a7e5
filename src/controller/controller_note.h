#pragma once

#include "korvane/cam3d_controller_parameters.h"
#include "korvane/interval_timer.h"
#include "korvane/lifeline.h"
#include "korvane/renderer_loans.h"

namespace Korvane {

class CameraOperations;
class ControllerNote;

/// Takes the note off the view again.
class Cam3DHideHUDTimer : public IntervalTimer {
 public:
  explicit Cam3DHideHUDTimer(ControllerNote& owner) : note(owner) {}

 protected:
  void Timeout() override;

 private:
  ControllerNote& note;
};

/// What the view says of a device that may not move it, or what the host has put there.
class ControllerNote {
 public:
  explicit ControllerNote(const Borrowed<CameraOperations>& noteHub) : hub(noteHub), hideTimer(*this) {}

  /// Takes the texts, and gives them back; the caller applies the counts.
  void Take(Renderer& renderer);
  void GiveBack();

  /// Says for half a second that this mode needs a perspective view.
  void Warn(Cam3DControllerParameters::NavigationMode mode);
  /// Borrowed; null for none.
  void Show(DynamicIcon2D* icon);
  void Hide();
  /// And another frame shows that it is gone.
  void TimeOut();
  /// Null when there is nothing to say, and once the text is given back.
  DynamicIcon2D* Get() const { return warning != nullptr ? warning->Get() : message; }

 private:
  void RequestUpdate() const;

  const Borrowed<CameraOperations>& hub;
  StringLoan walkWarning;
  StringLoan flyWarning;
  const StringLoan* warning = nullptr;  // of these the one that shows
  DynamicIcon2D* message = nullptr;     // the host's
  Cam3DHideHUDTimer hideTimer;
};

}  // namespace Korvane
