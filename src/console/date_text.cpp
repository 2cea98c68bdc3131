#include "console/date_text.h"

#include <cstdio>

#include "platform/clock.h"

namespace console {

std::string dateText() {
    static constexpr const char* kDays[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
    static constexpr const char* kMonths[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                              "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    const std::tm now = platform::localTime();
    char text[64];
    std::snprintf(text, sizeof text, "%s %s %02d %02d:%02d:%02d %d", kDays[now.tm_wday], kMonths[now.tm_mon],
                  now.tm_mday, now.tm_hour, now.tm_min, now.tm_sec, now.tm_year + 1900);
    return text;
}

}  // namespace console
