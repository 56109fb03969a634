// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRServicesFake.h>

#include <utility>

ZRFakeMainQueue::~ZRFakeMainQueue() = default;
ZRFakeURLSession::~ZRFakeURLSession() = default;
ZRFakeXML::~ZRFakeXML() = default;
ZRFakeImages::~ZRFakeImages() = default;
ZRFakeUserDefaults::~ZRFakeUserDefaults() = default;
ZRFakeDevice::~ZRFakeDevice() = default;

void ZRFakeMainQueue::post(std::function<void()> work) {
  if (work) waiting_.push_back(std::move(work));
}

std::size_t ZRFakeMainQueue::run() {
  std::size_t ran = 0;
  while (runNext()) ++ran;
  return ran;
}

bool ZRFakeMainQueue::runNext() {
  if (waiting_.empty()) return false;
  const auto work = std::move(waiting_.front());
  waiting_.pop_front();
  work();
  return true;
}

ZRFakeDataTask::ZRFakeDataTask(std::weak_ptr<ZRFakeURLSession> session, NSMutableURLRequest request,
                               NSURLSession::CompletionHandler completion)
    : session_(std::move(session)), request_(std::move(request)), completion_(std::move(completion)) {}

ZRFakeDataTask::~ZRFakeDataTask() = default;

void ZRFakeDataTask::resume() {
  if (state_ != NSURLSessionTaskState::suspended) return;
  state_ = NSURLSessionTaskState::running;
  const auto session = session_.lock();
  if (!session) return;
  ++session->resumed;
  session->running.push_back(shared_from_this());
  if (!request_.URL) failLater(NSURLErrorBadURL);
}

void ZRFakeDataTask::cancel() {
  if (state_ != NSURLSessionTaskState::suspended && state_ != NSURLSessionTaskState::running) return;
  state_ = NSURLSessionTaskState::canceling;
  failLater(NSURLErrorCancelled);
}

void ZRFakeDataTask::failLater(long code) {
  if (const auto session = session_.lock()) {
    session->queue_->post([self = shared_from_this(), code, state = state_] {
      if (self->state_ != state) return;
      self->state_ = NSURLSessionTaskState::running;
      self->fail(code);
    });
  }
}

void ZRFakeDataTask::complete(std::optional<NSData> data, std::shared_ptr<const NSURLResponse> response,
                              std::optional<NSError> error) {
  if (state_ != NSURLSessionTaskState::running) return;
  state_ = NSURLSessionTaskState::completed;
  const auto self = shared_from_this();  // the session may hold the last reference
  if (const auto session = session_.lock()) std::erase(session->running, self);
  if (const auto completion = std::exchange(completion_, nullptr)) {
    completion(std::move(data), std::move(response), std::move(error));
  }
}

void ZRFakeDataTask::answer(int statusCode, std::optional<NSData> body) {
  complete(std::move(body),
           std::make_shared<NSURLResponse>(NSURLResponse{.URL = request_.URL, .statusCode = statusCode}), std::nullopt);
}

void ZRFakeDataTask::fail(long code) { complete(std::nullopt, nullptr, NSError{NSURLErrorDomain, code, {}}); }

ZRFakeURLSession::ZRFakeURLSession(std::shared_ptr<ZRMainQueue> queue) : queue_(std::move(queue)) {}

std::shared_ptr<NSURLSessionDataTask> ZRFakeURLSession::dataTaskWithRequest(NSMutableURLRequest request,
                                                                            CompletionHandler completion) {
  return std::make_shared<ZRFakeDataTask>(weak_from_this(), std::move(request), std::move(completion));
}

namespace {

class FakeXMLParser final : public NSXMLParser {
 public:
  void setDelegate(std::weak_ptr<NSXMLParserDelegate>) override {}
  bool parse() override {
    parsed_ = true;
    return false;
  }
  void abortParsing() override {}
  std::optional<NSError> parserError() const override {
    if (!parsed_) return std::nullopt;
    return NSError{NSXMLParserErrorDomain, 1, {{NSLocalizedDescriptionKey, "This test double reads no XML."}}};
  }

 private:
  bool parsed_ = false;
};

}  // namespace

std::shared_ptr<NSXMLParser> ZRFakeXML::parserWithData(std::string data) {
  if (!makesParsers) return nullptr;
  documents.push_back(std::move(data));
  return std::make_shared<FakeXMLParser>();
}

std::shared_ptr<const UIImage> ZRFakeImages::imageWithData(std::string_view data) const {
  const auto found = images.find(data);
  return found != images.end() ? found->second : nullptr;
}

std::optional<std::string> ZRFakeUserDefaults::stringForKey(std::string_view key) const {
  ++reads;
  const auto found = values.find(key);
  return found != values.end() ? std::optional(found->second) : std::nullopt;
}

void ZRFakeUserDefaults::setStringForKey(std::string_view value, std::string_view key) {
  values.insert_or_assign(std::string(key), value);
}

bool ZRFakeUserDefaults::synchronize() {
  stored = values;
  return true;
}
