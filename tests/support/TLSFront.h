// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_TESTS_SUPPORT_TLSFRONT_H
#define ZRCORE_TESTS_SUPPORT_TLSFRONT_H

#include <openssl/ssl.h>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <thread>
#include <vector>

/// Stands before a server of this machine and speaks TLS for it, with a certificate for 127.0.0.1 that nobody but
/// itself vouches for. A thread for each connection.
class TLSFront {
 public:
  /// @param port  of the server that is passed on to, in plain
  explicit TLSFront(std::uint16_t port);
  ~TLSFront();
  TLSFront(const TLSFront&) = delete;
  TLSFront& operator=(const TLSFront&) = delete;

  std::string url(const std::string& path) const { return "https://127.0.0.1:" + std::to_string(port_) + path; }
  /// For clients that are to trust it (PEM).
  void writeCertificate(const std::filesystem::path& file) const;

 private:
  struct Free {
    void operator()(SSL_CTX* context) const { SSL_CTX_free(context); }
  };

  void accept();
  void serve(int client) const;

  std::unique_ptr<SSL_CTX, Free> context_;
  const std::uint16_t behind_;
  std::uint16_t port_ = 0;
  int listener_ = -1, stop_ = -1;
  std::thread acceptor_;
  std::vector<std::thread> threads_;  ///< the acceptor's
};

#endif
