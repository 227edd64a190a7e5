#pragma once

#include "bare_operations.h"

/// The arithmetic of a six-axis device on an upright perspective view within the bounds of its model.
class BareDevice {
 public:
  enum Mode { OBJECT, WALK, FLY, PAN };

  struct Settings {
    double sensitivity;
    double threshold;
    Eigen::Vector3d translation;  // by axis
    Eigen::Vector3d rotation;
    Eigen::Vector3d up;
    Eigen::Vector3d front;
    Eigen::Vector3d boundCentre;
    double boundRadius;
    double sceneScale;
    double panMultiplier;
    double lookMultiplier;
    double dollyMultiplier;
    double invertTolerance;  // degrees
  };

  BareDevice(Mode deviceMode, const Settings& deviceSettings, const BareCamera& camera)
      : mode(deviceMode),
        settings(deviceSettings),
        working(camera),
        lookView(camera.centre - camera.eye),
        lookUp(camera.up) {}

  void Step(Eigen::Vector3d translation, Eigen::Vector3d rotation, BareCamera& camera);

 private:
  void Orbit(const Eigen::Vector3d& rotation);
  void PanAndDolly(const Eigen::Vector3d& translation);
  void Look(const Eigen::Vector3d& rotation);
  void Track(const Eigen::Vector3d& translation);

  const Mode mode;
  const Settings& settings;
  BareCamera working;
  Eigen::Vector3d lookView;
  Eigen::Vector3d lookUp;
};
