// What replacing a file does about the rules of a POSIX file system.

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "platform/files.h"
#include "support/files.h"

namespace platform {
namespace {

class ReplacedPosixFile : public ::testing::Test {
protected:
    void SetUp() override {
        support::writeFile(fresh, "new");
        support::writeFile(name, "old");
    }

    static mode_t modeOf(const std::string& file) {
        struct stat status {};
        stat(file.c_str(), &status);
        return status.st_mode & 0777;
    }

    support::TemporaryFolder folder;
    std::string fresh = folder.file("fresh");
    std::string name = folder.file("name");
};

TEST_F(ReplacedPosixFile, HasThePermissionsOfTheOldOne) {
    for (const mode_t mode : {0600u, 0666u}) {
        support::writeFile(fresh, "new");
        chmod(name.c_str(), mode);
        EXPECT_TRUE(replaceFile(fresh, name));
        EXPECT_EQ(modeOf(name), mode);
    }
}

TEST_F(ReplacedPosixFile, IsTheOneThatALinkLeadsTo) {
    const std::string link = folder.file("link");
    std::filesystem::create_symlink("name", link);
    EXPECT_TRUE(replaceFile(fresh, link));
    EXPECT_TRUE(std::filesystem::is_symlink(link));
    EXPECT_EQ(support::readFile(name), "new");
}

TEST_F(ReplacedPosixFile, IsNoPipeAndNoDevice) {
    const std::string pipe = folder.file("pipe");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_EQ(kindOf(pipe), FileKind::kOther);
    EXPECT_FALSE(replaceFile(fresh, pipe));
    EXPECT_EQ(kindOf("/dev/null"), FileKind::kOther);
    EXPECT_EQ(support::readFile(fresh), "new");
}

TEST_F(ReplacedPosixFile, ThatMayNotBeWrittenStays) {
    chmod(folder.path().c_str(), 0777);
    chmod(name.c_str(), 0444);
    // The superuser may write everything, so in a process of its own the test becomes somebody else.
    const auto replaceAsNobody = [this] {
        constexpr uid_t kNobody = 65534;
        if (geteuid() == 0 && (chown(fresh.c_str(), kNobody, kNobody) != 0 || setuid(kNobody) != 0))
            _exit(2);
        _exit(replaceFile(fresh, name) ? 1 : 0);
    };
    EXPECT_EXIT(replaceAsNobody(), ::testing::ExitedWithCode(0), "");
    EXPECT_EQ(support::readFile(name), "old");
}

}  // namespace
}  // namespace platform
