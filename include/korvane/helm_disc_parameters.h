#pragma once

#include "korvane/export.h"

namespace Korvane {

/// The settings of a navigation disc, which owns the one record: write its fields through
/// HelmDisc::GetParameters. Sizes are in pixels.
class ZOVTOOLS_API HelmDiscParameters {
 public:
  static const int SIZE_MINI_SMALL;
  static const int SIZE_MINI_NORMAL;
  static const int SIZE_MINI_LARGE;
  static const int SIZE_MINI_EXTRA;
  static const int SIZE_LARGE_SMALL;
  static const int SIZE_LARGE_NORMAL;
  static const int SIZE_LARGE_LARGE;
  /// Opacities are multiplied into the pictures, which are half transparent themselves, and cut at 1 there.
  static const double OPACITY_25;
  static const double OPACITY_50;
  static const double OPACITY_75;
  static const double OPACITY_100;
  static const double minimumSpeedFactor;
  static const double maximumSpeedFactor;

  bool alwaysShowWelcome = false;     ///< Make the welcome screen even when it has been seen.
  bool welcomeSeen = false;           ///< Set when the cursor first entered it; a host may store it.
  bool welcomeStartsAdvanced = true;  ///< The page on which it opens.
  bool suppressWelcome = false;       ///< No welcome screen at all.
  int miniDiscSize = SIZE_MINI_NORMAL;
  int largeDiscSize = SIZE_LARGE_NORMAL;
  double largeDiscOpacity = OPACITY_50;
  double miniDiscOpacity = OPACITY_50;
  bool showMessages = true;
  bool showTooltips = true;
  bool showToolHUDs = true;
  bool invertLookVertical = false;
  double walkSpeedFactor = 1.0;
  bool clickZoom = false;           ///< A click zooms one step on advanced discs; always so on basic ones.
  bool keepSceneUpright = true;     ///< Orbit keeps the up direction of the scene.
  double walkRewindInterval = 5.0;  ///< Seconds between the samples that a walk leaves in the history.
  bool lookAtOnShift = true;
  bool rectZoomOnShift = true;

 protected:
  friend class HelmDisc;
  HelmDiscParameters();
};

}  // namespace Korvane
