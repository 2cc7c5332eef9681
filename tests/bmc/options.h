#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "tests/bmc/wire/processor.h"

namespace bmc {

/// The account of a controller that is told no other. No secret: tests look
/// for this password where none may be.
constexpr const char* kDefaultUser = "admin";
constexpr const char* kDefaultPassword = "Nothing-2-Hide";

/// What the command line asks for.
struct Options {
  std::string tree;       ///< Folder of the recorded server.
  std::string directory;  ///< Folder for what the controller writes.
  std::string address = "127.0.0.1";
  std::uint16_t httpPort = 0;  ///< 0: any free port; likewise the others.
  std::uint16_t httpsPort = 0;
  std::uint16_t controlPort = 0;
  std::uint16_t ipmiPort = 0;  ///< Opened only if a fault file asks for it.
  std::string user = kDefaultUser;
  std::string passwordFile;  ///< Its first line; empty: the default.
  bool open = false;
  std::size_t maxSessions = 8;
  unsigned delayMs = 0;  ///< Of each answer, on top of the processor's time.
  Effort effort;         ///< What takes time of its one processor.
  unsigned roundTripMs = 0;  ///< Of the network.
  int expand = 0;            ///< Levels of `$expand`; 0: not supported.
  std::size_t pageSize = 0;
  bool gzip = false;
  std::string certificateFile;  ///< PEM; empty: one is made.
  std::string keyFile;
  std::string faultFile;  ///< What it does wrong; empty: nothing.
};

/// Reads the command line. When the program is to end at once, because of
/// --help or of wrong usage, `exitStatus` is set and false returned; what is
/// to be said has been said.
bool parseOptions(int argc, char** argv, Options& options, int& exitStatus);

}  // namespace bmc
