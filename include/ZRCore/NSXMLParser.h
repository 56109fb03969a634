// SPDX-License-Identifier: Apache-2.0
/// @file
/// Reading XML, event by event.
#ifndef ZRCORE_NSXMLPARSER_H
#define ZRCORE_NSXMLPARSER_H

#include <ZRCore/NSError.h>
#include <ZRCore/ZRExport.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

class NSXMLParser;

/// The domain of a parser's errors. Codes are the parser's own, but for the one of a delegate that gave up; `userInfo`
/// reports where it was, as decimal numbers from 1.
inline constexpr const char* NSXMLParserErrorDomain = "NSXMLParserErrorDomain";
inline constexpr long NSXMLParserDelegateAbortedParseError = 512;
inline constexpr const char* NSXMLParserErrorLineKey = "NSXMLParserErrorLine";
inline constexpr const char* NSXMLParserErrorColumnKey = "NSXMLParserErrorColumn";  ///< in bytes

/// Attributes in the document's order.
using ZRXMLAttributes = std::vector<std::pair<std::string, std::string>>;

/// What hears of a document's parts. Texts are UTF-8, whatever the document's encoding, and live for the call.
class ZR_EXPORT NSXMLParserDelegate {
 public:
  virtual ~NSXMLParserDelegate();
  /// @param elementName  as written, with its prefix.
  virtual void parserDidStartElement(NSXMLParser& parser, std::string_view elementName,
                                     const ZRXMLAttributes& attributes);
  virtual void parserDidEndElement(NSXMLParser& parser, std::string_view elementName);
  /// One text may come in several pieces.
  virtual void parserFoundCharacters(NSXMLParser& parser, std::string_view characters);
};

/// A document that waits to be read. One thread, any.
class ZR_EXPORT NSXMLParser {
 public:
  virtual ~NSXMLParser();
  virtual void setDelegate(std::weak_ptr<NSXMLParserDelegate> delegate) = 0;
  /// Reads the whole document and tells the delegate. No entity from outside the document is fetched. What the delegate
  /// throws ends the reading and is passed on.
  /// @return whether it was well formed and not given up; false also at a second call.
  virtual bool parse() = 0;
  /// Gives up, from inside a delegate's call: nothing more is reported and `parse` returns false.
  virtual void abortParsing() = 0;
  /// Why `parse` returned false; absent before it ran, and after it returned true.
  virtual std::optional<NSError> parserError() const = 0;
};

/// Makes parsers. Any thread.
class ZR_EXPORT ZRXML {
 public:
  virtual ~ZRXML();
  /// A parser over `data`, not started. Whether the bytes are a document shows when it parses.
  /// @return null when no parser can be made.
  virtual std::shared_ptr<NSXMLParser> parserWithData(std::string data) = 0;
};

#endif
