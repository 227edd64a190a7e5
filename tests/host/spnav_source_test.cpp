// Six-axis devices of the system's daemon, by a daemon of the test's own.
#include "zovhost/spnav_source.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <atomic>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "host/fake_spnav_daemon.h"
#include "host/woken_source.h"
#include "src/devices/spnav/spnav_socket.h"
#include "support/allocation_counter.h"
#include "support/random.h"

namespace {

using zovhost::SixAxes;
using zovhost::SixAxisButton;
using zovhost::SpnavSource;
using Behaviour = FakeSpnavDaemon::Behaviour;

constexpr double RETRY = 0.005;  // seconds

class SpnavSourceTest : public testing::Test {
 protected:
  SpnavSourceTest() {
    char pattern[] = "/tmp/zov_spnav_XXXXXX";
    folder = mkdtemp(pattern);
    setenv("SPNAV_SOCKET", (folder / "socket").c_str(), 1);
  }
  ~SpnavSourceTest() override {
    woken.reset();
    source.reset();
    daemon.reset();
    std::filesystem::remove_all(folder);
  }

  void StartDaemon(const Behaviour& behaviour = {}) {
    daemon = std::make_unique<FakeSpnavDaemon>(folder / "socket", behaviour);
    ASSERT_TRUE(daemon->IsListening());
  }
  void StartSource() {
    source = std::make_unique<SpnavSource>(RETRY);
    woken = std::make_unique<WokenSource>(*source);
  }
  bool WaitForDevice(bool present = true) {
    return woken->WaitUntil([&] { return source->HasDevice() == present; });
  }
  bool WaitForAxes(const SixAxes& axes) {
    return woken->WaitUntil([&] { return source->GetAxes() == axes; });
  }
  /// The next button, as the number and what has become of it.
  std::string WaitForButton() {
    std::optional<SixAxisButton> button;
    woken->WaitUntil([&] { return (button = source->TakeButton()).has_value(); });
    if (!button.has_value()) return "none";
    return std::to_string(button->number) + (button->pressed ? " down" : " up");
  }

  std::filesystem::path folder;
  std::unique_ptr<FakeSpnavDaemon> daemon;
  std::unique_ptr<SpnavSource> source;
  std::unique_ptr<WokenSource> woken;
};

}  // namespace

// ---- what comes ----

TEST_F(SpnavSourceTest, a_motion_is_in_the_axes_of_the_library) {
  StartDaemon();
  StartSource();
  ASSERT_TRUE(WaitForDevice());
  daemon->Move(1, -2, 3, -4, 5, -6);
  EXPECT_TRUE(WaitForAxes({1, -2, 3, -4, 5, -6}));
  daemon->Move(0, 0, 0, 0, 0, 0);
  EXPECT_TRUE(WaitForAxes({}));
}

TEST_F(SpnavSourceTest, the_last_of_many_states_counts) {
  StartDaemon();
  StartSource();
  ASSERT_TRUE(WaitForDevice());
  for (int i = 1; i <= 1000; ++i) daemon->Move(i, 0, 0, 0, 0, 0);
  EXPECT_TRUE(WaitForAxes({1000, 0, 0, 0, 0, 0}));
}

TEST_F(SpnavSourceTest, buttons_come_as_they_change) {
  StartDaemon();
  StartSource();
  ASSERT_TRUE(WaitForDevice());
  daemon->Press(0, true);
  EXPECT_EQ(WaitForButton(), "0 down");
  daemon->Press(63, true);
  EXPECT_EQ(WaitForButton(), "63 down");
  daemon->Press(0, false);
  EXPECT_EQ(WaitForButton(), "0 up");
  daemon->Press(63, false);
  EXPECT_EQ(WaitForButton(), "63 up");
}

TEST_F(SpnavSourceTest, a_quick_press_is_not_lost) {
  StartDaemon();
  StartSource();
  ASSERT_TRUE(WaitForDevice());
  daemon->Press(2, true);
  daemon->Press(2, false);
  daemon->Move(7, 0, 0, 0, 0, 0);
  ASSERT_TRUE(WaitForAxes({7, 0, 0, 0, 0, 0}));
  EXPECT_EQ(WaitForButton(), "2 down");
  EXPECT_EQ(WaitForButton(), "2 up");
}

