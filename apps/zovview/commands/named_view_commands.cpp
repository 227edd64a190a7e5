#include "commands/named_view_commands.h"

#include "korvane/shot_parameters.h"
#include "views/view_list.h"

namespace zovview {

namespace {

constexpr double FLIGHT_SECONDS = 0.7;

}  // namespace

bool FlyTo(const ViewTarget& target, const Korvane::CameraParameters& camera) {
  if (!zovhost::CanShowView(camera)) return false;
  Korvane::TransitionShotParameters transition;
  transition.targetCamera = camera;
  transition.easeEnd = 1.0;
  transition.duration = FLIGHT_SECONDS;
  return Travel(target, [&transition](Korvane::CameraOperations& hub) { return hub.BeginShot(transition); });
}

void KeepView(const ViewTarget& target) {
  if (target.views != nullptr) target.views->Add(target.hub.GetView());
}

void ImportViews(const ViewTarget& target) {
  if (target.views != nullptr) target.views->AskImport();
}

void ExportViews(const ViewTarget& target) {
  if (target.views != nullptr) target.views->AskExport();
}

}  // namespace zovview
