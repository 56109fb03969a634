// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_ZRCORE_STANDARDOUTPUT_H
#define ZRCORE_HOSTS_ZRCORE_STANDARDOUTPUT_H

#include <string>
#include <string_view>

/// Where results go. A reader that goes away (`| head`) is not an error, and neither is a signal that ends the wait for
/// one that does not read: `isClosed` tells, and writing changes nothing more. Every other failure is a
/// trip::OutputError, and closes it too.
class StandardOutput {
 public:
  /// From now on the process ignores SIGPIPE, so that it sees a reader that has gone.
  StandardOutput();

  /// Buffered until `flush`, or until the buffer is full.
  void write(std::string_view bytes);
  void flush();
  bool isClosed() const { return isClosed_; }

 private:
  void failed(int error);

  std::string buffer_;
  bool isClosed_ = false;
};

#endif
