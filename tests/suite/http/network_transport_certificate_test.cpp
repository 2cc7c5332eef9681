#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/x509.h>

#include <array>
#include <chrono>
#include <functional>
#include <future>
#include <memory>
#include <string>

#include "suite/http/network_transport.h"
#include "tests/bmc/wire/certificate.h"
#include "tests/suite/http/scripted_server.h"
#include "tests/suite/http/transport_client.h"
#include "tests/support/temp_folder.h"

namespace http {
namespace {

using std::chrono::hours;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

using Settings = bmc::CertificateSettings;

const bmc::Identity& authority() {
  static const bmc::Identity kIdentity = [] {
    Settings settings;
    settings.name = "Test Authority";
    settings.authority = true;
    return bmc::makeCertificate(settings);
  }();
  return kIdentity;
}

// A certificate that the authority has signed.
bmc::Identity issued(const Settings& settings = {}) {
  return bmc::makeCertificate(settings, &authority());
}

bmc::Identity selfSigned(const Settings& settings = {}) {
  return bmc::makeCertificate(settings);
}

// A certificate's settings, with a single name or address.
Settings namedOnly(const char* name) {
  Settings settings;
  settings.alternativeNames = {name};
  return settings;
}

Settings validFor(hours from, hours to) {
  Settings settings;
  settings.validFromSeconds = std::chrono::seconds(from).count();
  settings.validToSeconds = std::chrono::seconds(to).count();
  return settings;
}

// The SHA-256 digest of a certificate's DER form.
std::string digestOf(const std::string& pem) {
  const std::unique_ptr<BIO, decltype(&BIO_free)> text(
      BIO_new_mem_buf(pem.data(), static_cast<int>(pem.size())), &BIO_free);
  const std::unique_ptr<X509, decltype(&X509_free)> certificate(
      PEM_read_bio_X509(text.get(), nullptr, nullptr, nullptr), &X509_free);
  std::array<unsigned char, EVP_MAX_MD_SIZE> digest{};
  unsigned int size = 0;
  EXPECT_EQ(X509_digest(certificate.get(), EVP_sha256(), digest.data(), &size),
            1);
  return std::string(digest.begin(), digest.begin() + size);
}

// What the client is told to trust: the authority alone, unless it is changed.
using Change = std::function<void(NetworkTransportOptions&)>;

Change trusting(const std::string& caFile) {
  return
      [caFile](NetworkTransportOptions& options) { options.caFile = caFile; };
}

Change pinning(const std::string& pin) {
  return [pin](NetworkTransportOptions& options) {
    options.caFile.clear();
    options.pin = pin;
  };
}

Change asking(const std::string& host) {
  return
      [host](NetworkTransportOptions& options) { options.origin.host = host; };
}

std::string notVouchedFor(const std::string& file) {
  return "no certificate in the file of trusted authorities vouches for the "
         "server's (" +
         file + ")";
}

class NetworkTransportCertificate : public testing::Test {
 protected:
  NetworkTransportCertificate() {
    directory_.write("authority.pem", authority().certificate);
  }

  std::string fileAt(const char* name) const {
    return (directory_.path() / name).string();
  }

  // The answer of a server with a certificate.
  Answer answerOf(const bmc::Identity& identity, const Change& change = {}) {
    ScriptedServer server(
        answering([](const std::string&) { return httpAnswer(200, "{}"); }),
        tlsWith(identity));
    NetworkTransportOptions options = tlsOptions(server.port());
    options.caFile = fileAt("authority.pem");
    if (change) {
      change(options);
    }
    return ask(*makeNetworkTransport(options), get());
  }

  // What the client says to a certificate.
  std::string verdictOn(const bmc::Identity& identity,
                        const Change& change = {}) {
    const Answer answer = answerOf(identity, change);
    if (answer.failure) {
      EXPECT_EQ(answer.failure->kind, base::FailureKind::kCertificate);
    }
    return told(answer);
  }

