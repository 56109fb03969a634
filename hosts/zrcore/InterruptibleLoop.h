// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_ZRCORE_INTERRUPTIBLELOOP_H
#define ZRCORE_HOSTS_ZRCORE_INTERRUPTIBLELOOP_H

#include <functional>

/// Iterates the main loop until `isDone`, or a signal came, which wakes it.
void runLoopUntil(const std::function<bool()>& isDone);

#endif
