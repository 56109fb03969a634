// SPDX-License-Identifier: Apache-2.0
#include "FaultyRun.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <linux/seccomp.h>
#include <poll.h>
#include <signal.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>

#include "FaultProtocol.h"

namespace {

constexpr int kPatienceMilliseconds = 60'000;

/// Variables of the environment for as long as the object lives.
class Variables {
 public:
  void set(const char* name, const std::string& value) {
    ::setenv(name, value.c_str(), 1);
    names_.push_back(name);
  }
  ~Variables() {
    for (const char* name : names_) ::unsetenv(name);
  }

 private:
  std::vector<const char*> names_;
};

/// The descriptor that comes over a socket; -1 when there is none.
int receivedDescriptor(int socket) {
  alignas(cmsghdr) char control[CMSG_SPACE(sizeof(int))] = {};
  char byte = 0;
  iovec content{&byte, 1};
  msghdr message{};
  message.msg_iov = &content;
  message.msg_iovlen = 1;
  message.msg_control = control;
  message.msg_controllen = sizeof control;
  if (::recvmsg(socket, &message, MSG_CMSG_CLOEXEC) != 1) return -1;
  const cmsghdr* const header = CMSG_FIRSTHDR(&message);
  int descriptor = -1;
  if (header != nullptr) std::memcpy(&descriptor, CMSG_DATA(header), sizeof descriptor);
  return descriptor;
}

/// Answers every call until the program ends. @return how many the process itself has made
long answerCalls(int listener, pid_t process, const Refusal& refusal, long which) {
  long calls = 0;
  for (pollfd waited{listener, POLLIN, 0}; ::poll(&waited, 1, kPatienceMilliseconds) > 0;) {
    if ((waited.revents & POLLIN) == 0) return calls;
    seccomp_notif call{};
    if (::ioctl(listener, SECCOMP_IOCTL_NOTIF_RECV, &call) != 0) continue;  // ended meanwhile
    const bool isOwn = static_cast<pid_t>(call.pid) == process;
    seccomp_notif_resp answer{.id = call.id, .val = 0, .error = 0, .flags = SECCOMP_USER_NOTIF_FLAG_CONTINUE};
    if (isOwn && ++calls == which) {
      answer.error = -refusal.error;
      answer.flags = 0;
    }
    ::ioctl(listener, SECCOMP_IOCTL_NOTIF_SEND, &answer);
  }
  ADD_FAILURE() << "the tool hangs";
  ::kill(process, SIGKILL);
  return calls;
}

}  // namespace

ToolRun runRefusing(const Refusal& refusal, long which, const std::vector<std::string>& arguments,
                    const ToolFolder& folder, long& requests) {
  int ends[2];
  EXPECT_EQ(::socketpair(AF_UNIX, SOCK_STREAM, 0, ends), 0);
  ::fcntl(ends[0], F_SETFD, FD_CLOEXEC);
  Variables variables;
  variables.set("LD_PRELOAD", ZRCORE_INJECTED);
  variables.set(kFaultSocket, std::to_string(ends[1]));
  if (refusal.calls.empty()) variables.set(kFaultAllocation, std::to_string(which));
  std::string numbers;
  for (const int call : refusal.calls) numbers += (numbers.empty() ? "" : ",") + std::to_string(call);
  if (!refusal.calls.empty()) variables.set(kFaultCalls, numbers);
  const ToolStreams streams{"/dev/null", folder.path(".out"), folder.path(".err")};
  const pid_t process = startTool(arguments, streams);
  ::close(ends[1]);
  requests = 0;
  if (refusal.calls.empty()) {
    if (::recv(ends[0], &requests, sizeof requests, 0) != sizeof requests) requests = 0;
  } else if (const int listener = receivedDescriptor(ends[0]); listener >= 0) {
    requests = answerCalls(listener, process, refusal, which);
    ::close(listener);
  }
  ToolRun run = waitForTool(process);
  ::close(ends[0]);
  run.out = textOfFile(streams.out);
  run.err = textOfFile(streams.err);
  return run;
}
