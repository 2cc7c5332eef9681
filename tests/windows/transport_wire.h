#pragma once

#include <boost/json/object.hpp>
#include <string>

#include "suite/http/network_transport.h"

// What crosses between a test on this machine and a transport that runs under
// Wine: one JSON object a line, in both directions.

namespace wire {

boost::json::object encode(const http::NetworkTransportOptions& options);
boost::json::object encode(const http::Request& request);
boost::json::object encode(const http::Answer& answer);
boost::json::object encode(const http::TransportStats& stats);

http::NetworkTransportOptions optionsOf(const boost::json::object& object);
http::Request requestOf(const boost::json::object& object);
http::Answer answerOf(const boost::json::object& object);
http::TransportStats statsOf(const boost::json::object& object);

/// A line as an object; bodies need not be UTF-8. Throws when it is none.
boost::json::object parseLine(const std::string& line);

}  // namespace wire
