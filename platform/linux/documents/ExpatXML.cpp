// SPDX-License-Identifier: Apache-2.0
#include "documents/ExpatXML.h"

#define XML_DTD  // the library is built with it; its header declares what bounds entities only then
#include <expat.h>

#include <exception>
#include <new>
#include <utility>

namespace {

constexpr int kDeepestElement = 10'000;
constexpr XML_Index kLongestTag = 1 << 20;  // with its attributes, which the library holds all at once

class ExpatParser final : public NSXMLParser, public std::enable_shared_from_this<ExpatParser> {
 public:
  ExpatParser(std::string data, std::uint64_t mostValues) : data_(std::move(data)), mostValues_(mostValues) {
    if (!expat_) throw std::bad_alloc();
    XML_SetUserData(expat_.get(), this);
    XML_SetElementHandler(expat_.get(), onStart, onEnd);
    XML_SetCharacterDataHandler(expat_.get(), onText);
    XML_SetSkippedEntityHandler(expat_.get(), onSkipped);
    XML_SetBillionLaughsAttackProtectionMaximumAmplification(expat_.get(), 2.0F);
    XML_SetBillionLaughsAttackProtectionActivationThreshold(expat_.get(), 1ULL << 20U);
    XML_SetExternalEntityRefHandler(expat_.get(), [](auto...) -> int { return XML_STATUS_ERROR; });
  }

  void setDelegate(std::weak_ptr<NSXMLParserDelegate> delegate) override { delegate_ = std::move(delegate); }

  bool parse() override {
    if (hasBegun_) return false;
    hasBegun_ = true;
    const auto self = shared_from_this();  // the delegate may let go of the parser
    isTelling_ = true;
    const bool isWellFormed = feed();
    isTelling_ = false;
    if (thrown_ && !error_) fail(NSXMLParserDelegateAbortedParseError, "given up because the delegate threw");
    if (!isWellFormed && !error_) fail(XML_GetErrorCode(expat_.get()), XML_ErrorString(XML_GetErrorCode(expat_.get())));
    data_ = {};
    if (thrown_) std::rethrow_exception(std::exchange(thrown_, nullptr));
    return isWellFormed;
  }

  void abortParsing() override {
    if (isTelling_) stop(NSXMLParserDelegateAbortedParseError, "given up by the delegate");
  }

  std::optional<NSError> parserError() const override { return error_; }

 private:
  /// What is thrown must not cross the library, which is C: it waits until `parse` returns.
  template <class Work>
  static void enter(void* parser, Work work) noexcept {
    ExpatParser& self = *static_cast<ExpatParser*>(parser);
    try {
      work(self);
    } catch (...) {
      self.thrown_ = std::current_exception();
      self.isTelling_ = false;
      XML_StopParser(self.expat_.get(), XML_FALSE);
    }
  }

  static void onStart(void* parser, const XML_Char* name, const XML_Char** attributes) {
    enter(parser, [&](ExpatParser& self) {
      if (++self.depth_ > kDeepestElement) return self.stop(XML_ERROR_ABORTED, "elements are nested too deeply");
      self.values_ += 1 + static_cast<std::uint64_t>(XML_GetSpecifiedAttributeCount(self.expat_.get())) / 2;
      if (self.values_ > self.mostValues_) return self.refuse();
      self.tell([&](NSXMLParserDelegate& delegate) {
        ZRXMLAttributes pairs;
        for (; *attributes; attributes += 2) pairs.emplace_back(attributes[0], attributes[1]);
        delegate.parserDidStartElement(self, name, pairs);
      });
    });
  }
  static void onEnd(void* parser, const XML_Char* name) {
    enter(parser, [&](ExpatParser& self) {
      --self.depth_;
      self.tell([&](NSXMLParserDelegate& delegate) { delegate.parserDidEndElement(self, name); });
    });
  }
  static void onText(void* parser, const XML_Char* text, int length) {
    enter(parser, [&](ExpatParser& self) {
      self.tell([&](NSXMLParserDelegate& delegate) {
        delegate.parserFoundCharacters(self, {text, static_cast<std::size_t>(length)});
      });
    });
  }
  static void onSkipped(void* parser, const XML_Char* name, int) {
    enter(parser, [&](ExpatParser& self) {
      self.stop(XML_ERROR_UNDEFINED_ENTITY, "the document does not say what &" + std::string(name) + "; is");
    });
  }

  /// The library gets the document in slices, so that it is seen when one tag, comment or instruction has no end.
  bool feed() {
    constexpr std::size_t kSlice = std::size_t{1} << 18;
    for (std::string_view rest = data_;;) {
      const std::string_view next = rest.substr(0, kSlice);
      rest.remove_prefix(next.size());
      const auto status = XML_Parse(expat_.get(), next.data(), static_cast<int>(next.size()), rest.empty());
      if (status != XML_STATUS_OK) return false;
      if (rest.empty()) return true;
      const auto held = static_cast<XML_Index>(data_.size() - rest.size()) - XML_GetCurrentByteIndex(expat_.get());
      if (held > kLongestTag) {
        fail(XML_ERROR_ABORTED, "a tag or comment is longer than 1 MiB");
        return false;
      }
    }
  }

  template <class Call>
  void tell(Call call) {
    if (!isTelling_) return;  // the library still reports the end of an empty element
    if (const auto delegate = delegate_.lock()) call(*delegate);
  }

  void refuse() {
    stop(ZRDocumentErrorTooManyValues, "more than " + std::to_string(mostValues_) +
                                           " elements and attributes, the most that are read: ask for less, or raise "
                                           "the platform's limit");
    error_->domain = ZRDocumentErrorDomain;
  }

  void stop(long code, const std::string& reason) {
    isTelling_ = false;
    fail(code, reason);
    XML_StopParser(expat_.get(), XML_FALSE);
  }

  void fail(long code, const std::string& reason) {
    const std::string line = std::to_string(XML_GetCurrentLineNumber(expat_.get()));
    const std::string column = std::to_string(XML_GetCurrentColumnNumber(expat_.get()) + 1);
    error_ = {NSXMLParserErrorDomain,
              code,
              {{NSLocalizedDescriptionKey, "XML, line " + line + ", column " + column + ": " + reason},
               {NSXMLParserErrorLineKey, line},
               {NSXMLParserErrorColumnKey, column}}};
  }

  struct Free {
    void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
  };

  std::string data_;
  const std::uint64_t mostValues_;
  std::uint64_t values_ = 0;
  std::unique_ptr<XML_ParserStruct, Free> expat_{XML_ParserCreate(nullptr)};
  std::weak_ptr<NSXMLParserDelegate> delegate_;
  std::optional<NSError> error_;
  std::exception_ptr thrown_;
  int depth_ = 0;
  bool hasBegun_ = false;
  bool isTelling_ = false;  ///< from the begin of the reading until its end or its stop
};

}  // namespace

std::shared_ptr<NSXMLParser> ExpatXML::parserWithData(std::string data) {
  if (data.empty()) return nullptr;
  return std::make_shared<ExpatParser>(std::move(data), mostValues_);
}
