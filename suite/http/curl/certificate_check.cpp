#include "suite/http/curl/certificate_check.h"

#include <openssl/evp.h>
#include <openssl/x509.h>
#include <openssl/x509_vfy.h>

#include <array>
#include <cstddef>
#include <vector>

namespace http {
namespace {

// The pin of a certificate's key; empty when it cannot be made.
std::string pinOf(const X509* certificate) {
  if (certificate == nullptr) {
    return "";
  }
  const X509_PUBKEY* const key = X509_get_X509_PUBKEY(certificate);
  const int size = i2d_X509_PUBKEY(key, nullptr);
  if (size <= 0) {
    return "";
  }
  std::vector<unsigned char> encoded(static_cast<std::size_t>(size));
  unsigned char* end = encoded.data();
  std::array<unsigned char, EVP_MAX_MD_SIZE> digest{};
  unsigned int digestSize = 0;
  if (i2d_X509_PUBKEY(key, &end) != size ||
      EVP_Digest(encoded.data(), encoded.size(), digest.data(), &digestSize,
                 EVP_sha256(), nullptr) != 1) {
    return "";
  }
  std::array<unsigned char, 2 * EVP_MAX_MD_SIZE> text{};
  const int length =
      EVP_EncodeBlock(text.data(), digest.data(), static_cast<int>(digestSize));
  return "sha256//" + std::string(text.begin(), text.begin() + length);
}

bool isTrusted(const X509* certificate, const std::string& digest) {
  std::array<unsigned char, EVP_MAX_MD_SIZE> own{};
  unsigned int size = 0;
  return certificate != nullptr &&
         X509_digest(certificate, EVP_sha256(), own.data(), &size) == 1 &&
         digest == std::string(own.begin(), own.begin() + size);
}

// The check of a chain, OpenSSL's own unless one certificate is to be
// trusted, and a note of whose it is.
int verify(X509_STORE_CTX* chain, void* data) {
  auto& check = *static_cast<CertificateCheck*>(data);
  const X509* const certificate = X509_STORE_CTX_get0_cert(chain);
  bool trusted = false;
  try {
    check.pin = pinOf(certificate);
    trusted = !check.trusted.empty() && isTrusted(certificate, check.trusted);
  } catch (...) {
    check.pin.clear();
  }
  if (check.trusted.empty()) {
    return X509_verify_cert(chain);
  }
  X509_STORE_CTX_set_error(
      chain, trusted ? X509_V_OK : X509_V_ERR_APPLICATION_VERIFICATION);
  return trusted ? 1 : 0;
}

}  // namespace

void checkCertificates(SSL_CTX* context, CertificateCheck& check) {
  SSL_CTX_set_cert_verify_callback(context, verify, &check);
}

}  // namespace http
