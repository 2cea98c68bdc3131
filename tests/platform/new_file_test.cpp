#include "platform/new_file.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/files.h"

namespace platform {
namespace {

class NewFiles : public ::testing::Test {
protected:
    // Makes the file, writes it and gives it its name.
    static bool make(const std::string& name, const std::string& text) {
        NewFile file(name);
        return support::writeFile(file.path(), text) && file.keep();
    }
    auto filesInFolder() const { return std::distance(std::filesystem::directory_iterator(folder.path()), {}); }

    support::TemporaryFolder folder;
    std::string name = folder.file("name");
};

TEST_F(NewFiles, StandAloneInTheirFolder) {
    EXPECT_TRUE(make(name, "new"));
    EXPECT_EQ(support::readFile(name), "new");
    EXPECT_EQ(filesInFolder(), 1);
}

TEST_F(NewFiles, StandInPlaceOfTheOldOne) {
    support::writeFile(name, "old and longer");
    EXPECT_TRUE(make(name, "new"));
    EXPECT_EQ(support::readFile(name), "new");
    EXPECT_EQ(filesInFolder(), 1);
}

TEST_F(NewFiles, ThatAreGivenUpLeaveTheOldOneAndNothingElse) {
    support::writeFile(name, "old");
    {
        const NewFile file(name);
        support::writeFile(file.path(), "new");
        EXPECT_EQ(support::readFile(name), "old");
    }
    EXPECT_EQ(support::readFile(name), "old");
    EXPECT_EQ(filesInFolder(), 1);
}

TEST_F(NewFiles, OfTwoAtOnceTheLaterKeptStays) {
    NewFile first(name);
    NewFile second(name);
    support::writeFile(first.path(), "first");
    support::writeFile(second.path(), "second");
    EXPECT_TRUE(second.keep());
    EXPECT_TRUE(first.keep());
    EXPECT_EQ(support::readFile(name), "first");
    EXPECT_EQ(filesInFolder(), 1);
}

TEST_F(NewFiles, AreNotMadeInPlaceOfAFolderOrInNoFolder) {
    std::filesystem::create_directory(name);
    EXPECT_EQ(NewFile(name).path(), "");
    EXPECT_EQ(NewFile(folder.file("none/name")).path(), "");
    EXPECT_EQ(NewFile("").path(), "");
    EXPECT_TRUE(std::filesystem::is_directory(name));
}

TEST_F(NewFiles, ThatCouldNotBeMadeAreNotKept) {
    NewFile file(folder.file("none/name"));
    EXPECT_FALSE(file.keep());
}

TEST_F(NewFiles, MayHaveANameOfAnyBytes) {
    EXPECT_EQ(NewFile(folder.file("none\xFF/\xC3(\xA0")).path(), "");
}

}  // namespace
}  // namespace platform
