#include "foundation/windows_platform.h"

#include <map>

#define WIN32_LEAN_AND_MEAN
#if !defined(NOMINMAX)
#  define NOMINMAX
#endif
#include <windows.h>

namespace Korvane {

namespace {

// The system's callback has its own calling convention, so it goes through one function that looks the
// library's up by identifier.
std::map<std::uint64_t, TimerProc>& Procs() {
  static auto* procs = new std::map<std::uint64_t, TimerProc>;
  return *procs;
}

void CALLBACK OnTimer(HWND window, UINT message, UINT_PTR timerID, DWORD time) {
  const auto found = Procs().find(timerID);
  if (found != Procs().end()) found->second(window, message, timerID, time);
}

}  // namespace

std::uint32_t WindowsPlatform::GetTickCount() { return ::GetTickCount(); }

std::uint64_t WindowsPlatform::SetTimer(std::uint32_t milliseconds, TimerProc proc) {
  if (proc == nullptr) return 0;
  const UINT_PTR timerID = ::SetTimer(nullptr, 0, milliseconds, &OnTimer);
  if (timerID != 0) Procs()[timerID] = proc;
  return timerID;
}

bool WindowsPlatform::KillTimer(std::uint64_t timerID) {
  Procs().erase(timerID);
  return ::KillTimer(nullptr, static_cast<UINT_PTR>(timerID)) != 0;
}

}  // namespace Korvane
