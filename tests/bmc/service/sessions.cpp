#include "tests/bmc/service/sessions.h"

#include <openssl/rand.h>

#include <algorithm>
#include <array>
#include <utility>

namespace bmc {
namespace {

std::string makeToken() {
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::array<unsigned char, 16> bytes{};
  if (RAND_bytes(bytes.data(), static_cast<int>(bytes.size())) != 1) {
    return {};
  }
  // A token that is found where it must not be is known by its beginning.
  std::string token = "bmc-token-";
  for (const unsigned char byte : bytes) {
    token += kDigits[byte >> 4U];
    token += kDigits[byte & 15U];
  }
  return token;
}

}  // namespace

const Session* Sessions::open(std::string user) {
  if (sessions_.size() >= limit_) {
    return nullptr;
  }
  const std::string id = std::to_string(++opened_);
  return &sessions_.emplace(id, Session{id, makeToken(), std::move(user), 0})
              .first->second;
}

const Session* Sessions::find(std::string_view id) const {
  const auto found = sessions_.find(id);
  return found == sessions_.end() ? nullptr : &found->second;
}

const Session* Sessions::findByToken(std::string_view token) const {
  const auto found = std::find_if(
      sessions_.begin(), sessions_.end(),
      [&](const auto& entry) { return entry.second.token == token; });
  return found == sessions_.end() ? nullptr : &found->second;
}

const Session* Sessions::use(std::string_view token) {
  const Session* session = findByToken(token);
  if (session == nullptr) {
    return nullptr;
  }
  Session& used = sessions_.find(session->id)->second;
  ++used.uses;
  return &used;
}

bool Sessions::close(std::string_view id) {
  const auto found = sessions_.find(id);
  if (found == sessions_.end()) {
    return false;
  }
  sessions_.erase(found);
  return true;
}

}  // namespace bmc
