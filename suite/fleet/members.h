#pragma once

#include <istream>
#include <string>
#include <vector>

#include "suite/base/result.h"
#include "suite/connection/settings/settings.h"
#include "suite/connection/settings/target.h"

namespace fleet {

/// One target of a run that reads several: how it is asked, or why it cannot
/// be.
struct Member {
  std::string name;  ///< In the settings, else the address; of a line that is
                     ///< not understood, the place of the line.
  base::Result<connection::Target> target;
};

/// The members that the settings name so. `choice` says what the command line
/// tells of all of them; one connection serves a controller unless somebody
/// told otherwise.
std::vector<Member> membersNamed(const std::vector<std::string>& names,
                                 const connection::TargetChoice& choice,
                                 const connection::Settings& settings);

/// The same from a list: a name or an address a line. Empty lines and those
/// that begin with "#" are left out, and so is a line that repeats another. A
/// line that is not understood becomes a member without a target, named for
/// its place, "FILE:LINE"; its text, which may hold a password, is not
/// repeated.
std::vector<Member> membersListed(std::istream& list, const std::string& file,
                                  const connection::TargetChoice& choice,
                                  const connection::Settings& settings);

/// The same from a file; "-" is standard input. Fails if it cannot be read.
base::Result<std::vector<Member>> membersInFile(
    const std::string& file, const connection::TargetChoice& choice,
    const connection::Settings& settings);

}  // namespace fleet
