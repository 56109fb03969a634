// SPDX-License-Identifier: Apache-2.0
#include "TripView.h"

#include <trip/outputs/OutputError.h>
#include <zrcore/Interruption.h>

#include <algorithm>
#include <csignal>
#include <cstdio>

#include "ShownLines.h"
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
  if (shape == Shape::lines) shown_ = makeFixLines(output_);
  if (shape == Shape::json) shown_ = makeJsonLines(output_);
}

void TripView::writeMessage(std::string_view line) {
  if (live_) show([this] { live_->erase(); });
  Messages::writeToStandardError(line);
}

/// Does something with the standard output.
void TripView::show(const std::function<void()>& step) {
  if (output_.isClosed()) return;
  try {
    step();
  } catch (const trip::OutputError&) {
    if (!failure_) failure_ = std::current_exception();
  }
  if (output_.isClosed() && isPaced_ && !outputs_.empty() && interruption::signal() == 0) {
    live_.reset();
    messages_.say("the standard output is closed; what else was asked for goes on");
  }
}

void TripView::row(const trip::TripRow& row) {
  for (const auto& output : outputs_) output->row(row);
  if (live_ && row.index == 0) {
    if (const auto leftOut = TripTable::leftOut(Terminal::current().columns); !leftOut.empty()) messages_.say(leftOut);
  }
  show([&] {
    if (shown_) shown_->row(row);
    if (isPaced_) output_.flush();
    if (!live_) return;
    live_->changing().row(row);
    live_->refresh();
  });
  const auto hasRoom = [](const auto& output) { return output->hasRoom(); };
  if (std::all_of(outputs_.begin(), outputs_.end(), hasRoom)) return;
  std::raise(SIGXFSZ);  // the system would send it with a write in the midst of a row
}

void TripView::refresh() {
  show([this] {
    if (live_) live_->refresh();
  });
}

void TripView::remark(const readers::Remark& remark) {
  if (live_ && remark.severity == readers::Severity::fault) live_->changing().fault();
  messages_.remark(name_, remark);
}

void TripView::progress(std::optional<double> fraction) {
  show([this] { output_.flush(); });
  if (live_) live_->changing().setProgress(fraction);
}

bool TripView::wantsToStop() const { return interruption::signal() != 0 || (output_.isClosed() && outputs_.empty()); }

void TripView::finishOutputs(const trip::TripSummary& summary) {
  for (const auto& output : outputs_) {
    try {
      output->finish(summary);
    } catch (const std::exception&) {  // of a picture, too: no memory
      if (!failure_) failure_ = std::current_exception();
    }
  }
}

void TripView::finish(const trip::TripSummary& summary) {
  show([this] {
    if (live_) live_->draw();
  });
  finishOutputs(summary);  // first: a pipe that nobody reads may hold up the rest for ever
  show([&] {
    if (shown_) shown_->finish(summary);
    output_.flush();
  });
  live_.reset();  // what is said from now on stands below the table
  messages_.endRemarks(name_);
  if (interruption::signal() == SIGXFSZ) messages_.say(kFileLimitReached);
  if (saysSummary_) std::fputs(summaryText(summary).c_str(), stderr);
  if (failure_) std::rethrow_exception(failure_);
}

TripView::Shape ShapeOptions::shape() const {
  if (*json_) return TripView::Shape::json;
  if (*quiet_) return TripView::Shape::nothing;
  return Terminal::canRedraw() ? TripView::Shape::table : TripView::Shape::lines;
}
