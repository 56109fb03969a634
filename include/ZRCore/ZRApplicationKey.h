// SPDX-License-Identifier: Apache-2.0
/// @file
/// The web services' key of the host application.
#ifndef ZRCORE_ZRAPPLICATIONKEY_H
#define ZRCORE_ZRAPPLICATIONKEY_H

#include <ZRCore/ZRExport.h>

#include <stdexcept>
#include <string>

/// The host application declares no key. A fault of its set-up, which nothing at run time mends.
class ZR_EXPORT ZRMissingApplicationKeyException : public std::runtime_error {
 public:
  ZRMissingApplicationKeyException();
  ~ZRMissingApplicationKeyException() override;
  /// "Missing Velmaris application key".
  static const char* name() noexcept;
  /// The sentence that `what()` returns, too.
  const char* reason() const noexcept { return what(); }
};

/// The key as the host application declares it.
class ZR_EXPORT ZRApplicationKey {
 public:
  /// The text under "ZRApplicationKey" in the host application's information dictionary. Nothing in the framework asks
  /// for it; the host hands it on (`ZRConfigurationBase::setProductKey`). Any thread.
  /// @throw ZRMissingApplicationKeyException  there is none, or an empty one.
  static std::string key();
};

#endif
