// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_TESTS_SUPPORT_HTTPTESTSERVER_H
#define ZRCORE_TESTS_SUPPORT_HTTPTESTSERVER_H

#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <set>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

/// A small HTTP/1.1 server on the loopback interface, with a thread for each connection, that does what it is told:
/// answer well, badly or not at all. What nothing was said about gets a 404.
///
///     HTTPTestServer server;
///     server.on("/hello", HTTPTestServer::answering(200, "hello"));
///     … server.url("/hello") …
class HTTPTestServer {
 public:
  struct Request {
    std::string method, target;
    std::vector<std::pair<std::string, std::string>> headers;
    std::string body;

    /// The value of the first header of that name in small letters; empty when there is none.
    std::string header(std::string_view name) const;
  };

  /// The connection that a request came on. Kept open after the answer unless something here closes it.
  class Connection {
   public:
    explicit Connection(int socket) : socket_(socket) {}
    /// @return false when the client has gone
    bool send(std::string_view bytes);
    /// The connection ends when the handler returns, as it does.
    void close() { isOver_ = true; }
    /// The same, but the client sees a reset.
    void reset();
    /// Says nothing until the client, or `stop`, ends the connection.
    void waitForClient();

   private:
    friend class HTTPTestServer;
    int socket_;
    bool isOver_ = false;
  };

  /// Answers a request, in the connection's thread.
  using Handler = std::function<void(const Request&, Connection&)>;

  /// A handler that says nothing until the client goes.
  static void staySilent(const Request&, Connection& connection) { connection.waitForClient(); }
  /// A whole answer. `headers` are lines that each end in "\r\n".
  static Handler answering(int status, std::string body, std::string headers = "Content-Type: text/plain\r\n");
  static Handler redirecting(std::string location);
  /// Exactly these bytes, then the end of the connection.
  static Handler sending(std::string bytes);

  HTTPTestServer();   ///< starts on a port that is free
  ~HTTPTestServer();  ///< stops

  /// What the requests for `path`, whatever their query, get from now on.
  void on(const std::string& path, Handler handler);
  /// The same for all paths that nothing was said about.
  void onOthers(Handler handler);

  std::uint16_t port() const { return port_; }
  std::string url(const std::string& path) const { return "http://127.0.0.1:" + std::to_string(port_) + path; }

  /// Ends all connections and refuses new ones.
  void stop();
  /// Starts again, on the same port.
  void start();

  /// The requests so far, in the order of their arrival.
  std::vector<Request> requests() const;
  /// How many connections were made so far.
  int connections() const;

 private:
  void accept();
  void serve(int socket);
  Handler handlerOf(const Request& request);

  std::uint16_t port_ = 0;
  int listener_ = -1;
  std::thread acceptor_;
  mutable std::mutex mutex_;  ///< guards all below
  std::map<std::string, Handler> handlers_;
  Handler others_ = answering(404, "not here");
  std::vector<Request> requests_;
  std::vector<std::thread> threads_;
  std::set<int> sockets_;
  int connections_ = 0;
};

#endif
