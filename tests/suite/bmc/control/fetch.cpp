#include "tests/suite/bmc/control/fetch.h"

#include <curl/curl.h>

#include <cctype>
#include <future>
#include <memory>

namespace bmc {
namespace {

using List = std::unique_ptr<curl_slist, void (*)(curl_slist*)>;

// Where a body goes, and how much of it.
struct BodySink {
  std::string& body;
  std::size_t most;
};

std::size_t takeBody(char* bytes, std::size_t, std::size_t count, void* into) {
  auto& sink = *static_cast<BodySink*>(into);
  sink.body.append(bytes, count);
  return sink.body.size() > sink.most ? 0 : count;
}

std::size_t takeHeader(char* bytes, std::size_t, std::size_t count,
                       void* into) {
  const std::string line(bytes, count);
  const std::size_t colon = line.find(':');
  const std::size_t end = line.find_last_not_of("\r\n");
  if (colon != std::string::npos && colon + 2 <= end) {
    std::string name = line.substr(0, colon);
    for (char& letter : name) {
      letter = static_cast<char>(std::tolower(letter));
    }
    static_cast<FetchResult*>(into)->headers[name] =
        line.substr(colon + 2, end - colon - 1);
  }
  return count;
}

void prepare(CURL* handle, const Fetch& fetch, const List& headers) {
  curl_easy_setopt(handle, CURLOPT_URL, fetch.url.c_str());
  curl_easy_setopt(handle, CURLOPT_PATH_AS_IS, 1L);
  curl_easy_setopt(handle, CURLOPT_PROXY, "");
  curl_easy_setopt(handle, CURLOPT_TIMEOUT_MS, fetch.timeoutMs);
  curl_easy_setopt(handle, CURLOPT_HTTPHEADER, headers.get());
  curl_easy_setopt(handle, CURLOPT_WRITEFUNCTION, takeBody);
  curl_easy_setopt(handle, CURLOPT_HEADERFUNCTION, takeHeader);
  if (!fetch.body.empty()) {
    curl_easy_setopt(handle, CURLOPT_POSTFIELDS, fetch.body.c_str());
  }
  if (fetch.method != "GET") {
    curl_easy_setopt(handle, CURLOPT_CUSTOMREQUEST, fetch.method.c_str());
  }
  if (!fetch.user.empty()) {
    curl_easy_setopt(handle, CURLOPT_USERPWD, fetch.user.c_str());
  }
  if (!fetch.authority.empty()) {
    curl_easy_setopt(handle, CURLOPT_CAINFO, fetch.authority.c_str());
  }
  if (!fetch.pin.empty()) {
    curl_easy_setopt(handle, CURLOPT_PINNEDPUBLICKEY, fetch.pin.c_str());
  }
  if (fetch.insecure) {
    curl_easy_setopt(handle, CURLOPT_SSL_VERIFYPEER, 0L);
    curl_easy_setopt(handle, CURLOPT_SSL_VERIFYHOST, 0L);
  }
}

}  // namespace

Fetcher::Fetcher() : handle_(curl_easy_init()) {}

Fetcher::~Fetcher() { curl_easy_cleanup(handle_); }

FetchResult Fetcher::get(const Fetch& fetch) {
  FetchResult fetched;
  List headers(nullptr, curl_slist_free_all);
  for (const std::string& header : fetch.headers) {
    headers.reset(curl_slist_append(headers.release(), header.c_str()));
  }
  curl_easy_reset(handle_);
  prepare(handle_, fetch, headers);
  BodySink sink{fetched.body, fetch.mostBytes};
  curl_easy_setopt(handle_, CURLOPT_WRITEDATA, &sink);
  curl_easy_setopt(handle_, CURLOPT_HEADERDATA, &fetched);
  fetched.error = curl_easy_perform(handle_);
  long connections = 0;
  curl_easy_getinfo(handle_, CURLINFO_RESPONSE_CODE, &fetched.status);
  curl_easy_getinfo(handle_, CURLINFO_TOTAL_TIME, &fetched.seconds);
  curl_easy_getinfo(handle_, CURLINFO_NUM_CONNECTS, &connections);
  fetched.newConnection = connections > 0;
  return fetched;
}

std::vector<FetchResult> fetchTogether(const std::vector<Fetch>& fetches) {
  std::vector<std::future<FetchResult>> running;
  running.reserve(fetches.size());
  for (const Fetch& fetch : fetches) {
    running.push_back(std::async(std::launch::async,
                                 [&fetch] { return Fetcher().get(fetch); }));
  }
  std::vector<FetchResult> fetched;
  fetched.reserve(running.size());
  for (auto& one : running) {
    fetched.push_back(one.get());
  }
  return fetched;
}

}  // namespace bmc
