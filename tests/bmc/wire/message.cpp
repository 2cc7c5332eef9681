#include "tests/bmc/wire/message.h"

#include <algorithm>
#include <boost/algorithm/string/predicate.hpp>
#include <locale>

namespace bmc {
namespace {

bool sameName(std::string_view left, std::string_view right) {
  return boost::algorithm::iequals(left, right, std::locale::classic());
}

}  // namespace

std::string_view headerOf(const Headers& headers, std::string_view name) {
  for (const auto& [key, value] : headers) {
    if (sameName(key, name)) {
      return value;
    }
  }
  return {};
}

void removeHeader(Headers& headers, std::string_view name) {
  headers.erase(std::remove_if(headers.begin(), headers.end(),
                               [&](const auto& header) {
                                 return sameName(header.first, name);
                               }),
                headers.end());
}

void setHeader(Headers& headers, std::string_view name, std::string value) {
  removeHeader(headers, name);
  headers.emplace_back(std::string(name), std::move(value));
}

}  // namespace bmc
