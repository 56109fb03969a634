// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_LINUX_EXPATXML_H
#define ZRCORE_LINUX_EXPATXML_H

#include <ZRCore/NSXMLParser.h>

/// Makes parsers that read with expat: UTF-8, UTF-16, ISO 8859-1 and ASCII. Expansion of entities is bounded by the
/// library, nesting by 10,000 elements; a reference to anything outside the document is an error.
class ExpatXML final : public ZRXML {
 public:
  /// @return null for no bytes.
  std::shared_ptr<NSXMLParser> parserWithData(std::string data) override;
};

#endif
