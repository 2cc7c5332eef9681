#pragma once

#include <curl/curl.h>

#include <chrono>
#include <string>

#include "suite/base/failure.h"

namespace http {

/// How a failed transfer ended: libcurl's result, and how far the transfer had
/// come.
struct CurlOutcome {
  CURLcode code = CURLE_OK;
  std::string text;          ///< libcurl's message; may quote the server.
  long verifyResult = 0;     ///< OpenSSL's verdict on the chain.
  std::string presentedPin;  ///< Of the server's key; empty: unknown.
  std::string caFile;        ///< Of the trusted authorities; empty: system's.
  long osError = 0;          ///< errno of the failed connect; 0: none.
  bool queued = false;       ///< It was still waiting for a free connection.
  bool resolved = false;     ///< The name had an address.
  bool connected = false;    ///< TCP was established, or the connection reused.
  bool sent = false;         ///< The request was on its way.
  bool answered = false;     ///< The headers of an answer had begun.
  bool headersTooLarge = false;
  bool bodyTooLarge = false;
  bool bodiesTooLarge = false;
  bool codedOtherwise = false;  ///< More codings than one, or not gzip.
  std::chrono::milliseconds connectTimeout{0};
  std::chrono::milliseconds timeout{0};
};

/// The failure with cause and remedy; address and URI are left empty.
base::Failure failureOf(const CurlOutcome& outcome);

}  // namespace http
