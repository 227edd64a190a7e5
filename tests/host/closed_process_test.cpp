#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <functional>

#include "../../host/src/scene/closed_process.h"
#include "host/scene_files.h"

namespace {

// Whether `deed` succeeds in a child that has been closed.
bool SucceedsClosed(const std::function<bool()>& deed) {
  const pid_t child = fork();
  if (child == 0) {
    zovhost::CloseProcess();
    _exit(deed() ? 0 : 1);
  }
  int status = 0;
  EXPECT_EQ(waitpid(child, &status, 0), child);
  EXPECT_TRUE(WIFEXITED(status));
  return WEXITSTATUS(status) == 0;
}

bool OpensSocket(int family) {
  const int opened = socket(family, SOCK_STREAM, 0);
  if (opened >= 0) close(opened);
  return opened >= 0;
}

bool WritesFile(const std::filesystem::path& path) {
  std::FILE* const file = std::fopen(path.c_str(), "wb");
  if (file == nullptr) return false;
  const bool written = std::fputs("text", file) >= 0;
  return std::fclose(file) == 0 && written;
}

bool WritesPipe() {
  std::array<int, 2> ends{};
  return pipe(ends.data()) == 0 && write(ends[1], "text", 4) == 4;
}

TEST(ClosedProcess, writes_into_no_file_and_goes_on_hearing_pipes) {
  const TemporaryFolder folder;
  EXPECT_TRUE(WritesFile(folder.path / "before"));
  EXPECT_FALSE(SucceedsClosed([&] { return WritesFile(folder.path / "after"); }));
  EXPECT_TRUE(SucceedsClosed(&WritesPipe));
}

TEST(ClosedProcess, has_no_network_and_starts_no_program) {
  ASSERT_TRUE(OpensSocket(AF_UNIX));
  for (const int family : {AF_UNIX, AF_INET, AF_INET6})
    EXPECT_FALSE(SucceedsClosed([family] { return OpensSocket(family); })) << family;
  EXPECT_FALSE(SucceedsClosed([] { return execl("/bin/true", "true", nullptr) == 0; }));
}

}  // namespace
