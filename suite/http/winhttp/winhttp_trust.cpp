#include "suite/http/winhttp/winhttp_trust.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string_view>
#include <system_error>

#include "suite/http/winhttp/base64_windows.h"
#include "suite/http/winhttp/certificate_name_windows.h"

namespace http {
namespace {

constexpr std::string_view kPinPrefix = "sha256//";
constexpr DWORD kEncoding = X509_ASN_ENCODING | PKCS_7_ASN_ENCODING;
// A server must not make this machine fetch what its certificate names.
constexpr DWORD kChainFlags =
    CERT_CHAIN_CACHE_END_CERT | CERT_CHAIN_DISABLE_AIA;
constexpr std::size_t kLargestAuthorityFile = std::size_t{4} << 20U;

// The digest of a certificate's key that pins hold, in base 64. Empty when it
// cannot be made.
std::string digestOf(const CERT_CONTEXT& certificate) {
  DWORD size = 0;
  CERT_PUBLIC_KEY_INFO* const key =
      &certificate.pCertInfo->SubjectPublicKeyInfo;
  if (CryptEncodeObject(kEncoding, X509_PUBLIC_KEY_INFO, key, nullptr, &size) ==
      0) {
    return "";
  }
  std::vector<BYTE> encoded(size);
  if (CryptEncodeObject(kEncoding, X509_PUBLIC_KEY_INFO, key, encoded.data(),
                        &size) == 0) {
    return "";
  }
  constexpr DWORD kSha256Bytes = 32;
  std::string hash(kSha256Bytes, '\0');
  DWORD hashSize = kSha256Bytes;
  if (CryptHashCertificate2(L"SHA256", 0, nullptr, encoded.data(), size,
                            reinterpret_cast<BYTE*>(hash.data()),
                            &hashSize) == 0) {
    return "";
  }
  return toBase64(hash);
}

// What is wrong with the time of a certificate.
CertificateFault timeFault(const CERT_CONTEXT& certificate) {
  return CertVerifyTimeValidity(nullptr, certificate.pCertInfo) < 0
             ? CertificateFault::kNotYetValid
             : CertificateFault::kExpired;
}

// The certificate of a chain to blame for a fault.
const CERT_CONTEXT& blamed(const CERT_CHAIN_CONTEXT& chain, DWORD fault) {
  const CERT_SIMPLE_CHAIN& links = *chain.rgpChain[0];
  for (DWORD index = 0; index < links.cElement; ++index) {
    if ((links.rgpElement[index]->TrustStatus.dwErrorStatus & fault) != 0) {
      return *links.rgpElement[index]->pCertContext;
    }
  }
  return *links.rgpElement[0]->pCertContext;
}

std::optional<CertificateFault> faultOf(const CERT_CHAIN_CONTEXT& chain) {
  const DWORD errors = chain.TrustStatus.dwErrorStatus;
  const auto has = [errors](DWORD bits) { return (errors & bits) != 0; };
  if (has(CERT_TRUST_IS_REVOKED)) {
    return CertificateFault::kRevoked;
  }
  if (has(CERT_TRUST_IS_UNTRUSTED_ROOT | CERT_TRUST_IS_PARTIAL_CHAIN |
          CERT_TRUST_IS_NOT_SIGNATURE_VALID)) {
    const CERT_SIMPLE_CHAIN& links = *chain.rgpChain[0];
    return links.cElement == 1 && !has(CERT_TRUST_IS_PARTIAL_CHAIN)
               ? CertificateFault::kSelfSigned
               : CertificateFault::kUnknownAuthority;
  }
  if (has(CERT_TRUST_IS_NOT_TIME_VALID)) {
    return timeFault(blamed(chain, CERT_TRUST_IS_NOT_TIME_VALID));
  }
  if (has(CERT_TRUST_HAS_WEAK_SIGNATURE)) {
    return CertificateFault::kWeak;
  }
  // Whether it was revoked is not asked for.
  constexpr DWORD kHarmless =
      CERT_TRUST_REVOCATION_STATUS_UNKNOWN | CERT_TRUST_IS_OFFLINE_REVOCATION;
  if (has(~kHarmless)) {
    return CertificateFault::kOther;
  }
  return std::nullopt;
}

}  // namespace

WinhttpTrust::WinhttpTrust(const NetworkTransportOptions& options)
    : host_(options.origin.host),
      verify_(!options.insecure &&
              (options.pin.empty() || !options.caFile.empty())) {
  if (!options.pin.empty()) {
    readPins(options.pin);
  }
  if (verify_ && !options.caFile.empty()) {
    authorityFile_ = options.caFile;
    readAuthorities(options.caFile);
  }
}

void WinhttpTrust::readPins(const std::string& text) {
  if (text.compare(0, kPinPrefix.size(), kPinPrefix) != 0) {
    fault_ = failureOf(CertificateFault::kBadPin, "");
    return;
  }
  std::string_view rest = text;
  while (!rest.empty()) {
    const std::string_view pin = rest.substr(0, rest.find(';'));
    rest.remove_prefix(std::min(pin.size() + 1, rest.size()));
    if (pin.substr(0, kPinPrefix.size()) == kPinPrefix) {
      pins_.emplace_back(pin.substr(kPinPrefix.size()));
    }
  }
}

void WinhttpTrust::readAuthorities(const std::string& file) {
  const auto fail = [this](const std::string& detail) {
    fault_ = failureOf(CertificateFault::kAuthorityFile, detail);
  };
  std::error_code error;
  const std::filesystem::path path = std::filesystem::u8path(file);
  const std::uintmax_t size = std::filesystem::file_size(path, error);
  if (error) {
    return fail(error.message());
  }
  if (size > kLargestAuthorityFile) {
    return fail("it is too large");
  }
  std::ifstream stream(path, std::ios::binary);
  const std::string text{std::istreambuf_iterator<char>(stream), {}};

  authorities_.reset(CertOpenStore(CERT_STORE_PROV_MEMORY, 0, 0, 0, nullptr));
  constexpr std::string_view kBegin = "-----BEGIN CERTIFICATE-----";
  constexpr std::string_view kEnd = "-----END CERTIFICATE-----";
  std::size_t count = 0;
  for (std::size_t begin = text.find(kBegin); begin != text.npos;
       begin = text.find(kBegin, begin + 1)) {
    const std::size_t end = text.find(kEnd, begin);
    if (end == text.npos) {
      break;
    }
    const std::string bytes = fromBase64(std::string_view(text).substr(
        begin + kBegin.size(), end - begin - kBegin.size()));
    if (CertAddEncodedCertificateToStore(
            authorities_.get(), X509_ASN_ENCODING,
            reinterpret_cast<const BYTE*>(bytes.data()),
            static_cast<DWORD>(bytes.size()), CERT_STORE_ADD_ALWAYS,
            nullptr) != 0) {
      ++count;
    }
  }
  if (count == 0) {
    return fail("it holds no certificate");
  }

  CERT_CHAIN_ENGINE_CONFIG config = {};
  // As Windows 7 has it: Wine knows nothing that came later.
  config.cbSize = offsetof(CERT_CHAIN_ENGINE_CONFIG, dwExclusiveFlags);
  config.hExclusiveRoot = authorities_.get();
  HCERTCHAINENGINE engine = nullptr;
  if (CertCreateCertificateChainEngine(&config, &engine) == 0) {
    return fail(
        std::system_category().message(static_cast<int>(GetLastError())));
  }
  engine_.reset(engine);
}

std::string pinOf(const CERT_CONTEXT& certificate) {
  const std::string digest = digestOf(certificate);
  return digest.empty() ? "" : std::string(kPinPrefix) + digest;
}

std::optional<CertificateFault> WinhttpTrust::problemWith(
    const CERT_CONTEXT& server) const {
  if (!pins_.empty() &&
      std::find(pins_.begin(), pins_.end(), digestOf(server)) == pins_.end()) {
    return CertificateFault::kWrongPin;
  }
  return verify_ ? problemWithChain(server) : std::nullopt;
}

std::optional<CertificateFault> WinhttpTrust::problemWithChain(
    const CERT_CONTEXT& server) const {
  CERT_CHAIN_PARA wanted = {};
  wanted.cbSize = sizeof(wanted);
  char serverUse[] = szOID_PKIX_KP_SERVER_AUTH;
  char* uses[] = {serverUse};
  wanted.RequestedUsage.dwType = USAGE_MATCH_TYPE_OR;
  wanted.RequestedUsage.Usage.cUsageIdentifier = 1;
  wanted.RequestedUsage.Usage.rgpszUsageIdentifier = uses;
  // Where the links between the server and an authority may lie.
  const CertificateStore known(
      CertOpenStore(CERT_STORE_PROV_COLLECTION, 0, 0, 0, nullptr));
  CertAddStoreToCollection(known.get(), server.hCertStore, 0, 0);
  if (authorities_) {
    CertAddStoreToCollection(known.get(), authorities_.get(), 0, 0);
  }
  const CERT_CHAIN_CONTEXT* built = nullptr;
  if (CertGetCertificateChain(engine_.get(), &server, nullptr, known.get(),
                              &wanted, kChainFlags, nullptr, &built) == 0) {
    return CertificateFault::kOther;
  }
  const ChainPtr chain(built);
  if (const auto fault = faultOf(*chain)) {
    return withAuthorityFile(*fault, authorityFile_);
  }
  if (!isFor(server, host_)) {
    return CertificateFault::kOtherName;
  }
  return std::nullopt;
}

}  // namespace http
