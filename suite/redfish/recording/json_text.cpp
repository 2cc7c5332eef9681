#include "suite/redfish/recording/json_text.h"

#include <algorithm>
#include <boost/json/parse.hpp>
#include <boost/json/serialize.hpp>
#include <boost/json/string.hpp>

#include "suite/base/ascii.h"

namespace redfish {
namespace {

namespace json = boost::json;

constexpr std::string_view kBlanks = " \t\r\n";

// What stands between quotation marks, without its escapes. An escape that
// stands for nothing leaves all as they are.
std::string decoded(std::string_view raw) {
  if (raw.find('\\') == std::string_view::npos) {
    return std::string(raw);
  }
  json::parse_options options;
  options.allow_invalid_utf8 = true;
  boost::system::error_code error;
  const json::value value = json::parse('"' + std::string(raw) + '"', error,
                                        json::storage_ptr(), options);
  return error || !value.is_string() ? std::string(raw)
                                     : std::string(value.get_string());
}

// A text as it stands between quotation marks.
std::string encoded(const std::string& text) {
  const std::string quoted = json::serialize(json::string(text));
  return quoted.substr(1, quoted.size() - 2);
}

// Finds the tokens of a text without building anything.
class Scanner {
 public:
  explicit Scanner(std::string_view text) : text_(text) {}

  // Finds the next token. False if there is none.
  bool next() {
    while (at_ < text_.size()) {
      const char c = text_[at_];
      if (c == '"') {
        takeString();
        return true;
      }
      if (base::isDigit(c)) {
        if (takeNumber()) {
          return true;
        }
        continue;
      }
      if (c == '{' || c == '}') {
        role_ = {};
      }
      ++at_;
    }
    return false;
  }

  const JsonToken& token() const { return token_; }
  // Where the token stands, without quotation marks.
  std::size_t begin() const { return begin_; }
  std::size_t end() const { return end_; }

 private:
  void takeString() {
    begin_ = ++at_;
    while (at_ < text_.size() && text_[at_] != '"') {
      at_ += text_[at_] == '\\' ? 2U : 1U;
    }
    end_ = at_ = std::min(at_, text_.size());
    at_ = std::min(at_ + 1, text_.size());
    value_ = decoded(text_.substr(begin_, end_ - begin_));
    while (at_ < text_.size() &&
           kBlanks.find(text_[at_]) != std::string_view::npos) {
      ++at_;
    }
    if (at_ < text_.size() && text_[at_] == ':') {
      // Once for a name, however many values it has.
      role_ = roleOf(value_);
      token_ = {JsonToken::Kind::kName, {}, value_};
    } else {
      token_ = {JsonToken::Kind::kText, role_, value_};
    }
  }

  // Takes digits. False if they are part of something else.
  bool takeNumber() {
    begin_ = at_;
    const bool whole =
        begin_ == 0 || (text_[begin_ - 1] != '-' && text_[begin_ - 1] != '+' &&
                        text_[begin_ - 1] != '.');
    while (at_ < text_.size() && base::isDigit(text_[at_])) {
      ++at_;
    }
    end_ = at_;
    const char behind = at_ < text_.size() ? text_[at_] : ' ';
    if (!whole || base::isAlphanumeric(behind) || behind == '.') {
      while (at_ < text_.size() &&
             (base::isAlphanumeric(text_[at_]) || text_[at_] == '.' ||
              text_[at_] == '-' || text_[at_] == '+')) {
        ++at_;
      }
      return false;
    }
    value_ = text_.substr(begin_, end_ - begin_);
    token_ = {JsonToken::Kind::kNumber, role_, value_};
    return true;
  }

  std::string_view text_;
  std::size_t at_ = 0;
  std::size_t begin_ = 0;
  std::size_t end_ = 0;
  PropertyRole role_;
  std::string value_;
  JsonToken token_;
};

}  // namespace

void forEachToken(std::string_view text,
                  const std::function<void(const JsonToken&)>& use) {
  Scanner scanner(text);
  while (scanner.next()) {
    use(scanner.token());
  }
}

std::string withTokens(
    std::string_view text,
    const std::function<std::string(const JsonToken&)>& change) {
  std::string changed;
  changed.reserve(text.size());
  std::size_t copied = 0;
  Scanner scanner(text);
  while (scanner.next()) {
    const JsonToken& token = scanner.token();
    const std::string value = change(token);
    if (value == token.value) {
      continue;
    }
    changed += text.substr(copied, scanner.begin() - copied);
    changed += token.kind == JsonToken::Kind::kNumber ? value : encoded(value);
    copied = scanner.end();
  }
  changed += text.substr(copied);
  return changed;
}

}  // namespace redfish
