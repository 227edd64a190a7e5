#include "zovhost/spnav_source.h"

#include <algorithm>
#include <cmath>
#include <future>
#include <system_error>
#include <thread>
#include <utility>

#include "devices/spnav/spnav_listener.h"

namespace zovhost {

namespace {

using std::chrono::milliseconds;

constexpr double SHORTEST_RETRY = 0.001;  // seconds
constexpr double LONGEST_RETRY = 3600.0;
// A daemon that hangs holds up whoever connects to it, but not the end of the program.
constexpr milliseconds LONGEST_STOP(1000);

milliseconds ReadRetry(double seconds) {
  const double bounded =
      std::isnan(seconds) ? SpnavSource::RETRY_SECONDS : std::clamp(seconds, SHORTEST_RETRY, LONGEST_RETRY);
  return milliseconds(std::lround(bounded * 1000.0));
}

}  // namespace

class SpnavSource::Impl {
 public:
  explicit Impl(double retrySeconds) : listener(std::make_shared<SpnavListener>(ReadRetry(retrySeconds))) {
    std::promise<void> end;
    ended = end.get_future();
    try {
      thread = std::thread([kept = listener, done = std::move(end)]() mutable {
        kept->Run();
        done.set_value();
      });
    } catch (const std::system_error&) {  // no thread can be had: no device ever comes
    }
  }

  ~Impl() {
    if (!thread.joinable()) return;
    listener->SetWake(nullptr);
    listener->Stop();
    if (ended.wait_for(LONGEST_STOP) == std::future_status::ready) {
      thread.join();
    } else {
      thread.detach();
    }
  }
  Impl(const Impl&) = delete;
  Impl& operator=(const Impl&) = delete;

  std::shared_ptr<SpnavListener> listener;  // the thread keeps it, too
  bool present = false;

 private:
  std::future<void> ended;
  std::thread thread;
};

bool SpnavSource::IsAvailable() { return true; }

SpnavSource::SpnavSource(double retrySeconds) : impl(std::make_unique<Impl>(retrySeconds)) {}
SpnavSource::~SpnavSource() = default;

void SpnavSource::Poll() {
  const SpnavListener::State state = impl->listener->Take();
  impl->present = state.present;
  SetAxes(state.axes);
  SetButtons(state.held, state.pressed);
}

bool SpnavSource::HasDevice() const { return impl->present; }
void SpnavSource::SetWake(std::function<void()> wake) { impl->listener->SetWake(std::move(wake)); }

}  // namespace zovhost
