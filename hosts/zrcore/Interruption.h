// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_ZRCORE_INTERRUPTION_H
#define ZRCORE_HOSTS_ZRCORE_INTERRUPTION_H

/// What ends a run before its work is done: SIGINT, SIGTERM, SIGQUIT, SIGHUP, and the limit of a file's size (SIGXFSZ).
/// The first of them is remembered, so that the work can be brought to a clean end. A user who cannot wait for that
/// sends SIGINT, SIGTERM or SIGQUIT again, which ends the process at once.
namespace interruption {

/// From now on signals are remembered. SIGHUP stays ignored in a process that was started so (nohup).
void listen();

/// The first signal's number; 0: none came.
int signal();

/// The tool's exit code after it: 128 + its number.
int exitCode();

/// Readable from the first signal on, for loops that wait for descriptors; -1 before `listen`.
int descriptor();

/// Does something before a second signal ends the process. Runs in the signal's handler, so it may call what POSIX
/// lists as async-signal-safe and nothing else.
void beforeSuddenEnd(void (*act)());

}  // namespace interruption

#endif
