// SPDX-License-Identifier: Apache-2.0
#include "GpxRecording.h"

#include <unistd.h>

#include <cerrno>
#include <utility>

#include "OutputError.h"

namespace trip {

GpxRecording::GpxRecording(std::filesystem::path target, bool force) : target_(std::move(target)) {
  OutputFile empty(target_, force);
  empty.write(journal_.begin());
  empty.commit();
  file_.reset(std::fopen(target_.c_str(), "r+b"));
  if (!file_) throw OutputError::ofSystem(target_, errno);
}

void GpxRecording::row(const TripRow& row) {
  for (const GpxJournal::Write& write : journal_.append(row)) {
    const auto written =
        ::pwrite(::fileno(file_.get()), write.bytes.data(), write.bytes.size(), static_cast<off_t>(write.offset));
    if (written < 0) throw OutputError::ofSystem(target_, errno);
    if (static_cast<std::size_t>(written) != write.bytes.size()) throw OutputError::ofSystem(target_, ENOSPC);
  }
}

}  // namespace trip
