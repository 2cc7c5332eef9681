#pragma once

#include <curl/curl.h>

#include <optional>
#include <string>

#include "suite/base/failure.h"

namespace http {

/// Whom a connection trusts. See NetworkTransportOptions for what they mean
/// together.
class CurlTrust {
 public:
  /// `oneCertificate`: the certificate is compared with one that is known, by
  /// the handle's user (certificate_check.h).
  CurlTrust(std::string caFile, std::string pin, bool insecure,
            bool oneCertificate);

  /// What is wrong with the options, so that no connection can be made;
  /// address and URI are left empty.
  std::optional<base::Failure> fault() const;

  /// Sets the options of a handle that is about to ask over TLS.
  void apply(CURL* easy) const;

 private:
  std::string caFile_;
  std::string caDirectory_;  ///< Empty: libcurl's own default.
  std::string pin_;
  bool verify_;
  bool oneCertificate_;
};

}  // namespace http
