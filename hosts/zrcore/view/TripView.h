// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_ZRCORE_VIEW_TRIPVIEW_H
#define ZRCORE_HOSTS_ZRCORE_VIEW_TRIPVIEW_H

#include <trip/replay/Pacer.h>
#include <trip/replay/TripReplay.h>
#include <zrcore/CommandLine.h>
#include <zrcore/Messages.h>
#include <zrcore/StandardOutput.h>

#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "LiveTable.h"

/// Shows a replay while it runs: the fixes on the standard output (a live table, lines, JSON or nothing), the messages
/// on the standard error stream, and all of it in the outputs that were asked for. Whatever becomes of the standard
/// output, those go on to the end.
class TripView final : public trip::ReplayListener {
 public:
  enum class Shape { table, lines, json, nothing };

  /// @param isPaced  fixes come in their own time, so each is shown at once
  /// @param filter   its name, for the table's head
  TripView(Shape shape, bool isPaced, const std::string& filter);
  TripView(const TripView&) = delete;
  TripView& operator=(const TripView&) = delete;

  /// The recording's name in messages.
  void setName(std::string name) { name_ = std::move(name); }
  void addOutput(std::unique_ptr<trip::TripOutput> output) { outputs_.push_back(std::move(output)); }

  trip::Waiter& waiter() { return waiter_; }
  /// What takes the place of sleeping between fixes.
  void sleepBy(std::function<void(double seconds)> sleep) { waiter_.sleepBy(std::move(sleep)); }
  Messages& messages() { return messages_; }

  void row(const trip::TripRow& row) override;
  void remark(const readers::Remark& remark) override;
  void progress(std::optional<double> fraction) override;
  bool wantsToStop() const override;
  /// Time went by: shows what is not shown yet.
  void refresh();

  /// Completes everything that is shown or written: what can be is complete before a failure is thrown.
  void finish(const trip::TripSummary& summary);

 private:
  void writeMessage(std::string_view line);
  void show(const std::function<void()>& step);
  void finishOutputs(const trip::TripSummary& summary);

  bool isPaced_;
  bool saysSummary_;
  std::string name_;
  StandardOutput output_;
  trip::SystemWaiter waiter_;
  Messages messages_;
  std::unique_ptr<LiveTable> live_;
  std::unique_ptr<trip::TripOutput> shown_;  ///< on the standard output, line by line
  std::vector<std::unique_ptr<trip::TripOutput>> outputs_;
  std::exception_ptr failure_;  ///< the first
};

/// How fixes are shown on the standard output, as the command line says it.
class ShapeOptions {
 public:
  explicit ShapeOptions(Options& all)
      : json_(all, "--json", "One JSON object per fix; the last line is {\"summary\": ...}"),
        quiet_(all, "--quiet", "Show no fixes", {rule::excludes(json_)}) {}
  TripView::Shape shape() const;

 private:
  Option<bool> json_, quiet_;
};

#endif
