// SPDX-License-Identifier: Apache-2.0
// Loaded before a program (LD_PRELOAD) whose system calls or memory a test lets fail. It begins with `main`, for nobody
// can catch what fails before, and what the program starts in turn runs undisturbed.
#include <dlfcn.h>
#include <fcntl.h>
#include <link.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "FaultProtocol.h"

extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
}

namespace {

struct Range {
  std::uintptr_t begin = 0, end = 0;
};

/// The code of libraries that end the process, or crash, where there is no memory: nothing can be asked of them.
Range merciless[8];
int mercilessCount = 0;

std::atomic<long> failing = -1;     // which of the allocations to come; -1: not begun
std::atomic<long> allocations = 0;  // so far

int noteMerciless(dl_phdr_info* info, std::size_t, void*) {
  for (const char* name : {"libfontconfig", "libglib-2.0", "libpulse"}) {
    if (std::strstr(info->dlpi_name, name) == nullptr || mercilessCount == 8) continue;
    for (int i = 0; i < info->dlpi_phnum; ++i) {
      const auto& part = info->dlpi_phdr[i];
      if (part.p_type != PT_LOAD || (part.p_flags & PF_X) == 0) continue;
      merciless[mercilessCount++] = {info->dlpi_addr + part.p_vaddr, info->dlpi_addr + part.p_vaddr + part.p_memsz};
      break;
    }
  }
  return 0;
}

/// Whether this allocation, asked for by the code at `caller`, is the one to fail.
bool fails(const void* caller) {
  if (failing < 0) return false;
  const auto at = reinterpret_cast<std::uintptr_t>(caller);
  const auto isThere = [at](const Range& range) { return at >= range.begin && at < range.end; };
  if (std::any_of(merciless, merciless + mercilessCount, isThere)) return false;
  if (++allocations != failing) return false;
  errno = ENOMEM;
  return true;
}

/// Hands every call of these numbers to the listener, which goes to the test.
void listenTo(const char* numbers, int test) {
  constexpr int kMost = 16;
  sock_filter rules[2 * kMost + 2] = {BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr))};
  unsigned short count = 1;
  for (const char* next = numbers; *next != '\0' && count < 2 * kMost;) {
    char* end = nullptr;
    const unsigned long number = std::strtoul(next, &end, 10);
    rules[count++] = BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, static_cast<unsigned>(number), 0, 1);
    rules[count++] = BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_USER_NOTIF);
    next = *end == ',' ? end + 1 : end;
  }
  rules[count++] = BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW);
  const sock_fprog program{count, rules};
  prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
  const int listener =
      static_cast<int>(syscall(SYS_seccomp, SECCOMP_SET_MODE_FILTER, SECCOMP_FILTER_FLAG_NEW_LISTENER, &program));

  alignas(cmsghdr) char control[CMSG_SPACE(sizeof(int))] = {};
  char byte = 0;
  iovec content{&byte, 1};
  msghdr message{};
  message.msg_iov = &content;
  message.msg_iovlen = 1;
  message.msg_control = control;
  message.msg_controllen = sizeof control;
  cmsghdr* const header = CMSG_FIRSTHDR(&message);
  header->cmsg_level = SOL_SOCKET;
  header->cmsg_type = SCM_RIGHTS;
  header->cmsg_len = CMSG_LEN(sizeof(int));
  std::memcpy(CMSG_DATA(header), &listener, sizeof listener);
  if (sendmsg(test, &message, MSG_NOSIGNAL) != 1) _exit(kNotInjected);
  close(listener);
}

void begin() {
  const char* const test = std::getenv(kFaultSocket);
  const char* const calls = std::getenv(kFaultCalls);
  const char* const allocation = std::getenv(kFaultAllocation);
  unsetenv("LD_PRELOAD");
  if (test == nullptr) return;
  const int descriptor = std::atoi(test);
  if (calls != nullptr) listenTo(calls, descriptor);
  fcntl(descriptor, F_SETFD, FD_CLOEXEC);
  if (allocation == nullptr) return;
  dl_iterate_phdr(noteMerciless, nullptr);
  failing = std::atol(allocation);
}

/// The test is told how many allocations there were.
__attribute__((destructor)) void end() {
  const char* const test = std::getenv(kFaultSocket);
  if (failing < 0 || test == nullptr) return;
  failing = -1;
  const long count = allocations;
  if (send(std::atoi(test), &count, sizeof count, MSG_NOSIGNAL) < 0) return;
}

using Main = int (*)(int, char**, char**);
Main realMain = nullptr;

int mainWithFaults(int argc, char** argv, char** environment) {
  begin();
  return realMain(argc, argv, environment);
}

}  // namespace

extern "C" {

/// Where the C library calls `main`.
__attribute__((visibility("default"))) int __libc_start_main(Main main, int argc, char** argv, void (*initialize)(),
                                                             void (*finish)(), void (*unload)(), void* stackEnd) {
  realMain = main;
  const auto start = reinterpret_cast<decltype(&__libc_start_main)>(dlsym(RTLD_NEXT, "__libc_start_main"));
  return start(mainWithFaults, argc, argv, initialize, finish, unload, stackEnd);
}

__attribute__((visibility("default"))) void* malloc(std::size_t size) {
  return fails(__builtin_return_address(0)) ? nullptr : __libc_malloc(size);
}
__attribute__((visibility("default"))) void* calloc(std::size_t count, std::size_t size) {
  return fails(__builtin_return_address(0)) ? nullptr : __libc_calloc(count, size);
}
__attribute__((visibility("default"))) void* realloc(void* block, std::size_t size) {
  return fails(__builtin_return_address(0)) ? nullptr : __libc_realloc(block, size);
}
/// Its memory is its caller's, not the C library's.
__attribute__((visibility("default"))) char* strdup(const char* text) {
  const std::size_t size = std::strlen(text) + 1;
  void* const copy = fails(__builtin_return_address(0)) ? nullptr : __libc_malloc(size);
  return copy == nullptr ? nullptr : static_cast<char*>(std::memcpy(copy, text, size));
}
}
