#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "suite/http/certificate_fault.h"
#include "suite/http/network_transport.h"
#include "suite/http/winhttp/winhttp_handle.h"

namespace http {

/// The pin of a certificate's key (RFC 7469, 2.4), "sha256//BASE64"; empty when
/// it cannot be made.
std::string pinOf(const CERT_CONTEXT& certificate);

/// What a service's certificate is measured by. WinHTTP's own checks are
/// switched off, because they know neither pins nor files of authorities, and
/// tell one fault from another only in part. Safe for use by several threads.
class WinhttpTrust {
 public:
  explicit WinhttpTrust(const NetworkTransportOptions& options);

  /// Why nothing can be trusted at all: a pin that is none, a file of
  /// authorities that cannot be read. Address and URI are left empty.
  const std::optional<base::Failure>& fault() const { return fault_; }

  /// The file of trusted authorities that was named; empty: the system's.
  const std::string& authorityFile() const { return authorityFile_; }

  /// What is wrong with a server's certificate; nullopt if it is trusted.
  std::optional<CertificateFault> problemWith(const CERT_CONTEXT& server) const;

 private:
  void readPins(const std::string& text);
  void readAuthorities(const std::string& file);
  std::optional<CertificateFault> problemWithChain(
      const CERT_CONTEXT& server) const;

  std::string host_;
  bool verify_;
  std::string authorityFile_;
  std::vector<std::string> pins_;  ///< In base 64.
  CertificateStore authorities_;   ///< Null: the system's.
  ChainEngine engine_;             ///< Null: the system's.
  std::optional<base::Failure> fault_;
};

}  // namespace http
