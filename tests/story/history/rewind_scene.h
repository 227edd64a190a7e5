#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <sstream>
#include <string>
#include <vector>

#include "korvane/rewind_history.h"
#include "story/history/rewind_parts.h"
#include "support/cameras.h"
#include "support/journal.h"
#include "support/memory_hub.h"
#include "support/recording_renderer.h"

/// Shows what a host's derived class, and the library's own tests, can reach.
class OpenHistory : public Korvane::RewindHistory {
 public:
  using RewindHistory::CamerasAreEqual;
  using RewindHistory::GetParts;
  using RewindHistory::IsSceneOutsideView;
  using RewindHistory::UpdateHistoryElement;
};

/// A camera that looks along -z, told apart by the x of its eye.
inline Korvane::CameraParameters At(double x) { return LookAt({x, 0, 5}, {x, 0, 0}, {0, 1, 0}); }

/// As a disc has it, in a view of 800 x 600.
inline void Furnish(Korvane::RewindHistory& history, Korvane::CameraOperations* hub,
                    Korvane::Renderer* renderer) {
  history.SetThumbnailSize(64.0F);
  history.SetThumbnailGapSize(4.0F);
  history.SetViewportSize(800, 600);
  history.SetKorvane(hub);
  history.SetRenderer(renderer);
}

/// Below 0 in x the scene is out of sight.
struct RewindHub : MemoryHub {
  bool IsSceneOutsideView(const Korvane::CameraParameters& camera) override {
    ++asked;
    if (onAsk) onAsk();
    return camera.eye.x < 0.0;
  }
  bool CheckCamerasEqual(const Korvane::CameraParameters* a,
                         const Korvane::CameraParameters* b) const override {
    if (onCompare) onCompare();
    return MemoryHub::CheckCamerasEqual(a, b);
  }
  int asked = 0;
  std::function<void()> onAsk;
  std::function<void()> onCompare;
};

/// Writes what it hears into a journal, and then does what the test wants.
struct RewindListener : Korvane::RewindHistoryObserver {
  explicit RewindListener(Journal& whatWasSeen) : journal(whatWasSeen) {}

  void OnCurrentElementChanged(int index) override { Hear("current", index); }
  void OnElementAdded(int index, const Korvane::CameraParameters& camera) override {
    Hear("added", index, " at ", camera.eye.x);
  }
  void OnElementUpdated(int index, const Korvane::CameraParameters& camera) override {
    Hear("updated", index, " at ", camera.eye.x);
  }
  void OnElementRemoved(int index) override { Hear("removed", index); }
  void OnHistoryCleared() override { Hear("cleared"); }
  void OnTimelineClosed() override { Hear("closed"); }
  void OnTimelineOpened() override { Hear("opened"); }
  void OnTimelineSlid(int index, double weight) override { Hear("slid", index, " by ", weight); }

  template <class... Values>
  void Hear(const char* what, const Values&... values) {
    if (journal.recording) {
      std::ostringstream line;
      line << what << (sizeof...(values) > 0 ? " " : "");
      ((line << values), ...);
      journal.Add(line.str());
    }
    if (onHear) onHear(what);
  }

  Journal& journal;
  std::function<void(const std::string& what)> onHear;
};

/// A history as a disc has it, with a hub, a renderer and an observer.
struct RewindScene : ::testing::Test {
  RewindScene() {
    Furnish(history, &hub, &renderer);
    history.AddObserver(&listener);
  }

  /// Elements at 1, 2, ... without a word of it.
  void Fill(int count) {
    for (int i = 1; i <= count; ++i) history.AddHistoryElement(At(i), nullptr);
    journal.Take();
    renderer.ClearCalls();
  }
  /// A move from one camera to another, each given by its x.
  bool Move(double from, double to) {
    const bool begun = history.BeginElementRecord(At(from));
    return history.EndElementRecord(At(to)) && begun;
  }
  bool OpenAt(double x, double camera = 1000.0) { return history.OpenTimeline({x, 300}, At(camera)); }
  /// With the camera that the last element has.
  bool Open(double x) { return OpenAt(x, Eyes().empty() ? 0.0 : Eyes().back()); }
  bool Slide(double x) { return history.SlideTimeline({x, 300}); }
  bool Close() { return history.CloseTimeline({0, 0}); }

  std::vector<double> Eyes() const {
    std::vector<double> eyes;
    Korvane::CameraParameters camera;
    for (int i = 0; history.GetElementCamera(i, camera); ++i) eyes.push_back(camera.eye.x);
    return eyes;
  }
  Korvane::RewindStrip& Strip() { return history.GetParts().strip; }
  std::vector<Korvane::RewindHistory::HistoryElement>& List() {
    return history.GetParts().elements.GetList();
  }
  std::vector<double> Places() {
    std::vector<double> places;
    for (const auto& element : List()) places.push_back(element.bounds.center.x);
    return places;
  }
  std::vector<double> Weights() {
    std::vector<double> weights;
    for (const auto& element : List()) weights.push_back(element.weight);
    return weights;
  }
  double Bracket() const { return history.GetBracketPosition().x; }
  int PictureCount() const { return renderer.CountCalls("CreateSceneScreenshot"); }

  Journal journal;
  RewindListener listener{journal};
  RewindHub hub;
  RecordingRenderer renderer;
  OpenHistory history;
};

using Numbers = std::vector<double>;
