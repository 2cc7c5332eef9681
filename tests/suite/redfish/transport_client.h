#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>

#include "suite/redfish/network_transport.h"
#include "suite/redfish/transport.h"

/// The far end's options for a server on the loopback interface: plain HTTP.
redfish::NetworkTransportOptions plainOptions(std::uint16_t port);

/// The same over TLS, without trusting anything yet.
redfish::NetworkTransportOptions tlsOptions(std::uint16_t port);

/// A GET of a target below the service.
redfish::Request get(std::string target = "/redfish/v1/Systems");

/// Starts a request and waits for its answer; a test whose answer takes longer
/// than ten seconds fails with an exception.
redfish::Answer ask(redfish::Transport& transport, redfish::Request request);

/// The next answer, within ten seconds.
redfish::Answer nextAnswer(redfish::Transport& transport);

/// What went wrong with an answer, told as the log would; "no failure".
std::string told(const redfish::Answer& answer);

/// The kind of an answer's failure in a word or two; "none".
std::string kindOf(const redfish::Answer& answer);

/// The answer over plain HTTP of a server that reads one request, sends a text
/// and ends the connection.
redfish::Answer answerTo(std::string_view text,
                         redfish::Request request = get());
