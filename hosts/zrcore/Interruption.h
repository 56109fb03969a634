// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_ZRCORE_INTERRUPTION_H
#define ZRCORE_HOSTS_ZRCORE_INTERRUPTION_H

/// A wish of the user to end early (SIGINT, SIGTERM). The first signal is remembered, so that the work can be brought
/// to a clean end; a second one ends the process at once.
namespace interruption {

void listen();

/// The signal's number; 0: none came.
int signal();

}  // namespace interruption

#endif
