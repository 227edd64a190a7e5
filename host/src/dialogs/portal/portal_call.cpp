#include "dialogs/portal/portal_call.h"

#include <gio/gio.h>
#include <libportal/filechooser.h>

#include <cstdlib>

namespace zovhost {

namespace {

constexpr const char* PORTAL = "org.freedesktop.portal.Desktop";
constexpr int START_MILLISECONDS = 3000;
constexpr guint32 BY_PATTERN = 0;  // the other kind is a type of content

struct GFreeDeleter {
  void operator()(gpointer memory) const { g_free(memory); }
};
struct VariantDeleter {
  void operator()(GVariant* variant) const { g_variant_unref(variant); }
};
struct ErrorDeleter {
  void operator()(GError* error) const { g_error_free(error); }
};
using VariantPtr = std::unique_ptr<GVariant, VariantDeleter>;

std::string ReadEnvironment(const char* name) {
  const char* const value = std::getenv(name);  // NOLINT(concurrency-mt-unsafe): nothing writes it
  return value != nullptr ? value : std::string();
}

// Whether the bus answers a question about the portal's name, and not with a refusal.
VariantPtr AskBus(GDBusConnection* bus, const char* method, GVariant* parameters, GCancellable* patience) {
  return VariantPtr(g_dbus_connection_call_sync(
      bus, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", method, parameters,
      nullptr, G_DBUS_CALL_FLAGS_NONE, START_MILLISECONDS, patience, nullptr));
}

// a(sa(us)); null for none, by which every file shows.
GVariant* MakeFilters(const std::vector<FileDialog::Filter>& filters) {
  if (filters.empty()) return nullptr;
  GVariantBuilder list;
  g_variant_builder_init(&list, G_VARIANT_TYPE("a(sa(us))"));
  for (const FileDialog::Filter& filter : filters) {
    GVariantBuilder patterns;
    g_variant_builder_init(&patterns, G_VARIANT_TYPE("a(us)"));
    for (const std::string& pattern : filter.patterns) {
      g_variant_builder_add(&patterns, "(us)", BY_PATTERN, pattern.c_str());
    }
    g_variant_builder_add(&list, "(sa(us))", filter.name.c_str(), &patterns);
  }
  return g_variant_builder_end(&list);
}

// The first file of the list "uris" in a reply; empty for none that is on this machine.
std::filesystem::path FindFile(GVariant* reply) {
  const VariantPtr uris(g_variant_lookup_value(reply, "uris", G_VARIANT_TYPE_STRING_ARRAY));
  if (uris == nullptr || g_variant_n_children(uris.get()) == 0) return {};
  const gchar* uri = nullptr;
  g_variant_get_child(uris.get(), 0, "&s", &uri);
  const std::unique_ptr<gchar, GFreeDeleter> path(g_filename_from_uri(uri, nullptr, nullptr));
  return path != nullptr ? std::filesystem::path(path.get()) : std::filesystem::path();
}

const char* OrNull(const std::string& text) { return text.empty() ? nullptr : text.c_str(); }

}  // namespace

// GLib would start a bus of its own for a process that is in no session.
bool PortalCall::HasSession() {
  if (!ReadEnvironment("DBUS_SESSION_BUS_ADDRESS").empty()) return true;
  const std::filesystem::path folder = ReadEnvironment("XDG_RUNTIME_DIR");
  std::error_code ignored;
  return folder.is_absolute() && std::filesystem::exists(folder / "bus", ignored);
}

// A connection whose last user goes drops what it has not sent yet: the dialog of a call that was cancelled
// would stay open.
PortalCall::~PortalCall() {
  if (bus != nullptr) g_dbus_connection_flush_sync(bus.get(), nullptr, nullptr);
}

// Running, or started by this. One that nobody has told how to start may run all the same.
bool PortalCall::FindPortal() {
  if (!HasSession()) return false;
  bus.reset(g_bus_get_sync(G_BUS_TYPE_SESSION, patience, nullptr));
  if (bus == nullptr) return false;
  g_dbus_connection_set_exit_on_close(bus.get(), FALSE);  // a session that ends is no reason to die here
  return AskBus(bus.get(), "GetNameOwner", g_variant_new("(s)", PORTAL), patience) != nullptr ||
         AskBus(bus.get(), "StartServiceByName", g_variant_new("(su)", PORTAL, 0U), patience) != nullptr;
}

bool PortalCall::Begin() {
  if (!FindPortal()) return false;
  portal.reset(xdp_portal_new());
  GVariant* const filters = MakeFilters(asked.filters);
  if (asked.kind == FileDialog::Question::Kind::Open) {
    xdp_portal_open_file(portal.get(), nullptr, asked.title.c_str(), filters, nullptr, nullptr,
                         XDP_OPEN_FILE_FLAG_NONE, cancellable.get(), OnAnswered, this);
  } else {
    xdp_portal_save_file(portal.get(), nullptr, asked.title.c_str(), OrNull(asked.name),
                         OrNull(asked.folder.string()), nullptr, filters, nullptr, nullptr,
                         XDP_SAVE_FILE_FLAG_NONE, cancellable.get(), OnAnswered, this);
  }
  return true;
}

void PortalCall::OnAnswered(GObject* source, GAsyncResult* result, gpointer data) {
  auto* const call = static_cast<PortalCall*>(data);
  const bool opens = call->asked.kind == FileDialog::Question::Kind::Open;
  const auto finish = opens ? xdp_portal_open_file_finish : xdp_portal_save_file_finish;
  GError* failure = nullptr;
  const VariantPtr reply(finish(XDP_PORTAL(source), result, &failure));
  const std::unique_ptr<GError, ErrorDeleter> error(failure);
  call->Take(reply.get(), error.get());
}

// A desktop whose portal has no dialog for files has none.
void PortalCall::Take(GVariant* reply, const GError* error) {
  using Kind = FileDialog::Answer::Kind;
  done = true;
  if (reply != nullptr) answer.file = FindFile(reply);
  const bool cancelled =
      error != nullptr && g_error_matches(error, G_IO_ERROR, G_IO_ERROR_CANCELLED) != FALSE;
  if (!answer.file.empty()) {
    answer.kind = Kind::Chosen;
  } else {
    answer.kind = cancelled || reply != nullptr ? Kind::Cancelled : Kind::Unavailable;
  }
}

}  // namespace zovhost
