#include "tests/bmc/wire/body.h"

#include <utility>

namespace bmc {

TextBody::TextBody(std::string text)
    : text_(std::make_shared<const std::string>(std::move(text))) {}

TextBody::TextBody(std::shared_ptr<const std::string> text)
    : text_(std::move(text)) {}

std::optional<std::uint64_t> TextBody::size() const { return text_->size(); }

std::string_view TextBody::next(std::size_t limit) {
  std::string_view rest = *text_;
  rest = rest.substr(sent_, limit);
  sent_ += rest.size();
  return rest;
}

}  // namespace bmc
