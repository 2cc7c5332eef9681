#pragma once

#include <chrono>
#include <optional>
#include <string_view>

namespace connection {

// The values that the command line and the settings file both take, with the
// limits that hold for either.

constexpr int kMostConnections = 16;
constexpr int kLargestPort = 65535;
constexpr int kHighestLogLevel = 4;

/// A time limit in seconds, fractions allowed: more than 0, at most one day.
/// Returns nullopt for any other number.
std::optional<std::chrono::milliseconds> timeLimit(double seconds);

/// The same from the whole of a text, with "." as the decimal sign.
std::optional<std::chrono::milliseconds> timeLimit(std::string_view text);

/// Whether a text pins public keys: "sha256//" and 44 characters of base64, or
/// several of these with ";" between.
bool isPin(std::string_view text);

}  // namespace connection
