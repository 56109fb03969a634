// SPDX-License-Identifier: Apache-2.0
#include "NmeaReader.h"

#include <string>
#include <utility>
#include <variant>

#include "NmeaParts.h"
#include "Text.h"

namespace readers {
namespace {

constexpr auto kNowhere = std::string_view::npos;

/// Whether a text, which is no sentence, may be a part of one with a position.
bool mayHoldPosition(std::string_view text) {
  const auto holds = [&](std::string_view part) { return text.find(part) != kNowhere; };
  return (holds(",N,") || holds(",S,")) && (holds(",E,") || holds(",W,"));
}

/// How bad damage to a text is that begins with a `$`.
Severity severityOf(std::string_view text, bool isCut) {
  const std::string_view kind = kindOfSentence(text);
  if (const NmeaKind* const read = findNmeaKind(kind)) return read->severity;
  const bool isOther = !kind.empty() && text.find(',') != kNowhere;
  return !isOther && (isCut || mayHoldPosition(text)) ? Severity::fault : Severity::warning;
}

bool isTagBlock(std::string_view text) { return text.size() > 1 && text.front() == '\\' && text.back() == '\\'; }

}  // namespace

void NmeaReader::readLine(std::string_view text, const Reporter& reporter, Instants& instants) {
  text = trimmed(text);
  if (text.empty() || text.front() == '#') return;
  auto start = text.find('$');
  if (start != 0) readText(text.substr(0, start), start != kNowhere, reporter, instants);
  while (start != kNowhere) {
    const auto next = text.find('$', start + 1);
    if (next != start + 1) readSentence(text.substr(start, next - start), next == kNowhere, reporter, instants);
    start = next;
  }
}

/// A line, or what stands in it before the first sentence.
void NmeaReader::readText(std::string_view text, bool isBeforeSentence, const Reporter& reporter, Instants& instants) {
  if (text.find('!') != kNowhere) return;  // other ships' positions, not ours
  const bool isPosition = mayHoldPosition(text);
  if (isPosition && reporter.line == 1) {
    return reporter.warning("the input begins in the middle of a sentence, which is skipped");
  }
  const bool isLost = isPosition || text.find("\"TPV\"") != kNowhere;  // a daemon's report, and no object
  if (isLost) instants.loseTrack();
  if (!isBeforeSentence || isLost) {
    return reporter.tell(
        isLost ? Severity::fault : Severity::warning,
        "the line is skipped: no sentence begins with " + inQuotes(text.substr(0, 1)) + "; sentences begin with $");
  }
  if (isTagBlock(text) || std::exchange(toldBytesBefore_, true)) return;
  reporter.warning("bytes before a sentence are passed over; such sentences are read as the others");
}

void NmeaReader::readSentence(std::string_view text, bool isLast, const Reporter& reporter, Instants& instants) {
  const auto skip = [&](std::string_view why, std::string_view how) {
    const Severity severity = severityOf(text, reporter.cut && isLast);
    if (severity == Severity::fault) instants.loseTrack();
    reporter.tell(severity, "the sentence is skipped: " + std::string(why) + std::string(how));
  };
  const auto parsed = parseSentence(text);
  const auto* const sentence = std::get_if<NmeaSentence>(&parsed);
  if (!isLast && !(sentence && sentence->hasChecksum)) return skip("a second sentence begins within it", "");
  if (!sentence) return skip(std::get<std::string_view>(parsed), "; it was damaged on its way from the receiver");

  sawChecksum_ = sawChecksum_ || sentence->hasChecksum;
  if (reporter.cut && sawChecksum_ && !sentence->hasChecksum) return skip("it is not whole", "");
  const NmeaKind* const kind = findNmeaKind(sentence->kind);
  if (kind == nullptr) return readOtherNmea(*sentence, instants);
  const NmeaFields fields(*sentence);
  if (fields.count() < kind->fewestFields) return skip("it is not whole", "");
  if (!sentence->hasChecksum && withoutChecksum_++ == 0) {
    reporter.warning(
        "a sentence has no checksum, so damage in it cannot be seen; such sentences are taken as they are");
  }
  if (!kind->read(*sentence, fields, reporter, instants)) instants.loseTrack();
}

void NmeaReader::readEnd(const Reporter& reporter) {
  if (withoutChecksum_ < 2) return;
  reporter.warning(std::to_string(withoutChecksum_) + " sentences had no checksum and were taken as they are");
}

}  // namespace readers
