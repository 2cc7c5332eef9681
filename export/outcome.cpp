#include "export/outcome.h"

namespace exporting {
namespace {

std::string textOf(const report::Target& target,
                   const report::ReadFailure& failure) {
  std::string text = target.name + ": ";
  for (const std::string& part : {failure.what, failure.resource}) {
    text += part.empty() ? "" : part + ": ";
  }
  return text + failure.cause;
}

}  // namespace

void Outcome::add(const report::ServerReport& report) {
  ++reports_;
  if (report.read.status == report::ReadStatus::kFailed) {
    ++failed_;
  } else if (report.read.status == report::ReadStatus::kPartial) {
    ++partial_;
  }
  for (const report::ReadFailure& failure : report.read.failures) {
    if (codes_.empty()) {
      first_ = textOf(report.target, failure);
    }
    codes_.insert(failure.code);
  }
}

BrivelResult Outcome::result() const {
  BrivelResult result;
  if (codes_.empty()) {
    return result;
  }
  result.code = codes_.size() == 1 ? *codes_.begin() : kGenericFailure;
  if (reports_ == 1) {
    result.message = failed_ == 1 ? "" : first_;
    return result;
  }
  const std::string all = " of " + std::to_string(reports_);
  if (failed_ > 0) {
    result.message =
        std::to_string(failed_) + all + " targets could not be read";
  }
  if (partial_ > 0) {
    result.message += (failed_ > 0 ? ", " : "") + std::to_string(partial_) +
                      all + " not wholly";
  }
  result.message += "; the first: " + first_;
  return result;
}

}  // namespace exporting
