#pragma once

#include <curl/curl.h>

namespace http {

/// Starts libcurl, with memory that is overwritten when libcurl gives it back:
/// its copies of requests hold passwords and tokens. Returns what
/// curl_global_init returns.
CURLcode startCurl();

}  // namespace http
