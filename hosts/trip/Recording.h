// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_TRIP_RECORDING_H
#define ZRCORE_HOSTS_TRIP_RECORDING_H

#include <readers/FixReader.h>

#include <cstdint>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>

namespace trip {

/// A recording that can't be read, as a whole or from some point on. `what()` says why and what to do, without the
/// name.
class RecordingError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// A file, or the standard input, that holds positions in one of the formats that the readers know.
class Recording {
 public:
  /// Opens the file and tells its format by its first bytes.
  /// @param path           "-": standard input
  /// @param isInterrupted  asked when a signal breaks a read off; true ends the recording there
  /// @throws RecordingError
  Recording(const std::string& path, std::function<bool()> isInterrupted);
  Recording(const Recording&) = delete;
  Recording& operator=(const Recording&) = delete;
  ~Recording();

  readers::Format format() const { return format_; }

  /// How much of the recording was handed to the listener, 0 to 1; nullopt for a stream, whose length nobody knows.
  std::optional<double> progress() const;

  /// Reads to the end, or until an interruption. Between two small steps of progress it calls `afterStep`.
  /// @throws RecordingError when the system can't read on; what was read before has been told.
  void read(readers::Listener& listener, const std::function<void()>& afterStep);

 private:
  bool readMore();
  readers::Format detect();
  void feed(readers::FixReader& reader, readers::Listener& listener, const std::function<void()>& afterStep);

  std::function<bool()> isInterrupted_;
  int descriptor_;
  std::optional<std::uint64_t> size_;  ///< bytes; of regular files only
  std::uint64_t handedOver_ = 0;       ///< bytes
  std::string buffer_;                 ///< read and not yet handed over
  readers::Format format_{};
};

}  // namespace trip

#endif
