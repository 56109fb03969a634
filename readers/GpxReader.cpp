// SPDX-License-Identifier: Apache-2.0
#include "GpxReader.h"

#include <algorithm>
#include <new>
#include <utility>

#include "Text.h"

namespace readers {
namespace {

constexpr int kDeepestElement = 128;

std::string_view localName(std::string_view name) {
  const auto colon = name.rfind(':');
  return colon == std::string_view::npos ? name : name.substr(colon + 1);
}

}  // namespace

GpxReader::GpxReader() : parser_(XML_ParserCreate(nullptr)) {
  if (!parser_) throw std::bad_alloc();
  XML_SetUserData(parser_.get(), this);
  XML_SetElementHandler(parser_.get(), onStart, onEnd);
  XML_SetCharacterDataHandler(parser_.get(), onText);
  XML_SetDefaultHandler(parser_.get(), onOther);
  XML_SetStartDoctypeDeclHandler(parser_.get(), onDoctype);
}

void GpxReader::feed(std::string_view bytes, Listener& listener) {
  constexpr std::size_t kSlice = std::size_t{16} * 1024;
  listener_ = &listener;
  if (!begun_) bytes = begin(bytes);
  while (!bytes.empty() && !finished_) {
    parse(bytes.substr(0, kSlice), false);
    bytes.remove_prefix(std::min(kSlice, bytes.size()));
  }
}

void GpxReader::finish(Listener& listener) {
  listener_ = &listener;
  if (!finished_) parse({}, true);
  if (!finished_ && !hasPoints_) {
    here().fault("no track points: only the points of a track are read, not routes or waypoints; export the track");
  }
}

/// Looks at the input up to its first byte that is not blank. The parser insists on the XML declaration being first;
/// editors and pasted text do not. And when the first bytes come one by one it may take another encoding than when they
/// come together, unless they can begin XML.
std::string_view GpxReader::begin(std::string_view bytes) {
  constexpr std::string_view kBlanks = "\xEF\xBB\xBF \t\r\n";
  constexpr std::string_view kXmlStarts("<\xFE\xFF\0", 4);  // a tag, or the first byte of UTF-16
  const auto first = std::min(bytes.find_first_not_of(kBlanks), bytes.size());
  const auto blanks = bytes.substr(0, first);
  leadingLines_ += static_cast<std::uint64_t>(std::count(blanks.begin(), blanks.end(), '\n'));
  bytes.remove_prefix(first);
  begun_ = !bytes.empty();
  if (begun_ && kXmlStarts.find(bytes.front()) == std::string_view::npos) {
    refuse("this is no XML: it begins with no tag");
  }
  return bytes;
}

void GpxReader::parse(std::string_view bytes, bool last) {
  // The parser scans an unfinished tag from its beginning whenever it is given more. To give it more only when that
  // doubles the tag makes bytes that come one by one cost no more than bytes that come together.
  waiting_.append(bytes);
  if (waiting_.size() < heldBytes_ && !last) return;
  fedBytes_ += waiting_.size();
  const auto status = XML_Parse(parser_.get(), waiting_.data(), static_cast<int>(waiting_.size()), last);
  waiting_.clear();
  if (thrown_) std::rethrow_exception(std::exchange(thrown_, nullptr));
  if (status != XML_STATUS_OK) {
    if (!finished_) tellError();
    finished_ = true;
    return;
  }
  // The parser collects an unfinished tag, and may itself wait with a finished one until the input has doubled.
  constexpr auto kMostHeld = 4 * kLongestText;
  const auto parsedBytes = static_cast<std::uint64_t>(std::max(XML_Index{0}, XML_GetCurrentByteIndex(parser_.get())));
  heldBytes_ = fedBytes_ - std::min(fedBytes_, parsedBytes);
  if (heldBytes_ > kMostHeld) {
    refuse("a tag or comment is longer than 64 KiB");
    finished_ = true;
  }
}

void GpxReader::tellError() {
  const auto error = XML_GetErrorCode(parser_.get());
  const bool cut = error == XML_ERROR_NO_ELEMENTS || error == XML_ERROR_UNCLOSED_TOKEN ||
                   error == XML_ERROR_PARTIAL_CHAR || error == XML_ERROR_UNCLOSED_CDATA_SECTION;
  // Outside the document, which error the parser sees first depends on how the input is split, so the reason is left
  // out.
  const bool documentEnded = depth_ == 0 && begunDocument_;
  std::string reason = XML_ErrorString(error);
  if (depth_ == 0) reason = documentEnded ? "after its outermost element" : "before its outermost element";
  if (cut && !documentEnded) {
    here().fault("the XML breaks off (" + reason + "); the complete points before are kept");
  } else {
    here().fault("the XML is damaged (" + reason + ") and is not read from here on; export it again or mend this line");
  }
}

void GpxReader::refuse(const std::string& why) {
  if (finished_) return;
  here().fault(why + "; the file is not read from here on; export it again as plain GPX");
  finished_ = true;
  XML_StopParser(parser_.get(), XML_FALSE);
}

Reporter GpxReader::here() const { return {*listener_, leadingLines_ + XML_GetCurrentLineNumber(parser_.get())}; }

bool GpxReader::tokenFits() {
  if (XML_GetCurrentByteCount(parser_.get()) <= static_cast<int>(kLongestText)) return true;
  refuse("a tag or comment is longer than 64 KiB");
  return false;
}

bool GpxReader::accepts(std::string_view name) {
  if (names_.contains(name)) return true;
  namesBytes_ += name.size();
  if (namesBytes_ > kLongestText) {
    refuse("the XML has too many different names");
    return false;
  }
  names_.emplace(name);
  return true;
}

void GpxReader::startElement(std::string_view name, const XML_Char** attributes) {
  ++depth_;
  begunDocument_ = true;
  if (!tokenFits() || !accepts(name)) return;
  for (auto attribute = attributes; *attribute; attribute += 2) {
    if (!accepts(*attribute)) return;
  }
  name = localName(name);
  if (depth_ == 1 && name != "gpx") refuse("this XML is no GPX: its outermost element is " + inQuotes(name));
  if (depth_ > kDeepestElement) refuse("the elements of the XML are nested too deeply");
  if (finished_) return;

  if (pointDepth_ == 0) {
    if (name == "trkpt") startPoint(attributes);
  } else if (depth_ == pointDepth_ + 1 && name == "extensions") {
    extensionsDepth_ = depth_;
  } else if (valueDepth_ == 0) {
    value_ = valueNamed(name);
    if (value_ != Value::none) valueDepth_ = depth_;
  }
}

void GpxReader::startPoint(const XML_Char** attributes) {
  hasPoints_ = true;
  std::string_view latitude, longitude;
  for (auto attribute = attributes; *attribute; attribute += 2) {
    if (localName(attribute[0]) == "lat") latitude = attribute[1];
    if (localName(attribute[0]) == "lon") longitude = attribute[1];
  }
  point_ = SourceFix{};
  point_.line = here().line;
  if (readCoordinate(point_, latitude, longitude, here())) pointDepth_ = depth_;
}

GpxReader::Value GpxReader::valueNamed(std::string_view name) const {
  const bool inPoint = depth_ == pointDepth_ + 1;
  if (inPoint && name == "time") return Value::time;
  if (inPoint && name == "ele") return Value::elevation;
  if (inPoint && name == "hdop") return Value::hdop;
  if (extensionsDepth_ != 0 && name == "accuracy") return Value::accuracy;
  if ((inPoint || extensionsDepth_ != 0) && name == "speed") return Value::speed;
  if ((inPoint || extensionsDepth_ != 0) && name == "course") return Value::course;
  return Value::none;
}

void GpxReader::endElement() {
  if (!tokenFits()) return;
  if (depth_ == valueDepth_) {
    takeValue();
    valueDepth_ = 0;
  }
  if (depth_ == extensionsDepth_) extensionsDepth_ = 0;
  if (depth_ == pointDepth_) {
    emitter_.emit(point_, *listener_);
    pointDepth_ = 0;
  }
  --depth_;
}

void GpxReader::addText(std::string_view text) {
  if (valueDepth_ == 0 || depth_ != valueDepth_) return;
  if (textTooLong_ || text_.size() + text.size() > kLongestText) {
    textTooLong_ = true;
    text_.clear();
  } else {
    text_.append(text);
  }
}

void GpxReader::takeValue() {
  if (textTooLong_) here().fault("a value is longer than 64 KiB and is left out of the fix");
  switch (value_) {
    case Value::time:
      readTime(point_, text_, here());
      break;
    case Value::elevation:
      readQuantity(point_, Quantity::altitude, text_, here());
      break;
    case Value::hdop:
      readQuantity(point_, Quantity::hdop, text_, here());
      break;
    case Value::accuracy:
      readQuantity(point_, Quantity::accuracy, text_, here());
      break;
    case Value::speed:
      readQuantity(point_, Quantity::speed, text_, here());
      break;
    case Value::course:
      readQuantity(point_, Quantity::course, text_, here());
      break;
    case Value::none:
      break;
  }
  text_.clear();
  textTooLong_ = false;
}

template <class Work>
void GpxReader::enter(void* reader, Work work) noexcept {
  GpxReader& self = *static_cast<GpxReader*>(reader);
  if (self.finished_) return;
  try {
    work(self);
  } catch (...) {
    self.thrown_ = std::current_exception();
    self.finished_ = true;
    XML_StopParser(self.parser_.get(), XML_FALSE);
  }
}

void XMLCALL GpxReader::onStart(void* reader, const XML_Char* name, const XML_Char** attributes) {
  enter(reader, [&](GpxReader& self) { self.startElement(name, attributes); });
}

void XMLCALL GpxReader::onEnd(void* reader, const XML_Char* /*name*/) {
  enter(reader, [](GpxReader& self) { self.endElement(); });
}

void XMLCALL GpxReader::onText(void* reader, const XML_Char* text, int length) {
  enter(reader, [&](GpxReader& self) { self.addText({text, static_cast<std::size_t>(length)}); });
}

/// Comments, instructions and the like; long runs of blanks, which come in pieces, do not count.
void XMLCALL GpxReader::onOther(void* reader, const XML_Char* text, int length) {
  if (length > 0 && *text == '<') enter(reader, [](GpxReader& self) { self.tokenFits(); });
}

void XMLCALL GpxReader::onDoctype(void* reader, const XML_Char* /*name*/, const XML_Char* /*systemId*/,
                                  const XML_Char* /*publicId*/, int hasInternalSubset) {
  // Declarations can make a small file expand without bound, and no recorder writes any.
  constexpr const char* kDeclares = "the XML declares entities or a document type of its own";
  if (hasInternalSubset != 0) enter(reader, [](GpxReader& self) { self.refuse(kDeclares); });
}

}  // namespace readers
