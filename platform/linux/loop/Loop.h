// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_LINUX_LOOP_H
#define ZRCORE_LINUX_LOOP_H

#include <ZRCore/ZRMainQueue.h>
#include <platform/Callback.h>

#include <functional>
#include <memory>

/// The main thread's loop: the main queue, and what adapters wait with. Abstract, so that their tests can have a loop
/// whose time stands still.
class Loop : public ZRMainQueue {
 public:
  /// Something waited for. The waiting ends with the object, also from inside its own callback.
  class Wait {
   public:
    Wait() = default;
    Wait(const Wait&) = delete;
    Wait& operator=(const Wait&) = delete;
    virtual ~Wait();
  };

  struct Readiness {
    bool canRead = false;
    bool canWrite = false;
    bool hasFailed = false;  ///< reported whether it was asked for or not: an error, a hang-up
  };

  ~Loop() override;

  /// Calls `fire` once, `seconds` from now at the earliest. Loop's thread, as all below.
  [[nodiscard]] virtual std::unique_ptr<Wait> after(double seconds, Callback<> fire) = 0;

  /// Calls `fire` each time that `fileDescriptor` is ready in one of the ways asked for. The descriptor stays the
  /// caller's, who ends the waiting before closing it.
  [[nodiscard]] virtual std::unique_ptr<Wait> watch(int fileDescriptor, Readiness interest,
                                                    Callback<Readiness> fire) = 0;
};

#endif
