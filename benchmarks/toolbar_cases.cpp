// A toolbar of twelve items: the mouse over it and far from it, beside a search of the same boxes; a layout,
// beside the sum of the same lengths; a draw, beside a copy of what it hands to the renderer.
#include <benchmark/benchmark.h>

#include <array>
#include <cstddef>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "benchmark_case.h"
#include "benchmark_hub.h"
#include "frame_copy.h"
#include "korvane/toolbar.h"
#include "support/counting_renderer.h"

using namespace Korvane;

namespace {

constexpr int ITEM_COUNT = 12;
constexpr int ITEM_SIZE = 28;
constexpr int PADDING = 8;  // both sides together

class ToolbarCase : public BenchmarkCase {
 public:
  ToolbarCase(std::string caseName, double nanoseconds) : name(std::move(caseName)), aim(nanoseconds) {}

  std::string GetName() const override { return name; }
  double GetAimInNanoseconds() const override { return aim; }

  void Restart() override {
    toolbar = std::make_unique<Toolbar>();
    toolbar->SetKorvane(&hub);
    toolbar->SetRenderer(&renderer);
    for (int tag = 1; tag <= ITEM_COUNT; ++tag) {
      ToolbarItem item;
      item.SetTag(tag);
      item.SetSize(ITEM_SIZE, ITEM_SIZE);
      item.SetIcon(static_cast<TextureID>(tag), ITEM_SIZE, ITEM_SIZE);
      item.SetTooltip(L"what the item does, in a few words");
      toolbar->GetItems().Append(item);
    }
    toolbar->Create();
    toolbar->SetVisible(true);
    toolbar->SetViewportSize(1024, 768);
    toolbar->Draw();
  }

 protected:
  BenchmarkHub hub;
  CountingRenderer renderer;
  std::unique_ptr<Toolbar> toolbar;

 private:
  const std::string name;
  const double aim;
};

class MoveCase : public ToolbarCase {
 public:
  /// The mouse goes up and down in this column.
  MoveCase(std::string caseName, double nanoseconds, int mouseColumn)
      : ToolbarCase(std::move(caseName), nanoseconds), column(mouseColumn) {}

  void Restart() override {
    ToolbarCase::Restart();
    libraryNext = bareNext = 0;
    libraryTag = bareTag = -1;
    for (std::size_t i = 0; i < ITEM_COUNT; ++i)
      boxes[i] = toolbar->GetItems().GetAt(static_cast<int>(i)).GetBounds();
    for (std::size_t i = 0; i < rows.size(); ++i) rows[i] = 200 + static_cast<int>(i * 151 % 370);
    for (const int row : rows) toolbar->OnMouseMove(column, row);
  }

  void StepLibrary() override {
    toolbar->OnMouseMove(column, rows[libraryNext++ % rows.size()]);
    libraryTag = toolbar->GetCurrentTooltipItemTag();
    benchmark::DoNotOptimize(std::as_const(libraryTag));
  }

  void StepBare() override {
    const Vector2 mouse(column, rows[bareNext++ % rows.size()]);
    bareTag = 0;
    for (std::size_t i = 0; i < ITEM_COUNT; ++i) {
      if (boxes[i].IsPointInside(mouse)) bareTag = static_cast<int>(i) + 1;
    }
    benchmark::DoNotOptimize(std::as_const(bareTag));
  }

  bool Agrees() const override { return libraryTag == bareTag && libraryTag >= 0; }

 private:
  const int column;
  std::array<int, 256> rows{};
  std::array<Box2, ITEM_COUNT> boxes;
  std::size_t libraryNext = 0;
  std::size_t bareNext = 0;
  int libraryTag = -1;
  int bareTag = -1;
};

class LayoutCase : public ToolbarCase {
 public:
  LayoutCase() : ToolbarCase("toolbar laid out", 1500.0) {}

  void StepLibrary() override { toolbar->Refresh(); }

  void StepBare() override {
    int sum = PADDING;
    for (int i = 0; i < ITEM_COUNT; ++i) {
      sum += toolbar->GetItems().GetAt(i).GetHeight();
      benchmark::DoNotOptimize(sum);
    }
    length = sum;
  }

  bool Agrees() const override { return toolbar->GetToolbarBounds().extentY.GetValue() * 2.0 == length; }

 private:
  double length = 0.0;
};

class DrawCase : public ToolbarCase {
 public:
  DrawCase() : ToolbarCase("toolbar drawn", 1000.0) {}

  void Restart() override {
    ToolbarCase::Restart();
    copy.Restart(renderer, [this] { toolbar->Draw(); });
  }
  void StepLibrary() override { toolbar->Draw(); }
  void StepBare() override { copy.Step(); }
  bool Agrees() const override { return copy.Agrees(renderer); }

 private:
  FrameCopy copy;
};

}  // namespace

std::vector<BenchmarkCase*> GetToolbarCases() {
  static MoveCase over("mouse over a toolbar", 300.0, 1006);
  static MoveCase far("mouse far from a toolbar", 100.0, 100);
  static LayoutCase layout;
  static DrawCase draw;
  return {&over, &far, &layout, &draw};
}
