#include <curl/curl.h>

#include <algorithm>

#include "suite/http/network_transport.h"

namespace http {

std::string networkLibraries() {
  const curl_version_info_data& known = *curl_version_info(CURLVERSION_NOW);
  std::string tls = known.ssl_version == nullptr ? "" : known.ssl_version;
  // libcurl writes "OpenSSL/3.0.15".
  std::replace(tls.begin(), tls.end(), '/', ' ');
  return std::string("libcurl ") + known.version +
         (tls.empty() ? "" : ", " + tls);
}

}  // namespace http
