#pragma once

#include "korvane/export.h"
#include "korvane/resource_ids.h"

namespace Korvane {

class HelmDisc;
enum class DiscType : int;

/// What a wedge of a disc stands for.
enum class HelmDiscZone : int {
  Center = 0,
  Close = 1,
  Forward = 2,
  Look = 3,
  Menu = 4,
  Orbit = 5,
  Pan = 6,
  Rewind = 7,
  Walk = 8,
  UpDown = 9,
  Zoom = 10,
};

/// What was clicked on the welcome screen.
enum class WelcomeMenuPart : int {
  AdvancedTitle = 0,
  BasicTitle = 1,
  SwitchToAdvanced = 2,
  SwitchToBasic = 3,
  AdvancedFourth = 4,
  AdvancedThird = 5,
  AdvancedSecond = 6,
  AdvancedFirst = 7,
  BasicSecond = 8,
  BasicFirst = 9,
};

/// Is told what happens to a navigation disc. Borrowed by the disc; see HelmDisc::AddObserver.
class ZOVTOOLS_API HelmDiscObserver {
 public:
  virtual ~HelmDiscObserver();
  HelmDiscObserver(const HelmDiscObserver&) = delete;
  HelmDiscObserver& operator=(const HelmDiscObserver&) = delete;

  /// A disc was opened.
  virtual void OnActivated(DiscType type) = 0;
  virtual void OnClosed() = 0;
  /// A press and release without a drag between.
  virtual void OnClicked(HelmDiscZone zone) = 0;
  virtual void OnDragBegin(HelmDiscZone zone) = 0;
  virtual void OnDragEnd() = 0;
  virtual void OnKeyDown(KeyID key) = 0;
  virtual void OnKeyUp(KeyID key) = 0;
  virtual void OnWelcomeClicked(WelcomeMenuPart part) = 0;
  virtual void OnWelcomeClosed() = 0;
  /// The cursor came onto, and went off, the welcome screen.
  virtual void OnWelcomeEntered() = 0;
  virtual void OnWelcomeExited() = 0;

 protected:
  /// Does not add itself to the disc.
  explicit HelmDiscObserver(HelmDisc* subject) : helmDisc(subject) {}

  HelmDisc* helmDisc;
};

}  // namespace Korvane
