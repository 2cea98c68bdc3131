#include "operations/upload_rules.h"

#include <gtest/gtest.h>

#include <string>

namespace operations {
namespace {

TEST(Extension, NeedsANameBeforeIt) {
    EXPECT_TRUE(hasExtension("x.rbf", ".rbf"));
    EXPECT_FALSE(hasExtension(".rbf", ".rbf"));
    EXPECT_TRUE(hasExtension("x.xsvf", ".xsvf"));
    EXPECT_FALSE(hasExtension(".xsvf", ".xsvf"));
}

TEST(Extension, IsComparedWithoutRegardToCaseAtTheEndOnly) {
    EXPECT_TRUE(hasExtension("X.RBF", ".rbf"));
    EXPECT_FALSE(hasExtension("x.RBF.bak", ".rbf"));
    EXPECT_FALSE(hasExtension("xrbf", ".rbf"));
    EXPECT_FALSE(hasExtension("", ".rbf"));
}

const char* formFor(const char* model, const std::string& name) {
    const CodeFileRule* rule = brokenCodeFileRule(model, name);
    return rule != nullptr ? rule->form : "";
}

TEST(CodeFile, OfTwentyCharactersSuitsInAnyCaseAndBehindAFolder) {
    EXPECT_STREQ(formFor("mx1100", "MX-1100.DSP.1.23.ovk"), "");
    EXPECT_STREQ(formFor("MX1100", "/some/folder/mx-1100.dsp.1.23.OVK"), "");
    EXPECT_STREQ(formFor("MX1100", "mx-1100.dsp.....ovk?"), "");
}

TEST(CodeFile, OfNineteenCharactersDoesNotSuit) {
    EXPECT_STREQ(formFor("MX1100", "MX-1100.DSP.1.2.ovk"), "TamTest: should be in form MX-1100.dsp.x.xx.ovk\n");
}

TEST(CodeFile, OfAnotherModelDoesNotSuit) {
    EXPECT_STREQ(formFor("MX1200", "MX-1100.DSP.1.23.ovk"), "TamTest: should be in form MX-1500.dsp.x.xx.ovk\n");
    EXPECT_STREQ(formFor("MX1300", "MX-1100.DSP.1.23.ovk"), "TamTest: should be in form MX-1500.dsp.x.xx.ovk\n");
    EXPECT_STREQ(formFor("MX1200", "MX-1500.DSP.1.23.ovk"), "");
    EXPECT_STREQ(formFor("MX1300", "MX-1500.DSP.1.23.ovk"), "");
}

TEST(CodeFile, OfFifteenCharactersSuitsTheTamselModels) {
    for (const char* model : {"MXRB-2", "MX1400", "mxrb-2"}) {
        EXPECT_STREQ(formFor(model, "Tamsel.1.23.ovk"), "") << model;
        EXPECT_STREQ(formFor(model, "tamsel.1.2.ovk"), "TamTest: should be in form Tamsel.x.xx.ovk\n") << model;
        EXPECT_STREQ(formFor(model, "xTamsel.1.23ovk"), "TamTest: should be in form Tamsel.x.xx.ovk\n") << model;
    }
}

TEST(CodeFile, OfAnyNameSuitsAModelThatIsNotKnown) {
    EXPECT_STREQ(formFor("MX9999", "x.ovk"), "");
    EXPECT_STREQ(formFor("", "x.ovk"), "");
}

}  // namespace
}  // namespace operations
