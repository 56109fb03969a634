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

struct PlatformStatics {
  std::mutex mutex;
  std::shared_ptr<const ZRPlatform> inUse;
};

PlatformStatics& statics() {
  static auto* const instance = new PlatformStatics;  // never destroyed: other statics' destructors may still ask
  return *instance;
}

/// Takes over a member that the host's ZRPlatform is large enough to have, and has filled.
template <class Service>
void takeOver(std::shared_ptr<Service> ZRPlatform::*member, const ZRPlatform& from, ZRPlatform& to) {
  if (ZRReaches(from, member) && from.*member) to.*member = from.*member;
}

}  // namespace

bool ZRPlatformInstall(const ZRPlatform& platform) {
  auto complete = std::make_shared<ZRPlatform>(headlessPlatform());
  takeOver(&ZRPlatform::positioning, platform, *complete);
  takeOver(&ZRPlatform::bundle, platform, *complete);
  takeOver(&ZRPlatform::notificationCenter, platform, *complete);
  takeOver(&ZRPlatform::log, platform, *complete);
  takeOver(&ZRPlatform::clock, platform, *complete);
  takeOver(&ZRPlatform::json, platform, *complete);
  takeOver(&ZRPlatform::mainQueue, platform, *complete);
  takeOver(&ZRPlatform::httpSession, platform, *complete);
  takeOver(&ZRPlatform::xml, platform, *complete);
  takeOver(&ZRPlatform::images, platform, *complete);
  takeOver(&ZRPlatform::userDefaults, platform, *complete);
  takeOver(&ZRPlatform::device, platform, *complete);
  takeOver(&ZRPlatform::audioSession, platform, *complete);
  takeOver(&ZRPlatform::speech, platform, *complete);
  takeOver(&ZRPlatform::audioPlayers, platform, *complete);
  takeOver(&ZRPlatform::application, platform, *complete);
  takeOver(&ZRPlatform::screen, platform, *complete);
  takeOver(&ZRPlatform::pasteboard, platform, *complete);
  takeOver(&ZRPlatform::mail, platform, *complete);
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
