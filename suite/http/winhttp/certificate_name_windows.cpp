#include "suite/http/winhttp/certificate_name_windows.h"

#include <algorithm>
#include <array>
#include <boost/nowide/convert.hpp>
#include <boost/url/ipv4_address.hpp>
#include <boost/url/ipv6_address.hpp>
#include <cstring>
#include <string_view>
#include <vector>

namespace http {
namespace {

// The bytes of an address as a certificate holds them; empty for a name.
std::string addressBytes(const std::string& host) {
  const auto text = [](const auto& bytes) {
    return std::string(bytes.begin(), bytes.end());
  };
  const std::string address = host.substr(0, host.find('%'));
  if (const auto ipv4 = boost::urls::parse_ipv4_address(address)) {
    return text(ipv4->to_bytes());
  }
  if (const auto ipv6 = boost::urls::parse_ipv6_address(address)) {
    return text(ipv6->to_bytes());
  }
  return "";
}

bool sameLetter(char a, char b) {
  const auto lower = [](char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  };
  return lower(a) == lower(b);
}

bool sameName(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), sameLetter);
}

// Whether a name, perhaps with a wildcard, stands for a host.
bool matches(std::string_view pattern, std::string_view host) {
  if (pattern.substr(0, 2) != "*.") {
    return sameName(pattern, host);
  }
  const std::size_t dot = host.find('.');
  // A wildcard below nothing but a top-level domain is none.
  return dot != host.npos && dot != 0 && pattern.find('.', 2) != pattern.npos &&
         sameName(pattern.substr(1), host.substr(dot));
}

// The alternative names of a certificate (RFC 5280, 4.2.1.6).
class AlternativeNames {
 public:
  explicit AlternativeNames(const CERT_CONTEXT& certificate) {
    const CERT_EXTENSION* const extension = CertFindExtension(
        szOID_SUBJECT_ALT_NAME2, certificate.pCertInfo->cExtension,
        certificate.pCertInfo->rgExtension);
    DWORD size = 0;
    if (extension == nullptr || !decode(*extension, nullptr, size)) {
      return;
    }
    buffer_.resize(size / sizeof(std::max_align_t) + 1);
    if (!decode(*extension, buffer_.data(), size)) {
      return;
    }
    const auto* const names =
        reinterpret_cast<const CERT_ALT_NAME_INFO*>(buffer_.data());
    begin_ = names->rgAltEntry;
    end_ = begin_ + names->cAltEntry;
  }

  const CERT_ALT_NAME_ENTRY* begin() const { return begin_; }
  const CERT_ALT_NAME_ENTRY* end() const { return end_; }

 private:
  static bool decode(const CERT_EXTENSION& extension, void* buffer,
                     DWORD& size) {
    return CryptDecodeObject(X509_ASN_ENCODING, X509_ALTERNATE_NAME,
                             extension.Value.pbData, extension.Value.cbData, 0,
                             buffer, &size) != 0;
  }

  std::vector<std::max_align_t> buffer_;
  const CERT_ALT_NAME_ENTRY* begin_ = nullptr;
  const CERT_ALT_NAME_ENTRY* end_ = nullptr;
};

std::string commonName(const CERT_CONTEXT& certificate) {
  char attribute[] = szOID_COMMON_NAME;
  std::array<wchar_t, 256> name{};
  const DWORD size =
      CertGetNameStringW(&certificate, CERT_NAME_ATTR_TYPE, 0, attribute,
                         name.data(), static_cast<DWORD>(name.size()));
  return size <= 1 ? "" : boost::nowide::narrow(name.data(), size - 1);
}

}  // namespace

bool isFor(const CERT_CONTEXT& certificate, const std::string& host) {
  const std::string address = addressBytes(host);
  bool named = false;
  for (const CERT_ALT_NAME_ENTRY& entry : AlternativeNames(certificate)) {
    if (!address.empty() && entry.dwAltNameChoice == CERT_ALT_NAME_IP_ADDRESS) {
      if (address.size() == entry.IPAddress.cbData &&
          std::memcmp(address.data(), entry.IPAddress.pbData, address.size()) ==
              0) {
        return true;
      }
    }
    if (address.empty() && entry.dwAltNameChoice == CERT_ALT_NAME_DNS_NAME) {
      named = true;
      if (matches(boost::nowide::narrow(entry.pwszDNSName), host)) {
        return true;
      }
    }
  }
  return address.empty() && !named && matches(commonName(certificate), host);
}

}  // namespace http
