#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>

#include "suite/http/network_transport.h"
#include "suite/http/transport.h"

/// What a server answers, where it does not matter.
inline constexpr char kBody[] = R"({"@odata.id": "/redfish/v1/Systems"})";

/// The far end's options for a server on the loopback interface: plain HTTP.
http::NetworkTransportOptions plainOptions(std::uint16_t port);

/// The same over TLS, without trusting anything yet.
http::NetworkTransportOptions tlsOptions(std::uint16_t port);

/// A GET of a target below the service.
http::Request get(std::string target = "/redfish/v1/Systems");

/// Starts a request and waits for its answer; a test whose answer takes longer
/// than ten seconds fails with an exception.
http::Answer ask(http::Transport& transport, http::Request request);

/// The next answer, within ten seconds.
http::Answer nextAnswer(http::Transport& transport);

/// What went wrong with an answer, told as the log would; "no failure".
std::string told(const http::Answer& answer);

/// The kind of an answer's failure in a word or two; "none".
std::string kindOf(const http::Answer& answer);

/// The answer over plain HTTP of a server that reads one request, sends a text
/// and ends the connection.
http::Answer answerTo(std::string_view text, http::Request request = get());
