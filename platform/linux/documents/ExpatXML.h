// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_LINUX_EXPATXML_H
#define ZRCORE_LINUX_EXPATXML_H

#include <ZRCore/NSXMLParser.h>
#include <ZRCore/ZRDocumentLimits.h>

#include <cstdint>

/// Makes parsers that read with expat: UTF-8, UTF-16, ISO 8859-1 and ASCII. Entities may make a document twice as long,
/// or 1 MiB; nesting goes to 10,000 elements; a reference to anything outside the document is an error.
class ExpatXML final : public ZRXML {
 public:
  /// @param mostValues  elements and attributes of a document; with more, reading ends with an error
  explicit ExpatXML(std::uint64_t mostValues = ZRMostDocumentValues) : mostValues_(mostValues) {}

  /// @return null for no bytes.
  std::shared_ptr<NSXMLParser> parserWithData(std::string data) override;

 private:
  const std::uint64_t mostValues_;
};

#endif
