// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_LINUX_CONTEXTSCOPE_H
#define ZRCORE_LINUX_CONTEXTSCOPE_H

#include <glib.h>

/// What GLib's asynchronous calls are started in, so that they end on our loop.
class ContextScope {
 public:
  explicit ContextScope(GMainContext* context) : context_(context) { g_main_context_push_thread_default(context_); }
  ContextScope(const ContextScope&) = delete;
  ContextScope& operator=(const ContextScope&) = delete;
  ~ContextScope() { g_main_context_pop_thread_default(context_); }

 private:
  GMainContext* context_;
};

#endif
