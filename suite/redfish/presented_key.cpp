#include "suite/redfish/presented_key.h"

#include <array>
#include <cstddef>
#include <vector>

#include "suite/redfish/curl_handle.h"
#include "suite/redfish/curl_library.h"

namespace redfish {
namespace {

/// The pin of a certificate's key; empty when it cannot be made.
std::string pinOf(const X509* certificate) {
  if (certificate == nullptr) return "";
  const OpensslLibrary& ssl = openssl();
  const X509_PUBKEY* const key = ssl.x509GetX509Pubkey(certificate);
  const int size = ssl.i2dX509Pubkey(key, nullptr);
  if (size <= 0) return "";
  std::vector<unsigned char> encoded(static_cast<std::size_t>(size));
  unsigned char* end = encoded.data();
  std::array<unsigned char, EVP_MAX_MD_SIZE> digest{};
  unsigned int digestSize = 0;
  if (ssl.i2dX509Pubkey(key, &end) != size ||
      ssl.evpDigest(encoded.data(), encoded.size(), digest.data(), &digestSize,
                    ssl.evpSha256(), nullptr) != 1) {
    return "";
  }
  std::array<unsigned char, 2 * EVP_MAX_MD_SIZE> text{};
  const int length = ssl.evpEncodeBlock(text.data(), digest.data(),
                                        static_cast<int>(digestSize));
  return "sha256//" + std::string(text.begin(), text.begin() + length);
}

/// OpenSSL's own check of a chain, and a note of whose it is.
int verify(X509_STORE_CTX* chain, void* pin) {
  try {
    *static_cast<std::string*>(pin) =
        pinOf(openssl().x509StoreCtxGet0Cert(chain));
  } catch (...) {
    static_cast<std::string*>(pin)->clear();
  }
  return openssl().x509VerifyCert(chain);
}

CURLcode prepare(CURL* /*easy*/, void* context, void* pin) {
  openssl().sslCtxSetCertVerifyCallback(static_cast<SSL_CTX*>(context), verify,
                                        pin);
  return CURLE_OK;
}

}  // namespace

void notePresentedKey(CURL* easy, std::string& pin) {
  setOption(easy, CURLOPT_SSL_CTX_FUNCTION, &prepare);
  setOption(easy, CURLOPT_SSL_CTX_DATA, static_cast<void*>(&pin));
}

}  // namespace redfish
