// SPDX-License-Identifier: Apache-2.0
#include "loop/GLibLoop.h"

#include <glib-unix.h>

#include <algorithm>
#include <cmath>
#include <mutex>
#include <vector>

#include "loop/FromC.h"

Loop::Wait::~Wait() = default;
Loop::~Loop() = default;

/// What was posted. A list of our own and a wake-up, in place of one GSource a post: the order is kept, and the
/// hand-over between threads is one that thread sanitizers can follow.
struct GLibLoop::Queue {
  bool isEmpty() {
    const std::lock_guard lock(mutex);
    return posted.empty();
  }

  /// Runs what was posted before this call. What is posted meanwhile waits its turn behind the loop's other sources.
  /// One that throws keeps no other from running.
  void run() noexcept {
    std::vector<std::function<void()>> works;
    {
      const std::lock_guard lock(mutex);
      works.swap(posted);
    }
    for (auto& next : works) {
      const auto work = std::move(next);  // which ends with its turn
      from_c::guarded(work);
    }
  }

  std::mutex mutex;
  std::vector<std::function<void()>> posted;
};

namespace {

/// A GSource that ends with its owner.
class SourceWait final : public Loop::Wait {
 public:
  explicit SourceWait(GSource* source) : source_(source) {}

 private:
  owners::Source source_;
};

template <class Function>
void release(gpointer function) {
  delete static_cast<Function*>(function);
}

/// The longest wait that GLib's milliseconds can express.
constexpr double kLongestSeconds = 2147483.0;

}  // namespace

GLibLoop::GLibLoop(GMainContext* context)
    : context_(g_main_context_ref(context ? context : g_main_context_default())), queue_(std::make_shared<Queue>()) {
  struct QueueSource {
    GSource base;
    std::shared_ptr<Queue>* queue;
  };
  static GSourceFuncs functions = {
      [](GSource* source, gint* timeout) -> gboolean {
        *timeout = -1;
        return !(*reinterpret_cast<QueueSource*>(source)->queue)->isEmpty();
      },
      [](GSource* source) -> gboolean { return !(*reinterpret_cast<QueueSource*>(source)->queue)->isEmpty(); },
      [](GSource* source, GSourceFunc, gpointer) -> gboolean {
        const auto queue = *reinterpret_cast<QueueSource*>(source)->queue;  // a work may release the loop
        queue->run();
        return G_SOURCE_CONTINUE;
      },
      [](GSource* source) { delete reinterpret_cast<QueueSource*>(source)->queue; },
      nullptr,
      nullptr};
  queueSource_.reset(g_source_new(&functions, sizeof(QueueSource)));
  reinterpret_cast<QueueSource*>(queueSource_.get())->queue = new std::shared_ptr<Queue>(queue_);
  g_source_set_static_name(queueSource_.get(), "ZRCore main queue");
  g_source_attach(queueSource_.get(), context_.get());
}

void GLibLoop::post(std::function<void()> work) {
  if (!work) return;
  {
    const std::lock_guard lock(queue_->mutex);
    queue_->posted.push_back(std::move(work));
  }
  // The thread that iterates looks at the queue before it waits again.
  if (!g_main_context_is_owner(context_.get())) g_main_context_wakeup(context_.get());
}

std::unique_ptr<Loop::Wait> GLibLoop::after(double seconds, Callback<> fire) {
  const double bounded = std::fmin(std::fmax(seconds, 0.0), kLongestSeconds);
  GSource* const source = g_timeout_source_new(static_cast<guint>(std::ceil(bounded * 1000.0)));
  using Fire = Callback<>;
  g_source_set_callback(
      source,
      [](gpointer function) -> gboolean {
        from_c::guarded(*static_cast<Fire*>(function));
        return G_SOURCE_REMOVE;
      },
      new Fire(std::move(fire)), release<Fire>);
  g_source_attach(source, context_.get());
  return std::make_unique<SourceWait>(source);
}

std::unique_ptr<Loop::Wait> GLibLoop::watch(int fileDescriptor, Readiness interest, Callback<Readiness> fire) {
  int conditions = G_IO_ERR | G_IO_HUP;
  if (interest.canRead) conditions |= G_IO_IN;
  if (interest.canWrite) conditions |= G_IO_OUT;
  GSource* const source = g_unix_fd_source_new(fileDescriptor, static_cast<GIOCondition>(conditions));
  using Fire = Callback<Readiness>;
  const auto dispatch = [](gint, GIOCondition condition, gpointer function) -> gboolean {
    const Readiness readiness{.canRead = (condition & G_IO_IN) != 0,
                              .canWrite = (condition & G_IO_OUT) != 0,
                              .hasFailed = (condition & (G_IO_ERR | G_IO_HUP | G_IO_NVAL)) != 0};
    from_c::guarded([&] { (*static_cast<Fire*>(function))(readiness); });
    return G_SOURCE_CONTINUE;
  };
  g_source_set_callback(source, G_SOURCE_FUNC(static_cast<GUnixFDSourceFunc>(dispatch)), new Fire(std::move(fire)),
                        release<Fire>);
  g_source_attach(source, context_.get());
  return std::make_unique<SourceWait>(source);
}
