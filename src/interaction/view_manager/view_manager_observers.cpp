#include "interaction/view_manager/view_manager_observers.h"

#include "korvane/camera_operations.h"
#include "korvane/view_manager.h"

namespace Korvane {

void ViewManagerHelmDiscObserver::OnActivated(DiscType /*type*/) {
  ViewManager& owner = *viewManager;
  owner.SetActiveTool(0);  // may put this observer away
  owner.Refresh();
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

void ViewManagerRewindShotObserver::CloseRecord(const CameraParameters& camera) {
  RewindHistory* const open = history.Get();
  history.Set(nullptr);
  if (open != nullptr) open->EndElementRecord(camera);
}

}  // namespace Korvane
