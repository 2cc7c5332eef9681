#include "suite/fleet/members.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <set>
#include <system_error>
#include <utility>

#include "suite/base/ascii.h"

namespace fleet {
namespace {

using base::FailureKind;
using connection::Settings;
using connection::TargetChoice;

constexpr char kStandardInput[] = "-";

// The settings with the defaults of a run that reads several targets.
Settings forMany(const Settings& settings) {
  Settings many = settings;
  if (!many.defaults.maxConnections) {
    many.defaults.maxConnections = 1;
  }
  return many;
}

base::Result<connection::Target> resolve(const std::string& name,
                                         TargetChoice choice,
                                         const Settings& settings) {
  choice.text = name;
  auto target = connection::resolveTarget(choice, settings);
  if (!target) {
    return std::move(target).error();
  }
  // Only without a name the target may be this machine.
  return **std::move(target);
}

}  // namespace

std::vector<Member> membersNamed(const std::vector<std::string>& names,
                                 const TargetChoice& choice,
                                 const Settings& settings) {
  const Settings many = forMany(settings);
  std::vector<Member> members;
  members.reserve(names.size());
  for (const std::string& name : names) {
    members.push_back({name, resolve(name, choice, many)});
  }
  return members;
}

std::vector<Member> membersListed(std::istream& list, const std::string& file,
                                  const TargetChoice& choice,
                                  const Settings& settings) {
  const Settings many = forMany(settings);
  std::vector<Member> members;
  std::set<std::string> seen;
  std::string line;
  for (std::size_t number = 1; std::getline(list, line); ++number) {
    const std::string name(base::trimmed(line));
    if (name.empty() || name.front() == '#' || !seen.insert(name).second) {
      continue;
    }
    Member member{name, resolve(name, choice, many)};
    if (!member.target) {
      member.name = file + ":" + std::to_string(number);
    }
    members.push_back(std::move(member));
  }
  return members;
}

base::Result<std::vector<Member>> membersInFile(const std::string& file,
                                                const TargetChoice& choice,
                                                const Settings& settings) {
  if (file == kStandardInput) {
    return membersListed(std::cin, "standard input", choice, settings);
  }
  const auto path = std::filesystem::u8path(file);
  std::error_code failure;
  if (std::filesystem::is_directory(path, failure)) {
    return base::usageFailure("--targets " + file + ": is a directory");
  }
  std::ifstream list(path, std::ios::binary);
  if (!list) {
    return base::makeFailure(
        FailureKind::kUsage,
        "--targets " + file + ": " + std::string(std::strerror(errno)));
  }
  return membersListed(list, file, choice, settings);
}

}  // namespace fleet
