#include "tests/bmc/faults/faulty_responder.h"

#include <fnmatch.h>

#include <boost/algorithm/string/replace.hpp>
#include <boost/json/parse.hpp>
#include <boost/json/serialize.hpp>
#include <chrono>
#include <ctime>
#include <iomanip>
#include <locale>
#include <memory>
#include <sstream>
#include <utility>

#include "tests/bmc/service/target.h"
#include "tests/bmc/wire/error_body.h"
#include "tests/bmc/wire/gzip.h"

namespace bmc {
namespace {

namespace json = boost::json;

// How far ahead the mark "soon" is.
constexpr std::chrono::seconds kSoon{3};

std::string httpDate(std::chrono::system_clock::time_point when) {
  const std::time_t time = std::chrono::system_clock::to_time_t(when);
  std::tm parts{};
  gmtime_r(&time, &parts);
  std::ostringstream text;
  text.imbue(std::locale::classic());
  text << std::put_time(&parts, "%a, %d %b %Y %H:%M:%S GMT");
  return text.str();
}

bool matches(const std::optional<std::string>& pattern,
             const std::string& text) {
  return !pattern || fnmatch(pattern->c_str(), text.c_str(), 0) == 0;
}

// Whether a request is one of a rule's, but for its number among them.
bool fits(const FaultRule& rule, const Request& request) {
  if (rule.method && *rule.method != request.method) {
    return false;
  }
  if (!matches(rule.target, request.target) ||
      !rule.connection.contains(request.connection) ||
      !rule.ordinal.contains(request.ordinal)) {
    return false;
  }
  const auto target = parseTarget(request.target);
  return !rule.path || (target && matches(rule.path, target->path));
}

void editJson(const JsonEdit& edit, Reply& reply) {
  const auto* text = dynamic_cast<const TextBody*>(reply.body.get());
  if (edit.empty() || text == nullptr) {
    return;
  }
  json::error_code error;
  json::value document = json::parse(text->text(), error);
  if (error) {
    return;
  }
  apply(edit, document);
  reply.body = std::make_unique<TextBody>(json::serialize(document));
}

void editDelivery(const DeliveryEdit& edit, Delivery& delivery) {
  delivery.delay += edit.delay;
  delivery.silent = edit.silent;
  delivery.stepBytes = edit.stepBytes;
  delivery.stepEvery = edit.stepEvery;
  delivery.cutAfter = edit.cutAfter;
  delivery.chunked = edit.chunked;
  delivery.ending = edit.ending;
}

}  // namespace

FaultyResponder::FaultyResponder(Responder& inner, std::vector<FaultRule> rules)
    : inner_(inner) {
  for (FaultRule& rule : rules) {
    rules_.push_back({std::move(rule), 0});
  }
}

void FaultyResponder::setMarks(std::map<std::string, std::string> marks) {
  marks_ = std::move(marks);
}

Reply FaultyResponder::answer(const Request& request) {
  for (Rule& rule : rules_) {
    if (!fits(rule.rule, request)) {
      continue;
    }
    if (rule.rule.nth.contains(++rule.fitted)) {
      return apply(rule, request);
    }
  }
  return inner_.answer(request);
}

Reply FaultyResponder::apply(const Rule& rule, const Request& request) {
  const ReplyEdit& edit = rule.rule.edit;
  Reply reply =
      rule.rule.replaces ? jsonReply(200, "{}") : inner_.answer(request);
  if (edit.error) {
    const int status = edit.status.value_or(reply.status);
    reply = errorReply(status, *edit.error, "The controller says so.");
  }
  if (edit.status) {
    reply.status = *edit.status;
  }
  if (edit.body) {
    std::vector<BodyPart> parts = edit.body->parts;
    for (BodyPart& part : parts) {
      part.text = withMarks(std::move(part.text), rule, request);
    }
    reply.body = std::make_unique<GeneratedBody>(std::move(parts));
    if (edit.body->gzip) {
      reply.body = std::make_unique<GzipBody>(std::move(reply.body));
      setHeader(reply.headers, "Content-Encoding", "gzip");
    }
  }
  editJson(edit.json, reply);
  for (const auto& [name, value] : edit.headers) {
    if (value) {
      setHeader(reply.headers, name, withMarks(*value, rule, request));
    } else {
      removeHeader(reply.headers, name);
    }
  }
  editDelivery(rule.rule.delivery, reply.delivery);
  return reply;
}

std::string FaultyResponder::withMarks(std::string text, const Rule& rule,
                                       const Request& request) const {
  if (text.find("${") == std::string::npos) {
    return text;
  }
  const auto replace = [&text](const std::string& name,
                               const std::string& value) {
    boost::algorithm::replace_all(text, "${" + name + "}", value);
  };
  replace("nth", std::to_string(rule.fitted));
  replace("target", request.target);
  replace("soon", httpDate(std::chrono::system_clock::now() + kSoon));
  for (const auto& [name, value] : marks_) {
    replace(name, value);
  }
  return text;
}

}  // namespace bmc
