#include "scene/background_work.h"

#include <mutex>
#include <new>
#include <set>
#include <system_error>
#include <utility>

namespace zovhost {

namespace {

struct Register {
  std::mutex mutex;
  std::set<BackgroundWork*> works;
  int pauses = 0;
};

Register& GetRegister() {
  static Register all;
  return all;
}

}  // namespace

BackgroundWork::BackgroundWork(Work toDo) : work(std::move(toDo)) {
  Register& all = GetRegister();
  const std::lock_guard lock(all.mutex);
  all.works.insert(this);
  if (all.pauses == 0) Begin();
}

BackgroundWork::~BackgroundWork() {
  Register& all = GetRegister();
  const std::lock_guard lock(all.mutex);
  all.works.erase(this);
  End();
}

// Where memory or threads are short it stays undone.
void BackgroundWork::Begin() try {
  if (finished) return;
  stopped = failed = false;
  thread = std::thread([this] {
    try {
      finished = work(stopped);
    } catch (const std::bad_alloc&) {
      failed = true;
    }
  });
} catch (const std::system_error&) {
  failed = true;
} catch (const std::bad_alloc&) {
  failed = true;
}

void BackgroundWork::End() {
  stopped = true;
  if (thread.joinable()) thread.join();
}

BackgroundWork::Pause::Pause() {
  Register& all = GetRegister();
  const std::lock_guard lock(all.mutex);
  if (all.pauses++ > 0) return;
  for (BackgroundWork* const each : all.works) each->End();
}

BackgroundWork::Pause::~Pause() {
  Register& all = GetRegister();
  const std::lock_guard lock(all.mutex);
  if (--all.pauses > 0) return;
  for (BackgroundWork* const each : all.works) each->Begin();
}

}  // namespace zovhost
