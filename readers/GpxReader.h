// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_READERS_GPXREADER_H
#define ZRCORE_READERS_GPXREADER_H

#include <expat.h>

#include <cstdint>
#include <exception>
#include <memory>
#include <set>
#include <string>
#include <string_view>

#include "FixEmitter.h"
#include "FixFields.h"
#include "FixReader.h"

namespace readers {

/// Reads the track points of GPX 1.0 and 1.1, in order, over all tracks and segments. Names count without their
/// namespace prefix. Of a point: `ele`, `time`, `hdop`; `speed` and `course` where GPX 1.0 has them or anywhere in its
/// `extensions`; `accuracy`, in metres, anywhere in its `extensions`.
///
/// Once the XML is damaged, nothing after it is read. So that memory stays bounded whatever the input is, an own
/// document type with declarations, tags beyond kLongestText, very deep nesting and very many different names are
/// refused too.
class GpxReader final : public FixReader {
 public:
  GpxReader();
  void feed(std::string_view bytes, Listener& listener) override;
  void finish(Listener& listener) override;

 private:
  enum class Value { none, time, elevation, hdop, accuracy, speed, course };

  static void XMLCALL onStart(void* reader, const XML_Char* name, const XML_Char** attributes);
  static void XMLCALL onEnd(void* reader, const XML_Char* name);
  static void XMLCALL onText(void* reader, const XML_Char* text, int length);
  static void XMLCALL onOther(void* reader, const XML_Char* text, int length);
  static void XMLCALL onDoctype(void* reader, const XML_Char* name, const XML_Char* systemId, const XML_Char* publicId,
                                int hasInternalSubset);

  /// Does what the parser has called us for. What is thrown must not cross the parser, which is C: it waits until the
  /// parser returns.
  template <class Work>
  static void enter(void* reader, Work work) noexcept;

  void startElement(std::string_view name, const XML_Char** attributes);
  void startPoint(const XML_Char** attributes);
  void endElement();
  void addText(std::string_view text);
  void takeValue();
  Value valueNamed(std::string_view name) const;

  std::string_view begin(std::string_view bytes);
  void parse(std::string_view bytes, bool last);
  void tellError();
  bool accepts(std::string_view name);
  bool tokenFits();
  void refuse(const std::string& why);
  Reporter here() const;

  struct Free {
    void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
  };
  std::unique_ptr<XML_ParserStruct, Free> parser_;
  Listener* listener_ = nullptr;  // whose call we are in
  FixEmitter emitter_;

  bool begun_ = false;          // something other than blanks has come
  bool begunDocument_ = false;  // the outermost element has come
  bool finished_ = false;       // the XML was damaged or refused
  std::exception_ptr thrown_;
  std::uint64_t leadingLines_ = 0;
  std::uint64_t fedBytes_ = 0;
  std::uint64_t heldBytes_ = 0;  // of them: given to the parser, and not yet parsed by it
  std::string waiting_;          // not yet given to the parser

  std::set<std::string, std::less<>> names_;  // which the parser keeps for good
  std::size_t namesBytes_ = 0;

  // Depths of the elements we are in; the root's is 1, and 0 stands for "not in one".
  int depth_ = 0;
  int pointDepth_ = 0;
  int extensionsDepth_ = 0;
  int valueDepth_ = 0;

  bool hasPoints_ = false;
  SourceFix point_;
  Value value_ = Value::none;
  std::string text_;
  bool textTooLong_ = false;
};

}  // namespace readers

#endif
