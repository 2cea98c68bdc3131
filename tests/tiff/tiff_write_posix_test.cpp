// What writing does about the rules of a POSIX file system.

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>

#include "tiff/tiff_test.h"

namespace tifffile {
namespace {

class TiffWritePosix : public TiffTest {
protected:
    int32_t writeTo(const std::string& name) {
        const TiffFileInfo wanted{8, 64, 64, 500, 500, 1, 0};
        return writeTiffFile(name.c_str(), pattern(64, 64).data(), &wanted);
    }

    size_t filesInFolder() const {
        const std::filesystem::directory_iterator files(folder.path());
        return static_cast<size_t>(std::distance(begin(files), end(files)));
    }
};

// No file may grow beyond this many bytes while it lives, as if the disk were full.
class FullDisk {
public:
    explicit FullDisk(rlim_t bytes) : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit limit{bytes, before_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk() {
        setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, handler_);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    void (*handler_)(int);
    rlimit before_{};
};

TEST_F(TiffWritePosix, FullDiskIsAFailedWriteAndKeepsTheOlderFile) {
    put("older");
    // Full before the header, amid the pixels, and amid the directory behind them.
    for (const rlim_t bytes : {4u, 1000u, 64u * 64u + 20u}) {
        const FullDisk full(bytes);
        EXPECT_EQ(writeTo(file()), -3) << bytes;
    }
    EXPECT_EQ(support::readFile(file()), "older");
    EXPECT_EQ(filesInFolder(), 1u);
}

TEST_F(TiffWritePosix, ProcessThatEndsAmidTheWritingLeavesNothingBehind) {
    put("older");
    const auto dieWriting = [this] {
        rlimit limit{};
        limit.rlim_cur = limit.rlim_max = 1000;
        setrlimit(RLIMIT_FSIZE, &limit);
        std::signal(SIGXFSZ, SIG_DFL);
        writeTo(file());
        _exit(0);
    };
    EXPECT_EXIT(dieWriting(), ::testing::KilledBySignal(SIGXFSZ), "");
    EXPECT_EQ(support::readFile(file()), "older");
    EXPECT_EQ(filesInFolder(), 1u);
}

TEST_F(TiffWritePosix, DeviceIsNotReplaced) {
    EXPECT_EQ(writeTo("/dev/null"), -1);
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
}

TEST_F(TiffWritePosix, PipeIsNeitherReplacedNorWaitedFor) {
    ASSERT_EQ(mkfifo(file().c_str(), 0600), 0);
    EXPECT_EQ(writeTo(file()), -1);
    expectRefused();
    EXPECT_TRUE(std::filesystem::is_fifo(file()));
}

TEST_F(TiffWritePosix, NameOfTheGreatestLength) {
    const std::string name = folder.file(std::string(255, 'n'));
    EXPECT_EQ(writeTo(name), 0);
    EXPECT_EQ(writeTo(name + "n"), -1);
    EXPECT_EQ(filesInFolder(), 1u);
}

TEST_F(TiffWritePosix, NameInTheFolderWhereTheProgramRuns) {
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(folder.path());
    EXPECT_EQ(writeTo("image.tif"), 0);
    std::filesystem::current_path(before);
    EXPECT_TRUE(read() == pattern(64, 64));
}

}  // namespace
}  // namespace tifffile
