#include "interaction/view_manager/view_manager_observers.h"

#include "korvane/rewind_history.h"
#include "korvane/view_manager.h"

namespace Korvane {

void ViewManagerHelmDiscObserver::OnActivated(DiscType /*type*/) {
  viewManager->SetActiveTool(0);
  viewManager->Refresh();
}
void ViewManagerHelmDiscObserver::OnClosed() { viewManager->Refresh(); }

void ViewManagerStoryboardObserver::OnOpened(Storyboard::Mode /*mode*/) { viewManager->Refresh(); }
void ViewManagerStoryboardObserver::OnClosed() { viewManager->Refresh(); }
void ViewManagerStoryboardObserver::OnPlaybackStory(Story* /*story*/) {
  viewManager->OnReelshowStartPlayback();
}
void ViewManagerStoryboardObserver::OnPlaybackSequence(Sequence* /*sequence*/) {
  viewManager->OnReelshowStartPlayback();
}
void ViewManagerStoryboardObserver::OnPlaybackSingleShot(ShotSpecification* /*shot*/) {
  viewManager->OnReelshowStartPlayback();
}
void ViewManagerStoryboardObserver::OnPreviewShot(ShotSpecification* /*shot*/, bool /*loop*/) {
  viewManager->OnReelshowStartPlayback();
}
void ViewManagerStoryboardObserver::OnPlaybackStopped() { viewManager->OnReelshowStopPlayback(); }
void ViewManagerStoryboardObserver::OnPlaybackResumed() { viewManager->OnReelshowStartPlayback(); }

void ViewManagerOrientorObserver::OnPositionChange(OrientorParameters::Location /*location*/) {
  viewManager->Refresh();
}

void ViewManagerRewindShotObserver::OnEndShot(Shot* /*shot*/, const CameraParameters& camera) {
  watching = false;
  if (history != nullptr) history->EndElementRecord(camera);
}

}  // namespace Korvane
