/// @file
/// For libraries that fill a host's ZRPlatform.
#ifndef ZRCORE_ZRPLATFORMFILL_H
#define ZRCORE_ZRPLATFORMFILL_H

#include <ZRCore/ZRPlatform.h>

#include <cstddef>
#include <memory>
#include <type_traits>
#include <utility>

/// Gives `platform` a service, if the structure, which may be one of an older host, is large enough to have it.
template <class Service>
void ZRPlatformFill(ZRPlatform& platform, std::shared_ptr<Service> ZRPlatform::*member,
                    std::type_identity_t<std::shared_ptr<Service>> service) {
  const auto* const begin = reinterpret_cast<const std::byte*>(&platform);
  const auto* const end = reinterpret_cast<const std::byte*>(&(platform.*member) + 1);
  if (end - begin <= static_cast<std::ptrdiff_t>(platform.size)) platform.*member = std::move(service);
}

#endif
