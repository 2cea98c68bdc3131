// Ways out that the operator does not type: the terminal is put back on each.

#include <gtest/gtest.h>

#include <csignal>

#include "acceptance/tamtest.h"
#include "support/pty_session.h"

namespace acceptance {
namespace {

class Signals : public ::testing::TestWithParam<int> {
protected:
    void SetUp() override { ASSERT_TRUE(session.waitFor("scanners\r\n> ")) << session.output(); }

    support::PtySession session{kTester};
};

TEST_P(Signals, EndTheTesterAndPutTheTerminalBack) {
    session.sendSignal(GetParam());
    ASSERT_TRUE(session.waitForExit()) << session.output();
    EXPECT_EQ(session.signal(), GetParam());
    EXPECT_TRUE(session.modesAsAtStart());
}

TEST_P(Signals, InAWaitEndTheTesterAndPutTheTerminalBack) {
    session.type("w\r");
    ASSERT_TRUE(session.waitFor("ESC to exit scripts\r\n")) << session.output();
    session.sendSignal(GetParam());
    ASSERT_TRUE(session.waitForExit()) << session.output();
    EXPECT_EQ(session.signal(), GetParam());
    EXPECT_TRUE(session.modesAsAtStart());
}

INSTANTIATE_TEST_SUITE_P(Kinds, Signals, ::testing::Values(SIGINT, SIGTERM, SIGHUP, SIGABRT));

TEST(InterruptKey, EndsTheTesterAndPutsTheTerminalBack) {
    support::PtySession session(kTester);
    ASSERT_TRUE(session.waitFor("scanners\r\n> ")) << session.output();
    session.type("\x03");
    ASSERT_TRUE(session.waitForExit()) << session.output();
    EXPECT_EQ(session.signal(), SIGINT);
    EXPECT_TRUE(session.modesAsAtStart());
}

}  // namespace
}  // namespace acceptance
