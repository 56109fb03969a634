// SPDX-License-Identifier: Apache-2.0
#include "TripView.h"

#include <cstdio>
#include <iterator>
#include <utility>

#include "FixLines.h"
#include "Interruption.h"
#include "JsonLines.h"
#include "SummaryText.h"

TripView::TripView(Shape shape, bool isPaced, const std::string& filter)
    : isPaced_(isPaced),
      saysSummary_(shape != Shape::json),
      waiter_([this] {
        refresh();
        return wantsToStop();
      }),
      messages_([this](std::string_view line) { writeMessage(line); }) {
  if (shape == Shape::table) {
    live_ = std::make_unique<LiveTable>(output_, waiter_, Terminal::current);
    live_->changing().setHeading("filter: " + filter);
  }
  if (shape == Shape::lines) outputs_.push_back(std::make_unique<FixLines>(output_));
  if (shape == Shape::json) outputs_.push_back(std::make_unique<JsonLines>(output_));
}

void TripView::addOutputs(std::vector<std::unique_ptr<trip::TripOutput>> outputs) {
  std::move(outputs.begin(), outputs.end(), std::back_inserter(outputs_));
}

void TripView::writeMessage(std::string_view line) {
  if (live_) live_->erase();
  std::fprintf(stderr, "%.*s\n", static_cast<int>(line.size()), line.data());
}

void TripView::row(const trip::TripRow& row) {
  for (const auto& output : outputs_) output->row(row);
  if (isPaced_) output_.flush();
  if (!live_) return;
  live_->changing().row(row);
  live_->refresh();
}

void TripView::refresh() {
  if (live_) live_->refresh();
}

void TripView::remark(const readers::Remark& remark) {
  if (live_ && remark.severity == readers::Severity::fault) live_->changing().fault();
  messages_.remark(name_, remark);
}

void TripView::progress(std::optional<double> fraction) {
  output_.flush();
  if (live_) live_->changing().setProgress(fraction);
}

bool TripView::wantsToStop() const { return interruption::signal() != 0 || output_.isClosed(); }

void TripView::finish(const trip::TripSummary& summary) {
  if (live_) live_->draw();
  for (const auto& output : outputs_) output->finish(summary);
  output_.flush();
  live_.reset();  // what is said from now on stands below the table
  messages_.endRemarks(name_);
  if (saysSummary_) std::fputs(summaryText(summary).c_str(), stderr);
}
