// SPDX-License-Identifier: Apache-2.0
#include "GpxJournal.h"

#include <trip/OutputText.h>

#include <string_view>

namespace trip {

namespace {

constexpr std::string_view kBegin =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<gpx version=\"1.1\" creator=\"zrcore\" xmlns=\"http://www.topografix.com/GPX/1/1\" xmlns:zr=\"urn:zrcore:gpx\">\n"
    "<trk><trkseg>\n";
constexpr std::string_view kEnd = "</trkseg></trk></gpx>\n";

/// The beginning of the page to come: an instruction that ends with the page's last "?>", or, once a comment is open
/// before it, the end of that comment, the closing tags and an empty instruction.
constexpr std::string_view kCommentEnd = "<?zr -->";
constexpr std::string_view kInstructionEnd = "<?zr ?>\n";
constexpr std::string_view kCommentBegin = "<!--";

void appendElement(std::string& out, std::string_view name, double value) {
  ((out += '<') += name) += '>';
  appendNumber(out, value);
  ((out += "</") += name) += '>';
}

std::string pointOf(const TripRow& row) {
  std::string point = "<trkpt lat=\"";
  appendNumber(point, row.coordinate.latitude);
  point += "\" lon=\"";
  appendNumber(point, row.coordinate.longitude);
  point += "\">";
  if (row.altitudeMeters) appendElement(point, "ele", *row.altitudeMeters);
  if (row.secondsSince1970) ((point += "<time>") += timeText(*row.secondsSince1970)) += "</time>";
  std::string measured;
  if (row.accuracyMeters) appendElement(measured, "zr:accuracy", *row.accuracyMeters);
  if (row.speedMetersPerSecond) appendElement(measured, "zr:speed", *row.speedMetersPerSecond);
  if (row.courseDegrees) appendElement(measured, "zr:course", *row.courseDegrees);
  if (!measured.empty()) ((point += "<extensions>") += measured) += "</extensions>";
  return point += "</trkpt>\n";
}

}  // namespace

std::string GpxJournal::begin() {
  end_ = kBegin.size();
  size_ = kBegin.size() + kEnd.size();
  return std::string(kBegin).append(kEnd);
}

std::vector<GpxJournal::Write> GpxJournal::append(const TripRow& row) {
  std::vector<Write> writes;
  const std::string point = pointOf(row);
  if (end_ % kPageBytes + point.size() + kEnd.size() > kPageBytes) moveEndToNextPage(writes);
  writes.push_back({end_, point + std::string(kEnd)});  // longer than anything that stood behind the old end
  end_ += point.size();
  size_ = end_ + kEnd.size();
  return writes;
}

void GpxJournal::moveEndToNextPage(std::vector<Write>& writes) {
  const std::uint64_t page = (end_ / kPageBytes + 1) * kPageBytes;
  if (size_ < page) writes.push_back({size_, std::string(page - size_, ' ')});
  std::string next(kCommentEnd);
  (next += kEnd) += kInstructionEnd;
  writes.push_back({page, next});
  std::string opening(kCommentBegin);
  opening.resize(kEnd.size(), ' ');
  writes.push_back({end_, opening});
  end_ = page + kCommentEnd.size();
  size_ = page + next.size();
}

}  // namespace trip
