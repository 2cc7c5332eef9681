#pragma once

#include "bench/controller/measure.h"

namespace bench {

/// Prints the head of the table of outcomes, in Markdown.
void printHead();

/// Prints one outcome as a row.
void printRow(const Job& job, const Outcome& outcome);

/// The same for controllers with one slow processor.
void printSlowHead();
void printSlowRow(const Job& job, const Outcome& outcome);

/// The same for controllers that change or keep nothing.
void printOddHead();
void printOddRow(const Job& job, const Outcome& outcome);

}  // namespace bench
