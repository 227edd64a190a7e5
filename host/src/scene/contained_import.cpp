#include "scene/contained_import.h"

#if !defined(_WIN32)
#  include <unistd.h>
#endif

#include <algorithm>
#include <utility>

#include "scene/scene_importer.h"
#include "scene/work_report.h"

namespace zovhost {

using namespace std::chrono_literals;

namespace {

double GetMegabytes(const std::filesystem::path& path) {
  std::error_code failure;
  const auto bytes = static_cast<double>(std::filesystem::file_size(path, failure));
  return failure ? 0.0 : std::min(bytes / (1024.0 * 1024.0), 1e6);
}

// glTF keeps its triangles in files beside it.
double GetMegabytesOfBuffers(const std::filesystem::path& path) {
  if (path.extension() != ".gltf") return 0.0;
  double sum = 0.0;
  std::error_code failure;
  std::filesystem::directory_iterator entry(path.parent_path().empty() ? "." : path.parent_path(), failure);
  for (; !failure && entry != std::filesystem::directory_iterator(); entry.increment(failure))
    if (entry->path().extension() == ".bin") sum += GetMegabytes(entry->path());
  return std::min(sum, 1e6);
}

double GetMachineMemory() {
#if defined(_SC_PHYS_PAGES)
  return static_cast<double>(sysconf(_SC_PHYS_PAGES)) * static_cast<double>(sysconf(_SC_PAGESIZE));
#else
  return 0.0;
#endif
}

}  // namespace

// Ten times and more what importers take: the IFC house, 4 MB, needs 0.4 s. They keep up to thirty times the
// size of a text file in memory, and archives unfold further.
ImportLimits GetImportLimits(const std::filesystem::path& path) {
  constexpr double leastMemory = 4096.0 * 1024.0 * 1024.0;
  const double size = GetMegabytes(path) + GetMegabytesOfBuffers(path);
  const std::chrono::seconds work(5 + static_cast<int>(4.0 * size));
  const double most = std::max(leastMemory, 0.75 * GetMachineMemory());
  const double memory = std::min(leastMemory + 64.0 * size * 1024.0 * 1024.0, most);
  return {work, 60s + 10 * work, memory, 0.5 * memory};
}

}  // namespace zovhost

#if defined(_WIN32)

namespace zovhost {

bool ImportContained(const std::filesystem::path& path, const ImportLimits&, const Progress& progress,
                     SceneData& data, std::string& error) {
  return ImportScene(path, progress, data, error);
}

}  // namespace zovhost

#else

#  include <fcntl.h>
#  include <poll.h>
#  include <signal.h>
#  include <sys/resource.h>
#  include <sys/time.h>
#  include <sys/wait.h>
#  include <unistd.h>
#  if defined(__linux__)
#    include <sys/prctl.h>
#  endif

#  include <algorithm>
#  include <array>
#  include <cerrno>
#  include <chrono>
#  include <cstdio>
#  include <cstring>
#  include <exception>
#  include <optional>

#  include "scene/background_work.h"
#  include "scene/closed_process.h"
#  include "scene/scene_stream.h"

