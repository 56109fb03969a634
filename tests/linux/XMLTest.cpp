// SPDX-License-Identifier: Apache-2.0
// What the XML parser makes of documents, good and bad.
#include <gmock/gmock.h>

#include "documents/ExpatXML.h"

using testing::HasSubstr;

namespace {

/// Writes down what it hears, and does what a test wants at an element.
struct Recorder : NSXMLParserDelegate {
  void parserDidStartElement(NSXMLParser& parser, std::string_view name, const ZRXMLAttributes& attributes) override {
    heard.append("<").append(name);
    for (const auto& [key, value] : attributes) heard.append(" ").append(key).append("=").append(value);
    heard += '>';
    if (name == "act" && act) act(parser);
  }
  void parserDidEndElement(NSXMLParser&, std::string_view name) override {
    heard.append("</").append(name).append(">");
  }
  void parserFoundCharacters(NSXMLParser&, std::string_view characters) override { heard += characters; }

  std::string heard;
  std::function<void(NSXMLParser&)> act;
};

class XMLTest : public testing::Test {
 protected:
  std::shared_ptr<NSXMLParser> parserOver(std::string document) {
    auto parser = ExpatXML().parserWithData(std::move(document));
    parser->setDelegate(recorder);
    return parser;
  }
  std::shared_ptr<Recorder> recorder = std::make_shared<Recorder>();
};

std::string repeated(std::string_view text, int times) {
  std::string all;
  for (int i = 0; i < times; ++i) all += text;
  return all;
}

std::string attributes(int count) {
  std::string all;
  while (count-- > 0) all += " a" + std::to_string(count) + "=''";
  return all;
}

TEST_F(XMLTest, DocumentsAreToldInUTF8WhateverTheirEncoding) {
  const std::string_view rows[][2] = {
      {"<a k='1' b=\"&lt;2\">x<n:b/>y</a>", "<a k=1 b=<2>x<n:b></n:b>y</a>"},
      {"<a><![CDATA[<&]]>&amp;&#xe9;</a>", "<a><&&\u00e9</a>"},
      {"<?xml version='1.0' encoding='ISO-8859-1'?><a>\xE9</a>", "<a>\u00e9</a>"},
      {std::string_view("\xFF\xFE<\0a\0>\0\xE9\0<\0/\0a\0>\0", 18), "<a>\u00e9</a>"},
      {"<!DOCTYPE a [<!ENTITY e 'in<b/>ner'>]><a>&e;</a>", "<a>in<b></b>ner</a>"},
      {"<!DOCTYPE a PUBLIC '-//x//y' 'http://127.0.0.1:9/a.dtd'><a/>", "<a></a>"},
  };
  for (const auto& [document, events] : rows) {
    SCOPED_TRACE(document);
    recorder->heard.clear();
    const auto parser = parserOver(std::string(document));
    EXPECT_TRUE(parser->parse());
    parser->abortParsing();
    EXPECT_EQ(parser->parserError(), std::nullopt) << "it is too late to give up";
    EXPECT_EQ(recorder->heard, events);
  }
}

TEST_F(XMLTest, ABadDocumentIsRefusedWithItsPlaceAndReason) {
  std::string bomb = "<!DOCTYPE a [<!ENTITY e0 'eeeeeeeeee'>";
  for (int i = 1; i < 20; ++i) {
    const std::string former = "&e" + std::to_string(i - 1) + ';';
    bomb += "<!ENTITY e" + std::to_string(i) + " '" + repeated(former, 10) + "'>";
  }
  const struct {
    std::string document, reason, line, column;
  } rows[] = {
      {"<a>\n <b></a>", "mismatched tag", "2", "7"},
      {"<a>\n", "no element found", "2", "1"},
      {" \n ", "no element found", "2", "2"},
      {"no xml", "syntax error", "1", "1"},
      {"<a>\xFF</a>", "invalid token", "1", "4"},
      {"<a/>\n<b/>", "junk after document element", "2", "1"},
      {"<?xml version='1.0' encoding='utf-99'?><a/>", "unknown encoding", "1", "31"},
      {bomb + "]>\n<a>&e19;</a>", "amplification", "2", "4"},
      {"<!DOCTYPE a [<!ENTITY e SYSTEM 'file:///etc/hostname'>]>\n<a>&e;</a>", "external entity", "2", "4"},
      {"<!DOCTYPE a SYSTEM 'a.dtd'>\n<a>&e;</a>", "what &e; is", "2", "4"},
      {repeated("<a>", 10'001) + repeated("</a>", 10'001), "nested too deeply", "1", "30001"},
      {"<!DOCTYPE a [<!ENTITY e '" + std::string(1000, 'e') + "'>]>\n<a>" + repeated("&e;", 3000) + "</a>",
       "amplification", "2", "3136"},
      {"<a" + attributes(200'000) + "/>", "longer than 1 MiB", "1", "1"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.document.substr(0, 80));
    const auto parser = parserOver(row.document);
    EXPECT_FALSE(parser->parse());
    const auto error = parser->parserError();
    ASSERT_TRUE(error);
    EXPECT_EQ(error->domain, NSXMLParserErrorDomain);
    EXPECT_THAT(error->localizedDescription(), HasSubstr(row.reason));
    EXPECT_EQ(error->userInfo.at(NSXMLParserErrorLineKey), row.line);
    EXPECT_EQ(error->userInfo.at(NSXMLParserErrorColumnKey), row.column);
  }
  EXPECT_TRUE(parserOver(repeated("<a>", 10'000) + repeated("</a>", 10'000))->parse());
  EXPECT_TRUE(parserOver("<a>" + repeated("<b/>", 10'001) + "</a>")->parse());
  for (const int kilobytes : {500, 1300}) {  // that an entity adds to 1 MB
    const std::string entity = "<!DOCTYPE a [<!ENTITY e '" + std::string(1000, 'e') + "'>]>\n<a>";
    const auto parser = parserOver(entity + std::string(1'000'000, 'x') + repeated("&e;", kilobytes) + "</a>");
    EXPECT_EQ(parser->parse(), kilobytes < 1000) << kilobytes;
  }
}

TEST_F(XMLTest, ADocumentOfTooManyValuesIsAnErrorOfItsOwn) {
  for (const auto& [most, isRead] : {std::pair(4U, true), {3U, false}}) {
    const auto parser = ExpatXML(most).parserWithData("<a b='' c=''><d/></a>");
    EXPECT_EQ(parser->parse(), isRead);
    const auto error = parser->parserError();
    ASSERT_EQ(error.has_value(), !isRead);
    if (isRead) continue;
    EXPECT_EQ(error->domain, ZRDocumentErrorDomain);
    EXPECT_EQ(error->code, ZRDocumentErrorTooManyValues);
    EXPECT_THAT(error->localizedDescription(), HasSubstr("column 14: more than 3 elements"));
  }
}

TEST_F(XMLTest, NoBytesMakeNoParser) { EXPECT_EQ(ExpatXML().parserWithData(""), nullptr); }

TEST_F(XMLTest, ADelegateThatGivesUpHearsNothingMore) {
  recorder->act = [](NSXMLParser& parser) {
    parser.abortParsing();
    parser.abortParsing();
    EXPECT_FALSE(parser.parse()) << "also from inside";
  };
  const auto parser = parserOver("<a>\n<act/>text</a>");
  EXPECT_FALSE(parser->parse());
  EXPECT_EQ(recorder->heard, "<a>\n<act>");
  EXPECT_EQ(parser->parserError()->code, NSXMLParserDelegateAbortedParseError);
  EXPECT_EQ(parser->parserError()->userInfo.at(NSXMLParserErrorLineKey), "2");
}

TEST_F(XMLTest, WhatADelegateThrowsComesOutOfParse) {
  recorder->act = [](NSXMLParser&) { throw std::runtime_error("unwanted"); };
  const auto parser = parserOver("<act>text</act>");
  EXPECT_THROW(parser->parse(), std::runtime_error);
  EXPECT_EQ(recorder->heard, "<act>");
  EXPECT_FALSE(parser->parse());
  EXPECT_NE(parser->parserError(), std::nullopt);
}

TEST_F(XMLTest, ADelegateMayGoAndLetTheParserGoWithIt) {
  auto parser = parserOver("<act>text</act>");
  recorder->act = [&](NSXMLParser&) {
    parser.reset();
    recorder.reset();
  };
  const Recorder* const gone = recorder.get();
  EXPECT_TRUE(parser->parse()) << "nobody listens any more, which is no fault";
  EXPECT_NE(recorder.get(), gone);
}

}  // namespace
