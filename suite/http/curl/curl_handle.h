#pragma once

#include <curl/curl.h>

#include <memory>

namespace http {

// Owners of libcurl's handles, and its setting of options with the error
// turned into an exception: what fails there is memory, or our own mistake.

template <auto Cleanup>
struct CurlDeleter {
  template <typename Handle>
  void operator()(Handle* handle) const {
    static_cast<void>(Cleanup(handle));  // Nobody could handle an error.
  }
};

using CurlEasy = std::unique_ptr<CURL, CurlDeleter<&curl_easy_cleanup>>;
using CurlMulti = std::unique_ptr<CURLM, CurlDeleter<&curl_multi_cleanup>>;
using CurlShare = std::unique_ptr<CURLSH, CurlDeleter<&curl_share_cleanup>>;

/// New handles; libcurl is made ready for use before the first one. Throw
/// when there is no memory for them.
CurlEasy makeCurlEasy();
CurlMulti makeCurlMulti();
CurlShare makeCurlShare();

/// Throws unless the code says success.
void check(CURLcode code);
void check(CURLMcode code);
void check(CURLSHcode code);

template <typename Value>
void setOption(CURL* easy, CURLoption option, Value value) {
  check(curl_easy_setopt(easy, option, value));
}

/// A list of header lines whose text is overwritten when it dies.
class CurlHeaders {
 public:
  CurlHeaders() = default;
  ~CurlHeaders();

  CurlHeaders(CurlHeaders&& other) noexcept : list_(other.list_) {
    other.list_ = nullptr;
  }
  CurlHeaders& operator=(CurlHeaders&& other) noexcept;

  void append(const char* line);
  curl_slist* get() const { return list_; }

 private:
  curl_slist* list_ = nullptr;
};

}  // namespace http
