// SPDX-License-Identifier: Apache-2.0
// The end of a process by a signal. A handler may do next to nothing itself, and what the process was doing stands
// still: so another process restores, which is started by the few calls that a handler may make.
#include "sound/SoundGuard.h"

#include <ZRCore/ZRLinuxSound.h>
#include <fcntl.h>
#include <owners/FileDescriptor.h>
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <ctime>
#include <list>
#include <string_view>

#include "sound/DuckFile.h"
#include "sound/SoundOwner.h"
#include "sound/SoundRestoring.h"

namespace {

constexpr int kMillisecondsToWait = 1000;
constexpr double kHelpersLongestSeconds = 2.0;

constexpr const char* kHelpersWord = "--zrcore-restore-sound";

/// The command line that starts the helper, with the pointers into it that `execv` takes.
class HelpersCommand {
 public:
  explicit HelpersCommand(const std::string& stateFolder)
      : words_{"/proc/self/exe", kHelpersWord, soundOwner(), stateFolder} {
    std::transform(words_.begin(), words_.end(), pointers_.begin(), [](std::string& word) { return word.data(); });
  }
  HelpersCommand(const HelpersCommand&) = delete;
  HelpersCommand& operator=(const HelpersCommand&) = delete;
  char* const* arguments() const { return pointers_.data(); }

 private:
  std::array<std::string, 4> words_;
  std::array<char*, 5> pointers_{};
};

bool isGuarding = false;
std::atomic<const HelpersCommand*> helper = nullptr;
std::atomic<bool> isRunning = false;

/// In the forked child: the terminal's signals and the caller's pipes are not the helper's.
[[noreturn]] void becomeHelper(char* const* arguments, int untilEnd) {
  ::setsid();
  const int nothing = ::open("/dev/null", O_RDWR);
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) ::dup2(nothing, stream);
  ::fcntl(untilEnd, F_SETFD, 0);
  sigset_t alarm;
  ::sigemptyset(&alarm);
  ::sigaddset(&alarm, SIGALRM);
  std::signal(SIGALRM, SIG_DFL);
  ::sigprocmask(SIG_UNBLOCK, &alarm, nullptr);
  ::alarm(static_cast<unsigned>(kHelpersLongestSeconds) + 1);  // it is never to stay
  ::execv(arguments[0], arguments);
  ::_exit(127);
}

long millisecondsNow() {
  timespec time{};
  ::clock_gettime(CLOCK_MONOTONIC, &time);
  return time.tv_sec * 1000 + time.tv_nsec / 1000000;
}

/// Until the other end is closed, but not for ever.
void waitForEnd(int descriptor) {
  const long deadline = millisecondsNow() + kMillisecondsToWait;
  pollfd end{descriptor, 0, 0};
  for (long left = kMillisecondsToWait; left > 0; left = deadline - millisecondsNow()) {
    if (::poll(&end, 1, static_cast<int>(left)) >= 0 || errno != EINTR) return;
  }
}

extern "C" void restoreAndEnd(int number) {
  ZRRestoreLinuxSoundAtSuddenEnd();
  std::signal(number, SIG_DFL);
  std::raise(number);  // it takes effect on the handler's return
}

/// Whether a process that does nothing about the signal ends by it, and can do something about it.
bool isEnd(int number) {
  constexpr std::array kOthers{SIGKILL, SIGSTOP, SIGTSTP, SIGTTIN, SIGTTOU, SIGCONT, SIGCHLD, SIGURG, SIGWINCH};
  if (std::find(kOthers.begin(), kOthers.end(), number) != kOthers.end()) return false;
  struct sigaction action {};
  return ::sigaction(number, nullptr, &action) == 0 && (action.sa_flags & SA_SIGINFO) == 0 &&
         action.sa_handler == SIG_DFL;
}

}  // namespace

void ZRRestoreLinuxSoundAtSuddenEnd() {
  const HelpersCommand* const command = helper;
  if (command == nullptr || !DuckFile::hasNotes()) return;
  if (isRunning.exchange(true)) {  // in another thread, which will end the process; this one must not do so before
    ::poll(nullptr, 0, kMillisecondsToWait);
    return;
  }
  std::array<int, 2> ends{};
  if (::pipe2(ends.data(), O_CLOEXEC) != 0) return;
  const FileDescriptor untilEnd(ends[0]);
  FileDescriptor ours(ends[1]);
  const pid_t child = ::_Fork();  // unlike fork, it takes no locks
  if (child == 0) becomeHelper(command->arguments(), ends[1]);
  ours.close();
  if (child > 0) waitForEnd(untilEnd.get());
}

void guardSound(const std::string& stateFolder) {
  if (!isGuarding) return;
  DuckFile::hasNotes();                                         // what it stands on is made now, not in a handler
  static auto* const commands = new std::list<HelpersCommand>;  // a handler may be using any of them
  helper = &commands->emplace_back(stateFolder);
}

bool ZRGuardLinuxSound(int argc, char** argv) {
  if (argc == 4 && std::string_view(argv[1]) == kHelpersWord) {
    std::string fault;
    restoreSound(fault, {.stateFolder = argv[3], .endingOwner = argv[2], .seconds = kHelpersLongestSeconds});
    return true;
  }
  isGuarding = true;
  struct sigaction action {};
  action.sa_handler = restoreAndEnd;
  ::sigfillset(&action.sa_mask);
  for (int number = 1; number <= SIGRTMAX; ++number) {
    if (isEnd(number)) ::sigaction(number, &action, nullptr);
  }
  return false;
}
