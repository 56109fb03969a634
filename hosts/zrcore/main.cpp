// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRLinuxSound.h>
#include <ZRCore/ZRPrintableText.h>
#include <fcntl.h>
#include <owners/FileDescriptor.h>
#include <unistd.h>

#include <clocale>
#include <cstdio>
#include <exception>
#include <new>
#include <string>
#include <vector>

#include "CommandLine.h"
#include "Commands.h"
#include "ExitCodes.h"
#include "Interruption.h"

namespace {

/// A standard stream that was closed by the caller must not become the first file that is opened.
void fillStandardStreams() {
  for (int stream = 0; stream <= 2; ++stream) {
    if (::fcntl(stream, F_GETFD) < 0 && ::open("/dev/null", O_RDWR) < 0) return;
  }
}

/// Whether a run has descriptors enough. GLib, of which most runs have need, ends a process that has not.
bool canOpenFiles() {
  constexpr std::size_t kMostOfARun = 24;
  std::vector<FileDescriptor> taken(kMostOfARun);
  for (FileDescriptor& one : taken) {
    one = FileDescriptor(::fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 0));
    if (!one.isOpen()) return false;
  }
  return true;
}

/// Gives other applications' sound its volume back when a killed program has left it lowered. What goes wrong doctor
/// reports: most runs have nothing to do with sound.
void restoreSound() {
  std::string fault;
  if (ZRRestoreLinuxSound(fault) == 0) return;
  std::fprintf(stderr, "zrcore: a program that was killed had left other sound lowered; it has its volume back\n");
}

int runTool(int argc, char** argv) {
  if (!canOpenFiles()) {
    std::fputs("zrcore: this process can open too few files: let it close some, or raise its limit (ulimit -n)\n",
               stderr);
    return kExitServiceMissing;
  }
  CommandLine tool("zrcore", ZRCORE_VERSION, kToolDescription);
  addCommands(tool);
  tool.beforeRun([](const std::string& command) {
    if (command != "doctor") restoreSound();  // which does so itself
  });
  return tool.run(argc, argv);
}

}  // namespace

int main(int argc, char** argv) {
  fillStandardStreams();
  if (ZRGuardLinuxSound(argc, argv)) return kExitDone;
  interruption::beforeSuddenEnd(ZRRestoreLinuxSoundAtSuddenEnd);
  std::setlocale(LC_CTYPE, "");  // which characters the terminal shows; numbers stay as they are
  try {
    return runTool(argc, argv);
  } catch (const std::bad_alloc&) {
    std::fputs(
        "zrcore: there is no memory left for this: give it less at a time, close something, or raise the limit "
        "(ulimit -v)\n",
        stderr);
    return kExitServiceMissing;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "zrcore: %s\n", ZRPrintableText(error.what(), 2 * ZRLongestExcerpt).c_str());
    return kExitServiceMissing;
  }
}
