#include "tests/bmc/service/account.h"

#include <openssl/evp.h>

#include <boost/algorithm/string/predicate.hpp>
#include <locale>
#include <optional>

namespace bmc {
namespace {

constexpr std::string_view kBasic = "Basic ";

std::optional<std::string> decodeBase64(std::string_view text) {
  if (text.empty() || text.size() % 4 != 0) {
    return std::nullopt;
  }
  std::string bytes(text.size() / 4 * 3, '\0');
  const int count =
      EVP_DecodeBlock(reinterpret_cast<unsigned char*>(bytes.data()),
                      reinterpret_cast<const unsigned char*>(text.data()),
                      static_cast<int>(text.size()));
  if (count < 0) {
    return std::nullopt;
  }
  // The decoder counts the padding as bytes.
  std::size_t padding = 0;
  while (padding < 2 && text[text.size() - 1 - padding] == '=') {
    ++padding;
  }
  bytes.resize(static_cast<std::size_t>(count) - padding);
  return bytes;
}

bool basicMatches(std::string_view header, const Account& account) {
  const auto pair = decodeBase64(header.substr(kBasic.size()));
  if (!pair) {
    return false;
  }
  const std::size_t colon = pair->find(':');
  if (colon == std::string::npos) {
    return false;
  }
  const std::string_view view(*pair);
  return matches(account, view.substr(0, colon), view.substr(colon + 1));
}

}  // namespace

bool matches(const Account& account, std::string_view user,
             std::string_view password) {
  return user == account.user && password == account.password;
}

Authentication authenticate(const Headers& headers, const Account& account,
                            const Sessions& sessions) {
  const std::string_view token = headerOf(headers, "X-Auth-Token");
  if (!token.empty()) {
    return sessions.findByToken(token) != nullptr ? Authentication::kToken
                                                  : Authentication::kRefused;
  }
  const std::string_view header = headerOf(headers, "Authorization");
  if (header.empty()) {
    return Authentication::kNone;
  }
  const bool basic =
      boost::algorithm::istarts_with(header, kBasic, std::locale::classic());
  return basic && basicMatches(header, account) ? Authentication::kBasic
                                                : Authentication::kRefused;
}

}  // namespace bmc
