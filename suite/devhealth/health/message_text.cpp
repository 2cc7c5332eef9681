#include "suite/devhealth/health/message_text.h"

#include <cstddef>

#include "suite/base/ascii.h"
#include "suite/devhealth/parts/value.h"

namespace devhealth {
namespace {

// Longer texts are cut anyway. Keeps a hostile message from repeating its
// arguments without end.
constexpr std::size_t kEnough = 4 * kMaxTextBytes;

}  // namespace

std::string substituteArguments(std::string_view message,
                                const std::vector<std::string>& arguments) {
  std::string text;
  while (!message.empty() && text.size() < kEnough) {
    const std::size_t percent = message.find('%');
    text += message.substr(0, percent);
    message.remove_prefix(percent == std::string_view::npos ? message.size()
                                                            : percent);
    if (message.empty()) {
      break;
    }
    std::size_t number = 0;
    std::size_t length = 1;
    while (length < message.size() && length < 3 &&
           base::isDigit(message[length])) {
      number = number * 10 + static_cast<std::size_t>(message[length] - '0');
      ++length;
    }
    if (number == 0) {
      text += message.substr(0, length);
    } else if (number <= arguments.size()) {
      text += arguments[number - 1];
    }
    message.remove_prefix(length);
  }
  return text;
}

std::string keyWithArguments(std::string_view key,
                             const std::vector<std::string>& arguments) {
  std::string text(key);
  const char* separator = ": ";
  for (const std::string& argument : arguments) {
    if (text.size() >= kEnough) {
      break;
    }
    text += separator;
    text += argument;
    separator = ", ";
  }
  return text;
}

}  // namespace devhealth
