#pragma once

#include <cstddef>
#include <limits>
#include <map>
#include <string>
#include <vector>

namespace bmc {

/// What curl got.
struct FetchResult {
  int error = 0;  ///< CURLcode.
  long status = 0;
  std::string body;
  std::map<std::string, std::string> headers;  ///< Names in lower case.
  double seconds = 0;
  bool newConnection = false;
};

/// What curl is asked for.
struct Fetch {
  std::string url;
  std::string method = "GET";
  std::vector<std::string> headers;
  std::string body;
  std::string user;       ///< "user:password" for Basic.
  std::string authority;  ///< PEM file to trust.
  std::string pin;        ///< Public key to demand.
  bool insecure = false;
  long timeoutMs = 20000;
  /// The fetch is broken off (CURLE_WRITE_ERROR) when the body has more bytes.
  std::size_t mostBytes = std::numeric_limits<std::size_t>::max();
};

/// One client with its kept-alive connections.
class Fetcher {
 public:
  Fetcher();
  ~Fetcher();
  Fetcher(const Fetcher&) = delete;
  Fetcher& operator=(const Fetcher&) = delete;

  FetchResult get(const Fetch& fetch);

 private:
  void* handle_;
};

/// All at once, each on a connection of its own.
std::vector<FetchResult> fetchTogether(const std::vector<Fetch>& fetches);

}  // namespace bmc
