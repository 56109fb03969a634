// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRPlatform.h>
#include <ZRCore/ZRPlatformFill.h>

#include <mutex>

#include "PlatformTestPeer.h"
#include "headless/HeadlessPlatform.h"

ZRPositioning::~ZRPositioning() = default;
ZRBundle::~ZRBundle() = default;
ZRLog::~ZRLog() = default;
ZRClock::~ZRClock() = default;
ZRJSONService::~ZRJSONService() = default;
ZRMainQueue::~ZRMainQueue() = default;
ZRXML::~ZRXML() = default;
NSXMLParser::~NSXMLParser() = default;
NSXMLParserDelegate::~NSXMLParserDelegate() = default;
ZRImages::~ZRImages() = default;
ZRUserDefaults::~ZRUserDefaults() = default;
ZRDevice::~ZRDevice() = default;

void NSXMLParserDelegate::parserDidStartElement(NSXMLParser&, std::string_view, const ZRXMLAttributes&) {}
void NSXMLParserDelegate::parserDidEndElement(NSXMLParser&, std::string_view) {}
void NSXMLParserDelegate::parserFoundCharacters(NSXMLParser&, std::string_view) {}

namespace {

// Beside three numbers a platform is nothing but its services: one that the list forgets does not compile.
static_assert(ZRMemberCount<ZRPlatform>() == 3 + std::tuple_size_v<decltype(ZRPlatformServices)>);

struct PlatformStatics {
  std::mutex mutex;
  std::shared_ptr<const ZRPlatform> inUse;
};

PlatformStatics& statics() {
  static auto* const instance = new PlatformStatics;  // never destroyed: other statics' destructors may still ask
  return *instance;
}

}  // namespace

bool ZRPlatformInstall(const ZRPlatform& platform) {
  auto complete = std::make_shared<ZRPlatform>(headlessPlatform());
  ZRForEachService([&](const auto& service) {
    if (ZRReaches(platform, service.member) && platform.*service.member) {
      complete.get()->*service.member = platform.*service.member;
    }
  });
  if (ZRReaches(platform, &ZRPlatform::longestParsedBodyBytes)) {
    complete->longestParsedBodyBytes = platform.longestParsedBodyBytes;
  }

  const std::lock_guard lock(statics().mutex);
  if (statics().inUse) return false;
  statics().inUse = std::move(complete);
  return true;
}

const ZRPlatform& ZRPlatformInUse() {
  const std::lock_guard lock(statics().mutex);
  if (!statics().inUse) statics().inUse = std::make_shared<ZRPlatform>(headlessPlatform());
  return *statics().inUse;
}

void PlatformTestPeer::forget() {
  const std::lock_guard lock(statics().mutex);
  statics().inUse.reset();
}
