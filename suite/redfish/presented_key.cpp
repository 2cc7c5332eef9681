#include "suite/redfish/presented_key.h"

#include <openssl/evp.h>
#include <openssl/ssl.h>
#include <openssl/x509.h>
#include <openssl/x509_vfy.h>

#include <array>
#include <memory>

#include "suite/redfish/curl_handle.h"

namespace redfish {
namespace {

struct OpensslDeleter {
  void operator()(unsigned char* bytes) const { OPENSSL_free(bytes); }
};

/// The pin of a certificate's key; empty when it cannot be made.
std::string pinOf(const X509* certificate) {
  if (certificate == nullptr) return "";
  unsigned char* encoded = nullptr;
  const int size = i2d_X509_PUBKEY(X509_get_X509_PUBKEY(certificate), &encoded);
  const std::unique_ptr<unsigned char, OpensslDeleter> owner(encoded);
  std::array<unsigned char, EVP_MAX_MD_SIZE> digest{};
  unsigned int digestSize = 0;
  if (size <= 0 ||
      EVP_Digest(encoded, static_cast<std::size_t>(size), digest.data(),
                 &digestSize, EVP_sha256(), nullptr) != 1) {
    return "";
  }
  std::array<unsigned char, 2 * EVP_MAX_MD_SIZE> text{};
  const int length =
      EVP_EncodeBlock(text.data(), digest.data(), static_cast<int>(digestSize));
  return "sha256//" + std::string(text.begin(), text.begin() + length);
}

/// OpenSSL's own check of a chain, and a note of whose it is.
int verify(X509_STORE_CTX* chain, void* pin) {
  try {
    *static_cast<std::string*>(pin) = pinOf(X509_STORE_CTX_get0_cert(chain));
  } catch (...) {
    static_cast<std::string*>(pin)->clear();
  }
  return X509_verify_cert(chain);
}

CURLcode prepare(CURL* /*easy*/, void* context, void* pin) {
  SSL_CTX_set_cert_verify_callback(static_cast<SSL_CTX*>(context), verify, pin);
  return CURLE_OK;
}

}  // namespace

void notePresentedKey(CURL* easy, std::string& pin) {
  setOption(easy, CURLOPT_SSL_CTX_FUNCTION, &prepare);
  setOption(easy, CURLOPT_SSL_CTX_DATA, static_cast<void*>(&pin));
}

}  // namespace redfish
