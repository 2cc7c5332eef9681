#include "tests/bmc/service/compressing.h"

#include <memory>

#include "tests/bmc/wire/gzip.h"

namespace bmc {

Reply Compressing::answer(const Request& request) {
  Reply reply = inner_.answer(request);
  const auto* text = dynamic_cast<const TextBody*>(reply.body.get());
  const bool accepted =
      headerOf(request.headers, "Accept-Encoding").find("gzip") !=
      std::string_view::npos;
  if (text == nullptr || !accepted ||
      !headerOf(reply.headers, "Content-Encoding").empty() ||
      !headerOf(reply.headers, "Content-Length").empty()) {
    return reply;
  }
  setHeader(reply.headers, "Content-Encoding", "gzip");
  reply.body = std::make_unique<TextBody>(gzip(text->text()));
  return reply;
}

}  // namespace bmc
