#include "korvane/application_parameters.h"

namespace Korvane {

const double ApplicationParameters::defaultFlyTurnMultiplier = 1.0;
const int ApplicationParameters::defaultFlyDeadZoneRadius = 30;
const double ApplicationParameters::defaultFlyRampUpRadius = 0.25;
const bool ApplicationParameters::defaultFlyPlanarMotion = true;
const double ApplicationParameters::defaultFlyUpDownSensitivity = 0.01;
const Cam3DControllerParameters::NavigationMode ApplicationParameters::defaultCam3DControllerMode =
    Cam3DControllerParameters::MODE_OBJECT;
const double ApplicationParameters::defaultLookInvertTolerance = 10.0;
const double ApplicationParameters::defaultPanMultiplier = 1.0;
const double ApplicationParameters::defaultLookMultiplier = 2.0;
const double ApplicationParameters::defaultOrbitMultiplier = 5.0;
const double ApplicationParameters::defaultDollyMultiplier = 4.0;
const double ApplicationParameters::defaultHeightMultiplier = 2.0;
const double ApplicationParameters::defaultSlideMultiplier = 1.0;
const double ApplicationParameters::defaultZoomSensitivity = 1.015;
const double ApplicationParameters::defaultZoomMinLimit = 0.05;
const bool ApplicationParameters::defaultZoomMinLimitMotion = true;
const double ApplicationParameters::defaultZoomMinLimitMultiplier = 1.0;
const double ApplicationParameters::defaultZoomBackDistance = Math::MAX_VALUE;
const int ApplicationParameters::defaultZoomOutSnapSize = 0;
const int ApplicationParameters::defaultZoomInSnapSize = 50;
const bool ApplicationParameters::defaultZoomSenseReversed = false;
const bool ApplicationParameters::defaultLookInvertVerticalAxis = false;
const bool ApplicationParameters::defaultUseLookAtObstructionDetection = false;
const ApplicationParameters::BoundGeometryType ApplicationParameters::defaultGlobalBoundGeometry =
    BoundGeometryType::Sphere;
const bool ApplicationParameters::defaultPreserveOrbitUpDirection = true;
const bool ApplicationParameters::defaultAlignOrbitUpDirection = true;
const bool ApplicationParameters::defaultConstrainOrbitHorizontal = false;
const bool ApplicationParameters::defaultConstrainOrbitVertical = false;
const bool ApplicationParameters::defaultDoCustomOrbit = false;
const bool ApplicationParameters::defaultDoSnapOrbit = false;
const double ApplicationParameters::defaultSnapOrbitDeadZone = 0.045;
const double ApplicationParameters::defaultSnapOrbitThresholdH = 15.0 * Math::DEG_TO_RAD;
const double ApplicationParameters::defaultSnapOrbitAccelerationAX = 1.5;
const double ApplicationParameters::defaultSnapOrbitAccelerationBX = 2.0;
const double ApplicationParameters::defaultSnapOrbitAccelerationPointX = 0.5;
const double ApplicationParameters::defaultSnapOrbitThresholdV = 15.0 * Math::DEG_TO_RAD;
const double ApplicationParameters::defaultSnapOrbitAccelerationAY = 1.5;
const double ApplicationParameters::defaultSnapOrbitAccelerationBY = 2.0;
const double ApplicationParameters::defaultSnapOrbitAccelerationPointY = 0.5;
const bool ApplicationParameters::defaultLockToSelection = false;
const bool ApplicationParameters::defaultAutoSwitchProjection = true;
const bool ApplicationParameters::defaultToolSelectionSensitivity = true;
const bool ApplicationParameters::defaultUseProjectionTransitions = false;
const double ApplicationParameters::defaultFlyMoveMultiplier = 1.0;

namespace {

CameraParameters DefaultHomeCamera() {
  CameraParameters home;
  home.eye = Vector3(1.0, 1.0, 1.0);
  home.up = Vector3(-1.0, 2.0, -1.0);
  home.SetHorizontalFOV(45.0);
  home.SetVerticalFOV(45.0);
  home.ortho_width = 1.0;
  home.ortho_height = 1.0;
  return home;
}

}  // namespace

ApplicationParameters::ApplicationParameters()
    : home_camera(DefaultHomeCamera()), flyMoveMultiplier(defaultFlyMoveMultiplier) {}

ApplicationParameters::~ApplicationParameters() = default;

}  // namespace Korvane
