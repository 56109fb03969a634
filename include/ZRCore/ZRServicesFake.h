// SPDX-License-Identifier: Apache-2.0
/// @file
/// Test doubles of the services for requests, documents, settings and the device. Link ZRCore::Fake. One thread.
#ifndef ZRCORE_ZRSERVICESFAKE_H
#define ZRCORE_ZRSERVICESFAKE_H

#include <ZRCore/ZRPlatform.h>

#include <cstddef>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// A main queue that runs when the test says so.
class ZRFakeMainQueue : public ZRMainQueue {
 public:
  ~ZRFakeMainQueue() override;
  void post(std::function<void()> work) override;

  /// Runs what is waiting, and what that posts in its turn, until nothing is left. @return how many closures ran.
  std::size_t run();
  /// Runs the closure that has waited longest. @return whether there was one.
  bool runNext();
  std::size_t waiting() const { return waiting_.size(); }

 private:
  std::deque<std::function<void()>> waiting_;
};

class ZRFakeURLSession;

/// A request that waits until the test answers it.
class ZRFakeDataTask : public NSURLSessionDataTask, public std::enable_shared_from_this<ZRFakeDataTask> {
 public:
  ZRFakeDataTask(std::weak_ptr<ZRFakeURLSession> session, NSMutableURLRequest request,
                 NSURLSession::CompletionHandler completion);
  ~ZRFakeDataTask() override;
  void resume() override;
  void cancel() override;
  NSURLSessionTaskState state() const override { return state_; }

  const NSMutableURLRequest& request() const { return request_; }

  /// Completes the task, inside this call, as a network's thread would. Nothing when it is not running.
  void complete(std::optional<NSData> data, std::shared_ptr<const NSURLResponse> response,
                std::optional<NSError> error);
  /// The same, with a response of that status.
  void answer(int statusCode, std::optional<NSData> body);
  /// The same, with a fault of the transport alone.
  void fail(long code);

 private:
  void failLater(long code);

  std::weak_ptr<ZRFakeURLSession> session_;
  NSMutableURLRequest request_;
  NSURLSession::CompletionHandler completion_;
  NSURLSessionTaskState state_ = NSURLSessionTaskState::suspended;
};

/// A session whose tasks wait for the test.
class ZRFakeURLSession : public NSURLSession, public std::enable_shared_from_this<ZRFakeURLSession> {
 public:
  /// @param queue  where cancelled tasks, and those without an address, complete.
  explicit ZRFakeURLSession(std::shared_ptr<ZRMainQueue> queue);
  ~ZRFakeURLSession() override;
  std::shared_ptr<NSURLSessionDataTask> dataTaskWithRequest(NSMutableURLRequest request,
                                                            CompletionHandler completion) override;

  /// Resumed and not yet completed, in the order of their resumption.
  std::vector<std::shared_ptr<ZRFakeDataTask>> running;
  /// How many tasks were ever resumed.
  std::size_t resumed = 0;

 private:
  friend class ZRFakeDataTask;
  std::shared_ptr<ZRMainQueue> queue_;
};

/// Parsers that hold their bytes and read none.
class ZRFakeXML : public ZRXML {
 public:
  ~ZRFakeXML() override;
  std::shared_ptr<NSXMLParser> parserWithData(std::string data) override;

  bool makesParsers = true;
  std::vector<std::string> documents;  ///< what parsers were made over
};

/// Knows the pictures that the test gives it.
class ZRFakeImages : public ZRImages {
 public:
  ~ZRFakeImages() override;
  std::shared_ptr<const UIImage> imageWithData(std::string_view data) const override;

  std::map<std::string, std::shared_ptr<const UIImage>, std::less<>> images;  ///< by their file's bytes
};

/// Settings in memory; what `synchronize` has brought to the store stands apart.
class ZRFakeUserDefaults : public ZRUserDefaults {
 public:
  ~ZRFakeUserDefaults() override;
  std::optional<std::string> stringForKey(std::string_view key) const override;
  void setStringForKey(std::string_view value, std::string_view key) override;
  bool synchronize() override;

  std::map<std::string, std::string, std::less<>> values;
  std::map<std::string, std::string, std::less<>> stored;
  mutable int reads = 0;
};

/// A device of the test's making.
class ZRFakeDevice : public ZRDevice {
 public:
  ~ZRFakeDevice() override;
  bool isAdvertisingTrackingEnabled() const override { return tracking; }
  std::optional<std::string> advertisingIdentifier() const override { return advertising; }
  std::optional<std::string> identifierForVendor() const override { return vendor; }
  std::optional<std::string> systemVersion() const override { return version; }
  std::optional<std::string> machineIdentifier() const override { return machine; }
  std::optional<std::string> systemLanguageCode() const override { return language; }

  bool tracking = false;
  std::optional<std::string> advertising, vendor, version, machine, language;
};

#endif
