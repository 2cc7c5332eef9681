#pragma once

#include <curl/curl.h>
#include <openssl/evp.h>
#include <openssl/ssl.h>
#include <openssl/x509.h>
#include <openssl/x509_vfy.h>

namespace http {

// The functions of libcurl and of its OpenSSL that are used here. They are
// looked up when the first one is needed and not when the program starts:
// libcurl brings some 30 other libraries with it, which take 5 MiB and most of
// the start, and a run that asks nobody over the network (this machine's own
// parts, a recorded server) has no use for them.

/// libcurl's functions, each under its own name without "curl_".
struct CurlLibrary {
  decltype(&curl_easy_cleanup) easyCleanup = nullptr;
  decltype(&curl_easy_getinfo) easyGetinfo = nullptr;
  decltype(&curl_easy_init) easyInit = nullptr;
  decltype(&curl_easy_reset) easyReset = nullptr;
  decltype(&curl_easy_setopt) easySetopt = nullptr;
  decltype(&curl_easy_strerror) easyStrerror = nullptr;
  decltype(&curl_global_init) globalInit = nullptr;
  decltype(&curl_multi_add_handle) multiAddHandle = nullptr;
  decltype(&curl_multi_cleanup) multiCleanup = nullptr;
  decltype(&curl_multi_info_read) multiInfoRead = nullptr;
  decltype(&curl_multi_init) multiInit = nullptr;
  decltype(&curl_multi_perform) multiPerform = nullptr;
  decltype(&curl_multi_poll) multiPoll = nullptr;
  decltype(&curl_multi_remove_handle) multiRemoveHandle = nullptr;
  decltype(&curl_multi_setopt) multiSetopt = nullptr;
  decltype(&curl_multi_strerror) multiStrerror = nullptr;
  decltype(&curl_share_cleanup) shareCleanup = nullptr;
  decltype(&curl_share_init) shareInit = nullptr;
  decltype(&curl_share_setopt) shareSetopt = nullptr;
  decltype(&curl_share_strerror) shareStrerror = nullptr;
  decltype(&curl_slist_append) slistAppend = nullptr;
  decltype(&curl_slist_free_all) slistFreeAll = nullptr;
  decltype(&curl_version_info) versionInfo = nullptr;
};

/// OpenSSL's functions, each under its own name.
struct OpensslLibrary {
  decltype(&EVP_Digest) evpDigest = nullptr;
  decltype(&EVP_EncodeBlock) evpEncodeBlock = nullptr;
  decltype(&EVP_sha256) evpSha256 = nullptr;
  decltype(&SSL_CTX_set_cert_verify_callback) sslCtxSetCertVerifyCallback =
      nullptr;
  decltype(&SSL_get0_alpn_selected) sslGet0AlpnSelected = nullptr;
  decltype(&X509_STORE_CTX_get0_cert) x509StoreCtxGet0Cert = nullptr;
  decltype(&X509_STORE_CTX_set_error) x509StoreCtxSetError = nullptr;
  decltype(&X509_digest) x509Digest = nullptr;
  decltype(&X509_get_X509_PUBKEY) x509GetX509Pubkey = nullptr;
  decltype(&X509_verify_cert) x509VerifyCert = nullptr;
  decltype(&i2d_X509_PUBKEY) i2dX509Pubkey = nullptr;
};

/// The libraries; loaded by the first call and never unloaded. Throw when
/// they are not on this machine.
const CurlLibrary& curl();
const OpensslLibrary& openssl();

}  // namespace http
