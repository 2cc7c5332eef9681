#pragma once

#include <curl/curl.h>

#include <optional>
#include <string>

#include "suite/redfish/failure.h"

namespace redfish {

/// Whom a connection trusts. See NetworkTransportOptions for what the three
/// mean together.
class CurlTrust {
 public:
  CurlTrust(std::string caFile, std::string pin, bool insecure);

  /// What is wrong with the options, so that no connection can be made;
  /// address and URI are left empty.
  std::optional<Failure> fault() const;

  /// Sets the options of a handle that is about to ask over TLS.
  void apply(CURL* easy) const;

 private:
  std::string caFile_;
  std::string caDirectory_;  ///< Empty: libcurl's own default.
  std::string pin_;
  bool verify_;
};

}  // namespace redfish
