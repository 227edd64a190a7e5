// The storyboard: a frame of a story that plays, beside the same frame of its move alone; a mouse move over a
// panel of a hundred shots and over one of a hundred sequences, beside a search of the same boxes; a draw of
// the shots, beside the corners of what it hands to the renderer.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "benchmark_case.h"
#include "benchmark_hub.h"
#include "conversions.h"
#include "korvane/box2.h"
#include "korvane/platform.h"
#include "korvane/shot_editor.h"
#include "korvane/story.h"
#include "korvane/storyboard.h"
#include "support/counting_renderer.h"
#include "support/manual_platform.h"

using namespace Korvane;

namespace {

constexpr int WIDTH = 1024;
constexpr int HEIGHT = 768;
constexpr int COUNT = 100;

// A move that no run comes to the end of, a quarter of a turn a second.
constexpr double DURATION = 1e6;
constexpr double ANGLE = 90.0 * DURATION;
constexpr std::uint32_t FRAME = 16;  // milliseconds

// ---- playing ----

class PlaybackCase : public BenchmarkCase {
 public:
  std::string GetName() const override { return "storyboard: frame of playback"; }

  void Restart() override {
    library = std::make_unique<Library>();
    bare = std::make_unique<Side>();
    library->Begin([this] { library->board.PlaybackStory(library->board.GetStory()); });
    bare->Begin([this] {
      bare->hub.ApplyCameraParameters(GetBenchmarkCamera());
      MakeShot()->BeginShot(&bare->hub);
    });
    StepLibrary();
    StepBare();
  }
  void StepLibrary() override {
    library->Frame();
    library->board.Draw();
    benchmark::DoNotOptimize(std::as_const(library->hub.view));
  }
  void StepBare() override {
    bare->Frame();
    benchmark::DoNotOptimize(std::as_const(bare->hub.view));
  }
  bool Agrees() const override {
    const bool plays = library->board.IsPlayingBack() && bare->hub.IsShotActive();
    return plays && library->hub.view.eye == bare->hub.view.eye && library->hub.view.up == bare->hub.view.up;
  }

 private:
  static std::unique_ptr<ShotSpecification> MakeShot() {
    auto shot = std::make_unique<ShotSpecification>(GetBenchmarkCamera());
    shot->SetShotType(ShotSpecification::SHOT_ORBIT);
    shot->SetDuration(DURATION);
    shot->SetLeftRightAngle(ANGLE);
    return shot;
  }

  /// A hub with a clock of its own.
  struct Side {
    template <class Start>
    void Begin(const Start& start) {
      SetPlatform(&clock);
      start();
      hub.PerformOperations();
      clock.Advance(static_cast<std::uint32_t>(0.4 * DURATION * 1000.0));
      hub.PerformOperations();
    }
    void Frame() {
      SetPlatform(&clock);
      clock.Advance(FRAME);
      hub.PerformOperations();
    }

    ManualPlatform clock;
    BenchmarkHub hub;
  };

  struct Library : Side {
    Library() {
      board.SetKorvane(&hub);
      board.SetRenderer(&renderer);
      board.Create();
      auto* const sequence = new Sequence;
      board.GetStory()->AddSequence(sequence);
      sequence->AddShot(MakeShot().release());
    }
    CountingRenderer renderer;
    Storyboard board;
  };

  std::unique_ptr<Library> library;
  std::unique_ptr<Side> bare;
};

// ---- the panel ----

/// A panel in the corner of the view that shows a story, with all its pictures made.
class Panel {
 public:
  Panel(int sequences, int shots) {
    hub.GetApplicationParameters().viewport_width = WIDTH;
    hub.GetApplicationParameters().viewport_height = HEIGHT;
    board.SetKorvane(&hub);
    board.SetRenderer(&renderer);
    board.SetPosition(0, 0);
    board.SetViewportSize(WIDTH, HEIGHT);
    board.Create();
    board.SetVisible(true);
    for (int i = 0; i < sequences; ++i) AddSequence(shots);
    for (int i = 0; i < sequences + shots + 2; ++i) board.Draw();
  }

  BenchmarkHub hub;
  CountingRenderer renderer;
  Storyboard board;

 private:
  void AddSequence(int shots) {
    auto* const sequence = new Sequence;
    sequence->SetName(L"a sequence");
    for (int i = 0; i < shots; ++i) {
      auto* const shot = new ShotSpecification(GetBenchmarkCamera());
      shot->SetName(L"a shot");
      sequence->AddShot(shot);
    }
    board.GetStory()->AddSequence(sequence);
    if (shots > 0) board.SetSelectedSequence(sequence);
  }
};

/// Slides in a row, each above the one on its right.
class BareRow {
 public:
  /// Those that would stand past an edge lie on a stack there, as deep as it may be.
  struct Shape {
    double first;
    double step;
    double y;
    double half;
    double edge;
    double stackStep;
    int depth;
  };

  explicit BareRow(const Shape& shape) {
    int stacked = 0;
    for (int i = COUNT; i >= 0; --i) {  // with the slide that adds one
      const double edge = shape.edge - shape.stackStep * std::min(stacked, shape.depth);
      const double place = shape.first + shape.step * i;
      if (place > edge) ++stacked;
      slides[static_cast<std::size_t>(i)] = Box2({std::min(place, edge), shape.y}, Vector2(shape.half));
    }
  }
  /// The number from the left, COUNT for the slide that adds one, -1 for none.
  int Find(const Vector2& mouse) const {
    const auto found = std::find_if(slides.begin(), slides.end(),
                                    [&](const Box2& each) { return each.IsPointInside(mouse); });
    return found != slides.end() ? static_cast<int>(found - slides.begin()) : -1;
  }
  Vector2 GetCentre(int index) const { return slides[static_cast<std::size_t>(index)].center; }

