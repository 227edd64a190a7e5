#include "korvane/rewind_record.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "support/memory_hub.h"

using namespace Korvane;

namespace {

// Keeps the x of the eye of each camera that it is given.
struct JournalHistory : RewindHistory {
  bool BeginElementRecord(const CameraParameters& camera) override {
    begun.push_back(camera.eye.x);
    if (onBegin) onBegin();
    return true;
  }
  bool EndElementRecord(const CameraParameters& camera) override {
    ended.push_back(camera.eye.x);
    if (onEnd) onEnd();
    return true;
  }
  bool AddElementSubrecord(const CameraParameters& camera) override {
    samples.push_back(camera.eye.x);
    return true;
  }

  std::vector<double> begun;
  std::vector<double> ended;
  std::vector<double> samples;
  std::function<void()> onBegin;
  std::function<void()> onEnd;
};

using Eyes = std::vector<double>;

CameraParameters At(double x) {
  CameraParameters camera;
  camera.eye.x = x;
  return camera;
}

}  // namespace

TEST(RewindRecord, opens_samples_and_closes_with_the_cameras_it_is_given) {
  JournalHistory history;
  RewindRecord record;
  EXPECT_FALSE(record.IsOpen());
  record.Begin(&history, At(1));
  EXPECT_TRUE(record.IsOpen());
  EXPECT_TRUE(record.IsOpenIn(&history));
  record.Sample(At(2));
  record.Sample(At(3));
  record.End(At(4));
  EXPECT_FALSE(record.IsOpen());
  EXPECT_EQ(history.begun, Eyes{1});
  EXPECT_EQ(history.samples, (Eyes{2, 3}));
  EXPECT_EQ(history.ended, Eyes{4});
}

TEST(RewindRecord, closes_once) {
  JournalHistory history;
  RewindRecord record;
  record.Begin(&history, At(1));
  record.End(At(2));
  record.End(At(3));
  record.Sample(At(4));
  EXPECT_EQ(history.ended, Eyes{2});
  EXPECT_TRUE(history.samples.empty());
}

TEST(RewindRecord, records_nothing_without_a_history) {
  RewindRecord record;
  record.Begin(nullptr, At(1));
  EXPECT_FALSE(record.IsOpen());
  EXPECT_FALSE(record.IsOpenIn(nullptr));
  record.Sample(At(2));
  record.End(At(3));
}

TEST(RewindRecord, an_open_record_is_left_open_when_the_next_takes_its_place) {
  JournalHistory history;
  RewindRecord record;
  record.Begin(&history, At(1));
  record.Begin(&history, At(2));
  EXPECT_TRUE(history.ended.empty());
  record.End(At(3));
  EXPECT_EQ(history.begun, (Eyes{1, 2}));
  EXPECT_EQ(history.ended, Eyes{3});
}

TEST(RewindRecord, forgets_a_history_that_dies) {
  auto history = std::make_unique<JournalHistory>();
  RewindRecord record;
  record.Begin(history.get(), At(1));
  history.reset();
  EXPECT_FALSE(record.IsOpen());
  record.Sample(At(2));
  record.End(At(3));
}

TEST(RewindRecord, a_forgotten_record_is_not_closed) {
  JournalHistory history;
  RewindRecord record;
  record.Begin(&history, At(1));
  record.Forget();
  EXPECT_FALSE(record.IsOpen());
  record.End(At(2));
  EXPECT_TRUE(history.ended.empty());
}

TEST(RewindRecord, closes_with_the_camera_of_the_host_and_asks_for_it_only_then) {
  MemoryHub hub;
  hub.view = At(7);
  JournalHistory history;
  RewindRecord record;
  record.End(&hub);
  EXPECT_EQ(hub.queried, 0);
  record.Begin(&history, At(1));
  record.End(&hub);
  EXPECT_EQ(hub.queried, 1);
  EXPECT_EQ(history.ended, Eyes{7});
}

TEST(RewindRecord, is_forgotten_without_a_hub) {
  JournalHistory history;
  RewindRecord record;
  record.Begin(&history, At(1));
  record.End(nullptr);
  EXPECT_FALSE(record.IsOpen());
  EXPECT_TRUE(history.ended.empty());
}

TEST(RewindRecord, handed_over_it_is_closed_by_its_new_holder_alone) {
  JournalHistory history;
  RewindRecord record;
  record.Begin(&history, At(1));
  RewindRecord taken(std::move(record));
  EXPECT_FALSE(record.IsOpen());  // NOLINT(bugprone-use-after-move): it is closed then
  record.End(At(2));
  EXPECT_TRUE(history.ended.empty());
  RewindRecord last;
  last = std::move(taken);
  last.End(At(3));
  EXPECT_EQ(history.ended, Eyes{3});
}

TEST(RewindRecord, closed_while_it_opens_it_is_closed_once) {
  JournalHistory history;
  RewindRecord record;
  history.onBegin = [&] { record.End(At(2)); };
  record.Begin(&history, At(1));
  record.End(At(3));
  EXPECT_EQ(history.ended, Eyes{2});
}

TEST(RewindRecord, opened_anew_while_it_closes_it_is_open) {
  JournalHistory history;
  RewindRecord record;
  history.onEnd = [&] {
    history.onEnd = nullptr;
    record.Begin(&history, At(3));
  };
  record.Begin(&history, At(1));
  record.End(At(2));
  EXPECT_TRUE(record.IsOpen());
  record.End(At(4));
  EXPECT_EQ(history.ended, (Eyes{2, 4}));
}

TEST(RewindRecord, its_holder_may_go_during_any_of_its_calls) {
  MemoryHub hub;
  JournalHistory history;
  auto record = std::make_unique<RewindRecord>();
  history.onBegin = [&] { record.reset(); };
  record->Begin(&history, At(1));
  record = std::make_unique<RewindRecord>();
  history.onBegin = nullptr;
  history.onEnd = [&] { record.reset(); };
  record->Begin(&history, At(2));
  record->End(&hub);
  EXPECT_EQ(record, nullptr);
  EXPECT_EQ(history.ended.size(), 1U);
}
