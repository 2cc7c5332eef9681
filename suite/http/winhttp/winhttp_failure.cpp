#include "suite/http/winhttp/winhttp_failure.h"

#include <windows.h>
#include <winhttp.h>
#include <winsock2.h>

#include <array>
#include <boost/nowide/convert.hpp>

#include "suite/base/text.h"

namespace http {
namespace {

constexpr std::size_t kDetailBytes = 200;

NetworkFault lostFault(const WinhttpProgress& progress) {
  return progress.answered ? NetworkFault::kLostInAnswer
                           : NetworkFault::kLostBeforeAnswer;
}

}  // namespace

NetworkFault timeoutFaultOf(const WinhttpProgress& progress) {
  return progress.sent        ? NetworkFault::kAnswerTimeout
         : progress.connected ? NetworkFault::kTlsTimeout
         : progress.resolved  ? NetworkFault::kConnectTimeout
                              : NetworkFault::kNameTimeout;
}

NetworkFault faultOf(unsigned long error, const WinhttpProgress& progress) {
  switch (error) {
    case ERROR_WINHTTP_NAME_NOT_RESOLVED:
    case WSAHOST_NOT_FOUND:
      return NetworkFault::kHostNotFound;
    case WSAECONNREFUSED:
      return NetworkFault::kRefused;
    case WSAENETUNREACH:
    case WSAEHOSTUNREACH:
    case WSAEADDRNOTAVAIL:
      return NetworkFault::kNoRoute;
    case ERROR_WINHTTP_CANNOT_CONNECT:
      return NetworkFault::kNotConnected;
    case ERROR_WINHTTP_TIMEOUT:
    case WSAETIMEDOUT:
      return timeoutFaultOf(progress);
    case ERROR_WINHTTP_SECURE_FAILURE:
    case ERROR_WINHTTP_SECURE_CHANNEL_ERROR:
    case ERROR_WINHTTP_SECURE_INVALID_CERT:
    case ERROR_WINHTTP_CLIENT_AUTH_CERT_NEEDED:
      return NetworkFault::kTlsHandshake;
    case ERROR_WINHTTP_HEADER_COUNT_EXCEEDED:
    case ERROR_WINHTTP_HEADER_SIZE_OVERFLOW:
      return NetworkFault::kHeadersTooLarge;
    case ERROR_WINHTTP_INVALID_SERVER_RESPONSE:
    case ERROR_WINHTTP_INVALID_HEADER:
      return progress.answered ? NetworkFault::kMalformed
                               : NetworkFault::kNotHttp;
    case ERROR_WINHTTP_CHUNKED_ENCODING_HEADER_SIZE_OVERFLOW:
      return NetworkFault::kMalformed;
    case ERROR_WINHTTP_CONNECTION_ERROR:
    case WSAECONNRESET:
    case WSAECONNABORTED:
      return lostFault(progress);
    default:
      return NetworkFault::kInternal;
  }
}

std::string messageFor(unsigned long error) {
  if (error == ERROR_WINHTTP_CANNOT_CONNECT) {
    return "it was refused, or there is no way to this address";
  }
  std::array<wchar_t, 256> text{};
  // WinHTTP's own errors are told by its library.
  const DWORD size =
      FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_FROM_HMODULE |
                         FORMAT_MESSAGE_IGNORE_INSERTS,
                     GetModuleHandleW(L"winhttp.dll"), error, 0, text.data(),
                     static_cast<DWORD>(text.size()), nullptr);
  const std::string words =
      base::excerpt(boost::nowide::narrow(text.data(), size), kDetailBytes);
  return words.empty() ? "error " + std::to_string(error) : words;
}

}  // namespace http
