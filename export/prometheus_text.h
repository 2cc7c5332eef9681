#pragma once

#include <array>
#include <cstddef>
#include <set>
#include <string>
#include <utility>

#include "suite/report/report.h"

namespace exporting {

/// Reports as Prometheus' text exposition format 0.0.4. The format wants the
/// samples of all targets grouped by metric, so the text is whole only when
/// the last report was added.
///
/// Each sample has the labels `target` and `node`; those of parts also have
/// the part's `id`, so no two samples have the same labels. A value that is
/// not known has no sample. Health is a number: 0 normal, 1 warning, 2 error,
/// 3 unknown.
class PrometheusText {
 public:
  /// Adds the samples of a report. A second report of the same node is left
  /// out: collectors refuse a text that has a sample twice.
  void add(const report::ServerReport& report);

  /// The metrics of all reports so far, in an order of their own.
  std::string text() const;

 private:
  static constexpr std::size_t kMetrics = 13;

  std::array<std::string, kMetrics> samples_;  // By metric.
  std::set<std::pair<std::string, int>> nodes_;
};

}  // namespace exporting
