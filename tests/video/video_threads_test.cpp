#include "video/video_threads.h"

#include "support/fake_platform.h"
#include "support/tester_test.h"

namespace video {
namespace {

using support::fakePlatform;

class VideoThreads : public support::TesterTest {
protected:
    static std::string runThread(size_t thread) {
        return printed([=] {
            const support::FakeThread started = fakePlatform().threads.at(thread);
            started.run(started.argument);
        });
    }
};

TEST_F(VideoThreads, TwoAreStarted) {
    EXPECT_EQ(printed(startVideoThreads), "");
    EXPECT_EQ(fakePlatform().threads.size(), 2u);
}

TEST_F(VideoThreads, EachRefusedThreadIsToldInTheSameWords) {
    fakePlatform().threadsBeforeRefusal = 0;
    EXPECT_EQ(printed(startVideoThreads),
              "TamTest: failed to create video thread\nTamTest: failed to create video thread\n");
}

TEST_F(VideoThreads, SecondRefusedThreadIsTold) {
    fakePlatform().threadsBeforeRefusal = 1;
    EXPECT_EQ(printed(startVideoThreads), "TamTest: failed to create video thread\n");
}

TEST_F(VideoThreads, StreamThreadWhoseWaitFailsSaysSo) {
    fakePlatform().eventsRefused = true;
    startVideoThreads();
    EXPECT_EQ(runThread(0), "TamTest: Video Thread Loop error\n");
}

TEST_F(VideoThreads, RestartStartsNewOnesAndEndsTheOldOnesSilently) {
    startVideoThreads();
    startVideoThreads();
    EXPECT_EQ(fakePlatform().threads.size(), 4u);
    EXPECT_EQ(runThread(0), "");
    EXPECT_EQ(runThread(1), "");
}

}  // namespace
}  // namespace video
