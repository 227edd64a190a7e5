#include "devices/spnav/spnav_socket.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstddef>
#include <cstdlib>
#include <fstream>
#include <string>

namespace zovhost {

namespace {

constexpr const char* SETTINGS_FILE = "/etc/spnavrc";
constexpr const char* USUAL_SOCKET = "/var/run/spnav.sock";

bool IsListening(const std::string& path) {
  sockaddr_un address = {};
  address.sun_family = AF_UNIX;
  if (path.empty() || path.size() >= sizeof address.sun_path) return false;
  path.copy(address.sun_path, path.size());
  const int probe = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
  if (probe < 0) return false;
  const bool listens = connect(probe, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
  close(probe);
  return listens;
}

std::string Trim(const std::string& text) {
  constexpr const char* SPACE = " \t\r";
  const std::size_t first = text.find_first_not_of(SPACE);
  if (first == std::string::npos) return {};
  return text.substr(first, text.find_last_not_of(SPACE) - first + 1);
}

}  // namespace

std::string ReadSocketPath(std::istream& settings) {
  for (std::string line; std::getline(settings, line);) {
    const std::size_t equals = line.find('=');
    if (equals != std::string::npos && Trim(line.substr(0, equals)) == "socket") {
      return Trim(line.substr(equals + 1));
    }
  }
  return {};
}

bool IsDaemonThere() {
  const char* const chosen = std::getenv("SPNAV_SOCKET");
  if (chosen != nullptr && *chosen != '\0') return IsListening(chosen);
  std::ifstream settings(SETTINGS_FILE);
  return IsListening(ReadSocketPath(settings)) || IsListening(USUAL_SOCKET);
}

}  // namespace zovhost
