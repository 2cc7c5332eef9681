#include "suite/log/log_file.h"

#include <spdlog/logger.h>
#include <spdlog/sinks/base_sink.h>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "suite/base/text.h"
#include "suite/platform/files/owned_file.h"
#include "suite/platform/last_resort.h"

namespace logging {
namespace {

constexpr platform::Rotation kRotation = {std::uint64_t{4} << 20U, 3};

// The process's log. A plain pointer rather than a static object, so that
// lines that come late in the process's life find either a log or none.
struct OpenLog {
  spdlog::logger logger;
  std::string path;
  unsigned int level;
};
OpenLog* openedLog = nullptr;

// A line that came before the log was open.
struct EarlyLine {
  spdlog::log_clock::time_point time;
  unsigned int level;
  std::string file;
  int line;
  std::string text;
};
constexpr std::size_t kMostEarlyLines = 1000;
constexpr unsigned int kEverything = 4;
std::vector<EarlyLine>* earlyLines = nullptr;  // Null: none are kept.

void warn(const std::string& path, const std::string& reason) {
  std::fprintf(stderr, "brivel: warning: the log %s cannot be written: %s\n",
               base::escapeControls(path).c_str(),
               base::escapeControls(reason).c_str());
}

// Writes each line to the file that was opened, whatever its name stands for
// by then.
class OwnedFileSink : public spdlog::sinks::base_sink<std::mutex> {
 public:
  explicit OwnedFileSink(platform::OwnedFile file) : file_(std::move(file)) {
    platform::setLastWordsFile(file_.handle());
  }

  ~OwnedFileSink() override { platform::setLastWordsFile(-1); }

  OwnedFileSink(const OwnedFileSink&) = delete;
  OwnedFileSink& operator=(const OwnedFileSink&) = delete;

 protected:
  void sink_it_(const spdlog::details::log_msg& message) override {
    spdlog::memory_buf_t line;
    formatter_->format(message, line);
    std::string reason;
    if (!file_.append({line.data(), line.size()}, reason)) {
      spdlog::throw_spdlog_ex(reason);
    }
  }

  void flush_() override {}  // Nothing is held back.

 private:
  platform::OwnedFile file_;
};

spdlog::level::level_enum levelOf(unsigned int level) {
  switch (level) {
    case 0:
    case 1:
      return spdlog::level::err;
    case 2:
      return spdlog::level::warn;
    case 3:
      return spdlog::level::info;
    default:
      return spdlog::level::trace;
  }
}

std::string_view baseName(std::string_view path) {
  const std::size_t separator = path.find_last_of("/\\");
  return separator == std::string_view::npos ? path
                                             : path.substr(separator + 1);
}

// Writes one line to the open log if its threshold lets it through.
void writeAt(spdlog::log_clock::time_point time, unsigned int level,
             std::string_view file, int line, std::string_view text) {
  if (level <= openedLog->level) {
    const std::string name(baseName(file));
    openedLog->logger.log(time, spdlog::source_loc{name.c_str(), line, ""},
                          levelOf(level), base::escapeControls(text));
  }
}

}  // namespace

void keepEarlyLines() {
  closeLog();
  earlyLines = new std::vector<EarlyLine>();
}

void openLog(const LogOptions& options) {
  const std::unique_ptr<std::vector<EarlyLine>> early(
      std::exchange(earlyLines, nullptr));
  closeLog();
  if (options.file.empty() || options.level == 0) {
    return;
  }
  std::string refusal;
  std::optional<platform::OwnedFile> file = platform::OwnedFile::open(
      std::filesystem::u8path(options.file), kRotation, refusal);
  if (!file) {
    if (options.askedFor) {
      warn(options.file, refusal);
    }
    return;
  }
  try {
    auto opened = std::make_unique<OpenLog>(OpenLog{
        spdlog::logger("brivel",
                       std::make_shared<OwnedFileSink>(*std::move(file))),
        options.file, options.level});
    opened->logger.set_level(spdlog::level::trace);
    opened->logger.set_pattern("%Y-%m-%dT%H:%M:%S.%e%z %P %-5l %g:%# %v");
    opened->logger.set_error_handler(
        [path = options.file, warned = std::make_shared<std::atomic<bool>>()](
            const std::string& reason) {
          if (!warned->exchange(true)) {
            warn(path, reason);
          }
        });
    openedLog = opened.release();
    for (const EarlyLine& line : early ? *early : std::vector<EarlyLine>()) {
      writeAt(line.time, line.level, line.file, line.line, line.text);
    }
  } catch (const std::exception& error) {
    warn(options.file, error.what());
  }
}

void closeLog() {
  delete std::exchange(openedLog, nullptr);
  delete std::exchange(earlyLines, nullptr);
}

const std::string& logPath() {
  static const std::string kNone;
  return openedLog == nullptr ? kNone : openedLog->path;
}

unsigned int threshold() {
  return openedLog != nullptr    ? openedLog->level
         : earlyLines != nullptr ? kEverything
                                 : 0;
}

void writeLine(unsigned int level, std::string_view file, int line,
               std::string_view text) noexcept {
  if (level > threshold()) {
    return;
  }
  try {
    const auto now = spdlog::log_clock::now();
    if (openedLog != nullptr) {
      writeAt(now, level, file, line, text);
    } else if (earlyLines != nullptr && earlyLines->size() < kMostEarlyLines) {
      earlyLines->push_back(
          {now, level, std::string(file), line, std::string(text)});
    }
  } catch (const std::exception&) {
    // Losing a line is better than ending the run.
  }
}

}  // namespace logging
