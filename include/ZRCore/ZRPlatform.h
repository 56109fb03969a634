// SPDX-License-Identifier: Apache-2.0
/// @file
/// The seam: the small services through which the framework reaches the system it runs on. A host fills a ZRPlatform
/// and installs it once, before its first other call; a service that it leaves out answers "absent".
#ifndef ZRCORE_ZRPLATFORM_H
#define ZRCORE_ZRPLATFORM_H

#if __cplusplus < 202002L
#error "ZRCore is C++20: compile with -std=c++20 or later"
#endif

#include <ZRCore/AVAudioPlayer.h>
#include <ZRCore/AVAudioSession.h>
#include <ZRCore/AVSpeechSynthesis.h>
#include <ZRCore/CLLocationManager.h>
#include <ZRCore/MFMailComposeViewController.h>
#include <ZRCore/NSDate.h>
#include <ZRCore/NSNotificationCenter.h>
#include <ZRCore/NSURLSession.h>
#include <ZRCore/NSXMLParser.h>
#include <ZRCore/UIApplication.h>
#include <ZRCore/UIImage.h>
#include <ZRCore/ZRBundle.h>
#include <ZRCore/ZRDevice.h>
#include <ZRCore/ZRDocumentLimits.h>
#include <ZRCore/ZRExport.h>
#include <ZRCore/ZRJSONService.h>
#include <ZRCore/ZRMainQueue.h>
#include <ZRCore/ZRScreen.h>
#include <ZRCore/ZRUserDefaults.h>

#include <cstdint>
#include <memory>
#include <string_view>

/// Makes managers of the receiver and knows whether they may be used.
class ZR_EXPORT ZRPositioning {
 public:
  virtual ~ZRPositioning();
  /// A new manager, stopped and without a delegate. Never null.
  virtual std::shared_ptr<CLLocationManager> makeLocationManager() = 0;
  virtual CLAuthorizationStatus authorizationStatus() const = 0;
};

/// The system log.
class ZR_EXPORT ZRLog {
 public:
  virtual ~ZRLog();
  /// Writes one line. Any thread.
  virtual void writeLine(std::string_view line) = 0;
};

/// Time. Everything that waits or measures takes it from here, so that tests need not wait.
class ZR_EXPORT ZRClock {
 public:
  virtual ~ZRClock();
  virtual NSDate now() const = 0;
};

/// All services. The size lets a library that knows more services take the platform of a host that was built before
/// them: it reads `size` bytes and takes the rest as absent.
struct ZRPlatform {
  std::uint32_t size = sizeof(ZRPlatform);
  std::uint32_t version = 1;  ///< for a change of what a member means, which the size would not tell; there is none yet

  std::shared_ptr<ZRPositioning> positioning;
  std::shared_ptr<ZRBundle> bundle;
  std::shared_ptr<NSNotificationCenter> notificationCenter;
  std::shared_ptr<ZRLog> log;
  std::shared_ptr<ZRClock> clock;
  std::shared_ptr<ZRJSONService> json;
  std::shared_ptr<ZRMainQueue> mainQueue;
  std::shared_ptr<NSURLSession> httpSession;
  std::shared_ptr<ZRXML> xml;
  std::shared_ptr<ZRImages> images;
  std::shared_ptr<ZRUserDefaults> userDefaults;
  std::shared_ptr<ZRDevice> device;
  std::shared_ptr<AVAudioSession> audioSession;
  std::shared_ptr<ZRSpeech> speech;
  std::shared_ptr<ZRAudioPlayers> audioPlayers;
  std::shared_ptr<UIApplication> application;
  std::shared_ptr<ZRScreen> screen;
  std::shared_ptr<UIPasteboard> pasteboard;
  std::shared_ptr<ZRMail> mail;

  /// How long a body may be that a data task parses: a longer one is a failure with NSURLErrorDataLengthExceedsMaximum.
  std::uint64_t longestParsedBodyBytes = ZRLongestParsedBodyBytes;
};

/// Makes `platform` the one that the framework uses, for the rest of the process. Null members become the headless
/// services: no receiver, no bundle, a log on the standard error stream, the system's clock, no JSON, a main queue that
/// drops what is posted, a network that is not connected (which it reports through the platform's main queue), no XML,
/// no images, settings that last as long as the process, nothing known of the device, no sound, a screen that nobody
/// sees, no clipboard, no mail and no other program.
/// @return true; false, and nothing changes, when a platform is in use already (installed, or asked for before).
[[nodiscard]] ZR_EXPORT bool ZRPlatformInstall(const ZRPlatform& platform);

/// The platform in use; the headless one when none was installed. No member is null. Any thread.
ZR_EXPORT const ZRPlatform& ZRPlatformInUse();

#endif
