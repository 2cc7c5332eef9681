#include "suite/http/curl/curl_failure.h"

#include <openssl/x509_vfy.h>

#include <cerrno>
#include <string_view>

#include "suite/base/text.h"
#include "suite/http/certificate_fault.h"
#include "suite/http/network_fault.h"

namespace http {
namespace {

constexpr std::size_t kDetailBytes = 200;

bool says(const CurlOutcome& outcome, std::string_view words) {
  return outcome.text.find(words) != std::string::npos;
}

// What libcurl says, its code's general words when it says nothing.
std::string detail(const CurlOutcome& outcome) {
  const std::string text = base::excerpt(outcome.text, kDetailBytes);
  return text.empty() ? curl_easy_strerror(outcome.code) : text;
}

NetworkFault connectFault(long osError) {
  switch (osError) {
    case ECONNREFUSED:
      return NetworkFault::kRefused;
    case EHOSTUNREACH:
    case ENETUNREACH:
    case EADDRNOTAVAIL:
      return NetworkFault::kNoRoute;
    case ETIMEDOUT:
      return NetworkFault::kNoAnswerToConnect;
    default:
      return NetworkFault::kNotConnected;
  }
}

NetworkFault timeoutFault(const CurlOutcome& outcome) {
  return outcome.queued      ? NetworkFault::kQueueTimeout
         : outcome.sent      ? NetworkFault::kAnswerTimeout
         : outcome.connected ? NetworkFault::kTlsTimeout
         : outcome.resolved  ? NetworkFault::kConnectTimeout
                             : NetworkFault::kNameTimeout;
}

NetworkFault tlsFault(const CurlOutcome& outcome) {
  return says(outcome, "wrong version number") ||
                 says(outcome, "packet length too long")
             ? NetworkFault::kNoTls
         : says(outcome, "unsupported protocol") ||
                 says(outcome, "protocol version")
             ? NetworkFault::kOldTls
         : says(outcome, "SSL_ERROR_SYSCALL") ? NetworkFault::kLostInHandshake
                                              : NetworkFault::kTlsHandshake;
}

CertificateFault certificateFault(const CurlOutcome& outcome) {
  switch (outcome.verifyResult) {
    case X509_V_ERR_DEPTH_ZERO_SELF_SIGNED_CERT:
      return CertificateFault::kSelfSigned;
    case X509_V_ERR_SELF_SIGNED_CERT_IN_CHAIN:
    case X509_V_ERR_UNABLE_TO_GET_ISSUER_CERT:
    case X509_V_ERR_UNABLE_TO_GET_ISSUER_CERT_LOCALLY:
    case X509_V_ERR_UNABLE_TO_VERIFY_LEAF_SIGNATURE:
    case X509_V_ERR_CERT_UNTRUSTED:
      return CertificateFault::kUnknownAuthority;
    case X509_V_ERR_CERT_HAS_EXPIRED:
      return CertificateFault::kExpired;
    case X509_V_ERR_CERT_NOT_YET_VALID:
      return CertificateFault::kNotYetValid;
    case X509_V_ERR_CERT_REVOKED:
      return CertificateFault::kRevoked;
    case X509_V_ERR_EE_KEY_TOO_SMALL:
    case X509_V_ERR_CA_KEY_TOO_SMALL:
    case X509_V_ERR_CA_MD_TOO_WEAK:
      return CertificateFault::kWeak;
    case X509_V_ERR_APPLICATION_VERIFICATION:
      return CertificateFault::kFingerprintMismatch;
    default:
      // The name is compared by libcurl itself, which has only words for it.
      return says(outcome, "subject name") ? CertificateFault::kOtherName
                                           : CertificateFault::kOther;
  }
}

base::Failure certificateFailure(const CurlOutcome& outcome) {
  switch (outcome.code) {
    case CURLE_SSL_PINNEDPUBKEYNOTMATCH:
      return failureOf(CertificateFault::kWrongPin, "", outcome.presentedPin);
    case CURLE_SSL_CACERT_BADFILE:
      return failureOf(CertificateFault::kAuthorityFile, detail(outcome));
    case CURLE_PEER_FAILED_VERIFICATION: {
      const CertificateFault fault =
          withAuthorityFile(certificateFault(outcome), outcome.caFile);
      return failureOf(fault,
                       fault == CertificateFault::kNotVouchedFor
                           ? outcome.caFile
                           : detail(outcome),
                       outcome.presentedPin);
    }
    default:
      return failureOf(CertificateFault::kOther, detail(outcome),
                       outcome.presentedPin);
  }
}

NetworkFault faultOf(const CurlOutcome& outcome) {
  switch (outcome.code) {
    case CURLE_COULDNT_RESOLVE_HOST:
      return NetworkFault::kHostNotFound;
    case CURLE_COULDNT_CONNECT:
      return connectFault(outcome.osError);
    case CURLE_OPERATION_TIMEDOUT:
      return timeoutFault(outcome);
    case CURLE_GOT_NOTHING:
    case CURLE_SEND_ERROR:
    case CURLE_RECV_ERROR:
    case CURLE_PARTIAL_FILE:
      return outcome.answered ? NetworkFault::kLostInAnswer
                              : NetworkFault::kLostBeforeAnswer;
    case CURLE_SSL_CONNECT_ERROR:
    case CURLE_SSL_CERTPROBLEM:
    case CURLE_SSL_CIPHER:
      return tlsFault(outcome);
    case CURLE_UNSUPPORTED_PROTOCOL:
      return NetworkFault::kNotHttp;
    case CURLE_FILESIZE_EXCEEDED:
      return NetworkFault::kBodyTooLarge;
    case CURLE_BAD_CONTENT_ENCODING:
      return NetworkFault::kBadEncoding;
    case CURLE_WEIRD_SERVER_REPLY:
    case CURLE_WRITE_ERROR:
    case CURLE_HTTP2:
    case CURLE_HTTP2_STREAM:
      return NetworkFault::kMalformed;
    default:
      return NetworkFault::kInternal;
  }
}

}  // namespace

base::Failure failureOf(const CurlOutcome& outcome) {
  const NetworkTimes times{outcome.connectTimeout, outcome.timeout};
  if (outcome.headersTooLarge) {
    return failureOf(NetworkFault::kHeadersTooLarge, "");
  }
  if (outcome.bodyTooLarge) {
    return failureOf(NetworkFault::kBodyTooLarge, "");
  }
  if (outcome.bodiesTooLarge) {
    return failureOf(NetworkFault::kBodiesTooLarge, "");
  }
  if (outcome.codedOtherwise) {
    return failureOf(NetworkFault::kOtherEncoding, "");
  }
  switch (outcome.code) {
    case CURLE_PEER_FAILED_VERIFICATION:
    case CURLE_SSL_CACERT_BADFILE:
    case CURLE_SSL_ISSUER_ERROR:
    case CURLE_SSL_PINNEDPUBKEYNOTMATCH:
    case CURLE_SSL_INVALIDCERTSTATUS:
      return certificateFailure(outcome);
    default:
      return failureOf(faultOf(outcome), detail(outcome), times);
  }
}

}  // namespace http
