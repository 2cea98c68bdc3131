// Long work at a terminal, with a scanner that takes its time for every block.

#include <gtest/gtest.h>

#include "acceptance/tamtest.h"
#include "support/pty_session.h"

namespace acceptance {
namespace {

constexpr size_t kBytes = 600'000;

class Progress : public ::testing::Test {
protected:
    void SetUp() override { support::writeFile(folder.file("code.rbf"), std::string(kBytes, 'x')); }

    support::RunOptions options() const {
        return {.environment = {{"HOXI_SCENARIO", scenario("slow-transfers.toml")}}, .folder = folder.path().string()};
    }

    support::TemporaryFolder folder;
};

TEST_F(Progress, LineIsDrawnAtATerminalAndErasedBeforeTheNextMessage) {
    support::PtySession session{kTester, options()};
    session.type("blog log\rrpcip code.rbf\r");
    ASSERT_TRUE(session.waitFor(" of 600000 bytes, ")) << session.output();
    ASSERT_TRUE(session.waitFor(" s left")) << session.output();
    ASSERT_TRUE(session.waitFor(" UPGRADE SUCCESSFULLY LOADED\r\n")) << session.output();
    session.type("quit\r");
    ASSERT_TRUE(session.waitForExit()) << session.output();
    const std::string& text = session.output();
    const size_t last = text.rfind(" s left");
    const size_t erased = text.find("\r" + std::string(40, ' '), last);
    ASSERT_NE(erased, std::string::npos) << text.substr(last);
    EXPECT_EQ(text.substr(last, erased - last).find('\n'), std::string::npos) << text.substr(last);
    EXPECT_EQ(support::readFile(folder.file("log")).find("bytes,"), std::string::npos);
}

TEST_F(Progress, NothingOfItReachesAPipe) {
    const support::RunResult result = runTester("rpcip code.rbf\nquit\n", options());
    EXPECT_NE(result.out.find(" UPGRADE SUCCESSFULLY LOADED\n"), std::string::npos) << result.out;
    EXPECT_EQ(result.out.find("bytes,"), std::string::npos) << result.out;
}

}  // namespace
}  // namespace acceptance
