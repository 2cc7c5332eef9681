// A recording: answers of a service, each a line "@STATUS TARGET" and the body
// up to the next such line, are masked and become files. Nothing that
// identifies stays where it stood, and no secret stands anywhere.
#include "suite/redfish/recording/recording.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/answers.h"
#include "fuzz/budget.h"
#include "fuzz/require.h"
#include "suite/base/ascii.h"
#include "suite/base/filler.h"
#include "suite/http/basic_login.h"
#include "suite/redfish/graph/json.h"
#include "suite/redfish/recording/body_masking.h"
#include "suite/redfish/recording/json_text.h"

namespace {

using redfish::JsonToken;

constexpr char kPassword[] = "Wal-kure";

// The same numbers for each input, so that a finding stays one.
masking::Random numbers() {
  return [engine = std::mt19937(1)]() mutable {
    return static_cast<std::uint32_t>(engine());
  };
}

bool isObject(std::string_view body) {
  return redfish::parseObject(body).has_value();
}

struct Token {
  JsonToken::Kind kind;
  redfish::PropertyRole role;
  std::string value;
};

std::vector<Token> tokensOf(std::string_view body) {
  std::vector<Token> tokens;
  redfish::forEachToken(body, [&tokens](const JsonToken& token) {
    tokens.push_back({token.kind, token.role, std::string(token.value)});
  });
  return tokens;
}

// Whether a member's text has to be another one when it is masked.
bool mustChange(const Token& token) {
  const std::string_view core = base::trimmed(token.value);
  return token.kind == JsonToken::Kind::kText && token.role.identifying &&
         !token.role.format && !token.role.secret &&
         !base::startsWith(token.value, "/redfish/") && !base::isFiller(core) &&
         std::any_of(core.begin(), core.end(), base::isDigit) &&
         std::any_of(core.begin(), core.end(), base::isLetter);
}

void checkMasked(std::string_view body, masking::Masker& masker) {
  const std::string masked = redfish::maskBody(body, masker);
  if (!isObject(body)) {
    require(masked.size() == body.size());
    return;
  }
  require(isObject(masked));
  const std::vector<Token> before = tokensOf(body);
  const std::vector<Token> after = tokensOf(masked);
  require(before.size() == after.size());
  for (std::size_t i = 0; i < before.size(); ++i) {
    require(before[i].kind == after[i].kind);
    require(before[i].value.size() == after[i].value.size());
    require(!mustChange(before[i]) || before[i].value != after[i].value);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data,
                                      std::size_t size) {
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  const StepBudget budget(2000, 400, size);
  redfish::Recording recording;
  masking::Masker masker(numbers());
  const base::Secret password{std::string(kPassword)};
  const base::Secret login = http::basicLogin("ada", password);
  recording.noteUser("ada");
  recording.noteSecret(base::Secret(password));
  recording.noteSecret(base::Secret(login));
  std::vector<std::string_view> bodies;
  forEachPart(input, [&](std::string_view head, std::string_view body) {
    const std::size_t blank = head.find(' ');
    if (blank == std::string_view::npos) {
      return;
    }
    http::Answer answer;
    answer.status = head.front() == '4' ? 404 : 200;
    answer.body = body;
    recording.keep(head.substr(blank + 1), answer);
    bodies.push_back(body);
  });
  recording.note(masker);
  for (const std::string_view body : bodies) {
    redfish::noteBody(body, masker);
  }
  for (const std::string_view body : bodies) {
    checkMasked(body, masker);
  }
  for (masking::Masker* each :
       {&masker, static_cast<masking::Masker*>(nullptr)}) {
    recording.forEachFile(each, [&](const redfish::RecordedFile& file) {
      require(file.path.empty() || file.path.front() != '/');
      for (const std::string* text : {&file.path, &file.bytes}) {
        require(text->find(kPassword) == std::string::npos);
        require(text->find(login.text()) == std::string::npos);
      }
    });
  }
  return 0;
}
