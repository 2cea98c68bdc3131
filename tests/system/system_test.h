// The tester's own code and the simulated scanner in one process, on a clock that runs faster than the world.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "support/files.h"

namespace systemtest {

class SystemTest : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    // Opens the link to a bus of this scenario, TOML text. Returns what was printed.
    std::string start(const std::string& scenario, double clockSpeed);

    // Runs one line as if typed and returns all that was printed.
    static std::string type(const std::string& line);

private:
    support::TemporaryFolder folder_;
};

}  // namespace systemtest
