#include "support/refused_calls.h"

#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <system_error>
#include <thread>

namespace mirelo::testing {

namespace {

sock_filter Instruction(unsigned code, std::uint32_t operand, std::uint8_t if_not = 0) {
  return {static_cast<std::uint16_t>(code), 0, if_not, operand};
}

// For this thread, from now on.
void Refuse(const std::vector<long>& calls, int reason) {
  std::vector<sock_filter> program{Instruction(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr))};
  for (const long call : calls) {
    program.push_back(Instruction(BPF_JMP | BPF_JEQ | BPF_K, static_cast<std::uint32_t>(call), 1));
    program.push_back(Instruction(
        BPF_RET | BPF_K, SECCOMP_RET_ERRNO | (static_cast<std::uint32_t>(reason) & SECCOMP_RET_DATA)));
  }
  program.push_back(Instruction(BPF_RET | BPF_K, SECCOMP_RET_ALLOW));
  const sock_fprog filter{static_cast<unsigned short>(program.size()), program.data()};
  if (::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0 ||
      ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter) != 0)
    throw std::system_error(errno, std::generic_category(), "seccomp");
}

}  // namespace

void WithRefusedCalls(const std::vector<long>& calls, int reason, const std::function<void()>& work) {
  std::exception_ptr raised;
  std::thread thread([&] {
    try {
      Refuse(calls, reason);
      work();
    } catch (...) {
      raised = std::current_exception();
    }
  });
  thread.join();
  if (raised) std::rethrow_exception(raised);
}

}  // namespace mirelo::testing
