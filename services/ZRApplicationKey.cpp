// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRApplicationKey.h>
#include <ZRCore/ZRPlatform.h>

#include <utility>

ZRMissingApplicationKeyException::ZRMissingApplicationKeyException()
    : std::runtime_error(
          "You must have a Velmaris application key to use this SDK. Please add ZRApplicationKey : <Your Key> to your "
          "application's Info.plist file.") {}

ZRMissingApplicationKeyException::~ZRMissingApplicationKeyException() = default;

const char* ZRMissingApplicationKeyException::name() noexcept { return "Missing Velmaris application key"; }

std::string ZRApplicationKey::key() {
  auto key = ZRPlatformInUse().bundle->infoStringForKey("ZRApplicationKey");
  if (!key || key->empty()) throw ZRMissingApplicationKeyException();
  return *std::move(key);
}
