// SPDX-License-Identifier: Apache-2.0
/// @file
/// For libraries that fill a host's ZRPlatform and read its options: structures that begin with their size, because the
/// host may have been built before some of their members were added.
#ifndef ZRCORE_ZRPLATFORMFILL_H
#define ZRCORE_ZRPLATFORMFILL_H

#include <ZRCore/ZRPlatform.h>

#include <cstddef>
#include <memory>
#include <type_traits>
#include <utility>

/// Whether a host's structure, which may be an older and shorter one, is large enough to have `member`.
template <class Structure, class Member>
bool ZRReaches(const Structure& structure, Member Structure::*member) {
  const auto* const begin = reinterpret_cast<const std::byte*>(&structure);
  const auto* const end = reinterpret_cast<const std::byte*>(&(structure.*member) + 1);
  return end - begin <= static_cast<std::ptrdiff_t>(structure.size);
}

/// Gives `platform` a service, if it reaches so far.
template <class Service>
void ZRPlatformFill(ZRPlatform& platform, std::shared_ptr<Service> ZRPlatform::*member,
                    std::type_identity_t<std::shared_ptr<Service>> service) {
  if (ZRReaches(platform, member)) platform.*member = std::move(service);
}

/// A host's options as far as they reach; the other members have the values that this library's own header gives them.
/// @param members  all but the size
template <class Options, class... Member>
Options ZRReadOptions(const Options& host, Member Options::*... members) {
  Options known;
  const auto read = [&](auto member) {
    if (ZRReaches(host, member)) known.*member = host.*member;
  };
  (read(members), ...);
  return known;
}

#endif
