#include <gtest/gtest.h>
#include <windows.h>

#include <cstdlib>

#include "platform/clock.h"

namespace platform {
namespace {

TEST(ClockOnWindows, LocalTimeIsTheSystemsWhateverTheEnvironmentSays) {
    _putenv_s("TZ", "America/New_York");
    _tzset();
    SYSTEMTIME before{};
    GetLocalTime(&before);
    const std::tm local = localTime();
    SYSTEMTIME after{};
    GetLocalTime(&after);
    _putenv_s("TZ", "");
    _tzset();
    EXPECT_TRUE(local.tm_hour == before.wHour || local.tm_hour == after.wHour);
    EXPECT_TRUE(local.tm_mday == before.wDay || local.tm_mday == after.wDay);
    EXPECT_TRUE(local.tm_wday == before.wDayOfWeek || local.tm_wday == after.wDayOfWeek);
    EXPECT_EQ(local.tm_year + 1900, after.wYear);
    EXPECT_EQ(local.tm_mon + 1, after.wMonth);
}

}  // namespace
}  // namespace platform
