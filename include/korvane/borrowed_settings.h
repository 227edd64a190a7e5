#pragma once

#include <tuple>
#include <utility>

#include "korvane/camera_operations.h"
#include "korvane/vector3.h"

namespace Korvane {

/// Settings of a hub that a gesture changes for as long as it lasts. `FIELDS` are members of
/// ApplicationParameters: BorrowedSettings<&ApplicationParameters::orbit_multiplier>.
///
/// The lender is remembered only to be compared: a hub that has been taken away meanwhile is not touched.
template <auto... FIELDS>
class BorrowedSettings {
 public:
  /// Remembers the values of now. While these are lent by the same hub, the first ones stay remembered.
  void Borrow(CameraOperations& hub) {
    if (lender == &hub) return;
    lender = &hub;
    saved = Fields(hub.GetApplicationParameters());
  }

  /// Writes the values back, once. Whichever hub is given, and with null, nothing is borrowed afterwards.
  void GiveBack(CameraOperations* hub) {
    const bool lent = IsBorrowedFrom(hub);
    lender = nullptr;
    if (lent) Fields(hub->GetApplicationParameters()) = saved;
  }

  bool IsBorrowedFrom(const CameraOperations* hub) const { return hub != nullptr && hub == lender; }

  /// Hands the loan over, so that it can be given back when its holder may be gone.
  BorrowedSettings Take() { return std::exchange(*this, BorrowedSettings()); }

 private:
  static auto Fields(ApplicationParameters& parameters) { return std::tie(parameters.*FIELDS...); }
  using Values =
      std::tuple<std::remove_reference_t<decltype(std::declval<ApplicationParameters&>().*FIELDS)>...>;

  const CameraOperations* lender = nullptr;
  Values saved;
};

/// The pivot that the camera of a hub had before a gesture moved it. The lender is only compared, here too.
struct BorrowedPivot {
  const CameraOperations* lender = nullptr;  // null: none
  Vector3 point;
};

/// All settings of a hub at once, but for the size of the viewport: that is the window's, which may change it
/// meanwhile, and nobody would write it again.
class BorrowedParameters {
 public:
  void Borrow(CameraOperations& hub) {
    if (lender == &hub) return;
    lender = &hub;
    saved = hub.GetApplicationParameters();
  }

  void GiveBack(CameraOperations* hub) {
    const bool lent = hub != nullptr && hub == lender;
    lender = nullptr;
    if (!lent) return;
    ApplicationParameters& parameters = hub->GetApplicationParameters();
    saved.viewport_width = parameters.viewport_width;
    saved.viewport_height = parameters.viewport_height;
    parameters = saved;
  }

 private:
  const CameraOperations* lender = nullptr;
  ApplicationParameters saved;
};

}  // namespace Korvane
