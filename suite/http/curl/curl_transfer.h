#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <optional>
#include <string>
#include <string_view>

#include "suite/http/curl/curl_failure.h"
#include "suite/http/curl/curl_handle.h"
#include "suite/http/response_headers.h"
#include "suite/http/transport.h"

namespace http {

/// One request on its way, and what has come back of it. Its handle is used for
/// no other: libcurl before 8.1 takes a header line that begins with a blank,
/// the first of an answer, for more of the last one that the handle has seen,
/// which it has released. Never moves, because libcurl holds its address.
class CurlTransfer {
 public:
  /// `held` counts the bytes of all bodies of the transport and outlives this.
  explicit CurlTransfer(std::size_t& held);
  ~CurlTransfer() { held_ -= body_.size(); }

  CurlTransfer(const CurlTransfer&) = delete;
  CurlTransfer& operator=(const CurlTransfer&) = delete;

  CURL* easy() const { return easy_.get(); }

  /// Makes the handle ready for a request; options that all requests of the
  /// transport share are set by the caller afterwards. `url` is the URL in
  /// full. `identity` asks for a body without compression.
  void prepare(std::uint64_t id, Request request, const std::string& url,
               bool identity);

  /// Makes the handle ready to open a connection for the requests to come and
  /// to ask nothing over it, in at most `timeout`. Of the other functions only
  /// those about the connection and `deadline` mean something then.
  void prepareOpening(const std::string& url,
                      std::chrono::milliseconds timeout);

  /// Leaves the connection that was opened for others to use. To be called
  /// when the handle is done, before it is taken from its multi handle.
  void leaveConnection();

  /// The outcome of the request. Rethrows what a callback threw while the
  /// answer arrived. Address and URI of a failure are filled in. `presentedPin`
  /// is that of the key that the server showed last, `caFile` the file of
  /// trusted authorities, if one is named.
  Answer finish(CURLcode code, const std::string& address,
                std::chrono::milliseconds connectTimeout,
                const std::string& presentedPin, const std::string& caFile);

  /// Whether a connection has to be opened for it, as far as is known
  /// beforehand.
  void expectOpening(bool opens) { expectsOpening_ = opens; }
  bool expectsOpening() const { return expectsOpening_; }

  /// Whether it only opens a connection.
  bool opensOnly() const { return opensOnly_; }

  std::uint64_t id() const { return id_; }
  const Request& request() const { return request_; }

  /// Whether it has its connection, handshake included, so that the request
  /// may be on its way.
  bool connected() const { return connected_; }

  /// The same, true only in the first call.
  bool newlyConnected();

  /// When the request is over at the latest. libcurl itself does not watch
  /// the time of requests that wait for a connection to become free.
  base::Clock::time_point deadline() const { return deadline_; }

  /// Whether its connection speaks HTTP/2.
  bool speaksHttp2() const { return speaksHttp2_; }

  /// When its request was sent; known when it has its connection.
  base::Clock::time_point sentAt() const { return sentAt_; }

  /// What the connection took that was opened for it; nothing before it has
  /// it, or when it uses one that was there.
  std::optional<std::chrono::microseconds> opening() const { return opening_; }

  /// What the network's round trips took of that: the look-up of the name,
  /// TCP's, and those of a full TLS handshake.
  std::chrono::microseconds openingNetwork() const { return openingNetwork_; }

  /// Whether that took up an earlier TLS session.
  bool resumed() const { return resumed_; }

  /// Whether the TLS session of its connection can be taken up by another
  /// one. Only while the request is under way.
  bool keepsSession() const;

  /// Connections opened, and bytes of the body as they were sent.
  std::uint64_t connections() const;
  std::uint64_t bytes() const;

 private:
  static int onConnection(void* self, char* remoteAddress, char* localAddress,
                          int remotePort, int localPort);
  static std::size_t onBody(char* data, std::size_t size, std::size_t count,
                            void* self);
  static std::size_t onHeader(char* data, std::size_t size, std::size_t count,
                              void* self);

  /// Whether the body is to be decoded but coded in a way not asked for.
  bool codedOtherwise() const { return !identity_ && !headers_.decodable(); }

  void begin(const std::string& url, std::chrono::milliseconds timeout);
  void setMethod();
  void setHeaders(bool identity);
  CurlOutcome outcome(CURLcode code,
                      std::chrono::milliseconds connectTimeout) const;

  CurlEasy easy_;
  std::size_t& held_;
  std::uint64_t id_ = 0;
  Request request_;
  base::Clock::time_point deadline_;
  CurlHeaders headerLines_;
  ResponseHeaders headers_;
  std::string body_;
  bool opensOnly_ = false;
  bool connected_ = false;
  bool connectionTold_ = false;
  bool expectsOpening_ = false;
  bool speaksHttp2_ = false;
  bool resumed_ = false;
  base::Clock::time_point startedAt_;
  base::Clock::time_point sentAt_;
  std::optional<std::chrono::microseconds> opening_;
  std::chrono::microseconds openingNetwork_{0};
  bool bodyTooLarge_ = false;
  bool bodiesTooLarge_ = false;
  bool identity_ = false;         ///< The body is not decoded.
  std::exception_ptr exception_;  ///< Thrown in a callback: kept for `finish`.
  std::array<char, CURL_ERROR_SIZE> errorText_{};
};

}  // namespace http
