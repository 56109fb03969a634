// SPDX-License-Identifier: Apache-2.0
#include "PlaceDocument.h"

#include <ZRCore/ZRPrintableText.h>

#include <algorithm>
#include <utility>

#include "Outline.h"
#include "ResultBuilder.h"

namespace place {

namespace {

/// What a service says instead of a result; empty when it says nothing.
std::string serviceError(const ZROHMDictionary& result) {
  const ZROHMValue* error = result.find("error");
  if (error != nullptr && error->dictionary() != nullptr) error = error->dictionary()->find("message");
  return error != nullptr && error->string() != nullptr ? *error->string() : std::string();
}

/// "nominatim ("lon", "display_name", "osm_id")"
std::string keysOf(ZRGeoAddressDialect dialect) {
  constexpr std::size_t kMostKeys = 3;
  std::string text(ZRGeoAddressDialectName(dialect));
  const char* separator = " (";
  const auto keys = ZRGeoAddressDialectRecogniserKeys(dialect);
  for (const std::string_view key : keys.first(std::min(keys.size(), kMostKeys))) {
    text.append(std::exchange(separator, ", ")).append("\"").append(key).append("\"");
  }
  return text + (keys.size() > kMostKeys ? " …)" : ")");
}

/// Takes a position off the Earth away. @return whether it did.
bool dropOutOfRange(ZRGeoAddress& address) {
  bool dropped = false;
  if (!CLLocationCoordinate2DIsValid(address.coordinate())) {
    address.setCoordinate({});
    dropped = true;
  }
  if (!CLLocationCoordinate2DIsValid(address.displayCoordinate())) {
    address.setDisplayCoordinate({});
    dropped = true;
  }
  return dropped;
}

class Reader final : public ZRJSONListener {
 public:
  Reader(const Outline& outline, std::optional<ZRGeoAddressDialect> dialect, const std::function<void(Result)>& take)
      : outline_(outline), dialect_(dialect), take_(take) {}

  void beginObject() override;
  void key(std::string key) override;
  void endObject() override;
  void beginArray() override;
  void endArray() override;
  void scalar(ZROHMValue value) override;

  /// @param error  what is wrong with the document
  Account finish(const std::optional<NSError>& error);

 private:
  using Kind = Outline::Use::Kind;

  /// What may stand in an open object or array that is looked into.
  enum class Inside { results, listsUnderListKeys, whatHoldsResults };

  bool isResultExpected(bool isArray, Kind kind) const;
  void end();
  void read(std::optional<ZROHMValue> result);
  std::string reasonForNothing(const ZROHMDictionary& result) const;
  template <class Text>
  void fault(const Text& text);

