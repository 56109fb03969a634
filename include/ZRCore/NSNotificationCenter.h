/// @file
/// Named events within a process.
#ifndef ZRCORE_NSNOTIFICATIONCENTER_H
#define ZRCORE_NSNOTIFICATIONCENTER_H

#include <ZRCore/ZRExport.h>

#include <functional>
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

/// Hands each post to all observers of its name, in the order of their registration, on the poster's thread; the post
/// returns when all have run. Any thread.
class ZR_EXPORT NSNotificationCenter {
 public:
  using Handler = std::function<void(const std::string& name)>;

  NSNotificationCenter();
  ~NSNotificationCenter();
  NSNotificationCenter(const NSNotificationCenter&) = delete;
  NSNotificationCenter& operator=(const NSNotificationCenter&) = delete;

  /// Calls `handler` for each post of `name` for as long as `observer` lives. The handler must not own the observer.
  void addObserver(std::weak_ptr<const void> observer, std::string name, Handler handler);

  /// Runs the handlers of `name`. An observer added by a handler hears the next post; one that has gone is skipped.
  void postNotificationName(const std::string& name);

 private:
  struct Observation;
  std::mutex mutex_;
  std::vector<std::shared_ptr<const Observation>> observations_;
};

#endif
