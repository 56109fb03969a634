// SPDX-License-Identifier: Apache-2.0
#include "positioning/Connector.h"

#include <fcntl.h>
#include <gio/gio.h>
#include <gio/gunixsocketaddress.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <owners/GLib.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <termios.h>

#include <cerrno>
#include <cstring>
#include <utility>

#include "loop/ContextScope.h"
#include "loop/FromC.h"

namespace {

/// Lets the system find out within half a minute that the other host has gone without a word: who only listens would
/// never know. Means nothing to a UNIX socket.
void keepAsking(int socket) {
  const std::pair<int, int> seconds[] = {{TCP_KEEPIDLE, 15}, {TCP_KEEPINTVL, 5}, {TCP_KEEPCNT, 3}};
  const int on = 1;
  ::setsockopt(socket, SOL_SOCKET, SO_KEEPALIVE, &on, sizeof on);
  for (const auto& [option, value] : seconds) ::setsockopt(socket, IPPROTO_TCP, option, &value, sizeof value);
}

/// Connects with GLib's socket client, which looks names up without blocking and tries all addresses of a host.
class SocketConnector final : public Connector {
 public:
  /// @param address  taken
  SocketConnector(GSocketConnectable* address, GMainContext* context) : address_(address), context_(context) {}
  ~SocketConnector() override { SocketConnector::cancel(); }

  void connect(Done done) override {
    cancel();
    cancellable_.reset(g_cancellable_new());
    const ContextScope scope(context_);
    g_autoptr(GSocketClient) client = g_socket_client_new();
    g_socket_client_set_enable_proxy(client, FALSE);
    // The attempt owns its `done`: it ends after a cancellation, when this object may be gone.
    g_socket_client_connect_async(client, address_.get(), cancellable_.get(), from_c::entry(kOnConnected),
                                  new Attempt{std::move(done), owners::refTo(cancellable_.get())});
  }

  void cancel() override {
    if (cancellable_) g_cancellable_cancel(cancellable_.get());
    cancellable_.reset();
  }

 private:
  struct Attempt {
    Done done;
    owners::Ref<GCancellable> cancellable;
  };

  static constexpr auto kOnConnected = [](GObject* client, GAsyncResult* result, gpointer data) {
    const std::unique_ptr<Attempt> attempt(static_cast<Attempt*>(data));
    g_autoptr(GError) error = nullptr;
    g_autoptr(GSocketConnection) connection = g_socket_client_connect_finish(G_SOCKET_CLIENT(client), result, &error);
    FileDescriptor descriptor;
    if (connection != nullptr) {
      // A descriptor of our own, because the connection closes its one.
      descriptor =
          FileDescriptor(::fcntl(g_socket_get_fd(g_socket_connection_get_socket(connection)), F_DUPFD_CLOEXEC, 0));
      keepAsking(descriptor.get());
    }
    const std::string failure = error != nullptr ? error->message : "";
    if (g_cancellable_is_cancelled(attempt->cancellable.get()) == FALSE) attempt->done(std::move(descriptor), failure);
  };

  owners::Ref<GSocketConnectable> address_;
  GMainContext* context_;
  owners::Ref<GCancellable> cancellable_;
};

/// Lets bytes through as they come: no echo, no line editing, no characters that stop the flow. The speed stays the one
/// that the device has.
void makeRaw(int descriptor) {
  termios settings{};
  if (::tcgetattr(descriptor, &settings) != 0) return;
  ::cfmakeraw(&settings);
  settings.c_cflag |= CLOCAL | CREAD;
  ::tcsetattr(descriptor, TCSANOW, &settings);
}

/// Opens the path anew each time: a receiver that was unplugged may come back as another kind of file.
class ReceiverConnector final : public Connector {
 public:
  ReceiverConnector(std::string path, GMainContext* context) : path_(std::move(path)), context_(context) {}

  void connect(Done done) override {
    struct stat status {};
    if (::stat(path_.c_str(), &status) == 0) {
      if (S_ISSOCK(status.st_mode)) return connectToSocket(std::move(done));
      if (S_ISREG(status.st_mode) || S_ISDIR(status.st_mode)) {
        return done({}, "it is no device and no socket; recordings are given as file:PATH");
      }
    }
    FileDescriptor descriptor(::open(path_.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    if (!descriptor.isOpen()) return done({}, std::strerror(errno));
    if (::isatty(descriptor.get()) == 1) makeRaw(descriptor.get());
    done(std::move(descriptor), "");
  }

  void cancel() override { socket_.reset(); }

 private:
  void connectToSocket(Done done) {
    socket_ =
        std::make_unique<SocketConnector>(G_SOCKET_CONNECTABLE(g_unix_socket_address_new(path_.c_str())), context_);
    socket_->connect(std::move(done));
  }

  std::string path_;
  GMainContext* context_;
  std::unique_ptr<SocketConnector> socket_;
};

}  // namespace

std::unique_ptr<Connector> makeSocketConnector(const policy::PositioningSource& source, GMainContext* context) {
  GSocketConnectable* const address = source.path.empty()
                                          ? g_network_address_new(source.host.c_str(), source.port)
                                          : G_SOCKET_CONNECTABLE(g_unix_socket_address_new(source.path.c_str()));
  return std::make_unique<SocketConnector>(address, context);
}

std::unique_ptr<Connector> makeReceiverConnector(const std::string& path, GMainContext* context) {
  return std::make_unique<ReceiverConnector>(path, context);
}
