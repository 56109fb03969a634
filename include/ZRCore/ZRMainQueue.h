// SPDX-License-Identifier: Apache-2.0
/// @file
/// The queue of the main thread.
#ifndef ZRCORE_ZRMAINQUEUE_H
#define ZRCORE_ZRMAINQUEUE_H

#include <ZRCore/ZRExport.h>

#include <functional>

/// Runs closures on the main thread, one after the other, first in, first out.
class ZR_EXPORT ZRMainQueue {
 public:
  virtual ~ZRMainQueue();
  /// Runs `work` later: never inside this call, not even on the main thread, so that the caller finishes first. Any
  /// thread. An empty function is passed over.
  virtual void post(std::function<void()> work) = 0;
};

#endif
