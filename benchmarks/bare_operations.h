#pragma once

#include <Eigen/Geometry>
#include <array>

// The arithmetic of the interactive moves and nothing else: no hub, no host, no guard for bad input.

/// The same numbers as the library's camera record.
struct BareCamera {
  Eigen::Vector3d eye;
  Eigen::Vector3d centre;
  Eigen::Vector3d up;
  Eigen::Vector3d pivot;
  // Half angles in degrees: left, right, top, bottom.
  std::array<double, 4> halfAngles;
  double orthoWidth;
  double orthoHeight;
  int projection;
  bool perspectiveWithOrtho;
  double projectionTransition;
  double pageScale;
  double pageOriginX;
  double pageOriginY;
};

/// Whether two cameras are the same within the library's tolerance.
bool IsSameView(const BareCamera& a, const BareCamera& b);

struct BareCursor {
  int x;
  int y;
};

/// The settings of a view that the moves read.
struct BareSettings {
  struct Snap {
    double threshold;
    double outerAcceleration;
    double innerAcceleration;
    double innerBandBegins;
  };
  int width;
  int height;
  Eigen::Vector3d up;
  Eigen::Vector3d front;
  double orbitMultiplier;
  bool snapping;
  double deadZone;
  Snap horizontalSnap;
  Snap verticalSnap;
  double panMultiplier;
  double zoomSensitivity;
  double zoomMinLimit;
  double zoomBackDistance;
  int zoomOutSnapSize;
};

/// A turntable orbit.
class BareOrbit {
 public:
  BareOrbit(const BareSettings& orbitSettings, const BareCamera& camera, BareCursor cursor);
  void Step(BareCursor cursor, BareCamera& camera);

 private:
  struct AxisSnap {
    double rotation = 0.0;
    double accumulated = 0.0;
    bool snapped = false;
  };

  void Measure(const Eigen::Vector3d& upAxis, double& remainingX, double& remainingY);
  double NextRotation(AxisSnap& snap, const BareSettings::Snap& curve, double remaining, double delta);

  const BareSettings& settings;
  BareCamera initial;
  BareCamera working;
  BareCursor first;
  BareCursor previous;
  AxisSnap horizontal;
  AxisSnap vertical;
  Eigen::Vector3d closest = Eigen::Vector3d::Zero();
  std::array<Eigen::Vector3d, 26> views;
};

class BarePan {
 public:
  BarePan(const BareSettings& panSettings, BareCursor cursor) : settings(panSettings), previous(cursor) {}
  void Step(BareCursor cursor, BareCamera& camera);

 private:
  const BareSettings& settings;
  BareCursor previous;
};

/// A perspective zoom within its limit.
class BareZoom {
 public:
  BareZoom(const BareSettings& zoomSettings, const BareCamera& camera, BareCursor cursor)
      : settings(zoomSettings), initial(camera), first(cursor) {}
  void Step(BareCursor cursor, BareCamera& camera);
  double GetUnitAmount() const { return unitAmount; }

 private:
  bool Move(double offset, BareCamera& camera);

  const BareSettings& settings;
  BareCamera initial;
  BareCursor first;
  double unitAmount = 0.0;
};
