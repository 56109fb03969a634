// SPDX-License-Identifier: Apache-2.0
#include "Interruption.h"

#include <csignal>
#include <initializer_list>

namespace {

volatile std::sig_atomic_t received = 0;

extern "C" void remember(int number) { received = number; }

}  // namespace

void interruption::listen() {
  struct sigaction action {};
  action.sa_handler = remember;
  action.sa_flags = static_cast<int>(SA_RESETHAND);  // and no SA_RESTART: a read that waits for input must come back
  for (const int number : {SIGINT, SIGTERM}) ::sigaction(number, &action, nullptr);
}

int interruption::signal() { return received; }
