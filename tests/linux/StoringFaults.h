// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_TESTS_LINUX_STORINGFAULTS_H
#define ZRCORE_TESTS_LINUX_STORINGFAULTS_H

#include <gtest/gtest.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/ptrace.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <functional>

/// Runs `work` in a child process and kills it as it enters its `call`-th system call, which is not carried out.
/// @return whether it was killed; false when it has no so many calls and came to its end.
inline bool isKilledAtCall(int call, const std::function<void()>& work) {
  const pid_t child = fork();
  if (child == 0) {
    if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0) _exit(1);
    raise(SIGSTOP);
    work();
    _exit(0);
  }
  int status = 0;
  waitpid(child, &status, 0);
  EXPECT_TRUE(WIFSTOPPED(status)) << "this system does not let a process trace its child";
  // Each call stops the child twice, as it enters and as it leaves.
  for (int stop = 1; !WIFEXITED(status) && !WIFSIGNALED(status); ++stop) {
    ptrace(PTRACE_SYSCALL, child, nullptr, nullptr);
    waitpid(child, &status, 0);
    if (WIFSTOPPED(status) && stop == 2 * call - 1) {
      kill(child, SIGKILL);
      waitpid(child, &status, 0);
    }
  }
  return WIFSIGNALED(status);
}

/// Runs `work` in a child process. @return what it returned.
inline bool isTrueInChild(const std::function<bool()>& work) {
  const pid_t child = fork();
  if (child == 0) _exit(work() ? 1 : 0);
  int status = 0;
  waitpid(child, &status, 0);
  EXPECT_TRUE(WIFEXITED(status)) << status;
  return WEXITSTATUS(status) == 1;
}

/// From now on the system call fails in this process with `error`.
inline bool makeCallFail(long call, int error) {
  sock_filter rules[] = {
      BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
      BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, static_cast<unsigned>(call), 0, 1),
      BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | static_cast<unsigned>(error)),
      BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
  };
  const sock_fprog program{sizeof rules / sizeof rules[0], rules};
  return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 && prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

/// From now on no file of this process may grow beyond so many bytes, as on a disk that is nearly full.
inline bool limitFiles(rlim_t bytes) {
  const rlimit limit{bytes, bytes};
  return signal(SIGXFSZ, SIG_IGN) != SIG_ERR && setrlimit(RLIMIT_FSIZE, &limit) == 0;
}

#endif
