#include "tests/fakes/journal.h"

namespace fakes {
namespace {

struct Event {
  Kind kind;
  std::string text;
};

std::vector<Event>& events() {
  static std::vector<Event> kept;
  return kept;
}

const char* prefix(Kind kind) {
  switch (kind) {
    case Kind::kCall:
      return "call ";
    case Kind::kLog:
      return "log ";
    case Kind::kOutput:
      return "out ";
    case Kind::kError:
      return "err ";
  }
  return "";
}

}  // namespace

void note(Kind kind, const std::string& text) {
  events().push_back({kind, text});
}

std::vector<std::string> journal() {
  std::vector<std::string> lines;
  for (const Event& event : events()) {
    lines.push_back(prefix(event.kind) + event.text);
  }
  return lines;
}

std::vector<std::string> noted(Kind kind) {
  std::vector<std::string> texts;
  for (const Event& event : events()) {
    if (event.kind == kind) {
      texts.push_back(event.text);
    }
  }
  return texts;
}

std::vector<LogRecord>& logRecords() {
  static std::vector<LogRecord> records;
  return records;
}

int& thresholdReads() {
  static int reads = 0;
  return reads;
}

void clearJournal() {
  events().clear();
  logRecords().clear();
  thresholdReads() = 0;
}

}  // namespace fakes