  support::TempFolder directory_;
};

TEST_F(NetworkTransportCertificate, OfATrustedAuthorityIsAccepted) {
  EXPECT_EQ(verdictOn(issued()), "no failure");
}

TEST_F(NetworkTransportCertificate, ForAnotherAddressIsRefused) {
  EXPECT_EQ(verdictOn(issued(namedOnly("IP:192.0.2.1"))),
            "the certificate is for another name");
}

TEST_F(NetworkTransportCertificate, ForTheNameIsAccepted) {
  EXPECT_EQ(verdictOn(issued(namedOnly("DNS:localhost")), asking("localhost")),
            "no failure");
}

TEST_F(NetworkTransportCertificate, ForAnotherNameIsRefused) {
  EXPECT_EQ(
      verdictOn(issued(namedOnly("DNS:other.example")), asking("localhost")),
      "the certificate is for another name");
}

TEST_F(NetworkTransportCertificate, SelfSignedIsRefusedWithAWayOut) {
  const Answer answer = answerOf(selfSigned(), trusting(""));
  EXPECT_EQ(told(answer), "the certificate is self-signed");
  EXPECT_THAT(answer.failure->remedy, HasSubstr("--pin"));
}

Change trustingOne(const std::string& digest) {
  return [digest](NetworkTransportOptions& options) {
    options.caFile.clear();
    options.certificate = digest;
  };
}

TEST_F(NetworkTransportCertificate, TheOneToTrustIsAcceptedWhateverItSays) {
  const bmc::Identity identity = selfSigned(namedOnly("DNS:other.example"));
  EXPECT_EQ(verdictOn(identity, trustingOne(digestOf(identity.certificate))),
            "no failure");
}

TEST_F(NetworkTransportCertificate, AnotherThanTheOneToTrustIsRefused) {
  const Answer answer =
      answerOf(issued(), trustingOne(digestOf(selfSigned().certificate)));
  EXPECT_EQ(
      told(answer),
      "the certificate is not the one that the controller names over IPMI");
  EXPECT_THAT(answer.failure->remedy, HasSubstr("--pin sha256//"));
}

TEST_F(NetworkTransportCertificate, SelfSignedMayBeTheAuthority) {
  const bmc::Identity identity = selfSigned();
  directory_.write("own.pem", identity.certificate);
  EXPECT_EQ(verdictOn(identity, trusting(fileAt("own.pem"))), "no failure");
}

TEST_F(NetworkTransportCertificate, OfAnUnknownAuthorityIsRefused) {
  EXPECT_EQ(verdictOn(issued(), trusting("")),
            "the certificate comes from an authority that is not trusted");
}

TEST_F(NetworkTransportCertificate, ExpiredIsRefused) {
  EXPECT_EQ(verdictOn(issued(validFor(hours(-48), hours(-24)))),
            "the certificate has expired");
}

TEST_F(NetworkTransportCertificate, FutureIsRefused) {
  EXPECT_EQ(verdictOn(issued(validFor(hours(24), hours(48)))),
            "the certificate is not valid yet");
}

TEST_F(NetworkTransportCertificate, AuthorityFileMustExist) {
  EXPECT_THAT(verdictOn(issued(), trusting(fileAt("no.pem"))),
              StartsWith("the trusted authorities cannot be read"));
}

TEST_F(NetworkTransportCertificate, AuthorityFileMustHoldOne) {
  directory_.write("empty.pem", "");
  EXPECT_THAT(verdictOn(issued(), trusting(fileAt("empty.pem"))),
              StartsWith("the trusted authorities cannot be read"));
}

TEST_F(NetworkTransportCertificate, InsecureTrustsEverything) {
  Settings settings = validFor(hours(-48), hours(-24));
  settings.alternativeNames = {"DNS:other.example"};
  EXPECT_EQ(verdictOn(selfSigned(settings),
                      [](NetworkTransportOptions& options) {
                        options.caFile = "/no/such/file";
                        options.insecure = true;
                      }),
            "no failure");
}

TEST_F(NetworkTransportCertificate, RightPinIsTrustEnough) {
  const bmc::Identity identity = selfSigned(namedOnly("DNS:other.example"));
  EXPECT_EQ(verdictOn(identity, pinning(bmc::pinOf(identity.certificate))),
            "no failure");
}

TEST_F(NetworkTransportCertificate, OneOfSeveralPinsIsEnough) {
  const bmc::Identity identity = selfSigned();
  EXPECT_EQ(
      verdictOn(identity, pinning(bmc::pinOf(authority().certificate) + ';' +
                                  bmc::pinOf(identity.certificate))),
      "no failure");
}

TEST_F(NetworkTransportCertificate, WrongPinIsRefused) {
  const bmc::Identity identity = selfSigned();
  EXPECT_EQ(verdictOn(identity, pinning(bmc::pinOf(authority().certificate))),
            "the server's key is not the pinned one but " +
                bmc::pinOf(identity.certificate));
}

TEST_F(NetworkTransportCertificate, WrongPinIsRefusedThoughTheRestIsInsecure) {
  const bmc::Identity identity = selfSigned();
  EXPECT_EQ(verdictOn(identity,
                      [](NetworkTransportOptions& options) {
                        options.pin = bmc::pinOf(authority().certificate);
                        options.insecure = true;
                      }),
            "the server's key is not the pinned one but " +
                bmc::pinOf(identity.certificate));
}

TEST_F(NetworkTransportCertificate, PinDoesNotReplaceAConfiguredAuthority) {
  const bmc::Identity identity = selfSigned();
  EXPECT_EQ(verdictOn(identity,
                      [&](NetworkTransportOptions& options) {
                        options.pin = bmc::pinOf(identity.certificate);
                      }),
            notVouchedFor(fileAt("authority.pem")));
}

TEST_F(NetworkTransportCertificate, RefusedOneGetsNoLogin) {
  std::promise<std::string> received;
  ScriptedServer server(
      [&received](Peer& peer) { received.set_value(peer.readRequest()); },
      tlsWith(selfSigned()));
  NetworkTransportOptions options = tlsOptions(server.port());
  options.caFile = fileAt("authority.pem");
  Request login = get("/redfish/v1/SessionService/Sessions");
  login.method = Method::kPost;
  login.body =
      base::Secret(R"({"UserName": "admin", "Password": "hush-hush"})");
  EXPECT_EQ(told(ask(*makeNetworkTransport(options), login)),
            notVouchedFor(fileAt("authority.pem")));
  // No request, as a rule; that of Wine comes after the answer.
  auto request = received.get_future();
  if (request.wait_for(std::chrono::seconds(1)) == std::future_status::ready) {
    EXPECT_THAT(request.get(), Not(HasSubstr("hush")));
  }
}

TEST_F(NetworkTransportCertificate, PinOfAnotherFormIsRefused) {
  EXPECT_EQ(verdictOn(selfSigned(), pinning("/etc/hostname")),
            "the pin is not of the form sha256//BASE64");
}

}  // namespace
}  // namespace http
