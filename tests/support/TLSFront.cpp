// SPDX-License-Identifier: Apache-2.0
#include "TLSFront.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/x509v3.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <stdexcept>

namespace {

sockaddr_in addressOf(std::uint16_t port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  address.sin_port = htons(port);
  return address;
}

void addExtension(X509* certificate, int kind, const char* value) {
  X509_EXTENSION* const extension = X509V3_EXT_conf_nid(nullptr, nullptr, kind, value);
  X509_add_ext(certificate, extension, -1);
  X509_EXTENSION_free(extension);
}

/// A key, and its word for itself that lasts an hour.
void useNewCertificate(SSL_CTX* context) {
  EVP_PKEY* const key = EVP_EC_gen("P-256");
  X509* const certificate = X509_new();
  X509_set_version(certificate, 2);
  ASN1_INTEGER_set(X509_get_serialNumber(certificate), 1);
  X509_gmtime_adj(X509_getm_notBefore(certificate), -60);
  X509_gmtime_adj(X509_getm_notAfter(certificate), 3600);
  X509_NAME* const name = X509_get_subject_name(certificate);
  X509_NAME_add_entry_by_txt(name, "CN", MBSTRING_ASC, reinterpret_cast<const unsigned char*>("test"), -1, -1, 0);
  X509_set_issuer_name(certificate, name);
  X509_set_pubkey(certificate, key);
  addExtension(certificate, NID_basic_constraints, "critical,CA:TRUE");
  addExtension(certificate, NID_subject_alt_name, "IP:127.0.0.1");
  X509_sign(certificate, key, EVP_sha256());
  const bool isUsed = SSL_CTX_use_certificate(context, certificate) == 1 && SSL_CTX_use_PrivateKey(context, key) == 1;
  X509_free(certificate);
  EVP_PKEY_free(key);
  if (!isUsed) throw std::runtime_error("TLSFront: no certificate");
}

bool sendAll(int socket, const char* bytes, int count) {
  for (ssize_t sent = 0; count > 0; bytes += sent, count -= static_cast<int>(sent)) {
    sent = ::send(socket, bytes, static_cast<std::size_t>(count), MSG_NOSIGNAL);
    if (sent <= 0) return false;
  }
  return true;
}

/// Passes bytes both ways until one side ends, or `stop` can be read.
void passOn(SSL* client, int server, int stop) {
  char bytes[16384];
  pollfd ends[] = {{SSL_get_fd(client), POLLIN, 0}, {server, POLLIN, 0}, {stop, POLLIN, 0}};
  while (SSL_pending(client) > 0 || ::poll(ends, 3, -1) > 0) {
    if (ends[2].revents != 0) return;
    if (SSL_pending(client) > 0 || ends[0].revents != 0) {
      const int count = SSL_read(client, bytes, sizeof bytes);
      if (count <= 0 || !sendAll(server, bytes, count)) return;
    }
    if (ends[1].revents != 0) {
      const ssize_t count = ::recv(server, bytes, sizeof bytes, 0);
      if (count <= 0 || SSL_write(client, bytes, static_cast<int>(count)) <= 0) return;
    }
  }
}

}  // namespace

TLSFront::TLSFront(std::uint16_t port) : context_(SSL_CTX_new(TLS_server_method())), behind_(port) {
  useNewCertificate(context_.get());
  stop_ = ::eventfd(0, EFD_CLOEXEC);
  listener_ = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in address = addressOf(0);
  socklen_t size = sizeof address;
  auto* const generic = reinterpret_cast<sockaddr*>(&address);
  if (::bind(listener_, generic, size) != 0 || ::listen(listener_, 64) != 0 ||
      ::getsockname(listener_, generic, &size) != 0) {
    throw std::runtime_error("TLSFront: no port to listen on");
  }
  port_ = ntohs(address.sin_port);
  acceptor_ = std::thread([this] { accept(); });
}

TLSFront::~TLSFront() {
  ::eventfd_write(stop_, 1);
  ::shutdown(listener_, SHUT_RDWR);  // wakes the acceptor
  acceptor_.join();
  for (std::thread& thread : threads_) thread.join();
  ::close(listener_);
  ::close(stop_);
}

void TLSFront::writeCertificate(const std::filesystem::path& file) const {
  const std::unique_ptr<std::FILE, decltype(&std::fclose)> stream(std::fopen(file.c_str(), "w"), std::fclose);
  PEM_write_X509(stream.get(), SSL_CTX_get0_certificate(context_.get()));
}

void TLSFront::accept() {
  for (;;) {
    const int client = ::accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
    if (client < 0) return;
    threads_.emplace_back([this, client] { serve(client); });
  }
}

void TLSFront::serve(int client) const {
  sigset_t pipe;  // which a client that refuses the certificate would raise here
  sigemptyset(&pipe);
  sigaddset(&pipe, SIGPIPE);
  pthread_sigmask(SIG_BLOCK, &pipe, nullptr);
  SSL* const secure = SSL_new(context_.get());
  SSL_set_fd(secure, client);
  const int server = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  const sockaddr_in address = addressOf(behind_);
  if (::connect(server, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0 && SSL_accept(secure) == 1) {
    passOn(secure, server, stop_);
    SSL_shutdown(secure);
  }
  SSL_free(secure);
  ::close(client);
  ::close(server);
}
