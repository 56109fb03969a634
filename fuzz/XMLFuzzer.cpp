// SPDX-License-Identifier: Apache-2.0
// Any bytes as an XML document: what is reported is well nested, whether the document is good or not, a delegate that
// gives up hears nothing more, and what a good document tells, written again, tells the same.
#include <cstdint>
#include <string>
#include <vector>

#include "FuzzLaws.h"
#include "documents/ExpatXML.h"

namespace {

struct Listener : NSXMLParserDelegate {
  void parserDidStartElement(NSXMLParser& parser, std::string_view name, const ZRXMLAttributes& attributes) override {
    hear(parser);
    open.emplace_back(name);
    (written += '<') += name;
    for (const auto& [key, value] : attributes) {
      ((written += ' ') += key) += "=\"";
      write(value);
      written += '"';
    }
    written += '>';
  }
  void parserDidEndElement(NSXMLParser& parser, std::string_view name) override {
    hear(parser);
    require(!open.empty() && open.back() == name, "an end belongs to the last start");
    open.pop_back();
    ((written += "</") += name) += '>';
  }
  void parserFoundCharacters(NSXMLParser& parser, std::string_view characters) override {
    hear(parser);
    require(!open.empty(), "text stands in an element");
    write(characters);
  }

  /// All but letters and the bytes of other characters by their numbers.
  void write(std::string_view text) {
    for (const char c : text) {
      const bool isPlain = (static_cast<unsigned char>(c) & 0x80U) != 0 || (c >= 'a' && c <= 'z');
      written += isPlain ? std::string(1, c) : "&#" + std::to_string(static_cast<int>(c)) + ";";
    }
  }

  void hear(NSXMLParser& parser) {
    require(heard != limit, "nothing comes after giving up");
    if (++heard == limit) parser.abortParsing();
  }

  int limit = -1;
  int heard = 0;
  std::vector<std::string> open;
  std::string written;  ///< what was told, as a document
};

std::shared_ptr<Listener> heard(const std::string& document) {
  const auto parser = ExpatXML().parserWithData(document);
  const auto listener = std::make_shared<Listener>();
  parser->setDelegate(listener);
  return parser->parse() ? listener : nullptr;
}

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
  if (const auto listener = heard(input)) {
    const auto again = heard(listener->written);
    require(again && again->written == listener->written, "what was told and written tells the same");
  }
  std::string often = "<r>";
  for (int i = 0; i < 8; ++i) often += input;
  requireLinear(often.size(), [&] { static_cast<void>(ExpatXML().parserWithData(often + "</r>")->parse()); });
  return 0;
}
