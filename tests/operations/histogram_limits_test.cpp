#include "operations/histogram_limits.h"

#include <vector>

#include "support/fake_tiff.h"
#include "support/files.h"
#include "support/tester_test.h"

namespace operations {
namespace {

// So many pixels of a level, one pair after the other.
std::vector<uint8_t> pixels(const std::vector<std::pair<uint8_t, size_t>>& counts) {
    std::vector<uint8_t> image;
    for (const auto& [level, count] : counts)
        image.insert(image.end(), count, level);
    return image;
}

TEST(HistogramLimitsOf, MoreThanATwoPerCentThresholdMakesAnEdge) {
    const HistogramLimits limits = histogramLimits(pixels({{10, 100}, {20, 1}, {100, 4798}, {200, 1}, {250, 100}}));
    EXPECT_EQ(limits.bottom, 20);
    EXPECT_EQ(limits.top, 200);
}

TEST(HistogramLimitsOf, ExactlyTheThresholdMakesNone) {
    const HistogramLimits limits = histogramLimits(pixels({{10, 100}, {100, 4800}, {250, 100}}));
    EXPECT_EQ(limits.bottom, 100);
    EXPECT_EQ(limits.top, 100);
}

TEST(HistogramLimitsOf, LevelZeroTakesNoPart) {
    const HistogramLimits limits = histogramLimits(pixels({{0, 4899}, {7, 101}}));
    EXPECT_EQ(limits.bottom, 7);
    EXPECT_EQ(limits.top, 7);
}

TEST(HistogramLimitsOf, TheHighestLevelIsNoBottomEdge) {
    const HistogramLimits limits = histogramLimits(pixels({{255, 5000}}));
    EXPECT_EQ(limits.bottom, 0);
    EXPECT_EQ(limits.top, 255);
}

TEST(HistogramLimitsOf, AnImageAlmostWhollyAtLevelZeroHasNoEdges) {
    const HistogramLimits limits = histogramLimits(pixels({{0, 4900}, {9, 100}}));
    EXPECT_EQ(limits.bottom, 0);
    EXPECT_EQ(limits.top, 0);
    EXPECT_EQ(histogramLimits({}).top, 0);
}

class TallyFile : public support::TesterTest {
protected:
    static Tally read(const std::string& name, const std::string& said = "") {
        Tally tally;
        EXPECT_EQ(printed([&] { tally = readTally(name).value(); }), said);
        return tally;
    }

