// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_TRIP_REPLAY_RECORDING_H
#define ZRCORE_HOSTS_TRIP_REPLAY_RECORDING_H

#include <owners/FileDescriptor.h>
#include <packed/MaybeGzip.h>
#include <readers/FixReader.h>

#include <cstdint>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>

namespace trip {

/// A recording that cannot be read, as a whole or from some point on. `what()` says why and what to do, without the
/// name.
class RecordingError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// A file, or the standard input, that holds positions in one of the formats that the readers know, packed by gzip or
/// not.
class Recording {
 public:
  /// Opens the file and tells its format by its first bytes.
  /// @param path           "-": standard input
  /// @param isInterrupted  asked when a signal breaks a read off; true ends the recording there
  /// @throws RecordingError
  Recording(const std::string& path, std::function<bool()> isInterrupted);

  readers::Format format() const { return format_; }

  /// How much of the recording was handed to the listener, 0 to 1; nullopt for a stream, whose length nobody knows.
  std::optional<double> progress() const;

  /// Reads to the end, or until an interruption. Between two small steps of progress it calls `afterStep`.
  /// @throws RecordingError when the system cannot read on, or a packed file is damaged; what was read before has been
  ///                        reported.
  void read(readers::Listener& listener, const std::function<void()>& afterStep);

 private:
  bool readMore();
  readers::Format detect();
  void feed(readers::FixReader& reader, readers::Listener& listener, const std::function<void()>& afterStep);

  std::function<bool()> isInterrupted_;
  FileDescriptor file_;
  std::optional<std::uint64_t> size_;  ///< bytes; of regular files only
  double handedOver_ = 0.0;            ///< bytes of the file
  packed::MaybeGzip unpacking_;
  std::size_t taken_ = 0;  ///< bytes of the file that the buffer holds
  std::string buffer_;     ///< unpacked, and not yet handed over
  std::string fault_;      ///< of a packed file
  readers::Format format_{};
};

}  // namespace trip

#endif
