// SPDX-License-Identifier: Apache-2.0
#include "ReceiverReader.h"

namespace readers {

void ReceiverReader::readLine(std::string_view text, const Reporter& reporter) {
  if (const auto first = text.find_first_not_of(" \t"); first != std::string_view::npos && text[first] == '{') {
    reports_.readLine(text.substr(first), reporter, instants_);
  } else {
    sentences_.readLine(text, reporter, instants_);
  }
}

void ReceiverReader::readEnd(const Reporter& reporter) {
  instants_.end(reporter.listener);
  sentences_.readEnd(reporter);
}

}  // namespace readers
