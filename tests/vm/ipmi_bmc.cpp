// The IPMI side of a management controller for the test machines: it answers
// what qemu's ipmi-bmc-extern hands on from the machine's IPMI device.
//
//   vm_ipmi SOCKET USER PASSWORD FINGERPRINT
//
// It makes the one account for whoever asks for one (DSP0270), and never again
// after a request that disables bootstrapping. FINGERPRINT is the SHA-256
// digest of the controller's certificate, in hexadecimal digits.

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <charconv>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <numeric>
#include <string>

namespace {

// Marks of qemu's protocol: ends of messages, and of commands to the machine
// itself; an escaped byte has bit 4 set.
constexpr unsigned char kMessageEnd = 0xA0;
constexpr unsigned char kCommandEnd = 0xA1;
constexpr unsigned char kEscape = 0xAA;
constexpr unsigned char kEscapeBit = 0x10;

constexpr unsigned char kBody = 0x52;
constexpr unsigned char kKeepEnabled = 0xA5;
constexpr std::size_t kFieldLength = 16;

std::string bytes(std::initializer_list<unsigned char> values) {
  return {values.begin(), values.end()};
}

struct Account {
  std::string user;
  std::string password;
  std::string fingerprint;
  bool enabled = true;
};

std::string padded(std::string text) {
  text.resize(kFieldLength);
  return text;
}

// Completion code and data that answer a command.
std::string answer(Account& account, unsigned netFunction, unsigned command,
                   const std::string& data) {
  const auto at = [&](std::size_t index) {
    return index < data.size() ? static_cast<unsigned char>(data[index]) : 0U;
  };
  switch (netFunction << 8U | command) {
    case 0x0601:  // Get Device ID: IPMI 2.0.
      return bytes({0, 0x20, 1, 1, 0, 0x02, 0, 0xD9, 0x7E, 0, 1, 0});
    case 0x062E:  // Set BMC Global Enables.
      return bytes({0});
    case 0x062F:  // Get BMC Global Enables.
    case 0x0631:  // Get Message Flags.
      return bytes({0, 0});
    case 0x2C01:
      if (at(0) != kBody || at(1) != 1) {
        return bytes({0xCC});
      }
      return bytes({0, kBody, 1}) + account.fingerprint;
    case 0x2C02:
      if (at(0) != kBody) {
        return bytes({0xCC});
      }
      if (at(1) != kKeepEnabled) {
        account.enabled = false;
      }
      if (!account.enabled) {
        return bytes({0x80});
      }
      return bytes({0, kBody}) + padded(account.user) +
             padded(account.password);
    default:
      return bytes({0xC1});  // Invalid command.
  }
}

// A message as it goes over the line: with its checksum, which makes the sum
// of all bytes 0, and the end mark.
std::string framed(std::string message) {
  const unsigned sum = std::accumulate(
      message.begin(), message.end(), 0U, [](unsigned total, char c) {
        return total + static_cast<unsigned char>(c);
      });
  message += static_cast<char>(0x100U - (sum & 0xFFU));
  std::string line;
  for (const char c : message) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte == kMessageEnd || byte == kCommandEnd || byte == kEscape) {
      line += static_cast<char>(kEscape);
      line += static_cast<char>(byte | kEscapeBit);
    } else {
      line += c;
    }
  }
  return line + static_cast<char>(kMessageEnd);
}

// The answer to a message: sequence number, network function and LUN,
// command, data, checksum.
std::string replyTo(Account& account, const std::string& message) {
  constexpr std::size_t kShortest = 4;
  constexpr unsigned kResponse = 0x04;  // In the network function's place.
  if (message.size() < kShortest) {
    return "";
  }
  const auto function = static_cast<unsigned char>(message[1]);
  const std::string data = message.substr(3, message.size() - kShortest);
  return framed(message.substr(0, 1) + static_cast<char>(function | kResponse) +
                message[2] +
                answer(account, function >> 2U,
                       static_cast<unsigned char>(message[2]), data));
}

// Serves the machine until it is gone.
void serve(int line, Account& account) {
  std::string message;
  bool escaped = false;
  char c = 0;
  while (read(line, &c, 1) == 1) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte == kMessageEnd) {
      const std::string reply = replyTo(account, message);
      if (write(line, reply.data(), reply.size()) < 0) {
        return;
      }
      message.clear();
    } else if (byte == kCommandEnd) {
      message.clear();  // Of the machine itself: its version and powers.
    } else if (byte == kEscape) {
      escaped = true;
    } else {
      message += static_cast<char>(escaped ? byte & ~kEscapeBit : byte);
      escaped = false;
    }
  }
}

// The bytes that pairs of hexadecimal digits stand for.
std::string fromHexadecimal(const std::string& digits) {
  std::string result;
  for (std::size_t i = 0; i + 1 < digits.size(); i += 2) {
    unsigned char byte = 0;
    std::from_chars(digits.data() + i, digits.data() + i + 2, byte, 16);
    result += static_cast<char>(byte);
  }
  return result;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 5) {
    std::fputs("vm_ipmi SOCKET USER PASSWORD FINGERPRINT\n", stderr);
    return 2;
  }
  Account account{argv[2], argv[3], fromHexadecimal(argv[4])};
  sockaddr_un name = {};
  name.sun_family = AF_UNIX;
  std::strncpy(name.sun_path, argv[1], sizeof name.sun_path - 1);
  const int listener = socket(AF_UNIX, SOCK_STREAM, 0);
  if (bind(listener, reinterpret_cast<sockaddr*>(&name), sizeof name) != 0 ||
      listen(listener, 1) != 0) {
    std::perror("vm_ipmi");
    return 1;
  }
  const int line = accept(listener, nullptr, nullptr);
  if (line < 0) {
    return 1;
  }
  serve(line, account);
  return 0;
}
