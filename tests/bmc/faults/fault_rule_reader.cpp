#include "tests/bmc/faults/fault_rule_reader.h"

#include <boost/json/object.hpp>
#include <chrono>
#include <utility>

#include "tests/bmc/faults/json_edit_reader.h"
#include "tests/bmc/faults/object_reader.h"
#include "tests/support/file_text.h"

namespace bmc {
namespace {

namespace json = boost::json;

std::optional<std::string> fromHex(const std::string& hex) {
  std::string bytes;
  if (hex.size() % 2 != 0 ||
      hex.find_first_not_of("0123456789abcdefABCDEF") != std::string::npos) {
    return std::nullopt;
  }
  for (std::size_t i = 0; i < hex.size(); i += 2) {
    bytes += static_cast<char>(std::stoi(hex.substr(i, 2), nullptr, 16));
  }
  return bytes;
}

// Reads the parts of one rule.
class RuleReader {
 public:
  RuleReader(std::string folder, std::string& error)
      : folder_(std::move(folder)), error_(error) {}

  FaultRule rule(const json::value& value, const std::string& where) {
    FaultRule rule;
    ObjectReader reader(value, where, error_);
    if (const auto* match = reader.any("match")) {
      readMatch(*match, reader.place("match"), rule);
    }
    const json::value* answer = reader.any("answer");
    const json::value* change = reader.any("change");
    rule.replaces = answer != nullptr;
    if (answer != nullptr && change != nullptr) {
      reader.complain("answer", "and a change exclude each other");
    } else if (answer != nullptr) {
      rule.edit = replyEdit(*answer, reader.place("answer"));
    } else if (change != nullptr) {
      rule.edit = replyEdit(*change, reader.place("change"));
    }
    if (const auto* delivery = reader.any("delivery")) {
      rule.delivery = deliveryEdit(*delivery, reader.place("delivery"));
    }
    reader.finish();
    return rule;
  }

 private:
  void readMatch(const json::value& value, const std::string& where,
                 FaultRule& rule) {
    ObjectReader reader(value, where, error_);
    rule.method = reader.text("method");
    rule.path = reader.text("path");
    rule.target = reader.text("target");
    rule.nth = reader.range("nth");
    rule.connection = reader.range("connection");
    rule.ordinal = reader.range("ordinal");
    reader.finish();
  }

  ReplyEdit replyEdit(const json::value& value, const std::string& where) {
    ReplyEdit edit;
    ObjectReader reader(value, where, error_);
    if (const auto status = reader.number("status")) {
      edit.status = static_cast<int>(*status);
    }
    readHeaders(reader, edit);
    edit.error = reader.text("error");
    if (const json::value* recipe = reader.any("body")) {
      edit.body = body(*recipe, reader.place("body"));
    }
    edit.json = readJsonEdit(reader);
    reader.finish();
    return edit;
  }

  void readHeaders(ObjectReader& reader, ReplyEdit& edit) {
    const json::object* headers = reader.object("headers");
    if (headers == nullptr) {
      return;
    }
    for (const auto& header : *headers) {
      const json::string* text = header.value().if_string();
      if (text != nullptr) {
        edit.headers.emplace_back(header.key(), std::string(*text));
      } else if (header.value().is_null()) {
        edit.headers.emplace_back(header.key(), std::nullopt);
      } else {
        reader.complain("headers",
                        "must hold texts, or null for those taken out");
      }
    }
  }

  BodyRecipe body(const json::value& value, const std::string& where) {
    if (const json::string* text = value.if_string()) {
      return {{{std::string(*text), 1}}, false};
    }
    BodyRecipe recipe;
    ObjectReader reader(value, where, error_);
    recipe.gzip = reader.flag("gzip");
    reader.each("parts", [&](const json::value& part, const std::string& at) {
      recipe.parts.push_back(bodyPart(part, at));
    });
    reader.finish();
    return recipe;
  }

  BodyPart bodyPart(const json::value& value, const std::string& where) {
    BodyPart part;
    ObjectReader reader(value, where, error_);
    part.times = reader.number("times").value_or(1);
    part.text = reader.text("text").value_or("");
    if (const auto hex = reader.text("hex")) {
      const auto bytes = fromHex(*hex);
      if (!bytes) {
        reader.complain("hex", "must be pairs of hexadecimal digits");
      }
      part.text = bytes.value_or("");
    }
    if (const auto file = reader.text("file")) {
      const auto text = support::readFile(folder_ + "/" + *file);
      if (!text) {
        reader.complain("file", "cannot be read");
      }
      part.text = text.value_or("");
    }
    if (const auto count = reader.number("noise")) {
      part.text = noise(static_cast<std::size_t>(*count));
    }
    reader.finish();
    return part;
  }

  DeliveryEdit deliveryEdit(const json::value& value,
                            const std::string& where) {
    using std::chrono::milliseconds;
    DeliveryEdit edit;
    ObjectReader reader(value, where, error_);
    edit.delay = milliseconds(reader.number("delayMs").value_or(0));
    edit.silent = reader.flag("silent");
    edit.stepBytes =
        static_cast<std::size_t>(reader.number("stepBytes").value_or(0));
    edit.stepEvery = milliseconds(reader.number("stepMs").value_or(0));
    edit.cutAfter = reader.number("cutAfter");
    edit.chunked = reader.flag("chunked");
    if (const auto word = reader.word("ending", {"keep", "close", "reset"})) {
      edit.ending = static_cast<Ending>(*word);
    }
    reader.finish();
    return edit;
  }

  std::string folder_;
  std::string& error_;
};

}  // namespace

FaultRule readRule(const json::value& value, const std::string& folder,
                   const std::string& where, std::string& error) {
  return RuleReader(folder, error).rule(value, where);
}

}  // namespace bmc
