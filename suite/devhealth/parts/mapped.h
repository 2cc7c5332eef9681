#pragma once

#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

#include "suite/base/failure.h"
#include "suite/devhealth/parts/part_list.h"

namespace devhealth {

/// The rows of one table, or why there is no table.
template <typename Record>
struct Mapped {
  std::vector<Record> records;
  /// Set when a list that the table needs could not be read, or none of the
  /// parts in it; the records are not to be used then.
  std::optional<base::Failure> failure;
  /// Why a part of the table is not known; its record says so. The first one,
  /// where several could not be read.
  std::optional<base::Failure> gap;
};

/// Counts the parts and lists that a table is made from, and tells whether they
/// suffice.
class ReadTally {
 public:
  /// A part was read, whether or not it makes a row.
  void read() { ++read_; }

  /// A part could not be read. It has a row, which says so.
  void unreadable(const Part& part) {
    if (unreadable_++ == 0) {
      first_ = failureOf(part.uri, part.failure);
    }
  }

  /// A part was read, or could not be.
  void count(const Part& part) {
    if (part.object == nullptr) {
      unreadable(part);
    } else {
      read();
    }
  }

  /// A list of parts could not be read. The first one tells the cause.
  void fail(const base::Failure& failure) {
    if (!failure_) {
      failure_ = failure;
    }
  }

  /// Links of parts are refused. The parts have no rows.
  void refused(const RefusedLinks& links) {
    if (links.count > 0 && unreadable_ == 0) {
      first_ = links.first;
    }
    unreadable_ += links.count;
  }

  /// A list could not be read, or lacks members.
  void count(const LinkedList& list) {
    if (list.failure) {
      fail(*list.failure);
    }
    refused(list.refused);
  }

  /// Why there is no table; nullopt if there is one.
  std::optional<base::Failure> verdict() const;

  /// Why the first unreadable part could not be read; nullopt if all were read.
  std::optional<base::Failure> gap() const;

 private:
  std::size_t read_ = 0;
  std::size_t unreadable_ = 0;
  base::Failure first_;  ///< Of the parts that could not be read.
  std::optional<base::Failure> failure_;
};

/// The table of some records.
template <typename Record>
Mapped<Record> tableOf(std::vector<Record> records, const ReadTally& tally) {
  return {std::move(records), tally.verdict(), tally.gap()};
}

}  // namespace devhealth
