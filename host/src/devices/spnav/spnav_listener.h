#pragma once

#include <array>
#include <atomic>
#include <bitset>
#include <chrono>
#include <functional>
#include <mutex>

#include "devices/spnav/spnav_connection.h"
#include "zovhost/six_axis_settings.h"

namespace zovhost {

/// Two ends of a pipe: what is written into one ends a wait on the other.
class Bell {
 public:
  Bell();
  ~Bell();
  Bell(const Bell&) = delete;
  Bell& operator=(const Bell&) = delete;
  void Ring() const;
  /// Until it rings, something comes on `descriptor` (-1: nothing will), or the time is over.
  void Wait(int descriptor, std::chrono::milliseconds longest) const;

 private:
  std::array<int, 2> ends{-1, -1};
};

/// What a thread of its own does: waits for the daemon, and keeps the last of what it has sent.
class SpnavListener {
 public:
  using Buttons = std::bitset<SixAxisSettings::BUTTON_COUNT>;
  struct State {
    SixAxes axes{};
    Buttons held;
    Buttons pressed;  // since the last Take
    bool present = false;
  };

  explicit SpnavListener(std::chrono::milliseconds retry) : retryPeriod(retry) {}

  /// The thread, until Stop.
  void Run();
  void Stop();
  /// From any thread.
  State Take();
  void SetWake(std::function<void()> wake);

 private:
  void Listen();
  void Handle(const SpnavNews& news);
  void HandleButton(const SixAxisButton& button);
  void Restart(bool present);
  template <class Change>
  void Publish(const Change& change);

  const std::chrono::milliseconds retryPeriod;
  Bell bell;
  std::atomic<bool> stopping = false;
  SpnavConnection connection;

  std::mutex mutex;  // of what follows
  State state;
  bool woken = false;
  // Another one: the host's thread may take the state while it holds what a wake waits for.
  std::mutex wakeMutex;
  std::function<void()> onCome;
};

}  // namespace zovhost
