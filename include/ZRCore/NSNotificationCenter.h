// SPDX-License-Identifier: Apache-2.0
/// @file
/// Named events within a process.
#ifndef ZRCORE_NSNOTIFICATIONCENTER_H
#define ZRCORE_NSNOTIFICATIONCENTER_H

#include <ZRCore/ZRExport.h>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

/// Posted by the host when the application comes back to the foreground.
inline constexpr const char* UIApplicationWillEnterForegroundNotification =
    "UIApplicationWillEnterForegroundNotification";
/// Posted by the host when the application has gone to the background.
inline constexpr const char* UIApplicationDidEnterBackgroundNotification =
    "UIApplicationDidEnterBackgroundNotification";

/// One post.
struct NSNotification {
  std::string name;
  /// Who posts it, or what it is about; the name's documentation tells its type. Null: nobody.
  std::shared_ptr<const void> object;
  std::map<std::string, std::int64_t> userInfo;  ///< further facts

  /// The fact under `key`; 0 when there is none.
  std::int64_t integerForKey(const std::string& key) const {
    const auto found = userInfo.find(key);
    return found != userInfo.end() ? found->second : 0;
  }
};

/// Hands each post to all observers of its name, in the order of their registration, on the poster's thread; the post
/// returns when all have run. Any thread.
class ZR_EXPORT NSNotificationCenter {
 public:
  using Handler = std::function<void(const std::string& name)>;
  using NotificationHandler = std::function<void(const NSNotification& notification)>;

  NSNotificationCenter();
  ~NSNotificationCenter();
  NSNotificationCenter(const NSNotificationCenter&) = delete;
  NSNotificationCenter& operator=(const NSNotificationCenter&) = delete;

  /// Calls `handler` for each post of `name` for as long as `observer` lives. The handler must not own the observer.
  void addObserver(std::weak_ptr<const void> observer, std::string name, Handler handler);

  /// The same, with all that the post carries.
  void addObserver(std::weak_ptr<const void> observer, std::string name, NotificationHandler handler);
  /// The same, for the posts of `object` alone. It is not kept alive.
  void addObserver(std::weak_ptr<const void> observer, std::string name, std::weak_ptr<const void> object,
                   NotificationHandler handler);

  /// Runs the handlers of its name. An observer added by a handler hears the next post; one that has gone is skipped.
  void postNotification(const NSNotification& notification);
  /// Posts a notification that carries nothing.
  void postNotificationName(const std::string& name);

 private:
  struct Observation;
  void add(Observation observation);

  std::mutex mutex_;
  std::vector<std::shared_ptr<const Observation>> observations_;
};

#endif