namespace zovhost {

namespace {

using Clock = std::chrono::steady_clock;

// Meshes come one by one, ahead of the scene that they belong to, so that never all of them are in both
// processes.
enum class Message : std::uint32_t { Progress = 1, Failure = 2, Mesh = 3, Scene = 4 };

double GetAddressSpace() {
  double pages = 0.0;
  if (std::FILE* file = std::fopen("/proc/self/statm", "r")) {
    if (std::fscanf(file, "%lf", &pages) != 1) pages = 0.0;
    std::fclose(file);
  }
  return pages * static_cast<double>(sysconf(_SC_PAGESIZE));
}

void SetLimit(int resource, rlim_t value) {
  rlimit limit{};
  if (getrlimit(static_cast<decltype(RLIMIT_AS)>(resource), &limit) != 0) return;
  limit.rlim_cur = std::min(value, limit.rlim_max);
  setrlimit(static_cast<decltype(RLIMIT_AS)>(resource), &limit);
}

// Of the processor; finer than a limit of the system, which counts whole seconds.
void LimitWork(std::chrono::milliseconds work) {
  const auto whole = std::chrono::floor<std::chrono::seconds>(work);
  itimerval timer{};
  timer.it_value.tv_sec = static_cast<time_t>(whole.count());
  timer.it_value.tv_usec = static_cast<suseconds_t>(std::chrono::microseconds(work - whole).count());
  setitimer(ITIMER_PROF, &timer, nullptr);
}

// --- the child ---------------------------------------------------------------------------------------------

// Fewer turns from one process to the other. As it was where that is not granted.
void WidenPipe(int pipe) {
#  if defined(F_SETPIPE_SZ)
  constexpr int SIZE = 1 << 20;
  fcntl(pipe, F_SETPIPE_SZ, SIZE);
#  else
  static_cast<void>(pipe);
#  endif
}

bool WriteAll(int file, const void* bytes, std::size_t size) {
  const char* next = static_cast<const char*>(bytes);
  while (size > 0) {
    const ssize_t written = write(file, next, size);
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return false;
    next += written;
    size -= static_cast<std::size_t>(written);
  }
  return true;
}

// Whatever the program has set up for its own end is not for the child: no handlers, no output, no core
// file, and no life beyond its parent's.
void PrepareChild(const ImportLimits& limits) {
  for (const int number : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT, SIGINT, SIGTERM, SIGPIPE, SIGPROF})
    signal(number, SIG_DFL);
  std::set_terminate([] { _exit(1); });
#  if defined(__linux__)
  prctl(PR_SET_PDEATHSIG, SIGKILL);
#  endif
  const int nowhere = open("/dev/null", O_RDWR | O_CLOEXEC);
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
    if (nowhere >= 0) dup2(nowhere, stream);
  SetLimit(RLIMIT_CORE, 0);
  LimitWork(limits.work);
  SetLimit(RLIMIT_AS, static_cast<rlim_t>(GetAddressSpace() + limits.memory));
  CloseProcess();
}

// Gives the limit anew when the import has got further, by steps that bound how often.
class WorkWatch {
 public:
  explicit WorkWatch(std::chrono::milliseconds limit) : work(limit) {}
  void Tell(double fraction) {
    constexpr double step = 0.001;
    if (!(fraction >= reached + step)) return;
    reached = fraction;
    LimitWork(work);
  }

 private:
  const std::chrono::milliseconds work;
  double reached = 0.0;
};

void RunChild(const std::filesystem::path& path, const ImportLimits& limits, int output) {
  PrepareChild(limits);
  SceneWriter writer([output](const void* bytes, std::size_t size) { return WriteAll(output, bytes, size); });
  WorkWatch watch(limits.work);
  const Progress progress = [&writer, &watch](double fraction, const char* what) {
    watch.Tell(fraction);
    writer.Exchange(Message::Progress);
    writer.Exchange(fraction);
    writer.Exchange(std::string(what));
    return writer.IsGood();
  };
  const MeshSink sink = [&writer](SceneMesh&& mesh) {
    const SceneMesh sent = std::move(mesh);
    writer.Exchange(Message::Mesh);
    ExchangeFields(writer, sent);
  };
  SceneData data;
  std::string error;
  if (ImportScene(path, progress, data, error, {sink, limits.images})) {
    writer.Exchange(Message::Scene);
    ExchangeFields(writer, std::as_const(data));
  } else {
    writer.Exchange(Message::Failure);
    writer.Exchange(error);
  }
}

// --- the parent --------------------------------------------------------------------------------------------

// Owns the child and the end of the pipe it is heard through.
class Child {
 public:
  Child(pid_t process, int pipe) : pid(process), input(pipe) {}
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;
  ~Child() {
    close(input);
    if (!ended) Wait(true);
  }

  int GetInput() const { return input; }

  // The signal that ended it, 0 when it ended by itself or nobody knows.
  int Wait(bool kill) {
    if (kill) ::kill(pid, SIGKILL);
    int status = 0;
    pid_t found = 0;
    do {
      found = waitpid(pid, &status, 0);
    } while (found < 0 && errno == EINTR);
    ended = true;
    return found == pid && WIFSIGNALED(status) ? WTERMSIG(status) : 0;
  }

 private:
  const pid_t pid;
  const int input;
  bool ended = false;
};

class Listener {
 public:
  Listener(Child& importing, const Progress& target, const ImportLimits& givenLimits)
      : child(importing), progress(target), limits(givenLimits), deadline(Clock::now() + limits.wait) {}

