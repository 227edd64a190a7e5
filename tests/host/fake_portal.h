#pragma once

#include <gio/gio.h>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

namespace host_test {

/// A desktop portal with a dialog for files, on a bus of the tests' own, which answers by itself. One for the
/// process: whoever has been on the bus stays there.
class FakePortal {
 public:
  enum class Manner : int { Chooses, Cancels, Waits, Refuses };

  static FakePortal& Get() {
    static auto* const portal = new FakePortal;  // GLib's connection outlives everything
    return *portal;
  }

  /// How it answers from now on, and with what.
  void Set(Manner wanted, const std::string& fileUri = {}) {
    const std::lock_guard lock(mutex);
    manner = wanted;
    uri = fileUri;
    method.clear();
    title.clear();
    filters.clear();
    asked = closed = 0;
  }
  /// False when nobody has asked for a minute.
  bool AwaitQuestion() { return Await(asked); }
  bool AwaitClose() { return Await(closed); }
  /// What has waited is answered, in another manner.
  void Answer(Manner wanted) {
    const std::lock_guard lock(mutex);
    manner = wanted;
    Respond(waiting.sender, waiting.request);
  }

  // Of the last question.
  std::string GetMethod() { return Read(method); }
  std::string GetTitle() { return Read(title); }
  std::string GetFilters() { return Read(filters); }
  std::string GetName() { return Read(name); }

 private:
  FakePortal() {
    bus = g_test_dbus_new(G_TEST_DBUS_NONE);
    g_test_dbus_up(bus);
    worker = std::thread([this] { Run(); });
    worker.detach();
    std::unique_lock lock(mutex);
    changed.wait(lock, [this] { return ready; });
  }

  bool Await(const int& count) {
    std::unique_lock lock(mutex);
    return changed.wait_for(lock, std::chrono::minutes(1), [&count] { return count > 0; });
  }
  std::string Read(const std::string& text) {
    const std::lock_guard lock(mutex);
    return text;
  }

  void Run() {
    GMainContext* const context = g_main_context_new();
    g_main_context_push_thread_default(context);
    constexpr auto FLAGS = static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                                             G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
    connection = g_dbus_connection_new_for_address_sync(g_test_dbus_get_bus_address(bus), FLAGS, nullptr,
                                                        nullptr, nullptr);
    Offer("/org/freedesktop/portal/desktop", CHOOSER);
    GVariant* const named = g_dbus_connection_call_sync(
        connection, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "RequestName",
        g_variant_new("(su)", "org.freedesktop.portal.Desktop", 4U), nullptr, G_DBUS_CALL_FLAGS_NONE, -1,
        nullptr, nullptr);
    g_variant_unref(named);
    {
      const std::lock_guard lock(mutex);
      ready = true;
    }
    changed.notify_all();
    while (true) g_main_context_iteration(context, TRUE);
  }

  void Offer(const std::string& path, const char* description) {
    GDBusNodeInfo* const info = g_dbus_node_info_new_for_xml(description, nullptr);
    static const GDBusInterfaceVTable TABLE = {OnCall, nullptr, nullptr, {}};
    g_dbus_connection_register_object(connection, path.c_str(), info->interfaces[0], &TABLE, this, nullptr,
                                      nullptr);
    g_dbus_node_info_unref(info);
  }

  static void OnCall(GDBusConnection* /*connection*/, const gchar* sender, const gchar* path,
                     const gchar* /*interface*/, const gchar* called, GVariant* parameters,
                     GDBusMethodInvocation* invocation, gpointer portal) {
    auto* const self = static_cast<FakePortal*>(portal);
    const std::lock_guard lock(self->mutex);
    if (std::string(called) == "Close") {
      g_dbus_method_invocation_return_value(invocation, nullptr);
      ++self->closed;
    } else {
      self->Answer(sender, called, parameters, invocation);
    }
    (void)path;
    self->changed.notify_all();
  }

  void Answer(const std::string& sender, const gchar* called, GVariant* parameters,
              GDBusMethodInvocation* invocation) {
    method = called;
    ++asked;
    const gchar* heading = nullptr;
    GVariant* options = nullptr;
    g_variant_get(parameters, "(&s&s@a{sv})", &heading, &heading, &options);
    title = heading;
    filters = Describe(options, "filters");
    name = Describe(options, "current_name");
    const gchar* token = "";
    g_variant_lookup(options, "handle_token", "&s", &token);
    std::string caller = sender.substr(1);
    std::replace(caller.begin(), caller.end(), '.', '_');
    const std::string request = "/org/freedesktop/portal/desktop/request/" + caller + "/" + token;
    g_variant_unref(options);
    if (manner == Manner::Refuses) {
      g_dbus_method_invocation_return_dbus_error(invocation, "org.freedesktop.DBus.Error.UnknownMethod",
                                                 "there is no such dialog");
      return;
    }
    Offer(request, REQUEST);
    g_dbus_method_invocation_return_value(invocation, g_variant_new("(o)", request.c_str()));
    waiting = {sender, request};
    if (manner != Manner::Waits) Respond(sender, request);
  }

  // Told to who has asked, and nobody else.
  void Respond(const std::string& sender, const std::string& request) {
    GVariantBuilder results;
    g_variant_builder_init(&results, G_VARIANT_TYPE_VARDICT);
    const gchar* const uris[] = {uri.c_str(), nullptr};
    const bool chosen = manner == Manner::Chooses;
    if (chosen) g_variant_builder_add(&results, "{sv}", "uris", g_variant_new_strv(uris, -1));
    g_dbus_connection_emit_signal(connection, sender.c_str(), request.c_str(),
                                  "org.freedesktop.portal.Request", "Response",
                                  g_variant_new("(ua{sv})", chosen ? 0U : 1U, &results), nullptr);
  }

  static std::string Describe(GVariant* options, const char* key) {
    GVariant* const value = g_variant_lookup_value(options, key, nullptr);
    if (value == nullptr) return {};
    gchar* const text = g_variant_print(value, FALSE);
    std::string described = text;
    g_free(text);
    g_variant_unref(value);
    return described;
  }

  static constexpr const char* CHOOSER =
      "<node><interface name='org.freedesktop.portal.FileChooser'>"
      "<method name='OpenFile'><arg type='s' direction='in'/><arg type='s' direction='in'/>"
      "<arg type='a{sv}' direction='in'/><arg type='o' direction='out'/></method>"
      "<method name='SaveFile'><arg type='s' direction='in'/><arg type='s' direction='in'/>"
      "<arg type='a{sv}' direction='in'/><arg type='o' direction='out'/></method>"
      "</interface></node>";
  static constexpr const char* REQUEST =
      "<node><interface name='org.freedesktop.portal.Request'><method name='Close'/></interface></node>";

  GTestDBus* bus = nullptr;
  GDBusConnection* connection = nullptr;
  std::thread worker;
  std::mutex mutex;  // of what follows
  std::condition_variable changed;
  bool ready = false;
  Manner manner = Manner::Cancels;
  std::string uri;
  std::string method;
  std::string title;
  std::string filters;
  std::string name;
  struct {
    std::string sender;
    std::string request;
  } waiting;
  int asked = 0;
  int closed = 0;
};

}  // namespace host_test
