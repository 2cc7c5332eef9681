#pragma once

#include <array>
#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include "suite/http/network_transport.h"
#include "suite/http/response_headers.h"
#include "suite/http/winhttp/winhttp_failure.h"
#include "suite/http/winhttp/winhttp_handle.h"
#include "suite/http/winhttp/winhttp_trust.h"

namespace http {

/// The requests that have come to an end, handed from WinHTTP's threads to the
/// transport's. Outlives the transport while requests are under way.
class WinhttpMailbox {
 public:
  WinhttpMailbox();

  WinhttpMailbox(const WinhttpMailbox&) = delete;
  WinhttpMailbox& operator=(const WinhttpMailbox&) = delete;

  void post(std::uint64_t id);
  std::optional<std::uint64_t> take();

  /// Signalled by a post, and reset by a wait.
  HANDLE event() const { return event_.get(); }

 private:
  std::unique_ptr<void, HandleDeleter<CloseHandle>> event_;
  std::mutex mutex_;
  std::deque<std::uint64_t> ids_;
};

/// Connections that are reused among each other, and the way to one server.
struct WinhttpSession {
  WinhttpHandle session;
  WinhttpHandle connection;
};

/// What all requests of a transport share.
struct WinhttpCommon {
  explicit WinhttpCommon(const NetworkTransportOptions& options)
      : trust(options),
        plainHttp(options.origin.plainHttp),
        connectTimeout(options.connectTimeout) {}

  WinhttpTrust trust;
  bool plainHttp;
  std::chrono::milliseconds connectTimeout;
  WinhttpMailbox mailbox;
  /// Bytes of all bodies, under way or not yet taken from the transport.
  std::atomic<std::size_t> heldBytes{0};
};

/// One request on its way. WinHTTP tells its progress in threads of its own,
/// and keeps the object alive until it has told the last of it; the transport
/// looks at the answer after the mailbox has named the request, or when it has
/// given it up.
class WinhttpExchange : public std::enable_shared_from_this<WinhttpExchange> {
 public:
  WinhttpExchange(std::uint64_t id, Request request,
                  std::shared_ptr<WinhttpCommon> common);
  ~WinhttpExchange();

  WinhttpExchange(const WinhttpExchange&) = delete;
  WinhttpExchange& operator=(const WinhttpExchange&) = delete;

  std::uint64_t id() const { return id_; }
  const Request& request() const { return request_; }

  /// Whether it must not go over a connection that was used before: on request,
  /// and for a login, which must not be repeated on a dead connection.
  bool wantsFreshConnection() const {
    return request_.freshConnection || request_.method == Method::kPost;
  }

  /// Sends the request; what goes wrong is posted like an answer.
  void send(std::shared_ptr<WinhttpSession> session);

  /// When the request fails for want of time, as things stand.
  base::Clock::time_point deadline() const;

  /// Whether any of it may have been sent.
  bool sent() const;

  /// Gives the request up; nothing is posted any more.
  void abandon();

  /// What became of the request; only after its end, or after `abandon`, which
  /// makes it a time-out. Address and URI of a failure are left empty.
  Answer finish();

  /// Connections opened, and bytes of the body.
  std::uint64_t connections() const { return connections_; }
  std::uint64_t bytes() const { return bytes_; }

 private:
  using Lock = std::lock_guard<std::recursive_mutex>;

  static void CALLBACK onStatus(HINTERNET handle, DWORD_PTR context,
                                DWORD status, void* info, DWORD size);
  void proceed(DWORD status, const void* info, DWORD size);
  bool open();
  void setOptions() const;
  bool addHeaders();
  void checkCertificate();
  void refuse(base::Failure failure);
  bool readHeaders();
  void close() noexcept;
  void readBody();
  bool takeBody(DWORD size);
  bool hold(std::size_t size);
  void dropBody();
  void endBody();
  void failWith(DWORD error);
  void failWith(NetworkFault fault, const std::string& detail = "");
  void end();
  NetworkTimes times() const;

  const std::uint64_t id_;
  Request request_;
  const std::shared_ptr<WinhttpCommon> common_;
  const base::Clock::time_point begun_ = base::Clock::now();
  std::shared_ptr<WinhttpSession> session_;

  /// The request's handle while it is open. Not guarded: a call may take long,
  /// and the handle is closed by the other thread to end it.
  std::atomic<HINTERNET> handle_{nullptr};
  /// Reads that were asked for and whose call has not returned; the first one
  /// makes the calls for all, so that they do not nest.
  std::atomic<int> reads_{0};

  /// Guards all that follows; never held during a call that may take long.
  mutable std::recursive_mutex mutex_;
  bool started_ = false;
  bool ended_ = false;
  base::Clock::time_point startedAt_;
  WinhttpProgress progress_;
  ResponseHeaders headers_;
  std::optional<std::uint64_t> announcedBytes_;
  Answer answer_;
  std::array<char, 65536> buffer_{};
  std::atomic<std::uint64_t> connections_{0};
  std::atomic<std::uint64_t> bytes_{0};
};

}  // namespace http
