#include "export/formats.h"

#include <ostream>

#include "export/csv.h"
#if !defined(_WIN32)
#include "export/prometheus_text.h"
#endif
#include "suite/report/json.h"

namespace exporting {
namespace {

// A line for each report, at once.
class JsonLines : public Format {
 public:
  void add(const report::ServerReport& report, std::ostream& out) override {
    out << report::toJson(report) << '\n' << std::flush;
  }

  void end(std::ostream& /*out*/) override {}
};

class CsvTable : public Format {
 public:
  explicit CsvTable(report::Want table) : table_(table) {}

  void add(const report::ServerReport& report, std::ostream& out) override {
    writeHeader(out);
    out << csvRows(table_, report) << std::flush;
  }

  void end(std::ostream& out) override {
    writeHeader(out);
    out << std::flush;
  }

 private:
  void writeHeader(std::ostream& out) {
    if (!headed_) {
      headed_ = true;
      out << csvHeader(table_);
    }
  }

  report::Want table_;
  bool headed_ = false;
};

#if !defined(_WIN32)
class PrometheusMetrics : public Format {
 public:
  void add(const report::ServerReport& report, std::ostream& /*out*/) override {
    text_.add(report);
  }

  void end(std::ostream& out) override { out << text_.text() << std::flush; }

 private:
  PrometheusText text_;
};
#endif

bool isOneItem(std::uint32_t wants) {
  return wants != 0 && (wants & (wants - 1)) == 0;
}

}  // namespace

std::unique_ptr<Format> makeFormat(const Options& options, std::string& error) {
  if (options.format == "json") {
    return std::make_unique<JsonLines>();
  }
#if !defined(_WIN32)
  if (options.format == "prometheus") {
    return std::make_unique<PrometheusMetrics>();
  }
#endif
  if (options.format == "csv" && isOneItem(options.wants)) {
    return std::make_unique<CsvTable>(static_cast<report::Want>(options.wants));
  }
  error = options.format == "csv"
              ? "--format csv is one table; name it by --device, such as dimm"
              : "--format: '" + options.format +
                    "' is no format; formats are " + kFormatNames;
  return nullptr;
}

}  // namespace exporting
