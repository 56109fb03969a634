// SPDX-License-Identifier: Apache-2.0
// Any bytes as an XML document: what is reported is well nested, whether the document is good or not, and a delegate
// that gives up hears nothing more.
#include <cstdint>
#include <string>
#include <vector>

#include "FuzzLaws.h"
#include "documents/ExpatXML.h"

namespace {

struct Listener : NSXMLParserDelegate {
  void parserDidStartElement(NSXMLParser& parser, std::string_view name, const ZRXMLAttributes&) override {
    hear(parser);
    open.emplace_back(name);
  }
  void parserDidEndElement(NSXMLParser& parser, std::string_view name) override {
    hear(parser);
    require(!open.empty() && open.back() == name, "an end belongs to the last start");
    open.pop_back();
  }
  void parserFoundCharacters(NSXMLParser& parser, std::string_view) override {
    hear(parser);
    require(!open.empty(), "text stands in an element");
  }

  void hear(NSXMLParser& parser) {
    require(heard != limit, "nothing comes after giving up");
    if (++heard == limit) parser.abortParsing();
  }

  int limit = -1;
  int heard = 0;
  std::vector<std::string> open;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string input(reinterpret_cast<const char*>(data), size);
  int whole = 0;
  for (const bool givesUp : {false, true}) {
    const auto parser = ExpatXML().parserWithData(input);
    require((parser == nullptr) == input.empty(), "all bytes but none make a parser");
    if (!parser) return 0;
    const auto listener = std::make_shared<Listener>();
    if (givesUp) listener->limit = (whole + 1) / 2;
    parser->setDelegate(listener);
    const bool isGood = parser->parse();
    require(isGood == !parser->parserError(), "a document is good or has an error");
    require(!isGood || listener->open.empty(), "a good document ends what it starts");
    require(!givesUp || whole == 0 || !isGood, "who gives up has no good document");
    whole = listener->heard;
  }
  return 0;
}
