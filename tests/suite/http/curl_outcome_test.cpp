#include <gtest/gtest.h>
#include <openssl/x509_vfy.h>

#include <cerrno>

#include "suite/http/curl/curl_failure.h"

namespace http {
namespace {

// What no server on the loopback interface can bring about.

CurlOutcome outcomeOf(CURLcode code) {
  CurlOutcome outcome;
  outcome.code = code;
  outcome.connectTimeout = std::chrono::milliseconds(10000);
  outcome.timeout = std::chrono::milliseconds(30000);
  return outcome;
}

base::Failure connectFailure(long osError) {
  CurlOutcome outcome = outcomeOf(CURLE_COULDNT_CONNECT);
  outcome.osError = osError;
  return failureOf(outcome);
}

std::string certificateCause(long verifyResult, const char* text) {
  CurlOutcome outcome = outcomeOf(CURLE_PEER_FAILED_VERIFICATION);
  outcome.verifyResult = verifyResult;
  outcome.text = text;
  const base::Failure failure = failureOf(outcome);
  EXPECT_EQ(failure.kind, base::FailureKind::kCertificate);
  return failure.cause;
}

TEST(CurlFailure, NoRouteIsUnreachable) {
  EXPECT_EQ(connectFailure(EHOSTUNREACH).kind, base::FailureKind::kUnreachable);
  EXPECT_EQ(connectFailure(ENETUNREACH).cause,
            "there is no way to this address");
}

TEST(CurlFailure, SystemsOwnTimeLimitIsAConnectTimeout) {
  EXPECT_EQ(connectFailure(ETIMEDOUT).kind, base::FailureKind::kConnectTimeout);
}

TEST(CurlFailure, OtherConnectErrorTellsTheLibrarysWords) {
  EXPECT_EQ(connectFailure(EACCES).cause,
            "no connection came about (Couldn't connect to server)");
}

TEST(CurlFailure, SilentAddressIsAConnectTimeout) {
  CurlOutcome outcome = outcomeOf(CURLE_OPERATION_TIMEDOUT);
  outcome.text = "Connection timed out";
  outcome.resolved = true;
  EXPECT_EQ(failureOf(outcome).kind, base::FailureKind::kConnectTimeout);
  EXPECT_EQ(failureOf(outcome).cause, "no connection within 10 s");
}

TEST(CurlFailure, ShorterLimitIsNamed) {
  CurlOutcome outcome = outcomeOf(CURLE_OPERATION_TIMEDOUT);
  outcome.text = "Connection timed out";
  outcome.resolved = true;
  outcome.timeout = std::chrono::milliseconds(2500);
  EXPECT_EQ(failureOf(outcome).cause, "no connection within 2.5 s");
}

TEST(CurlFailure, RevokedCertificateIsTold) {
  EXPECT_EQ(certificateCause(X509_V_ERR_CERT_REVOKED, "certificate revoked"),
            "the certificate was revoked");
}

TEST(CurlFailure, WeakCertificateTellsWhatIsWeak) {
  EXPECT_EQ(
      certificateCause(X509_V_ERR_EE_KEY_TOO_SMALL, "EE key too small"),
      "the certificate's key or signature is too weak (EE key too small)");
}

TEST(CurlFailure, OtherFaultOfACertificateTellsTheLibrarysWords) {
  EXPECT_EQ(certificateCause(X509_V_ERR_INVALID_PURPOSE, "unsuitable purpose"),
            "the certificate was refused (unsuitable purpose)");
}

TEST(CurlFailure, LibrarysWordsAreCleanAndCut) {
  CurlOutcome outcome = outcomeOf(CURLE_SSL_CONNECT_ERROR);
  outcome.text = "bad\x1B[2J\r\n" + std::string(1000, 'x');
  const std::string cause = failureOf(outcome).cause;
  EXPECT_EQ(cause.find_first_of("\x1B\r\n"), std::string::npos);
  EXPECT_LT(cause.size(), 300U);
}

TEST(CurlFailure, MistakeOfOurOwnIsInternal) {
  EXPECT_EQ(failureOf(outcomeOf(CURLE_URL_MALFORMAT)).kind,
            base::FailureKind::kInternal);
}

}  // namespace
}  // namespace http