 private:
  std::array<Box2, COUNT + 1> slides;
};

constexpr BareRow::Shape SHOT_ROW = {33.0, 70.0, 167.0, 32.0, WIDTH - 33.0, 3.0, COUNT};
constexpr BareRow::Shape SEQUENCE_ROW = {79.0, 134.0, 79.0, 64.0, WIDTH - 96.0, 5.0, 4};

struct MoveRow {
  const char* name;
  int sequences;
  int shots;  // of each
  BareRow::Shape shape;
  int bottom;  // where the mouse moves up and down, along the row
  int top;
  StringID addText;
};
constexpr MoveRow OVER_SHOTS = {
    "storyboard: mouse over 100 shots", 1, COUNT, SHOT_ROW, 150, 198, STRING_SHOT_ADD};
constexpr MoveRow OVER_SEQUENCES = {
    "storyboard: mouse over 100 sequences", COUNT, 0, SEQUENCE_ROW, 40, 160, STRING_SEQUENCE_ADD};

class PanelMoveCase : public BenchmarkCase {
 public:
  explicit PanelMoveCase(const MoveRow& moveRow) : row(moveRow) {}

  std::string GetName() const override { return row.name; }
  double GetAimInNanoseconds() const override { return 1500.0; }

  void Restart() override {
    SetPlatform(nullptr);
    panel = std::make_unique<Panel>(row.sequences, row.shots);
    libraryNext = bareNext = 0;
    bareFound = -1;
    for (std::size_t i = 0; i < mice.size(); ++i) {
      mice[i] =
          Vector2(static_cast<double>(i * 151 % WIDTH),
                  row.bottom + static_cast<double>(i * 37 % static_cast<std::size_t>(row.top - row.bottom)));
    }
    for (std::size_t i = 0; i < mice.size(); ++i) StepLibrary();
    libraryNext = 0;
  }
  void StepLibrary() override {
    const Vector2& mouse = mice[libraryNext++ % mice.size()];
    panel->board.OnMouseMove(static_cast<int>(mouse.x), static_cast<int>(mouse.y));
    benchmark::DoNotOptimize(panel->board);
  }
  void StepBare() override {
    bareMouse = mice[bareNext++ % mice.size()];
    bareFound = bare.Find(bareMouse);
    benchmark::DoNotOptimize(std::as_const(bareFound));
  }
  bool Agrees() const override {
    const std::wstring text = GetText();
    return panel->board.GetTooltip() == text && (text.empty() || panel->board.IsMouseInRegion());
  }

 private:
  static std::wstring TextOf(StringID id) { return L"text " + std::to_wstring(static_cast<int>(id)); }
  bool IsOn(const Vector2& button, double radius) const {
    return (bareMouse - bare.GetCentre(bareFound) - button).Length() <= radius;
  }
  std::wstring GetText() const {
    if (bareFound < 0) return {};
    if (bareFound == COUNT) return TextOf(row.addText);
    const bool ofShot = row.shots > 0;
    const double radius = ofShot ? 8.0 : 10.0;
    if (IsOn(ofShot ? Vector2(20.0, 20.0) : Vector2(47.0, 46.0), radius))
      return TextOf(ofShot ? STRING_SHOT_PLAY : STRING_SEQUENCE_PLAY);
    if (IsOn(ofShot ? Vector2(20.0, -4.0) : Vector2(47.0, -30.0), radius)) return TextOf(STRING_STORY_TARGET);
    return TextOf(STRING_STORY_SLIDE);
  }

  const MoveRow row;
  const BareRow bare{row.shape};
  std::unique_ptr<Panel> panel;
  std::array<Vector2, 256> mice;
  std::size_t libraryNext = 0;
  std::size_t bareNext = 0;
  Vector2 bareMouse;
  int bareFound = -1;
};

class PanelDrawCase : public BenchmarkCase {
 public:
  std::string GetName() const override { return "storyboard: 100 shots drawn"; }
  double GetAimInNanoseconds() const override { return 8000.0; }

  void Restart() override {
    SetPlatform(nullptr);
    panel = std::make_unique<Panel>(1, COUNT);
    const long before = panel->renderer.icons;
    panel->board.Draw();
    iconsOfFrame = panel->renderer.icons - before;
    bareIcons = panel->renderer.icons;
  }
  void StepLibrary() override { panel->board.Draw(); }
  void StepBare() override {
    for (long i = 0; i < iconsOfFrame; ++i) {
      Box2({static_cast<double>(i), 167.0}, Vector2(32.0)).ToArray(corners.data(), 0.0F);
      benchmark::DoNotOptimize(corners.data());
      benchmark::ClobberMemory();
    }
    bareIcons += iconsOfFrame;
  }
  // A card, a thumbnail and a label of each shot, and what stands around them.
  bool Agrees() const override { return panel->renderer.icons == bareIcons && iconsOfFrame > 3 * COUNT; }

 private:
  std::unique_ptr<Panel> panel;
  std::array<float, 12> corners{};
  long iconsOfFrame = 0;
  long bareIcons = 0;
};

}  // namespace

std::vector<BenchmarkCase*> GetStoryCases() {
  static PlaybackCase playback;
  static PanelMoveCase shots(OVER_SHOTS);
  static PanelMoveCase sequences(OVER_SEQUENCES);
  static PanelDrawCase draw;
  return {&playback, &shots, &sequences, &draw};
}
