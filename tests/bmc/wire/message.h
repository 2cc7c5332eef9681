#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tests/bmc/wire/body.h"

namespace bmc {

/// Header fields in the order sent; names as written.
using Headers = std::vector<std::pair<std::string, std::string>>;

/// The first value of a header, names compared without case; empty when there
/// is none. Good as long as the headers are.
std::string_view headerOf(const Headers& headers, std::string_view name);

/// Removes every header of that name.
void removeHeader(Headers& headers, std::string_view name);

/// Sets a header in place of all others of that name.
void setHeader(Headers& headers, std::string_view name, std::string value);

/// One request, whole.
struct Request {
  std::string method;
  std::string target;  ///< As the request line has it.
  Headers headers;
  std::string body;
  bool keepAlive = true;         ///< The client may send another.
  std::uint64_t connection = 0;  ///< Number of its connection, from 1.
  std::uint64_t ordinal = 0;     ///< Its place on that connection, from 1.
};

/// How a request proved who sent it.
enum class Authentication { kNone, kToken, kBasic, kRefused };

/// What becomes of the connection after an answer.
enum class Ending {
  kKeep,   ///< Stays open, if the client wants it.
  kClose,  ///< Closed in order.
  kReset   ///< Torn down with a TCP reset.
};

/// The way in which an answer is put on the wire.
struct Delivery {
  std::chrono::milliseconds delay{0};  ///< From the request's arrival.
  bool silent = false;                 ///< Nothing is sent, not even a head.
  std::size_t stepBytes = 0;  ///< Bytes per step; 0: as fast as they go.
  std::chrono::milliseconds stepEvery{0};  ///< Time between two steps.
  std::optional<std::uint64_t> cutAfter;   ///< Bytes of the body sent at most.
  bool chunked = false;  ///< Chunked transfer coding, without a length.
  Ending ending = Ending::kKeep;
};

/// The answer to one request.
struct Reply {
  int status = 200;
  /// Without those that the connection adds where they are missing
  /// (Content-Length, Connection).
  Headers headers;
  std::unique_ptr<Body> body;  ///< None: an empty one.
  Delivery delivery;
  Authentication authentication = Authentication::kNone;  ///< For the log.
};

/// Whoever answers requests.
class Responder {
 public:
  virtual ~Responder() = default;

  /// The answer to a request. Called when the request has arrived, whatever
  /// delay the answer asks for. Never throws.
  virtual Reply answer(const Request& request) = 0;
};

}  // namespace bmc
