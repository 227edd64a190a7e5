#include "scene/closed_process.h"

#if !defined(_WIN32)
#  include <signal.h>
#  include <sys/resource.h>
#endif
#if defined(__linux__) && (defined(__x86_64__) || defined(__aarch64__))
#  define ZOVHOST_FILTERS_CALLS
#  include <linux/audit.h>
#  include <linux/filter.h>
#  include <linux/seccomp.h>
#  include <sys/prctl.h>
#  include <sys/syscall.h>

#  include <cerrno>
#  include <cstddef>
#  include <cstdint>
#  include <vector>
#endif

namespace zovhost {

#if defined(ZOVHOST_FILTERS_CALLS)

namespace {

#  if defined(__x86_64__)
constexpr std::uint32_t OWN_CALLS = AUDIT_ARCH_X86_64;
#  else
constexpr std::uint32_t OWN_CALLS = AUDIT_ARCH_AARCH64;
#  endif
constexpr std::uint32_t FOREIGN_NUMBERS = 0x40000000;  // the same calls once more, by another table

constexpr std::uint32_t REFUSED_CALLS[] = {SYS_socket, SYS_socketpair, SYS_connect, SYS_io_uring_setup,
                                           SYS_execve, SYS_execveat,   SYS_ptrace,  SYS_process_vm_writev};

sock_filter Take(std::size_t offset) {
  return BPF_STMT(BPF_LD | BPF_W | BPF_ABS, static_cast<std::uint32_t>(offset));
}
sock_filter Answer(std::uint32_t answer) { return BPF_STMT(BPF_RET | BPF_K, answer); }
// Over the next instruction where the test does not hold.
sock_filter Unless(std::uint16_t test, std::uint32_t value) {
  return BPF_JUMP(static_cast<std::uint16_t>(BPF_JMP | test | BPF_K), value, 0, 1);
}

std::vector<sock_filter> MakeFilter() {
  const sock_filter refuse = Answer(SECCOMP_RET_ERRNO | EPERM);
  std::vector<sock_filter> filter = {Take(offsetof(seccomp_data, arch)),
                                     BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, OWN_CALLS, 1, 0),
                                     refuse,
                                     Take(offsetof(seccomp_data, nr)),
                                     Unless(BPF_JGE, FOREIGN_NUMBERS),
                                     refuse};
  for (const std::uint32_t call : REFUSED_CALLS) filter.insert(filter.end(), {Unless(BPF_JEQ, call), refuse});
  filter.push_back(Answer(SECCOMP_RET_ALLOW));
  return filter;
}

}  // namespace

#endif

void CloseProcess() {
#if !defined(_WIN32)
  signal(SIGXFSZ, SIG_IGN);  // such a write fails, pipes go on
  const rlimit nothing{0, 0};
  setrlimit(RLIMIT_FSIZE, &nothing);
#endif
#if defined(ZOVHOST_FILTERS_CALLS)
  std::vector<sock_filter> filter = MakeFilter();
  const sock_fprog program{static_cast<unsigned short>(filter.size()), filter.data()};
  if (prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0) prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program);
#endif
}

}  // namespace zovhost
