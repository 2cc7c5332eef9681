#include "tests/bmc/wire/connection.h"

#include <algorithm>
#include <boost/algorithm/string/predicate.hpp>
#include <boost/json/object.hpp>
#include <locale>
#include <utility>

#include "tests/bmc/wire/error_body.h"

namespace bmc {
namespace {

namespace json = boost::json;

// Unanswered bytes from one client that are kept before reading pauses.
constexpr std::size_t kBacklog = 1024 * 1024;

const char* nameOf(Authentication authentication) {
  switch (authentication) {
    case Authentication::kToken:
      return "token";
    case Authentication::kBasic:
      return "basic";
    case Authentication::kRefused:
      return "refused";
    case Authentication::kNone:
      break;
  }
  return "none";
}

// The headers for the log, secrets withheld.
json::object describe(const Headers& headers) {
  json::object object;
  for (const auto& [name, value] : headers) {
    const auto is = [&name = name](const char* other) {
      return boost::algorithm::iequals(name, other, std::locale::classic());
    };
    if (is("Authorization")) {
      object[name] = value.substr(0, value.find(' ')) + " (withheld)";
    } else if (is("X-Auth-Token")) {
      object[name] = "(withheld)";
    } else {
      object[name] = value;
    }
  }
  return object;
}

}  // namespace

Connection::Connection(std::unique_ptr<Wire> wire, Environment& environment,
                       ConnectionPlan plan, std::uint64_t number,
                       const char* port)
    : wire_(std::move(wire)),
      environment_(environment),
      plan_(plan),
      number_(number),
      port_(port),
      timer_(environment.io) {
  Counters& counters = environment_.counters;
  ++counters.openConnections;
  counters.maxOpenConnections =
      std::max(counters.maxOpenConnections, counters.openConnections);
}

Connection::~Connection() {
  --environment_.counters.openConnections;
  if (environment_.journal == nullptr) {
    return;
  }
  environment_.journal->write({{"event", "close"},
                               {"connection", number_},
                               {"atUs", environment_.journal->now()},
                               {"requests", requests_},
                               {"by", ended_ ? "controller" : "client"}});
}

void Connection::start() {
  if (environment_.journal != nullptr) {
    environment_.journal->write({{"event", "connection"},
                                 {"connection", number_},
                                 {"atUs", environment_.journal->now()},
                                 {"port", port_}});
  }
  admit(plan_.onAccept, [this] { connect(); });
}

// The system has accepted the connection at once. Whoever is far away knows a
// round trip later.
void Connection::connect() {
  timer_.expires_after(environment_.roundTrip);
  timer_.async_wait([self = shared_from_this()](const ErrorCode& error) {
    if (!error) {
      self->shake();
    }
  });
}

void Connection::admit(Admission admission,
                       const std::function<void()>& proceed) {
  switch (admission) {
    case Admission::kServe:
      proceed();
      return;
    case Admission::kStall:
      hold();
      return;
    case Admission::kClose:
      end(Ending::kClose);
      return;
    case Admission::kReset:
      end(Ending::kReset);
      return;
    case Admission::kDrip:
      hold();
      drip();
      return;
  }
}

void Connection::hold() {
  held_ = true;
  read();
}

void Connection::drip() {
  constexpr std::string_view kRecordStart("\x16\x03\x03\x3f\xff\x02", 6);
  const std::size_t place = std::min(dripped_++, kRecordStart.size() - 1);
  wire_->write(
      kRecordStart.substr(place, 1),
      [self = shared_from_this()](const ErrorCode& error, std::size_t) {
        if (error) {
          return;
        }
        self->timer_.expires_after(std::chrono::seconds(1));
        self->timer_.async_wait([self](const ErrorCode& stopped) {
          if (!stopped) {
            self->drip();
          }
        });
      });
}

void Connection::shake() {
  const auto begun = [this](bool offersSession) {
    const auto now = std::chrono::steady_clock::now();
    return environment_.processor.doHandshake(now, offersSession) +
           environment_.roundTrip;
  };
  wire_->handshake(begun, [self = shared_from_this()](const ErrorCode& error) {
    self->onShaken(error);
  });
}

void Connection::onShaken(const ErrorCode& error) {
  Counters& counters = environment_.counters;
  const TlsFacts facts = wire_->tls();
  const bool secure = error || !facts.version.empty();
  if (secure && environment_.journal != nullptr) {
    environment_.journal->write({{"event", "tls"},
                                 {"connection", number_},
                                 {"atUs", environment_.journal->now()},
                                 {"version", facts.version},
                                 {"resumed", facts.resumed},
                                 {"serverName", facts.serverName},
                                 {"error", error ? error.message() : ""}});
  }
  if (error) {
    ++counters.tlsFailures;
    return;
  }
  if (secure) {
    ++counters.tlsHandshakes;
  }
  if (facts.resumed) {
    ++counters.tlsResumptions;
  } else if (secure) {
    ++counters.tlsFullHandshakes;
  }
  admit(plan_.afterHandshake, [this] { read(); });
}

void Connection::read() {
  if (reading_ || ended_ || clientLeft_ || received_.size() > kBacklog) {
    return;
  }
  reading_ = true;
  wire_->read(
      block_.data(), block_.size(),
      [self = shared_from_this()](const ErrorCode& error, std::size_t count) {
        self->onRead(error, count);
      });
}

void Connection::onRead(const ErrorCode& error, std::size_t count) {
  reading_ = false;
  if (error) {
    clientLeft_ = true;
    if (held_) {
      timer_.cancel();
      finish(false);
    }
    return;
  }
  if (!held_) {
    received_.append(block_.data(), count);
  }
  serve();
  read();
}

void Connection::serve() {
  if (exchange_ || held_ || ended_) {
    return;
  }
  switch (reader_.feed(received_)) {
    case RequestReader::State::kIncomplete:
      return;
    case RequestReader::State::kMalformed:
      refuse();
      return;
    case RequestReader::State::kComplete:
      respond(reader_.take());
      return;
  }
}

void Connection::refuse() {
  Request request;
  request.method = "(malformed)";
  request.keepAlive = false;
  respond(std::move(request));
}

void Connection::respond(Request request) {
  Counters& counters = environment_.counters;
  request.connection = number_;
  request.ordinal = ++requests_;
  ++counters.requests;
  ++counters.requestsByMethod[request.method];
  ++counters.openRequests;
  counters.maxOpenRequests =
      std::max(counters.maxOpenRequests, counters.openRequests);

  const auto arrival = std::chrono::steady_clock::now();
  const std::int64_t arrived =
      environment_.journal == nullptr ? 0 : environment_.journal->now();
  Reply reply = request.method == "(malformed)"
                    ? errorReply(400, "GeneralError", "This is not HTTP.")
                    : environment_.responder.answer(request);
  const Delivery& delivery = reply.delivery;
  const auto due = environment_.processor.doRequest(arrival) +
                   environment_.roundTrip + delivery.delay;
  const bool lengthKnown =
      reply.body == nullptr || reply.body->size() || delivery.chunked;
  const bool keepAlive =
      request.keepAlive && lengthKnown && delivery.ending == Ending::kKeep;
  const bool headOnly = request.method == "HEAD";
  exchange_.emplace(Exchange{std::move(request),
                             ReplyStream(std::move(reply), headOnly, keepAlive),
                             keepAlive, arrived});

  timer_.expires_at(due);
  timer_.async_wait([self = shared_from_this()](const ErrorCode& error) {
    if (!error) {
      self->deliver();
    }
  });
}

void Connection::deliver() {
  const Delivery& delivery = exchange_->answer.reply().delivery;
  if (!delivery.silent) {
    send();
  } else if (delivery.ending != Ending::kKeep) {
    const Ending ending = delivery.ending;
    finish(false);
    end(ending);
  } else if (clientLeft_) {
    finish(false);
  } else {
    held_ = true;
  }
}

void Connection::send() {
  const Delivery& delivery = exchange_->answer.reply().delivery;
  const std::size_t step =
      delivery.stepBytes == 0 ? std::string::npos : delivery.stepBytes;
  const std::string_view bytes = exchange_->answer.next(step);
  if (bytes.empty()) {
    onAnswered();
    return;
  }
  environment_.counters.bytesSent += bytes.size();
  wire_->write(
      bytes, [self = shared_from_this()](const ErrorCode& error, std::size_t) {
        self->onSent(error);
      });
}

void Connection::onSent(const ErrorCode& error) {
  if (error) {
    finish(false);
    end(Ending::kReset);
    return;
  }
  const Delivery& delivery = exchange_->answer.reply().delivery;
  if (delivery.stepBytes == 0) {
    send();
    return;
  }
  timer_.expires_after(delivery.stepEvery);
  timer_.async_wait([self = shared_from_this()](const ErrorCode& failure) {
    if (!failure) {
      self->send();
    }
  });
}

void Connection::onAnswered() {
  const bool cut = exchange_->answer.cut();
  const Ending ending = exchange_->answer.reply().delivery.ending;
  if (cut && ending == Ending::kKeep && !clientLeft_) {
    held_ = true;  // The rest never comes.
    return;
  }
  const bool keepAlive = exchange_->keepAlive && !cut;
  finish(!cut);
  if (keepAlive) {
    serve();
    read();
  } else {
    end(ending == Ending::kReset ? Ending::kReset : Ending::kClose);
  }
}

void Connection::finish(bool complete) {
  if (!exchange_) {
    return;
  }
  --environment_.counters.openRequests;
  ++environment_.counters
        .answersByStatus[std::to_string(exchange_->answer.reply().status)];
  if (environment_.journal != nullptr) {
    log(complete);
  }
  exchange_.reset();
}

void Connection::log(bool complete) {
  const Request& request = exchange_->request;
  const Reply& reply = exchange_->answer.reply();
  environment_.journal->write({{"event", "request"},
                               {"connection", number_},
                               {"ordinal", request.ordinal},
                               {"method", request.method},
                               {"target", request.target},
                               {"status", reply.status},
                               {"authentication", nameOf(reply.authentication)},
                               {"arrivedUs", exchange_->arrived},
                               {"doneUs", environment_.journal->now()},
                               {"bytes", exchange_->answer.sent()},
                               {"complete", complete},
                               {"headers", describe(request.headers)}});
}

void Connection::end(Ending ending) {
  if (ended_) {
    return;
  }
  ended_ = true;
  if (ending == Ending::kReset) {
    wire_->reset();
  } else {
    wire_->close();
  }
}

}  // namespace bmc
