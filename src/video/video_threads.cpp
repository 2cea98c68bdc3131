#include "video/video_threads.h"

#include <atomic>
#include <memory>

#include "console/output.h"
#include "platform/sync.h"

namespace video {
namespace {

struct VideoThreads {
    platform::Event videoStart;
    platform::Event videoSleep;
    platform::Event displayStart;
    std::atomic<bool> retired{false};
    VideoThreads* previous = nullptr;  // never freed: its threads may still look at it
};

VideoThreads* newest = nullptr;

void videoThreadLoop(void* argument) {
    auto& threads = *static_cast<VideoThreads*>(argument);
    platform::resetEvent(threads.videoSleep);
    if (!platform::waitEvent(threads.videoStart, platform::kForever) && !threads.retired)
        console::output("TamTest: Video Thread Loop error\n");
}

void ManageIsocDisplay(void* argument) {
    auto& threads = *static_cast<VideoThreads*>(argument);
    platform::waitEvent(threads.displayStart, platform::kForever);
}

void startThread(void (*run)(void*), VideoThreads& threads) {
    if (!platform::startThread(run, &threads))
        console::output("TamTest: failed to create video thread\n");
}

void retire(VideoThreads& threads) {
    threads.retired = true;
    platform::signalEvent(threads.videoStart);
    platform::signalEvent(threads.displayStart);
}

}  // namespace

void startVideoThreads() {
    if (newest != nullptr)
        retire(*newest);
    VideoThreads* threads = std::make_unique<VideoThreads>().release();
    threads->previous = newest;
    newest = threads;
    platform::createEvent(threads->videoStart);
    platform::createEvent(threads->videoSleep);
    platform::createEvent(threads->displayStart);
    startThread(videoThreadLoop, *threads);
    startThread(ManageIsocDisplay, *threads);
}

}  // namespace video
