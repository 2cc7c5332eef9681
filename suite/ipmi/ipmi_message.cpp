#include "suite/ipmi/ipmi_message.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace ipmi {
namespace {

constexpr std::uint8_t kNetFunctionApp = 0x06;
constexpr std::uint8_t kNetFunctionGroup = 0x2C;
// The body that defines the commands of the group: DSP0270's Redfish.
constexpr std::uint8_t kRedfishBody = 0x52;
// Any other value disables bootstrapping for every later request.
constexpr std::uint8_t kKeepEnabled = 0xA5;
constexpr std::uint8_t kSha256 = 1;
constexpr std::size_t kFieldLength = 16;
constexpr std::size_t kDigestLength = 32;

bool fromRedfishBody(const IpmiResponse& response) {
  return response.completion == 0 &&
         base::ByteView(response.data).byte(0) == kRedfishBody;
}

// The text of a field that is padded with NULs. Returns nullopt if it is empty
// or holds other characters than printable ones: such a field is malformed and
// must not get into a login.
std::optional<std::string> paddedText(base::ByteView data, std::size_t offset) {
  const auto field = data.slice(offset, kFieldLength);
  if (!field) {
    return std::nullopt;
  }
  const std::string_view text = field->text();
  const std::string_view used =
      text.substr(0, std::min(text.find('\0'), text.size()));
  const bool printable = std::all_of(
      used.begin(), used.end(), [](char c) { return c > 0x20 && c < 0x7F; });
  if (used.empty() || !printable) {
    return std::nullopt;
  }
  return std::string(used);
}

}  // namespace

IpmiRequest getDeviceIdRequest() { return {kNetFunctionApp, 0x01, {}}; }

std::optional<int> ipmiVersion(const IpmiResponse& response) {
  // Binary-coded decimal with the digits swapped: 02h is 2.0, 51h is 1.5.
  const auto version = base::ByteView(response.data).byte(4);
  if (response.completion != 0 || !version) {
    return std::nullopt;
  }
  const int major = *version & 0x0F;
  const int minor = *version >> 4;
  if (major < 1 || major > 9 || minor > 9) {
    return std::nullopt;
  }
  return major * 10 + minor;
}

IpmiRequest bootstrapRequest() {
  return {kNetFunctionGroup, 0x02, {kRedfishBody, kKeepEnabled}};
}

std::optional<BootstrapAccount> bootstrapAccount(const IpmiResponse& response) {
  if (!fromRedfishBody(response)) {
    return std::nullopt;
  }
  const base::ByteView data(response.data);
  auto user = paddedText(data, 1);
  auto password = paddedText(data, 1 + kFieldLength);
  if (!user || !password) {
    return std::nullopt;
  }
  return BootstrapAccount{std::move(*user), std::move(*password)};
}

IpmiRequest fingerprintRequest() {
  return {kNetFunctionGroup, 0x01, {kRedfishBody, 1}};
}

std::optional<std::string> certificateDigest(const IpmiResponse& response) {
  if (!fromRedfishBody(response)) {
    return std::nullopt;
  }
  const base::ByteView data(response.data);
  const auto digest = data.slice(2, kDigestLength);
  if (data.byte(1) != kSha256 || !digest) {
    return std::nullopt;
  }
  return std::string(digest->text());
}

}  // namespace ipmi
