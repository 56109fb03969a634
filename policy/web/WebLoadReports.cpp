// SPDX-License-Identifier: Apache-2.0
#include "web/WebLoadReports.h"

namespace policy {

void WebLoadReports::started() {
  const unsigned former = load_;
  titleIsKnown(former);  // the next load overtakes the title: what is known of it must do
  ++load_;
  state_ = State::loading;
  delegate_.start();
}

void WebLoadReports::failed(const std::function<void()>& report) {
  if (state_ != State::loading) return;
  state_ = State::idle;
  report();
}

void WebLoadReports::finished() {
  if (state_ != State::loading) return;  // of a load that has failed
  state_ = State::awaitingTitle;
  delegate_.askForTitle();
}

void WebLoadReports::titleIsKnown(unsigned load) {
  const bool hasMoved = state_ == State::moved;
  if ((state_ != State::awaitingTitle && !hasMoved) || load != load_) return;
  state_ = State::finished;
  if (hasMoved) delegate_.start();
  delegate_.finish();
}

void WebLoadReports::movedWithinPage() {
  if (state_ != State::finished) return;
  state_ = State::moved;
  delegate_.askForTitle();
}

void WebLoadReports::died(const std::function<void()>& report) {
  state_ = State::idle;
  report();
}

}  // namespace policy
