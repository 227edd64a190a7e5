// The desktop's dialog for files, against a portal of the tests' own.
#include "zovhost/file_dialog.h"

#include <gtest/gtest.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <string>

#include "fake_portal.h"

namespace {

using host_test::FakePortal;
using zovhost::FileDialog;
using Kind = FileDialog::Answer::Kind;
using Manner = FakePortal::Manner;

class FileDialogTest : public testing::Test {
 protected:
  FileDialogTest() : portal(FakePortal::Get()) {}

  void OnWake() {
    const std::lock_guard lock(mutex);
    woken = true;
    changed.notify_all();
  }
  FileDialog::Answer Await() {
    std::unique_lock lock(mutex);
    EXPECT_TRUE(changed.wait_for(lock, std::chrono::minutes(1), [this] { return woken; }));
    woken = false;
    lock.unlock();
    const std::optional<FileDialog::Answer> answer = dialog.TakeAnswer();
    EXPECT_TRUE(answer.has_value());
    return answer.value_or(FileDialog::Answer{});
  }

  FakePortal& portal;
  std::mutex mutex;
  std::condition_variable changed;
  bool woken = false;
  FileDialog dialog{[this] { OnWake(); }};
  FileDialog::Question question{FileDialog::Question::Kind::Open,
                                "Open a model",
                                {},
                                {},
                                {{"Models", {"*.obj", "*.glb"}}, {"All", {"*"}}}};
};

TEST_F(FileDialogTest, what_was_chosen_is_the_answer) {
  portal.Set(Manner::Chooses, "file:///models/my%20house.obj");
  ASSERT_TRUE(dialog.Ask(question));
  EXPECT_TRUE(dialog.IsAsking());
  const FileDialog::Answer answer = Await();
  EXPECT_EQ(answer.kind, Kind::Chosen);
  EXPECT_EQ(answer.file, "/models/my house.obj");
  EXPECT_FALSE(dialog.IsAsking());
  EXPECT_EQ(portal.GetMethod(), "OpenFile");
  EXPECT_EQ(portal.GetTitle(), "Open a model");
  EXPECT_EQ(portal.GetFilters(), "[('Models', [(0, '*.obj'), (0, '*.glb')]), ('All', [(0, '*')])]");
}

TEST_F(FileDialogTest, a_file_is_saved_under_the_name_that_was_suggested_or_another) {
  portal.Set(Manner::Chooses, "file:///pictures/view.png");
  question.kind = FileDialog::Question::Kind::Save;
  question.name = "house.png";
  ASSERT_TRUE(dialog.Ask(question));
  EXPECT_EQ(Await().file, "/pictures/view.png");
  EXPECT_EQ(portal.GetMethod(), "SaveFile");
  EXPECT_EQ(portal.GetName(), "'house.png'");
}

TEST_F(FileDialogTest, who_changes_his_mind_has_chosen_nothing) {
  portal.Set(Manner::Cancels);
  ASSERT_TRUE(dialog.Ask(question));
  EXPECT_EQ(Await().kind, Kind::Cancelled);
}

TEST_F(FileDialogTest, what_is_on_no_disk_cannot_be_chosen) {
  portal.Set(Manner::Chooses, "https://example.org/house.obj");
  ASSERT_TRUE(dialog.Ask(question));
  const FileDialog::Answer answer = Await();
  EXPECT_EQ(answer.kind, Kind::Cancelled);
  EXPECT_TRUE(answer.file.empty());
}

TEST_F(FileDialogTest, a_desktop_without_a_dialog_says_so) {
  portal.Set(Manner::Refuses);
  ASSERT_TRUE(dialog.Ask(question));
  EXPECT_EQ(Await().kind, Kind::Unavailable);
}

TEST_F(FileDialogTest, one_is_open_at_a_time_and_can_be_closed) {
  portal.Set(Manner::Waits);
  ASSERT_TRUE(dialog.Ask(question));
  ASSERT_TRUE(portal.AwaitQuestion());
  EXPECT_FALSE(dialog.Ask(question));
  EXPECT_FALSE(dialog.TakeAnswer().has_value());
  dialog.Close();
  EXPECT_EQ(Await().kind, Kind::Cancelled);
  EXPECT_TRUE(portal.AwaitClose()) << "the desktop closes it, too";
  portal.Set(Manner::Chooses, "file:///a.obj");
  ASSERT_TRUE(dialog.Ask(question));
  EXPECT_EQ(Await().file, "/a.obj");
}

TEST_F(FileDialogTest, goes_with_its_owner) {
  portal.Set(Manner::Waits);
  {
    FileDialog other({});
    ASSERT_TRUE(other.Ask(question));
    ASSERT_TRUE(portal.AwaitQuestion());
  }
  EXPECT_TRUE(portal.AwaitClose());
}

// A bus that takes calls and answers none. In a process of its own, since a process has but one bus.
void CloseBeforeAMuteBus() {
  constexpr unsigned LONGEST = 30;  // seconds until it is given up
  constexpr int PATIENCE = 20'000;  // milliseconds
  alarm(LONGEST);
  sockaddr_un place = {};
  place.sun_family = AF_UNIX;
  std::snprintf(place.sun_path, sizeof place.sun_path, "/tmp/zov-mute-bus-%d", static_cast<int>(getpid()));
  const int bus = socket(AF_UNIX, SOCK_STREAM, 0);
  const bool listens =
      bind(bus, reinterpret_cast<const sockaddr*>(&place), sizeof place) == 0 && listen(bus, 4) == 0;
  setenv("DBUS_SESSION_BUS_ADDRESS", (std::string("unix:path=") + place.sun_path).c_str(), 1);
  {
    FileDialog dialog({});
    dialog.Ask({});
    pollfd caller = {bus, POLLIN, 0};
    if (!listens || poll(&caller, 1, PATIENCE) != 1) std::_Exit(1);
  }
  unlink(place.sun_path);
  std::_Exit(0);
}

TEST(FileDialogDeathTest, goes_with_its_owner_before_a_bus_that_does_not_answer) {
  testing::FLAGS_gtest_death_test_style = "threadsafe";
  EXPECT_EXIT(CloseBeforeAMuteBus(), testing::ExitedWithCode(0), "");
}

TEST_F(FileDialogTest, outside_of_a_session_there_is_none) {
  const std::string address = std::getenv("DBUS_SESSION_BUS_ADDRESS");
  const char* const folder = std::getenv("XDG_RUNTIME_DIR");
  const std::string runtime = folder != nullptr ? folder : "";
  unsetenv("DBUS_SESSION_BUS_ADDRESS");
  unsetenv("XDG_RUNTIME_DIR");
  ASSERT_TRUE(dialog.Ask(question));
  EXPECT_EQ(Await().kind, Kind::Unavailable);
  setenv("DBUS_SESSION_BUS_ADDRESS", address.c_str(), 1);
  if (folder != nullptr) setenv("XDG_RUNTIME_DIR", runtime.c_str(), 1);
}

}  // namespace
