// SPDX-License-Identifier: Apache-2.0
// Whom the session trusts over TLS, and what it says to whom.
#include <ZRCore/ZRPlatformFake.h>
#include <gmock/gmock.h>

#include <cctype>
#include <optional>

#include "HTTPTestServer.h"
#include "ManualLoop.h"
#include "TLSFront.h"
#include "TemporaryFolder.h"
#include "http/CurlSession.h"

using testing::HasSubstr;

namespace {

/// A server that is reached over TLS and in plain, and a session that trusts it.
class HttpSecurity : public testing::Test {
 protected:
  HttpSecurity() { secure.writeCertificate(certificates); }

  struct Outcome {
    std::shared_ptr<const NSURLResponse> response;
    std::optional<NSData> body;
    std::optional<NSError> error;
    long code() const { return error ? error->code : 0; }
  };

  Outcome outcomeOf(const std::string& url, ZRHTTPHeaders headers = {}) {
    const auto session = std::make_shared<CurlSession>(loop, clock, TransferOptions{.certificatesFile = certificates});
    std::optional<Outcome> outcome;
    session
        ->dataTaskWithRequest({.URL = NSURL::URLWithString(url), .HTTPHeaders = std::move(headers)},
                              [&outcome](auto body, auto response, auto error) {
                                outcome = Outcome{std::move(response), std::move(body), std::move(error)};
                              })
        ->resume();
    EXPECT_TRUE(loop->runUntil([&] { return outcome.has_value(); }));
    return outcome.value_or(Outcome());
  }

  TemporaryFolder folder;
  std::string certificates = folder.at("trusted.pem");
  std::shared_ptr<ZRFakeClock> clock = std::make_shared<ZRFakeClock>();
  std::shared_ptr<ManualLoop> loop = std::make_shared<ManualLoop>(clock);
  HTTPTestServer server;
  TLSFront secure{server.port()};
};

TEST_F(HttpSecurity, ARedirectionNeverLeavesTLS) {
  server.on("/ok", HTTPTestServer::answering(200, "ok"));
  server.on("/near", HTTPTestServer::redirecting("/ok"));
  EXPECT_EQ(outcomeOf(secure.url("/near")).body, "ok") << "trusted, and followed";
  server.on("/plain", HTTPTestServer::redirecting(server.url("/ok")));
  server.on("/twice", HTTPTestServer::redirecting(secure.url("/plain")));
  for (const char* path : {"/plain", "/twice"}) {
    const std::size_t before = server.requests().size();
    const Outcome outcome = outcomeOf(secure.url(path));
    EXPECT_EQ(outcome.code(), NSURLErrorSecureConnectionFailed) << path;
    EXPECT_EQ(outcome.response ? outcome.response->statusCode : 0, 302);
    EXPECT_THAT(outcome.error ? outcome.error->localizedDescription() : "", HasSubstr("from https to http"));
    EXPECT_EQ(server.requests().back().target, "/plain") << "nothing was asked for in plain";
    EXPECT_LE(server.requests().size(), before + 2);
  }
}

TEST_F(HttpSecurity, TheHostsOwnFieldsDoNotGoAlongToAnotherServerOverTLS) {
  HTTPTestServer other;
  const TLSFront secureOther(other.port());
  secureOther.writeCertificate(folder.at("other.pem"));
  folder.write("trusted.pem", contentOf(certificates) + contentOf(folder.at("other.pem")));
  server.on("/up", HTTPTestServer::redirecting(secure.url("/over")));
  server.on("/over", HTTPTestServer::redirecting(secureOther.url("/there")));
  other.on("/there", HTTPTestServer::answering(200, "ok"));
  const ZRHTTPHeaders fields{{"X-Api-Key", "secret"}, {"Authorization", "secret"}, {"Cookie", "secret"}};
  EXPECT_EQ(outcomeOf(secure.url("/over"), fields).body, "ok");
  EXPECT_EQ(outcomeOf(server.url("/up"), fields).body, "ok");
  ASSERT_EQ(server.requests().size(), 3U);
  ASSERT_EQ(other.requests().size(), 2U);
  for (const auto& [name, value] : fields) {
    std::string small = name;
    for (char& c : small) c = static_cast<char>(std::tolower(c));
    EXPECT_EQ(server.requests()[0].header(small), "secret");
    EXPECT_EQ(server.requests()[2].header(small), "") << "the way from plain to TLS ends at another port";
    for (const auto& request : other.requests()) EXPECT_EQ(request.header(small), "");
  }
}

TEST_F(HttpSecurity, OnlyWhomTheFileNamesIsTrusted) {
  server.on("/", HTTPTestServer::answering(200, "ok"));
  EXPECT_EQ(outcomeOf(secure.url("/")).code(), 0);
  const TLSFront stranger(server.port());
  EXPECT_EQ(outcomeOf(stranger.url("/")).code(), NSURLErrorServerCertificateUntrusted);
  std::string otherName = secure.url("/");
  otherName.replace(otherName.find("127.0.0.1"), 9, "localhost");
  EXPECT_EQ(outcomeOf(otherName).code(), NSURLErrorServerCertificateUntrusted);
  certificates.clear();
  EXPECT_EQ(outcomeOf(secure.url("/")).code(), NSURLErrorServerCertificateUntrusted) << "by the system's";
  certificates = folder.at("missing.pem");
  const Outcome outcome = outcomeOf(secure.url("/"));
  EXPECT_EQ(outcome.code(), NSURLErrorSecureConnectionFailed);
  EXPECT_THAT(outcome.error ? outcome.error->localizedDescription() : "",
              AllOf(HasSubstr("missing.pem"), HasSubstr("check that file")));
}

}  // namespace
