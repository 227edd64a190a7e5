#pragma once

#include "korvane/export.h"

namespace Korvane {

/// The settings of a six-axis controller. A number that is not finite, a null array and a mode that is none
/// change nothing where they are set.
///
/// The axes of the device are those of a person before the screen: x to the right, y up, z into the screen. A
/// translation goes along them, a rotation is a vector of angles about them, by the right hand: in
/// MODE_OBJECT the model follows, in MODE_WALK and MODE_FLY whoever looks. The numbers of a device have no
/// unit: what the threshold leaves, times the sensitivity and the multiplier of the axis in the present mode,
/// is a fraction of the view for a translation and an angle in radians for a rotation, for each input.
class ZOVTOOLS_API Cam3DControllerParameters {
 public:
  /// What the device moves: the model, a walker, a flyer, or the page.
  enum NavigationMode : int { MODE_OBJECT = 0, MODE_WALK = 1, MODE_FLY = 2, MODE_PAN = 3 };
  static constexpr int MODE_COUNT = 4;

  // By axis.
  static const double m_defaultObjectTranslationMultipliers[3];
  static const double m_defaultObjectRotationMultipliers[3];
  static const double m_defaultWalkTranslationMultipliers[3];
  static const double m_defaultWalkRotationMultipliers[3];
  static const double m_defaultFlyTranslationMultipliers[3];
  static const double m_defaultFlyRotationMultipliers[3];
  static const double m_defaultPanTranslationMultipliers[3];

  Cam3DControllerParameters();

  NavigationMode GetNavigationMode() const { return navigationMode; }
  void SetNavigationMode(NavigationMode mode);
  double GetSensitivity() const { return sensitivity; }
  void SetSensitivity(double value);
  /// Of the device's numbers, up to and including this one, nothing is felt; what is beyond it counts from
  /// it.
  double GetInputThreshold() const { return inputThreshold; }
  void SetInputThreshold(double value);
  /// Inputs in a row with a rotation after which the pivot shows.
  int GetPivotBallThreshold() const { return pivotBallThreshold; }
  void SetPivotBallThreshold(int inputs) { pivotBallThreshold = inputs; }
  /// Seconds for which it stays after the rotation.
  double GetPivotBallHideDelay() const { return pivotBallHideDelay; }
  bool GetEnableRotation() const { return enableRotation; }
  void SetEnableRotation(bool enable) { enableRotation = enable; }
  bool GetEnableTranslation() const { return enableTranslation; }
  void SetEnableTranslation(bool enable) { enableTranslation = enable; }
  /// In MODE_OBJECT, whether the model turns as on a turntable; the other modes always keep the scene
  /// upright.
  bool GetKeepSceneUpright() const { return keepSceneUpright; }
  void SetKeepSceneUpright(bool keep) { keepSceneUpright = keep; }

  /// Three numbers, by axis. For a mode that is none the getters give 1, 1, 1. MODE_PAN does not turn: its
  /// rotation reads 0, 0, 0 and cannot be set.
  void GetTranslationMultipliers(NavigationMode mode, double* multipliers) const;
  void SetTranslationMultipliers(NavigationMode mode, const double* multipliers);
  void GetRotationMultipliers(NavigationMode mode, double* multipliers) const;
  void SetRotationMultipliers(NavigationMode mode, const double* multipliers);

 private:
  static constexpr int ROW_COUNT = 7;

  NavigationMode navigationMode = MODE_OBJECT;
  double sensitivity = 0.0009;
  double inputThreshold = 5.0;
  int pivotBallThreshold = 3;
  double pivotBallHideDelay = 0.5;
  bool enableRotation = true;
  bool enableTranslation = true;
  bool keepSceneUpright = true;
  double multipliers[ROW_COUNT][3];  // translation and rotation by mode; MODE_PAN has no rotation
};

}  // namespace Korvane
