// SPDX-License-Identifier: Apache-2.0
/// @file
/// For libraries that fill a host's ZRPlatform and read its options: structures that begin with their size, because the
/// host may have been built before some of their members were added.
#ifndef ZRCORE_ZRPLATFORMFILL_H
#define ZRCORE_ZRPLATFORMFILL_H

#include <ZRCore/ZRPlatform.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <tuple>
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

/// Who has a service: whether the headless one does all that the service is for.
enum class ZRServiceOrigin {
  framework,  ///< it does
  system,     ///< it answers "absent"; an adapter of the system has it
  screen,     ///< as `system`, and the adapter is one of a screen
};

/// One of a platform's services.
template <class Service>
struct ZRPlatformService {
  const char* name;  ///< for people
  ZRServiceOrigin origin;
  std::shared_ptr<Service> ZRPlatform::*member;
};
template <class Service>
ZRPlatformService(const char*, ZRServiceOrigin, std::shared_ptr<Service> ZRPlatform::*) -> ZRPlatformService<Service>;

/// All services, in the order of the members: the one list of them.
inline constexpr std::tuple ZRPlatformServices{
    ZRPlatformService{"positioning", ZRServiceOrigin::system, &ZRPlatform::positioning},
    ZRPlatformService{"bundle", ZRServiceOrigin::system, &ZRPlatform::bundle},
    ZRPlatformService{"notification centre", ZRServiceOrigin::framework, &ZRPlatform::notificationCenter},
    ZRPlatformService{"log", ZRServiceOrigin::framework, &ZRPlatform::log},
    ZRPlatformService{"clock", ZRServiceOrigin::framework, &ZRPlatform::clock},
    ZRPlatformService{"json", ZRServiceOrigin::system, &ZRPlatform::json},
    ZRPlatformService{"main queue", ZRServiceOrigin::system, &ZRPlatform::mainQueue},
    ZRPlatformService{"http", ZRServiceOrigin::system, &ZRPlatform::httpSession},
    ZRPlatformService{"xml", ZRServiceOrigin::system, &ZRPlatform::xml},
    ZRPlatformService{"images", ZRServiceOrigin::system, &ZRPlatform::images},
    ZRPlatformService{"settings", ZRServiceOrigin::system, &ZRPlatform::userDefaults},
    ZRPlatformService{"device", ZRServiceOrigin::system, &ZRPlatform::device},
    ZRPlatformService{"audio session", ZRServiceOrigin::system, &ZRPlatform::audioSession},
    ZRPlatformService{"speech", ZRServiceOrigin::system, &ZRPlatform::speech},
    ZRPlatformService{"audio players", ZRServiceOrigin::system, &ZRPlatform::audioPlayers},
    ZRPlatformService{"application", ZRServiceOrigin::screen, &ZRPlatform::application},
    ZRPlatformService{"screen", ZRServiceOrigin::screen, &ZRPlatform::screen},
    ZRPlatformService{"pasteboard", ZRServiceOrigin::screen, &ZRPlatform::pasteboard},
    ZRPlatformService{"mail", ZRServiceOrigin::screen, &ZRPlatform::mail},
};

/// Calls `use` with each of the services in the list.
template <class Use>
void ZRForEachService(Use&& use) {
  std::apply([&](const auto&... service) { (use(service), ...); }, ZRPlatformServices);
}

/// A platform of all services, given in the order of the list.
template <class... Service>
ZRPlatform ZRPlatformOf(std::shared_ptr<Service>... services) {
  static_assert(sizeof...(Service) == std::tuple_size_v<decltype(ZRPlatformServices)>, "a service is missing");
  ZRPlatform platform;
  std::apply([&](const auto&... listed) { ((platform.*listed.member = std::move(services)), ...); },
             ZRPlatformServices);
  return platform;
}

/// What any member may be made from; for `ZRMemberCount` alone.
struct ZRAnyMember {
  template <class Member>
  operator Member() const;
};

/// How many members an aggregate has: the most that it can be made from.
template <class Aggregate, class... Members>
consteval std::size_t ZRMemberCount() {
  if constexpr (requires { Aggregate{Members{}..., ZRAnyMember{}}; }) {
    return ZRMemberCount<Aggregate, Members..., ZRAnyMember>();
  } else {
    return sizeof...(Members);
  }
}

/// A host's options as far as they reach; the other members have the values that this library's own header gives them.
/// @param members  all but the size; a forgotten one does not compile
template <class Options, class... Member>
Options ZRReadOptions(const Options& host, Member Options::*... members) {
  static_assert(sizeof...(Member) + 1 == ZRMemberCount<Options>(), "an option is forgotten");
  Options known;
  const auto read = [&](auto member) {
    if (ZRReaches(host, member)) known.*member = host.*member;
  };
  (read(members), ...);
  return known;
}

#endif