  // False with no error: broken off.

  bool Receive(SceneData& data, std::string& error) {
    SceneReader reader([this](void* bytes, std::size_t size) { return ReadAll(bytes, size); });
    std::vector<SceneMesh> meshes;
    for (;;) {
      Message message{};
      reader.Exchange(message);
      if (!reader.IsGood()) break;
      if (message == Message::Progress) {
        ReceiveProgress(reader);
      } else if (message == Message::Failure) {
        reader.Exchange(error);
        return false;
      } else if (message == Message::Mesh) {
        ExchangeFields(reader, meshes.emplace_back());
      } else if (message == Message::Scene) {
        ExchangeFields(reader, data);
        data.meshes = std::exchange(meshes, {});
        if (reader.IsGood()) return true;
      } else {
        break;
      }
    }
    error = wanted ? GetFault() : std::string();
    return false;
  }

 private:
  static constexpr std::chrono::milliseconds HEARTBEAT{50};

  void ReceiveProgress(SceneReader& reader) {
    reader.Exchange(fraction);
    reader.Exchange(what);
    if (reader.IsGood()) Beat();
  }

  void Beat() {
    if (wanted) wanted = progress.Tell(fraction, what.c_str());
  }

  bool ReadAll(void* bytes, std::size_t size) {
    char* next = static_cast<char*>(bytes);
    received += static_cast<double>(size);
    tooLarge = received > limits.scene;
    if (tooLarge) return false;
    while (size > 0) {
      if (!WaitForInput()) return false;
      const ssize_t count = read(child.GetInput(), next, size);
      if (count < 0 && errno == EINTR) continue;
      if (count <= 0) return false;
      next += count;
      size -= static_cast<std::size_t>(count);
    }
    return true;
  }

  bool WaitForInput() {
    for (;;) {
      pollfd query{child.GetInput(), POLLIN, 0};
      const int ready = poll(&query, 1, static_cast<int>(HEARTBEAT.count()));
      if (ready < 0 && errno != EINTR) return false;
      Beat();
      if (!wanted) return false;
      if (ready > 0) return true;
      timedOut = Clock::now() > deadline;
      if (timedOut) return false;
    }
  }

  std::string GetFault() {
    const int signal = child.Wait(timedOut || tooLarge);
    if (tooLarge) return "it unfolds to more than the " + GetMegabytes(limits.scene) + " MB that it may take";
    if (timedOut) return "reading it takes longer than " + GetSeconds(limits.wait) + " s and was given up";
    if (signal == SIGPROF)
      return "reading it came no further for " + GetSeconds(limits.work) + " s and was given up";
    return signal == SIGKILL ? "reading it takes more memory than there is"
                             : "it is broken: the importer crashed on it";
  }

  static std::string GetSeconds(std::chrono::milliseconds time) {
    return std::to_string(std::chrono::ceil<std::chrono::seconds>(time).count());
  }
  static std::string GetMegabytes(double bytes) { return std::to_string(static_cast<long>(bytes / 1e6)); }

  Child& child;
  PacedProgress progress;
  const ImportLimits limits;
  const Clock::time_point deadline;

  double fraction = 0.0;
  std::string what = "Reading the file";
  bool wanted = true;
  bool timedOut = false;
  bool tooLarge = false;
  double received = 0.0;
};

}  // namespace

bool ImportContained(const std::filesystem::path& path, const ImportLimits& limits, const Progress& progress,
                     SceneData& data, std::string& error) {
  std::array<int, 2> ends{};
  if (pipe(ends.data()) != 0) {
    error = std::string("no pipe can be made to read it: ") + std::strerror(errno);
    return false;
  }
  std::optional<BackgroundWork::Pause> pause(std::in_place);  // the child never ends its own
  const pid_t pid = fork();
  if (pid == 0) {
    close(ends[0]);
    WidenPipe(ends[1]);
    RunChild(path, limits, ends[1]);
    _exit(0);  // without the parent's exit handlers
  }
  pause.reset();
  close(ends[1]);
  if (pid < 0) {
    error = std::string("no process can be started to read it: ") + std::strerror(errno);
    close(ends[0]);
    return false;
  }
  Child child(pid, ends[0]);
  return Listener(child, progress, limits).Receive(data, error);
}

}  // namespace zovhost

#endif
