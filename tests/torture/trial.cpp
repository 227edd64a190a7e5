#include "torture/trial.h"

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <new>

namespace torture {

namespace {

class Findings {
 public:
  void Note(bool wrong, const std::string& what) {
    if (wrong) text.append(text.empty() ? "" : "; ").append(what);
  }
  std::string text;
};

constexpr double CLOSE = 0.1;  // of a scene that is 4 large, seen from 11

using Film = std::vector<Korvane::CameraParameters>;

// Two times: what of the first there is to carry on, such as where a disc was left, is the same for all then.
Film PlayShort(WholeView& view, FaultyClock& clock) {
  Film film;
  for (int i = 0; i < 2; ++i) {
    clock.Let(FaultyClock::Clock::Sound, 0);
    film = view.PlayShort();
  }
  return film;
}

// Where the widgets stood and what they faded decides the moment at which a move begins, by some
// milliseconds.
bool AreAlike(const Film& one, const Film& other) {
  return std::equal(one.begin(), one.end(), other.begin(), other.end(), [](const auto& a, const auto& b) {
    return (a.eye - b.eye).Length() < CLOSE && (a.centre - b.centre).Length() < CLOSE &&
           (a.up.Normalized() - b.up.Normalized()).Length() < CLOSE;
  });
}

void LookAfter(WholeView& view, FaultyClock& clock, bool created, const std::vector<double>& settings,
               Findings& findings) {
  clock.Let(FaultyClock::Clock::Sound, 0);
  clock.Let(FaultyClock::Alarm::Sound);
  view.renderer.Succeed();
  if (!created) {
    view.Destroy();
    findings.Note(!view.Create(), "cannot be created again");
  }
  view.LetGo();
  const std::string remains = view.DescribeRemains();
  findings.Note(!remains.empty(), "left: " + remains);
  const std::vector<double> now = view.GetSettings();
  for (std::size_t i = 0; i < now.size(); ++i) {
    findings.Note(now[i] != settings[i], "setting " + std::to_string(i) + " is " + std::to_string(now[i]));
  }
  findings.Note(!AreAlike(PlayShort(view, clock), Trial::GetCounts().film), "other cameras");
}

void LookAtTheEnd(const WholeView& view, const FaultyClock& clock, bool losesIcons, Findings& findings) {
  findings.Note(view.renderer.GetLiveIcons() != 0 && !losesIcons, "icons");
  findings.Note(view.renderer.GetHeldTextures() != 0, "textures");
  findings.Note(view.renderer.GetForeignDestroys() != 0, "icons destroyed twice");
  findings.Note(view.renderer.GetOpenMouseovers() != 0, "an open mouse-over");
  findings.Note(clock.GetTimerCount() != 0, "timers");
}

std::string GetSetting(const char* name) {
  const char* const value = std::getenv(name);
  return value != nullptr ? value : "";
}

// Null where there was no memory to make it.
std::unique_ptr<WholeView> MakeView(FaultyClock& clock) {
  try {
    return std::make_unique<WholeView>(clock);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

}  // namespace

// The session with its fault; whether the view could be created, at once or, as a host tries, once more.
bool Trial::Play(const Fault& fault, FaultyClock& clock, std::unique_ptr<WholeView>& view,
                 std::vector<double>& settings) {
  const AllocationFault failing(fault.firstAllocation, fault.failingAllocations);
  view = MakeView(clock);
  if (view == nullptr) return false;
  {
    const HostCode host;
    settings = view->GetSettings();
    fault.begin(clock, view->renderer);
  }
  bool created = view->Create();
  if (!created) {
    view->Destroy();
    created = view->Create();
  }
  if (created) view->PlayAll();
  return created;
}

std::string Trial::Run(const Fault& fault) {
  GetCounts();
  Findings findings;
  const AllocationCounter counter;
  {
    FaultyClock clock;
    std::unique_ptr<WholeView> view;
    bool created = false;
    std::vector<double> settings;
    try {
      created = Play(fault, clock, view, settings);
    } catch (const std::bad_alloc&) {
      findings.Note(true, "an exception has come out");
    }
    if (view != nullptr) {
      LookAfter(*view, clock, created, settings, findings);
      view->Destroy();
      LookAtTheEnd(*view, clock, fault.losesIcons, findings);
    }
  }
  const std::int64_t texts = findings.text.empty() ? 0 : 1;  // the one of the findings themselves
  const std::int64_t live = counter.GetLive();
  findings.Note(live > texts && !fault.timersStay, std::to_string(live) + " allocations");
  return findings.text;
}

const Trial::Counts& Trial::GetCounts() {
  static const Counts COUNTS = [] {
    Counts counts;
    for (int i = 0; i < 2; ++i) {  // the first makes what lasts as long as the program
      FaultyClock clock;
      const AllocationFault counting(~std::uint64_t{0}, 1);
      WholeView view(clock);
      view.Create();
      view.PlayAll();
      counts.allocations = counting.GetCounted();
      for (int operation = 0; operation < OPERATION_COUNT; ++operation) {
        counts.calls[static_cast<std::size_t>(operation)] =
            view.renderer.GetCalls(static_cast<Operation>(operation));
      }
      counts.advances = clock.GetAdvances();
      counts.timersSet = clock.GetTimersSet();
      view.LetGo();
      counts.film = PlayShort(view, clock);
    }
    return counts;
  }();
  return COUNTS;
}

std::vector<long> ChooseNumbers(long last, long some, const std::string& wanted, const std::string& share) {
  std::vector<long> numbers;
  if (const long only = std::atol(wanted.c_str()); only > 0) {
    if (only <= last) numbers.push_back(only);
    return numbers;
  }
  const long stride = wanted == "all" ? 1 : std::max(1L, last / std::max(1L, some));
  const std::size_t slash = share.find('/');
  const long shares = slash != std::string::npos ? std::max(1L, std::atol(share.c_str() + slash + 1)) : 1;
  const long own = std::atol(share.c_str());
  for (long n = 1, i = 0; n <= last; n += stride, ++i) {
    if (i % shares == own) numbers.push_back(n);
  }
  return numbers;
}

std::string ForEachNumber(long last, long some, const std::function<std::string(long)>& run) {
  std::string findings;
  for (const long n : ChooseNumbers(last, some, GetSetting("ZOV_TORTURE"), GetSetting("ZOV_TORTURE_SHARE"))) {
    const std::string found = run(n);
    if (!found.empty()) findings += "number " + std::to_string(n) + ": " + found + "\n";
  }
  return findings;
}

}  // namespace torture
