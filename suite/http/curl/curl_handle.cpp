#include "suite/http/curl/curl_handle.h"

#include <csignal>
#include <cstdlib>
#include <cstring>
#include <new>
#include <stdexcept>
#include <utility>

#include "suite/http/curl/curl_memory.h"
#include "suite/platform/memory.h"

namespace http {
namespace {

template <typename Owner, typename Handle>
Owner owned(Handle* handle) {
  if (handle == nullptr) {
    throw std::bad_alloc();
  }
  return Owner(handle);
}

// A TLS connection that the server has reset raises SIGPIPE when we write to
// it, which would end the process and leave its sessions open. Whoever wants
// the signal has set a handler.
void ignoreBrokenPipes() {
  struct sigaction action = {};
  if (sigaction(SIGPIPE, nullptr, &action) != 0) {
    return;
  }
  if ((static_cast<unsigned int>(action.sa_flags) & SA_SIGINFO) != 0) {
    return;
  }
  if (action.sa_handler != SIG_DFL) {
    return;
  }
  action.sa_handler = SIG_IGN;
  static_cast<void>(sigaction(SIGPIPE, &action, nullptr));  // Known signal.
}

// Done with the first handle, and not before: a run on a recorded server
// does not pay for it.
void initialise() {
  static const CURLcode kResult = [] {
    ignoreBrokenPipes();
    // libcurl would write the keys of all connections there, with which a
    // recorded login can be read.
    unsetenv("SSLKEYLOGFILE");
    return startCurl();
  }();
  check(kResult);
}

}  // namespace

CurlEasy makeCurlEasy() {
  initialise();
  return owned<CurlEasy>(curl_easy_init());
}

CurlMulti makeCurlMulti() {
  initialise();
  return owned<CurlMulti>(curl_multi_init());
}

CurlShare makeCurlShare() {
  initialise();
  return owned<CurlShare>(curl_share_init());
}

void check(CURLcode code) {
  if (code == CURLE_OUT_OF_MEMORY) {
    throw std::bad_alloc();
  }
  if (code != CURLE_OK) {
    throw std::runtime_error(curl_easy_strerror(code));
  }
}

void check(CURLMcode code) {
  if (code == CURLM_OUT_OF_MEMORY) {
    throw std::bad_alloc();
  }
  if (code != CURLM_OK) {
    throw std::runtime_error(curl_multi_strerror(code));
  }
}

void check(CURLSHcode code) {
  if (code == CURLSHE_NOMEM) {
    throw std::bad_alloc();
  }
  if (code != CURLSHE_OK) {
    throw std::runtime_error(curl_share_strerror(code));
  }
}

CurlHeaders::~CurlHeaders() {
  for (curl_slist* line = list_; line != nullptr; line = line->next) {
    platform::overwrite(line->data, std::strlen(line->data));
  }
  curl_slist_free_all(list_);
}

CurlHeaders& CurlHeaders::operator=(CurlHeaders&& other) noexcept {
  std::swap(list_, other.list_);
  return *this;
}

void CurlHeaders::append(const char* line) {
  curl_slist* longer = curl_slist_append(list_, line);
  if (longer == nullptr) {
    throw std::bad_alloc();
  }
  list_ = longer;
}

}  // namespace http
