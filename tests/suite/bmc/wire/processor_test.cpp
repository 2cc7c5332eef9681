#include "tests/bmc/wire/processor.h"

#include <gtest/gtest.h>

namespace bmc {
namespace {

using std::chrono::milliseconds;

Effort someEffort() {
  return {milliseconds(250), milliseconds(50), milliseconds(30)};
}

// Times since the start of the test's own clock.
milliseconds since(Processor::TimePoint start, Processor::TimePoint end) {
  return std::chrono::duration_cast<milliseconds>(end - start);
}

TEST(Processor, TakesAsLongAsTheWorkDoes) {
  const Processor::TimePoint start;
  EXPECT_EQ(since(start, Processor(someEffort()).doHandshake(start, false)),
            milliseconds(250));
  EXPECT_EQ(since(start, Processor(someEffort()).doHandshake(start, true)),
            milliseconds(50));
  EXPECT_EQ(since(start, Processor(someEffort()).doRequest(start)),
            milliseconds(30));
}

TEST(Processor, DoesOneThingAfterAnother) {
  const Processor::TimePoint start;
  Processor processor(someEffort());
  processor.doRequest(start);
  EXPECT_EQ(since(start, processor.doHandshake(start, true)), milliseconds(80));
  EXPECT_EQ(since(start, processor.doRequest(start + milliseconds(10))),
            milliseconds(110));
}

TEST(Processor, RestsUntilThereIsWork) {
  const Processor::TimePoint start;
  Processor processor(someEffort());
  processor.doRequest(start);
  EXPECT_EQ(since(start, processor.doRequest(start + milliseconds(100))),
            milliseconds(130));
}

TEST(Processor, WorkThatTakesNoTimeDoesNotWait) {
  const Processor::TimePoint start;
  Processor processor({milliseconds(250), milliseconds(0), milliseconds(0)});
  processor.doHandshake(start, false);
  EXPECT_EQ(processor.doRequest(start), start);
  EXPECT_EQ(processor.doHandshake(start, true), start);
}

}  // namespace
}  // namespace bmc
