#pragma once

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

/// A daemon of six-axis devices in the test's own process: it greets the client library, and sends what the
/// test says.
class FakeSpnavDaemon {
 public:
  using Message = std::array<std::int32_t, 8>;
  struct Behaviour {
    bool answers = true;  // one that does not is taken for an old one
    bool accepts = true;
  };

  FakeSpnavDaemon(std::filesystem::path socketPath, const Behaviour& how)
      : path(std::move(socketPath)), behaviour(how) {
    address.sun_family = AF_UNIX;
    path.string().copy(address.sun_path, sizeof address.sun_path - 1);
    listener = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    unlink(path.c_str());
    isListening = bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0 &&
                  listen(listener, 0) == 0;
    if (pipe(bell.data()) == 0 && behaviour.accepts) thread = std::thread([this] { Serve(); });
  }
  ~FakeSpnavDaemon() {
    Send("x", bell[1], 1);
    if (thread.joinable()) thread.join();
    for (const int end : bell) close(end);
    close(listener);
    for (const int client : clients) close(client);
    for (const int waiting : queued) close(waiting);
    unlink(path.c_str());
  }
  FakeSpnavDaemon(const FakeSpnavDaemon&) = delete;
  FakeSpnavDaemon& operator=(const FakeSpnavDaemon&) = delete;

  /// Of one that accepts none: from now on whoever connects waits.
  void FillQueue() {
    for (int refused = 0; refused == 0;) {
      queued.push_back(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
      refused = connect(queued.back(), reinterpret_cast<const sockaddr*>(&address), sizeof address);
    }
  }
  bool IsListening() const { return isListening; }
  /// False when there is none within a generous time.
  bool WaitForClient(int count = 1) {
    std::unique_lock lock(mutex);
    return come.wait_for(lock, std::chrono::seconds(20), [&] { return accepted >= count; });
  }
  /// Whoever connects, be it only to see whether somebody is here.
  bool WaitForVisits(int count) {
    std::unique_lock lock(mutex);
    return come.wait_for(lock, std::chrono::seconds(20), [&] { return visits >= count; });
  }
  int GetAccepted() {
    const std::lock_guard lock(mutex);
    return accepted;
  }
  void Move(int x, int y, int z, int rx, int ry, int rz) { Send(Message{0, x, y, z, rx, ry, rz, 16}); }
  void Press(int button, bool pressed) { Send(Message{pressed ? 1 : 2, button}); }
  /// A device has come or gone.
  void ChangeDevice(bool present) { Send(Message{3, present ? 0 : 1}); }
  void Send(const Message& message) { SendBytes(message.data(), sizeof message); }
  void SendBytes(const void* bytes, std::size_t size) {
    const std::lock_guard lock(mutex);
    for (const int client : clients) Send(bytes, client, size);
  }
  void DropClients() {
    const std::lock_guard lock(mutex);
    for (const int client : clients) shutdown(client, SHUT_RDWR);
  }

 private:
  static void Send(const void* bytes, int descriptor, std::size_t size) {
    [[maybe_unused]] const ssize_t sent = write(descriptor, bytes, size);
  }

  void Serve() {
    while (true) {
      std::vector<pollfd> waited = {{bell[0], POLLIN, 0}, {listener, POLLIN, 0}};
      for (const int client : clients) waited.push_back({client, POLLIN, 0});
      poll(waited.data(), waited.size(), -1);
      if (waited[0].revents != 0) return;
      for (std::size_t i = 2; i < waited.size(); ++i) {
        if (waited[i].revents != 0) Forget(waited[i].fd);
      }
      if (waited[1].revents != 0) Accept();
    }
  }
  void Accept() {
    const int client = accept4(listener, nullptr, nullptr, SOCK_CLOEXEC);
    if (client < 0) return;
    CountVisit();
    if (behaviour.answers)
      Greet(client);
    else
      AddClient(client);
  }
  void CountVisit() {
    const std::lock_guard lock(mutex);
    ++visits;
    come.notify_all();
  }
  void AddClient(int client) {
    const std::lock_guard lock(mutex);
    AddLocked(client);
  }
  void AddLocked(int client) {
    clients.push_back(client);
    ++accepted;
    come.notify_all();
  }
  // With the version that it asks for. Whoever has the answer is a client already: what the test sends from
  // then on must reach it.
  void Greet(int client) {
    std::int32_t version = 0;
    if (recv(client, &version, sizeof version, MSG_WAITALL) != sizeof version) {
      close(client);
      return;
    }
    const std::lock_guard lock(mutex);
    Send(&version, client, sizeof version);
    AddLocked(client);
  }
  // Nothing is asked, so this is an end.
  void Forget(int client) {
    const std::lock_guard lock(mutex);
    char unread[256];
    if (recv(client, unread, sizeof unread, 0) > 0) return;
    close(client);
    std::erase(clients, client);
  }

  const std::filesystem::path path;
  const Behaviour behaviour;
  sockaddr_un address = {};
  std::vector<int> queued;
  std::mutex mutex;  // of the clients
  std::condition_variable come;
  std::vector<int> clients;
  int accepted = 0;
  int visits = 0;
  int listener = -1;
  bool isListening = false;
  std::array<int, 2> bell{-1, -1};
  std::thread thread;
};
