// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_LINUX_GLIBLOOP_H
#define ZRCORE_LINUX_GLIBLOOP_H

#include <glib.h>
#include <owners/GLib.h>

#include "loop/Loop.h"

/// The loop of a GLib main context. What a callback throws comes out of `ZRRunLinuxLoopUntil`.
class GLibLoop final : public Loop {
 public:
  /// @param context  null for the default context. Held.
  explicit GLibLoop(GMainContext* context = nullptr);
  ~GLibLoop() override = default;  ///< what was posted and has not run is dropped

  void post(std::function<void()> work) override;
  std::unique_ptr<Wait> after(double seconds, Callback<> fire) override;
  std::unique_ptr<Wait> watch(int fileDescriptor, Readiness interest, Callback<Readiness> fire) override;

  GMainContext* context() const { return context_.get(); }

 private:
  struct Queue;

  owners::Ref<GMainContext> context_;
  std::shared_ptr<Queue> queue_;
  owners::Source queueSource_;
};

#endif
