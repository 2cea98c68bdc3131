#include "simulator/outbox.h"

#include <gtest/gtest.h>

namespace simulator {
namespace {

AnswerFault faultOf(Stage stage, int64_t part) {
    AnswerFault fault;
    fault.stage = static_cast<int64_t>(stage);
    fault.part = part;
    return fault;
}

Report progress(uint32_t word) {
    return ReportWriter(132, 2, 5).u32(word).report();
}

Report command(int32_t state, uint32_t tag) {
    return ReportWriter(133, state, tag).report();
}

TEST(ReplyTest, PartsCountWithinTheirStage) {
    AnswerFault fault = faultOf(Stage::Progress, 2);
    fault.drop = true;
    Reply reply({fault});
    Outbox outbox;
    outbox.say(reply, Stage::Pending, command(1, 5), 1);
    for (uint32_t i = 1; i <= 3; ++i) {
        outbox.say(reply, Stage::Progress, progress(i), 2);
    }
    EXPECT_EQ(outbox.queue().take(9), command(1, 5));
    EXPECT_EQ(outbox.queue().take(9), progress(1));
    EXPECT_EQ(outbox.queue().take(9), progress(3));
    EXPECT_EQ(outbox.queue().size(), 0u);
}

TEST(ReplyTest, PartZeroIsEveryReportOfTheStage) {
    AnswerFault fault = faultOf(Stage::Progress, 0);
    fault.state = -3;
    fault.word = 1;
    fault.value = -1;
    fault.delayMs = 10;
    Reply reply({fault});
    for (uint32_t i = 0; i < 2; ++i) {
        Report report = progress(i);
        uint64_t dueMs = 5;
        EXPECT_TRUE(reply.alter(Stage::Progress, report, dueMs));
        EXPECT_EQ(dueMs, 15u);
        Report expected = progress(i);
        setState(expected, -3);
        setBodyWord(expected, 1, 0xFFFFFFFF);
        EXPECT_EQ(report, expected);
    }
}

TEST(OutboxTest, CommandStatesAreKnownFromTheirTimeOn) {
    Reply reply;
    Outbox outbox;
    outbox.say(reply, Stage::Pending, command(1, 5), 10);
    outbox.say(reply, Stage::Complete, command(3, 5), 20);
    EXPECT_EQ(outbox.commandState(4, 30), std::nullopt);
    EXPECT_EQ(outbox.commandState(5, 9), 1);
    EXPECT_EQ(outbox.commandState(5, 19), 1);
    EXPECT_EQ(outbox.commandState(5, 20), 3);
    outbox.forgetCommands();
    EXPECT_EQ(outbox.commandState(5, 20), std::nullopt);
}

TEST(OutboxTest, LatestCommandWithATagCounts) {
    Reply reply;
    Outbox outbox;
    outbox.say(reply, Stage::Complete, command(3, 5), 10);
    outbox.say(reply, Stage::Complete, command(6, 5), 20);
    EXPECT_EQ(outbox.commandState(5, 30), 6);
}

TEST(OutboxTest, OldCommandsAreForgotten) {
    Reply reply;
    Outbox outbox;
    for (uint32_t tag = 0; tag <= Outbox::kMostNotes; ++tag) {
        outbox.say(reply, Stage::Complete, command(3, tag), 1);
    }
    EXPECT_EQ(outbox.commandState(0, 1), std::nullopt);
    EXPECT_EQ(outbox.commandState(1, 1), 3);
}

TEST(OutboxTest, StatesAreTrueWhateverBecomesOfTheirReports) {
    AnswerFault fault = faultOf(Stage::Complete, 0);
    fault.drop = true;
    Reply reply({fault});
    Outbox outbox;
    outbox.say(reply, Stage::Complete, command(3, 5), 1);
    EXPECT_EQ(outbox.queue().size(), 0u);
    EXPECT_EQ(outbox.commandState(5, 1), 3);
}

}  // namespace
}  // namespace simulator
