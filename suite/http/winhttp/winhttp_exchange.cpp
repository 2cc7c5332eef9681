#include "suite/http/winhttp/winhttp_exchange.h"

#include <algorithm>
#include <boost/nowide/convert.hpp>
#include <system_error>
#include <utility>

#include "suite/base/secret.h"
#include "suite/http/network_limits.h"
#include "suite/http/winhttp/base64_windows.h"
#include "suite/platform/memory.h"

namespace http {
namespace {

constexpr DWORD kIgnoredByTheSystem = SECURITY_FLAG_IGNORE_UNKNOWN_CA |
                                      SECURITY_FLAG_IGNORE_CERT_CN_INVALID |
                                      SECURITY_FLAG_IGNORE_CERT_DATE_INVALID |
                                      SECURITY_FLAG_IGNORE_CERT_WRONG_USAGE;

const wchar_t* verbOf(Method method) {
  switch (method) {
    case Method::kGet:
      return L"GET";
    case Method::kPost:
      return L"POST";
    case Method::kDelete:
      break;
  }
  return L"DELETE";
}

// One line of a secret header; empty without a value.
base::Secret headerLine(std::string_view start, const base::Secret& value) {
  return value.empty() ? base::Secret()
                       : base::Secret({start, value.text(), "\r\n"});
}

// User and password as HTTP Basic sends them (RFC 7617); empty without both.
base::Secret basicLogin(const Request& request) {
  if (request.basicUser.empty() && request.basicPassword.empty()) {
    return {};
  }
  const base::Secret login(
      {request.basicUser, ":", request.basicPassword.text()});
  return base::Secret(toBase64(login.text()));
}

// The header lines of a request. WinHTTP does not count what it unpacks, so
// compression is not offered.
base::Secret headerLines(const Request& request) {
  const bool post = request.method == Method::kPost;
  return base::Secret(
      {"Accept: application/json\r\n"
       "OData-Version: 4.0\r\n"
       "Accept-Encoding: identity\r\n",
       post ? "Content-Type: application/json\r\n" : "",
       headerLine("X-Auth-Token: ", request.authToken).text(),
       headerLine("Authorization: Basic ", basicLogin(request)).text()});
}

int millisecondsOf(std::chrono::milliseconds time) {
  constexpr std::chrono::milliseconds kLongest = std::chrono::hours(1);
  // 0 would mean without end.
  return static_cast<int>(
      std::clamp(time, std::chrono::milliseconds(1), kLongest).count());
}

// One of the headers of an answer as a number.
std::optional<std::uint64_t> numberAt(HINTERNET request, DWORD header) {
  std::array<wchar_t, 32> text{};
  DWORD size = sizeof(text);
  if (WinHttpQueryHeaders(request, header, nullptr, text.data(), &size,
                          nullptr) == 0) {
    return std::nullopt;
  }
  std::uint64_t number = 0;
  const std::wstring_view digits(text.data(), size / sizeof(wchar_t));
  constexpr std::size_t kMostDigits = 18;
  if (digits.empty() || digits.size() > kMostDigits) {
    return std::nullopt;
  }
  for (const wchar_t digit : digits) {
    if (digit < L'0' || digit > L'9') {
      return std::nullopt;
    }
    number = number * 10 + static_cast<std::uint64_t>(digit - L'0');
  }
  return number;
}

}  // namespace

WinhttpMailbox::WinhttpMailbox()
    : event_(CreateEventW(nullptr, FALSE, FALSE, nullptr)) {
  if (!event_) {
    throw std::system_error(static_cast<int>(GetLastError()),
                            std::system_category(), "CreateEvent");
  }
}

void WinhttpMailbox::post(std::uint64_t id) {
  const std::lock_guard<std::mutex> lock(mutex_);
  ids_.push_back(id);
  SetEvent(event_.get());
}

std::optional<std::uint64_t> WinhttpMailbox::take() {
  const std::lock_guard<std::mutex> lock(mutex_);
  if (ids_.empty()) {
    return std::nullopt;
  }
  const std::uint64_t id = ids_.front();
  ids_.pop_front();
  return id;
}

WinhttpExchange::WinhttpExchange(std::uint64_t id, Request request,
                                 std::shared_ptr<WinhttpCommon> common)
    : id_(id), request_(std::move(request)), common_(std::move(common)) {
  answer_.id = id;
}

WinhttpExchange::~WinhttpExchange() {
  close();
  dropBody();
  platform::overwrite(buffer_.data(), buffer_.size());
}

void WinhttpExchange::send(std::shared_ptr<WinhttpSession> session) {
  {
    const Lock lock(mutex_);
    session_ = std::move(session);
    started_ = true;
    startedAt_ = base::Clock::now();
  }
  if (!open() || !addHeaders()) {
    return failWith(GetLastError());
  }
  // From here on WinHTTP holds a share of this object, and gives it back with
  // its last word about the handle.
  auto self =
      std::make_unique<std::shared_ptr<WinhttpExchange>>(shared_from_this());
  DWORD_PTR context = reinterpret_cast<DWORD_PTR>(self.get());
  if (WinHttpSetOption(handle_, WINHTTP_OPTION_CONTEXT_VALUE, &context,
                       sizeof(context)) == 0) {
    return failWith(GetLastError());
  }
  static_cast<void>(self.release());
  const std::string& body = request_.body.text();
  const auto size = static_cast<DWORD>(body.size());
  // WinHTTP only reads what it takes as writable.
  char* const bytes = size == 0 ? nullptr : const_cast<char*>(body.data());
  if (WinHttpSendRequest(handle_, WINHTTP_NO_ADDITIONAL_HEADERS, 0, bytes, size,
                         size, context) == 0) {
    failWith(GetLastError());
  }
}

bool WinhttpExchange::open() {
  const DWORD flags = WINHTTP_FLAG_ESCAPE_DISABLE |
                      WINHTTP_FLAG_ESCAPE_DISABLE_QUERY |
                      (common_->plainHttp ? 0 : WINHTTP_FLAG_SECURE);
  handle_ = WinHttpOpenRequest(
      session_->connection.get(), verbOf(request_.method),
      boost::nowide::widen(request_.target).c_str(), nullptr,
      WINHTTP_NO_REFERER, WINHTTP_DEFAULT_ACCEPT_TYPES, flags);
  if (handle_ == nullptr) {
    return false;
  }
  setOptions();
  return WinHttpSetStatusCallback(handle_, &WinhttpExchange::onStatus,
                                  WINHTTP_CALLBACK_FLAG_ALL_NOTIFICATIONS,
                                  0) != WINHTTP_INVALID_STATUS_CALLBACK;
}

void WinhttpExchange::setOptions() const {
  const auto set = [this](DWORD option, DWORD value) {
    // An option that this version of Windows lacks has its safe value.
    static_cast<void>(WinHttpSetOption(handle_, option, &value, sizeof(value)));
  };
  set(WINHTTP_OPTION_DISABLE_FEATURE, WINHTTP_DISABLE_COOKIES);
  set(WINHTTP_OPTION_DISABLE_FEATURE, WINHTTP_DISABLE_REDIRECTS);
  set(WINHTTP_OPTION_DISABLE_FEATURE, WINHTTP_DISABLE_AUTHENTICATION);
  set(WINHTTP_OPTION_AUTOLOGON_POLICY, WINHTTP_AUTOLOGON_SECURITY_LEVEL_HIGH);
  if (!common_->plainHttp) {
    set(WINHTTP_OPTION_SECURITY_FLAGS, kIgnoredByTheSystem);
    // A client certificate would tell who the user is.
    static_cast<void>(WinHttpSetOption(handle_,
                                       WINHTTP_OPTION_CLIENT_CERT_CONTEXT,
                                       WINHTTP_NO_CLIENT_CERT_CONTEXT, 0));
  }
  // The transport watches the time as well; these end WinHTTP's threads.
  const int whole = millisecondsOf(request_.timeout + kGrace);
  const int connect = millisecondsOf(
      std::min(request_.timeout, common_->connectTimeout) + kGrace);
  static_cast<void>(
      WinHttpSetTimeouts(handle_, connect, connect, whole, whole));
  set(WINHTTP_OPTION_RECEIVE_RESPONSE_TIMEOUT, static_cast<DWORD>(whole));
}

bool WinhttpExchange::addHeaders() {
  std::wstring wide = boost::nowide::widen(headerLines(request_).text());
  const BOOL added = WinHttpAddRequestHeaders(
      handle_, wide.c_str(), static_cast<DWORD>(wide.size()),
      WINHTTP_ADDREQ_FLAG_ADD | WINHTTP_ADDREQ_FLAG_REPLACE);
  const DWORD error = GetLastError();
  platform::overwrite(wide.data(), wide.size() * sizeof(wchar_t));
  SetLastError(error);
  return added != 0;
}

base::Clock::time_point WinhttpExchange::deadline() const {
  const Lock lock(mutex_);
  const base::Clock::time_point whole = begun_ + request_.timeout + kGrace;
  return started_ && !progress_.sent
             ? std::min(whole, startedAt_ + common_->connectTimeout + kGrace)
             : whole;
}

bool WinhttpExchange::sent() const {
  const Lock lock(mutex_);
  return progress_.sent;
}

void WinhttpExchange::abandon() {
  {
    const Lock lock(mutex_);
    if (!ended_) {
      ended_ = true;
      answer_.failure = failureOf(
          started_ ? timeoutFaultOf(progress_) : NetworkFault::kQueueTimeout,
          "", times());
    }
  }
  close();
}

Answer WinhttpExchange::finish() {
  close();
  const Lock lock(mutex_);
  request_.authToken.clear();
  request_.basicPassword.clear();
  if (!answer_.failure) {
    answer_.location = headers_.location();
    answer_.authToken = base::Secret(headers_.authToken());
    answer_.retryAfter = headers_.retryAfter();
  } else {
    dropBody();
    answer_.status = 0;
  }
  answer_.reusedConnection = progress_.sent && connections_ == 0;
  answer_.lostBeforeAnswer =
      answer_.failure && progress_.sent && !progress_.answered;
  headers_.clear();
  return std::exchange(answer_, Answer());
}

void WinhttpExchange::close() noexcept {
  const HINTERNET handle = handle_.exchange(nullptr);
  if (handle != nullptr) {
    WinHttpCloseHandle(handle);
  }
}

void CALLBACK WinhttpExchange::onStatus(HINTERNET /*handle*/, DWORD_PTR context,
                                        DWORD status, void* info, DWORD size) {
  auto* const owner =
      reinterpret_cast<std::shared_ptr<WinhttpExchange>*>(context);
  if (owner == nullptr) {
    return;  // Told before the request had its context.
  }
  if (status == WINHTTP_CALLBACK_STATUS_HANDLE_CLOSING) {
    delete owner;
    return;
  }
  // Kept alive beyond this call, in which the handle may be closed.
  const std::shared_ptr<WinhttpExchange> self = *owner;
  self->proceed(status, info, size);
}

void WinhttpExchange::proceed(DWORD status, const void* info, DWORD size) {
  switch (status) {
    case WINHTTP_CALLBACK_STATUS_NAME_RESOLVED: {
      const Lock lock(mutex_);
      progress_.resolved = true;
      break;
    }
    case WINHTTP_CALLBACK_STATUS_CONNECTED_TO_SERVER: {
      const Lock lock(mutex_);
      progress_.resolved = progress_.connected = true;
      ++connections_;
      break;
    }
    case WINHTTP_CALLBACK_STATUS_SENDING_REQUEST: {
      // TLS stands, and nothing of the request has left yet.
      if (!common_->plainHttp) {
        checkCertificate();
      }
      const Lock lock(mutex_);
      progress_.resolved = progress_.connected = progress_.sent = true;
      break;
    }
    case WINHTTP_CALLBACK_STATUS_SENDREQUEST_COMPLETE:
      if (WinHttpReceiveResponse(handle_, nullptr) == 0) {
        failWith(GetLastError());
      }
      break;
    case WINHTTP_CALLBACK_STATUS_HEADERS_AVAILABLE:
      if (readHeaders()) {
        readBody();
      }
      break;
    case WINHTTP_CALLBACK_STATUS_READ_COMPLETE:
      if (takeBody(size)) {
        readBody();
      }
      break;
    case WINHTTP_CALLBACK_STATUS_REQUEST_ERROR:
      failWith(static_cast<const WINHTTP_ASYNC_RESULT*>(info)->dwError);
      break;
    default:
      break;
  }
}

void WinhttpExchange::checkCertificate() {
  const CERT_CONTEXT* context = nullptr;
  DWORD size = sizeof(context);
  if (WinHttpQueryOption(handle_, WINHTTP_OPTION_SERVER_CERT_CONTEXT, &context,
                         &size) == 0) {
    return refuse(failureOf(NetworkFault::kTlsHandshake,
                            messageFor(GetLastError()), times()));
  }
  const CertificatePtr certificate(context);
  const WinhttpTrust& trust = common_->trust;
  {
    const Lock lock(mutex_);
    answer_.shownPin = pinOf(*certificate);
  }
  if (const auto fault = trust.problemWith(*certificate)) {
    const bool named = *fault == CertificateFault::kNotVouchedFor;
    refuse(failureOf(*fault, named ? trust.authorityFile() : "",
                     pinOf(*certificate)));
  }
}

void WinhttpExchange::refuse(base::Failure failure) {
  {
    const Lock lock(mutex_);
    if (!ended_) {
      answer_.failure = std::move(failure);
      end();
    }
  }
  // Closed before a byte of the request is sent. Should the request go out all
  // the same, as under Wine, it is without the password in its body.
  request_.body.clear();
  close();
}

bool WinhttpExchange::readHeaders() {
  const auto all = [this](DWORD& size, void* text) {
    return WinHttpQueryHeaders(handle_, WINHTTP_QUERY_RAW_HEADERS_CRLF, nullptr,
                               text, &size, nullptr);
  };
  const Lock lock(mutex_);
  if (ended_) {
    return false;
  }
  progress_.answered = true;
  DWORD size = 0;
  all(size, nullptr);
  std::wstring wide(size / sizeof(wchar_t) + 1, L'\0');
  if (all(size, wide.data()) == 0) {
    failWith(GetLastError());
    return false;
  }
  std::string text = boost::nowide::narrow(wide.data(), size / sizeof(wchar_t));
  bool small = true;
  std::string_view rest = text;
  while (!rest.empty() && small) {
    const std::size_t end = std::min(rest.find('\n'), rest.size() - 1) + 1;
    small = headers_.add(rest.substr(0, end));
    rest.remove_prefix(end);
  }
  platform::overwrite(wide.data(), wide.size() * sizeof(wchar_t));
  base::wipe(text);
  if (!small) {
    failWith(NetworkFault::kHeadersTooLarge);
    return false;
  }
  answer_.status = static_cast<int>(
      numberAt(handle_, WINHTTP_QUERY_STATUS_CODE).value_or(0));
  announcedBytes_ = numberAt(handle_, WINHTTP_QUERY_CONTENT_LENGTH);
  if (announcedBytes_.value_or(0) > kMaxBodyBytes) {
    failWith(NetworkFault::kBodyTooLarge);
    return false;
  }
  return true;
}

void WinhttpExchange::readBody() {
  if (reads_.fetch_add(1) > 0) {
    return;
  }
  do {
    if (WinHttpReadData(handle_, buffer_.data(),
                        static_cast<DWORD>(buffer_.size()), nullptr) == 0) {
      failWith(GetLastError());
    }
  } while (reads_.fetch_sub(1) > 1);
}

bool WinhttpExchange::takeBody(DWORD size) {
  const Lock lock(mutex_);
  if (ended_) {
    return false;
  }
  if (size == 0) {
    endBody();
    return false;
  }
  bytes_ += size;
  if (size > kMaxBodyBytes - answer_.body.size()) {
    failWith(NetworkFault::kBodyTooLarge);
    return false;
  }
  if (!hold(size)) {
    failWith(NetworkFault::kBodiesTooLarge);
    return false;
  }
  answer_.body.append(buffer_.data(), size);
  return true;
}

// Counts bytes of the body that are to be kept; false where they are too many
// with those of the other bodies.
bool WinhttpExchange::hold(std::size_t size) {
  std::atomic<std::size_t>& held = common_->heldBytes;
  if (held.fetch_add(size) + size > kMaxHeldBytes) {
    held -= size;
    return false;
  }
  return true;
}

void WinhttpExchange::dropBody() {
  common_->heldBytes -= answer_.body.size();
  answer_.body.clear();
}

void WinhttpExchange::endBody() {
  constexpr int kNoContent = 204;
  constexpr int kNotModified = 304;
  const bool bodiless =
      answer_.status == kNoContent || answer_.status == kNotModified;
  // The end of the connection looks like the end of the body.
  if (!bodiless && announcedBytes_.value_or(0) > answer_.body.size()) {
    return failWith(NetworkFault::kLostInAnswer);
  }
  end();
}

void WinhttpExchange::failWith(DWORD error) {
  const Lock lock(mutex_);
  failWith(faultOf(error, progress_), messageFor(error));
}

void WinhttpExchange::failWith(NetworkFault fault, const std::string& detail) {
  const Lock lock(mutex_);
  if (ended_) {
    return;
  }
  answer_.failure = failureOf(fault, detail, times());
  end();
}

void WinhttpExchange::end() {
  ended_ = true;
  common_->mailbox.post(id_);
}

NetworkTimes WinhttpExchange::times() const {
  return {common_->connectTimeout, request_.timeout};
}

}  // namespace http
