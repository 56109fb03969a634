// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_LINUX_FROMC_H
#define ZRCORE_LINUX_FROMC_H

/// Where C libraries call us back from the loop. An exception must not pass their frames, which would leave them in
/// the middle of what they do: it is kept until the loop's iteration is over, and goes on from there (`LoopRun`).
namespace from_c {

/// Keeps the exception that is being handled for this thread's run of the loop: the first one, for others often follow
/// from it. A loop that the host runs by itself gives nobody to tell, so there it ends the process.
void keepThrown() noexcept;

template <class Work>
void guarded(Work&& work) noexcept {
  try {
    work();
  } catch (...) {
    keepThrown();
  }
}

template <class Lambda, class Function>
struct Entry;
template <class Lambda, class... Arguments>
struct Entry<Lambda, void (*)(Arguments...)> {
  static void call(Arguments... arguments) noexcept {
    guarded([&] { Lambda()(arguments...); });
  }
};

/// A lambda without captures as a function for C code to call.
template <class Lambda>
constexpr auto* entry(Lambda lambda) {
  return Entry<Lambda, decltype(+lambda)>::call;
}

/// A run of the loop on this thread, from which kept exceptions go on.
class LoopRun {
 public:
  LoopRun();
  LoopRun(const LoopRun&) = delete;
  LoopRun& operator=(const LoopRun&) = delete;
  ~LoopRun();
  /// After each iteration.
  void rethrow() const;
};

}  // namespace from_c

#endif
