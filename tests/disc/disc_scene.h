#pragma once

#include <string>
#include <vector>

#include "disc/helm_disc_parts.h"
#include "disc/menu_scene.h"
#include "korvane/helm_disc.h"
#include "korvane/helm_disc_observer.h"

class OpenHelmDisc : public Korvane::HelmDisc {
 public:
  using HelmDisc::ChangeWelcomeIcon;
  using HelmDisc::ClickWelcome;
  using HelmDisc::InitRegions;
  using HelmDisc::InitWelcome;
  using HelmDisc::InstantiatePivotBall;
  using HelmDisc::UpdateWelcome;

  Korvane::HelmDiscParts& open = GetParts();
};

/// Writes down what it is told, and then does what the test wants.
class JournalDiscObserver : public Korvane::HelmDiscObserver {
 public:
  JournalDiscObserver(Korvane::HelmDisc* disc, Journal& theJournal)
      : HelmDiscObserver(disc), journal(theJournal) {}

  void OnActivated(Korvane::DiscType type) override { Hear("OnActivated", static_cast<int>(type)); }
  void OnClosed() override { Hear("OnClosed"); }
  void OnClicked(Korvane::HelmDiscZone zone) override { Hear("OnClicked", static_cast<int>(zone)); }
  void OnDragBegin(Korvane::HelmDiscZone zone) override { Hear("OnDragBegin", static_cast<int>(zone)); }
  void OnDragEnd() override { Hear("OnDragEnd"); }
  void OnKeyDown(Korvane::KeyID key) override { Hear("OnKeyDown", key); }
  void OnKeyUp(Korvane::KeyID key) override { Hear("OnKeyUp", key); }
  void OnWelcomeClicked(Korvane::WelcomeMenuPart part) override {
    Hear("OnWelcomeClicked", static_cast<int>(part));
  }
  void OnWelcomeClosed() override { Hear("OnWelcomeClosed"); }
  void OnWelcomeEntered() override { Hear("OnWelcomeEntered"); }
  void OnWelcomeExited() override { Hear("OnWelcomeExited"); }

  Journal& journal;
  std::function<void(const std::string& what)> onHear;

 private:
  void Hear(const std::string& what, int number = -1) {
    const std::string line = number < 0 ? what : what + "(" + std::to_string(number) + ")";
    journal.Add(line);
    if (onHear) onHear(line);
  }
};

/// A region map of all the colours that regions have, in 6 x 5 squares, the last of which are transparent.
inline MapImage MakeMapOfAllColours() {
  constexpr int SQUARE = 12;
  static constexpr int SHADES[] = {0, 128, 255};
  MapImage image(6 * SQUARE, 5 * SQUARE);
  int place = 0;
  for (const int red : SHADES) {
    for (const int green : SHADES) {
      for (const int blue : SHADES) {
        image.Fill(place % 6 * SQUARE, place / 6 * SQUARE, SQUARE, SQUARE, red, green, blue);
        ++place;
      }
    }
  }
  return image;
}

/// A disc in a view of 800 x 600, created, without welcome screen. Every region map is 100 x 100 pixels and
/// of one colour: that of the region that the test points at.
struct DiscScene {
  DiscScene() : hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0})), observer(&disc, journal) {
    disc.SetKorvane(&hub);
    disc.SetRenderer(&renderer);
    disc.GetParameters().suppressWelcome = true;
    disc.AddObserver(&observer);
  }
  ~DiscScene() { disc.Destroy(); }

  void Start() {
    disc.Create();
    disc.SetViewportSize(800, 600);
    Forget();
  }
  /// Opens a disc with the mouse on a region of a colour: all maps are made anew for it.
  void OpenOn(Korvane::DiscType type, const Korvane::Vector3& colour) {
    for (const int map : {17, 26, 35, 70, 47, 53, 59}) {
      MapImage image(100, 100);
      image.Fill(0, 0, 100, 100, ToByte(colour.x), ToByte(colour.y), ToByte(colour.z));
      renderer.images[map] = image;
    }
    disc.Create();
    disc.SetViewportSize(800, 600);
    disc.SetActiveDisc(type);
    disc.GetActiveTrackMenu()->SetLocation(400, 300);
    disc.OnMouseMove(400, 300);
    Forget();
  }
  void Forget() {
    journal.lines.clear();
    renderer.ClearCalls();
    renderer.drawnTexts.clear();
    hub.requested = 0;
  }
  int GetActiveIndex() {
    Korvane::TrackMenu& menu = *disc.GetActiveTrackMenu();
    int found = -1;
    for (int i = 0; menu.GetRegion(i) != nullptr; ++i) {
      if (menu.GetRegion(i)->icon == menu.GetActiveRegion().icon) found = i;
    }
    return found;
  }
  static int ToByte(double part) { return part == 0.5 ? 128 : static_cast<int>(part * 255.0); }

  ManualPlatform platform;
  Journal journal;
  MemoryHub hub;
  MapRenderer renderer;
  OpenHelmDisc disc;
  JournalDiscObserver observer;
};