    support::TemporaryFolder folder;
    std::string name = folder.file("tally");
};

TEST_F(TallyFile, ThatDoesNotExistCountsNothing) {
    EXPECT_EQ(read(name), Tally{});
}

TEST_F(TallyFile, IsWrittenFromTheHighestLevelDown) {
    Tally tally{};
    tally[255] = 3;
    tally[0] = 7;
    EXPECT_TRUE(writeTally(name, tally));
    const std::string text = support::readText(name);
    EXPECT_EQ(text.substr(0, 12), "255\t3\n254\t0\n");
    EXPECT_EQ(text.substr(text.size() - 8), "1\t0\n0\t7\n");
    EXPECT_EQ(read(name), tally);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 1);
}

TEST_F(TallyFile, ThatEndsEarlyIsSaidAndCounts) {
    support::writeFile(name, "255\t3\n10\t4\n");
    const Tally tally = read(name, " fgets failed\n");
    EXPECT_EQ(tally[255], 3);
    EXPECT_EQ(tally[10], 4);
}

TEST_F(TallyFile, OddLinesAreTakenAsTheyCome) {
    support::writeFile(name, "10\t5\n20\t5\n10\nx\n300\t9\n20\tabc\n30 \t7\n40x\t8\n");
    const Tally tally = read(name, " fgets failed\n");
    EXPECT_EQ(tally[10], 0);
    EXPECT_EQ(tally[0], 9);
    EXPECT_EQ(tally[20], 0);
    EXPECT_EQ(tally[30], 7);
    EXPECT_EQ(tally[40], 8);
}

TEST_F(TallyFile, LongLineIsOneLine) {
    Tally tally{};
    tally[0] = 3;
    tally[1] = 4;
    writeTally(name, tally);
    const std::string text = support::readText(name);
    support::writeFile(name, "255\t" + std::string(500, '0') + "6\n" + text.substr(text.find('\n') + 1));
    const Tally seen = read(name);
    EXPECT_EQ(seen[0], 3);
    EXPECT_EQ(seen[1], 4);
}

TEST_F(TallyFile, IsReadUpTo256Lines) {
    Tally tally{};
    writeTally(name, tally);
    support::writeFile(name, support::readFile(name) + "7\t99\n");
    EXPECT_EQ(read(name)[7], 0);
}

TEST_F(TallyFile, ThatCannotBeWrittenIsToldByFalse) {
    EXPECT_FALSE(writeTally(folder.file("none/tally"), Tally{}));
    EXPECT_FALSE(writeTally(folder.path().string(), Tally{}));
    EXPECT_TRUE(std::filesystem::is_directory(folder.path()));
}

TEST_F(TallyFile, ThatIsBinaryIsNotRead) {
    support::writeFile(name, std::string("II*\0\x08\0", 6));
    EXPECT_FALSE(readTally(name));
}

TEST_F(TallyFile, ThatIsNoFileIsNotRead) {
    EXPECT_FALSE(readTally(folder.path().string()));
}

class HistogramOperation : public TallyFile {
protected:
    void SetUp() override {
        TallyFile::SetUp();
        support::FakeTiffFile file = support::makeTiff(100, 50);
        file.pixels = pixels({{10, 200}, {100, 4600}, {250, 200}});
        support::fakeTiff().files["in.tif"] = file;
    }
};

TEST_F(HistogramOperation, PrintsTheEdgesWithoutAnOutputFile) {
    EXPECT_EQ(type("histl in.tif"), " Bottom edge 10 top edge 250\n");
}

TEST_F(HistogramOperation, TalliesTheEdgesTwiceOverTwoRuns) {
    EXPECT_EQ(type("histl in.tif " + name), "");
    EXPECT_EQ(type("HISTO_limits in.tif " + name), "");
    const Tally tally = read(name);
    EXPECT_EQ(tally[10], 2);
    EXPECT_EQ(tally[250], 2);
    EXPECT_EQ(tally[100], 0);
}

TEST_F(HistogramOperation, CountStaysAtTheLargestNumber) {
    support::writeFile(name, "250\t2147483647\n10\t2147483646\n");
    EXPECT_EQ(type("histl in.tif " + name), " fgets failed\n");
    const Tally tally = read(name);
    EXPECT_EQ(tally[250], 2147483647);
    EXPECT_EQ(tally[10], 2147483647);
}

TEST_F(HistogramOperation, TallyThatIsNoFileIsToldAndLeftAlone) {
    const std::string folderName = folder.path().string();
    EXPECT_EQ(type("histl in.tif " + folderName), "TamTest: can't write " + folderName + "\n");
    EXPECT_TRUE(std::filesystem::is_directory(folder.path()));
}

TEST_F(HistogramOperation, ConsoleMessagesStayOutOfTheLog) {
    type("blog " + folder.file("log"));
    support::writeFile(name, "1\t1\n");
    EXPECT_EQ(type("histl in.tif " + name), " fgets failed\n");
    EXPECT_EQ(type("histl in.tif"), " Bottom edge 10 top edge 250\n");
    EXPECT_EQ(support::readFile(folder.file("log")), "");
    type("elog");
}

TEST_F(HistogramOperation, CoincidingEdgesCountTwiceEachRun) {
    support::fakeTiff().files["in.tif"].pixels.assign(5000, 77);
    type("histl in.tif " + name);
    type("histl in.tif " + name);
    EXPECT_EQ(read(name)[77], 4);
}

TEST_F(HistogramOperation, ShortTallyIsSaidAndRewrittenWhole) {
    support::writeFile(name, "250\t5\n");
    EXPECT_EQ(type("histl in.tif " + name), " fgets failed\n");
    EXPECT_EQ(read(name)[250], 6);
}

TEST_F(HistogramOperation, NeedsAnInputFile) {
    EXPECT_EQ(type("histl").substr(0, 63), "TamTest: Missing parameter - syntax for HISTO_limits(histl) is:");
}

TEST_F(HistogramOperation, UnusableInputIsToldWithTheOutputName) {
    EXPECT_EQ(type("histl none.tif tally.txt"), "TamTest: can't open TIFF file tally.txt\n");
    EXPECT_EQ(type("histl none.tif"), "TamTest: can't open TIFF file \n");
}

TEST_F(HistogramOperation, FailedReadIsTold) {
    support::fakeTiff().readResult = -2;
    EXPECT_EQ(type("histl in.tif"), "TamTest: Error reading TIFF file\n");
}

TEST_F(HistogramOperation, TallyThatCannotBeWrittenIsTold) {
    const std::string bad = folder.file("none/tally");
    EXPECT_EQ(type("histl in.tif " + bad), "TamTest: can't write " + bad + "\n");
}

}  // namespace
}  // namespace operations
