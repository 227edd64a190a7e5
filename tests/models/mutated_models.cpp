// Damages files of a folder of models and brings each onto a screen, as the viewer does: the contained
// import, the scene, the upload, a frame. What is looked at is that this very program comes through, with
// each file in the time and the memory that docs/limits.md grants to it.
//   mutated_models FOLDER COUNT [SEED [FIRST]]
#include <sys/resource.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "host/graphics_context.h"
#include "zovhost/gl_scene_view.h"
#include "zovhost/offscreen_target.h"
#include "zovhost/scene.h"
#include "zovhost/start_camera.h"

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

constexpr std::uintmax_t LARGEST = std::uintmax_t{2} << 20;
constexpr int SIDE = 128;  // of the picture, pixels
constexpr double SLOW = 2.0;
constexpr double LONGEST = 200.0;  // the child's minute and ten times the processor time of the largest file
constexpr long MOST_HERE = 4096;   // MiB: a scene of half of what a child has, its index and its buffers
constexpr long MOST_IN_CHILD = 4096 + 64 * (LARGEST >> 20);  // beyond what it began with

std::string ReadBytes(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

void WriteBytes(const fs::path& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary) << bytes;
}

// The same numbers with every standard library.
class Damage {
 public:
  explicit Damage(std::uint64_t seed) : numbers(seed) {}

  std::size_t Draw(std::size_t count) { return count == 0 ? 0 : static_cast<std::size_t>(numbers() % count); }

  std::string Spoil(std::string bytes, const std::string& other) {
    using Way = void (Damage::*)(std::string&, const std::string&);
    static constexpr Way WAYS[] = {&Damage::Flip, &Damage::Flip,   &Damage::Replace,
                                   &Damage::Drop, &Damage::Repeat, &Damage::CutOff,
                                   &Damage::Mix,  &Damage::Number, &Damage::Digits};
    const std::size_t times = std::size_t{1} << Draw(5);
    for (std::size_t i = 0; i < times && !bytes.empty(); ++i)
      (this->*WAYS[Draw(std::size(WAYS))])(bytes, other);
    return bytes;
  }

 private:
  void Flip(std::string& bytes, const std::string&) {
    bytes[Draw(bytes.size())] ^= static_cast<char>(1u << Draw(8));
  }
  void Replace(std::string& bytes, const std::string&) {
    bytes[Draw(bytes.size())] = static_cast<char>(Draw(256));
  }
  void Drop(std::string& bytes, const std::string&) { bytes.erase(Draw(bytes.size()), 1 + Draw(64)); }
  void Repeat(std::string& bytes, const std::string&) {
    const std::string piece = bytes.substr(Draw(bytes.size()), 1 + Draw(256));
    bytes.insert(Draw(bytes.size()), piece);
  }
  void CutOff(std::string& bytes, const std::string&) {
    if (Draw(4) == 0) bytes.resize(Draw(bytes.size()) + 1);
  }
  void Mix(std::string& bytes, const std::string& other) {
    if (!other.empty()) bytes.insert(Draw(bytes.size()), other.substr(Draw(other.size()), 1 + Draw(512)));
  }
  // A number that a count or an offset might be.
  void Number(std::string& bytes, const std::string&) {
    static constexpr std::uint32_t NUMBERS[] = {0,      1,          0x7f,       0xff,      0x7fff,
                                                0xffff, 0x7fffffff, 0x80000000, 0xffffffff};
    const std::uint32_t number = NUMBERS[Draw(std::size(NUMBERS))];
    const std::size_t place = Draw(bytes.size());
    for (std::size_t i = 0; i < 4 && place + i < bytes.size(); ++i)
      bytes[place + i] = static_cast<char>(number >> (8 * i) & 255u);
  }
  // The same in a text.
  void Digits(std::string& bytes, const std::string&) {
    static constexpr const char* NUMBERS[] = {"-1",   "0",   "999999999", "4294967296",
                                              "1e38", "nan", "-inf",      "0.0000001"};
    const std::size_t digit = bytes.find_first_of("0123456789", Draw(bytes.size()));
    if (digit == std::string::npos) return;
    const std::size_t end = std::min(bytes.find_first_not_of("0123456789.", digit), bytes.size());
    bytes.replace(digit, end - digit, NUMBERS[Draw(std::size(NUMBERS))]);
  }

  std::mt19937_64 numbers;
};

class Screen {
 public:
  Screen() : ready(context.IsCurrent() && target.Create(SIDE, SIDE, 0)) {}
  bool IsReady() const { return ready; }

