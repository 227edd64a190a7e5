#include "devices/spnav/spnav_connection.h"

#include <fcntl.h>
#include <spnav.h>
#include <sys/select.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <cstddef>

#include "devices/spnav/spnav_socket.h"

namespace zovhost {

namespace {

constexpr std::size_t MESSAGE_SIZE = 32;

std::atomic<bool> isTaken = false;

// The client library waits with `select`, which ends the process for a descriptor beyond what that can hold.
bool HasLowDescriptor() {
  const int lowest = open("/dev/null", O_RDONLY | O_CLOEXEC);
  if (lowest < 0) return false;
  close(lowest);
  return lowest < FD_SETSIZE;
}

SpnavNews ReadMotion(const spnav_event_motion& motion) {
  const auto number = [](int value) { return static_cast<double>(value); };
  return SixAxes{number(motion.x),  number(motion.y),  number(motion.z),
                 number(motion.rx), number(motion.ry), number(motion.rz)};
}

}  // namespace

bool SpnavConnection::Open() {
  if (!IsDaemonThere() || !HasLowDescriptor() || isTaken.exchange(true)) return false;
  if (spnav_open() == 0) descriptor = spnav_fd();
  if (descriptor < 0) {
    isTaken = false;
    return false;
  }
  fcntl(descriptor, F_SETFD, FD_CLOEXEC);
  return true;
}

void SpnavConnection::Close() {
  if (descriptor < 0) return;
  spnav_close();
  descriptor = -1;
  isTaken = false;
}

SpnavConnection::Arrival SpnavConnection::Look() const {
  std::array<char, MESSAGE_SIZE> message;
  const ssize_t size = recv(descriptor, message.data(), message.size(), MSG_PEEK | MSG_DONTWAIT);
  if (size == static_cast<ssize_t>(MESSAGE_SIZE)) return Arrival::Whole;
  if (size > 0) return Arrival::Part;
  const bool isStanding = size < 0 && (errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR);
  return isStanding ? Arrival::Nothing : Arrival::Gone;
}

std::optional<SpnavNews> SpnavConnection::Take() {
  spnav_event event = {};
  switch (spnav_poll_event(&event)) {
    case SPNAV_EVENT_MOTION:
      return ReadMotion(event.motion);
    case SPNAV_EVENT_BUTTON:
      return SixAxisButton{event.button.bnum, event.button.press != 0};
    case SPNAV_EVENT_DEV:
      return SpnavDevice{event.dev.op == SPNAV_DEV_ADD};
    default:
      return std::nullopt;
  }
}

}  // namespace zovhost
