#pragma once

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>

/// A six-axis device at the end of a serial line, which is a pseudo terminal, and the system's daemon, which
/// reads it. The daemon keeps its socket in the folder `run` of where it runs, which is a folder of the
/// test's.
class SerialSixAxis {
 public:
  explicit SerialSixAxis(std::filesystem::path theFolder) : folder(std::move(theFolder)) {
    char name[256] = {};
    isOpen = openpty(&device, &line, name, nullptr, nullptr) == 0 && pipe(bell.data()) == 0;
    if (!isOpen) return;
    termios settings = {};
    tcgetattr(line, &settings);
    cfmakeraw(&settings);
    tcsetattr(line, TCSANOW, &settings);
    std::filesystem::create_directories(folder / "run");
    std::ofstream(folder / "settings") << "serial = " << name << "\n";
    thread = std::thread([this] { Answer(); });
  }
  ~SerialSixAxis() {
    StopDaemon();
    [[maybe_unused]] const ssize_t rung = write(bell[1], "x", 1);
    if (thread.joinable()) thread.join();
    for (const int end : {device, line, bell[0], bell[1]}) close(end);
  }
  SerialSixAxis(const SerialSixAxis&) = delete;
  SerialSixAxis& operator=(const SerialSixAxis&) = delete;

  bool IsOpen() const { return isOpen; }
  /// Where the daemon answers, for the environment variable SPNAV_SOCKET.
  std::filesystem::path GetSocket() const { return folder / "run" / "spnav.sock"; }

  bool StartDaemon() {
    daemon = fork();
    if (daemon != 0) return daemon > 0;
    prctl(PR_SET_PDEATHSIG, SIGTERM);  // a test that is ended leaves none behind
    if (chdir(folder.c_str()) == 0) {
      const int nothing = open("/dev/null", O_RDWR);
      for (int stream = 0; stream < 3; ++stream) dup2(nothing, stream);
      execl(ZOV_SPACENAVD, ZOV_SPACENAVD, "-d", "-c", "settings", "-l", "log", static_cast<char*>(nullptr));
    }
    _exit(127);
  }
  void StopDaemon() {
    if (daemon <= 0) return;
    kill(daemon, SIGTERM);
    waitpid(daemon, nullptr, 0);
    daemon = 0;
  }

  /// In the axes of the library. The device itself counts z and the rotation about it towards the user.
  void Move(int x, int y, int z, int rx, int ry, int rz) {
    std::string packet = "d";
    for (const int value : {x, y, -z, rx, ry, -rz}) packet += Spell(value + 0x8000);
    Send(packet + "\r");
  }
  /// The first four buttons, a bit each.
  void Press(unsigned buttons) { Send(std::string("k") + Spell(static_cast<int>(buttons)).back() + "00\r"); }

 private:
  // Four digits of 16, each with its parity.
  static std::string Spell(int value) {
    constexpr std::string_view DIGITS = "0AB3D56GH9:K<MN?";
    std::string digits;
    for (const int shift : {12, 8, 4, 0}) digits += DIGITS[static_cast<unsigned>(value >> shift) & 15U];
    return digits;
  }

  void Send(const std::string& packet) {
    [[maybe_unused]] const ssize_t sent = write(device, packet.data(), packet.size());
  }

  // What the daemon asks: who is there, and to tell of everything.
  void Answer() {
    std::string asked;
    while (true) {
      std::array<pollfd, 2> waited = {{{bell[0], POLLIN, 0}, {device, POLLIN, 0}}};
      poll(waited.data(), waited.size(), -1);
      if (waited[0].revents != 0) return;
      char text[256];
      const ssize_t size = read(device, text, sizeof text);
      if (size <= 0) return;
      asked.append(text, static_cast<std::size_t>(size));
      for (std::size_t end = asked.find('\r'); end != std::string::npos; end = asked.find('\r')) {
        Reply(asked.substr(0, end));
        asked.erase(0, end + 1);
      }
    }
  }
  void Reply(const std::string& question) {
    if (question == "vQ") Send("vSIX AXES\r");
    if (question == "m3") Send("m3\r");
  }

  const std::filesystem::path folder;
  int device = -1;
  int line = -1;
  std::array<int, 2> bell{-1, -1};
  bool isOpen = false;
  pid_t daemon = 0;
  std::thread thread;
};
