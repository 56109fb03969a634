// SPDX-License-Identifier: Apache-2.0
#include "HTTPTestServer.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <optional>
#include <stdexcept>

namespace {

/// Reads requests from a connection, one after the other.
class RequestReader {
 public:
  explicit RequestReader(int socket) : socket_(socket) {}

  /// @return nothing at the end of the connection, and for what cannot be the beginning of a request
  std::optional<HTTPTestServer::Request> next() {
    std::size_t end = 0;
    while ((end = buffer_.find("\r\n\r\n")) == std::string::npos) {
      if (!receive() || !std::isupper(static_cast<unsigned char>(buffer_[0]))) return std::nullopt;
    }
    HTTPTestServer::Request request = parsed(buffer_.substr(0, end + 2));
    buffer_.erase(0, end + 4);
    const std::string length = request.header("content-length");
    const std::size_t size = length.empty() ? 0 : std::stoul(length);
    while (buffer_.size() < size) {
      if (!receive()) return std::nullopt;
    }
    request.body = buffer_.substr(0, size);
    buffer_.erase(0, size);
    return request;
  }

 private:
  bool receive() {
    char bytes[16384];
    const ssize_t count = ::recv(socket_, bytes, sizeof bytes, 0);
    if (count > 0) buffer_.append(bytes, static_cast<std::size_t>(count));
    return count > 0;
  }

  static HTTPTestServer::Request parsed(const std::string& head) {
    HTTPTestServer::Request request;
    const auto method = head.find(' '), target = head.find(' ', method + 1), first = head.find("\r\n");
    request.method = head.substr(0, method);
    request.target = head.substr(method + 1, target - method - 1);
    for (std::size_t begin = first + 2, end = 0; (end = head.find("\r\n", begin)) != std::string::npos;
         begin = end + 2) {
      const std::string line = head.substr(begin, end - begin);
      const auto colon = line.find(':');
      if (colon == std::string::npos) continue;
      std::string name = line.substr(0, colon);
      std::transform(name.begin(), name.end(), name.begin(), [](unsigned char c) { return std::tolower(c); });
      const auto value = line.find_first_not_of(' ', colon + 1);
      request.headers.emplace_back(name, value == std::string::npos ? "" : line.substr(value));
    }
    return request;
  }

  int socket_;
  std::string buffer_;
};

}  // namespace

std::string HTTPTestServer::Request::header(std::string_view name) const {
  for (const auto& [key, value] : headers) {
    if (key == name) return value;
  }
  return {};
}

bool HTTPTestServer::Connection::send(std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t count = ::send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (count <= 0) {
      isOver_ = true;
      return false;
    }
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
  return true;
}

void HTTPTestServer::Connection::reset() {
  const linger atOnce{.l_onoff = 1, .l_linger = 0};
  ::setsockopt(socket_, SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
  isOver_ = true;
}

void HTTPTestServer::Connection::waitForClient() {
  char bytes[256];
  while (::recv(socket_, bytes, sizeof bytes, 0) > 0) {
  }
  isOver_ = true;
}

HTTPTestServer::Handler HTTPTestServer::answering(int status, std::string body, std::string headers) {
  std::string answer = "HTTP/1.1 " + std::to_string(status) + " Test\r\n" + headers;
  if (status != 204) answer += "Content-Length: " + std::to_string(body.size()) + "\r\n";
  answer += "\r\n" + body;
  return [answer = std::move(answer)](const Request&, Connection& connection) { connection.send(answer); };
}

HTTPTestServer::Handler HTTPTestServer::redirecting(std::string location) {
  return answering(302, "elsewhere", "Location: " + location + "\r\n");
}

HTTPTestServer::Handler HTTPTestServer::sending(std::string bytes) {
  return [bytes = std::move(bytes)](const Request&, Connection& connection) {
    connection.send(bytes);
    connection.close();
  };
}

HTTPTestServer::HTTPTestServer() { start(); }

HTTPTestServer::~HTTPTestServer() { stop(); }

void HTTPTestServer::on(const std::string& path, Handler handler) {
  const std::lock_guard lock(mutex_);
  handlers_[path] = std::move(handler);
}

void HTTPTestServer::onOthers(Handler handler) {
  const std::lock_guard lock(mutex_);
  others_ = std::move(handler);
}

void HTTPTestServer::start() {
  listener_ = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  const int on = 1;
  ::setsockopt(listener_, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  address.sin_port = htons(port_);
  socklen_t size = sizeof address;
  auto* const generic = reinterpret_cast<sockaddr*>(&address);
  if (::bind(listener_, generic, size) != 0 || ::listen(listener_, 512) != 0 ||
      ::getsockname(listener_, generic, &size) != 0) {
    throw std::runtime_error("HTTPTestServer: no port to listen on");
  }
  port_ = ntohs(address.sin_port);
  acceptor_ = std::thread([this] { accept(); });
}

void HTTPTestServer::stop() {
  if (listener_ < 0) return;
  ::shutdown(listener_, SHUT_RDWR);  // wakes the acceptor
  acceptor_.join();
  ::close(listener_);
  listener_ = -1;
  std::vector<std::thread> threads;
  {
    const std::lock_guard lock(mutex_);
    for (const int socket : sockets_) ::shutdown(socket, SHUT_RDWR);
    threads.swap(threads_);
  }
  for (std::thread& thread : threads) thread.join();
}

std::vector<HTTPTestServer::Request> HTTPTestServer::requests() const {
  const std::lock_guard lock(mutex_);
  return requests_;
}

int HTTPTestServer::connections() const {
  const std::lock_guard lock(mutex_);
  return connections_;
}

void HTTPTestServer::accept() {
  for (;;) {
    const int socket = ::accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
    if (socket < 0) return;
    const int on = 1;
    ::setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);  // an answer in two writes would wait 40 ms
    const std::lock_guard lock(mutex_);
    ++connections_;
    sockets_.insert(socket);
    threads_.emplace_back([this, socket] { serve(socket); });
  }
}

void HTTPTestServer::serve(int socket) {
  RequestReader reader(socket);
  Connection connection(socket);
  while (!connection.isOver_) {
    const auto request = reader.next();
    if (!request) break;
    handlerOf (*request)(*request, connection);
  }
  const std::lock_guard lock(mutex_);  // `stop` must not shut down a number that is another's by then
  sockets_.erase(socket);
  ::close(socket);
}

HTTPTestServer::Handler HTTPTestServer::handlerOf(const Request& request) {
  const std::lock_guard lock(mutex_);
  requests_.push_back(request);
  const auto found = handlers_.find(request.target.substr(0, request.target.find('?')));
  return found != handlers_.end() ? found->second : others_;
}
