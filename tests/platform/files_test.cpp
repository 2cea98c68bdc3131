#include "platform/files.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/files.h"

namespace platform {
namespace {

class Files : public ::testing::Test {
protected:
    void SetUp() override { support::writeFile(fresh, "new"); }

    support::TemporaryFolder folder;
    std::string fresh = folder.file("fresh");
    std::string name = folder.file("name");
};

TEST_F(Files, ReplacedFileHasTheOtherNameAlone) {
    EXPECT_TRUE(replaceFile(fresh, name));
    EXPECT_EQ(support::readFile(name), "new");
    EXPECT_FALSE(std::filesystem::exists(fresh));
}

TEST_F(Files, ReplacedFileStandsInPlaceOfTheOldOne) {
    support::writeFile(name, "old and longer");
    EXPECT_TRUE(replaceFile(fresh, name));
    EXPECT_EQ(support::readFile(name), "new");
}

TEST_F(Files, ReplacingFileStaysWhereAFolderHasTheName) {
    std::filesystem::create_directory(name);
    EXPECT_FALSE(replaceFile(fresh, name));
    EXPECT_EQ(support::readFile(fresh), "new");
    EXPECT_TRUE(std::filesystem::is_directory(name));
}

TEST_F(Files, ReplacingFileThatIsNotThereLeavesTheOldOne) {
    support::writeFile(name, "old");
    EXPECT_FALSE(replaceFile(folder.file("none"), name));
    EXPECT_EQ(support::readFile(name), "old");
}

TEST_F(Files, KindIsThatOfWhatTheNameStandsFor) {
    EXPECT_EQ(kindOf(fresh), FileKind::kRegular);
    EXPECT_EQ(kindOf(name), FileKind::kNone);
    EXPECT_EQ(kindOf(folder.path().string()), FileKind::kFolder);
    EXPECT_EQ(kindOf(folder.file("none/name")), FileKind::kNone);
}

TEST_F(Files, FolderIsThereAfterItWasMadeOnceOrTwice) {
    EXPECT_TRUE(makeFolder(folder.file("made")));
    EXPECT_TRUE(makeFolder(folder.file("made")));
    EXPECT_TRUE(std::filesystem::is_directory(folder.file("made")));
}

TEST_F(Files, FolderIsNotMadeInPlaceOfAFileOrInNoFolder) {
    EXPECT_FALSE(makeFolder(fresh));
    EXPECT_EQ(support::readFile(fresh), "new");
    EXPECT_FALSE(makeFolder(folder.file("none/made")));
}

TEST_F(Files, MayHaveANameOfAnyBytes) {
    EXPECT_FALSE(replaceFile(folder.file("none\xFF"), folder.file("\xC3(\xA0")));
}

}  // namespace
}  // namespace platform
