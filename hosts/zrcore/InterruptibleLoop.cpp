// SPDX-License-Identifier: Apache-2.0
#include "InterruptibleLoop.h"

#include <ZRCore/ZRLinuxPlatform.h>
#include <glib-unix.h>
#include <owners/GLib.h>

#include "Interruption.h"

namespace {

/// While it is kept, a signal makes the loop look again whether it is to go on.
owners::Source wakenBySignals() {
  if (interruption::descriptor() < 0) return nullptr;
  owners::Source source(g_unix_fd_source_new(interruption::descriptor(), G_IO_IN));
  const GUnixFDSourceFunc once = [](int, GIOCondition, gpointer) -> gboolean { return G_SOURCE_REMOVE; };
  g_source_set_callback(source.get(), G_SOURCE_FUNC(once), nullptr, nullptr);
  g_source_attach(source.get(), nullptr);
  return source;
}

}  // namespace

void runLoopUntil(const std::function<bool()>& isDone) {
  const auto waking = wakenBySignals();
  ZRRunLinuxLoopUntil([&isDone] { return interruption::signal() != 0 || isDone(); });
}
