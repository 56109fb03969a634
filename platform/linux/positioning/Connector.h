// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_LINUX_CONNECTOR_H
#define ZRCORE_LINUX_CONNECTOR_H

#include <owners/FileDescriptor.h>
#include <platform/Callback.h>
#include <policy/PositioningSource.h>

#include <memory>
#include <string>

/// Opens connections to one place. Loop's thread.
class Connector {
 public:
  /// Gets an open, non-blocking descriptor, or what the system says.
  using Done = Callback<FileDescriptor, const std::string&>;

  Connector() = default;
  Connector(const Connector&) = delete;
  Connector& operator=(const Connector&) = delete;
  virtual ~Connector() = default;

  /// Begins to connect; `done` is called once, perhaps before this returns. One attempt at a time.
  virtual void connect(Done done) = 0;
  /// Gives an attempt up: its `done` is not called any more.
  virtual void cancel() {}
};

struct _GMainContext;

/// Connects to gpsd over TCP or a UNIX socket.
std::unique_ptr<Connector> makeSocketConnector(const policy::PositioningSource& source, _GMainContext* context);

/// Opens a serial device, a FIFO, or a UNIX socket, whichever `path` is.
std::unique_ptr<Connector> makeReceiverConnector(const std::string& path, _GMainContext* context);

#endif
