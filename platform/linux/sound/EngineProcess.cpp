// SPDX-License-Identifier: Apache-2.0
#include "sound/EngineProcess.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/mman.h>
extern "C" {
#include <sys/pidfd.h>  // which does not say itself that it is C
}
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <utility>

extern char** environ;

namespace {

/// Our environment, but for a sound server: an engine that looks for one shows there as another application's sound,
/// and hangs with a server that does. What is to be heard it writes.
std::vector<char*> environmentWithoutSound() {
  static char noServer[] = "PULSE_SERVER=unix:/dev/null";
  std::vector<char*> variables{noServer};
  for (char** variable = environ; *variable != nullptr; ++variable) {
    if (!std::string_view(*variable).starts_with("PULSE_SERVER=")) variables.push_back(*variable);
  }
  variables.push_back(nullptr);
  return variables;
}

}  // namespace

EngineProcess::EngineProcess(Loop& loop, std::string input, Events events)
    : loop_(loop), input_(std::move(input)), events_(std::move(events)) {}

std::unique_ptr<EngineProcess> EngineProcess::start(Loop& loop, const std::vector<std::string>& command,
                                                    std::string input, Events events, std::string& fault) {
  std::unique_ptr<EngineProcess> child(new EngineProcess(loop, std::move(input), std::move(events)));
  fault = command.empty() ? "no command" : child->spawn(command);
  if (!fault.empty()) return nullptr;
  EngineProcess* const self = child.get();
  child->inputWait_ = loop.watch(self->stdin_.get(), {.canWrite = true}, [self](auto) { self->writeInput(); });
  child->processWait_ = loop.watch(self->process_.get(), {.canRead = true}, [self](auto) {
    siginfo_t exit{};
    self->processWait_.reset();
    self->hasExited_ = true;
    if (::waitid(P_PIDFD, static_cast<id_t>(self->process_.get()), &exit, WEXITED) == 0) {
      if (exit.si_code != CLD_EXITED) {
        self->exitFault_ = "was ended by signal " + std::to_string(exit.si_status);
      } else if (exit.si_status != 0) {
        self->exitFault_ = "ended with status " + std::to_string(exit.si_status);
      }
    }  // otherwise the host reaps its children itself, and how this one ended is lost
    self->endIfDone();
  });
  child->setPaused(false);
  return child;
}

std::string EngineProcess::spawn(const std::vector<std::string>& command) {
  // A socket, unlike a pipe, can be written to without a signal when nobody reads. What the program complains of goes
  // to memory, so that it never has to wait for us to read it.
  int sockets[2], pipes[2];
  if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, sockets) != 0) return std::strerror(errno);
  stdin_ = FileDescriptor(sockets[0]);
  const FileDescriptor childStdin(sockets[1]);
  if (::pipe2(pipes, O_CLOEXEC) != 0) return std::strerror(errno);
  stdout_ = FileDescriptor(pipes[0]);
  const FileDescriptor childStdout(pipes[1]);
  stderr_ = FileDescriptor(::memfd_create("stderr", MFD_CLOEXEC));
  if (!stderr_.isOpen()) return std::strerror(errno);
  ::fcntl(stdin_.get(), F_SETFL, O_NONBLOCK);
  ::fcntl(stdout_.get(), F_SETFL, O_NONBLOCK);

  posix_spawn_file_actions_t files;
  ::posix_spawn_file_actions_init(&files);
  ::posix_spawn_file_actions_adddup2(&files, childStdin.get(), STDIN_FILENO);
  ::posix_spawn_file_actions_adddup2(&files, childStdout.get(), STDOUT_FILENO);
  ::posix_spawn_file_actions_adddup2(&files, stderr_.get(), STDERR_FILENO);
  ::posix_spawn_file_actions_addclosefrom_np(&files, STDERR_FILENO + 1);
  posix_spawnattr_t attributes;
  ::posix_spawnattr_init(&attributes);
  sigset_t signals;
  sigemptyset(&signals);
  ::posix_spawnattr_setsigmask(&attributes, &signals);
  sigfillset(&signals);
  ::posix_spawnattr_setsigdefault(&attributes, &signals);
  ::posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);

  std::vector<char*> words;
  for (const std::string& word : command) words.push_back(const_cast<char*>(word.c_str()));
  words.push_back(nullptr);
  const int error =
      ::posix_spawnp(&processId_, words[0], &files, &attributes, words.data(), environmentWithoutSound().data());
  ::posix_spawnattr_destroy(&attributes);
  ::posix_spawn_file_actions_destroy(&files);
  if (error != 0) {
    processId_ = -1;
    return std::strerror(error);
  }
  process_ = FileDescriptor(::pidfd_open(processId_, 0));
  return process_.isOpen() ? "" : std::strerror(errno);
}

EngineProcess::~EngineProcess() {
  if (processId_ <= 0) return;
  // Somebody still writes: the program, or what it has started. Otherwise the number may be another group's by now.
  if (!hasExited_ || stdout_.isOpen()) ::kill(-processId_, SIGKILL);
  if (!hasExited_) ::waitpid(processId_, nullptr, 0);
}

void EngineProcess::setPaused(bool isPaused) {
  if (isPaused || !stdout_.isOpen()) {
    outputWait_.reset();
  } else if (!outputWait_) {
    outputWait_ = loop_.watch(stdout_.get(), {.canRead = true}, [this](auto) { readOutput(); });
  }
}

void EngineProcess::writeInput() {
  const ssize_t written = ::send(stdin_.get(), input_.data(), input_.size(), MSG_NOSIGNAL);
  if (written >= 0) input_.erase(0, static_cast<std::size_t>(written));
  const bool mustWait = written < 0 && (errno == EAGAIN || errno == EINTR);
  if (mustWait || (written >= 0 && !input_.empty())) return;
  inputWait_.reset();
  stdin_.close();
}

void EngineProcess::readOutput() {
  std::array<char, 16384> bytes;
  const ssize_t count = ::read(stdout_.get(), bytes.data(), bytes.size());
  if (count > 0) {
    events_.output(std::string_view(bytes.data(), static_cast<std::size_t>(count)));
  } else if (count == 0 || (errno != EAGAIN && errno != EINTR)) {
    if (count < 0) exitFault_ = std::string("cannot be listened to: ") + std::strerror(errno);
    outputWait_.reset();
    stdout_.close();
    endIfDone();
  }
}

std::string EngineProcess::complaint() const {
  std::array<char, 200> bytes;
  const ssize_t count = ::pread(stderr_.get(), bytes.data(), bytes.size(), 0);
  std::string text(bytes.data(), count > 0 ? static_cast<std::size_t>(count) : 0);
  const auto isControl = [](unsigned char c) { return c < 0x20 || c == 0x7f; };
  text.erase(std::find_if(text.begin(), text.end(), isControl), text.end());  // the first line, for a log
  return text.empty() ? "" : ": " + text;
}

void EngineProcess::endIfDone() {
  if (!hasExited_ || stdout_.isOpen()) return;
  events_.ended(exitFault_.empty() ? "" : exitFault_ + complaint());
}