  const Outline& outline_;
  std::optional<ZRGeoAddressDialect> dialect_;  // the one that was asked for
  const std::function<void(Result)>& take_;
  std::size_t begun_ = 0;  // objects and arrays
  std::vector<Inside> levels_;
  std::size_t passedOver_ = 0;  // open objects and arrays in them in which there is nothing
  std::string key_;             // the last one
  ResultBuilder builder_;
  ZRGeoAddressDialect resultDialect_ = ZRGeoAddressDialect::documented;  // of what is being built
  std::uint64_t number_ = 0;
  Account account_;
};

/// @param text  makes the fault's text, if it is kept
template <class Text>
void Reader::fault(const Text& text) {
  if (++account_.faultCount <= Account::kMostFaults) account_.faults.push_back({number_, text()});
}

/// Whether a result or a list of them may begin here.
bool Reader::isResultExpected(bool isArray, Kind kind) const {
  if (levels_.empty() || levels_.back() == Inside::results) return true;
  if (levels_.back() == Inside::listsUnderListKeys) return isArray && isListKey(key_);
  return kind != Kind::unknown;
}

void Reader::beginObject() {
  const Outline::Use use = outline_.use(begun_++);
  if (builder_.isOpen()) {
    builder_.beginObject();
  } else if (passedOver_ > 0 || !isResultExpected(false, use.kind)) {
    ++passedOver_;
  } else if (use.kind == Kind::listsInside) {
    levels_.push_back(Inside::listsUnderListKeys);
  } else if (use.kind == Kind::inside) {
    levels_.push_back(Inside::whatHoldsResults);
  } else {
    resultDialect_ = dialect_.value_or(use.dialect);
    builder_.beginObject();
  }
}

void Reader::beginArray() {
  const Kind kind = outline_.use(begun_++).kind;
  if (builder_.isOpen()) {
    builder_.beginArray();
  } else if (passedOver_ > 0 || !isResultExpected(true, kind)) {
    ++passedOver_;
  } else if (kind != Kind::unknown || levels_.empty() || levels_.back() == Inside::listsUnderListKeys) {
    levels_.push_back(Inside::results);
  } else {
    ++number_;
    fault([] { return "is no object"; });
    ++passedOver_;
  }
}

void Reader::key(std::string key) {
  if (builder_.isOpen()) {
    builder_.key(std::move(key));
  } else {
    key_ = std::move(key);
  }
}

void Reader::scalar(ZROHMValue value) {
  if (builder_.isOpen()) {
    builder_.scalar(std::move(value));
  } else if (passedOver_ == 0 && !levels_.empty() && levels_.back() == Inside::results) {
    ++number_;
    fault([] { return "is no object"; });
  }
}

void Reader::endObject() {
  if (!builder_.isOpen()) return end();
  builder_.endObject();
  if (!builder_.isOpen()) read(builder_.take());
}

void Reader::endArray() { builder_.isOpen() ? builder_.endArray() : end(); }

void Reader::end() {
  if (passedOver_ > 0) {
    --passedOver_;
  } else {
    levels_.pop_back();
  }
}

void Reader::read(std::optional<ZROHMValue> result) {
  ++number_;
  if (!result) return fault([] { return "is larger than any result (a megabyte beside its lists) and was left out"; });
  ZRGeoAddressReading reading = ZRReadGeoAddress(*result, resultDialect_);
  if (!reading.address || !reading.hasKnownKeys) return fault([&] { return reasonForNothing(*result->dictionary()); });
  account_.unknownCount += reading.unknownKeys.size();
  for (const std::string& key : reading.unknownKeys) {
    if (account_.unknownKeys.size() < Account::kMostKeys || account_.unknownKeys.contains(key)) {
      ++account_.unknownKeys[key];
    }
  }
  for (const std::string& key : reading.unusableKeys) {
    fault([&] { return '"' + ZRPrintableText(key, ZRLongestExcerpt) + "\" cannot be used as it stands"; });
  }
  if (dropOutOfRange(*reading.address)) fault([] { return "the position is out of range and was left out"; });
  take_({number_, ZRPlace::placeFromGeoAddress(std::move(reading.address))});
}

std::string Reader::reasonForNothing(const ZROHMDictionary& result) const {
  const std::string error = serviceError(result);
  if (!error.empty()) return "the service answered: " + ZRPrintableText(error, ZRLongestExcerpt);
  if (dialect_) return "holds no result in the dialect " + keysOf(*dialect_) + "; choose another with --dialect";
  std::string text = "holds no result in any dialect; looked for the keys of ";
  const char* separator = "";
  for (const ZRGeoAddressDialect dialect : ZRGeoAddressDialects()) {
    text += std::exchange(separator, ", ") + keysOf(dialect);
  }
  return text;
}

Account Reader::finish(const std::optional<NSError>& error) {
  std::string text;
  if (error) {
    text = error->localizedDescription();
  } else if (number_ == 0) {
    text = "holds no result";
  }
  if (!text.empty()) {
    ++account_.faultCount;
    account_.faults.push_back({0, std::move(text)});
  }
  return std::move(account_);
}

}  // namespace

Account readDocument(std::string_view bytes, std::optional<ZRGeoAddressDialect> dialect,
                     const std::function<void(Result)>& take) {
  Outline outline(dialect);
  static_cast<void>(ZRReadJSON(bytes, ZRJSONFragments::refused, outline));  // the second time it is reported
  outline.finish();
  Reader reader(outline, dialect, take);
  const auto error = ZRReadJSON(bytes, ZRJSONFragments::refused, reader);
  return reader.finish(error);
}

std::optional<ZRGeoAddressDialect> dialectNamed(std::string_view name) {
  for (const ZRGeoAddressDialect dialect : ZRGeoAddressDialects()) {
    if (ZRGeoAddressDialectName(dialect) == name) return dialect;
  }
  return std::nullopt;
}

}  // namespace place
