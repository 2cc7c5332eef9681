#include "suite/http/curl/curl_library.h"

#include <dlfcn.h>

#include <stdexcept>
#include <string>

namespace http {
namespace {

// Of the version whose interface the headers describe; it has had this name
// since 2006.
constexpr char kName[] = "libcurl.so.4";

[[noreturn]] void fail() {
  const char* reason = dlerror();
  throw std::runtime_error("libcurl cannot be used: " +
                           std::string(reason == nullptr ? kName : reason));
}

template <typename Function>
void find(void* library, const char* name, Function*& function) {
  function = reinterpret_cast<Function*>(dlsym(library, name));
  if (function == nullptr) {
    fail();
  }
}

void* load() {
  void* const library = dlopen(kName, RTLD_LAZY | RTLD_LOCAL);
  if (library == nullptr) {
    fail();
  }
  return library;
}

void* library() {
  static void* const kLibrary = load();
  return kLibrary;
}

CurlLibrary curlFunctions(void* library) {
  CurlLibrary curl;
  find(library, "curl_easy_cleanup", curl.easyCleanup);
  find(library, "curl_easy_getinfo", curl.easyGetinfo);
  find(library, "curl_easy_init", curl.easyInit);
  find(library, "curl_easy_reset", curl.easyReset);
  find(library, "curl_easy_setopt", curl.easySetopt);
  find(library, "curl_easy_strerror", curl.easyStrerror);
  find(library, "curl_global_init", curl.globalInit);
  find(library, "curl_multi_add_handle", curl.multiAddHandle);
  find(library, "curl_multi_cleanup", curl.multiCleanup);
  find(library, "curl_multi_info_read", curl.multiInfoRead);
  find(library, "curl_multi_init", curl.multiInit);
  find(library, "curl_multi_perform", curl.multiPerform);
  find(library, "curl_multi_poll", curl.multiPoll);
  find(library, "curl_multi_remove_handle", curl.multiRemoveHandle);
  find(library, "curl_multi_setopt", curl.multiSetopt);
  find(library, "curl_multi_strerror", curl.multiStrerror);
  find(library, "curl_share_cleanup", curl.shareCleanup);
  find(library, "curl_share_init", curl.shareInit);
  find(library, "curl_share_setopt", curl.shareSetopt);
  find(library, "curl_share_strerror", curl.shareStrerror);
  find(library, "curl_slist_append", curl.slistAppend);
  find(library, "curl_slist_free_all", curl.slistFreeAll);
  find(library, "curl_version_info", curl.versionInfo);
  return curl;
}

// OpenSSL comes with libcurl, and is found through it.
OpensslLibrary opensslFunctions(void* library) {
  OpensslLibrary ssl;
  find(library, "EVP_Digest", ssl.evpDigest);
  find(library, "EVP_EncodeBlock", ssl.evpEncodeBlock);
  find(library, "EVP_sha256", ssl.evpSha256);
  find(library, "SSL_CTX_set_cert_verify_callback",
       ssl.sslCtxSetCertVerifyCallback);
  find(library, "SSL_get0_alpn_selected", ssl.sslGet0AlpnSelected);
  find(library, "X509_STORE_CTX_get0_cert", ssl.x509StoreCtxGet0Cert);
  find(library, "X509_STORE_CTX_set_error", ssl.x509StoreCtxSetError);
  find(library, "X509_digest", ssl.x509Digest);
  find(library, "X509_get_X509_PUBKEY", ssl.x509GetX509Pubkey);
  find(library, "X509_verify_cert", ssl.x509VerifyCert);
  find(library, "i2d_X509_PUBKEY", ssl.i2dX509Pubkey);
  return ssl;
}

}  // namespace

const CurlLibrary& curl() {
  static const CurlLibrary kFunctions = curlFunctions(library());
  return kFunctions;
}

const OpensslLibrary& openssl() {
  static const OpensslLibrary kFunctions = opensslFunctions(library());
  return kFunctions;
}

}  // namespace http
