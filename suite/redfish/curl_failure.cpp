#include "suite/redfish/curl_failure.h"

#include <openssl/x509_vfy.h>

#include <algorithm>
#include <cerrno>
#include <string_view>
#include <utility>

#include "suite/redfish/certificate_fault.h"
#include "suite/redfish/text.h"

namespace redfish {
namespace {

constexpr std::size_t kDetailBytes = 200;

Failure failureOf(FailureKind kind, std::string cause, std::string remedy) {
  return {kind, "", "", std::move(cause), std::move(remedy)};
}

bool says(const CurlOutcome& outcome, std::string_view words) {
  return outcome.text.find(words) != std::string::npos;
}

/// What libcurl says, its code's general words when it says nothing.
std::string detail(const CurlOutcome& outcome) {
  const std::string text = excerpt(outcome.text, kDetailBytes);
  return text.empty() ? curl_easy_strerror(outcome.code) : text;
}

std::string seconds(std::chrono::milliseconds time) {
  const auto count = time.count();
  std::string text = std::to_string(count / 1000);
  if (count % 1000 != 0) text += '.' + std::to_string(count % 1000 / 100);
  return text + " s";
}

Failure nameFailure() {
  return failureOf(FailureKind::kNameNotResolved,
                   "the host name cannot be resolved",
                   "check its spelling and the name server");
}

Failure connectFailure(const CurlOutcome& outcome) {
  switch (outcome.osError) {
    case ECONNREFUSED:
      return failureOf(FailureKind::kUnreachable, "the connection was refused",
                       "check the port, and that the Redfish service is "
                       "switched on");
    case EHOSTUNREACH:
    case ENETUNREACH:
    case EADDRNOTAVAIL:
      return failureOf(FailureKind::kUnreachable,
                       "there is no way to this address",
                       "check the address and the network");
    case ETIMEDOUT:
      return failureOf(FailureKind::kConnectTimeout, "no connection came about",
                       "check the address, and that no firewall drops packets");
    default:
      return failureOf(FailureKind::kUnreachable,
                       "no connection came about (" + detail(outcome) + ')',
                       "check the address and the network");
  }
}

Failure timeoutFailure(const CurlOutcome& outcome) {
  constexpr char kPatience[] = "check the controller, or allow more time";
  if (outcome.queued) {
    return failureOf(
        FailureKind::kReadTimeout,
        "no connection became free within " + seconds(outcome.timeout),
        kPatience);
  }
  if (outcome.sent) {
    return failureOf(FailureKind::kReadTimeout,
                     "no whole answer within " + seconds(outcome.timeout),
                     kPatience);
  }
  const std::string time =
      seconds(std::min(outcome.connectTimeout, outcome.timeout));
  if (outcome.connected) {
    return failureOf(FailureKind::kConnectTimeout,
                     "the TLS handshake did not end within " + time, kPatience);
  }
  if (!outcome.resolved) {
    return failureOf(FailureKind::kConnectTimeout,
                     "the host name was not resolved within " + time,
                     "check the name server");
  }
  return failureOf(FailureKind::kConnectTimeout, "no connection within " + time,
                   "check the address, and that no firewall drops packets");
}

Failure tlsFailure(const CurlOutcome& outcome) {
  if (says(outcome, "wrong version number") ||
      says(outcome, "packet length too long")) {
    return failureOf(FailureKind::kTls, "the port does not speak TLS",
                     "check the port: this may be plain HTTP");
  }
  if (says(outcome, "unsupported protocol") ||
      says(outcome, "protocol version")) {
    return failureOf(FailureKind::kTls,
                     "the server offers no TLS version from 1.2 on",
                     "update the controller's firmware");
  }
  return failureOf(FailureKind::kTls,
                   "the TLS handshake failed (" + detail(outcome) + ')',
                   "check the port and the controller's TLS settings");
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
    default:
      // The name is compared by libcurl itself, which has only words for it.
      return says(outcome, "subject name") ? CertificateFault::kOtherName
                                           : CertificateFault::kOther;
  }
}

Failure certificateFailure(const CurlOutcome& outcome) {
  switch (outcome.code) {
    case CURLE_SSL_PINNEDPUBKEYNOTMATCH:
      return failureOf(CertificateFault::kWrongPin, "");
    case CURLE_SSL_CACERT_BADFILE:
      return failureOf(CertificateFault::kAuthorityFile, detail(outcome));
    case CURLE_PEER_FAILED_VERIFICATION:
      return failureOf(certificateFault(outcome), detail(outcome));
    default:
      return failureOf(CertificateFault::kOther, detail(outcome));
  }
}

Failure contentFailure(const CurlOutcome& outcome) {
  if (outcome.headersTooLarge) {
    return failureOf(FailureKind::kBadContent,
                     "the headers of the answer are larger than 64 KiB", "");
  }
  if (outcome.bodyTooLarge || outcome.code == CURLE_FILESIZE_EXCEEDED) {
    return failureOf(FailureKind::kBadContent,
                     "the answer is larger than 16 MiB", "");
  }
  if (outcome.code == CURLE_BAD_CONTENT_ENCODING) {
    return failureOf(FailureKind::kBadContent,
                     "the answer is not compressed as it says", "");
  }
  return failureOf(FailureKind::kBadContent,
                   "the answer is malformed (" + detail(outcome) + ')', "");
}

/// A connection that ended: before the answer, or in its middle.
Failure lostFailure(const CurlOutcome& outcome) {
  if (outcome.answered) {
    return failureOf(FailureKind::kBadContent,
                     "the connection ended in mid-answer",
                     "check the controller");
  }
  return failureOf(
      FailureKind::kUnreachable,
      "the connection ended before an answer (" + detail(outcome) + ')',
      "check the controller, and that the port is the right one");
}

}  // namespace

Failure failureOf(const CurlOutcome& outcome) {
  if (outcome.headersTooLarge || outcome.bodyTooLarge) {
    return contentFailure(outcome);
  }
  switch (outcome.code) {
    case CURLE_COULDNT_RESOLVE_HOST:
      return nameFailure();
    case CURLE_COULDNT_CONNECT:
      return connectFailure(outcome);
    case CURLE_OPERATION_TIMEDOUT:
      return timeoutFailure(outcome);
    case CURLE_GOT_NOTHING:
    case CURLE_SEND_ERROR:
    case CURLE_RECV_ERROR:
    case CURLE_PARTIAL_FILE:
      return lostFailure(outcome);
    case CURLE_PEER_FAILED_VERIFICATION:
    case CURLE_SSL_CACERT_BADFILE:
    case CURLE_SSL_ISSUER_ERROR:
    case CURLE_SSL_PINNEDPUBKEYNOTMATCH:
    case CURLE_SSL_INVALIDCERTSTATUS:
      return certificateFailure(outcome);
    case CURLE_SSL_CONNECT_ERROR:
    case CURLE_SSL_CERTPROBLEM:
    case CURLE_SSL_CIPHER:
      return tlsFailure(outcome);
    case CURLE_UNSUPPORTED_PROTOCOL:
      return failureOf(FailureKind::kNotRedfish, "the answer is not HTTP",
                       "check the port: it may want HTTPS");
    case CURLE_WEIRD_SERVER_REPLY:
    case CURLE_BAD_CONTENT_ENCODING:
    case CURLE_FILESIZE_EXCEEDED:
    case CURLE_WRITE_ERROR:
    case CURLE_HTTP2:
    case CURLE_HTTP2_STREAM:
      return contentFailure(outcome);
    default:
      return failureOf(FailureKind::kInternal, detail(outcome), "");
  }
}

}  // namespace redfish
