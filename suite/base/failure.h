#pragma once

#include <string>

namespace base {

/// Kinds of failures, as far as callers distinguish them. Whoever reports a
/// failure chooses the result code or status for it.
enum class FailureKind {
  kNameNotResolved,     ///< The host name has no address.
  kUnreachable,         ///< Refused, no route, or reset before an answer.
  kConnectTimeout,      ///< No TCP or TLS connection in time.
  kReadTimeout,         ///< An answer did not arrive in time.
  kDeadline,            ///< The time of the whole call or run is used up.
  kCertificate,         ///< Chain, host name, pin or authority file refused.
  kTls,                 ///< Any other failure of the TLS handshake.
  kAuthentication,      ///< User name or password refused.
  kForbidden,           ///< Logged in, but the privilege is missing.
  kPasswordChange,      ///< The password must be changed first.
  kNoCredentials,       ///< The service asks for a login; none configured.
  kCredentialMissing,   ///< The file that should hold the password is not
                        ///< there.
  kBusy,                ///< 429/503 after all repeats; session table full.
  kServerError,         ///< 5xx other than 503.
  kNotRedfish,          ///< Answers, but is no Redfish service (version 1).
  kNoSystem,            ///< No systems, or no such node.
  kNotFound,            ///< 404 or 410: the resource does not exist.
  kBadContent,          ///< Not JSON, truncated, over a limit, no object.
  kRefusedLink,         ///< A link or redirect that leaves the service.
  kDirectoryMissing,    ///< Recorded server: no such directory.
  kFileUnreadable,      ///< A file of ours cannot be read: of a recorded
                        ///< server, or one that holds a password.
  kNoHostInterface,     ///< No host interface to this machine's controller.
  kNoHostAddress,       ///< The host interface is down, or has no address.
  kNotPermitted,        ///< This user may not read what is needed.
  kNoBootstrapAccount,  ///< The controller made no account for us.
  kIpmiDevice,          ///< The IPMI device does not work.
  kUsage,               ///< The command line or the settings are wrong.
  kInterrupted,         ///< The user ended the run.
  kInternal             ///< A failure of our own.
};

/// One failure, with what a person needs to act on it. Texts are clean: no
/// control characters, no secrets.
struct Failure {
  FailureKind kind = FailureKind::kInternal;
  std::string address;  ///< Target that failed: "10.0.0.5:443", "file:DIR".
  std::string uri;      ///< Resource asked for; empty for the connection.
  std::string cause;    ///< What happened, in one clause.
  std::string remedy;   ///< What to do about it; may be empty.
};

/// A failure of which only the cause is known.
Failure makeFailure(FailureKind kind, std::string cause);

/// The user named something that is wrong.
Failure usageFailure(std::string cause);

/// The failure in one line: address, URI, cause, remedy.
std::string describe(const Failure& failure);

}  // namespace base
