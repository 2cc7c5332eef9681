#include "suite/http/curl/curl_transfer.h"

#include <openssl/evp.h>
#include <openssl/ssl.h>

#include <algorithm>
#include <chrono>
#include <utility>

#include "suite/http/network_limits.h"

namespace http {
namespace {

// What an info of a finished transfer says; 0 when it says nothing.
template <typename Value>
Value infoOf(CURL* easy, CURLINFO info) {
  Value value = 0;
  return curl_easy_getinfo(easy, info, &value) == CURLE_OK ? value : Value{0};
}

// The TLS connection of a transfer that is under way; null without TLS.
const SSL* tlsOf(CURL* easy) {
  const curl_tlssessioninfo* session = nullptr;
  if (curl_easy_getinfo(easy, CURLINFO_TLS_SSL_PTR, &session) != CURLE_OK ||
      session->backend != CURLSSLBACKEND_OPENSSL ||
      session->internals == nullptr) {
    return nullptr;
  }
  return static_cast<const SSL*>(session->internals);
}

// Whether a connection speaks HTTP/2, as the two sides agreed by ALPN.
bool isHttp2(const SSL* connection) {
  const unsigned char* name = nullptr;
  unsigned int size = 0;
  SSL_get0_alpn_selected(connection, &name, &size);
  return std::string_view(reinterpret_cast<const char*>(name), size) == "h2";
}

// What the network's round trips take of opening a connection: the look-up of
// the name, TCP's one, and those of a full handshake, one in TLS 1.3 and two
// before. The system answers for TCP, however slow the server is.
std::chrono::microseconds networkTime(CURL* easy, const SSL* connection) {
  const auto found = infoOf<curl_off_t>(easy, CURLINFO_NAMELOOKUP_TIME_T);
  const auto connected = infoOf<curl_off_t>(easy, CURLINFO_CONNECT_TIME_T);
  const int roundTrips = SSL_version(connection) >= TLS1_3_VERSION ? 1 : 2;
  return std::chrono::microseconds(connected +
                                   roundTrips * (connected - found));
}

// Whether a code says that HTTP/2 was spoken badly.
bool isFraming(CURLcode code) {
  return code == CURLE_HTTP2 || code == CURLE_HTTP2_STREAM;
}

// Whether a code says that the connection was lost, which is also all that
// some kinds of bad framing look like.
bool isLoss(CURLcode code) {
  return code == CURLE_GOT_NOTHING || code == CURLE_SEND_ERROR ||
         code == CURLE_RECV_ERROR || code == CURLE_PARTIAL_FILE;
}

// User and password as HTTP Basic sends them (RFC 7617). Not left to libcurl,
// which makes several copies.
base::Secret basicLogin(const Request& request) {
  const base::Secret login(
      {request.basicUser, ":", request.basicPassword.text()});
  const std::string& text = login.text();
  std::string encoded((text.size() + 2) / 3 * 4 + 1, '\0');
  const int size =
      EVP_EncodeBlock(reinterpret_cast<unsigned char*>(encoded.data()),
                      reinterpret_cast<const unsigned char*>(text.data()),
                      static_cast<int>(text.size()));
  encoded.resize(static_cast<std::size_t>(size));
  return base::Secret(std::move(encoded));
}

// What libcurl reads and writes at a time. It allocates both for each request,
// and all of it is overwritten when it is released (curl_memory.h): less than
// its 16 and 64 KiB does for what is sent, and for most answers.
constexpr long kReadBytes = 4L << 10U;
constexpr long kWrittenBytes = 16L << 10U;  // The least that it takes.

bool hasCome(CURL* easy, CURLINFO time) {
  return infoOf<curl_off_t>(easy, time) > 0;
}

}  // namespace

CurlTransfer::CurlTransfer(std::size_t& held)
    : easy_(makeCurlEasy()), held_(held) {
  setOption(easy_.get(), CURLOPT_BUFFERSIZE, kReadBytes);
  setOption(easy_.get(), CURLOPT_UPLOAD_BUFFERSIZE, kWrittenBytes);
}

void CurlTransfer::prepare(std::uint64_t id, Request request,
                           const std::string& url, bool identity) {
  id_ = id;
  request_ = std::move(request);
  begin(url, request_.timeout);

  CURL* easy = easy_.get();
  setOption(easy, CURLOPT_PATH_AS_IS, 1L);
  setOption(easy, CURLOPT_USERAGENT, userAgent());
  setOption(easy, CURLOPT_MAXFILESIZE_LARGE,
            static_cast<curl_off_t>(kMaxBodyBytes));
  setOption(easy, CURLOPT_WRITEFUNCTION, &CurlTransfer::onBody);
  setOption(easy, CURLOPT_WRITEDATA, static_cast<void*>(this));
  setOption(easy, CURLOPT_HEADERFUNCTION, &CurlTransfer::onHeader);
  setOption(easy, CURLOPT_HEADERDATA, static_cast<void*>(this));
  identity_ = identity;
  if (!identity) {
    setOption(easy, CURLOPT_ACCEPT_ENCODING, "gzip");
  }
  // libcurl repeats a request by itself when a kept-alive connection turns
  // out to be dead. A login must never be sent twice.
  if (request_.freshConnection || request_.method == Method::kPost) {
    setOption(easy, CURLOPT_FRESH_CONNECT, 1L);
  }
  setMethod();
  setHeaders(identity);
}

void CurlTransfer::prepareOpening(const std::string& url,
                                  std::chrono::milliseconds timeout) {
  begin(url, timeout);
  opensOnly_ = true;
  expectsOpening_ = true;
  setOption(easy_.get(), CURLOPT_FRESH_CONNECT, 1L);
}

void CurlTransfer::begin(const std::string& url,
                         std::chrono::milliseconds timeout) {
  startedAt_ = base::Clock::now();
  deadline_ = startedAt_ + timeout + kGrace;

  CURL* easy = easy_.get();
  setOption(easy, CURLOPT_PRIVATE, static_cast<void*>(this));
  setOption(easy, CURLOPT_URL, url.c_str());
  // 0 would mean without end.
  setOption(easy, CURLOPT_TIMEOUT_MS,
            std::max(static_cast<long>(timeout.count()), 1L));
  setOption(easy, CURLOPT_ERRORBUFFER, errorText_.data());
  setOption(easy, CURLOPT_PREREQFUNCTION, &CurlTransfer::onConnection);
  setOption(easy, CURLOPT_PREREQDATA, static_cast<void*>(this));
}

// libcurl closes a connection when the handle that was to connect only is
// taken away.
void CurlTransfer::leaveConnection() {
  setOption(easy_.get(), CURLOPT_CONNECT_ONLY, 0L);
}

bool CurlTransfer::newlyConnected() {
  const bool newly = connected_ && !connectionTold_;
  connectionTold_ = connected_;
  return newly;
}

void CurlTransfer::setMethod() {
  CURL* easy = easy_.get();
  switch (request_.method) {
    case Method::kGet:
      setOption(easy, CURLOPT_HTTPGET, 1L);
      break;
    case Method::kPost:
      setOption(easy, CURLOPT_POST, 1L);
      setOption(easy, CURLOPT_POSTFIELDS, request_.body.text().c_str());
      setOption(easy, CURLOPT_POSTFIELDSIZE_LARGE,
                static_cast<curl_off_t>(request_.body.text().size()));
      break;
    case Method::kDelete:
      setOption(easy, CURLOPT_CUSTOMREQUEST, "DELETE");
      break;
  }
}

void CurlTransfer::setHeaders(bool identity) {
  headerLines_.append("Accept: application/json");
  headerLines_.append("OData-Version: 4.0");
  // Without libcurl's own decoder: what comes in spite of this request is
  // taken as it is.
  if (identity) {
    headerLines_.append("Accept-Encoding: identity");
  }
  if (request_.method == Method::kPost) {
    headerLines_.append("Content-Type: application/json");
    headerLines_.append("Expect:");
  }
  if (!request_.authToken.empty()) {
    const base::Secret line({"X-Auth-Token: ", request_.authToken.text()});
    headerLines_.append(line.text().c_str());
  }
  if (!request_.basicUser.empty() || !request_.basicPassword.empty()) {
    const base::Secret line(
        {"Authorization: Basic ", basicLogin(request_).text()});
    headerLines_.append(line.text().c_str());
  }
  setOption(easy_.get(), CURLOPT_HTTPHEADER, headerLines_.get());
}

int CurlTransfer::onConnection(void* self, char* /*remoteAddress*/,
                               char* /*localAddress*/, int /*remotePort*/,
                               int /*localPort*/) {
  auto& transfer = *static_cast<CurlTransfer*>(self);
  transfer.connected_ = true;
  transfer.sentAt_ = base::Clock::now();
  if (transfer.connections() > 0) {
    transfer.opening_ = std::chrono::ceil<std::chrono::microseconds>(
        transfer.sentAt_ - transfer.startedAt_);
  }
  if (const SSL* tls = tlsOf(transfer.easy_.get())) {
    transfer.openingNetwork_ = networkTime(transfer.easy_.get(), tls);
    transfer.speaksHttp2_ = isHttp2(tls);
    transfer.resumed_ = transfer.opening_ && SSL_session_reused(tls) == 1;
  }
  // Said only now: a connection that was to be nothing else from the start is
  // not used again.
  if (transfer.opensOnly_ &&
      curl_easy_setopt(transfer.easy_.get(), CURLOPT_CONNECT_ONLY, 1L) !=
          CURLE_OK) {
    return CURL_PREREQFUNC_ABORT;
  }
  return CURL_PREREQFUNC_OK;
}

std::size_t CurlTransfer::onBody(char* data, std::size_t size,
                                 std::size_t count, void* self) {
  auto& transfer = *static_cast<CurlTransfer*>(self);
  const std::size_t bytes = size * count;
  if (bytes > kMaxBodyBytes - transfer.body_.size()) {
    transfer.bodyTooLarge_ = true;
    return CURL_WRITEFUNC_ERROR;
  }
  if (bytes > kMaxHeldBytes - transfer.held_) {
    transfer.bodiesTooLarge_ = true;
    return CURL_WRITEFUNC_ERROR;
  }
  try {
    transfer.body_.append(data, bytes);
    transfer.held_ += bytes;
  } catch (...) {
    transfer.exception_ = std::current_exception();
    return CURL_WRITEFUNC_ERROR;
  }
  return bytes;
}

std::size_t CurlTransfer::onHeader(char* data, std::size_t size,
                                   std::size_t count, void* self) {
  auto& transfer = *static_cast<CurlTransfer*>(self);
  const std::size_t bytes = size * count;
  try {
    const bool wanted =
        transfer.headers_.add({data, bytes}) && !transfer.codedOtherwise();
    return wanted ? bytes : CURL_WRITEFUNC_ERROR;
  } catch (...) {
    transfer.exception_ = std::current_exception();
    return CURL_WRITEFUNC_ERROR;
  }
}

Answer CurlTransfer::finish(CURLcode code, const std::string& address,
                            std::chrono::milliseconds connectTimeout,
                            const std::string& presentedPin,
                            const std::string& caFile) {
  if (exception_ != nullptr) {
    std::rethrow_exception(exception_);
  }
  // A connection that is lost when the time is over was ended for that.
  if ((isLoss(code) || isFraming(code)) && deadline_ <= base::Clock::now()) {
    code = CURLE_OPERATION_TIMEDOUT;
  }
  CURL* easy = easy_.get();
  Answer answer;
  answer.id = id_;
  answer.reusedConnection =
      hasCome(easy, CURLINFO_PRETRANSFER_TIME_T) && connections() == 0;
  answer.badEncoding = code == CURLE_BAD_CONTENT_ENCODING || codedOtherwise();
  answer.http2Error = isFraming(code) || (speaksHttp2_ && isLoss(code));
  if (code != CURLE_OK) {
    CurlOutcome end = outcome(code, connectTimeout);
    end.presentedPin = presentedPin;
    answer.lostBeforeAnswer = isLoss(code) && end.sent && !end.answered;
    end.caFile = caFile;
    answer.failure = failureOf(end);
    answer.failure->address = address;
    answer.failure->uri = request_.target;
    return answer;
  }
  answer.status = static_cast<int>(infoOf<long>(easy, CURLINFO_RESPONSE_CODE));
  answer.location = headers_.location();
  answer.authToken = base::Secret(headers_.authToken());
  answer.retryAfter = headers_.retryAfter();
  answer.body = std::move(body_);
  return answer;
}

CurlOutcome CurlTransfer::outcome(
    CURLcode code, std::chrono::milliseconds connectTimeout) const {
  CURL* easy = easy_.get();
  CurlOutcome outcome;
  outcome.code = code;
  outcome.text = errorText_.data();
  outcome.verifyResult = infoOf<long>(easy, CURLINFO_SSL_VERIFYRESULT);
  outcome.osError = infoOf<long>(easy, CURLINFO_OS_ERRNO);
  outcome.resolved = hasCome(easy, CURLINFO_NAMELOOKUP_TIME_T);
  // libcurl has words for every end that it makes itself. A request that waits
  // for a connection may get one when its time is over already.
  outcome.queued = code == CURLE_OPERATION_TIMEDOUT &&
                   (outcome.text.empty() ||
                    (!outcome.resolved &&
                     outcome.text.find("Resolving") == std::string::npos));
  outcome.sent = hasCome(easy, CURLINFO_PRETRANSFER_TIME_T);
  // The time of the connect is known only when TLS stands, too.
  outcome.connected = outcome.sent || connections() > 0;
  outcome.answered = headers_.begun();
  // A header that is longer than libcurl's own buffer for one never gets
  // here, and is reported as a lack of memory.
  outcome.headersTooLarge =
      headers_.tooLarge() || (code == CURLE_OUT_OF_MEMORY && outcome.sent);
  outcome.bodyTooLarge = bodyTooLarge_;
  outcome.bodiesTooLarge = bodiesTooLarge_;
  outcome.codedOtherwise = codedOtherwise();
  outcome.connectTimeout = connectTimeout;
  outcome.timeout = request_.timeout;
  return outcome;
}

bool CurlTransfer::keepsSession() const {
  const SSL* const tls = connected_ ? tlsOf(easy_.get()) : nullptr;
  const SSL_SESSION* const session =
      tls == nullptr ? nullptr : SSL_get_session(tls);
  return session != nullptr && SSL_SESSION_is_resumable(session) == 1;
}

std::uint64_t CurlTransfer::connections() const {
  return static_cast<std::uint64_t>(
      infoOf<long>(easy_.get(), CURLINFO_NUM_CONNECTS));
}

std::uint64_t CurlTransfer::bytes() const {
  return static_cast<std::uint64_t>(
      infoOf<curl_off_t>(easy_.get(), CURLINFO_SIZE_DOWNLOAD_T));
}

}  // namespace http
