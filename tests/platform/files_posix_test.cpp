// What files are about the rules of a POSIX file system.

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "platform/files.h"
#include "platform/new_file.h"
#include "support/files.h"

namespace platform {
namespace {

class PosixFiles : public ::testing::Test {
protected:
    void SetUp() override { support::writeFile(name, "old"); }

    static bool make(const std::string& name, const std::string& text) {
        NewFile file(name);
        return support::writeFile(file.path(), text) && file.keep();
    }
    static mode_t modeOf(const std::string& file) {
        struct stat status {};
        stat(file.c_str(), &status);
        return status.st_mode & 0777;
    }

    support::TemporaryFolder folder;
    std::string name = folder.file("name");
};

// What nobody's mask lets through, and what every mask does.
TEST_F(PosixFiles, NewOneHasThePermissionsOfTheOldOne) {
    for (const mode_t mode : {0600u, 0666u}) {
        chmod(name.c_str(), mode);
        EXPECT_TRUE(make(name, "new"));
        EXPECT_EQ(modeOf(name), mode);
    }
}

TEST_F(PosixFiles, NewOneHasThePermissionsThatTheMaskLeaves) {
    const mode_t before = umask(027);
    EXPECT_TRUE(make(folder.file("fresh"), "new"));
    umask(before);
    EXPECT_EQ(modeOf(folder.file("fresh")), 0640u);
}

TEST_F(PosixFiles, NewOneIsWhereALinkLeadsAlsoInAnotherFolder) {
    std::filesystem::create_directory(folder.file("links"));
    const std::string link = folder.file("links/link");
    std::filesystem::create_symlink("../name", link);
    EXPECT_TRUE(make(link, "new"));
    EXPECT_TRUE(std::filesystem::is_symlink(link));
    EXPECT_EQ(support::readFile(name), "new");
}

TEST_F(PosixFiles, NewOneIsWhereALinkToNothingLeads) {
    std::filesystem::create_symlink("second", folder.file("first"));
    std::filesystem::create_symlink(folder.file("target"), folder.file("second"));
    EXPECT_TRUE(make(folder.file("first"), "new"));
    EXPECT_TRUE(std::filesystem::is_symlink(folder.file("first")));
    EXPECT_EQ(support::readFile(folder.file("target")), "new");
}

TEST_F(PosixFiles, LinkToItselfCannotBeMade) {
    const std::string link = folder.file("link");
    std::filesystem::create_symlink(link, link);
    EXPECT_EQ(NewFile(link).path(), "");
}

TEST_F(PosixFiles, PipesAndDevicesAreNeitherFilesNorReplaced) {
    const std::string pipe = folder.file("pipe");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    for (const std::string& other : {pipe, std::string("/dev/null")}) {
        EXPECT_EQ(kindOf(other), FileKind::kOther);
        EXPECT_EQ(NewFile(other).path(), "");
    }
}

TEST_F(PosixFiles, FileThatMayNotBeWrittenStays) {
    chmod(folder.path().c_str(), 0777);
    chmod(name.c_str(), 0444);
    // The superuser may write everything, so in a process of its own the test becomes somebody else.
    const auto replaceAsNobody = [this] {
        constexpr uid_t kNobody = 65534;
        if (geteuid() == 0 && setuid(kNobody) != 0)
            _exit(2);
        _exit(make(name, "new") ? 1 : 0);
    };
    EXPECT_EXIT(replaceAsNobody(), ::testing::ExitedWithCode(0), "");
    EXPECT_EQ(support::readFile(name), "old");
}

}  // namespace
}  // namespace platform
