// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_LINUX_AUTOSOURCE_H
#define ZRCORE_LINUX_AUTOSOURCE_H

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <policy/BackOff.h>

#include "loop/Loop.h"
#include "positioning/PositionSource.h"

/// The first of several sources that answers. It stays the one for the whole run, also when it goes and another one
/// could take its place: positions of two sources are never mixed.
class AutoSource final : public PositionSource,
                         public std::enable_shared_from_this<AutoSource>,
                         private PositionSourceListener {
 public:
  using Make = std::function<std::shared_ptr<PositionSource>()>;

  /// @param candidates  in the order in which they are tried; not empty
  AutoSource(Loop& loop, std::vector<Make> candidates);
  ~AutoSource() override;

  std::string name() const override;
  bool hasHeading() const override { return isChosen_ && source_ && source_->hasHeading(); }
  void start(PositionSourceListener& listener) override;
  void stop() override;

 private:
  void tryNext();

  void sourceAnswers() override;
  void sourceFixes(const std::vector<ZRPositionFix>& fixes) override;
  void sourceHeading(const CLHeading& heading) override;
  void sourceFails(policy::PositioningFault fault, const std::string& detail) override;
  void sourceAuthorization(CLAuthorizationStatus status) override;
  void sourceSays(const std::string& text) override;

  Loop& loop_;
  std::vector<Make> candidates_;
  std::size_t tried_ = 0;  ///< of this round
  std::string failures_;   ///< of this round
  policy::BackOff backOff_;
  RunListener listener_;
  std::shared_ptr<PositionSource> source_;
  bool isChosen_ = false;
  std::unique_ptr<Loop::Wait> next_;
};

#endif