  bool Show(const zovhost::Scene& scene) {
    const bool shown = target.Bind() && view.SetScene(&scene) &&
                       view.Draw(zovhost::MakeStartCamera(scene, SIDE, SIDE), SIDE, SIDE);
    glFinish();
    view.SetScene(nullptr);
    return shown;
  }

 private:
  zovtest::OffscreenContext context;
  zovhost::OffscreenTarget target;
  zovhost::GLSceneView view;
  const bool ready;
};

// What is said of a file, without what an importer has to say of it.
std::string GetKind(const std::string& error) {
  const std::string kind = error.substr(error.find(": ") + 2);
  return kind.substr(0, kind.find(':'));
}

bool IsModel(const fs::path& path) {
  std::string error;
  return zovhost::LoadScene(path, {}, error) != nullptr ||
         error.find("its format is not") == std::string::npos;
}

// A new one, so that two runs do not meet; nothing where there can be none.
fs::path MakeFolder() {
  std::string name = (fs::temp_directory_path() / "mutated_models.XXXXXX").string();
  return mkdtemp(name.data()) != nullptr ? fs::path(name) : fs::path();
}

class Run {
 public:
  Run(const fs::path& source, std::uint64_t theSeed) : seed(theSeed) {
    if (folder.empty()) return;
    fs::copy(source, folder, fs::copy_options::recursive);
    for (const auto& entry : fs::recursive_directory_iterator(folder))
      if (entry.is_regular_file() && entry.file_size() <= LARGEST && IsModel(entry.path()))
        files.push_back(entry.path());
    std::sort(files.begin(), files.end());
  }
  ~Run() {
    std::error_code ignored;
    if (!folder.empty()) fs::remove_all(folder, ignored);
  }
  Run(const Run&) = delete;
  Run& operator=(const Run&) = delete;

  bool IsReady() const { return !files.empty() && screen.IsReady(); }

  // The file of number `i`, spoilt alike each time. What it was damaged to stays until it has gone well.
  void Try(std::uint64_t i) {
    Damage damage(seed * 1000003u + i);
    const fs::path& path = files[damage.Draw(files.size())];
    const std::string whole = ReadBytes(path);
    WriteBytes(path, damage.Spoil(whole, ReadBytes(files[damage.Draw(files.size())])));
    const Clock::time_point begin = Clock::now();
    std::string error;
    const auto scene = zovhost::LoadScene(path, {}, error);
    if (scene == nullptr)
      ++kinds[GetKind(error)];
    else
      ++kinds[screen.Show(*scene) ? "shown" : "loaded, and refused by the screen"];
    Note(i, path, std::chrono::duration<double>(Clock::now() - begin).count());
    WriteBytes(path, whole);
  }

  // Whether all of it has kept to its bounds.
  bool Tell(std::uint64_t count) const {
    for (const auto& [kind, number] : kinds) std::printf("%6d  %s\n", number, kind.c_str());
    rusage own{}, children{};
    getrusage(RUSAGE_SELF, &own);
    getrusage(RUSAGE_CHILDREN, &children);
    const long here = own.ru_maxrss / 1024;
    const long inChild = children.ru_maxrss / 1024;
    std::printf("%llu files of %zu, slowest %.1f s; most memory here %ld MiB, in a child %ld MiB\n",
                static_cast<unsigned long long>(count), files.size(), slowest, here, inChild);
    const bool kept = slowest <= LONGEST && here <= MOST_HERE && inChild <= here + MOST_IN_CHILD;
    if (!kept) std::puts("beyond the bounds of time or memory");
    return kept;
  }

 private:
  void Note(std::uint64_t i, const fs::path& path, double seconds) {
    slowest = std::max(slowest, seconds);
    if (seconds > SLOW)
      std::printf("number %llu, %s: %.1f s\n", static_cast<unsigned long long>(i), path.filename().c_str(),
                  seconds);
    std::fflush(stdout);
  }

  const std::uint64_t seed;
  const fs::path folder = MakeFolder();
  std::vector<fs::path> files;
  Screen screen;
  std::map<std::string, int> kinds;
  double slowest = 0.0;
};

}  // namespace

int main(int count, char** values) {
  if (count < 3) {
    std::fputs("mutated_models FOLDER COUNT [SEED [FIRST]]\n", stderr);
    return 1;
  }
  const auto number = [&](int index, std::uint64_t other) {
    return count > index ? std::strtoull(values[index], nullptr, 10) : other;
  };
  Run run(values[1], number(3, 1));
  if (!run.IsReady()) return 1;
  const std::uint64_t files = number(2, 0);
  const std::uint64_t first = number(4, 0);
  for (std::uint64_t i = first; i < first + files; ++i) run.Try(i);
  return run.Tell(files) ? 0 : 1;
}
