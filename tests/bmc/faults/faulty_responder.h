#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "tests/bmc/faults/fault_plan.h"
#include "tests/bmc/wire/message.h"

namespace bmc {

/// Answers in another responder's place, or changes its answers, as the rules
/// of a fault plan say.
class FaultyResponder : public Responder {
 public:
  /// `inner` must outlive this.
  FaultyResponder(Responder& inner, std::vector<FaultRule> rules);

  /// Values for marks in the rules' texts, such as "http" for "${http}".
  void setMarks(std::map<std::string, std::string> marks);

  Reply answer(const Request& request) override;

 private:
  struct Rule {
    FaultRule rule;
    std::uint64_t fitted = 0;  ///< Requests so far, whatever `nth` says.
  };

  Reply apply(const Rule& rule, const Request& request);
  std::string withMarks(std::string text, const Rule& rule,
                        const Request& request) const;

  Responder& inner_;
  std::vector<Rule> rules_;
  std::map<std::string, std::string> marks_;
};

}  // namespace bmc
