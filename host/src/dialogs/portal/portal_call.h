#pragma once

#include <libportal/portal.h>

#include <memory>

#include "zovhost/file_dialog.h"

namespace zovhost {

struct GObjectDeleter {
  void operator()(gpointer object) const { g_object_unref(object); }
};
template <class Object>
using GObjectPtr = std::unique_ptr<Object, GObjectDeleter>;

/// One question to the portal, and its answer. On the thread whose main context is the default one.
class PortalCall {
 public:
  /// Whoever cancels `ofBus`, from any thread, ends what is asked before the dialog is open. Both are
  /// borrowed.
  PortalCall(const FileDialog::Question& question, GCancellable* ofBus) : asked(question), patience(ofBus) {}
  /// Goes once the desktop has been told everything.
  ~PortalCall();
  PortalCall(const PortalCall&) = delete;
  PortalCall& operator=(const PortalCall&) = delete;

  /// Whether the process is in a session of a desktop.
  static bool HasSession();

  /// False when the desktop has no portal.
  bool Begin();
  bool IsDone() const { return done; }
  /// The desktop closes the dialog; it is done when that has been told.
  void Cancel() { g_cancellable_cancel(cancellable.get()); }
  const FileDialog::Answer& GetAnswer() const { return answer; }

 private:
  bool FindPortal();
  static void OnAnswered(GObject* source, GAsyncResult* result, gpointer call);
  void Take(GVariant* reply, const GError* error);

  const FileDialog::Question& asked;
  GCancellable* const patience;  // with the bus
  GObjectPtr<GDBusConnection> bus;
  GObjectPtr<XdpPortal> portal;
  GObjectPtr<GCancellable> cancellable{g_cancellable_new()};
  FileDialog::Answer answer;
  bool done = false;
};

}  // namespace zovhost
