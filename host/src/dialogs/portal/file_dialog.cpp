#include "zovhost/file_dialog.h"

#include <atomic>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

#include "dialogs/portal/portal_call.h"

namespace zovhost {

namespace {

struct ContextDeleter {
  void operator()(GMainContext* context) const { g_main_context_unref(context); }
};
using ContextPtr = std::unique_ptr<GMainContext, ContextDeleter>;

}  // namespace

// The portal answers through GLib's loop, which the window's is not: it has a thread for as long as a dialog
// is open. Nothing else runs there.
class FileDialog::Impl {
 public:
  explicit Impl(std::function<void()> wakeHost) : wake(std::move(wakeHost)) {}
  ~Impl() {
    Close();
    if (worker.joinable()) worker.join();
  }

  bool Ask(const Question& asked);
  bool IsAsking() const { return asking; }
  std::optional<Answer> TakeAnswer();
  void Close();

 private:
  void Run();
  Answer Wait();

  std::function<void()> wake;
  ContextPtr context;
  GObjectPtr<GCancellable> patience;  // with a bus that is asked whether there is a portal
  Question question;
  std::thread worker;
  std::atomic<bool> closing = false;
  bool asking = false;
  std::mutex mutex;
  std::optional<Answer> answer;  // under the mutex
};

bool FileDialog::Impl::Ask(const Question& asked) {
  if (std::exchange(asking, true)) return false;
  question = asked;
  closing = false;
  context.reset(g_main_context_new());
  patience.reset(g_cancellable_new());
  try {
    worker = std::thread([this] { Run(); });
  } catch (const std::system_error&) {
    asking = false;  // no thread can be had
  }
  return asking;
}

void FileDialog::Impl::Run() {
  g_main_context_push_thread_default(context.get());
  const Answer given = Wait();
  g_main_context_pop_thread_default(context.get());
  {
    const std::lock_guard lock(mutex);
    answer = given;
  }
  if (wake) wake();
}

FileDialog::Answer FileDialog::Impl::Wait() {
  PortalCall call(question, patience.get());
  if (!call.Begin()) return {closing ? Answer::Kind::Cancelled : Answer::Kind::Unavailable, {}};
  while (!call.IsDone()) {
    if (closing.exchange(false)) {
      call.Cancel();
    } else {
      g_main_context_iteration(context.get(), TRUE);
    }
  }
  return call.GetAnswer();
}

std::optional<FileDialog::Answer> FileDialog::Impl::TakeAnswer() {
  std::optional<Answer> taken;
  {
    const std::lock_guard lock(mutex);
    taken = std::exchange(answer, std::nullopt);
  }
  if (!taken.has_value()) return taken;
  worker.join();
  asking = false;
  return taken;
}

void FileDialog::Impl::Close() {
  if (!asking) return;
  closing = true;
  g_cancellable_cancel(patience.get());
  g_main_context_wakeup(context.get());
}

bool FileDialog::IsBuiltIn() { return true; }
bool FileDialog::IsAvailable() { return PortalCall::HasSession(); }

FileDialog::FileDialog(std::function<void()> wake) : impl(std::make_unique<Impl>(std::move(wake))) {}
FileDialog::~FileDialog() = default;
bool FileDialog::Ask(const Question& question) { return impl->Ask(question); }
bool FileDialog::IsAsking() const { return impl->IsAsking(); }
std::optional<FileDialog::Answer> FileDialog::TakeAnswer() { return impl->TakeAnswer(); }
void FileDialog::Close() { impl->Close(); }

}  // namespace zovhost
