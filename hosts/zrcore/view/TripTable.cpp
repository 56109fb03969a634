// SPDX-License-Identifier: Apache-2.0
#include "TripTable.h"

#include <trip/OutputText.h>
#include <trip/Words.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

namespace {

using Style = Terminal::Style;

constexpr std::size_t kMostRows = 200;  // no terminal shows more

struct Column {
  std::string_view title;
  std::size_t width;
  std::string (*text)(const trip::TripRow& row);
};

/// "HH:MM:SS" out of the full time.
std::string timeOfDay(const trip::TripRow& row) {
  if (!row.secondsSince1970) return "-";
  const std::string time = trip::timeText(*row.secondsSince1970);
  const auto separator = time.find('T');
  return separator == std::string::npos ? "-" : time.substr(separator + 1, 8);
}

std::string mark(const trip::TripRow& row) {
  if (row.jump) return "J";
  return row.significant ? "S" : "";
}

const std::array<Column, 10> kColumns{{
    {"UTC", 8, timeOfDay},
    {"latitude", 10, [](const trip::TripRow& row) { return trip::fixedText(row.coordinate.latitude, 5); }},
    {"longitude", 10, [](const trip::TripRow& row) { return trip::fixedText(row.coordinate.longitude, 5); }},
    {"acc m", 6, [](const trip::TripRow& row) { return trip::fixedText(row.accuracyMeters, 1); }},
    {"course", 6, [](const trip::TripRow& row) { return trip::fixedText(row.courseDegrees, 1); }},
    {"~course", 7, [](const trip::TripRow& row) { return trip::fixedText(row.smoothCourseDegrees, 1); }},
    {"km/h", 6,
     [](const trip::TripRow& row) { return trip::fixedText(trip::kilometersPerHour(row.speedMetersPerSecond), 1); }},
    {"~km/h", 6,
     [](const trip::TripRow& row) { return trip::fixedText(trip::kilometersPerHour(trip::knownSmoothSpeed(row)), 1); }},
    {"mark", 4, mark},
    {"stable", 6, [](const trip::TripRow& row) -> std::string { return row.stable ? "yes" : ""; }},
}};

/// One table line; `cell` tells what stands in a column.
template <class Cell>
std::string tableLine(int columns, const Cell& cell) {
  std::string line;
  for (const Column& column : kColumns) {
    const std::string text = cell(column);
    const std::size_t blanks = 1 + (column.width > text.size() ? column.width - text.size() : 0);
    if (line.size() + blanks + text.size() > static_cast<std::size_t>(columns)) break;
    line.append(blanks, ' ').append(text);
  }
  return line;
}

Style styleOf(const trip::TripRow& row) {
  return row.jump ? Style::red : row.significant ? Style::green : Style::plain;
}

std::string bar(double fraction, int width, bool unicode) {
  const int done = static_cast<int>(std::lround(std::clamp(fraction, 0.0, 1.0) * width));
  std::string text;
  for (int i = 0; i < width; ++i) {
    if (unicode) {
      text += i < done ? "━" : "┄";
    } else {
      text += i < done ? '=' : '.';
    }
  }
  return text;
}

}  // namespace

std::string TripTable::leftOut(int columns) {
  std::size_t width = 0;
  std::string names;
  for (const Column& column : kColumns) {
    width += 1 + column.width;
    if (width > static_cast<std::size_t>(std::max(columns, 0))) (names += names.empty() ? "" : ", ") += column.title;
  }
  if (names.empty()) return names;
  return "a terminal of " + trip::countText(static_cast<std::uint64_t>(std::max(columns, 0)), "column", "columns") +
         " leaves out " + names + "; " + std::to_string(width) + " show all";
}

void TripTable::row(const trip::TripRow& row) {
  ++fixes_;
  rows_.push_back(row);
  if (rows_.size() > kMostRows) rows_.pop_front();
}

std::string TripTable::statusLine(const Terminal& terminal) const {
  std::string text(1, ' ');
  if (fraction_) text += trip::fixedText(std::floor(*fraction_ * 100.0), 0) + " %  ";
  text += trip::countText(fixes_, "fix", "fixes");
  if (faults_ > 0) text += ", " + trip::countText(faults_, "fault", "faults");
  text.resize(std::min(text.size(), static_cast<std::size_t>(std::max(terminal.columns, 0))));

  constexpr int kWidestBar = 40, kNarrowestBar = 5;
  const int width = std::min(kWidestBar, terminal.columns - 1 - static_cast<int>(text.size()));
  if (!fraction_ || width < kNarrowestBar) return text;
  std::string line(1, ' ');
  return line += terminal.styled(Style::green, bar(*fraction_, width, terminal.unicode)) + text;
}

std::vector<std::string> TripTable::lines(const Terminal& terminal) const {
  std::size_t linesAroundRows = 3;  // the columns' titles, the status, and the one on which the cursor stands
  std::vector<std::string> lines;
  if (!heading_.empty() && terminal.rows > 4) {
    lines.push_back((' ' + heading_).substr(0, static_cast<std::size_t>(std::max(terminal.columns, 0))));
    ++linesAroundRows;
  }
  const auto title = tableLine(terminal.columns, [](const Column& column) { return std::string(column.title); });
  lines.push_back(terminal.styled(Style::bold, title));

  const auto height = static_cast<std::size_t>(std::max(terminal.rows, 1));
  const std::size_t fitting = height > linesAroundRows ? height - linesAroundRows : 1;
  for (std::size_t i = rows_.size() - std::min(fitting, rows_.size()); i < rows_.size(); ++i) {
    const auto& row = rows_[i];
    const auto line = tableLine(terminal.columns, [&row](const Column& column) { return column.text(row); });
    lines.push_back(terminal.styled(styleOf(row), line));
  }
  lines.push_back(statusLine(terminal));
  return lines;
}
