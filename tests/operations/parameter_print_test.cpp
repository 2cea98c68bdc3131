#include "operations/parameter_print.h"

#include <numeric>
#include <vector>

#include "operations/parameter_table.h"
#include "support/tester_test.h"

namespace operations {
namespace {

class ParameterPrint : public support::TesterTest {
protected:
    static std::string shown(uint32_t set, const std::vector<uint32_t>& items, const char* format = "%d") {
        return printed([&] { printParameters(set, items, *NumberFormat::parse(format)); });
    }
    static std::vector<uint32_t> counting(size_t count) {
        std::vector<uint32_t> items(count);
        std::iota(items.begin(), items.end(), 0);
        return items;
    }
    static std::vector<uint32_t> identity() {
        std::vector<uint32_t> items(14);
        putFieldText(std::span(items).subspan(0, 2), "Tamsel");
        putFieldText(std::span(items).subspan(2, 4), "MX1100");
        putFieldText(std::span(items).subspan(6, 4), "SN 1");
        std::iota(items.begin() + 10, items.end(), 1);
        return items;
    }
};

TEST_F(ParameterPrint, PutsEightItemsInARow) {
    EXPECT_EQ(shown(2, counting(10)), "\n0 1 2 3 4 5 6 7\n8 9\n");
}

TEST_F(ParameterPrint, UsesTheFormatForEveryItem) {
    EXPECT_EQ(shown(1, {16, 255}, "0x%02x"), "\n0x10 0xff\n");
}

TEST_F(ParameterPrint, NothingIsShownOfNothing) {
    EXPECT_EQ(shown(1, {}), "");
}

TEST_F(ParameterPrint, OneHundredAndSixtyItemsAreShownWhole) {
    const std::string text = shown(3, counting(160));
    const std::string end = " 158 159\n";
    EXPECT_EQ(text.substr(text.size() - end.size()), end);
    EXPECT_EQ(text.find(">>>"), std::string::npos);
}

TEST_F(ParameterPrint, TheRestBehindOneHundredAndSixtyIsCounted) {
    const std::string text = shown(3, counting(161));
    const std::string end = " 159\n>>> remaining 1 items skipped\n";
    EXPECT_EQ(text.substr(text.size() - end.size()), end);
    const std::string most = shown(6, counting(32768));
    const std::string mostEnd = " 159\n>>> remaining 32608 items skipped\n";
    EXPECT_EQ(most.substr(most.size() - mostEnd.size()), mostEnd);
}

TEST_F(ParameterPrint, IdentitySetBeginsWithItsTexts) {
    EXPECT_EQ(shown(0, identity()), "\nTamsel MX1100 SN 1\n 1 2 3 4\n");
}

TEST_F(ParameterPrint, IdentityTextsWithoutZeroEndWithTheirFields) {
    EXPECT_EQ(shown(0, std::vector<uint32_t>(14, 0x41414141)),
              "\nAAAAAAAA AAAAAAAAAAAAAAAA AAAAAAAAAAAAAAAA\n"
              " 1094795585 1094795585 1094795585 1094795585\n");
}

TEST_F(ParameterPrint, TripletSetStandsInRowsOfThreeWhateverTheFormat) {
    std::string expected = "\n0";
    for (int item = 1; item <= 30; ++item)
        expected += (item % 3 == 1 ? "\n" : "") + std::to_string(item) + " ";
    EXPECT_EQ(shown(75, counting(31), "%x"), expected + "\n");
}

}  // namespace
}  // namespace operations
