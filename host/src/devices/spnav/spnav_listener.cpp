#include "devices/spnav/spnav_listener.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <csignal>
#include <cstddef>
#include <utility>

namespace zovhost {

namespace {

using std::chrono::milliseconds;

constexpr milliseconds FOR_EVER(-1);
// The rest of a message that has come in part.
constexpr milliseconds PART_PERIOD(10);
constexpr int MOST_PARTS = 100;

// The client library writes to a daemon that may have gone, and the host's handlers are for the host's
// threads.
void RefuseSignals() {
  sigset_t signals;
  sigfillset(&signals);
  pthread_sigmask(SIG_BLOCK, &signals, nullptr);
}

}  // namespace

// ---- the bell ----

Bell::Bell() {
  if (pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0) ends = {-1, -1};
}

Bell::~Bell() {
  for (const int end : ends) {
    if (end >= 0) close(end);
  }
}

// A full pipe rings already.
void Bell::Ring() const {
  const char note = 0;
  [[maybe_unused]] const ssize_t written = write(ends[1], &note, 1);
}

void Bell::Wait(int descriptor, milliseconds longest) const {
  std::array<pollfd, 2> waited = {{{ends[0], POLLIN, 0}, {descriptor, POLLIN, 0}}};
  poll(waited.data(), waited.size(), static_cast<int>(longest.count()));
}

// ---- the thread ----

void SpnavListener::Run() {
  RefuseSignals();
  while (!stopping) {
    if (connection.Open()) {
      Listen();
      connection.Close();
      Restart(false);
    }
    if (!stopping) bell.Wait(-1, retryPeriod);
  }
}

void SpnavListener::Listen() {
  Restart(true);
  int parts = 0;
  while (!stopping) {
    switch (connection.Look()) {
      case SpnavConnection::Arrival::Gone:
        return;
      case SpnavConnection::Arrival::Whole:
        if (const auto news = connection.Take()) Handle(*news);
        parts = 0;
        break;
      case SpnavConnection::Arrival::Part:
        if (++parts > MOST_PARTS) return;
        bell.Wait(-1, PART_PERIOD);
        break;
      case SpnavConnection::Arrival::Nothing:
        bell.Wait(connection.GetDescriptor(), FOR_EVER);
        break;
    }
  }
}

void SpnavListener::Handle(const SpnavNews& news) {
  if (const auto* const axes = std::get_if<SixAxes>(&news)) {
    Publish([&](State& now) {
      now.axes = *axes;
      now.present = true;
    });
  } else if (const auto* const button = std::get_if<SixAxisButton>(&news)) {
    HandleButton(*button);
  } else {
    Restart(std::get<SpnavDevice>(news).present);
  }
}

void SpnavListener::HandleButton(const SixAxisButton& button) {
  if (button.number < 0 || button.number >= SixAxisSettings::BUTTON_COUNT) return;
  const auto number = static_cast<std::size_t>(button.number);
  Publish([&](State& now) {
    now.held[number] = button.pressed;
    if (button.pressed) now.pressed[number] = true;
    now.present = true;
  });
}

// Whatever was held is not.
void SpnavListener::Restart(bool present) {
  Publish([&](State& now) { now = State{{}, {}, now.pressed, present}; });
}

template <class Change>
void SpnavListener::Publish(const Change& change) {
  {
    const std::lock_guard lock(mutex);
    change(state);
    if (std::exchange(woken, true)) return;
  }
  const std::lock_guard lock(wakeMutex);
  if (onCome) onCome();
}

// ---- other threads ----

void SpnavListener::Stop() {
  stopping = true;
  bell.Ring();
}

SpnavListener::State SpnavListener::Take() {
  const std::lock_guard lock(mutex);
  woken = false;
  State taken = state;
  state.pressed.reset();
  return taken;
}

void SpnavListener::SetWake(std::function<void()> wake) {
  const std::lock_guard lock(wakeMutex);
  onCome = std::move(wake);
}

}  // namespace zovhost
