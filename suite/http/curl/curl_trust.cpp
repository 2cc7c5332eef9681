#include "suite/http/curl/curl_trust.h"

#include <filesystem>
#include <string_view>
#include <system_error>
#include <utility>

#include "suite/http/certificate_fault.h"
#include "suite/http/curl/curl_handle.h"
#include "suite/http/curl/trusted_authorities.h"

namespace http {
namespace {

constexpr std::string_view kPinPrefix = "sha256//";
constexpr const char* kNone = nullptr;

// The system's directory of authorities, if they can be looked up in it one
// by one; else empty.
std::string hashedSystemDirectory() {
  const char* directory = curl_version_info(CURLVERSION_NOW)->capath;
  return directory != nullptr && isHashedDirectory(directory) ? directory : "";
}

}  // namespace

CurlTrust::CurlTrust(std::string caFile, std::string pin, bool insecure,
                     bool oneCertificate)
    : caFile_(std::move(caFile)),
      pin_(std::move(pin)),
      verify_(!oneCertificate && !insecure &&
              (pin_.empty() || !caFile_.empty())),
      oneCertificate_(oneCertificate) {
  if (verify_ && caFile_.empty()) {
    caDirectory_ = hashedSystemDirectory();
  }
}

std::optional<base::Failure> CurlTrust::fault() const {
  // OpenSSL would wait for a pipe outside of every time limit.
  std::error_code unknown;
  if (verify_ && std::filesystem::is_fifo(caFile_, unknown)) {
    return failureOf(CertificateFault::kAuthorityFile, "it is a pipe");
  }
  // libcurl takes any other text for the name of a file with the key.
  if (pin_.empty() || pin_.compare(0, kPinPrefix.size(), kPinPrefix) == 0) {
    return std::nullopt;
  }
  return failureOf(CertificateFault::kBadPin, "");
}

void CurlTrust::apply(CURL* easy) const {
  setOption(easy, CURLOPT_SSLVERSION,
            static_cast<long>(CURL_SSLVERSION_TLSv1_2));
  if (!pin_.empty()) {
    setOption(easy, CURLOPT_PINNEDPUBLICKEY, pin_.c_str());
  }
  setOption(easy, CURLOPT_SSL_VERIFYPEER, verify_ || oneCertificate_ ? 1L : 0L);
  setOption(easy, CURLOPT_SSL_VERIFYHOST, verify_ ? 2L : 0L);
  // The system's authorities as one file are parsed whole, 10 ms and several
  // megabytes, for each connection; in a hashed directory only the one that
  // is needed. Where none is needed, none must be read.
  if (!verify_) {
    setOption(easy, CURLOPT_CAINFO, kNone);
    setOption(easy, CURLOPT_CAPATH, kNone);
  } else if (!caFile_.empty()) {
    setOption(easy, CURLOPT_CAINFO, caFile_.c_str());
    setOption(easy, CURLOPT_CAPATH, kNone);
  } else if (!caDirectory_.empty()) {
    setOption(easy, CURLOPT_CAINFO, kNone);
    setOption(easy, CURLOPT_CAPATH, caDirectory_.c_str());
  }
}

}  // namespace http
