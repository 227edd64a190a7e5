#include "korvane/cam3d_controller_parameters.h"

#include <algorithm>
#include <cmath>

namespace Korvane {

namespace {

using Mode = Cam3DControllerParameters::NavigationMode;
using P = Cam3DControllerParameters;

constexpr int AXIS_COUNT = 3;

constexpr bool IsMode(Mode mode) { return static_cast<unsigned>(mode) < P::MODE_COUNT; }
constexpr bool Turns(Mode mode) { return IsMode(mode) && mode != P::MODE_PAN; }

// The rows of the table, by mode.
constexpr int TranslationRow(Mode mode) { return 2 * mode; }
constexpr int RotationRow(Mode mode) { return 2 * mode + 1; }

void Store(double value, double& setting) {
  if (std::isfinite(value)) setting = value;
}

void StoreRow(const double* values, double (&row)[AXIS_COUNT]) {
  const auto isFinite = [](double value) { return std::isfinite(value); };
  if (values != nullptr && std::all_of(values, values + AXIS_COUNT, isFinite)) {
    std::copy_n(values, AXIS_COUNT, row);
  }
}

}  // namespace

const double P::m_defaultObjectTranslationMultipliers[AXIS_COUNT] = {0.6, 0.5, 0.8};
const double P::m_defaultObjectRotationMultipliers[AXIS_COUNT] = {1.0, 1.0, 1.0};
const double P::m_defaultWalkTranslationMultipliers[AXIS_COUNT] = {0.3, 0.1, 0.4};
const double P::m_defaultWalkRotationMultipliers[AXIS_COUNT] = {0.2, 0.2, 0.2};
const double P::m_defaultFlyTranslationMultipliers[AXIS_COUNT] = {0.5, 0.5, 0.5};
const double P::m_defaultFlyRotationMultipliers[AXIS_COUNT] = {0.2, 0.2, 0.2};
const double P::m_defaultPanTranslationMultipliers[AXIS_COUNT] = {0.8, 0.8, 1.0};

Cam3DControllerParameters::Cam3DControllerParameters() {
  const double* const defaults[ROW_COUNT] = {
      m_defaultObjectTranslationMultipliers, m_defaultObjectRotationMultipliers,
      m_defaultWalkTranslationMultipliers,   m_defaultWalkRotationMultipliers,
      m_defaultFlyTranslationMultipliers,    m_defaultFlyRotationMultipliers,
      m_defaultPanTranslationMultipliers,
  };
  for (int row = 0; row < ROW_COUNT; ++row) std::copy_n(defaults[row], AXIS_COUNT, multipliers[row]);
}

void Cam3DControllerParameters::SetNavigationMode(NavigationMode mode) {
  if (IsMode(mode)) navigationMode = mode;
}
void Cam3DControllerParameters::SetSensitivity(double value) { Store(value, sensitivity); }
void Cam3DControllerParameters::SetInputThreshold(double value) { Store(value, inputThreshold); }

void Cam3DControllerParameters::GetTranslationMultipliers(NavigationMode mode, double* out) const {
  if (out == nullptr) return;
  if (IsMode(mode)) {
    std::copy_n(multipliers[TranslationRow(mode)], AXIS_COUNT, out);
  } else {
    std::fill_n(out, AXIS_COUNT, 1.0);
  }
}

void Cam3DControllerParameters::SetTranslationMultipliers(NavigationMode mode, const double* values) {
  if (IsMode(mode)) StoreRow(values, multipliers[TranslationRow(mode)]);
}

void Cam3DControllerParameters::GetRotationMultipliers(NavigationMode mode, double* out) const {
  if (out == nullptr) return;
  if (Turns(mode)) {
    std::copy_n(multipliers[RotationRow(mode)], AXIS_COUNT, out);
  } else {
    std::fill_n(out, AXIS_COUNT, mode == MODE_PAN ? 0.0 : 1.0);
  }
}

void Cam3DControllerParameters::SetRotationMultipliers(NavigationMode mode, const double* values) {
  if (Turns(mode)) StoreRow(values, multipliers[RotationRow(mode)]);
}

}  // namespace Korvane
