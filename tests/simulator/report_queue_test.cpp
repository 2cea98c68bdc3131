#include "simulator/report_queue.h"

#include <gtest/gtest.h>

namespace simulator {
namespace {

Report tagged(uint32_t tag) {
    return ReportWriter(0, 0, tag).report();
}

TEST(ReportQueueTest, EmptyQueueHasNothingEver) {
    ReportQueue queue;
    EXPECT_EQ(queue.nextDueMs(), kNever);
    EXPECT_FALSE(queue.take(kNever));
}

TEST(ReportQueueTest, ReportComesAtItsTimeAndNotBefore) {
    ReportQueue queue;
    queue.put(tagged(1), 10);
    EXPECT_FALSE(queue.take(9));
    EXPECT_EQ(queue.take(10), tagged(1));
    EXPECT_FALSE(queue.take(10));
}

TEST(ReportQueueTest, EarlierDueComesFirstAndEqualDueInOrderOfPutting) {
    ReportQueue queue;
    queue.put(tagged(1), 20);
    queue.put(tagged(2), 10);
    queue.put(tagged(3), 20);
    EXPECT_EQ(queue.nextDueMs(), 10u);
    EXPECT_EQ(queue.take(30), tagged(2));
    EXPECT_EQ(queue.take(30), tagged(1));
    EXPECT_EQ(queue.take(30), tagged(3));
}

TEST(ReportQueueTest, DroppingKeepsWhatIsDueAtTheTimeItself) {
    ReportQueue queue;
    for (const uint64_t ms : {9, 10, 11}) {
        queue.put(tagged(static_cast<uint32_t>(ms)), ms);
    }
    ReportQueue before = queue;
    before.dropBefore(10);
    EXPECT_EQ(before.take(99), tagged(10));
    EXPECT_EQ(before.take(99), tagged(11));
    queue.dropAfter(10);
    EXPECT_EQ(queue.take(99), tagged(9));
    EXPECT_EQ(queue.take(99), tagged(10));
    EXPECT_EQ(queue.size(), 0u);
}

}  // namespace
}  // namespace simulator
