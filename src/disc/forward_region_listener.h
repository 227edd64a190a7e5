#pragma once

#include "disc/operation_region_listener.h"
#include "disc/wedge_texts.h"
#include "korvane/borrowed_settings.h"
#include "korvane/icon2d.h"
#include "korvane/shot_watch.h"
#include "korvane/vector3.h"

namespace Korvane {

/// The wedge that moves towards the point of the scene under the cursor: by a drag, which a gauge shows, or,
/// by a click, a third of the way.
class ForwardRegionListener : public OperationRegionListener {
 public:
  ForwardRegionListener(TrackMenu* menu, HelmDisc* helmDisc);

  void OnLeftMouseDown(int x, int y) override;
  void OnLeftMouseUp(int x, int y) override;
  void OnDraw() override;
  void OnTrackMenuActivate(bool active) override;

 private:
  // What is under the cursor at the press.
  struct Sight {
    Vector3 ray;
    Vector3 point;
  };

  void BorrowSettings(CameraOperations& hub);
  bool Look(const CameraOperations& hub, const CameraParameters& camera, Sight& sight);
  void Aim(CameraParameters& camera, const Sight& sight);
  double GetSpaceBehind(const CameraOperations& hub, const CameraParameters& camera, const Sight& sight);
  void GiveSettingsBack();
  void Fly();
  void BeginFlight(CameraOperations& hub);
  void NoteEndOfFlight(const CameraParameters& camera);
  void FollowFlight();
  void BreakOff();
  double GetProgress(const CameraOperations& hub) const;
  void DrawGauge(const CameraOperations& hub);
  void DrawMiss(const CameraOperations& hub);

  Borrowed<CameraOperations> lender;  // of the settings
  BorrowedParameters settings;
  bool hit = false;
  bool flying = false;  // until the end is seen in a frame
  ShotWatch<ForwardRegionListener> flight{this, &ForwardRegionListener::NoteEndOfFlight};
  Borrowed<CameraOperations> flightHub;  // while it runs
  WedgeTexts<1> missHUD;
  ResourceIcon2D gauge;
  ResourceIcon2D target;
};

}  // namespace Korvane
