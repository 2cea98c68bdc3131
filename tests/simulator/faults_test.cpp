#include "simulator/faults.h"

#include <gtest/gtest.h>

#include <string>

namespace simulator {
namespace {

std::string hits(const Occurrence& occurrence, int occasions) {
    OccasionCounter counter;
    std::string pattern;
    for (int i = 0; i < occasions; ++i) {
        pattern += counter.isHit(occurrence) ? 'x' : '.';
    }
    return pattern;
}

TEST(OccasionCounterTest, FirstNthAndEveryAreTold) {
    EXPECT_EQ(hits({1, 1, 1}, 5), "x....");
    EXPECT_EQ(hits({3, 1, 1}, 5), "..x..");
    EXPECT_EQ(hits({1, 1, 0}, 5), "xxxxx");
    EXPECT_EQ(hits({2, 1, 3}, 6), ".xxx..");
    EXPECT_EQ(hits({2, 3, 0}, 9), ".x..x..x.");
    EXPECT_EQ(hits({2, 3, 2}, 9), ".x..x....");
}

TEST(TriggerTest, TimeCommandsAndReportsMustAllHaveCome) {
    const Trigger trigger{100, 2, 3};
    EXPECT_TRUE(isReached(trigger, {1000, 1100, 2, 3}));
    EXPECT_FALSE(isReached(trigger, {1000, 1099, 2, 3}));
    EXPECT_FALSE(isReached(trigger, {1000, 1100, 1, 3}));
    EXPECT_FALSE(isReached(trigger, {1000, 1100, 2, 2}));
    EXPECT_EQ(reachedAtMs(trigger, {1000, 1000, 2, 3}), 1100u);
    EXPECT_EQ(reachedAtMs(trigger, {1000, 1000, 1, 3}), kNever);
}

CallFault refusal(int64_t command, HoxiResult result) {
    CallFault fault;
    fault.function = static_cast<int64_t>(Function::PutCommand);
    fault.command = command;
    fault.result = result;
    fault.count = 0;
    return fault;
}

TEST(CallFaultsTest, OnlyTheFunctionAndCommandThatAreNamedFail) {
    CallFaults faults;
    faults.add(refusal(5, 9020));
    EXPECT_EQ(faults.resultOf({Function::PutCommand, 5}, {}), 9020u);
    EXPECT_EQ(faults.resultOf({Function::PutCommand, 4}, {}), 0u);
    EXPECT_EQ(faults.resultOf({Function::PutCommand, kNotGiven}, {}), 0u);
    EXPECT_EQ(faults.resultOf({Function::GetStatus, 5}, {}), 0u);
}

TEST(CallFaultsTest, WithoutACommandEveryCommandFails) {
    CallFaults faults;
    faults.add(refusal(kNotGiven, 9020));
    EXPECT_EQ(faults.resultOf({Function::PutCommand, 4}, {}), 9020u);
}

TEST(CallFaultsTest, FirstOfTwoFaultsGivesTheResultAndBothCount) {
    CallFaults faults;
    CallFault once = refusal(kNotGiven, 9020);
    once.count = 1;
    faults.add(once);
    CallFault second = refusal(kNotGiven, 9021);
    second.nth = 2;
    second.count = 1;
    faults.add(second);
    EXPECT_EQ(faults.resultOf({Function::PutCommand, 0}, {}), 9020u);
    EXPECT_EQ(faults.resultOf({Function::PutCommand, 0}, {}), 9021u);
    EXPECT_EQ(faults.resultOf({Function::PutCommand, 0}, {}), 0u);
}

TEST(CallFaultsTest, ACallThatLooksAgainIsCountedOnce) {
    CallFaults faults;
    CallFault fault;
    fault.function = static_cast<int64_t>(Function::GetStatus);
    fault.result = 9040;
    fault.nth = 2;
    faults.add(fault);
    EXPECT_EQ(faults.resultOf({Function::GetStatus, kNotGiven, 7}, {}), 0u);
    EXPECT_EQ(faults.resultOf({Function::GetStatus, kNotGiven, 7}, {}), 0u);
    EXPECT_EQ(faults.resultOf({Function::GetStatus, kNotGiven, 8}, {}), 9040u);
}

TEST(ReportSourceTest, PeriodCountsFromTheTimeAndTagsCountUp) {
    UnaskedReport plan;
    plan.code = 9;
    plan.atMs = 100;
    plan.count = 2;
    plan.periodMs = 50;
    plan.tag = 0xFFFFFFFF;
    plan.tagStep = 2;
    ReportSource source(plan);
    EXPECT_EQ(source.nextDueMs({1000, 1000, 0, 0}), 1100u);
    EXPECT_EQ(source.take(1130), ReportWriter(9, 0, 0xFFFFFFFF).report());
    EXPECT_EQ(source.nextDueMs({1000, 1130, 0, 0}), 1150u);
    EXPECT_EQ(source.take(1150), ReportWriter(9, 0, 1).report());
    EXPECT_EQ(source.nextDueMs({1000, 1150, 0, 0}), kNever);
}

TEST(ReportSourceTest, BodyHasWordsBytesTextAndFilling) {
    UnaskedReport plan;
    plan.code = 9;
    plan.words = {-1, 2};
    plan.bytes = {3};
    plan.text = "t";
    plan.fill = 7;
    plan.size = 1000;
    ReportSource source(plan);
    source.nextDueMs({});
    EXPECT_EQ(source.take(0),
              ReportWriter(9, 0, 0).u32(0xFFFFFFFF).u32(2).u8(3).text("t").fillRest(7).statedSize(1000).report());
}

TEST(TransferFaultsOfScannerTest, FirstOfTwoCountsAndBothAreCounted) {
    TransferFaults faults;
    TransferFault first;
    first.function = static_cast<int64_t>(Function::GetImage);
    first.result = 1;
    TransferFault second = first;
    second.result = 2;
    second.nth = 2;
    faults.add(first);
    faults.add(second);
    EXPECT_FALSE(faults.meant(Function::PutImage));
    EXPECT_EQ(faults.meant(Function::GetImage)->result, 1);
    EXPECT_EQ(faults.meant(Function::GetImage)->result, 2);
    EXPECT_FALSE(faults.meant(Function::GetImage));
}

}  // namespace
}  // namespace simulator
