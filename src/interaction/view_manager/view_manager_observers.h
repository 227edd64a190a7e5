#pragma once

#include "korvane/helm_disc_observer.h"
#include "korvane/lifeline.h"
#include "korvane/orientor_observer.h"
#include "korvane/rewind_history.h"
#include "korvane/shot_watch.h"
#include "korvane/storyboard_observer.h"

namespace Korvane {

class CameraOperations;
class ViewManager;

// What the view manager hears from its widgets. None owns what it points to.

/// A disc and a tool exclude each other, and a disc has its place in the layout.
class ViewManagerHelmDiscObserver : public HelmDiscObserver {
 public:
  ViewManagerHelmDiscObserver(HelmDisc* disc, ViewManager* owner)
      : HelmDiscObserver(disc), viewManager(owner) {}

  void OnActivated(DiscType type) override;
  void OnClosed() override;
  void OnClicked(HelmDiscZone /*zone*/) override {}
  void OnDragBegin(HelmDiscZone /*zone*/) override {}
  void OnDragEnd() override {}
  void OnKeyDown(KeyID /*key*/) override {}
  void OnKeyUp(KeyID /*key*/) override {}
  void OnWelcomeClicked(WelcomeMenuPart /*part*/) override {}
  void OnWelcomeClosed() override {}
  void OnWelcomeEntered() override {}
  void OnWelcomeExited() override {}

 private:
  ViewManager* viewManager;
};

/// The panel has its place in the layout, and its playback takes the other widgets out of play.
class ViewManagerStoryboardObserver : public StoryboardObserver {
 public:
  ViewManagerStoryboardObserver(Storyboard* panel, ViewManager* owner)
      : StoryboardObserver(panel), viewManager(owner) {}

  void OnOpened(Storyboard::Mode mode) override;
  void OnClosed() override;
  void OnModeChanged(Storyboard::Mode /*mode*/) override {}
  void OnPartClicked(StoryboardPart /*part*/) override {}
  void OnShotCreated() override {}
  void OnPlaybackStory(Story* story) override;
  void OnPlaybackSequence(Sequence* sequence) override;
  void OnPlaybackSingleShot(ShotSpecification* shot) override;
  void OnPreviewShot(ShotSpecification* shot, bool loop) override;
  void OnPlaybackStopped() override;
  void OnPlaybackResumed() override;
  void OnTargetShot(ShotSpecification* /*shot*/) override {}

 private:
  ViewManager* viewManager;
};

/// The other widgets stand relative to the cube.
class ViewManagerOrientorObserver : public OrientorObserver {
 public:
  ViewManagerOrientorObserver(Orientor* cube, ViewManager* owner)
      : OrientorObserver(cube), viewManager(owner) {}

  void OnClicked(OrientorPart /*part*/) override {}
  void OnDragBegin(OrientorPart /*part*/) override {}
  void OnDragEnd() override {}
  void OnPositionChange(OrientorParameters::Location location) override;

 private:
  ViewManager* viewManager;
};

/// Closes the rewind record of a camera move when its shot ends.
class ViewManagerRewindShotObserver : public ShotWatch<ViewManagerRewindShotObserver> {
 public:
  explicit ViewManagerRewindShotObserver(RewindHistory* rewindHistory)
      : ShotWatch(this, &ViewManagerRewindShotObserver::CloseRecord), history(rewindHistory) {}

  /// The record that is open there.
  void SetHistory(RewindHistory* rewindHistory) { history.Set(rewindHistory); }
  /// Now, and not when the shot ends.
  void CloseRecord(const CameraParameters& camera);

 private:
  Borrowed<RewindHistory> history;
};

}  // namespace Korvane
