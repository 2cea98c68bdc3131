#include "platform/files.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/files.h"

namespace platform {
namespace {

class Files : public ::testing::Test {
protected:
    support::TemporaryFolder folder;
    std::string file = folder.file("file");
};

TEST_F(Files, KindIsThatOfWhatTheNameStandsFor) {
    support::writeFile(file, "text");
    EXPECT_EQ(kindOf(file), FileKind::kRegular);
    EXPECT_EQ(kindOf(folder.path().string()), FileKind::kFolder);
    EXPECT_EQ(kindOf(folder.file("none")), FileKind::kNone);
    EXPECT_EQ(kindOf(folder.file("none/name")), FileKind::kNone);
}

TEST_F(Files, FolderIsThereAfterItWasMadeOnceOrTwice) {
    EXPECT_TRUE(makeFolder(file));
    EXPECT_TRUE(makeFolder(file));
    EXPECT_TRUE(std::filesystem::is_directory(file));
}

TEST_F(Files, FolderIsNotMadeInPlaceOfAFileOrInNoFolder) {
    support::writeFile(file, "text");
    EXPECT_FALSE(makeFolder(file));
    EXPECT_EQ(support::readFile(file), "text");
    EXPECT_FALSE(makeFolder(folder.file("none/made")));
}

}  // namespace
}  // namespace platform
