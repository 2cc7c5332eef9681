#include "tests/bmc/wire/certificate.h"

#include <openssl/bio.h>
#include <openssl/ec.h>
#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/rand.h>
#include <openssl/x509v3.h>

#include <array>
#include <cstdint>
#include <memory>

namespace bmc {
namespace {

template <auto Free>
struct Deleter {
  template <typename T>
  void operator()(T* object) const {
    Free(object);
  }
};
using Key = std::unique_ptr<EVP_PKEY, Deleter<EVP_PKEY_free>>;
using Certificate = std::unique_ptr<X509, Deleter<X509_free>>;
using Memory = std::unique_ptr<BIO, Deleter<BIO_free_all>>;
using Signature = std::unique_ptr<ECDSA_SIG, Deleter<ECDSA_SIG_free>>;
using Extension = std::unique_ptr<X509_EXTENSION, Deleter<X509_EXTENSION_free>>;

Memory readable(const std::string& text) {
  return Memory(BIO_new_mem_buf(text.data(), static_cast<int>(text.size())));
}

std::string contents(BIO* memory) {
  char* data = nullptr;
  const long size = BIO_get_mem_data(memory, &data);
  return std::string(data, static_cast<std::size_t>(size));
}

Certificate readCertificate(const std::string& text) {
  const Memory memory = readable(text);
  return Certificate(
      PEM_read_bio_X509(memory.get(), nullptr, nullptr, nullptr));
}

Key readKey(const std::string& text) {
  const Memory memory = readable(text);
  return Key(PEM_read_bio_PrivateKey(memory.get(), nullptr, nullptr, nullptr));
}

bool addExtension(X509* certificate, X509* issuer, int kind,
                  const std::string& value) {
  X509V3_CTX context;
  X509V3_set_ctx(&context, issuer, certificate, nullptr, nullptr, 0);
  const Extension extension(
      X509V3_EXT_conf_nid(nullptr, &context, kind, value.c_str()));
  return extension && X509_add_ext(certificate, extension.get(), -1) == 1;
}

bool addExtensions(X509* certificate, X509* issuer,
                   const CertificateSettings& settings) {
  std::string names;
  for (const std::string& name : settings.alternativeNames) {
    names += (names.empty() ? "" : ",") + name;
  }
  return (names.empty() ||
          addExtension(certificate, issuer, NID_subject_alt_name, names)) &&
         addExtension(certificate, issuer, NID_basic_constraints,
                      settings.authority ? "critical,CA:TRUE" : "CA:FALSE") &&
         addExtension(certificate, issuer, NID_subject_key_identifier, "hash");
}

bool fill(X509* certificate, EVP_PKEY* key,
          const CertificateSettings& settings) {
  std::uint32_t serial = 0;
  if (RAND_bytes(reinterpret_cast<unsigned char*>(&serial), sizeof serial) !=
      1) {
    return false;
  }
  X509_NAME* subject = X509_get_subject_name(certificate);
  const auto* name =
      reinterpret_cast<const unsigned char*>(settings.name.c_str());
  constexpr long kVersion3 = 2;
  return X509_set_version(certificate, kVersion3) == 1 &&
         ASN1_INTEGER_set_uint64(X509_get_serialNumber(certificate), serial) ==
             1 &&
         X509_gmtime_adj(X509_getm_notBefore(certificate),
                         settings.validFromSeconds) != nullptr &&
         X509_gmtime_adj(X509_getm_notAfter(certificate),
                         settings.validToSeconds) != nullptr &&
         X509_set_pubkey(certificate, key) == 1 &&
         X509_NAME_add_entry_by_txt(subject, "CN", MBSTRING_UTF8, name, -1, -1,
                                    0) == 1;
}

// Signs; again while one of the signature's two numbers has less than 32
// bytes, which 1 of 128 has: Wine 8 takes such a signature for wrong.
bool sign(X509* certificate, EVP_PKEY* key) {
  constexpr int kNumberBytes = 32;
  while (X509_sign(certificate, key, EVP_sha256()) != 0) {
    const ASN1_BIT_STRING* bits = nullptr;
    X509_get0_signature(&bits, nullptr, certificate);
    const unsigned char* bytes = bits->data;
    const Signature signature(d2i_ECDSA_SIG(nullptr, &bytes, bits->length));
    if (!signature) {
      return false;
    }
    if (BN_num_bytes(ECDSA_SIG_get0_r(signature.get())) == kNumberBytes &&
        BN_num_bytes(ECDSA_SIG_get0_s(signature.get())) == kNumberBytes) {
      return true;
    }
  }
  return false;
}

Identity toPem(X509* certificate, EVP_PKEY* key) {
  const Memory certificateText(BIO_new(BIO_s_mem()));
  const Memory keyText(BIO_new(BIO_s_mem()));
  if (PEM_write_bio_X509(certificateText.get(), certificate) != 1 ||
      PEM_write_bio_PrivateKey(keyText.get(), key, nullptr, nullptr, 0, nullptr,
                               nullptr) != 1) {
    return {};
  }
  return {contents(certificateText.get()), contents(keyText.get())};
}

}  // namespace

Identity makeCertificate(const CertificateSettings& settings,
                         const Identity* issuer) {
  const Key key(EVP_EC_gen("P-256"));
  const Certificate certificate(X509_new());
  if (!key || !certificate || !fill(certificate.get(), key.get(), settings)) {
    return {};
  }
  const Certificate signer =
      issuer == nullptr ? nullptr : readCertificate(issuer->certificate);
  const Key signerKey = issuer == nullptr ? nullptr : readKey(issuer->key);
  if (issuer != nullptr && (!signer || !signerKey)) {
    return {};
  }
  X509* holder = signer ? signer.get() : certificate.get();
  EVP_PKEY* signingKey = signerKey ? signerKey.get() : key.get();

  const bool made = X509_set_issuer_name(certificate.get(),
                                         X509_get_subject_name(holder)) == 1 &&
                    addExtensions(certificate.get(), holder, settings) &&
                    sign(certificate.get(), signingKey);
  return made ? toPem(certificate.get(), key.get()) : Identity{};
}

std::string pinOf(const std::string& certificate) {
  const Certificate parsed = readCertificate(certificate);
  if (!parsed) {
    return {};
  }
  unsigned char* bytes = nullptr;
  const int size = i2d_X509_PUBKEY(X509_get_X509_PUBKEY(parsed.get()), &bytes);
  if (size <= 0) {
    return {};
  }
  const std::unique_ptr<unsigned char, void (*)(unsigned char*)> owner(
      bytes, [](unsigned char* memory) { OPENSSL_free(memory); });

  std::array<unsigned char, EVP_MAX_MD_SIZE> digest{};
  unsigned int digestSize = 0;
  if (EVP_Digest(bytes, static_cast<std::size_t>(size), digest.data(),
                 &digestSize, EVP_sha256(), nullptr) != 1) {
    return {};
  }
  std::array<unsigned char, 64> text{};
  const int length =
      EVP_EncodeBlock(text.data(), digest.data(), static_cast<int>(digestSize));
  return "sha256//" + std::string(reinterpret_cast<const char*>(text.data()),
                                  static_cast<std::size_t>(length));
}

}  // namespace bmc
