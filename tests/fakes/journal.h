#pragma once

#include <string>
#include <vector>

namespace fakes {

/// What can be seen at the border of the module.
enum class Kind {
  kCall,    ///< A call of a service, the making and destroying of its objects.
  kLog,     ///< A line that reached the log: "level: text".
  kOutput,  ///< A line on standard output, noted when it is flushed.
  kError    ///< A line on standard error, noted when it is flushed.
};

/// Notes one event; the journal keeps all kinds in the order they happen.
void note(Kind kind, const std::string& text);

/// Everything noted since the last `reset`, each event with its kind in
/// front: "call", "log", "out" or "err", a blank, the text.
std::vector<std::string> journal();

/// The texts of one kind.
std::vector<std::string> noted(Kind kind);

/// A line as the log received it.
struct LogRecord {
  unsigned int level = 0;
  std::string file;
  int line = 0;
  std::string text;
};

/// Every line that reached the log since the last `reset`.
std::vector<LogRecord>& logRecords();

/// How often the log's threshold was read since the last `reset`.
int& thresholdReads();

/// Forgets all of the above.
void clearJournal();

}  // namespace fakes