TEST_F(SpnavSourceTest, its_defaults_are_those_of_a_device) {
  StartSource();
  EXPECT_TRUE(SpnavSource::IsAvailable());
  EXPECT_EQ(source->GetDefaults(), zovhost::SixAxisSettings::ForDevice());
}

TEST_F(SpnavSourceTest, a_host_is_woken_once_until_the_next_poll) {
  StartDaemon();
  StartSource();
  ASSERT_TRUE(WaitForDevice());
  std::atomic<int> wakes = 0;
  source->SetWake([&] { ++wakes; });
  source->Poll();
  for (int i = 1; i <= 100; ++i) daemon->Move(i, 0, 0, 0, 0, 0);
  daemon->DropClients();  // comes after them
  ASSERT_TRUE(daemon->WaitForClient(2));
  EXPECT_EQ(wakes, 1);
  source->SetWake(nullptr);
}

// ---- daemons and devices that come and go ----

TEST_F(SpnavSourceTest, without_a_daemon_a_poll_costs_nothing_and_nothing_is_printed) {
  testing::internal::CaptureStderr();
  testing::internal::CaptureStdout();
  StartSource();
  source->Poll();
  const AllocationCounter counter;
  for (int i = 0; i < 100000; ++i) source->Poll();
  EXPECT_EQ(counter.GetAllocations(), 0U);
  EXPECT_FALSE(source->HasDevice());
  EXPECT_EQ(source->GetAxes(), SixAxes{});
  EXPECT_EQ(source->TakeButton().has_value(), false);
  woken.reset();
  source.reset();
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

TEST_F(SpnavSourceTest, a_poll_of_a_moving_device_allocates_nothing) {
  StartDaemon();
  StartSource();
  ASSERT_TRUE(WaitForDevice());
  daemon->Move(1, 0, 0, 0, 0, 0);
  ASSERT_TRUE(WaitForAxes({1, 0, 0, 0, 0, 0}));
  const AllocationCounter counter;
  for (int i = 0; i < 1000; ++i) {
    daemon->Move(i, 0, 0, 0, 0, 0);
    source->Poll();
  }
  EXPECT_EQ(counter.GetAllocations(), 0U);
}

TEST_F(SpnavSourceTest, a_daemon_that_starts_later_is_found) {
  StartSource();
  source->Poll();
  EXPECT_FALSE(source->HasDevice());
  StartDaemon();
  EXPECT_TRUE(WaitForDevice());
  daemon->Move(5, 0, 0, 0, 0, 0);
  EXPECT_TRUE(WaitForAxes({5, 0, 0, 0, 0, 0}));
}

TEST_F(SpnavSourceTest, a_daemon_that_dies_leaves_the_device_at_rest_and_comes_again) {
  StartDaemon();
  StartSource();
  ASSERT_TRUE(WaitForDevice());
  daemon->Move(5, 0, 0, 0, 0, 0);
  daemon->Press(0, true);
  ASSERT_TRUE(WaitForAxes({5, 0, 0, 0, 0, 0}));
  EXPECT_EQ(WaitForButton(), "0 down");
  daemon.reset();
  EXPECT_TRUE(WaitForDevice(false));
  EXPECT_EQ(source->GetAxes(), SixAxes{});
  EXPECT_EQ(WaitForButton(), "0 up");
  StartDaemon();
  EXPECT_TRUE(WaitForDevice());
  daemon->Move(6, 0, 0, 0, 0, 0);
  EXPECT_TRUE(WaitForAxes({6, 0, 0, 0, 0, 0}));
}

TEST_F(SpnavSourceTest, a_daemon_that_drops_us_again_and_again_is_asked_again) {
  StartDaemon();
  StartSource();
  for (int i = 1; i <= 10; ++i) {
    ASSERT_TRUE(daemon->WaitForClient(i)) << i;
    daemon->DropClients();
  }
  ASSERT_TRUE(daemon->WaitForClient(11));
  ASSERT_TRUE(WaitForDevice());
}

TEST_F(SpnavSourceTest, a_device_that_is_unplugged_comes_to_rest_and_one_that_is_plugged_in_moves) {
  StartDaemon();
  StartSource();
  ASSERT_TRUE(WaitForDevice());
  daemon->Move(5, 0, 0, 0, 0, 0);
  daemon->Press(3, true);
  ASSERT_TRUE(WaitForAxes({5, 0, 0, 0, 0, 0}));
  EXPECT_EQ(WaitForButton(), "3 down");
  daemon->ChangeDevice(false);
  ASSERT_TRUE(WaitForDevice(false));
  EXPECT_EQ(source->GetAxes(), SixAxes{});
  EXPECT_EQ(WaitForButton(), "3 up");
  daemon->ChangeDevice(true);
  ASSERT_TRUE(WaitForDevice());
  daemon->Move(8, 0, 0, 0, 0, 0);
  EXPECT_TRUE(WaitForAxes({8, 0, 0, 0, 0, 0}));
  EXPECT_EQ(daemon->GetAccepted(), 1);
}

TEST_F(SpnavSourceTest, an_old_daemon_that_answers_nothing_serves_too) {
  StartDaemon({false, true});
  StartSource();
  ASSERT_TRUE(WaitForDevice());
  ASSERT_TRUE(daemon->WaitForClient());  // the source takes it for an old one without its doing anything
  daemon->Move(5, 4, 3, 2, 1, 0);
  EXPECT_TRUE(WaitForAxes({5, 4, 3, 2, 1, 0}));
}

TEST_F(SpnavSourceTest, a_daemon_that_hangs_does_not_hold_up_the_end) {
  StartDaemon({true, false});
  // Until the end has come while the source was held up itself.
  std::chrono::steady_clock::duration took(0);
  for (int polls = 1; took < std::chrono::milliseconds(900) && polls < 1000000000; polls *= 10) {
    StartSource();
    for (int i = 0; i < polls; ++i) source->Poll();
    EXPECT_FALSE(source->HasDevice());
    woken.reset();
    const auto before = std::chrono::steady_clock::now();
    source.reset();
    took = std::chrono::steady_clock::now() - before;
  }
  EXPECT_GT(took, std::chrono::milliseconds(900));
  EXPECT_LT(took, std::chrono::seconds(10));
}

TEST_F(SpnavSourceTest, a_daemon_that_hangs_with_a_full_queue_is_not_waited_for) {
  StartDaemon({true, false});
  daemon->FillQueue();
  StartSource();
  for (int i = 0; i < 1000; ++i) source->Poll();
  EXPECT_FALSE(source->HasDevice());
  daemon.reset();
  StartDaemon();
  EXPECT_TRUE(WaitForDevice());
}

// ---- what no daemon should send ----

TEST_F(SpnavSourceTest, garbage_moves_nothing_out_of_range_and_the_connection_stays) {
  StartDaemon();
  StartSource();
  ASSERT_TRUE(WaitForDevice());
  Random random(62);
  for (int i = 0; i < 20000; ++i) {
    FakeSpnavDaemon::Message message;
    for (auto& number : message) number = random.Integer(-2147483647, 2147483647);
    if (i % 2 == 0) message[0] = random.Integer(-3, 12);
    daemon->Send(message);
  }
  daemon->Move(0, 0, 0, 0, 0, 9);
  EXPECT_TRUE(WaitForAxes({0, 0, 0, 0, 0, 9}));
  EXPECT_EQ(daemon->GetAccepted(), 1);
  daemon->Move(2147483647, -2147483647 - 1, 0, 0, 0, 0);
  EXPECT_TRUE(WaitForAxes({zovhost::MOST_DEFLECTION, -zovhost::MOST_DEFLECTION, 0, 0, 0, 0}));
}

TEST_F(SpnavSourceTest, numbers_that_are_no_buttons_are_none) {
  StartDaemon();
  StartSource();
  ASSERT_TRUE(WaitForDevice());
  for (const int button : {-1, 64, 2147483647, -2147483647 - 1}) daemon->Press(button, true);
  daemon->Press(4, true);
  EXPECT_EQ(WaitForButton(), "4 down");
}

TEST_F(SpnavSourceTest, a_message_that_comes_in_parts_is_read_as_one) {
  StartDaemon();
  StartSource();
  ASSERT_TRUE(WaitForDevice());
  const FakeSpnavDaemon::Message message = {0, 11, 12, 13, 14, 15, 16, 1};
  const auto* const bytes = reinterpret_cast<const char*>(message.data());
  for (std::size_t i = 0; i < sizeof message; ++i) daemon->SendBytes(bytes + i, 1);
  EXPECT_TRUE(WaitForAxes({11, 12, 13, 14, 15, 16}));
}

TEST_F(SpnavSourceTest, a_message_without_an_end_ends_the_connection) {
  StartDaemon();
  StartSource();
  ASSERT_TRUE(WaitForDevice());
  daemon->SendBytes("half", 4);
  EXPECT_TRUE(daemon->WaitForClient(2));
  daemon->Move(1, 0, 0, 0, 0, 0);
  EXPECT_TRUE(WaitForAxes({1, 0, 0, 0, 0, 0}));
}

// ---- several sources ----

TEST_F(SpnavSourceTest, the_second_source_has_no_device_until_the_first_goes) {
  StartDaemon();
  StartSource();
  ASSERT_TRUE(WaitForDevice());
  auto second = std::make_unique<SpnavSource>(RETRY);
  WokenSource secondWoken(*second);
  daemon->Move(5, 0, 0, 0, 0, 0);
  ASSERT_TRUE(WaitForAxes({5, 0, 0, 0, 0, 0}));
  second->Poll();
  EXPECT_FALSE(second->HasDevice());
  EXPECT_EQ(second->GetAxes(), SixAxes{});
  EXPECT_EQ(daemon->GetAccepted(), 1);
  woken.reset();
  source.reset();
  EXPECT_TRUE(secondWoken.WaitUntil([&] { return second->HasDevice(); }));
}

TEST_F(SpnavSourceTest, sources_may_be_made_and_ended_at_any_moment) {
  StartDaemon();
  for (int i = 0; i < 100; ++i) {
    const SpnavSource passing(RETRY);
  }
  StartSource();
  EXPECT_TRUE(WaitForDevice());
}

// The client library would end the process.
TEST_F(SpnavSourceTest, a_process_with_very_many_files_has_no_device_until_some_are_closed) {
  rlimit limit = {};
  ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &limit), 0);
  limit.rlim_cur = std::min<rlim_t>(limit.rlim_max, 4096);
  ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &limit), 0);
  StartDaemon();
  std::vector<int> files;
  while (files.empty() || files.back() < 1100) {
    files.push_back(open("/dev/null", O_RDONLY | O_CLOEXEC));
    ASSERT_GE(files.back(), 0);
  }
  StartSource();
  ASSERT_TRUE(daemon->WaitForVisits(5));
  source->Poll();
  EXPECT_FALSE(source->HasDevice());
  for (const int file : files) close(file);
  EXPECT_TRUE(WaitForDevice());
}

TEST(SpnavSource, the_socket_is_read_from_the_settings_of_the_daemon) {
  const auto read = [](const char* text) {
    std::istringstream settings(text);
    return zovhost::ReadSocketPath(settings);
  };
  EXPECT_EQ(read(""), "");
  EXPECT_EQ(read("sensitivity = 1.0\n  socket =  /run/other socket \nled = on\n"), "/run/other socket");
  EXPECT_EQ(read("socket=/x\r\n"), "/x");
  EXPECT_EQ(read("#socket = /x\nsockets = /y\nsocket\n= /z\n"), "");
  EXPECT_EQ(read("socket =\n"), "");
}

TEST(SpnavSource, a_time_that_is_none_is_the_usual_one) {
  setenv("SPNAV_SOCKET", "/nowhere/socket", 1);
  for (const double retry : {std::nan(""), -1.0, 0.0, 1e300}) {
    SpnavSource source(retry);
    source.Poll();
    EXPECT_FALSE(source.HasDevice());
  }
}
